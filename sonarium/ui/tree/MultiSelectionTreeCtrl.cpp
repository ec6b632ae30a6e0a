#include "host/MultiSelectionTreeCtrl.h"

#include <algorithm>

MultiSelectionTreeCtrl::MultiSelectionTreeCtrl() = default;

MultiSelectionTreeCtrl::~MultiSelectionTreeCtrl() = default;

std::vector<HTREEITEM> const& MultiSelectionTreeCtrl::Ordered() const
{
    SettleRetired();
    if (m_orderDirty || m_orderRowsVersion != RowsVersion())
    {
        std::vector<std::pair<OrderKey, HTREEITEM>> keyed;
        keyed.reserve(m_selected.size());
        const int rows = GetRowCount();
        if (m_selected.size() * k_rowsPerSelectedToWalk >= static_cast<size_t>(rows))
        {
            // A selection of a good part of the rows: one walk down the rows finds them all.
            for (int row = 0; row < rows; ++row)
                if (HTREEITEM item = GetRowItem(row); m_selected.count(item))
                    keyed.emplace_back(OrderKey{row, reinterpret_cast<uintptr_t>(item)}, item);
            if (keyed.size() < m_selected.size())
            {
                std::unordered_set<HTREEITEM> shown;
                for (auto const& entry : keyed)
                    shown.insert(entry.second);
                for (HTREEITEM item : m_selected)
                    if (!shown.count(item))
                        keyed.emplace_back(OrderKey{INT32_MAX, reinterpret_cast<uintptr_t>(item)}, item);
            }
        }
        else
            for (HTREEITEM item : m_selected)
                keyed.emplace_back(KeyOf(item), item);
        std::sort(keyed.begin(), keyed.end());
        m_ordered.resize(keyed.size());
        for (size_t i = 0; i < keyed.size(); ++i)
            m_ordered[i] = keyed[i].second;
        m_orderDirty = false;
        m_orderRowsVersion = RowsVersion();
        m_orderCursor = 0;
    }
    return m_ordered;
}

HTREEITEM MultiSelectionTreeCtrl::GetFirstSelectedItem() const
{
    auto const& ordered = Ordered();
    m_orderCursor = 0;
    return ordered.empty() ? nullptr : ordered.front();
}

HTREEITEM MultiSelectionTreeCtrl::GetNextSelectedItem(HTREEITEM item) const
{
    // Walking a large selection item by item stays linear: the step from the item returned last
    // is direct, any other is a binary search.
    auto const& ordered = Ordered();
    if (m_orderCursor < ordered.size() && ordered[m_orderCursor] == item)
    {
        ++m_orderCursor;
        return m_orderCursor < ordered.size() ? ordered[m_orderCursor] : nullptr;
    }
    const OrderKey key = KeyOf(item);
    auto found =
        std::lower_bound(ordered.begin(), ordered.end(), key,
                         [this](HTREEITEM entry, OrderKey const& wanted) { return KeyOf(entry) < wanted; });
    if (found == ordered.end() || *found != item || found + 1 == ordered.end())
        return nullptr;
    m_orderCursor = static_cast<size_t>(found + 1 - ordered.begin());
    return *(found + 1);
}

MultiSelectionTreeCtrl::OrderKey MultiSelectionTreeCtrl::KeyOf(HTREEITEM item) const
{
    // Rows first in display order; items under a collapsed parent (no row) last.
    const int row = GetItemRow(item);
    return {row < 0 ? INT32_MAX : row, reinterpret_cast<uintptr_t>(item)};
}

void MultiSelectionTreeCtrl::GetSelectedList(std::vector<HTREEITEM>& items) const
{
    items = Ordered();
}

HTREEITEM MultiSelectionTreeCtrl::GetFocusedItem() const
{
    return ItemExists(m_focused) ? m_focused : nullptr;
}

BOOL MultiSelectionTreeCtrl::IsSelected(HTREEITEM item) const
{
    SettleRetired();
    return m_selected.count(item) != 0;
}

BOOL MultiSelectionTreeCtrl::SetItemState(HTREEITEM item, UINT state, UINT mask)
{
    if (!ItemExists(item))
        return FALSE;
    if (mask & TVIS_FOCUSED)
    {
        if ((state & TVIS_FOCUSED) && m_focused != item)
        {
            if (ItemExists(m_focused))
                CTreeCtrl::SetItemState(m_focused, 0, TVIS_FOCUSED);
            m_focused = item;
        }
        else if (!(state & TVIS_FOCUSED) && m_focused == item)
            m_focused = nullptr;
    }
    if (mask & TVIS_SELECTED)
    {
        const bool selected = (state & TVIS_SELECTED) != 0;
        if (selected ? m_selected.insert(item).second : m_selected.erase(item) != 0)
            m_orderDirty = true;
    }
    return CTreeCtrl::SetItemState(item, state, mask);
}

void MultiSelectionTreeCtrl::SetSelected(HTREEITEM item, bool selected)
{
    SetItemState(item, selected ? TVIS_SELECTED : 0, TVIS_SELECTED);
}

void MultiSelectionTreeCtrl::SetFocusItem(HTREEITEM item)
{
    if (item)
        SetItemState(item, TVIS_FOCUSED, TVIS_FOCUSED);
    else if (ItemExists(m_focused))
        SetItemState(m_focused, 0, TVIS_FOCUSED);
}

void MultiSelectionTreeCtrl::NotifySelChanged(HTREEITEM oldItem, HTREEITEM newItem, UINT action)
{
    NMTREEVIEWW info{};
    info.action = action;
    info.itemOld.mask = info.itemNew.mask = TVIF_HANDLE | TVIF_STATE | TVIF_PARAM;
    info.itemOld.hItem = oldItem;
    info.itemNew.hItem = newItem;
    if (oldItem)
    {
        info.itemOld.state = GetItemState(oldItem, 0xFFFF);
        info.itemOld.lParam = GetItemData(oldItem);
    }
    if (newItem)
    {
        info.itemNew.state = GetItemState(newItem, 0xFFFF);
        info.itemNew.lParam = GetItemData(newItem);
    }
    ++m_batchChanges;
    NotifyParent(info.hdr, TVN_SELCHANGEDW);
}

void MultiSelectionTreeCtrl::ChangeSelection(HTREEITEM item, bool select, UINT action)
{
    if (!ItemExists(item) || (IsSelected(item) != FALSE) == select)
        return;
    SetSelected(item, select);
    NotifySelChanged(select ? nullptr : item, select ? item : nullptr, action);
}

void MultiSelectionTreeCtrl::SelectItem(HTREEITEM item)
{
    ChangeSelection(item, true, TVC_UNKNOWN);
    // The row the program selects is where the keyboard and Shift+clicks go on from, as after
    // a click; an older focus would make the next range start at a row the user left.
    if (ItemExists(item) && IsSelected(item))
    {
        SetFocusItem(item);
        m_anchor = item;
    }
}

void MultiSelectionTreeCtrl::DeselectItem(HTREEITEM item)
{
    ChangeSelection(item, false, TVC_UNKNOWN);
}

void MultiSelectionTreeCtrl::SelectAll(bool select)
{
    if (select)
    {
        // The rows first: whoever hears of each change may look at other rows meanwhile.
        for (HTREEITEM item : RowItems(0, GetRowCount() - 1))
            ChangeSelection(item, true, TVC_UNKNOWN);
        return;
    }
    const std::vector<HTREEITEM> selected = Ordered();
    for (HTREEITEM item : selected)
        ChangeSelection(item, false, TVC_UNKNOWN);
}

std::vector<HTREEITEM> MultiSelectionTreeCtrl::RowItems(int from, int to) const
{
    std::vector<HTREEITEM> items;
    for (int row = from; row <= to; ++row)
        items.push_back(GetRowItem(row));
    return items;
}

void MultiSelectionTreeCtrl::SelectOnly(HTREEITEM item, UINT action)
{
    if (!ItemExists(item))
        return;
    std::vector<HTREEITEM> others = Ordered();
    others.erase(std::remove(others.begin(), others.end(), item), others.end());
    if (others.size() == 1 && !IsSelected(item))
    {
        // The selection moves from one item to another: one change.
        SetSelected(others.front(), false);
        SetSelected(item, true);
        NotifySelChanged(others.front(), item, action);
        return;
    }
    for (HTREEITEM other : others)
        ChangeSelection(other, false, action);
    ChangeSelection(item, true, action);
}

void MultiSelectionTreeCtrl::SelectRange(HTREEITEM anchor, HTREEITEM item, bool keepOthers, UINT action)
{
    int from = GetItemRow(anchor);
    int to = GetItemRow(item);
    if (to < 0)
        return;
    if (from < 0)
        from = to;
    if (from > to)
        std::swap(from, to);
    if (!keepOthers)
    {
        const std::vector<HTREEITEM> selected = Ordered();
        for (HTREEITEM other : selected)
        {
            const int row = GetItemRow(other);
            if (row < from || row > to)
                ChangeSelection(other, false, action);
        }
    }
    for (HTREEITEM row : RowItems(from, to))
        ChangeSelection(row, true, action);
}

BOOL MultiSelectionTreeCtrl::SelectCaret(HTREEITEM item)
{
    if (!ItemExists(item))
        return FALSE;
    SelectOnly(item, TVC_UNKNOWN);
    SetFocusItem(item);
    m_anchor = item;
    return TRUE;
}

void MultiSelectionTreeCtrl::OnItemDeleting(HTREEITEM item)
{
    if (m_selected.erase(item))
        m_orderDirty = true;
    if (m_focused == item)
        m_focused = nullptr;
    if (m_anchor == item)
        m_anchor = nullptr;
    if (m_pendingSingle == item)
        m_pendingSingle = nullptr;
}

void MultiSelectionTreeCtrl::OnRetiring()
{
    // A rebuild forgets these items (a fresh item is none of them): they are built again.
    for (HTREEITEM item : {m_focused, m_anchor, m_pendingSingle, m_clickToEdit})
        NoteItemChanged(item);
}

void MultiSelectionTreeCtrl::OnItemExpanding(HTREEITEM item, bool expand)
{
    // The focus does not stay on a row that is about to be hidden.
    if (!expand && m_focused && IsAncestor(item, m_focused))
        SetFocusItem(item);
}

void MultiSelectionTreeCtrl::OpenBatch()
{
    if (m_batchDepth++ == 0)
        m_batchChanges = 0;
}

void MultiSelectionTreeCtrl::CloseBatch()
{
    if (m_batchDepth == 0 || --m_batchDepth > 0)
        return;
    if (m_batchChanges > 0 && m_hWnd)
    {
        m_batchChanges = 0;
        NMHDR header{};
        NotifyParent(header, NotifyBatchSelChangeEnd);
    }
}
