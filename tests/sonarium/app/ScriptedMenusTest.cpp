// Menus answered by a script: the entry chosen is found by the texts a user reads, level by
// level; an entry that is missing, disabled, or not the end of the path dismisses the menu and
// says why.

#include "sonarium/app/script/ScriptedMenus.h"

#include <gtest/gtest.h>

namespace
{
class MenuOwner
{
public:
    MenuOwner()
    {
        CMenu submenu;
        submenu.CreatePopupMenu();
        submenu.AppendMenu(MF_STRING, 21, L"&Sound SFX");
        submenu.AppendMenu(MF_STRING | MF_GRAYED, 22, L"&Music Track");
        menu.CreatePopupMenu();
        menu.AppendMenu(MF_STRING, 10, L"&Delete\tDel");
        menu.AppendMenu(MF_SEPARATOR);
        menu.AppendMenu(MF_STRING, 11, L"Delete");
        // The menu owns its submenu from now on.
        menu.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(submenu.Detach()), L"New &Child");
    }

    UINT_PTR Show(sn::ScriptedMenus& menus)
    {
        return menus.TrackPopupMenu(menu.GetSafeHmenu(), POINT{}, nullptr);
    }

    CMenu menu;
};
} // namespace

TEST(ScriptedMenus, ChoosesByTheTextsAUserReadsAndSaysWhyAChoiceFails)
{
    MenuOwner owner;
    sn::ScriptedMenus menus;
    EXPECT_EQ(owner.Show(menus), 0u) << "with no choice queued the menu is dismissed";
    EXPECT_TRUE(menus.TakeFailure().empty());

    const std::pair<const wchar_t*, UINT_PTR> chosen[] = {
        {L"Delete", 10}, // the first of two equal texts; "&" and the shortcut are not read
        {L"New Child/Sound SFX", 21},
    };
    for (auto [path, id] : chosen)
    {
        menus.Choose(path);
        EXPECT_EQ(owner.Show(menus), id) << path;
        EXPECT_TRUE(menus.TakeFailure().empty()) << path;
    }

    const std::pair<const wchar_t*, const wchar_t*> refused[] = {
        {L"Rename", L"no menu entry \"Rename\""},
        {L"New Child/Music Track", L"no enabled menu entry \"New Child/Music Track\""},
        {L"Delete/Everything", L"menu entry \"Delete\" has no submenu (choosing \"Delete/Everything\")"},
        {L"New Child", L"menu entry \"New Child\" opens a submenu"},
    };
    for (auto [path, why] : refused)
    {
        menus.Choose(path);
        EXPECT_EQ(owner.Show(menus), 0u) << path;
        EXPECT_EQ(menus.TakeFailure(), why);
    }
    const std::vector<std::wstring> shown(menus.Transcript().begin(), menus.Transcript().begin() + 8);
    const std::vector<std::wstring> expected{L"menu",          L"  Delete  [Del]",      L"  -",
                                             L"  Delete",      L"  New Child >",        L"    Sound SFX",
                                             L"    Music Track (disabled)", L"  -> dismissed"};
    EXPECT_EQ(shown, expected) << "one entry per line, the submenu's indented below it";
    EXPECT_EQ(menus.Transcript().back(), L"  -> dismissed (menu entry \"New Child\" opens a submenu)");
}
