// The tree control's rows: which items show, scrolling, item rectangles and hit-testing.

#include "platform/TreeCtrl.h"

#include "platform/TreeItem.h"

#include <algorithm>

void CTreeCtrl::RowsChanged()
{
    m_rowsDirty = true;
    m_rowsWidth = -1;
    m_cursorIndex = NoIndex;
    ++m_rowsVersion;
    Repaint();
}

void CTreeCtrl::SettleRows() const
{
    SettleRetired();
    if (!m_rowsDirty)
        return;
    m_rowsDirty = false;
    const_cast<CTreeCtrl*>(this)->ClampScroll();
}

void CTreeCtrl::ClampScroll()
{
    const int rows = static_cast<int>(m_shownRows);
    const int maxScroll = std::max(0, rows - static_cast<int>(GetVisibleCount()));
    m_scrollRow = std::clamp(m_scrollRow, 0, maxScroll);
}

bool CTreeCtrl::IsExpanded(uint32_t index) const
{
    return (At(index).state & TVIS_EXPANDED) != 0;
}

void CTreeCtrl::AddShownRows(uint32_t parent, int64_t delta)
{
    m_cursorIndex = NoIndex;
    for (; parent != NoIndex; parent = At(parent).parent)
    {
        if (!IsExpanded(parent))
            return;
        At(parent).rows = static_cast<uint32_t>(At(parent).rows + delta);
    }
    m_shownRows = static_cast<uint32_t>(m_shownRows + delta);
}

void CTreeCtrl::SetExpandedBit(uint32_t index, bool expanded)
{
    Item& item = At(index);
    if (IsExpanded(index) == expanded)
        return;
    uint32_t children = 0;
    for (uint32_t child = item.firstChild; child != NoIndex; child = At(child).next)
        children += At(child).rows;
    if (expanded)
        item.state |= TVIS_EXPANDED;
    else
        item.state &= ~TVIS_EXPANDED;
    item.rows = 1 + (expanded ? children : 0);
    AddShownRows(item.parent, expanded ? int64_t{children} : -int64_t{children});
}

uint32_t CTreeCtrl::NextShown(uint32_t index) const
{
    const Item& item = At(index);
    if (item.firstChild != NoIndex && (item.state & TVIS_EXPANDED))
        return item.firstChild;
    for (; index != NoIndex; index = At(index).parent)
        if (At(index).next != NoIndex)
            return At(index).next;
    return NoIndex;
}

uint32_t CTreeCtrl::PrevShown(uint32_t index) const
{
    const Item& item = At(index);
    if (item.prev == NoIndex)
        return item.parent;
    index = item.prev;
    while (IsExpanded(index) && At(index).lastChild != NoIndex)
        index = At(index).lastChild;
    return index;
}

uint32_t CTreeCtrl::RowIndex(int row) const
{
    SettleRows();
    if (row < 0 || row >= static_cast<int>(m_shownRows))
        return NoIndex;
    uint32_t index = NoIndex;
    if (m_cursorIndex != NoIndex && row == m_cursorRow)
        index = m_cursorIndex;
    else if (m_cursorIndex != NoIndex && row == m_cursorRow + 1)
        index = NextShown(m_cursorIndex);
    else if (m_cursorIndex != NoIndex && row == m_cursorRow - 1)
        index = PrevShown(m_cursorIndex);
    else
    {
        // Down the counts: skip whole siblings until the row lies in one, then enter it.
        auto left = static_cast<uint32_t>(row);
        index = m_firstRoot;
        while (index != NoIndex)
        {
            const Item& item = At(index);
            if (left >= item.rows)
            {
                left -= item.rows;
                index = item.next;
            }
            else if (left == 0)
                break;
            else
            {
                --left;
                index = item.firstChild;
            }
        }
    }
    m_cursorIndex = index;
    m_cursorRow = row;
    return index;
}

void CTreeCtrl::SetItemHeight(int height)
{
    m_itemHeight = std::max(1, height);
    RowsChanged();
}

void CTreeCtrl::SetIndent(int indent)
{
    m_indent = std::max(0, indent);
    m_rowsWidth = -1;
    Repaint();
}

UINT CTreeCtrl::GetVisibleCount() const
{
    RECT client;
    GetClientRect(&client);
    return static_cast<UINT>(std::max(1, static_cast<int>(client.bottom - client.top) / m_itemHeight));
}

int CTreeCtrl::GetRowCount() const
{
    SettleRows();
    return static_cast<int>(m_shownRows);
}

HTREEITEM CTreeCtrl::GetRowItem(int row) const
{
    const uint32_t index = RowIndex(row);
    return index == NoIndex ? nullptr : HandleOf(index);
}

int CTreeCtrl::GetItemRow(HTREEITEM item) const
{
    const Item* found = Find(item);
    if (!found)
        return -1;
    SettleRows();
    const auto index = static_cast<uint32_t>(found - m_items.data());
    if (index == m_cursorIndex)
        return m_cursorRow;
    // Up to the top: the rows of the earlier siblings at each level, and the parent's own.
    uint32_t row = 0;
    for (uint32_t current = index;;)
    {
        const Item& at = At(current);
        for (uint32_t sibling = at.prev; sibling != NoIndex; sibling = At(sibling).prev)
            row += At(sibling).rows;
        if (at.parent == NoIndex)
            break;
        if (!IsExpanded(at.parent))
            return -1;
        ++row;
        current = at.parent;
    }
    m_cursorIndex = index;
    m_cursorRow = static_cast<int>(row);
    return m_cursorRow;
}

void CTreeCtrl::ScrollToRow(int row)
{
    SettleRows();
    const int before = m_scrollRow;
    m_scrollRow = row;
    ClampScroll();
    if (m_scrollRow != before)
        Repaint();
}

int CTreeCtrl::GetRowsWidth() const
{
    // Only the rows in view are measured, as the user sees them: measuring every shown row would
    // cost a million labels after each edit of a fully expanded project.
    SettleRows();
    const int visible = static_cast<int>(GetVisibleCount());
    if (m_rowsWidth < 0 || m_rowsWidthRow != m_scrollRow || m_rowsWidthCount != visible)
    {
        m_rowsWidth = 0;
        m_rowsWidthRow = m_scrollRow;
        m_rowsWidthCount = visible;
        const int last = std::min(GetRowCount(), m_scrollRow + visible);
        for (int row = m_scrollRow; row < last; ++row)
        {
            const HTREEITEM item = GetRowItem(row);
            m_rowsWidth = std::max(m_rowsWidth, LabelLeft(GetItemDepth(item)) + MeasureText(GetItemText(item)) +
                                                    2 * LabelPadding);
        }
    }
    return m_rowsWidth;
}

int CTreeCtrl::GetScrollX() const
{
    // Not scrolled sideways: no need to measure every row.
    if (m_scrollX <= 0)
        return 0;
    // The rows or the client may have narrowed since the offset was set.
    RECT client;
    GetClientRect(&client);
    return std::clamp(m_scrollX, 0, std::max(0, GetRowsWidth() - static_cast<int>(client.right)));
}

void CTreeCtrl::ScrollToX(int x)
{
    const int before = GetScrollX();
    m_scrollX = x;
    m_scrollX = GetScrollX();
    if (m_scrollX != before)
        Repaint();
}

BOOL CTreeCtrl::SelectSetFirstVisible(HTREEITEM item)
{
    const int row = GetItemRow(item);
    if (row < 0)
        return FALSE;
    ScrollToRow(row);
    return TRUE;
}

BOOL CTreeCtrl::EnsureVisible(HTREEITEM item)
{
    if (!Find(item))
        return FALSE;
    std::vector<HTREEITEM> ancestors;
    for (HTREEITEM parent = GetParentItem(item); parent; parent = GetParentItem(parent))
        ancestors.push_back(parent);
    for (auto it = ancestors.rbegin(); it != ancestors.rend(); ++it)
        if (!GetItemState(*it, TVIS_EXPANDED))
            Expand(*it, TVE_EXPAND);
    const int row = GetItemRow(item);
    if (row < 0)
        return FALSE;
    const int visible = static_cast<int>(GetVisibleCount());
    if (row < m_scrollRow)
        ScrollToRow(row);
    else if (row >= m_scrollRow + visible)
        ScrollToRow(row - visible + 1);
    return TRUE;
}

void CTreeCtrl::SetTextMeasure(std::function<int(std::wstring const&)> measure)
{
    m_measure = std::move(measure);
    m_rowsWidth = -1;
    Repaint();
}

int CTreeCtrl::MeasureText(std::wstring const& text) const
{
    // Without a painter's font, an average glyph of 7 pixels.
    return m_measure ? m_measure(text) : static_cast<int>(text.size()) * 7;
}

void CTreeCtrl::SetStateIconWidth(int width)
{
    m_stateIconWidth = std::max(0, width);
    m_rowsWidth = -1;
    Repaint();
}

int CTreeCtrl::LabelLeft(int depth) const
{
    return (depth + 1) * m_indent + m_stateIconWidth + IconSize + LabelGap;
}

BOOL CTreeCtrl::GetItemRect(HTREEITEM item, LPRECT rect, BOOL textOnly) const
{
    const int row = GetItemRow(item);
    if (row < 0 || !rect)
        return FALSE;
    RECT client;
    GetClientRect(&client);
    rect->top = (row - m_scrollRow) * m_itemHeight;
    rect->bottom = rect->top + m_itemHeight;
    if (!textOnly)
    {
        // The whole row is the client's width; a label running past it is scrolled to.
        rect->left = 0;
        rect->right = client.right;
        return TRUE;
    }
    rect->left = LabelLeft(GetItemDepth(item)) - GetScrollX();
    rect->right = rect->left + MeasureText(GetItemText(item)) + 2 * LabelPadding;
    return TRUE;
}

HTREEITEM CTreeCtrl::HitTest(CPoint point, UINT* flags) const
{
    TVHITTESTINFO info;
    info.pt = point;
    HTREEITEM item = HitTest(&info);
    if (flags)
        *flags = info.flags;
    return item;
}

HTREEITEM CTreeCtrl::HitTest(TVHITTESTINFO* info) const
{
    if (!info)
        return nullptr;
    info->hItem = nullptr;
    info->flags = 0;
    RECT client;
    GetClientRect(&client);
    POINT pt = info->pt;
    if (pt.y < 0)
        info->flags |= TVHT_ABOVE;
    else if (pt.y >= client.bottom)
        info->flags |= TVHT_BELOW;
    if (pt.x < 0)
        info->flags |= TVHT_TOLEFT;
    else if (pt.x >= client.right)
        info->flags |= TVHT_TORIGHT;
    if (info->flags)
        return nullptr;

    HTREEITEM item = GetRowItem(m_scrollRow + pt.y / m_itemHeight);
    pt.x += GetScrollX();
    if (!item)
    {
        info->flags = TVHT_NOWHERE;
        return nullptr;
    }
    const int depth = GetItemDepth(item);
    const int buttonLeft = depth * m_indent;
    const int stateLeft = buttonLeft + m_indent;
    const int iconLeft = stateLeft + m_stateIconWidth;
    const int labelLeft = LabelLeft(depth);
    if (pt.x < buttonLeft)
        info->flags = TVHT_ONITEMINDENT;
    else if (pt.x < stateLeft)
        info->flags = ItemHasChildren(item) ? TVHT_ONITEMBUTTON : TVHT_ONITEMINDENT;
    else if (pt.x < iconLeft)
        info->flags = TVHT_ONITEMSTATEICON;
    else if (pt.x < labelLeft)
        info->flags = TVHT_ONITEMICON;
    else if (pt.x < labelLeft + MeasureText(GetItemText(item)) + 2 * LabelPadding)
        info->flags = TVHT_ONITEMLABEL;
    else
        info->flags = TVHT_ONITEMRIGHT;
    info->hItem = item;
    return item;
}

void CTreeCtrl::Repaint()
{
    if (!m_hWnd)
        return;
    if (m_redraw)
        Invalidate(FALSE);
    else
        m_repaintPending = true;
}
