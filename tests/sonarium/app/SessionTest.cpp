// The session keeps its panes and their state as projects open and close and panes come and go,
// and its main window answers the host's question about the transport.

#include "SessionFixture.h"

#include "host/HostMessages.h"
#include "sonarium/app/script/ScriptRunner.h"
#include "sonarium/app/session/TreeText.h"

#include <sstream>

namespace
{
using Session = SessionTest;

bool Shows(PETreeCtrl& tree, std::wstring const& line)
{
    const std::vector<std::wstring> lines = sn::TreeLines(tree);
    return std::find(lines.begin(), lines.end(), line) != lines.end();
}
} // namespace

TEST_F(Session, PanesAndTheirStateOutliveClosingAndOpening)
{
    std::wostringstream out;
    sn::ScriptRunner runner(session, out);
    std::wstring error;
    ASSERT_TRUE(runner.RunLine(L"toggle AudioObjects/Characters", error)) << error;
    ASSERT_TRUE(Shows(Tree(), L"  - Characters"));

    // A pane closed as the host closes it, and opened again, shows what it showed.
    session.ClosePane(0);
    ASSERT_EQ(session.Panes().front().name, L"Events");
    session.OpenPane(sn::DefaultPanes().front(), CRect(0, 0, 300, 600));
    EXPECT_TRUE(Shows(Tree(1), L"  - Characters"));

    // Closing the project leaves the panes empty; opening one fills them again, in their order.
    session.CloseProject();
    ASSERT_EQ(session.Panes().size(), 2u);
    EXPECT_EQ(Tree(0).GetRowCount(), 0);
    std::vector<std::wstring> messages;
    ASSERT_TRUE(session.OpenProject(SONARIUM_SAMPLES_DIR "/Demo", messages));
    EXPECT_EQ(session.Panes()[0].name, L"Events");
    EXPECT_EQ(session.Panes()[1].name, L"Audio");
    EXPECT_TRUE(Shows(Tree(1), L"  - Characters"));

    // A project that cannot be opened leaves the open one and its panes as they were.
    EXPECT_FALSE(session.OpenProject(PrivateFile("-missing"), messages));
    EXPECT_FALSE(messages.empty());
    EXPECT_TRUE(Shows(Tree(1), L"  - Characters"));
}

TEST_F(Session, OnlyAVisiblePaneMayDriveTheTransportAndTheFocusedOneIsActive)
{
    auto ask = [this](CWnd& view)
    {
        return session.MainWindow().SendMessage(HostMessages::MayDriveTransport,
                                                reinterpret_cast<WPARAM>(view.GetSafeHwnd()), 0);
    };
    DlgProjectExplorer& audio = *session.Panes()[0].view;
    DlgProjectExplorer& events = *session.Panes()[1].view;
    EXPECT_EQ(ask(audio), 1);
    events.ShowWindow(SW_HIDE);
    EXPECT_EQ(ask(events), 0);
    CWnd stranger;
    stranger.Create(L"Stranger", L"", WS_VISIBLE, CRect(0, 0, 10, 10), nullptr, 0);
    EXPECT_EQ(ask(stranger), 0) << "a window that is no pane of the main window";
    stranger.DestroyWindow();

    EXPECT_EQ(session.ActivePane(), &session.Panes()[0]) << "with the focus nowhere, the first pane";
    events.GetTreeCtrl().SetFocus();
    EXPECT_EQ(session.ActivePane(), &session.Panes()[1]);
}
