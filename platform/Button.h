#pragma once
// A push button or check box. Click() is the user's click: a disabled button ignores it; an
// enabled one tells its parent with WM_COMMAND / BN_CLICKED.

#include "platform/Wnd.h"

class CButton : public CWnd
{
public:
    BOOL Create(LPCWSTR caption, DWORD style, const RECT& rect, CWnd* parent, UINT id);

    int GetCheck() const { return m_check; }
    void SetCheck(int check);
    HBITMAP SetBitmap(HBITMAP bitmap);
    HBITMAP GetBitmap() const { return m_bitmap; }

    // The user clicks the button; returns whether the click was delivered.
    bool Click();

private:
    int m_check = BST_UNCHECKED;
    HBITMAP m_bitmap = nullptr;
};
