#pragma once
// DPI scaling and the themed look of the host's controls.
//
// A control handed to SubClassControl is drawn by the host's theme. Its owner offers every
// WM_NOTIFY to OnNotify first: at the CDDS_PREPAINT stage of an NM_CUSTOMDRAW from a themed
// control, the manager paints the control's face, answers CDRF_SKIPDEFAULT and returns true,
// so the owner then draws its own content (an icon) over the face. Every other notification,
// stage or control is left to the owner: false.

#include "platform/WinTypes.h"

class UISubClassingMgr
{
public:
    // value (pixels at 96 DPI) at the current scale, rounded to the nearest pixel, halves away
    // from zero.
    static int ScaleToDpi(int value);
    // 1.0 at 96 DPI.
    static float GetDpiScale();
    // Set by the application from the screen, and by tests. A scale that is not a finite number
    // between 0.5 and 8 is refused (false) and the current one kept.
    static bool SetDpiScale(float scale);

    static void SubClassControl(HWND control);
    static bool IsSubClassed(HWND control);
    static bool OnNotify(WPARAM wParam, NMHDR* header, LRESULT* result);
};
