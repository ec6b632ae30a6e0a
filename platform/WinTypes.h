#pragma once
// Handle and value types of the windowing API the explorer is written against, with their
// Win32 meaning and sizes, so code written for that API compiles and behaves the same here.

#include <cstdint>
#include <cwchar>

using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using UINT = std::uint32_t;
using LONG = std::int32_t;
using SHORT = std::int16_t;
using BOOL = int;
using WPARAM = std::uintptr_t;
using LPARAM = std::intptr_t;
using LRESULT = std::intptr_t;
using UINT_PTR = std::uintptr_t;
using INT_PTR = std::intptr_t;
using DWORD_PTR = std::uintptr_t;
using COLORREF = DWORD;
using CLIPFORMAT = WORD;
using DROPEFFECT = DWORD;
using LPCWSTR = const wchar_t*;
using LPWSTR = wchar_t*;

#ifndef TRUE
#define TRUE 1
#define FALSE 0
#endif

// Opaque handles: distinct pointer types, never dereferenced by their users.
struct HWND__;
using HWND = HWND__*;
struct HINSTANCE__;
using HINSTANCE = HINSTANCE__*;
struct HMENU__;
using HMENU = HMENU__*;
struct HBITMAP__;
using HBITMAP = HBITMAP__*;
struct HDC__;
using HDC = HDC__*;
struct HGLOBAL__;
using HGLOBAL = HGLOBAL__*;
struct HDROP__;
using HDROP = HDROP__*;
struct _TREEITEM;
using HTREEITEM = _TREEITEM*;

#define TVI_ROOT (reinterpret_cast<HTREEITEM>(static_cast<std::intptr_t>(-0x10000)))
#define TVI_FIRST (reinterpret_cast<HTREEITEM>(static_cast<std::intptr_t>(-0x0FFFF)))
#define TVI_LAST (reinterpret_cast<HTREEITEM>(static_cast<std::intptr_t>(-0x0FFFE)))
#define TVI_SORT (reinterpret_cast<HTREEITEM>(static_cast<std::intptr_t>(-0x0FFFD)))

constexpr WORD LOWORD(DWORD_PTR v) { return static_cast<WORD>(v & 0xFFFF); }
constexpr WORD HIWORD(DWORD_PTR v) { return static_cast<WORD>((v >> 16) & 0xFFFF); }
constexpr WPARAM MAKEWPARAM(WORD lo, WORD hi) { return static_cast<WPARAM>(static_cast<DWORD>(lo) | (static_cast<DWORD>(hi) << 16)); }
constexpr LPARAM MAKELPARAM(WORD lo, WORD hi) { return static_cast<LPARAM>(static_cast<DWORD>(lo) | (static_cast<DWORD>(hi) << 16)); }

constexpr COLORREF RGB(BYTE r, BYTE g, BYTE b) { return r | (static_cast<DWORD>(g) << 8) | (static_cast<DWORD>(b) << 16); }
constexpr BYTE GetRValue(COLORREF c) { return static_cast<BYTE>(c & 0xFF); }
constexpr BYTE GetGValue(COLORREF c) { return static_cast<BYTE>((c >> 8) & 0xFF); }
constexpr BYTE GetBValue(COLORREF c) { return static_cast<BYTE>((c >> 16) & 0xFF); }

struct POINT
{
    LONG x = 0;
    LONG y = 0;
};
using LPPOINT = POINT*;

struct SIZE
{
    LONG cx = 0;
    LONG cy = 0;
};

struct RECT
{
    LONG left = 0;
    LONG top = 0;
    LONG right = 0;
    LONG bottom = 0;
};
using LPRECT = RECT*;
using LPCRECT = const RECT*;

class CPoint : public POINT
{
public:
    CPoint() = default;
    CPoint(int x_, int y_) { x = x_; y = y_; }
    CPoint(POINT p) : POINT(p) {}
    bool operator==(const CPoint& o) const { return x == o.x && y == o.y; }
    void Offset(int dx, int dy) { x += dx; y += dy; }
};

class CSize : public SIZE
{
public:
    CSize() = default;
    CSize(int w, int h) { cx = w; cy = h; }
};

class CRect : public RECT
{
public:
    CRect() = default;
    CRect(int l, int t, int r, int b) { left = l; top = t; right = r; bottom = b; }
    CRect(const RECT& r) : RECT(r) {}
    int Width() const { return right - left; }
    int Height() const { return bottom - top; }
    CPoint TopLeft() const { return CPoint(left, top); }
    CPoint BottomRight() const { return CPoint(right, bottom); }
    bool IsRectEmpty() const { return right <= left || bottom <= top; }
    BOOL PtInRect(POINT p) const { return p.x >= left && p.x < right && p.y >= top && p.y < bottom; }
    void OffsetRect(int dx, int dy) { left += dx; right += dx; top += dy; bottom += dy; }
    void DeflateRect(int dx, int dy) { left += dx; right -= dx; top += dy; bottom -= dy; }
    void SetRect(int l, int t, int r, int b) { left = l; top = t; right = r; bottom = b; }
    bool operator==(const CRect& o) const
    {
        return left == o.left && top == o.top && right == o.right && bottom == o.bottom;
    }
    operator LPRECT() { return this; }
    operator LPCRECT() const { return this; }
};

// Header of every WM_NOTIFY message. Negative notification codes are stored as Win32 does,
// as their unsigned two's complement.
struct NMHDR
{
    HWND hwndFrom = nullptr;
    UINT_PTR idFrom = 0;
    UINT code = 0;
};
using LPNMHDR = NMHDR*;

struct MSG
{
    HWND hwnd = nullptr;
    UINT message = 0;
    WPARAM wParam = 0;
    LPARAM lParam = 0;
    DWORD time = 0;
    POINT pt;
};

using TIMERPROC = void (*)(HWND, UINT, UINT_PTR, DWORD);
