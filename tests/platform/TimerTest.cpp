#include "PlatformFixture.h"

#include "platform/Wnd.h"

#include <vector>

namespace
{
class TimerWnd : public CWnd
{
public:
    std::vector<std::pair<UINT_PTR, DWORD>> ticks;
    bool killInHandler = false;
    bool rearmInHandler = false;

    void OnTimer(UINT_PTR id)
    {
        ticks.emplace_back(id, GetTickCount());
        if (killInHandler)
            KillTimer(id);
        if (rearmInHandler)
        {
            rearmInHandler = false;
            SetTimer(id, 50);
        }
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(TimerWnd, CWnd)
    ON_WM_TIMER()
END_MESSAGE_MAP()

std::vector<DWORD> g_threadTicks;
void CALLBACK_ThreadTimer(HWND hwnd, UINT msg, UINT_PTR id, DWORD time)
{
    EXPECT_EQ(nullptr, hwnd);
    EXPECT_EQ(WM_TIMER, msg);
    g_threadTicks.push_back(time);
}

using TimerTest = PlatformTest;
} // namespace

TEST_F(TimerTest, WindowTimersFireOnTheVirtualClockPerWindowAndId)
{
    TimerWnd a, b;
    a.Create(nullptr, L"", 0, CRect(), nullptr, 1);
    b.Create(nullptr, L"", 0, CRect(), nullptr, 2);
    a.SetTimer(1, 200);
    b.SetTimer(1, 300); // same id, another window: another timer

    Sys().Advance(199);
    EXPECT_TRUE(a.ticks.empty());
    Sys().Advance(1);
    ASSERT_EQ(1u, a.ticks.size());
    EXPECT_EQ(200u, a.ticks[0].second);
    Sys().Advance(400);
    EXPECT_EQ((std::vector<std::pair<UINT_PTR, DWORD>>{{1, 200}, {1, 400}, {1, 600}}), a.ticks);
    EXPECT_EQ((std::vector<std::pair<UINT_PTR, DWORD>>{{1, 300}, {1, 600}}), b.ticks);

    a.KillTimer(1);
    Sys().Advance(1000);
    EXPECT_EQ(3u, a.ticks.size());
    EXPECT_EQ(5u, b.ticks.size());
}

TEST_F(TimerTest, HandlersMayKillOrReArmTheirOwnTimer)
{
    TimerWnd oneShot;
    oneShot.Create(nullptr, L"", 0, CRect(), nullptr, 1);
    oneShot.killInHandler = true;
    oneShot.SetTimer(2, 200);
    Sys().Advance(1000);
    EXPECT_EQ(1u, oneShot.ticks.size());
    EXPECT_FALSE(Sys().HasTimer(oneShot.m_hWnd, 2));

    TimerWnd rearmed;
    rearmed.Create(nullptr, L"", 0, CRect(), nullptr, 2);
    rearmed.rearmInHandler = true;
    rearmed.SetTimer(3, 200);
    Sys().Advance(300);
    // Fired at 1200, then re-armed with a 50 ms period.
    ASSERT_EQ(3u, rearmed.ticks.size());
    EXPECT_EQ(1200u, rearmed.ticks[0].second);
    EXPECT_EQ(1250u, rearmed.ticks[1].second);

    // Setting a running timer again restarts its period.
    TimerWnd restarted;
    restarted.Create(nullptr, L"", 0, CRect(), nullptr, 3);
    restarted.SetTimer(4, 200);
    Sys().Advance(150);
    restarted.SetTimer(4, 200);
    Sys().Advance(150);
    EXPECT_TRUE(restarted.ticks.empty());
    Sys().Advance(50);
    EXPECT_EQ(1u, restarted.ticks.size());
}

TEST_F(TimerTest, ThreadTimersCallTheirProcedureAndDieWithNothingElse)
{
    g_threadTicks.clear();
    const UINT_PTR id = SetTimer(nullptr, 0, 75, &CALLBACK_ThreadTimer);
    ASSERT_NE(0u, id);
    Sys().Advance(150);
    EXPECT_EQ((std::vector<DWORD>{75, 150}), g_threadTicks);
    EXPECT_TRUE(KillTimer(nullptr, id));
    EXPECT_FALSE(KillTimer(nullptr, id));
    Sys().Advance(150);
    EXPECT_EQ(2u, g_threadTicks.size());

    // A destroyed window takes its timers with it.
    TimerWnd w;
    w.Create(nullptr, L"", 0, CRect(), nullptr, 1);
    const HWND hwnd = w.m_hWnd;
    w.SetTimer(1, 10);
    w.DestroyWindow();
    EXPECT_FALSE(Sys().HasTimer(hwnd, 1));
    EXPECT_FALSE(Sys().NextTimerDue().has_value());
}
