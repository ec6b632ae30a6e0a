#pragma once
// Message, notification, flag and key values of the windowing API, each equal to its Win32
// number so that code and data written for that API keep their meaning.

#include "platform/WinTypes.h"

// Window messages
constexpr UINT WM_NULL = 0x0000;
constexpr UINT WM_CREATE = 0x0001;
constexpr UINT WM_DESTROY = 0x0002;
constexpr UINT WM_MOVE = 0x0003;
constexpr UINT WM_SIZE = 0x0005;
constexpr UINT WM_SETFOCUS = 0x0007;
constexpr UINT WM_KILLFOCUS = 0x0008;
constexpr UINT WM_ENABLE = 0x000A;
constexpr UINT WM_SETREDRAW = 0x000B;
constexpr UINT WM_SETTEXT = 0x000C;
constexpr UINT WM_GETTEXT = 0x000D;
constexpr UINT WM_PAINT = 0x000F;
constexpr UINT WM_CLOSE = 0x0010;
constexpr UINT WM_ERASEBKGND = 0x0014;
constexpr UINT WM_SHOWWINDOW = 0x0018;
constexpr UINT WM_NOTIFY = 0x004E;
constexpr UINT WM_CONTEXTMENU = 0x007B;
constexpr UINT WM_NCDESTROY = 0x0082;
constexpr UINT WM_KEYDOWN = 0x0100;
constexpr UINT WM_KEYUP = 0x0101;
constexpr UINT WM_CHAR = 0x0102;
constexpr UINT WM_SYSKEYDOWN = 0x0104;
constexpr UINT WM_INITDIALOG = 0x0110;
constexpr UINT WM_COMMAND = 0x0111;
constexpr UINT WM_TIMER = 0x0113;
constexpr UINT WM_MOUSEMOVE = 0x0200;
constexpr UINT WM_LBUTTONDOWN = 0x0201;
constexpr UINT WM_LBUTTONUP = 0x0202;
constexpr UINT WM_LBUTTONDBLCLK = 0x0203;
constexpr UINT WM_RBUTTONDOWN = 0x0204;
constexpr UINT WM_RBUTTONUP = 0x0205;
constexpr UINT WM_MOUSEWHEEL = 0x020A;
constexpr UINT WM_CUT = 0x0300;
constexpr UINT WM_COPY = 0x0301;
constexpr UINT WM_PASTE = 0x0302;
constexpr UINT WM_CLEAR = 0x0303;
constexpr UINT WM_UNDO = 0x0304;
constexpr UINT WM_USER = 0x0400;
constexpr UINT WM_APP = 0x8000;
// Registered window messages are numbered from here up.
constexpr UINT WM_REGISTERED_FIRST = 0xC000;

// Tree-view messages
constexpr UINT TV_FIRST = 0x1100;
constexpr UINT TVM_INSERTITEMW = TV_FIRST + 50;
constexpr UINT TVM_DELETEITEM = TV_FIRST + 1;
constexpr UINT TVM_EXPAND = TV_FIRST + 2;
constexpr UINT TVM_GETITEMRECT = TV_FIRST + 4;
constexpr UINT TVM_GETCOUNT = TV_FIRST + 5;
constexpr UINT TVM_GETNEXTITEM = TV_FIRST + 10;
constexpr UINT TVM_SELECTITEM = TV_FIRST + 11;
constexpr UINT TVM_GETEDITCONTROL = TV_FIRST + 15;
constexpr UINT TVM_GETVISIBLECOUNT = TV_FIRST + 16;
constexpr UINT TVM_HITTEST = TV_FIRST + 17;
constexpr UINT TVM_ENSUREVISIBLE = TV_FIRST + 20;
constexpr UINT TVM_ENDEDITLABELNOW = TV_FIRST + 22;
constexpr UINT TVM_SETBKCOLOR = TV_FIRST + 29;
constexpr UINT TVM_SETTEXTCOLOR = TV_FIRST + 30;
constexpr UINT TVM_GETBKCOLOR = TV_FIRST + 31;
constexpr UINT TVM_GETTEXTCOLOR = TV_FIRST + 32;
constexpr UINT TVM_GETITEMSTATE = TV_FIRST + 39;
constexpr UINT TVM_EDITLABELW = TV_FIRST + 65;
// The explorer is a Unicode build: the unsuffixed names are the wide ones.
constexpr UINT TVM_EDITLABEL = TVM_EDITLABELW;
constexpr UINT TVM_INSERTITEM = TVM_INSERTITEMW;

// TVM_GETNEXTITEM / TVM_SELECTITEM codes
constexpr UINT TVGN_ROOT = 0x0000;
constexpr UINT TVGN_NEXT = 0x0001;
constexpr UINT TVGN_PREVIOUS = 0x0002;
constexpr UINT TVGN_PARENT = 0x0003;
constexpr UINT TVGN_CHILD = 0x0004;
constexpr UINT TVGN_FIRSTVISIBLE = 0x0005;
constexpr UINT TVGN_NEXTVISIBLE = 0x0006;
constexpr UINT TVGN_PREVIOUSVISIBLE = 0x0007;
constexpr UINT TVGN_DROPHILITE = 0x0008;
constexpr UINT TVGN_CARET = 0x0009;
constexpr UINT TVGN_LASTVISIBLE = 0x000A;

// TVM_EXPAND actions
constexpr UINT TVE_COLLAPSE = 0x0001;
constexpr UINT TVE_EXPAND = 0x0002;
constexpr UINT TVE_TOGGLE = 0x0003;
// With TVE_COLLAPSE: also delete the child items.
constexpr UINT TVE_COLLAPSERESET = 0x8000;

// How a selection change came about (NMTREEVIEW::action)
constexpr UINT TVC_UNKNOWN = 0x0000;
constexpr UINT TVC_BYMOUSE = 0x0001;
constexpr UINT TVC_BYKEYBOARD = 0x0002;

// A colour left to the control's default.
constexpr COLORREF CLR_NONE = 0xFFFFFFFF;
constexpr COLORREF CLR_DEFAULT = 0xFF000000;

// One notch of a mouse wheel.
constexpr int WHEEL_DELTA = 120;

// Hit-test results
constexpr UINT TVHT_NOWHERE = 0x0001;
constexpr UINT TVHT_ONITEMICON = 0x0002;
constexpr UINT TVHT_ONITEMLABEL = 0x0004;
constexpr UINT TVHT_ONITEMINDENT = 0x0008;
constexpr UINT TVHT_ONITEMBUTTON = 0x0010;
constexpr UINT TVHT_ONITEMRIGHT = 0x0020;
constexpr UINT TVHT_ONITEMSTATEICON = 0x0040;
constexpr UINT TVHT_ONITEM = TVHT_ONITEMICON | TVHT_ONITEMLABEL | TVHT_ONITEMSTATEICON;
constexpr UINT TVHT_ABOVE = 0x0100;
constexpr UINT TVHT_BELOW = 0x0200;
constexpr UINT TVHT_TORIGHT = 0x0400;
constexpr UINT TVHT_TOLEFT = 0x0800;

// Item states
constexpr UINT TVIS_FOCUSED = 0x0001;
constexpr UINT TVIS_SELECTED = 0x0002;
constexpr UINT TVIS_CUT = 0x0004;
constexpr UINT TVIS_DROPHILITED = 0x0008;
constexpr UINT TVIS_BOLD = 0x0010;
constexpr UINT TVIS_EXPANDED = 0x0020;

// Item masks
constexpr UINT TVIF_TEXT = 0x0001;
constexpr UINT TVIF_IMAGE = 0x0002;
constexpr UINT TVIF_PARAM = 0x0004;
constexpr UINT TVIF_STATE = 0x0008;
constexpr UINT TVIF_HANDLE = 0x0010;

// Common-control and tree-view notification codes (negative, stored unsigned)
constexpr UINT NM_FIRST = 0U;
constexpr UINT NM_CLICK = static_cast<UINT>(-2);
constexpr UINT NM_DBLCLK = static_cast<UINT>(-3);
constexpr UINT NM_RETURN = static_cast<UINT>(-4);
constexpr UINT NM_RCLICK = static_cast<UINT>(-5);
constexpr UINT NM_RDBLCLK = static_cast<UINT>(-6);
constexpr UINT NM_SETFOCUS = static_cast<UINT>(-7);
constexpr UINT NM_KILLFOCUS = static_cast<UINT>(-8);
constexpr UINT NM_CUSTOMDRAW = static_cast<UINT>(-12);
constexpr UINT NM_LDOWN = static_cast<UINT>(-20);
constexpr UINT NM_RDOWN = static_cast<UINT>(-21);
constexpr UINT TVN_FIRST = static_cast<UINT>(-400);
constexpr UINT TVN_KEYDOWN = static_cast<UINT>(-412);
constexpr UINT TVN_SELCHANGINGW = static_cast<UINT>(-450);
constexpr UINT TVN_SELCHANGEDW = static_cast<UINT>(-451);
constexpr UINT TVN_ITEMEXPANDINGW = static_cast<UINT>(-454);
constexpr UINT TVN_ITEMEXPANDEDW = static_cast<UINT>(-455);
constexpr UINT TVN_BEGINDRAGW = static_cast<UINT>(-456);
constexpr UINT TVN_BEGINRDRAGW = static_cast<UINT>(-457);
constexpr UINT TVN_DELETEITEMW = static_cast<UINT>(-458);
constexpr UINT TVN_BEGINLABELEDITW = static_cast<UINT>(-459);
constexpr UINT TVN_ENDLABELEDITW = static_cast<UINT>(-460);

// Custom-draw stages and answers
constexpr DWORD CDDS_PREPAINT = 0x00000001;
constexpr DWORD CDDS_POSTPAINT = 0x00000002;
constexpr LRESULT CDRF_DODEFAULT = 0x00000000;
constexpr LRESULT CDRF_SKIPDEFAULT = 0x00000004;

// Virtual keys
constexpr int VK_LBUTTON = 0x01;
constexpr int VK_RBUTTON = 0x02;
constexpr int VK_MBUTTON = 0x04;
constexpr int VK_BACK = 0x08;
constexpr int VK_TAB = 0x09;
constexpr int VK_RETURN = 0x0D;
constexpr int VK_SHIFT = 0x10;
constexpr int VK_CONTROL = 0x11;
constexpr int VK_MENU = 0x12;
constexpr int VK_ESCAPE = 0x1B;
constexpr int VK_SPACE = 0x20;
constexpr int VK_PRIOR = 0x21;
constexpr int VK_NEXT = 0x22;
constexpr int VK_END = 0x23;
constexpr int VK_HOME = 0x24;
constexpr int VK_LEFT = 0x25;
constexpr int VK_UP = 0x26;
constexpr int VK_RIGHT = 0x27;
constexpr int VK_DOWN = 0x28;
constexpr int VK_INSERT = 0x2D;
constexpr int VK_DELETE = 0x2E;
constexpr int VK_MULTIPLY = 0x6A;
constexpr int VK_ADD = 0x6B;
constexpr int VK_SUBTRACT = 0x6D;
constexpr int VK_F1 = 0x70;
constexpr int VK_F2 = 0x71;
constexpr int VK_F5 = 0x74;
constexpr int VK_APPS = 0x5D;
constexpr int VK_F10 = 0x79;

// Key-state bits of mouse and drag messages
constexpr DWORD MK_LBUTTON = 0x0001;
constexpr DWORD MK_RBUTTON = 0x0002;
constexpr DWORD MK_SHIFT = 0x0004;
constexpr DWORD MK_CONTROL = 0x0008;
constexpr DWORD MK_MBUTTON = 0x0010;
constexpr DWORD MK_ALT = 0x0020;

// Message boxes
constexpr UINT MB_OK = 0x00000000;
constexpr UINT MB_OKCANCEL = 0x00000001;
constexpr UINT MB_YESNOCANCEL = 0x00000003;
constexpr UINT MB_YESNO = 0x00000004;
constexpr UINT MB_ICONERROR = 0x00000010;
constexpr UINT MB_ICONQUESTION = 0x00000020;
constexpr UINT MB_ICONEXCLAMATION = 0x00000030;
constexpr UINT MB_ICONWARNING = MB_ICONEXCLAMATION;
constexpr UINT MB_ICONINFORMATION = 0x00000040;
constexpr UINT MB_DEFBUTTON2 = 0x00000100;
constexpr int IDOK = 1;
constexpr int IDCANCEL = 2;
constexpr int IDYES = 6;
constexpr int IDNO = 7;

// Drag and drop
constexpr DROPEFFECT DROPEFFECT_NONE = 0;
constexpr DROPEFFECT DROPEFFECT_COPY = 1;
constexpr DROPEFFECT DROPEFFECT_MOVE = 2;
constexpr DROPEFFECT DROPEFFECT_LINK = 4;
constexpr DROPEFFECT DROPEFFECT_SCROLL = 0x80000000;
constexpr CLIPFORMAT CF_TEXT = 1;
constexpr CLIPFORMAT CF_UNICODETEXT = 13;
constexpr CLIPFORMAT CF_HDROP = 15;

// Window styles
constexpr DWORD WS_OVERLAPPED = 0x00000000;
constexpr DWORD WS_TABSTOP = 0x00010000;
constexpr DWORD WS_BORDER = 0x00800000;
constexpr DWORD WS_DISABLED = 0x08000000;
constexpr DWORD WS_VISIBLE = 0x10000000;
constexpr DWORD WS_CHILD = 0x40000000;
constexpr DWORD WS_POPUP = 0x80000000;

// Button styles and notifications
constexpr DWORD BS_PUSHBUTTON = 0x00000000;
constexpr DWORD BS_DEFPUSHBUTTON = 0x00000001;
constexpr DWORD BS_CHECKBOX = 0x00000002;
constexpr DWORD BS_AUTOCHECKBOX = 0x00000003;
constexpr DWORD BS_TYPEMASK = 0x0000000F;
constexpr DWORD BS_BITMAP = 0x00000080;
constexpr WORD BN_CLICKED = 0;
constexpr int BST_UNCHECKED = 0;
constexpr int BST_CHECKED = 1;

// Edit-control messages
constexpr UINT EM_GETSEL = 0x00B0;
constexpr UINT EM_SETSEL = 0x00B1;
constexpr UINT EM_REPLACESEL = 0x00C2;
constexpr UINT EM_LIMITTEXT = 0x00C5;
constexpr UINT EM_SETLIMITTEXT = EM_LIMITTEXT;
constexpr UINT EM_GETLIMITTEXT = 0x00D5;

// Menus
constexpr UINT MF_STRING = 0x00000000;
constexpr UINT MF_BYCOMMAND = 0x00000000;
constexpr UINT MF_ENABLED = 0x00000000;
constexpr UINT MF_UNCHECKED = 0x00000000;
constexpr UINT MF_GRAYED = 0x00000001;
constexpr UINT MF_DISABLED = 0x00000002;
constexpr UINT MF_BITMAP = 0x00000004;
constexpr UINT MF_CHECKED = 0x00000008;
constexpr UINT MF_POPUP = 0x00000010;
constexpr UINT MF_SEPARATOR = 0x00000800;
constexpr UINT MF_BYPOSITION = 0x00000400;
constexpr UINT MF_DEFAULT = 0x00001000;
constexpr UINT MFT_RADIOCHECK = 0x00000200;
constexpr UINT MIIM_STATE = 0x00000001;
constexpr UINT MIIM_ID = 0x00000002;
constexpr UINT MIIM_SUBMENU = 0x00000004;
constexpr UINT MIIM_STRING = 0x00000040;
constexpr UINT MIIM_BITMAP = 0x00000080;
constexpr UINT TPM_LEFTALIGN = 0x0000;
constexpr UINT TPM_RIGHTBUTTON = 0x0002;
constexpr UINT TPM_NONOTIFY = 0x0080;
constexpr UINT TPM_RETURNCMD = 0x0100;

// ShowWindow commands
constexpr int SW_HIDE = 0;
constexpr int SW_SHOWNORMAL = 1;
constexpr int SW_SHOW = 5;
constexpr int SW_SHOWNA = 8;

// WM_SIZE types
constexpr UINT SIZE_RESTORED = 0;
