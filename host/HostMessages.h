#pragma once
// The host's own messages between its main window, its menus and the explorer views: one set of
// numbers for the module, the host and its tools.

#include "platform/WinConstants.h"

namespace HostMessages
{
// The Edit menu's questions to the focused view; it answers Allowed or NotAllowed.
constexpr UINT CanCut = WM_APP + 0xCA;
constexpr UINT CanCopy = WM_APP + 0xCB;
constexpr UINT CanPaste = WM_APP + 0xCC;
constexpr LRESULT Allowed = 1;
constexpr LRESULT NotAllowed = 2;
// The Edit menu's commands to the focused view.
constexpr UINT DeleteObject = WM_APP + 0xEF;
constexpr UINT RenameObject = WM_APP + 0xF0;
// A key message the host saw first, forwarded to the view; wParam points to the MSG.
constexpr UINT ForwardedKey = WM_APP + 0x36;
// A view asks the main window whether it may drive the primary transport (wParam: the view's
// window); 0 means no.
constexpr UINT MayDriveTransport = WM_APP + 0x33;
// A view tells the main window that what the project holds changed under it (work units were
// loaded): wParam MainWindowRefreshViews, lParam points to a MainWindowRefreshRecord.
constexpr UINT MainWindowCommand = WM_APP + 0x37;
constexpr WPARAM MainWindowRefreshViews = 58;

// Which of the main window's views to refresh: -1 for all of them, and why (2: work units loaded).
struct MainWindowRefreshRecord
{
    long long firstView;
    int reason;
    long long lastView;
};
constexpr int RefreshReasonWorkUnitsLoaded = 2;
} // namespace HostMessages
