#include "platform/TreeCtrl.h"

#include "platform/WindowSystem.h"

#include <algorithm>
#include <cstring>

namespace
{
// Handles keep the top bit of their generation half clear; two flags share the word.
constexpr uint32_t GenerationMask = (1u << 30) - 1;
} // namespace

// Trees hold up to millions of items, so an item keeps to 40 bytes: its depth is found by
// walking up, and its own text, which few items have, is kept aside in m_texts.
struct CTreeCtrl::Item
{
    uint32_t parent = NoIndex;
    uint32_t firstChild = NoIndex;
    uint32_t lastChild = NoIndex;
    uint32_t prev = NoIndex;
    uint32_t next = NoIndex;
    uint32_t generation : 30 = 0;
    uint32_t alive : 1 = 0;
    uint32_t hasChildrenFlag : 1 = 0;
    mutable int32_t row = -1;
    uint16_t state = 0; // every TVIS_ bit lies in the low half
    int16_t image = 0;
    LPARAM data = 0;
};

CTreeCtrl::CTreeCtrl() = default;

CTreeCtrl::~CTreeCtrl() = default;

BOOL CTreeCtrl::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id)
{
    return CWnd::Create(L"SysTreeView32", L"", style, rect, parent, id);
}

// Handles: slot + 1 in the low half, the slot's generation in the high half. Both stay
// positive, so no handle equals TVI_ROOT, TVI_FIRST or TVI_LAST.
HTREEITEM CTreeCtrl::HandleOf(uint32_t index) const
{
    const uint64_t value = (static_cast<uint64_t>(m_items[index].generation) << 32) | (index + 1ULL);
    return reinterpret_cast<HTREEITEM>(static_cast<uintptr_t>(value));
}

CTreeCtrl::Item* CTreeCtrl::Find(HTREEITEM item) const
{
    const auto value = static_cast<uint64_t>(reinterpret_cast<uintptr_t>(item));
    const uint64_t slot = value & 0xFFFFFFFFULL;
    if (slot == 0 || slot > m_items.size() || (value >> 63) != 0)
        return nullptr;
    Item& found = m_items[slot - 1];
    return found.alive && found.generation == static_cast<uint32_t>(value >> 32) ? &found : nullptr;
}

bool CTreeCtrl::HasOwnText(HTREEITEM item) const
{
    const Item* found = Find(item);
    return found && m_texts.count(static_cast<uint32_t>(found - m_items.data()));
}

CTreeCtrl::Item& CTreeCtrl::At(uint32_t index) const
{
    return m_items[index];
}

uint32_t CTreeCtrl::Allocate()
{
    uint32_t index;
    if (!m_freeSlots.empty())
    {
        index = m_freeSlots.back();
        m_freeSlots.pop_back();
    }
    else
    {
        index = static_cast<uint32_t>(m_items.size());
        m_items.emplace_back();
    }
    Item& item = m_items[index];
    item.generation = (item.generation + 1) & GenerationMask;
    if (item.generation == 0)
        item.generation = 1;
    item.alive = true;
    ++m_count;
    return index;
}

HTREEITEM CTreeCtrl::InsertItem(LPCWSTR text, int image, LPARAM data, HTREEITEM parent, HTREEITEM after)
{
    uint32_t parentIndex = NoIndex;
    if (parent && parent != TVI_ROOT)
    {
        Item* found = Find(parent);
        if (!found)
            return nullptr;
        parentIndex = static_cast<uint32_t>(found - m_items.data());
    }
    const uint32_t lastSibling = parentIndex == NoIndex ? m_lastRoot : At(parentIndex).lastChild;
    uint32_t afterIndex = NoIndex; // NoIndex: insert first
    if (after == TVI_LAST || after == TVI_SORT || after == nullptr)
        afterIndex = lastSibling;
    else if (after != TVI_FIRST)
    {
        Item* sibling = Find(after);
        if (!sibling || sibling->parent != parentIndex)
            return nullptr;
        afterIndex = static_cast<uint32_t>(sibling - m_items.data());
    }

    const uint32_t index = Allocate();
    // Allocation may move the items: take references only now.
    uint32_t& firstRef = parentIndex == NoIndex ? m_firstRoot : At(parentIndex).firstChild;
    uint32_t& lastRef = parentIndex == NoIndex ? m_lastRoot : At(parentIndex).lastChild;
    Item& item = At(index);
    item.parent = parentIndex;
    item.image = static_cast<int16_t>(image);
    item.data = data;
    item.state = 0;
    item.hasChildrenFlag = false;
    item.firstChild = item.lastChild = NoIndex;
    if (text)
        m_texts[index] = text;
    item.prev = afterIndex;
    item.next = afterIndex == NoIndex ? firstRef : At(afterIndex).next;
    if (item.prev != NoIndex)
        At(item.prev).next = index;
    else
        firstRef = index;
    if (item.next != NoIndex)
        At(item.next).prev = index;
    else
        lastRef = index;
    RowsChanged();
    return HandleOf(index);
}

void CTreeCtrl::Unlink(uint32_t index)
{
    Item& item = At(index);
    uint32_t& first = item.parent == NoIndex ? m_firstRoot : At(item.parent).firstChild;
    uint32_t& last = item.parent == NoIndex ? m_lastRoot : At(item.parent).lastChild;
    if (item.prev != NoIndex)
        At(item.prev).next = item.next;
    else
        first = item.next;
    if (item.next != NoIndex)
        At(item.next).prev = item.prev;
    else
        last = item.prev;
    item.prev = item.next = NoIndex;
}

void CTreeCtrl::Release(uint32_t index)
{
    Item& item = At(index);
    if (m_editItem == HandleOf(index))
    {
        m_editItem = nullptr;
        // The edit's own end, if under way, finishes with it; otherwise the editor just goes.
        if (!m_endingEdit && m_edit)
        {
            m_edit->DestroyWindow();
            m_edit.reset();
        }
    }
    item.alive = false;
    m_texts.erase(index);
    item.firstChild = item.lastChild = item.parent = NoIndex;
    item.row = -1;
    m_freeSlots.push_back(index);
    --m_count;
}

void CTreeCtrl::DeleteChildren(uint32_t index)
{
    // Iterative post-order walk: deep trees must not exhaust the stack.
    std::vector<uint32_t> stack;
    for (uint32_t child = At(index).firstChild; child != NoIndex; child = At(child).next)
        stack.push_back(child);
    std::vector<uint32_t> order;
    while (!stack.empty())
    {
        const uint32_t current = stack.back();
        stack.pop_back();
        order.push_back(current);
        for (uint32_t child = At(current).firstChild; child != NoIndex; child = At(child).next)
            stack.push_back(child);
    }
    for (auto it = order.rbegin(); it != order.rend(); ++it)
        OnItemDeleting(HandleOf(*it));
    for (auto it = order.rbegin(); it != order.rend(); ++it)
        Release(*it);
    At(index).firstChild = At(index).lastChild = NoIndex;
}

BOOL CTreeCtrl::DeleteItem(HTREEITEM item)
{
    if (item == TVI_ROOT || item == nullptr)
    {
        std::vector<uint32_t> roots;
        for (uint32_t root = m_firstRoot; root != NoIndex; root = At(root).next)
            roots.push_back(root);
        for (uint32_t root : roots)
            DeleteItem(HandleOf(root));
        m_scrollRow = 0;
        return TRUE;
    }
    Item* found = Find(item);
    if (!found)
        return FALSE;
    const auto index = static_cast<uint32_t>(found - m_items.data());
    DeleteChildren(index);
    OnItemDeleting(item);
    // The handlers may have deleted it already.
    if (!Find(item))
        return TRUE;
    Unlink(index);
    Release(index);
    RowsChanged();
    return TRUE;
}

HTREEITEM CTreeCtrl::GetNextItem(HTREEITEM item, UINT code) const
{
    auto handle = [this](uint32_t index) { return index == NoIndex ? nullptr : HandleOf(index); };
    switch (code)
    {
    case TVGN_ROOT:
        return handle(m_firstRoot);
    case TVGN_FIRSTVISIBLE:
        BuildRows();
        return m_rows.empty() ? nullptr : handle(m_rows[static_cast<size_t>(m_scrollRow)]);
    case TVGN_LASTVISIBLE:
        BuildRows();
        return m_rows.empty() ? nullptr : handle(m_rows.back());
    case TVGN_CARET:
    case TVGN_DROPHILITE:
    {
        const UINT bit = code == TVGN_CARET ? TVIS_FOCUSED : TVIS_DROPHILITED;
        BuildRows();
        for (uint32_t row : m_rows)
            if (At(row).state & bit)
                return handle(row);
        return nullptr;
    }
    default:
        break;
    }
    const Item* found = Find(item);
    if (!found)
        return nullptr;
    switch (code)
    {
    case TVGN_NEXT:
        return handle(found->next);
    case TVGN_PREVIOUS:
        return handle(found->prev);
    case TVGN_PARENT:
        return handle(found->parent);
    case TVGN_CHILD:
        return handle(found->firstChild);
    case TVGN_NEXTVISIBLE:
    case TVGN_PREVIOUSVISIBLE:
    {
        const int row = GetItemRow(item);
        if (row < 0)
            return nullptr;
        return GetRowItem(code == TVGN_NEXTVISIBLE ? row + 1 : row - 1);
    }
    default:
        return nullptr;
    }
}

BOOL CTreeCtrl::ItemHasChildren(HTREEITEM item) const
{
    const Item* found = Find(item);
    return found && (found->firstChild != NoIndex || found->hasChildrenFlag);
}

void CTreeCtrl::SetItemHasChildren(HTREEITEM item, bool hasChildren)
{
    if (Item* found = Find(item); found && found->hasChildrenFlag != hasChildren)
    {
        found->hasChildrenFlag = hasChildren;
        Repaint();
    }
}

std::wstring CTreeCtrl::GetItemText(HTREEITEM item) const
{
    const Item* found = Find(item);
    if (!found)
        return {};
    auto own = m_texts.find(static_cast<uint32_t>(found - m_items.data()));
    return own != m_texts.end() ? own->second : QueryItemText(item);
}

BOOL CTreeCtrl::SetItemText(HTREEITEM item, LPCWSTR text)
{
    Item* found = Find(item);
    if (!found)
        return FALSE;
    const auto index = static_cast<uint32_t>(found - m_items.data());
    if (text)
        m_texts[index] = text;
    else
        m_texts.erase(index);
    Repaint();
    return TRUE;
}

int CTreeCtrl::GetItemImage(HTREEITEM item) const
{
    const Item* found = Find(item);
    return found ? found->image : 0;
}

BOOL CTreeCtrl::SetItemImage(HTREEITEM item, int image)
{
    Item* found = Find(item);
    if (!found)
        return FALSE;
    found->image = static_cast<int16_t>(image);
    Repaint();
    return TRUE;
}

LPARAM CTreeCtrl::GetItemData(HTREEITEM item) const
{
    const Item* found = Find(item);
    return found ? found->data : 0;
}

BOOL CTreeCtrl::SetItemData(HTREEITEM item, LPARAM data)
{
    Item* found = Find(item);
    if (!found)
        return FALSE;
    found->data = data;
    return TRUE;
}

UINT CTreeCtrl::GetItemState(HTREEITEM item, UINT mask) const
{
    const Item* found = Find(item);
    return found ? found->state & mask : 0;
}

BOOL CTreeCtrl::SetItemState(HTREEITEM item, UINT state, UINT mask)
{
    Item* found = Find(item);
    if (!found)
        return FALSE;
    const UINT before = found->state;
    found->state = static_cast<uint16_t>((found->state & ~mask) | (state & mask));
    if ((before ^ found->state) & TVIS_EXPANDED)
        RowsChanged();
    Repaint();
    return TRUE;
}

int CTreeCtrl::GetItemDepth(HTREEITEM item) const
{
    const Item* found = Find(item);
    if (!found)
        return -1;
    int depth = 0;
    for (uint32_t parent = found->parent; parent != NoIndex; parent = At(parent).parent)
        ++depth;
    return depth;
}

bool CTreeCtrl::IsAncestor(HTREEITEM ancestor, HTREEITEM item) const
{
    const Item* top = Find(ancestor);
    const Item* found = Find(item);
    if (!top || !found)
        return false;
    const auto topIndex = static_cast<uint32_t>(top - m_items.data());
    for (uint32_t parent = found->parent; parent != NoIndex; parent = At(parent).parent)
        if (parent == topIndex)
            return true;
    return false;
}

BOOL CTreeCtrl::Expand(HTREEITEM item, UINT code)
{
    Item* found = Find(item);
    if (!found)
        return FALSE;
    const bool expanded = (found->state & TVIS_EXPANDED) != 0;
    const UINT action = code & 0x3;
    const bool expand = action == TVE_TOGGLE ? !expanded : action == TVE_EXPAND;
    if (expand == expanded && !(code & TVE_COLLAPSERESET))
        return TRUE;
    if (expand && !ItemHasChildren(item))
        return FALSE;

    NMTREEVIEWW info{};
    info.action = expand ? TVE_EXPAND : TVE_COLLAPSE;
    info.itemNew.hItem = item;
    info.itemNew.state = found->state;
    info.itemNew.lParam = found->data;
    if (NotifyParent(info.hdr, TVN_ITEMEXPANDINGW) != 0)
        return FALSE;
    OnItemExpanding(item, expand);
    found = Find(item);
    if (!found)
        return FALSE;
    const auto index = static_cast<uint32_t>(found - m_items.data());
    if (expand)
        found->state |= TVIS_EXPANDED;
    else
    {
        found->state &= ~TVIS_EXPANDED;
        if (code & TVE_COLLAPSERESET)
            DeleteChildren(index);
    }
    RowsChanged();
    found = Find(item);
    if (found)
    {
        info.itemNew.state = found->state;
        NotifyParent(info.hdr, TVN_ITEMEXPANDEDW);
    }
    return TRUE;
}

BOOL CTreeCtrl::SelectDropTarget(HTREEITEM item)
{
    if (Find(m_dropTarget))
        SetItemState(m_dropTarget, 0, TVIS_DROPHILITED);
    m_dropTarget = Find(item) ? item : nullptr;
    if (m_dropTarget)
        SetItemState(m_dropTarget, TVIS_DROPHILITED, TVIS_DROPHILITED);
    return item == nullptr || m_dropTarget != nullptr;
}

BOOL CTreeCtrl::SelectCaret(HTREEITEM item)
{
    if (!Find(item))
        return FALSE;
    if (HTREEITEM caret = GetNextItem(nullptr, TVGN_CARET))
        SetItemState(caret, 0, TVIS_FOCUSED | TVIS_SELECTED);
    SetItemState(item, TVIS_FOCUSED | TVIS_SELECTED, TVIS_FOCUSED | TVIS_SELECTED);
    return TRUE;
}

void CTreeCtrl::RowsChanged()
{
    m_rowsDirty = true;
    ++m_rowsVersion;
    Repaint();
}

void CTreeCtrl::BuildRows() const
{
    if (!m_rowsDirty)
        return;
    m_rowsDirty = false;
    m_rows.clear();
    std::vector<uint32_t> stack;
    for (uint32_t root = m_lastRoot; root != NoIndex; root = At(root).prev)
        stack.push_back(root);
    while (!stack.empty())
    {
        const uint32_t index = stack.back();
        stack.pop_back();
        const Item& item = At(index);
        item.row = static_cast<int32_t>(m_rows.size());
        m_rows.push_back(index);
        if (item.state & TVIS_EXPANDED)
            for (uint32_t child = item.lastChild; child != NoIndex; child = At(child).prev)
                stack.push_back(child);
    }
    const_cast<CTreeCtrl*>(this)->ClampScroll();
}

void CTreeCtrl::ClampScroll()
{
    const int rows = static_cast<int>(m_rows.size());
    const int maxScroll = std::max(0, rows - static_cast<int>(GetVisibleCount()));
    m_scrollRow = std::clamp(m_scrollRow, 0, maxScroll);
}

void CTreeCtrl::SetItemHeight(int height)
{
    m_itemHeight = std::max(1, height);
    RowsChanged();
}

void CTreeCtrl::SetIndent(int indent)
{
    m_indent = std::max(0, indent);
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
    BuildRows();
    return static_cast<int>(m_rows.size());
}

HTREEITEM CTreeCtrl::GetRowItem(int row) const
{
    BuildRows();
    if (row < 0 || row >= static_cast<int>(m_rows.size()))
        return nullptr;
    return HandleOf(m_rows[static_cast<size_t>(row)]);
}

int CTreeCtrl::GetItemRow(HTREEITEM item) const
{
    const Item* found = Find(item);
    if (!found)
        return -1;
    BuildRows();
    const int row = found->row;
    const auto index = static_cast<uint32_t>(found - m_items.data());
    return row >= 0 && row < static_cast<int>(m_rows.size()) && m_rows[static_cast<size_t>(row)] == index ? row : -1;
}

void CTreeCtrl::ScrollToRow(int row)
{
    BuildRows();
    const int before = m_scrollRow;
    m_scrollRow = row;
    ClampScroll();
    if (m_scrollRow != before)
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
        rect->left = 0;
        rect->right = client.right;
        return TRUE;
    }
    rect->left = LabelLeft(GetItemDepth(item));
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
    const POINT pt = info->pt;
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

LRESULT CTreeCtrl::NotifyParent(NMHDR& header, UINT code)
{
    header.hwndFrom = m_hWnd;
    header.idFrom = static_cast<UINT_PTR>(GetDlgCtrlID());
    header.code = code;
    CWnd* parent = GetParent();
    return parent ? parent->SendMessage(WM_NOTIFY, header.idFrom, reinterpret_cast<LPARAM>(&header)) : 0;
}

LRESULT CTreeCtrl::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    bool handled = true;
    const LRESULT result = OnTreeMessage(message, wParam, lParam, handled);
    return handled ? result : CWnd::WindowProc(message, wParam, lParam);
}

LRESULT CTreeCtrl::OnTreeMessage(UINT message, WPARAM wParam, LPARAM lParam, bool& handled)
{
    auto item = reinterpret_cast<HTREEITEM>(lParam);
    switch (message)
    {
    case TVM_DELETEITEM:
        return DeleteItem(item);
    case TVM_GETNEXTITEM:
        return reinterpret_cast<LRESULT>(GetNextItem(item, static_cast<UINT>(wParam)));
    case TVM_SELECTITEM:
        if (wParam == TVGN_FIRSTVISIBLE)
            return SelectSetFirstVisible(item);
        if (wParam == TVGN_DROPHILITE)
            return SelectDropTarget(item);
        if (wParam == TVGN_CARET)
            return SelectCaret(item);
        break;
    case TVM_EXPAND:
        return Expand(item, static_cast<UINT>(wParam));
    case TVM_ENSUREVISIBLE:
        return EnsureVisible(item);
    case TVM_GETCOUNT:
        return GetCount();
    case TVM_GETVISIBLECOUNT:
        return GetVisibleCount();
    case TVM_GETITEMSTATE:
        return GetItemState(reinterpret_cast<HTREEITEM>(wParam), static_cast<UINT>(lParam));
    case TVM_GETITEMRECT:
    {
        // As in Win32, the rectangle arrives holding the item's handle.
        auto* rect = reinterpret_cast<RECT*>(lParam);
        if (!rect)
            return FALSE;
        HTREEITEM target;
        std::memcpy(&target, rect, sizeof target);
        return GetItemRect(target, rect, static_cast<BOOL>(wParam));
    }
    case TVM_HITTEST:
        return reinterpret_cast<LRESULT>(HitTest(reinterpret_cast<TVHITTESTINFO*>(lParam)));
    case TVM_GETEDITCONTROL:
        return reinterpret_cast<LRESULT>(m_edit ? m_edit->GetSafeHwnd() : nullptr);
    case TVM_EDITLABELW:
    {
        CEdit* edit = EditLabel(item);
        return reinterpret_cast<LRESULT>(edit ? edit->GetSafeHwnd() : nullptr);
    }
    case TVM_ENDEDITLABELNOW:
        return EndEditLabelNow(static_cast<BOOL>(wParam));
    case TVM_SETBKCOLOR:
    {
        const COLORREF old = m_bkColor;
        m_bkColor = static_cast<COLORREF>(lParam);
        Repaint();
        return static_cast<LRESULT>(old);
    }
    case TVM_SETTEXTCOLOR:
    {
        const COLORREF old = m_textColor;
        m_textColor = static_cast<COLORREF>(lParam);
        Repaint();
        return static_cast<LRESULT>(old);
    }
    case TVM_GETBKCOLOR:
        return static_cast<LRESULT>(m_bkColor);
    case TVM_GETTEXTCOLOR:
        return static_cast<LRESULT>(m_textColor);
    case WM_SETREDRAW:
        m_redraw = wParam != 0;
        if (m_redraw && m_repaintPending)
        {
            m_repaintPending = false;
            Invalidate(FALSE);
        }
        return 0;
    case WM_SIZE:
        BuildRows();
        ClampScroll();
        Repaint();
        break;
    default:
        break;
    }
    handled = false;
    return 0;
}
