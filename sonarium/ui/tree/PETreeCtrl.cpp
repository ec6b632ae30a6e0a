#include "host/PETreeCtrl.h"

#include "sonarium/core/model/ProjectObject.h"

#include <utility>

namespace
{
// The structural bits of a node refresh: children added and removed.
constexpr unsigned long k_structureRefresh = 1 | 2;
} // namespace

PETreeCtrl::PETreeCtrl() = default;

PETreeCtrl::~PETreeCtrl() = default;

PMTreeNode* PETreeCtrl::GetNodeFromItem(HTREEITEM item) const
{
    return ItemExists(item) ? reinterpret_cast<PMTreeNode*>(GetItemData(item)) : nullptr;
}

HTREEITEM PETreeCtrl::Adopt(PMTreeNode* node, HTREEITEM parent, HTREEITEM after)
{
    if (!HasRetiredItems() || node->ShownChangeStamp() >= m_adoptBefore)
        return nullptr;
    const IndexEntry* found = m_index.Find(node->ID());
    if (!found)
        return nullptr;
    HTREEITEM item = found->item;
    return AdoptRetired(item, reinterpret_cast<LPARAM>(node), parent, after) ? item : nullptr;
}

void PETreeCtrl::OnRetiring()
{
    MultiSelectionTreeCtrl::OnRetiring();
    // Overlays are asked again of a rebuilt item: so they are of a kept one.
    m_overlays.clear();
    m_adoptBefore = m_rebuiltAt;
    m_rebuiltAt = sn::ProjectObject::ChangeClock();
}

HTREEITEM PETreeCtrl::InsertOne(PMTreeNode* node, HTREEITEM parent, HTREEITEM after)
{
    HTREEITEM item =
        CTreeCtrl::InsertItem(nullptr, node->GetIconType(), reinterpret_cast<LPARAM>(node), parent, after);
    if (!item)
        return nullptr;
    IndexItem(node->ID(), item);
    SetItemHasChildren(item, node->HasChildren());
    if (node->IsSelected())
        SetItemState(item, TVIS_SELECTED, TVIS_SELECTED);
    return item;
}

void PETreeCtrl::IndexItem(GUID const& id, HTREEITEM item)
{
    // Entries of deleted items stay until the tree empties or the index would have to grow:
    // then they go instead, so the index follows the items shown, not those ever shown.
    if (m_index.IsFull())
        m_index.EraseIf([this](const IndexEntry& entry) { return !HandleLives(entry.item); });
    m_index.Insert({id, item});
}

void PETreeCtrl::InsertChildren(HTREEITEM item, PMTreeNode* node)
{
    // Breadth of work, not depth of recursion: expanded subtrees can be very deep.
    std::vector<std::pair<HTREEITEM, PMTreeNode*>> pending{{item, node}};
    while (!pending.empty())
    {
        auto [parentItem, parentNode] = pending.back();
        pending.pop_back();
        const bool open = parentNode->IsExpanded() && parentNode->HasChildren();
        CTreeCtrl::SetItemState(parentItem, open ? TVIS_EXPANDED : 0, TVIS_EXPANDED);
        if (!open)
            continue;
        for (PMTreeNode* child : parentNode->Children())
        {
            if (Adopt(child, parentItem, TVI_LAST))
                continue;
            HTREEITEM childItem = InsertOne(child, parentItem, TVI_LAST);
            if (childItem && child->IsExpanded())
                pending.emplace_back(childItem, child);
        }
    }
}

HTREEITEM PETreeCtrl::InsertItem(PMTreeNode* node, HTREEITEM parent, HTREEITEM after)
{
    if (!node)
        return nullptr;
    // Only the items below are being built: the parent's children change.
    if (parent && parent != TVI_ROOT)
        NoteItemChanged(parent);
    BuildScope building(*this);
    if (HTREEITEM adopted = Adopt(node, parent, after))
        return adopted;
    HTREEITEM item = InsertOne(node, parent, after);
    if (item)
        InsertChildren(item, node);
    return item;
}

void PETreeCtrl::DeleteChildItems(HTREEITEM item)
{
    while (HTREEITEM child = GetChildItem(item))
        DeleteItem(child);
}

void PETreeCtrl::RefreshItem(HTREEITEM item)
{
    PMTreeNode* node = GetNodeFromItem(item);
    if (!node)
        return;
    DeleteChildItems(item);
    SetItemHasChildren(item, node->HasChildren());
    SetItemImage(item, node->GetIconType());
    InsertChildren(item, node);
}

HTREEITEM PETreeCtrl::GetItemWithGUID(GUID const& id, HTREEITEM start) const
{
    const IndexEntry* found = m_index.Find(id);
    if (!found || !ItemExists(found->item))
        return nullptr;
    HTREEITEM item = found->item;
    if (start && start != TVI_ROOT && start != item && !IsAncestor(start, item))
        return nullptr;
    return item;
}

BOOL PETreeCtrl::EnsureVisible(HTREEITEM& item)
{
    PMTreeNode* node = GetNodeFromItem(item);
    if (!node)
        return MultiSelectionTreeCtrl::EnsureVisible(item);
    const GUID id = node->ID();
    const BOOL shown = MultiSelectionTreeCtrl::EnsureVisible(item);
    // Expanding an ancestor re-reads its children and may remake the item.
    if (!ItemExists(item))
    {
        item = GetItemWithGUID(id, TVI_ROOT);
        return item ? MultiSelectionTreeCtrl::EnsureVisible(item) : FALSE;
    }
    return shown;
}

void PETreeCtrl::SetAllItemImage()
{
    // Items read their icon when inserted: unless a node's icon changed since the last walk,
    // every item shows its node's already, and a million items need not be visited.
    if (m_iconsReadAt == PMTreeNode::IconChanges())
        return;
    m_iconsReadAt = PMTreeNode::IconChanges();
    // One repaint for the whole walk, not one per item.
    RedrawSuspension quiet(*this);
    for (HTREEITEM root = GetRootItem(); root; root = GetNextSiblingItem(root))
    {
        std::vector<HTREEITEM> pending{root};
        while (!pending.empty())
        {
            HTREEITEM item = pending.back();
            pending.pop_back();
            UpdateIcon(item);
            for (HTREEITEM child = GetChildItem(item); child; child = GetNextSiblingItem(child))
                pending.push_back(child);
        }
    }
    Repaint();
}

void PETreeCtrl::UpdateIcon(HTREEITEM item)
{
    if (PMTreeNode* node = GetNodeFromItem(item))
        SetItemImage(item, node->GetIconType());
}

void PETreeCtrl::ClearOverlayIcons()
{
    m_overlays.clear();
    ++m_overlayClears;
    Repaint();
}

std::wstring PETreeCtrl::QueryItemText(HTREEITEM item) const
{
    PMTreeNode* node = GetNodeFromItem(item);
    return node ? std::wstring(node->GetDisplayName().c_str()) : std::wstring();
}

void PETreeCtrl::OnItemExpanding(HTREEITEM item, bool expand)
{
    MultiSelectionTreeCtrl::OnItemExpanding(item, expand);
    PMTreeNode* node = GetNodeFromItem(item);
    if (!node)
        return;
    DeleteChildItems(item);
    node->IsExpanded(expand);
    if (!expand)
        return;
    node->Refresh(true, k_structureRefresh);
    SetItemHasChildren(item, node->HasChildren());
    InsertChildren(item, node);
}

void PETreeCtrl::OnItemDeleting(HTREEITEM item)
{
    // Nodes may already be gone when their items are deleted (a refresh replaces nodes, then
    // the items): entries are never read through the node, and stale ones fail the handle
    // check. The index is emptied with the tree, keeping its room: a tree emptied is mostly
    // about to be filled again by a refresh.
    if (GetCount() <= 1)
        m_index.Reset();
    m_overlays.erase(item);
    MultiSelectionTreeCtrl::OnItemDeleting(item);
}
