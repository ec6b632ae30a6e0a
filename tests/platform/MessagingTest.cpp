#include "PlatformFixture.h"

#include "platform/Wnd.h"

#include <string>
#include <vector>

namespace
{
UINT g_registeredPing = RegisterWindowMessage(L"Test_Ping");

class Recorder : public CWnd
{
public:
    std::vector<std::string>* log = nullptr;
    std::string name;
    CWnd* forwardTo = nullptr;

    void Record(const std::string& what) { log->push_back(name + ":" + what); }

    LRESULT OnApp(WPARAM wp, LPARAM)
    {
        Record("app" + std::to_string(wp));
        // Re-entrancy: post while handling, and send to another window.
        if (wp == 1)
            PostMessage(WM_APP, 3);
        if (forwardTo && wp == 1)
            forwardTo->SendMessage(WM_APP, 2);
        return static_cast<LRESULT>(wp * 10);
    }
    LRESULT OnPing(WPARAM, LPARAM) { Record("ping"); return 7; }
    void OnItemNotify(NMHDR* hdr, LRESULT* result) { Record("notify" + std::to_string(hdr->idFrom)); *result = 42; }
    void OnRange(UINT id) { Record("range" + std::to_string(id)); }
    void OnDestroy() { Record("destroy"); }

    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Recorder, CWnd)
    ON_MESSAGE(WM_APP, &Recorder::OnApp)
    ON_REGISTERED_MESSAGE(g_registeredPing, &Recorder::OnPing)
    ON_NOTIFY(NM_CLICK, 100, &Recorder::OnItemNotify)
    ON_CONTROL_RANGE(BN_CLICKED, 200, 210, &Recorder::OnRange)
    ON_WM_DESTROY()
END_MESSAGE_MAP()

// A derived class overrides one entry and inherits the rest through the chain.
class DerivedRecorder : public Recorder
{
public:
    LRESULT OnAppDerived(WPARAM wp, LPARAM) { Record("derived" + std::to_string(wp)); return -1; }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(DerivedRecorder, Recorder)
    ON_MESSAGE(WM_APP, &DerivedRecorder::OnAppDerived)
END_MESSAGE_MAP()

using MessagingTest = PlatformTest;
} // namespace

TEST_F(MessagingTest, PostedMessagesArriveInOrderAndSendsNestImmediately)
{
    std::vector<std::string> log;
    Recorder a, b;
    a.log = b.log = &log;
    a.name = "a";
    b.name = "b";
    a.forwardTo = &b;
    ASSERT_TRUE(a.Create(nullptr, L"a", WS_VISIBLE, CRect(0, 0, 10, 10), nullptr, 1));
    ASSERT_TRUE(b.Create(nullptr, L"b", WS_VISIBLE, CRect(0, 0, 10, 10), nullptr, 2));

    a.PostMessage(WM_APP, 1);
    b.PostMessage(WM_APP, 5);
    EXPECT_TRUE(log.empty()) << "posting never dispatches";
    EXPECT_EQ(3u, Sys().RunUntilIdle());
    // a's handler sends to b at once and posts to itself behind b's pending message.
    EXPECT_EQ((std::vector<std::string>{"a:app1", "b:app2", "b:app5", "a:app3"}), log);
    EXPECT_EQ(40, a.SendMessage(WM_APP, 4));
    EXPECT_EQ(0, a.SendMessage(WM_APP + 1)) << "unhandled messages fall to the default";
}

TEST_F(MessagingTest, MessagesToDestroyedWindowsAreDropped)
{
    std::vector<std::string> log;
    auto* a = new Recorder;
    a->log = &log;
    a->name = "a";
    a->Create(nullptr, L"", 0, CRect(), nullptr, 1);
    const HWND stale = a->m_hWnd;
    a->PostMessage(WM_APP, 9);
    a->DestroyWindow();
    delete a;
    EXPECT_EQ(0u, Sys().RunUntilIdle());
    EXPECT_EQ(nullptr, CWnd::FromHandle(stale));
    EXPECT_FALSE(::PostMessage(stale, WM_APP, 0, 0));
    EXPECT_EQ((std::vector<std::string>{"a:destroy"}), log);
}

TEST_F(MessagingTest, MapsChainToTheBaseAndMatchNotifyAndCommandRanges)
{
    std::vector<std::string> log;
    DerivedRecorder w;
    w.log = &log;
    w.name = "w";
    w.Create(nullptr, L"", 0, CRect(), nullptr, 1);

    EXPECT_EQ(-1, w.SendMessage(WM_APP, 1)) << "the derived entry wins";
    EXPECT_EQ(7, w.SendMessage(g_registeredPing)) << "inherited registered entry";

    NMHDR hdr{nullptr, 100, NM_CLICK};
    EXPECT_EQ(42, w.SendMessage(WM_NOTIFY, 100, reinterpret_cast<LPARAM>(&hdr)));
    hdr.idFrom = 101;
    EXPECT_EQ(0, w.SendMessage(WM_NOTIFY, 101, reinterpret_cast<LPARAM>(&hdr)));
    hdr.idFrom = 100;
    hdr.code = NM_DBLCLK;
    EXPECT_EQ(0, w.SendMessage(WM_NOTIFY, 100, reinterpret_cast<LPARAM>(&hdr)));

    for (WORD id : {199, 200, 205, 210, 211})
        w.SendMessage(WM_COMMAND, MAKEWPARAM(id, BN_CLICKED));
    w.SendMessage(WM_COMMAND, MAKEWPARAM(205, 1)); // another notification code
    EXPECT_EQ((std::vector<std::string>{"w:derived1", "w:ping", "w:notify100", "w:range200", "w:range205",
                                        "w:range210"}),
              log);
}

TEST_F(MessagingTest, RegisteredNumbersAreSharedByTextAndDistinctPerText)
{
    const UINT ping = RegisterWindowMessage(L"Test_Ping");
    EXPECT_EQ(g_registeredPing, ping);
    EXPECT_EQ(ping, RegisterWindowMessage("Test_Ping"));
    EXPECT_GE(ping, 0xC000u);
    const UINT other = RegisterWindowMessage(L"Test_Other");
    EXPECT_NE(ping, other);
    Sys().Reset();
    EXPECT_EQ(ping, RegisterWindowMessage(L"Test_Ping")) << "numbers survive a reset";
    EXPECT_EQ(0u, RegisterWindowMessage(L""));
}
