#include "platform/Button.h"

BOOL CButton::Create(LPCWSTR caption, DWORD style, const RECT& rect, CWnd* parent, UINT id)
{
    return CWnd::Create(L"BUTTON", caption, style, rect, parent, id);
}

void CButton::SetCheck(int check)
{
    if (check != m_check)
    {
        m_check = check;
        Invalidate();
    }
}

HBITMAP CButton::SetBitmap(HBITMAP bitmap)
{
    const HBITMAP old = m_bitmap;
    m_bitmap = bitmap;
    Invalidate();
    return old;
}

bool CButton::Click()
{
    if (!m_hWnd || !IsWindowEnabled())
        return false;
    if ((GetStyle() & BS_TYPEMASK) == BS_AUTOCHECKBOX)
        SetCheck(m_check == BST_CHECKED ? BST_UNCHECKED : BST_CHECKED);
    if (CWnd* parent = GetParent())
        parent->SendMessage(WM_COMMAND, MAKEWPARAM(static_cast<WORD>(GetDlgCtrlID()), BN_CLICKED),
                            reinterpret_cast<LPARAM>(m_hWnd));
    return true;
}
