// Root nodes, the batched refresh of the tree, and the lookups between items, nodes,
// GUIDs and objects that the rest of the view uses.

#include "explorer/DlgProjectExplorer.h"

#include "host/ProjectManager.h"
#include "host/TreeNodeWithObject.h"
#include "module/ExplorerNames.h"

using namespace PENames;

void DlgProjectExplorer::CreateRootNodeList()
{
    ProjectManager* projects = ProjectManager::m_pInstance;
    if (!projects)
        return;
    for (OrbObjectCategories::Category category : OrbObjectCategories::GetActiveCategories())
    {
        if (!m_categories.count(category))
            continue;
        CSmartPtr<IOrbWorkUnit> workUnit;
        if (projects->GetTopWorkUnit(category, workUnit) && workUnit)
            m_rootNodes.push_back(NodeFactory::CreateNode(nullptr, workUnit));
    }
}

void DlgProjectExplorer::RefreshRootNodeList(bool force, unsigned long flags)
{
    for (PMTreeNode* root : m_rootNodes)
        root->Refresh(force, flags);
}

void DlgProjectExplorer::DeleteRootNodeList()
{
    for (PMTreeNode* root : m_rootNodes)
        delete root;
    m_rootNodes.clear();
}

bool DlgProjectExplorer::IsUILocked() const
{
    CProp* globals = GlobalPropMgr::m_pInstance;
    return globals && (*globals)[rosLockUIUpdate].GetInt() > 0;
}

void DlgProjectExplorer::RefreshTree(bool force)
{
    if (m_pendingRefresh != 0 || !m_pendingNameRefresh.empty() || !m_pendingPFRefresh.empty())
    {
        BeginUpdate();
        if (m_pendingRefresh != 0)
        {
            unsigned long mask = m_pendingRefresh;
            if (!m_pendingPFRefresh.empty())
                mask |= RefreshInclusion;
            RefreshRootNodeList(force, mask);
            FillTreeView();
        }
        else
        {
            for (GUID const& id : m_pendingNameRefresh)
                RefreshItemNameWithGUID(id);

            bool walkedInclusion = false;
            while (!m_pendingPFRefresh.empty())
            {
                walkedInclusion = true;
                const GUID id = *m_pendingPFRefresh.begin();
                RefreshItemPF(m_tree.GetItemWithGUID(id, TVI_ROOT), false);
                // An item gone, or a node that did not handle its own GUID, must not hold the loop.
                m_pendingPFRefresh.erase(id);
            }
            if (walkedInclusion)
                m_tree.SetAllItemImage();
        }
        EndUpdate();
        DelayNotifySelection();
    }
    m_pendingRefresh = 0;
    m_pendingNameRefresh.clear();
    m_pendingPFRefresh.clear();
}

void DlgProjectExplorer::FillTreeView()
{
    m_tree.SendMessage(TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(TVI_ROOT));
    for (PMTreeNode* root : m_rootNodes)
        m_tree.InsertItem(root, TVI_ROOT, TVI_LAST);
    if (HTREEITEM first = m_tree.GetFirstSelectedItem())
        m_tree.SetItemState(first, 1, 1);
}

void DlgProjectExplorer::BeginUpdate()
{
    m_tree.SendMessage(WM_SETREDRAW, FALSE, 0);
    m_updating = true;
    auto firstVisible =
        reinterpret_cast<HTREEITEM>(m_tree.SendMessage(TVM_GETNEXTITEM, TVGN_FIRSTVISIBLE, 0));
    m_firstVisibleAnchor = GetGUIDOfItem(firstVisible);
}

void DlgProjectExplorer::EndUpdate()
{
    m_tree.SendMessage(WM_SETREDRAW, TRUE, 0);
    if (m_firstVisibleAnchor != GUID_NULL)
    {
        auto firstVisible =
            reinterpret_cast<HTREEITEM>(m_tree.SendMessage(TVM_GETNEXTITEM, TVGN_FIRSTVISIBLE, 0));
        if (GetGUIDOfItem(firstVisible) != m_firstVisibleAnchor)
        {
            if (HTREEITEM anchor = m_tree.GetItemWithGUID(m_firstVisibleAnchor, TVI_ROOT))
            {
                // Scrolling must not change the anchor's focus or selection.
                const UINT saved = m_tree.GetItemState(anchor, 3);
                m_tree.SendMessage(TVM_SELECTITEM, TVGN_FIRSTVISIBLE, reinterpret_cast<LPARAM>(anchor));
                m_tree.SetItemState(anchor, saved, 3);
            }
        }
    }
    UpdateToolbar();
    m_updating = false;
    m_firstVisibleAnchor = GUID_NULL;
}

void DlgProjectExplorer::RefreshItem(HTREEITEM item)
{
    if (!item)
        return;
    BeginUpdate();
    if (PMTreeNode* node = m_tree.GetNodeFromItem(item))
        node->Refresh(true, RefreshAll);
    m_tree.RefreshItem(item);
    m_tree.SelectAll(false);
    EndUpdate();
}

void DlgProjectExplorer::RefreshItemName(HTREEITEM item)
{
    if (!item)
        return;
    if (PMTreeNode* node = m_tree.GetNodeFromItem(item))
    {
        node->RefreshName();
        m_tree.SetItemText(item, nullptr);
    }
}

void DlgProjectExplorer::RefreshItemNameWithGUID(GUID const& id)
{
    RefreshItemName(m_tree.GetItemWithGUID(id, TVI_ROOT));
}

void DlgProjectExplorer::RefreshItemPF(HTREEITEM item, bool updateImages)
{
    if (!item)
        return;
    if (PMTreeNode* node = m_tree.GetNodeFromItem(item))
        node->RefreshPF(m_pendingPFRefresh);
    if (updateImages)
        m_tree.SetAllItemImage();
}

void DlgProjectExplorer::RefreshItemVisualState(HTREEITEM item)
{
    if (!item)
        return;
    if (auto* refreshable = dynamic_cast<IVisualStateRefreshable*>(m_tree.GetNodeFromItem(item)))
        refreshable->RefreshVisualState();
    CRect row;
    if (m_tree.GetItemRect(item, &row, FALSE))
        m_tree.InvalidateRect(&row, FALSE);
}

void DlgProjectExplorer::RefreshItemVisualState(GUID id)
{
    if (IsUILocked())
        NotifyRefreshTree(RefreshVisuals);
    else
        RefreshItemVisualState(m_tree.GetItemWithGUID(id, TVI_ROOT));
}

void DlgProjectExplorer::SetSelectedFlag(HTREEITEM item, bool selected)
{
    if (!item)
        return;
    if (PMTreeNode* node = m_tree.GetNodeFromItem(item))
        node->IsSelected(selected);
}

GUID DlgProjectExplorer::GetGUIDOfItem(HTREEITEM item) const
{
    if (!item)
        return GUID_NULL;
    PMTreeNode* node = m_tree.GetNodeFromItem(item);
    return node ? node->ID() : GUID_NULL;
}

HTREEITEM DlgProjectExplorer::GetItemWithGUID(GUID const& id, HTREEITEM start)
{
    return m_tree.GetItemWithGUID(id, start);
}

PMTreeNode* DlgProjectExplorer::GetNodeWithGUID(GUID const& id)
{
    HTREEITEM item = m_tree.GetItemWithGUID(id, TVI_ROOT);
    return item ? m_tree.GetNodeFromItem(item) : nullptr;
}

void DlgProjectExplorer::GetSelectedNodeList(std::vector<PMTreeNode*>& out)
{
    out.clear();
    std::vector<HTREEITEM> items;
    m_tree.GetSelectedList(items);
    GetSelectedNodeList(items, out);
}

void DlgProjectExplorer::GetSelectedNodeList(std::vector<HTREEITEM> const& items,
                                             std::vector<PMTreeNode*>& out)
{
    for (HTREEITEM item : items)
        out.push_back(m_tree.GetNodeFromItem(item));
}

void DlgProjectExplorer::GetSelectedObjects(std::vector<IOrbObject*>& out)
{
    std::vector<HTREEITEM> items;
    m_tree.GetSelectedList(items);
    GetSelectedObjects(items, out);
}

void DlgProjectExplorer::GetSelectedObjects(std::vector<HTREEITEM> const& items,
                                            std::vector<IOrbObject*>& out)
{
    IOrbObject* focusedObject = nullptr;
    if (IsFocusedNodeSelected())
    {
        if (auto* node = static_cast<TreeNodeWithObject*>(m_tree.GetNodeFromItem(m_tree.GetFocusedItem())))
        {
            focusedObject = node->GetObject();
            out.push_back(focusedObject);
        }
    }
    for (HTREEITEM item : items)
    {
        auto* node = static_cast<TreeNodeWithObject*>(m_tree.GetNodeFromItem(item));
        if (node && node->GetObject() != focusedObject)
            out.push_back(node->GetObject());
    }
}

PMTreeNode* DlgProjectExplorer::GetFocusedNode()
{
    HTREEITEM focused = m_tree.GetFocusedItem();
    return focused ? m_tree.GetNodeFromItem(focused) : nullptr;
}

bool DlgProjectExplorer::IsFocusedNodeSelected()
{
    HTREEITEM focused = m_tree.GetFocusedItem();
    return focused && m_tree.IsSelected(focused);
}
