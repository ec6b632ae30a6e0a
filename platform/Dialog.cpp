#include "platform/Dialog.h"

#include <algorithm>

void DDX_Control(CDataExchange* pDX, int id, CWnd& control)
{
    if (control.GetSafeHwnd() || !pDX || !pDX->m_pDlgWnd)
        return;
    control.Create(nullptr, L"", WS_CHILD | WS_VISIBLE, RECT{}, pDX->m_pDlgWnd, static_cast<UINT>(id));
}

BOOL CDialog::Create(UINT templateId, CWnd* parent)
{
    m_nIDTemplate = templateId;
    m_pParentWnd = parent;
    if (!CWnd::Create(L"DIALOG", L"", WS_CHILD | WS_VISIBLE, RECT{}, parent, templateId))
        return FALSE;
    SendMessage(WM_INITDIALOG);
    OnInitDialog();
    return m_hWnd != nullptr;
}

BOOL CDialog::UpdateData(BOOL saveAndValidate)
{
    CDataExchange dx(this, saveAndValidate);
    DoDataExchange(&dx);
    return TRUE;
}

BOOL CDialog::OnInitDialog()
{
    UpdateData(FALSE);
    return TRUE;
}

namespace
{
std::vector<CWinApp*>& Apps()
{
    // Never destroyed: module objects may outlive this library's static destruction.
    static auto* apps = new std::vector<CWinApp*>;
    return *apps;
}
} // namespace

CWinApp::CWinApp(LPCWSTR appName) : m_pszAppName(appName), m_hInstance(reinterpret_cast<HINSTANCE>(this))
{
    Apps().push_back(this);
}

CWinApp::~CWinApp()
{
    std::erase(Apps(), this);
}

const std::vector<CWinApp*>& CWinApp::Instances()
{
    return Apps();
}

namespace
{
AFX_MODULE_STATE g_hostState;
AFX_MODULE_STATE* g_currentState = &g_hostState;
} // namespace

AFX_MODULE_STATE* AfxGetModuleState()
{
    return g_currentState;
}

HINSTANCE AfxGetResourceHandle()
{
    return g_currentState->m_hCurrentResourceHandle;
}

AFX_MAINTAIN_STATE2::AFX_MAINTAIN_STATE2(AFX_MODULE_STATE* state) : m_previous(g_currentState)
{
    if (state)
        g_currentState = state;
}

AFX_MAINTAIN_STATE2::~AFX_MAINTAIN_STATE2()
{
    g_currentState = m_previous;
}

