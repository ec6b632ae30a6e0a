// A pane's search field: the rows its list shows, what it does when the project changes under
// it or goes away, and the script lines that cannot be done.

#include "SessionFixture.h"

#include "sonarium/app/script/ScriptRunner.h"
#include "sonarium/app/session/PaneFind.h"
#include "sonarium/app/session/TreeText.h"
#include "sonarium/core/host/ProjectBuilder.h"
#include "sonarium/core/model/ProjectEdit.h"

#include <sstream>

namespace
{
class PaneFindTest : public SessionTest
{
protected:
    sn::PaneFind Find(size_t pane = 0)
    {
        sn::Pane& p = session.Panes()[pane];
        return sn::PaneFind(session, p.view, p.categories);
    }
};

TEST_F(PaneFindTest, RowsShowTheMatchedPartsAndTheParentsAndFollowTheProject)
{
    sn::PaneFind find = Find();
    find.SetText(L"GRAVEL_02");
    ASSERT_EQ(find.Count(), 1u);
    const sn::PaneFind::Row row = find.RowAt(0);
    EXPECT_EQ(row.name, L"Footstep_Gravel_02");
    EXPECT_EQ(row.parents, L"Audio Objects/Characters/Player/Player/Footsteps/Footsteps_Gravel");
    EXPECT_EQ(row.marks, (std::vector<std::pair<size_t, size_t>>{{9, 18}}));
    EXPECT_EQ(find.RowAt(1).object, nullptr);

    // Renamed elsewhere: the field's results follow without typing again.
    ASSERT_TRUE(sn::ProjectEdit::Rename(row.object, L"Footstep_Pebbles"));
    EXPECT_EQ(find.Count(), 0u);
    find.SetText(L"pebbles");
    EXPECT_EQ(find.Count(), 1u);

    // Another pane's categories: events and banks only.
    sn::PaneFind events = Find(1);
    events.SetText(L"footstep");
    ASSERT_EQ(events.Count(), 1u);
    EXPECT_EQ(sn::PathOf(*events.ObjectAt(0)), L"Events/Player_Events/Movement/Play_Footsteps");

    // The project closes: nothing is found, nothing dangles.
    session.CloseProject();
    EXPECT_EQ(find.Count(), 0u);
    EXPECT_FALSE(find.Reveal({0}));
}

TEST_F(PaneFindTest, RevealingSeveralSelectsThemAllAndFocusesTheTree)
{
    sn::PaneFind find = Find();
    find.SetText(L"footstep_wood");
    ASSERT_EQ(find.Count(), 2u);
    ASSERT_TRUE(find.Reveal({0, 1}));
    session.Pump();
    const std::vector<std::wstring> selected = sn::SelectionLines(Tree());
    ASSERT_EQ(selected.size(), 2u);
    for (const wchar_t* name : {L"Footsteps_Wood/Footstep_Wood_01", L"Footsteps_Wood/Footstep_Wood_02"})
        EXPECT_TRUE(std::any_of(selected.begin(), selected.end(),
                                [&](const std::wstring& line) { return line.ends_with(name); }))
            << "selected: " << std::string(name, name + std::wcslen(name));
    EXPECT_EQ(CWnd::GetFocus(), &Tree());
}

TEST_F(PaneFindTest, BadFindLinesSayWhatWasWrong)
{
    std::wostringstream out;
    sn::ScriptRunner runner(session, out);
    const std::pair<const wchar_t*, const wchar_t*> bad[] = {
        {L"find", L"usage: find TEXT [PANE]"},
        {L"find snow Nowhere", L"no pane named \"Nowhere\""},
        {L"reveal-found 1", L"there is no result 1: the search found 0"},
        {L"reveal-found 0", L"not a result number: \"0\" (1 for the first, or all)"},
        {L"reveal-found first", L"not a result number: \"first\" (1 for the first, or all)"},
        {L"reveal-found all", L"the search found nothing to reveal"},
        {L"print found Audio more", L"unexpected word \"more\""},
    };
    for (auto [line, expected] : bad)
    {
        std::wstring error;
        EXPECT_FALSE(runner.RunLine(line, error)) << line;
        EXPECT_EQ(error.substr(0, std::wcslen(expected)), expected) << line;
    }
}
} // namespace
