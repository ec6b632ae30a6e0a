// The tree control's messages: notifications to the parent and the TVM_ messages it answers.

#include "platform/TreeCtrl.h"

#include "platform/TreeItem.h"
#include "platform/WindowSystem.h"

#include <cstring>

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
        if (m_redraw && wParam == 0)
            ++m_redrawSuspensions;
        m_redraw = wParam != 0;
        if (m_redraw)
            SettleRetired();
        if (m_redraw && m_repaintPending)
        {
            m_repaintPending = false;
            Invalidate(FALSE);
        }
        return 0;
    case WM_SIZE:
        SettleRows();
        ClampScroll();
        Repaint();
        break;
    default:
        break;
    }
    handled = false;
    return 0;
}
