#pragma once
// Records carried by tree-view messages and notifications, laid out as Win32 declares them.

#include "platform/WinConstants.h"

struct TVITEMW
{
    UINT mask = 0;
    HTREEITEM hItem = nullptr;
    UINT state = 0;
    UINT stateMask = 0;
    LPWSTR pszText = nullptr;
    int cchTextMax = 0;
    int iImage = 0;
    int iSelectedImage = 0;
    int cChildren = 0;
    LPARAM lParam = 0;
};
using TVITEM = TVITEMW;

struct NMTREEVIEWW
{
    NMHDR hdr;
    UINT action = 0;
    TVITEMW itemOld;
    TVITEMW itemNew;
    POINT ptDrag;
};
using NMTREEVIEW = NMTREEVIEWW;
using LPNMTREEVIEW = NMTREEVIEWW*;

struct NMTVDISPINFOW
{
    NMHDR hdr;
    TVITEMW item;
};
using NMTVDISPINFO = NMTVDISPINFOW;

// TVN_KEYDOWN is sent with byte packing in Win32; the fields are the same.
struct NMTVKEYDOWN
{
    NMHDR hdr;
    WORD wVKey = 0;
    UINT flags = 0;
};
using LPNMTVKEYDOWN = NMTVKEYDOWN*;

struct TVHITTESTINFO
{
    POINT pt;
    UINT flags = 0;
    HTREEITEM hItem = nullptr;
};

struct NMCUSTOMDRAW
{
    NMHDR hdr;
    DWORD dwDrawStage = 0;
    HDC hdc = nullptr;
    RECT rc;
    DWORD_PTR dwItemSpec = 0;
    UINT uItemState = 0;
    LPARAM lItemlParam = 0;
};
using LPNMCUSTOMDRAW = NMCUSTOMDRAW*;
