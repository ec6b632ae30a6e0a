#include "platform/TreeCtrl.h"

#include "platform/TreeItem.h"

#include <algorithm>

namespace
{
// Handles keep the top bit of their generation half clear; three flags share the word.
constexpr uint32_t GenerationMask = (1u << 29) - 1;
} // namespace

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
    SettleRetired();
    Item* found = Lookup(item);
    if (found && m_retiredRoots != 0 && IsRetired(static_cast<uint32_t>(found - m_items.data())))
        return nullptr;
    return found;
}

CTreeCtrl::Item* CTreeCtrl::Lookup(HTREEITEM item) const
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
    item.rows = 1;
    ++m_count;
    return index;
}

bool CTreeCtrl::Placement(HTREEITEM parent, HTREEITEM after, uint32_t& parentIndex, uint32_t& afterIndex) const
{
    parentIndex = NoIndex;
    if (parent && parent != TVI_ROOT)
    {
        const Item* found = Find(parent);
        if (!found)
            return false;
        parentIndex = static_cast<uint32_t>(found - m_items.data());
    }
    afterIndex = NoIndex; // NoIndex: first
    if (after == TVI_LAST || after == TVI_SORT || after == nullptr)
        afterIndex = parentIndex == NoIndex ? m_lastRoot : At(parentIndex).lastChild;
    else if (after != TVI_FIRST)
    {
        const Item* sibling = Find(after);
        if (!sibling || sibling->parent != parentIndex)
            return false;
        afterIndex = static_cast<uint32_t>(sibling - m_items.data());
    }
    return true;
}

HTREEITEM CTreeCtrl::InsertItem(LPCWSTR text, int image, LPARAM data, HTREEITEM parent, HTREEITEM after)
{
    uint32_t parentIndex = NoIndex;
    uint32_t afterIndex = NoIndex;
    if (!Placement(parent, after, parentIndex, afterIndex))
        return nullptr;

    const uint32_t index = Allocate();
    Item& item = At(index);
    item.image = static_cast<int16_t>(image);
    item.data = data;
    item.state = 0;
    item.hasChildrenFlag = false;
    item.firstChild = item.lastChild = NoIndex;
    if (text)
        m_texts[index] = text;
    Link(index, parentIndex, afterIndex);
    if (parentIndex != NoIndex)
        Touch(parentIndex);
    AddShownRows(parentIndex, 1);
    RowsChanged();
    return HandleOf(index);
}

void CTreeCtrl::Link(uint32_t index, uint32_t parent, uint32_t after)
{
    uint32_t& firstRef = parent == NoIndex ? m_firstRoot : At(parent).firstChild;
    uint32_t& lastRef = parent == NoIndex ? m_lastRoot : At(parent).lastChild;
    Item& item = At(index);
    item.parent = parent;
    item.prev = after;
    item.next = after == NoIndex ? firstRef : At(after).next;
    if (item.prev != NoIndex)
        At(item.prev).next = index;
    else
        firstRef = index;
    if (item.next != NoIndex)
        At(item.next).prev = index;
    else
        lastRef = index;
}

void CTreeCtrl::Unlink(uint32_t index)
{
    Item& item = At(index);
    uint32_t& first = item.parent != NoIndex ? At(item.parent).firstChild : item.retired ? m_retiredFirst : m_firstRoot;
    uint32_t& last = item.parent != NoIndex ? At(item.parent).lastChild : item.retired ? m_retiredLast : m_lastRoot;
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
    item.rows = 1;
    if (m_cursorIndex == index)
        m_cursorIndex = NoIndex;
    m_freeSlots.push_back(index);
    --m_count;
}

std::vector<uint32_t> CTreeCtrl::PostOrder(uint32_t index) const
{
    // Iterative walk: deep trees must not exhaust the stack.
    std::vector<uint32_t> stack{index};
    std::vector<uint32_t> order;
    while (!stack.empty())
    {
        const uint32_t current = stack.back();
        stack.pop_back();
        order.push_back(current);
        for (uint32_t child = At(current).firstChild; child != NoIndex; child = At(child).next)
            stack.push_back(child);
    }
    std::reverse(order.begin(), order.end());
    return order;
}

void CTreeCtrl::DeleteChildren(uint32_t index)
{
    std::vector<uint32_t> order = PostOrder(index);
    order.pop_back(); // the item itself
    for (uint32_t child : order)
        OnItemDeleting(HandleOf(child));
    for (uint32_t child : order)
        Release(child);
    Touch(index);
    Item& item = At(index);
    item.firstChild = item.lastChild = NoIndex;
    if (const uint32_t shown = item.rows; shown != 1)
    {
        item.rows = 1;
        AddShownRows(item.parent, 1 - int64_t{shown});
    }
}

BOOL CTreeCtrl::DeleteItem(HTREEITEM item)
{
    if (item == TVI_ROOT || item == nullptr)
    {
        SettleRetired();
        if (!m_redraw && m_building == 0 && KeepsRetiredItems())
        {
            RetireRoots();
            return TRUE;
        }
        // Nothing is kept: what changed since the last rebuild no longer matters.
        m_changed.clear();
        m_changedAll = false;
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
    if (At(index).parent != NoIndex)
        Touch(At(index).parent);
    AddShownRows(At(index).parent, -int64_t{At(index).rows});
    Release(index);
    RowsChanged();
    return TRUE;
}

HTREEITEM CTreeCtrl::GetNextItem(HTREEITEM item, UINT code) const
{
    auto handle = [this](uint32_t index) { return index == NoIndex ? nullptr : HandleOf(index); };
    SettleRetired();
    switch (code)
    {
    case TVGN_ROOT:
        return handle(m_firstRoot);
    case TVGN_FIRSTVISIBLE:
        return GetRowItem(m_scrollRow);
    case TVGN_LASTVISIBLE:
        return GetRowItem(GetRowCount() - 1);
    case TVGN_CARET:
    case TVGN_DROPHILITE:
    {
        const UINT bit = code == TVGN_CARET ? TVIS_FOCUSED : TVIS_DROPHILITED;
        SettleRows();
        for (uint32_t row = m_firstRoot; row != NoIndex; row = NextShown(row))
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
        // The item is the cursor now: the neighbour is one step away.
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
        Touch(static_cast<uint32_t>(found - m_items.data()));
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
    Touch(index);
    m_rowsWidth = -1;
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
    if (found->image != static_cast<int16_t>(image))
        Touch(static_cast<uint32_t>(found - m_items.data()));
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
    if (found->data != data)
        Touch(static_cast<uint32_t>(found - m_items.data()));
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
    const auto index = static_cast<uint32_t>(found - m_items.data());
    SetExpandedBit(index, (((before & ~mask) | (state & mask)) & TVIS_EXPANDED) != 0);
    found->state = static_cast<uint16_t>((found->state & ~mask) | (state & mask));
    if (before != found->state)
        Touch(index);
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
    SetExpandedBit(index, expand);
    Touch(index);
    if (!expand && (code & TVE_COLLAPSERESET))
        DeleteChildren(index);
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
