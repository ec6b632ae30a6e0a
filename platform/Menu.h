#pragma once
// Menus as data: each menu is a list of items (text, command id, flags, submenu, bitmap)
// behind an HMENU handle. Whoever shows menus (the desktop application, a script) reads the
// items and reports the chosen command through an IMenuPresenter.

#include "platform/WinConstants.h"

#include <string>
#include <vector>

class CWnd;

struct MENUITEMINFOW
{
    UINT cbSize = sizeof(MENUITEMINFOW);
    UINT fMask = 0;
    UINT fType = 0;
    UINT fState = 0;
    UINT wID = 0;
    HMENU hSubMenu = nullptr;
    HBITMAP hbmpChecked = nullptr;
    HBITMAP hbmpUnchecked = nullptr;
    UINT_PTR dwItemData = 0;
    LPWSTR dwTypeData = nullptr;
    UINT cch = 0;
    HBITMAP hbmpItem = nullptr;
};
using MENUITEMINFO = MENUITEMINFOW;

struct MenuItem
{
    UINT flags = MF_STRING;
    UINT_PTR id = 0;
    std::wstring text;
    HMENU submenu = nullptr;
    HBITMAP bitmap = nullptr;

    bool IsSeparator() const { return (flags & MF_SEPARATOR) != 0; }
    bool IsPopup() const { return submenu != nullptr; }
    bool IsEnabled() const { return !(flags & (MF_GRAYED | MF_DISABLED)); }
    bool IsChecked() const { return (flags & MF_CHECKED) != 0; }
};

// Shows a popup menu and returns the chosen command id, or 0 when dismissed.
class IMenuPresenter
{
public:
    virtual ~IMenuPresenter() = default;
    virtual UINT_PTR TrackPopupMenu(HMENU menu, POINT screen, HWND owner) = 0;
};

namespace MenuSystem
{
void SetPresenter(IMenuPresenter* presenter);
IMenuPresenter* GetPresenter();
// The items of a live menu, or null for a stale handle.
const std::vector<MenuItem>* Items(HMENU menu);
bool IsMenu(HMENU menu);
size_t LiveMenuCount();
} // namespace MenuSystem

HMENU CreatePopupMenu();
HMENU CreateMenu();
// Destroys the menu and the submenus it holds.
BOOL DestroyMenu(HMENU menu);
BOOL AppendMenuW(HMENU menu, UINT flags, UINT_PTR idOrSubmenu, LPCWSTR text);
BOOL InsertMenuW(HMENU menu, UINT position, UINT flags, UINT_PTR idOrSubmenu, LPCWSTR text);
BOOL RemoveMenu(HMENU menu, UINT position, UINT flags);
int GetMenuItemCount(HMENU menu);
UINT GetMenuItemID(HMENU menu, int position);
BOOL SetMenuItemInfoW(HMENU menu, UINT item, BOOL byPosition, const MENUITEMINFOW* info);
BOOL CheckMenuRadioItem(HMENU menu, UINT first, UINT last, UINT check, UINT flags);
UINT EnableMenuItem(HMENU menu, UINT item, UINT enable);
UINT CheckMenuItem(HMENU menu, UINT item, UINT check);

class CMenu
{
public:
    CMenu() = default;
    CMenu(const CMenu&) = delete;
    CMenu& operator=(const CMenu&) = delete;
    // Destroys the attached menu, as its owner.
    ~CMenu();

    HMENU m_hMenu = nullptr;
    HMENU GetSafeHmenu() const { return m_hMenu; }

    BOOL CreatePopupMenu();
    BOOL CreateMenu();
    BOOL Attach(HMENU menu);
    HMENU Detach();
    BOOL DestroyMenu();

    BOOL AppendMenu(UINT flags, UINT_PTR idOrSubmenu = 0, LPCWSTR text = nullptr);
    BOOL InsertMenu(UINT position, UINT flags, UINT_PTR idOrSubmenu = 0, LPCWSTR text = nullptr);
    BOOL RemoveMenu(UINT position, UINT flags);
    UINT GetMenuItemCount() const;
    UINT GetMenuItemID(int position) const;
    int GetMenuString(UINT item, std::wstring& text, UINT flags) const;
    HMENU GetSubMenu(int position) const;
    BOOL SetMenuItemInfo(UINT item, const MENUITEMINFOW* info, BOOL byPosition = FALSE);
    BOOL CheckMenuRadioItem(UINT first, UINT last, UINT check, UINT flags);
    UINT EnableMenuItem(UINT item, UINT enable);
    UINT CheckMenuItem(UINT item, UINT check);
    const std::vector<MenuItem>& Items() const;

    // Shows the menu through the presenter. With TPM_RETURNCMD the chosen id is returned;
    // otherwise it is sent to the owner as WM_COMMAND and TRUE is returned when one was chosen.
    BOOL TrackPopupMenu(UINT flags, int x, int y, CWnd* owner, LPCRECT = nullptr);
};
