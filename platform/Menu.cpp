#include "platform/Menu.h"

#include "platform/Wnd.h"

#include <unordered_map>

namespace
{
struct MenuTable
{
    std::unordered_map<std::uintptr_t, std::vector<MenuItem>> menus;
    std::uintptr_t next = 0x20000;
    IMenuPresenter* presenter = nullptr;
};

MenuTable& Table()
{
    static MenuTable table;
    return table;
}

std::vector<MenuItem>* Find(HMENU menu)
{
    auto& menus = Table().menus;
    auto it = menus.find(reinterpret_cast<std::uintptr_t>(menu));
    return it == menus.end() ? nullptr : &it->second;
}

HMENU NewMenu()
{
    MenuTable& table = Table();
    table.next += 4;
    table.menus.emplace(table.next, std::vector<MenuItem>{});
    return reinterpret_cast<HMENU>(table.next);
}

// The index of an item named by position or by command id (searching submenus, as Win32
// does for commands), with the menu that holds it.
std::vector<MenuItem>* Locate(HMENU menu, UINT item, bool byPosition, size_t& index)
{
    std::vector<MenuItem>* items = Find(menu);
    if (!items)
        return nullptr;
    if (byPosition)
    {
        index = item;
        return item < items->size() ? items : nullptr;
    }
    for (size_t i = 0; i < items->size(); ++i)
    {
        MenuItem& entry = (*items)[i];
        if (!entry.IsPopup() && !entry.IsSeparator() && entry.id == item)
        {
            index = i;
            return items;
        }
        if (entry.IsPopup())
            if (std::vector<MenuItem>* inner = Locate(entry.submenu, item, false, index))
                return inner;
    }
    return nullptr;
}

MenuItem MakeItem(UINT flags, UINT_PTR idOrSubmenu, LPCWSTR text)
{
    MenuItem item;
    item.flags = flags & ~MF_BYPOSITION;
    if (flags & MF_POPUP)
        item.submenu = reinterpret_cast<HMENU>(idOrSubmenu);
    else
        item.id = idOrSubmenu;
    if (text && !(flags & MF_SEPARATOR))
        item.text = text;
    return item;
}
} // namespace

void MenuSystem::SetPresenter(IMenuPresenter* presenter)
{
    Table().presenter = presenter;
}

IMenuPresenter* MenuSystem::GetPresenter()
{
    return Table().presenter;
}

const std::vector<MenuItem>* MenuSystem::Items(HMENU menu)
{
    return Find(menu);
}

bool MenuSystem::IsMenu(HMENU menu)
{
    return Find(menu) != nullptr;
}

size_t MenuSystem::LiveMenuCount()
{
    return Table().menus.size();
}

HMENU CreatePopupMenu()
{
    return NewMenu();
}

HMENU CreateMenu()
{
    return NewMenu();
}

BOOL DestroyMenu(HMENU menu)
{
    std::vector<MenuItem>* items = Find(menu);
    if (!items)
        return FALSE;
    const std::vector<MenuItem> held = std::move(*items);
    Table().menus.erase(reinterpret_cast<std::uintptr_t>(menu));
    for (const MenuItem& item : held)
        if (item.submenu)
            DestroyMenu(item.submenu);
    return TRUE;
}

BOOL AppendMenuW(HMENU menu, UINT flags, UINT_PTR idOrSubmenu, LPCWSTR text)
{
    std::vector<MenuItem>* items = Find(menu);
    if (!items)
        return FALSE;
    items->push_back(MakeItem(flags, idOrSubmenu, text));
    return TRUE;
}

BOOL InsertMenuW(HMENU menu, UINT position, UINT flags, UINT_PTR idOrSubmenu, LPCWSTR text)
{
    std::vector<MenuItem>* items = Find(menu);
    if (!items)
        return FALSE;
    size_t index = items->size();
    if (flags & MF_BYPOSITION)
    {
        // Past the end (including the conventional -1) appends.
        index = position < items->size() ? position : items->size();
    }
    else
    {
        size_t found = 0;
        if (std::vector<MenuItem>* holder = Locate(menu, position, false, found))
        {
            holder->insert(holder->begin() + static_cast<std::ptrdiff_t>(found), MakeItem(flags, idOrSubmenu, text));
            return TRUE;
        }
    }
    items->insert(items->begin() + static_cast<std::ptrdiff_t>(index), MakeItem(flags, idOrSubmenu, text));
    return TRUE;
}

BOOL RemoveMenu(HMENU menu, UINT position, UINT flags)
{
    size_t index = 0;
    std::vector<MenuItem>* holder = Locate(menu, position, (flags & MF_BYPOSITION) != 0, index);
    if (!holder)
        return FALSE;
    holder->erase(holder->begin() + static_cast<std::ptrdiff_t>(index));
    return TRUE;
}

int GetMenuItemCount(HMENU menu)
{
    const std::vector<MenuItem>* items = Find(menu);
    return items ? static_cast<int>(items->size()) : -1;
}

UINT GetMenuItemID(HMENU menu, int position)
{
    const std::vector<MenuItem>* items = Find(menu);
    if (!items || position < 0 || static_cast<size_t>(position) >= items->size())
        return static_cast<UINT>(-1);
    const MenuItem& item = (*items)[static_cast<size_t>(position)];
    return item.IsPopup() ? static_cast<UINT>(-1) : static_cast<UINT>(item.id);
}

BOOL SetMenuItemInfoW(HMENU menu, UINT item, BOOL byPosition, const MENUITEMINFOW* info)
{
    size_t index = 0;
    std::vector<MenuItem>* holder = Locate(menu, item, byPosition != 0, index);
    if (!holder || !info || info->cbSize != sizeof(MENUITEMINFOW))
        return FALSE;
    MenuItem& entry = (*holder)[index];
    if (info->fMask & MIIM_BITMAP)
        entry.bitmap = info->hbmpItem;
    if (info->fMask & MIIM_ID)
        entry.id = info->wID;
    if (info->fMask & MIIM_STRING)
        entry.text = info->dwTypeData ? info->dwTypeData : L"";
    if (info->fMask & MIIM_STATE)
        entry.flags = (entry.flags & ~(MF_GRAYED | MF_DISABLED | MF_CHECKED)) |
                      (info->fState & (MF_GRAYED | MF_DISABLED | MF_CHECKED));
    if (info->fMask & MIIM_SUBMENU)
        entry.submenu = info->hSubMenu;
    return TRUE;
}

BOOL CheckMenuRadioItem(HMENU menu, UINT first, UINT last, UINT check, UINT flags)
{
    std::vector<MenuItem>* items = Find(menu);
    if (!items)
        return FALSE;
    bool found = false;
    for (size_t i = 0; i < items->size(); ++i)
    {
        MenuItem& item = (*items)[i];
        const UINT key = (flags & MF_BYPOSITION) ? static_cast<UINT>(i) : static_cast<UINT>(item.id);
        if (item.IsSeparator() || key < first || key > last)
            continue;
        const bool checked = key == check;
        found = found || checked;
        item.flags = checked ? (item.flags | MF_CHECKED | MFT_RADIOCHECK) : (item.flags & ~MF_CHECKED);
    }
    return found ? TRUE : FALSE;
}

namespace
{
// Replaces the state bits of mask on one item; returns the previous ones, or -1 when absent.
UINT ReplaceStateFlags(HMENU menu, UINT item, UINT flags, UINT mask)
{
    size_t index = 0;
    std::vector<MenuItem>* holder = Locate(menu, item, (flags & MF_BYPOSITION) != 0, index);
    if (!holder)
        return static_cast<UINT>(-1);
    MenuItem& entry = (*holder)[index];
    const UINT previous = entry.flags & mask;
    entry.flags = (entry.flags & ~mask) | (flags & mask);
    return previous;
}
} // namespace

UINT EnableMenuItem(HMENU menu, UINT item, UINT enable)
{
    return ReplaceStateFlags(menu, item, enable, MF_GRAYED | MF_DISABLED);
}

UINT CheckMenuItem(HMENU menu, UINT item, UINT check)
{
    return ReplaceStateFlags(menu, item, check, MF_CHECKED);
}

CMenu::~CMenu()
{
    DestroyMenu();
}

BOOL CMenu::CreatePopupMenu()
{
    return Attach(::CreatePopupMenu());
}

BOOL CMenu::CreateMenu()
{
    return Attach(::CreateMenu());
}

BOOL CMenu::Attach(HMENU menu)
{
    if (m_hMenu || !menu)
        return FALSE;
    m_hMenu = menu;
    return TRUE;
}

HMENU CMenu::Detach()
{
    const HMENU menu = m_hMenu;
    m_hMenu = nullptr;
    return menu;
}

BOOL CMenu::DestroyMenu()
{
    if (!m_hMenu)
        return FALSE;
    return ::DestroyMenu(Detach());
}

BOOL CMenu::AppendMenu(UINT flags, UINT_PTR idOrSubmenu, LPCWSTR text)
{
    return ::AppendMenuW(m_hMenu, flags, idOrSubmenu, text);
}

BOOL CMenu::InsertMenu(UINT position, UINT flags, UINT_PTR idOrSubmenu, LPCWSTR text)
{
    return ::InsertMenuW(m_hMenu, position, flags, idOrSubmenu, text);
}

BOOL CMenu::RemoveMenu(UINT position, UINT flags)
{
    return ::RemoveMenu(m_hMenu, position, flags);
}

UINT CMenu::GetMenuItemCount() const
{
    return static_cast<UINT>(::GetMenuItemCount(m_hMenu));
}

UINT CMenu::GetMenuItemID(int position) const
{
    return ::GetMenuItemID(m_hMenu, position);
}

int CMenu::GetMenuString(UINT item, std::wstring& text, UINT flags) const
{
    size_t index = 0;
    std::vector<MenuItem>* holder = Locate(m_hMenu, item, (flags & MF_BYPOSITION) != 0, index);
    text = holder ? (*holder)[index].text : std::wstring();
    return static_cast<int>(text.size());
}

HMENU CMenu::GetSubMenu(int position) const
{
    const std::vector<MenuItem>* items = Find(m_hMenu);
    if (!items || position < 0 || static_cast<size_t>(position) >= items->size())
        return nullptr;
    return (*items)[static_cast<size_t>(position)].submenu;
}

BOOL CMenu::SetMenuItemInfo(UINT item, const MENUITEMINFOW* info, BOOL byPosition)
{
    return ::SetMenuItemInfoW(m_hMenu, item, byPosition, info);
}

BOOL CMenu::CheckMenuRadioItem(UINT first, UINT last, UINT check, UINT flags)
{
    return ::CheckMenuRadioItem(m_hMenu, first, last, check, flags);
}

UINT CMenu::EnableMenuItem(UINT item, UINT enable)
{
    return ::EnableMenuItem(m_hMenu, item, enable);
}

UINT CMenu::CheckMenuItem(UINT item, UINT check)
{
    return ::CheckMenuItem(m_hMenu, item, check);
}

const std::vector<MenuItem>& CMenu::Items() const
{
    static const std::vector<MenuItem> none;
    const std::vector<MenuItem>* items = Find(m_hMenu);
    return items ? *items : none;
}

BOOL CMenu::TrackPopupMenu(UINT flags, int x, int y, CWnd* owner, LPCRECT)
{
    IMenuPresenter* presenter = MenuSystem::GetPresenter();
    if (!m_hMenu || !presenter)
        return 0;
    const UINT_PTR chosen = presenter->TrackPopupMenu(m_hMenu, POINT{x, y}, owner ? owner->GetSafeHwnd() : nullptr);
    if (flags & TPM_RETURNCMD)
        return static_cast<BOOL>(chosen);
    if (chosen && owner && !(flags & TPM_NONOTIFY))
        owner->PostMessage(WM_COMMAND, MAKEWPARAM(static_cast<WORD>(chosen), 0), 0);
    return chosen ? TRUE : FALSE;
}
