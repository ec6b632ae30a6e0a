// Which pane the user works in: only the one that last had the focus drives the transport, the
// focus moving into a pane brings the host's panels and its toolbar to its selection, and a new
// project starts with empty panels.

#include "SessionFixture.h"

#include "host/ButtonWithTooltip.h"
#include "host/HostMessages.h"
#include "platform/WindowSystem.h"
#include "sonarium/app/script/ScriptRunner.h"
#include "sonarium/app/session/TreePoints.h"
#include "sonarium/core/host/ProjectBuilder.h"

#include <algorithm>
#include <sstream>

namespace
{
class FocusAndPanels : public SessionTest
{
protected:
    bool Run(std::wstring const& line)
    {
        std::wstring error;
        const bool ran = runner.RunLine(line, error);
        EXPECT_TRUE(ran) << error;
        return ran;
    }

    // A click into a pane, wherever the focus was: what the desktop window does.
    void ClickIn(size_t pane, std::wstring const& path)
    {
        PETreeCtrl& tree = Tree(pane);
        HTREEITEM item = tree.GetItemWithGUID(sn::FindByPath(*session.GetProject(), path)->Id(), TVI_ROOT);
        ASSERT_NE(item, nullptr) << path;
        tree.Click(sn::LabelPoint(tree, item), 0);
        session.Pump();
    }

    size_t Lines(std::wstring const& text)
    {
        auto const& lines = session.Recorder().Lines();
        return static_cast<size_t>(std::count(lines.begin(), lines.end(), text));
    }

    LRESULT MayDrive(DlgProjectExplorer& view)
    {
        return session.MainWindow().SendMessage(HostMessages::MayDriveTransport,
                                                reinterpret_cast<WPARAM>(view.GetSafeHwnd()), 0);
    }

    size_t EnabledButtons(DlgProjectExplorer& view)
    {
        ObjectToolbar* toolbar = nullptr;
        for (CWnd* child : view.GetChildren())
            if (auto* found = dynamic_cast<ObjectToolbar*>(child))
                toolbar = found;
        EXPECT_NE(toolbar, nullptr);
        size_t enabled = 0;
        for (CButtonWithTooltip* button : toolbar ? toolbar->Buttons() : std::vector<CButtonWithTooltip*>{})
            enabled += button->IsWindowEnabled() ? 1 : 0;
        return enabled;
    }

    std::wostringstream out;
    sn::ScriptRunner runner{session, out};
};
} // namespace

TEST_F(FocusAndPanels, OnlyThePaneLastFocusedDrivesTheTransport)
{
    // Two panes start with nothing selected: the transport hears it once, not once per pane.
    EXPECT_EQ(Lines(L"transport: disabled"), 1u);
    DlgProjectExplorer& audio = *session.Panes()[0].view;
    DlgProjectExplorer& events = *session.Panes()[1].view;
    EXPECT_EQ(MayDrive(audio), 1);
    EXPECT_EQ(MayDrive(events), 0);

    Run(L"use Events");
    Run(L"click Events/Player_Events");
    EXPECT_EQ(MayDrive(audio), 0);
    EXPECT_EQ(MayDrive(events), 1);
    EXPECT_EQ(session.Recorder().TransportObject(), L"Events/Player_Events");
    // The focus going nowhere leaves the transport with the pane that had it last.
    WindowSystem::Get().SetFocus(nullptr);
    EXPECT_EQ(MayDrive(events), 1);
    EXPECT_EQ(session.ActivePane(), &session.Panes()[1]);

    // Its pane closed, the transport goes to the first pane left.
    session.ClosePane(1);
    EXPECT_EQ(MayDrive(*session.Panes()[0].view), 1);
}

TEST_F(FocusAndPanels, FocusMovingIntoAPaneBringsPanelsAndToolbarToItsSelection)
{
    // The first selection of a view is never inspected, so Audio's toolbar has not followed it.
    ClickIn(0, L"AudioObjects/World");
    DlgProjectExplorer& audio = *session.Panes()[0].view;
    EXPECT_EQ(EnabledButtons(audio), 0u);
    ClickIn(1, L"Events/Player_Events");
    ASSERT_EQ(session.Recorder().TransportObject(), L"Events/Player_Events");
    session.Recorder().Clear();

    // Back in Audio, where World is still the selection: no selection change, yet everything
    // shows World, once each.
    ClickIn(0, L"AudioObjects/World");
    EXPECT_EQ(session.Recorder().Lines(), (std::vector<std::wstring>{L"event viewer: AudioObjects/World",
                                                                     L"transport: AudioObjects/World",
                                                                     L"inspector: AudioObjects/World"}));
    EXPECT_GT(EnabledButtons(audio), 0u);
    ASSERT_EQ(session.Inspector().Objects().size(), 1u);
    EXPECT_EQ(session.Inspector().Objects().front()->GetName(), L"World");

    // A click that changes the selection as it moves the focus inspects once, not twice.
    ClickIn(1, L"Events/Player_Events");
    ClickIn(0, L"AudioObjects/Characters");
    EXPECT_EQ(Lines(L"inspector: AudioObjects/Characters"), 1u);

    // A renamed object shows its new name; a new project starts with empty panels.
    Run(L"host rename AudioObjects/Characters Cast");
    EXPECT_EQ(session.Recorder().TransportObject(), L"AudioObjects/Cast");
    ASSERT_EQ(session.Recorder().EventViewer().size(), 1u);
    EXPECT_EQ(session.Recorder().EventViewer().front().path, L"AudioObjects/Cast");
    session.CloseProject();
    EXPECT_TRUE(session.Recorder().EventViewer().empty());
    EXPECT_TRUE(session.Recorder().TransportObject().empty());
    EXPECT_TRUE(session.Inspector().Objects().empty());
}

TEST_F(FocusAndPanels, OpeningReportsWorkUnitsReadAndACancelKeepsTheOpenProject)
{
    std::vector<std::pair<size_t, size_t>> reports;
    std::vector<std::wstring> messages;
    ASSERT_TRUE(session.OpenProject(SONARIUM_SAMPLES_DIR "/Demo", messages,
                                    [&](size_t read, size_t total)
                                    {
                                        reports.emplace_back(read, total);
                                        return true;
                                    }));
    ASSERT_GE(reports.size(), 2u);
    const size_t total = reports.front().second;
    size_t loaded = 0;
    for (sn::WorkUnitObject* unit : session.GetProject()->FileWorkUnits())
        loaded += unit->IsLoaded() ? 1 : 0;
    EXPECT_EQ(total, loaded) << "every work unit read, none of those kept unloaded";
    for (size_t i = 0; i < reports.size(); ++i)
        EXPECT_EQ(reports[i], std::make_pair(i, total));

    sn::Project* open = session.GetProject();
    EXPECT_FALSE(session.OpenProject(SONARIUM_SAMPLES_DIR "/Demo", messages,
                                     [](size_t read, size_t) { return read < 2; }));
    EXPECT_EQ(session.GetProject(), open);
    EXPECT_EQ(session.Panes().size(), 2u);
    EXPECT_GT(Tree().GetRowCount(), 0);
}
