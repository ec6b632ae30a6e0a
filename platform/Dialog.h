#pragma once
// Dialogs and the module object. Dialogs here are modeless children built in code: there are
// no resource templates, so DDX_Control creates the bound control as a child with its id.

#include "platform/Button.h"
#include "platform/Edit.h"
#include "platform/Menu.h"
#include "platform/Wnd.h"

#include <vector>

class CDataExchange
{
public:
    CDataExchange(CWnd* dialog, BOOL saveAndValidate) : m_pDlgWnd(dialog), m_bSaveAndValidate(saveAndValidate) {}
    CWnd* m_pDlgWnd;
    BOOL m_bSaveAndValidate;
};

// Binds a control member to the dialog's control id, creating its window on first exchange.
void DDX_Control(CDataExchange* pDX, int id, CWnd& control);

class CDialog : public CWnd
{
public:
    CDialog() = default;
    explicit CDialog(UINT templateId, CWnd* parent = nullptr) : m_nIDTemplate(templateId), m_pParentWnd(parent) {}

    // Creates the dialog as a visible child of its parent, then runs OnInitDialog.
    BOOL Create(UINT templateId, CWnd* parent = nullptr);
    BOOL UpdateData(BOOL saveAndValidate = TRUE);
    virtual BOOL OnInitDialog();
    UINT GetTemplateId() const { return m_nIDTemplate; }

protected:
    virtual void DoDataExchange(CDataExchange* pDX) {}

    UINT m_nIDTemplate = 0;
    CWnd* m_pParentWnd = nullptr;
};

// The object of a loadable module. Constructing it registers it; the host calls InitInstance
// once the module is loaded.
class CWinApp
{
public:
    explicit CWinApp(LPCWSTR appName = nullptr);
    CWinApp(const CWinApp&) = delete;
    CWinApp& operator=(const CWinApp&) = delete;
    virtual ~CWinApp();

    virtual BOOL InitInstance() { return TRUE; }
    virtual int ExitInstance() { return 0; }

    static const std::vector<CWinApp*>& Instances();

    LPCWSTR m_pszAppName;
    // Names the module the application object belongs to.
    HINSTANCE m_hInstance;
};

// Whose resources are in use. Code that the host calls in a module switches to the module's own
// state for its duration (AFX_MANAGE_STATE), and the caller's state comes back when it returns.
struct AFX_MODULE_STATE
{
    HINSTANCE m_hCurrentResourceHandle = nullptr;
};

// The state in use now, and its resource handle (null: the host's own).
AFX_MODULE_STATE* AfxGetModuleState();
HINSTANCE AfxGetResourceHandle();
// The state of the module that calls it: each module defines its own.
AFX_MODULE_STATE* AfxGetStaticModuleState();

class AFX_MAINTAIN_STATE2
{
public:
    explicit AFX_MAINTAIN_STATE2(AFX_MODULE_STATE* state);
    ~AFX_MAINTAIN_STATE2();
    AFX_MAINTAIN_STATE2(const AFX_MAINTAIN_STATE2&) = delete;
    AFX_MAINTAIN_STATE2& operator=(const AFX_MAINTAIN_STATE2&) = delete;

private:
    AFX_MODULE_STATE* m_previous;
};

#define AFX_MANAGE_STATE(p) AFX_MAINTAIN_STATE2 _ctlState(p)

