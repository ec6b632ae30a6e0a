// Renaming with the mouse: a second, slow click on the label of the only selected item opens
// the label editor, as F2 does. The editor waits for the double-click time, so that a double
// click (which opens the object instead) never starts an edit.

#include "host/MultiSelectionTreeCtrl.h"

#include "platform/WindowSystem.h"

void MultiSelectionTreeCtrl::NoteClickToEdit(HTREEITEM item, UINT flags, UINT keys, bool hadFocus)
{
    CancelClickToEdit();
    const bool plain = !(keys & (MK_CONTROL | MK_SHIFT)) && GetKeyState(VK_MENU) >= 0;
    if (plain && hadFocus && item && (flags & TVHT_ONITEMLABEL) && !GetEditControl() && IsSelected(item) &&
        GetSelectedCount() == 1)
        m_clickToEdit = item;
}

void MultiSelectionTreeCtrl::ArmClickToEdit(CPoint point)
{
    if (!m_clickToEdit)
        return;
    UINT flags = 0;
    if (!m_hWnd || HitTest(point, &flags) != m_clickToEdit || !(flags & TVHT_ONITEMLABEL))
    {
        CancelClickToEdit();
        return;
    }
    m_clickToEditArmed = true;
    SetTimer(SlowClickEditTimer, GetDoubleClickTime());
}

void MultiSelectionTreeCtrl::CancelClickToEdit()
{
    if (m_clickToEditArmed && m_hWnd)
        KillTimer(SlowClickEditTimer);
    m_clickToEdit = nullptr;
    m_clickToEditArmed = false;
}

void MultiSelectionTreeCtrl::OnClickToEditTimer()
{
    const HTREEITEM item = m_clickToEdit;
    CancelClickToEdit();
    // The selection may have changed meanwhile, by a key or by the program.
    if (ItemExists(item) && IsSelected(item) && GetSelectedCount() == 1 && !GetEditControl())
        SendMessage(TVM_EDITLABELW, 0, reinterpret_cast<LPARAM>(item));
}

LRESULT MultiSelectionTreeCtrl::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_TIMER && wParam == SlowClickEditTimer)
    {
        OnClickToEditTimer();
        return 0;
    }
    return CTreeCtrl::WindowProc(message, wParam, lParam);
}
