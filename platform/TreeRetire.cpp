// Rebuilds that keep what did not change: the top-level items are retired rather than deleted,
// and a derived control takes back whole the subtrees it would insert again unchanged.
//
// A rebuild retires in time proportional to the top-level items; taking a subtree back costs its
// ancestors' row counts. So a rebuild costs the items that changed, not the items shown.

#include "platform/TreeCtrl.h"

#include "platform/TreeItem.h"

#include <algorithm>

bool CTreeCtrl::HandleLives(HTREEITEM item) const
{
    return Lookup(item) != nullptr;
}

bool CTreeCtrl::IsRetired(uint32_t index) const
{
    for (;;)
    {
        const Item& item = At(index);
        if (item.retired)
            return true;
        if (item.parent == NoIndex)
            return false;
        index = item.parent;
    }
}

void CTreeCtrl::Touch(uint32_t index)
{
    if (m_building != 0 || m_changedAll || !KeepsRetiredItems() || (!m_changed.empty() && m_changed.back() == index))
        return;
    // Beyond one entry per item, remembering each is worth less than rebuilding everything.
    if (m_changed.size() >= std::max<size_t>(m_count, 1024))
    {
        m_changedAll = true;
        m_changed.clear();
        return;
    }
    m_changed.push_back(index);
}

void CTreeCtrl::NoteItemChanged(HTREEITEM item)
{
    if (Item* found = Lookup(item))
        Touch(static_cast<uint32_t>(found - m_items.data()));
}

void CTreeCtrl::RetireRoots()
{
    // Items a fresh insertion could not reproduce are not taken back: those the editor, the drop
    // highlight or a derived control's state name, and every item changed since it was built.
    OnRetiring();
    NoteItemChanged(m_editItem);
    NoteItemChanged(m_dropTarget);
    m_blocked.clear();
    m_blockedAll = m_changedAll;
    for (uint32_t index : m_changed)
        for (uint32_t at = index; at != NoIndex && At(at).alive && m_blocked.insert(at).second; at = At(at).parent)
        {
        }
    m_changed.clear();
    m_changedAll = false;

    for (uint32_t root = m_firstRoot; root != NoIndex; root = At(root).next)
    {
        At(root).retired = true;
        ++m_retiredRoots;
    }
    m_retiredFirst = m_firstRoot;
    m_retiredLast = m_lastRoot;
    m_firstRoot = m_lastRoot = NoIndex;
    m_shownRows = 0;
    m_scrollRow = 0;
    RowsChanged();
}

bool CTreeCtrl::AdoptRetired(HTREEITEM item, LPARAM data, HTREEITEM parent, HTREEITEM after)
{
    if (m_retiredRoots == 0 || m_blockedAll || m_building == 0)
        return false;
    Item* found = Lookup(item);
    if (!found || found->data != data)
        return false;
    const auto index = static_cast<uint32_t>(found - m_items.data());
    if (m_blocked.count(index) || !IsRetired(index))
        return false;
    uint32_t parentIndex = NoIndex;
    uint32_t afterIndex = NoIndex;
    if (!Placement(parent, after, parentIndex, afterIndex))
        return false;

    // Out of the retired tree, into the shown one. The retired ancestors it leaves lose a child
    // and their counts: they can no longer be taken back whole.
    for (uint32_t at = found->parent; at != NoIndex && m_blocked.insert(at).second; at = At(at).parent)
    {
    }
    Unlink(index);
    if (found->retired)
    {
        found->retired = false;
        --m_retiredRoots;
    }
    Link(index, parentIndex, afterIndex);
    AddShownRows(parentIndex, found->rows);
    RowsChanged();
    return true;
}

void CTreeCtrl::SettleRetired() const
{
    if (m_retiredRoots != 0 && m_building == 0 && !m_freeingRetired)
        const_cast<CTreeCtrl*>(this)->FreeRetired();
}

void CTreeCtrl::FreeRetired()
{
    // As DeleteItem does, each retired subtree children first; the items stay retired, and so
    // invisible, until released.
    m_freeingRetired = true;
    while (m_retiredFirst != NoIndex)
    {
        const uint32_t root = m_retiredFirst;
        const std::vector<uint32_t> order = PostOrder(root);
        for (uint32_t index : order)
            OnItemDeleting(HandleOf(index));
        Unlink(root);
        At(root).retired = false;
        --m_retiredRoots;
        for (uint32_t index : order)
            Release(index);
    }
    m_blocked.clear();
    m_blockedAll = false;
    m_freeingRetired = false;
}
