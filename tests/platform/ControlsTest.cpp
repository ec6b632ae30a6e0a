#include "PlatformFixture.h"

#include "platform/Dialog.h"

#include <string>
#include <vector>

namespace
{
using ControlsTest = PlatformTest;

class Panel : public CDialog
{
public:
    CEdit edit;
    CButton button;
    std::vector<UINT> clicked;

    void OnClicked(UINT id) { clicked.push_back(id); }

protected:
    void DoDataExchange(CDataExchange* pDX) override
    {
        DDX_Control(pDX, 11, edit);
        DDX_Control(pDX, 12, button);
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Panel, CDialog)
    ON_CONTROL_RANGE(BN_CLICKED, 12, 12, &Panel::OnClicked)
END_MESSAGE_MAP()
} // namespace

TEST_F(ControlsTest, DialogBindsItsControlsAndButtonsReportOnlyWhenEnabled)
{
    CWnd host;
    host.Create(nullptr, L"", WS_VISIBLE, CRect(0, 0, 300, 200), nullptr, 1);
    Panel panel;
    ASSERT_TRUE(panel.Create(500, &host));
    EXPECT_EQ(&panel.edit, panel.GetDlgItem(11));
    EXPECT_EQ(&panel.button, panel.GetDlgItem(12));

    EXPECT_TRUE(panel.button.Click());
    panel.button.EnableWindow(FALSE);
    EXPECT_FALSE(panel.button.Click());
    EXPECT_EQ((std::vector<UINT>{12}), panel.clicked);
}

TEST_F(ControlsTest, EditLimitsSelectionAndClipboard)
{
    CEdit edit;
    edit.Create(WS_VISIBLE, CRect(), nullptr, 1);
    edit.SendMessage(EM_LIMITTEXT, 8);
    edit.TypeText(L"Footsteps_Gravel");
    EXPECT_EQ(L"Footstep", edit.GetWindowText()) << "typing stops at the limit";

    edit.SetSel(0, 4);
    edit.SendMessage(WM_COPY);
    EXPECT_EQ(L"Foot", TextClipboard::Get());
    edit.SetSel(4, -1);
    edit.SendMessage(WM_CUT);
    EXPECT_EQ(L"Foot", edit.GetWindowText());
    EXPECT_EQ(L"step", TextClipboard::Get());

    edit.SetSel(0, 0);
    edit.SendMessage(WM_PASTE);
    edit.SendMessage(WM_PASTE);
    EXPECT_EQ(L"stepFoot", edit.GetWindowText()) << "the second paste finds no room";
    int start = -1, end = -1;
    edit.GetSel(start, end);
    EXPECT_EQ(4, start);
    EXPECT_EQ(4, end);

    edit.PressKey(VK_END);
    edit.PressKey(VK_BACK);
    edit.PressKey(VK_HOME);
    edit.PressKey(VK_DELETE);
    EXPECT_EQ(L"tepFoo", edit.GetWindowText());
}

TEST_F(ControlsTest, MenusAreDataWithSubmenusBitmapsAndRadioChecks)
{
    const size_t liveBefore = MenuSystem::LiveMenuCount();
    {
        CMenu menu;
        menu.CreatePopupMenu();
        CMenu sub;
        sub.CreatePopupMenu();
        sub.AppendMenu(MF_STRING, 101, L"Low");
        sub.AppendMenu(MF_STRING, 102, L"High");
        sub.CheckMenuRadioItem(101, 102, 102, MF_BYCOMMAND);
        menu.AppendMenu(MF_STRING, 1, L"Rename");
        menu.AppendMenu(MF_SEPARATOR);
        menu.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(sub.Detach()), L"Priority");
        menu.InsertMenu(0, MF_BYPOSITION | MF_STRING | MF_GRAYED, 2, L"Cut");
        ASSERT_EQ(4u, menu.GetMenuItemCount());
        EXPECT_EQ(2u, menu.GetMenuItemID(0));
        EXPECT_FALSE(menu.Items()[0].IsEnabled());
        EXPECT_EQ(static_cast<UINT>(-1), menu.GetMenuItemID(3)) << "popups have no command id";

        const auto* subItems = MenuSystem::Items(menu.GetSubMenu(3));
        ASSERT_NE(nullptr, subItems);
        EXPECT_FALSE((*subItems)[0].IsChecked());
        EXPECT_TRUE((*subItems)[1].IsChecked());

        MENUITEMINFOW info;
        info.fMask = MIIM_BITMAP;
        info.hbmpItem = reinterpret_cast<HBITMAP>(0x1234);
        EXPECT_TRUE(menu.SetMenuItemInfo(menu.GetMenuItemCount() - 1, &info, TRUE));
        EXPECT_EQ(info.hbmpItem, menu.Items()[3].bitmap);
        info.cbSize = 12; // a record of the wrong size is refused
        EXPECT_FALSE(menu.SetMenuItemInfo(0, &info, TRUE));

        std::wstring text;
        menu.GetMenuString(102, text, MF_BYCOMMAND);
        EXPECT_EQ(L"High", text) << "commands are found in submenus";
    }
    EXPECT_EQ(liveBefore, MenuSystem::LiveMenuCount()) << "destroying a menu destroys its submenus";
}

TEST_F(ControlsTest, TrackPopupMenuAsksThePresenter)
{
    struct Chooser : IMenuPresenter
    {
        UINT_PTR TrackPopupMenu(HMENU menu, POINT, HWND) override { return (*MenuSystem::Items(menu))[1].id; }
    } chooser;
    CMenu menu;
    menu.CreatePopupMenu();
    menu.AppendMenu(MF_STRING, 7, L"One");
    menu.AppendMenu(MF_STRING, 8, L"Two");
    EXPECT_EQ(0, menu.TrackPopupMenu(TPM_RETURNCMD, 0, 0, nullptr)) << "no presenter, nothing chosen";
    MenuSystem::SetPresenter(&chooser);
    EXPECT_EQ(8, menu.TrackPopupMenu(TPM_RETURNCMD, 0, 0, nullptr));
    MenuSystem::SetPresenter(nullptr);
}
