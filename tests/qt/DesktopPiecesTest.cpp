// The pieces that bind the portable layers to Qt: the event-loop driver, key and modifier
// translation, file-dialog filters, and host menus shown as QMenus.

#include "host/DragDropHelpers.h"
#include "platform/Menu.h"
#include "platform/WinConstants.h"
#include "platform/Wnd.h"
#include "sonarium/qt/QtDialogService.h"
#include "sonarium/qt/QtMenuPresenter.h"
#include "sonarium/qt/QtWindowSystemDriver.h"
#include "sonarium/qt/TreeInput.h"

#include <QActionGroup>
#include <QCoreApplication>
#include <QCursor>
#include <QDeadlineTimer>
#include <QGuiApplication>
#include <QMenu>
#include <QWidget>

#include <gtest/gtest.h>

#include <vector>

namespace
{
class Counter : public CWnd
{
public:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message == WM_USER + 1)
            posted.push_back(static_cast<int>(wParam));
        if (message == WM_TIMER)
            ++ticks;
        return CWnd::WindowProc(message, wParam, lParam);
    }
    std::vector<int> posted;
    int ticks = 0;
};

// Lets the event loop run until the condition holds or a generous limit passes.
template <class Condition> bool RunLoopUntil(Condition done)
{
    QDeadlineTimer limit(5000);
    while (!done() && !limit.hasExpired())
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    return done();
}

struct WindowFixture : testing::Test
{
    void SetUp() override { window.Create(L"Counter", L"", WS_VISIBLE, CRect(0, 0, 10, 10), nullptr, 0); }
    void TearDown() override
    {
        window.DestroyWindow();
        WindowSystem::Get().Reset();
    }
    Counter window;
};
} // namespace

using QtDriver = WindowFixture;

TEST_F(QtDriver, PostedMessagesAndTimersRunFromTheEventLoopInOrder)
{
    sn::qt::QtWindowSystemDriver driver;
    int pumps = 0;
    QObject::connect(&driver, &sn::qt::QtWindowSystemDriver::Pumped, [&pumps] { ++pumps; });
    window.PostMessage(WM_USER + 1, 1);
    window.PostMessage(WM_USER + 1, 2);
    EXPECT_TRUE(window.posted.empty()) << "posting never delivers at once";
    ASSERT_TRUE(RunLoopUntil([&] { return window.posted.size() == 2; }));
    EXPECT_EQ(window.posted, (std::vector<int>{1, 2}));
    EXPECT_GE(pumps, 1);

    window.SetTimer(7, 10);
    ASSERT_TRUE(RunLoopUntil([&] { return window.ticks >= 2; })) << "a periodic timer keeps firing";
    window.KillTimer(7);
    const int ticks = window.ticks;
    QCoreApplication::processEvents();
    EXPECT_EQ(window.ticks, ticks);
}

TEST_F(QtDriver, TheClockNeverRunsBackwardsAndTheDriverIsGivenBack)
{
    WindowSystem::Get().Advance(5000);
    const DWORD before = WindowSystem::Get().Now();
    {
        sn::qt::QtWindowSystemDriver driver;
        EXPECT_EQ(WindowSystem::Get().GetDriver(), &driver);
        EXPECT_GE(WindowSystem::Get().Now(), before);
    }
    EXPECT_EQ(WindowSystem::Get().GetDriver(), nullptr);
}

TEST_F(QtDriver, AnInvalidatedWindowRepaintsOnlyItsOwnWidget)
{
    sn::qt::QtWindowSystemDriver driver;
    struct Painted : QWidget
    {
        int paints = 0;
        void paintEvent(QPaintEvent*) override { ++paints; }
    };
    Painted shown;
    Painted other;
    shown.resize(20, 20);
    other.resize(20, 20);
    shown.show();
    other.show();
    RunLoopUntil([&] { return shown.paints > 0 && other.paints > 0; });
    const int shownBefore = shown.paints;
    const int otherBefore = other.paints;
    driver.ShowWindowIn(window.GetSafeHwnd(), &shown);
    window.Invalidate();
    ASSERT_TRUE(RunLoopUntil([&] { return shown.paints > shownBefore; }));
    EXPECT_EQ(other.paints, otherBefore);

    driver.ShowWindowIn(window.GetSafeHwnd(), nullptr);
    window.Invalidate();
    QCoreApplication::processEvents();
    EXPECT_EQ(shown.paints, shownBefore + 1);
}

TEST(QtInput, KeysAndModifiersBecomeTheHostsCodes)
{
    using sn::qt::VirtualKey;
    EXPECT_EQ(VirtualKey(Qt::Key_A), UINT('A'));
    EXPECT_EQ(VirtualKey(Qt::Key_7), UINT('7'));
    EXPECT_EQ(VirtualKey(Qt::Key_PageDown), UINT(VK_NEXT));
    EXPECT_EQ(VirtualKey(Qt::Key_Enter), UINT(VK_RETURN));
    EXPECT_EQ(VirtualKey(Qt::Key_Return), UINT(VK_RETURN));
    EXPECT_EQ(VirtualKey(Qt::Key_Plus), UINT(VK_ADD));
    EXPECT_FALSE(VirtualKey(Qt::Key_F12).has_value());
    EXPECT_FALSE(VirtualKey(Qt::Key_Shift).has_value());

    EXPECT_EQ(sn::qt::MouseKeys(Qt::ShiftModifier | Qt::ControlModifier), UINT(MK_SHIFT | MK_CONTROL));
    EXPECT_EQ(sn::qt::MouseKeys(Qt::AltModifier, Qt::LeftButton | Qt::RightButton),
              UINT(MK_ALT | MK_LBUTTON | MK_RBUTTON));

    sn::qt::SyncModifierKeys(Qt::ControlModifier);
    EXPECT_LT(GetKeyState(VK_CONTROL), 0);
    EXPECT_GE(GetKeyState(VK_SHIFT), 0);
    sn::qt::SyncModifierKeys(Qt::NoModifier);
    EXPECT_GE(GetKeyState(VK_CONTROL), 0);
}

TEST(QtDialogs, HostFiltersBecomeQtFilters)
{
    using sn::qt::FileFilter;
    EXPECT_EQ(FileFilter(L"Sounds|*.wav;*.ogg|All files|*.*||"), QStringLiteral("Sounds (*.wav *.ogg);;All files (*.*)"));
    EXPECT_EQ(FileFilter(L"Projects|*.sonproj"), QStringLiteral("Projects (*.sonproj)"));
    EXPECT_EQ(FileFilter(L""), QString());
    // A description without patterns is dropped rather than shown broken.
    EXPECT_EQ(FileFilter(L"Sounds|*.wav|Dangling"), QStringLiteral("Sounds (*.wav)"));
}

TEST(QtMenuPresenterTest, RadioMarksBecomeExclusiveRadioEntriesAndCommandsShowTheirKeys)
{
    CMenu menu;
    menu.CreatePopupMenu();
    menu.AppendMenu(MF_STRING, 1, L"Include Selection");
    menu.AppendMenu(MF_STRING, 2, L"Exclude Selection");
    menu.AppendMenu(MF_SEPARATOR);
    menu.AppendMenu(MF_STRING, 3, L"Link");
    menu.AppendMenu(MF_STRING, 4, L"Unlink");
    menu.AppendMenu(MF_SEPARATOR);
    menu.AppendMenu(MF_STRING, 5, L"Rename\tF2");
    menu.CheckMenuRadioItem(1, 2, 2, MF_BYCOMMAND);

    QMenu shown;
    sn::qt::QtMenuPresenter::Fill(shown, menu.GetSafeHmenu());
    QList<QAction*> actions;
    for (QAction* action : shown.actions())
        if (!action->isSeparator())
            actions.push_back(action);
    ASSERT_EQ(actions.size(), 5);
    // The marked run is one exclusive group; a run without a mark (a mixed selection) is plain.
    ASSERT_TRUE(actions[0]->actionGroup());
    EXPECT_EQ(actions[0]->actionGroup(), actions[1]->actionGroup());
    EXPECT_TRUE(actions[0]->actionGroup()->isExclusive());
    EXPECT_FALSE(actions[0]->isChecked());
    EXPECT_TRUE(actions[1]->isChecked());
    EXPECT_FALSE(actions[2]->isCheckable());
    EXPECT_FALSE(actions[2]->actionGroup());
    EXPECT_EQ(actions[4]->text(), QStringLiteral("Rename\tF2"));
}

TEST_F(QtDriver, TheWaitCursorCoversNestedBusyWorkOnceAndLeavesWithTheDriver)
{
    ASSERT_EQ(QGuiApplication::overrideCursor(), nullptr);
    {
        sn::qt::QtWindowSystemDriver driver;
        {
            CXAutoWaitCursor outer;
            ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
            EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
            {
                CXAutoWaitCursor inner;
            }
            EXPECT_NE(QGuiApplication::overrideCursor(), nullptr) << "the outer work is not over";
        }
        EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
        WindowSystem::Get().BeginWaitCursor();
        EXPECT_NE(QGuiApplication::overrideCursor(), nullptr);
    }
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr) << "a driver that goes takes its cursor back";
    WindowSystem::Get().EndWaitCursor();
    EXPECT_FALSE(WindowSystem::Get().IsWaitCursorShown());
}
