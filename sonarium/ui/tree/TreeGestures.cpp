// What the user does to the tree with the mouse and the keyboard. Each gesture holds the
// modifier keys and mouse buttons down in the window system while it runs, so that handlers
// asking GetKeyState see what the user is holding.

#include "host/MultiSelectionTreeCtrl.h"

#include "platform/HeldKeys.h"
#include "platform/WindowSystem.h"

#include <algorithm>
#include <vector>

void MultiSelectionTreeCtrl::PlaceCursor(CPoint point)
{
    CPoint screen = point;
    ClientToScreen(&screen);
    WindowSystem::Get().SetCursorPos(screen);
}

void MultiSelectionTreeCtrl::EndGesture()
{
    m_gestureOpen = false;
    CloseBatch();
}

void MultiSelectionTreeCtrl::MouseDown(CPoint point, UINT keys)
{
    if (!m_hWnd)
        return;
    if (m_gestureOpen)
        EndGesture(); // the release of the previous press was lost
    HeldKeys held(HeldKeys::Modifiers(keys));
    PlaceCursor(point);
    CancelClickToEdit();
    const bool hadFocus = WindowSystem::Get().GetFocus() == m_hWnd;
    // Taking the focus ends a label edit, as a click outside the editor does.
    SetFocus();
    WindowSystem::Get().SetKeyDown(VK_LBUTTON, true);
    m_gestureOpen = true;
    OpenBatch();

    NMHDR header{};
    NotifyParent(header, NM_LDOWN);
    UINT flags = 0;
    HTREEITEM item = HitTest(point, &flags);
    if (flags & TVHT_ONITEMBUTTON)
    {
        Expand(item, TVE_TOGGLE);
        return;
    }
    if (!item || (flags & TVHT_ONITEMINDENT))
    {
        if (!item && !(keys & (MK_CONTROL | MK_SHIFT)))
            for (HTREEITEM selected : std::vector<HTREEITEM>(Ordered()))
                ChangeSelection(selected, false, TVC_BYMOUSE);
        return;
    }
    NoteClickToEdit(item, flags, keys, hadFocus);
    SetFocusItem(item);
    if (keys & MK_SHIFT)
    {
        if (!ItemExists(m_anchor))
            m_anchor = item;
        SelectRange(m_anchor, item, (keys & MK_CONTROL) != 0, TVC_BYMOUSE);
    }
    else if (keys & MK_CONTROL)
    {
        ChangeSelection(item, !IsSelected(item), TVC_BYMOUSE);
        m_anchor = item;
    }
    else if (IsSelected(item) && GetSelectedCount() > 1)
    {
        m_pendingSingle = item;
        m_anchor = item;
    }
    else
    {
        SelectOnly(item, TVC_BYMOUSE);
        m_anchor = item;
    }
}

void MultiSelectionTreeCtrl::MouseUp(CPoint point, UINT keys)
{
    if (!m_gestureOpen || !m_hWnd)
        return;
    HeldKeys held(HeldKeys::Modifiers(keys));
    PlaceCursor(point);
    WindowSystem::Get().SetKeyDown(VK_LBUTTON, false);
    if (ItemExists(m_pendingSingle))
        SelectOnly(m_pendingSingle, TVC_BYMOUSE);
    m_pendingSingle = nullptr;
    EndGesture();
    if (m_hWnd)
    {
        NMHDR header{};
        NotifyParent(header, NM_CLICK);
    }
    if (m_hWnd)
        ArmClickToEdit(point);
}

void MultiSelectionTreeCtrl::Click(CPoint point, UINT keys)
{
    MouseDown(point, keys);
    MouseUp(point, keys);
}

void MultiSelectionTreeCtrl::DoubleClick(CPoint point, UINT keys)
{
    Click(point, keys);
    SecondClick(point, keys);
}

void MultiSelectionTreeCtrl::SecondClick(CPoint point, UINT keys)
{
    Click(point, keys);
    // A double click opens the object; it never starts a label edit.
    CancelClickToEdit();
    if (!m_hWnd)
        return;
    HeldKeys held(HeldKeys::Modifiers(keys));
    PlaceCursor(point);
    UINT flags = 0;
    HTREEITEM item = HitTest(point, &flags);
    LRESULT handled;
    {
        HeldKeys button({VK_LBUTTON});
        NMHDR header{};
        handled = NotifyParent(header, NM_DBLCLK);
    }
    // A tree-view toggles an item double-clicked on its icon or label, unless the parent says no.
    if (handled == 0 && ItemExists(item) && (flags & (TVHT_ONITEMICON | TVHT_ONITEMLABEL)) &&
        ItemHasChildren(item))
        Expand(item, TVE_TOGGLE);
}

void MultiSelectionTreeCtrl::RightClick(CPoint point, UINT keys)
{
    if (!m_hWnd)
        return;
    CancelClickToEdit();
    HeldKeys held(HeldKeys::Modifiers(keys));
    PlaceCursor(point);
    SetFocus();
    NMHDR header{};
    if (NotifyParent(header, NM_RCLICK) != 0 || !m_hWnd)
        return;
    CPoint screen = point;
    ClientToScreen(&screen);
    SendMessage(WM_CONTEXTMENU, reinterpret_cast<WPARAM>(m_hWnd),
                MAKELPARAM(static_cast<WORD>(screen.x), static_cast<WORD>(screen.y)));
}

HTREEITEM MultiSelectionTreeCtrl::NavigationTarget(UINT vk)
{
    const int rows = GetRowCount();
    if (rows == 0)
        return nullptr;
    HTREEITEM focus = GetFocusedItem();
    const int row = focus ? GetItemRow(focus) : -1;
    const int page = std::max(1, static_cast<int>(GetVisibleCount()) - 1);
    switch (vk)
    {
    case VK_UP:
        return GetRowItem(row < 0 ? 0 : std::max(0, row - 1));
    case VK_DOWN:
        return GetRowItem(row < 0 ? 0 : std::min(rows - 1, row + 1));
    case VK_HOME:
        return GetRowItem(0);
    case VK_END:
        return GetRowItem(rows - 1);
    case VK_PRIOR:
        return GetRowItem(row < 0 ? 0 : std::max(0, row - page));
    case VK_NEXT:
        return GetRowItem(row < 0 ? 0 : std::min(rows - 1, row + page));
    case VK_LEFT:
        if (!focus)
            return nullptr;
        if (GetItemState(focus, TVIS_EXPANDED))
        {
            Expand(focus, TVE_COLLAPSE);
            return nullptr;
        }
        return GetParentItem(focus);
    case VK_BACK:
        return focus ? GetParentItem(focus) : nullptr;
    case VK_RIGHT:
        if (!focus || !ItemHasChildren(focus))
            return nullptr;
        if (!GetItemState(focus, TVIS_EXPANDED))
        {
            Expand(focus, TVE_EXPAND);
            return nullptr;
        }
        return GetChildItem(focus);
    default:
        return nullptr;
    }
}

void MultiSelectionTreeCtrl::KeyPress(UINT vk, UINT keys)
{
    if (!m_hWnd)
        return;
    CancelClickToEdit();
    HeldKeys held(HeldKeys::Modifiers(keys));
    if (CEdit* edit = GetEditControl())
    {
        edit->PressKey(static_cast<int>(vk));
        return;
    }
    NMTVKEYDOWN key{};
    key.wVKey = static_cast<WORD>(vk);
    NotifyParent(key.hdr, TVN_KEYDOWN);
    if (!m_hWnd)
        return;

    HTREEITEM focus = GetFocusedItem();
    if (vk == VK_APPS || (vk == VK_F10 && (keys & MK_SHIFT)))
    {
        // The keyboard's context menu opens on the focused row's label, as a right click there.
        CRect label;
        if (focus && GetItemRect(focus, &label, TRUE))
        {
            CPoint screen(label.left + 1, (label.top + label.bottom) / 2);
            ClientToScreen(&screen);
            SendMessage(WM_CONTEXTMENU, reinterpret_cast<WPARAM>(m_hWnd),
                        MAKELPARAM(static_cast<WORD>(screen.x), static_cast<WORD>(screen.y)));
        }
        return;
    }
    OpenBatch();
    if (vk == VK_SPACE && (keys & MK_CONTROL) && focus)
    {
        ChangeSelection(focus, !IsSelected(focus), TVC_BYKEYBOARD);
        m_anchor = focus;
    }
    else if (vk == 'A' && (keys & MK_CONTROL))
        SelectAll(true);
    else if (vk == VK_MULTIPLY && focus)
        ExpandAllBelow(focus);
    else if (HTREEITEM target = NavigationTarget(vk))
    {
        SetFocusItem(target);
        if (keys & MK_SHIFT)
        {
            if (!ItemExists(m_anchor))
                m_anchor = focus ? focus : target;
            SelectRange(m_anchor, target, (keys & MK_CONTROL) != 0, TVC_BYKEYBOARD);
        }
        else if (!(keys & MK_CONTROL))
        {
            SelectOnly(target, TVC_BYKEYBOARD);
            m_anchor = target;
        }
        EnsureVisible(target);
    }
    CloseBatch();
}

void MultiSelectionTreeCtrl::TypeText(std::wstring const& text)
{
    if (CEdit* edit = GetEditControl())
        edit->TypeText(text);
}

void MultiSelectionTreeCtrl::Wheel(int delta)
{
    ScrollRows(-(delta * 3) / WHEEL_DELTA);
}

bool MultiSelectionTreeCtrl::BeginDrag(CPoint point, bool rightButton)
{
    UINT flags = 0;
    HTREEITEM item = HitTest(point, &flags);
    if (!m_hWnd || !item || !(flags & TVHT_ONITEM))
        return false;
    CancelClickToEdit();
    if (!m_gestureOpen)
    {
        m_gestureOpen = true;
        OpenBatch();
    }
    // Dragging keeps the whole selection; an item outside it is dragged alone.
    m_pendingSingle = nullptr;
    if (!IsSelected(item))
    {
        SetFocusItem(item);
        SelectOnly(item, TVC_BYMOUSE);
        m_anchor = item;
    }
    m_dragging = true;
    NMTREEVIEWW info{};
    info.itemNew.mask = TVIF_HANDLE | TVIF_STATE | TVIF_PARAM;
    info.itemNew.hItem = item;
    info.itemNew.state = GetItemState(item, 0xFFFF);
    info.itemNew.lParam = GetItemData(item);
    info.ptDrag = point;
    {
        HeldKeys button({rightButton ? VK_RBUTTON : VK_LBUTTON});
        NotifyParent(info.hdr, rightButton ? TVN_BEGINRDRAGW : TVN_BEGINDRAGW);
    }
    // The drop released the button: the gesture is over.
    WindowSystem::Get().SetKeyDown(VK_LBUTTON, false);
    EndGesture();
    m_dragging = false;
    return true;
}
