#pragma once
// The explorer view: a child dialog holding the object toolbar and the project tree of
// one set of project categories. The host builds one per explorer pane.

#include "explorer/dragdrop/PEDropTarget.h"
#include "explorer/menu/MenuCommandEntry.h"
#include "explorer/toolbar/ObjectToolbar.h"
#include "explorer/toolbar/ObjectToolbarOwner.h"
#include "host/DialogBase.h"
#include "host/EventHelpers.h"
#include "host/GlobalProp.h"
#include "host/NotifyMgr.h"
#include "host/OrbObjectCategories.h"
#include "host/PETreeCtrl.h"
#include "host/PMTreeNode.h"

#include <functional>
#include <set>
#include <vector>

class IOrbObject;

class DlgProjectExplorer : public CDialogBase, public IObjectToolbarOwner
{
public:
    // The explorer's names for the bits of a refresh request.
    enum RefreshMask : unsigned long
    {
        RefreshChildrenAdded = 1,
        RefreshChildrenRemoved = 2,
        RefreshVisuals = 4,
        RefreshInclusion = 8,
        RefreshAll = 15,
    };

    enum
    {
        IDD = 2001,
        IDC_PROJECT_TREE = 2011,
        TIMER_REFRESH_VISUALS = 1,
        TIMER_EDIT_ITEM = 2,
        TIMER_DELAY_MS = 200,
        WM_LOAD_SCROLL_STATE = WM_USER + 2000,
    };

    // Registered "_ProjectExplorer_SendSelectionToEventViewer": announce the selection.
    static const UINT s_uSendSelectionMsg;

    DlgProjectExplorer(std::set<OrbObjectCategories::Category> const& categories, CWnd* parent);
    ~DlgProjectExplorer() override;

    // The host's view protocol.
    HINSTANCE GetResourceHandle() override;
    void OnSyncGroupChanged(UINT_PTR group) override;
    void OnDeleteView() override;
    void OnLoadView() override;

    // IObjectToolbarOwner
    void OnButtonClicked(PMTreeNode::NodeType type) override;

    // Root nodes and refresh.
    void CreateRootNodeList();
    void RefreshRootNodeList(bool force, unsigned long flags);
    void DeleteRootNodeList();
    std::vector<PMTreeNode*> const& RootTreeNodes() const { return m_rootNodes; }
    void RefreshTree(bool force);
    void FillTreeView();
    void RefreshItem(HTREEITEM item);
    void RefreshItemName(HTREEITEM item);
    void RefreshItemPF(HTREEITEM item, bool updateImages);
    void RefreshItemVisualState(HTREEITEM item);
    void RefreshItemVisualState(GUID id);
    void BeginUpdate();
    void EndUpdate();
    void NotifyRefreshTree(unsigned long mask);

    // Lookups between items, nodes, GUIDs and objects.
    void SetSelectedFlag(HTREEITEM item, bool selected);
    GUID GetGUIDOfItem(HTREEITEM item) const;
    HTREEITEM GetItemWithGUID(GUID const& id, HTREEITEM start);
    PMTreeNode* GetNodeWithGUID(GUID const& id);
    void GetSelectedNodeList(std::vector<PMTreeNode*>& out);
    void GetSelectedNodeList(std::vector<HTREEITEM> const& items, std::vector<PMTreeNode*>& out);
    void GetSelectedObjects(std::vector<IOrbObject*>& out);
    void GetSelectedObjects(std::vector<HTREEITEM> const& items, std::vector<IOrbObject*>& out);
    PMTreeNode* GetFocusedNode();
    bool IsFocusedNodeSelected();
    PMTreeNode* GetTopWorkUnitNode(IOrbObject* object);
    bool IsObjectInProjectExplorer(IOrbObject const* object) const;

    // Expand and scroll state.
    CStdStr<wchar_t> GetExpandedSettingName(GUID const& rootId) const;
    CStdStr<wchar_t> GetScrollSettingName(OrbObjectCategories::Category category) const;
    void LoadExpandStates();
    void SaveExpandStates();
    void SaveScrollState();
    LRESULT LoadScrollState();

    // Revealing objects.
    void FindOrbObject(IOrbObject* object);
    void FindOrbObject(std::vector<IOrbObject*>& objects);

    // Selection, inspection and the transport.
    void DelayNotifySelection();
    LRESULT SendSelection(WPARAM, LPARAM);
    void SendOrbObjectToTransport(GUID const& id);
    LRESULT InspectObject(WPARAM, LPARAM lParam);
    void InspectSelectionIfRequired();
    void SetFocusOnTree();
    void UpdateToolbar();
    void UpdateToolbar(std::vector<HTREEITEM> const& items);

    // Deferred work.
    void ScheduleRefreshVisuals();
    void ScheduleEditItem(HTREEITEM item);

    // Creation (the toolbar and the context menu).
    void AddNode(PMTreeNode::NodeType type, bool parent);
    bool AddChildToItem(PMTreeNode::NodeType type, bool editLabel, GUID* outGuid);
    bool AddEffectChildToItem(unsigned pluginId, OrbObjectType objectType);
    bool AddAudioDeviceChildToItem(unsigned pluginId);
    bool AddEventChildToItem(OrbEventActionEnum::OrbEventActionType action,
                             OrbEventActionEnum::OrbEventActionScope scope);
    bool AddParentToItem(PMTreeNode::NodeType type, GUID* outGuid);
    void CreateOrbEventObject(bool defaultName, OrbEventActionEnum::OrbEventActionType action,
                              OrbEventActionEnum::OrbEventActionScope scope, bool oneEventPerObject);
    // The creation commands of the context menu, by dynamic identifier (see m_menuCommands).
    void OnAddNode(UINT id);
    void OnAddSource(UINT id);
    void OnNewEvent(UINT id);
    // What the dynamic identifiers of the last context menu stand for.
    MenuCommandMap& MenuCommands() { return m_menuCommands; }
    // Runs the context menu's command of that identifier; any other identifier does nothing.
    void DispatchMenuCommand(uint32_t id);

    // Renaming in place.
    void EditLabelWithGUID(const GUID& guid);

    // Structure commands on the selection, reached from the context menu and the host's menus.
    void Expand(bool expand, bool recursive);
    void OnExpandDescendants();
    void OnCollapseDescendants();
    // Inclusion of the selection on the current platform: a command identifier of the context
    // menu for all included or excluded (all linked or unlinked), 0 for a mixed selection.
    unsigned int IsIncluded();
    unsigned int IsInclusionLinked();
    void CheckSelectedNode(bool include);
    void LinkInclusionInSelectedNode(bool link);
    void SetNodeInclusion(PMTreeNode* node, bool include);
    void OnCheckSelection();
    void OnUncheckSelection();
    void OnLinkInclusion();
    void OnUnLinkInclusion();
    void OnEnableWorkUnit();
    void OnBatchRename();
    void OnAudioFileImporter();
    void OnImportSoundbankDefinition();

    // Drops on the tree: objects under the node hit (point in the tree's client coordinates),
    // and audio files imported under the object of that GUID (GUID_NULL: a category's root).
    DROPEFFECT DropObjects(PMTreeNode* node, COleDataObject* data, DROPEFFECT dropDefault, DROPEFFECT dropList,
                           CPoint point, bool rightDrag);
    bool DropAudioFiles(const GUID& target, const std::vector<CStdStr<wchar_t>>& files, DWORD keyState);

    // The cut rule over a list of nodes as given: 1 allowed, 2 not.
    LRESULT CanCut(const std::vector<PMTreeNode*>& nodes);

    PETreeCtrl& GetTreeCtrl() { return m_tree; }
    // Whether a refresh waits for the UI lock to drop or the label editor to close: tools that
    // check the view against the project read it.
    bool HasPendingRefresh() const
    {
        return m_pendingRefresh != 0 || !m_pendingNameRefresh.empty() || !m_pendingPFRefresh.empty();
    }
    ObjectToolbar& GetObjectToolbar() { return m_toolbar; }

protected:
    DECLARE_MESSAGE_MAP()

    void DoDataExchange(CDataExchange* pDX) override;
    void PostNcDestroy() override;
    BOOL OnInitDialog() override;

    void OnDestroy();
    void OnSize(UINT type, int cx, int cy);
    BOOL OnEraseBkgnd(CDC* dc);
    void OnTimer(UINT_PTR id);
    void OnContextMenu(CWnd* wnd, CPoint point);

    // Tree notifications.
    void OnTvnKeydownProjectTree(NMHDR* hdr, LRESULT* result);
    void OnTvnEndlabeleditProjectTree(NMHDR* hdr, LRESULT* result);
    void OnTvnBeginlabeleditProjectTree(NMHDR* hdr, LRESULT* result);
    void OnNMDblclkProjectTree(NMHDR* hdr, LRESULT* result);
    void OnNMLButtonDownProjectTree(NMHDR* hdr, LRESULT* result);
    void OnNMClickProjectTree(NMHDR* hdr, LRESULT* result);
    void OnTvnBegindragProjectTree(NMHDR* hdr, LRESULT* result);
    void OnTvnSelchangedProjectTree(NMHDR* hdr, LRESULT* result);
    void OnTvnBatchSelChangeEndProjectTree(NMHDR* hdr, LRESULT* result);

    // The host's command messages.
    LRESULT OnWmCut(WPARAM, LPARAM);
    LRESULT OnWmCopy(WPARAM, LPARAM);
    LRESULT OnWmPaste(WPARAM, LPARAM);
    LRESULT OnWmCanCut(WPARAM, LPARAM);
    LRESULT OnWmCanCopy(WPARAM, LPARAM);
    LRESULT OnWmCanPaste(WPARAM, LPARAM);
    LRESULT OnDeleteObject(WPARAM = 0, LPARAM = 0);
    LRESULT OnRenameObject(WPARAM = 0, LPARAM = 0);
    LRESULT OnKeyMessage(WPARAM wParam, LPARAM);
    LRESULT OnLoadScrollState(WPARAM, LPARAM);

    // Host properties and notifications.
    void OnPlatformChange(CProp& prop);
    void OnLanguageChange(CProp& prop);
    void OnUILockChange(CProp& prop);
    void OnProjectChange(CNotifyItemBase* item);
    void OnOrbObjectNotification(CNotifyItemBase* item);
    void OnWorkUnitNotification(CNotifyItemBase* item);
    void OnMusicNotification(CNotifyItemBase* item);
    void OnSourceControlNotification(CNotifyItemBase* item);
    void OnEditingCapabilitiesChange(CNotifyItemBase* item);
    void OnConversionNotification(CNotifyItemBase* item);
    void OnClipboardNotification(CNotifyItemBase* item);

private:
    // The drop target reads which categories the view shows.
    friend class PEDropTarget;

    bool IsUILocked() const;
    bool IsEditingLabel();
    bool IsSingleItemSelected() const;
    // The steps every child creation shares; make names and creates the child under the node.
    bool CreateChildOfSelection(PMTreeNode::NodeType type, bool editLabel, GUID* outGuid,
                                const std::function<bool(PMTreeNode* node, GUID& guid)>& make);
    // Runs a creation and then applies the entry's preset to what it made.
    void CreateWithPreset(UINT id, uint32_t kind, const wchar_t* undoName,
                          const std::function<bool(PMTreeNode::NodeType, GUID*)>& create);
    void RefreshItemNameWithGUID(GUID const& id);
    // The clipboard commands: the selection without nodes below other selected nodes, the
    // objects of every selected node, and the store of the nodes' objects.
    void GetClipboardSelection(std::vector<PMTreeNode*>& nodes);
    void GetPasteTargets(std::vector<IOrbObject*>& targets);
    void CopyToClipboard(const std::vector<PMTreeNode*>& nodes, bool cut);
    void InvalidateTree();

    PETreeCtrl m_tree;
    PEDropTarget m_dropTarget;
    ObjectToolbar m_toolbar;
    std::set<GUID, GUIDLess> m_pendingNameRefresh;
    std::set<GUID, GUIDLess> m_pendingPFRefresh;
    GUID m_firstVisibleAnchor = GUID_NULL;
    unsigned long m_pendingRefresh = 0;
    bool m_selectionPosted = false;
    bool m_updating = false;
    bool m_bEditingLabel = false;
    bool m_inspectPending = false;
    bool m_suppressNextInspect = true;
    bool m_visualsTimerArmed = false;
    bool m_expandStatesLoaded = false;
    bool m_sourceControlAborted = false;
    std::set<OrbObjectCategories::Category> m_categories;
    std::vector<PMTreeNode*> m_rootNodes;
    MenuCommandMap m_menuCommands;
    unsigned int m_hitTestFlags = 0;
    HTREEITEM m_hitTestItem = nullptr;
    HTREEITEM m_itemToEdit = nullptr;
    UINT_PTR m_syncGroup = 0;
    int m_themeLoadId = -1;
};
