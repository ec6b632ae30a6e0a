// The view's construction, wiring to the host, layout, painting and tear-down.

#include "explorer/DlgProjectExplorer.h"

#include "host/HostMessages.h"
#include "host/OrbObjNotify.h"
#include "host/UISubClassingMgr.h"
#include "module/ExplorerApp.h"
#include "module/ExplorerNames.h"

using namespace PENames;

namespace
{
// Height of the toolbar band above the tree, in pixels at 96 DPI.
constexpr int kToolbarBand = 20;
} // namespace

// clang-format off
BEGIN_MESSAGE_MAP(DlgProjectExplorer, CDialogBase)
    ON_NOTIFY(TVN_KEYDOWN, IDC_PROJECT_TREE, &DlgProjectExplorer::OnTvnKeydownProjectTree)
    ON_NOTIFY(TVN_ENDLABELEDITW, IDC_PROJECT_TREE, &DlgProjectExplorer::OnTvnEndlabeleditProjectTree)
    ON_NOTIFY(TVN_BEGINLABELEDITW, IDC_PROJECT_TREE, &DlgProjectExplorer::OnTvnBeginlabeleditProjectTree)
    ON_NOTIFY(NM_DBLCLK, IDC_PROJECT_TREE, &DlgProjectExplorer::OnNMDblclkProjectTree)
    ON_NOTIFY(NM_LDOWN, IDC_PROJECT_TREE, &DlgProjectExplorer::OnNMLButtonDownProjectTree)
    ON_NOTIFY(NM_CLICK, IDC_PROJECT_TREE, &DlgProjectExplorer::OnNMClickProjectTree)
    ON_NOTIFY(TVN_BEGINDRAGW, IDC_PROJECT_TREE, &DlgProjectExplorer::OnTvnBegindragProjectTree)
    ON_NOTIFY(TVN_BEGINRDRAGW, IDC_PROJECT_TREE, &DlgProjectExplorer::OnTvnBegindragProjectTree)
    ON_NOTIFY(TVN_SELCHANGEDW, IDC_PROJECT_TREE, &DlgProjectExplorer::OnTvnSelchangedProjectTree)
    ON_NOTIFY(MultiSelectionTreeCtrl::NotifyBatchSelChangeEnd, IDC_PROJECT_TREE,
              &DlgProjectExplorer::OnTvnBatchSelChangeEndProjectTree)
    ON_WM_DESTROY()
    ON_WM_CONTEXTMENU()
    ON_WM_SIZE()
    ON_WM_TIMER()
    ON_REGISTERED_MESSAGE(s_uSendSelectionMsg, &DlgProjectExplorer::SendSelection)
    ON_REGISTERED_MESSAGE(uInspectObjectMsg, &DlgProjectExplorer::InspectObject)
    ON_MESSAGE(WM_CUT, &DlgProjectExplorer::OnWmCut)
    ON_MESSAGE(WM_COPY, &DlgProjectExplorer::OnWmCopy)
    ON_MESSAGE(WM_PASTE, &DlgProjectExplorer::OnWmPaste)
    ON_MESSAGE(HostMessages::CanCut, &DlgProjectExplorer::OnWmCanCut)
    ON_MESSAGE(HostMessages::CanCopy, &DlgProjectExplorer::OnWmCanCopy)
    ON_MESSAGE(HostMessages::CanPaste, &DlgProjectExplorer::OnWmCanPaste)
    ON_MESSAGE(HostMessages::DeleteObject, &DlgProjectExplorer::OnDeleteObject)
    ON_MESSAGE(HostMessages::RenameObject, &DlgProjectExplorer::OnRenameObject)
    ON_MESSAGE(HostMessages::ForwardedKey, &DlgProjectExplorer::OnKeyMessage)
    ON_MESSAGE(WM_LOAD_SCROLL_STATE, &DlgProjectExplorer::OnLoadScrollState)
    ON_WM_ERASEBKGND()
END_MESSAGE_MAP()
// clang-format on

DlgProjectExplorer::DlgProjectExplorer(std::set<OrbObjectCategories::Category> const& categories,
                                       CWnd* parent)
    : CDialogBase(IDD, parent), m_dropTarget(this), m_toolbar(categories), m_categories(categories)
{
    CreateRootNodeList();
}

DlgProjectExplorer::~DlgProjectExplorer()
{
    DeleteRootNodeList();
    m_menuCommands.clear();
}

HINSTANCE DlgProjectExplorer::GetResourceHandle()
{
    return theApp.m_hInstance;
}

void DlgProjectExplorer::OnSyncGroupChanged(UINT_PTR group)
{
    if (group != m_syncGroup)
        m_syncGroup = group;
}

void DlgProjectExplorer::OnLoadView()
{
    LoadExpandStates();
    NotifyRefreshTree(RefreshAll);
    PostMessage(WM_LOAD_SCROLL_STATE, 0, 0);
}

void DlgProjectExplorer::OnDeleteView()
{
    SaveScrollState();
    SaveExpandStates();
}

LRESULT DlgProjectExplorer::OnLoadScrollState(WPARAM, LPARAM)
{
    return LoadScrollState();
}

void DlgProjectExplorer::DoDataExchange(CDataExchange* pDX)
{
    CDialogBase::DoDataExchange(pDX);
    DDX_CXControl(pDX, IDC_PROJECT_TREE, m_tree);
}

BOOL DlgProjectExplorer::OnInitDialog()
{
    CDialogBase::OnInitDialog();

    m_dropTarget.SetTreeCtrl(&m_tree);
    m_dropTarget.Register(&m_tree);

    if (CProp* globals = GlobalPropMgr::m_pInstance)
    {
        (*globals)[rosCurrentPlatform].Register(PropFuncPtrType(this, &DlgProjectExplorer::OnPlatformChange),
                                                false);
        (*globals)[rosCurrentLanguageID].Register(
            PropFuncPtrType(this, &DlgProjectExplorer::OnLanguageChange), false);
        (*globals)[rosLockUIUpdate].Register(PropFuncPtrType(this, &DlgProjectExplorer::OnUILockChange),
                                             false);
    }

    if (INotifyMgr* notify = INotifyMgr::m_pInstance)
    {
        notify->Register(rosProject, NotifyDelegate(this, &DlgProjectExplorer::OnProjectChange));
        notify->Register(rosSonariumObject,
                         NotifyDelegate(this, &DlgProjectExplorer::OnOrbObjectNotification));
        notify->Register(rosWorkUnit, NotifyDelegate(this, &DlgProjectExplorer::OnWorkUnitNotification));
        notify->Register(MusicNotify::rosInteractiveMusic,
                         NotifyDelegate(this, &DlgProjectExplorer::OnMusicNotification));
        notify->Register(rosSourceControl,
                         NotifyDelegate(this, &DlgProjectExplorer::OnSourceControlNotification));
        notify->Register(rosEditingManager,
                         NotifyDelegate(this, &DlgProjectExplorer::OnEditingCapabilitiesChange));
        notify->Register(rosConversion, NotifyDelegate(this, &DlgProjectExplorer::OnConversionNotification));
        notify->Register(rosClipboard, NotifyDelegate(this, &DlgProjectExplorer::OnClipboardNotification));
    }

    NotifyRefreshTree(RefreshAll);

    m_toolbar.Create(this, this);
    return TRUE;
}

void DlgProjectExplorer::OnDestroy()
{
    if (CProp* globals = GlobalPropMgr::m_pInstance)
    {
        (*globals)[rosCurrentPlatform].UnRegister(
            PropFuncPtrType(this, &DlgProjectExplorer::OnPlatformChange));
        (*globals)[rosCurrentLanguageID].UnRegister(
            PropFuncPtrType(this, &DlgProjectExplorer::OnLanguageChange));
        (*globals)[rosLockUIUpdate].UnRegister(PropFuncPtrType(this, &DlgProjectExplorer::OnUILockChange));
    }

    if (INotifyMgr* notify = INotifyMgr::m_pInstance)
    {
        notify->UnRegister(rosProject, NotifyDelegate(this, &DlgProjectExplorer::OnProjectChange));
        notify->UnRegister(rosSonariumObject,
                           NotifyDelegate(this, &DlgProjectExplorer::OnOrbObjectNotification));
        notify->UnRegister(rosWorkUnit, NotifyDelegate(this, &DlgProjectExplorer::OnWorkUnitNotification));
        notify->UnRegister(rosSourceControl,
                           NotifyDelegate(this, &DlgProjectExplorer::OnSourceControlNotification));
        notify->UnRegister(MusicNotify::rosInteractiveMusic,
                           NotifyDelegate(this, &DlgProjectExplorer::OnMusicNotification));
        notify->UnRegister(rosEditingManager,
                           NotifyDelegate(this, &DlgProjectExplorer::OnEditingCapabilitiesChange));
        notify->UnRegister(rosConversion,
                           NotifyDelegate(this, &DlgProjectExplorer::OnConversionNotification));
        notify->UnRegister(rosClipboard, NotifyDelegate(this, &DlgProjectExplorer::OnClipboardNotification));
    }

    CDialogBase::OnDestroy();
}

void DlgProjectExplorer::PostNcDestroy()
{
    CDialogBase::PostNcDestroy();
    delete this;
}

void DlgProjectExplorer::OnSize(UINT type, int cx, int cy)
{
    CDialogBase::OnSize(type, cx, cy);
    if (!m_tree.GetSafeHwnd())
        return;
    CRect client;
    GetClientRect(&client);
    client.top = UISubClassingMgr::ScaleToDpi(kToolbarBand);
    m_tree.MoveWindow(&client, TRUE);
}

BOOL DlgProjectExplorer::OnEraseBkgnd(CDC* dc)
{
    const int loadId = sn::theme::GetLoadId();
    if (loadId != m_themeLoadId)
    {
        m_themeLoadId = loadId;
        m_tree.SendMessage(TVM_SETBKCOLOR, 0, static_cast<LPARAM>(clrBackground.ToCOLORREF()));
        m_tree.SendMessage(TVM_SETTEXTCOLOR, 0, static_cast<LPARAM>(clrNormalText.ToCOLORREF()));
    }
    return CDialogBase::OnEraseBkgnd(dc);
}
