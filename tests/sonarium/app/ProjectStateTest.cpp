// What the panes remember is kept per project: two projects opened in turn each find their own
// expanded rows and top row again, and closing a project never overwrites what it kept.

#include "sonarium/app/session/AppSession.h"
#include "sonarium/core/host/ProjectBuilder.h"
#include "sonarium/core/storage/ProjectStorage.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <random>
#include <unistd.h>

namespace
{
namespace fs = std::filesystem;

// Both projects have the same shape and names; only their GUIDs differ.
std::wstring Text()
{
    std::wstring text = L"platform Linux\nAudioObjects\n  Default Work Unit : WorkUnit\n";
    for (wchar_t const* mixer : {L"Alpha", L"Beta", L"Gamma"})
    {
        text += L"    " + std::wstring(mixer) + L" : ActorMixer\n";
        for (int i = 0; i < 25; ++i)
            text += L"      " + std::wstring(mixer) + L"_" + std::to_wstring(i) + L" : SoundSFX\n";
    }
    return text;
}

class ProjectState : public testing::Test
{
protected:
    void SetUp() override
    {
        fs::remove_all(m_dir);
        unsigned long long seed = 1;
        for (wchar_t const* name : {L"First", L"Second"})
        {
            std::mt19937_64 ids(seed++);
            std::wstring error;
            auto project = sn::ProjectBuilder::Build(name, Text(), &error, &ids);
            ASSERT_TRUE(project);
            sn::StorageProblems problems;
            ASSERT_TRUE(sn::SaveProjectAs(*project, m_dir / name, problems));
        }
        Open("First");
        m_session.OpenPane({L"Audio", {OrbObjectCategories::AudioObjects}}, CRect(0, 0, 300, 400));
    }

    void TearDown() override
    {
        m_session.CloseAllPanes();
        fs::remove_all(m_dir);
    }

    void Open(char const* name)
    {
        std::vector<std::wstring> messages;
        ASSERT_TRUE(m_session.OpenProject(m_dir / name, messages));
        ASSERT_TRUE(messages.empty());
    }

    PETreeCtrl& Tree() { return m_session.Panes().front().view->GetTreeCtrl(); }

    // The row of an object of the work unit, which is opened first if need be.
    HTREEITEM Row(std::wstring const& path)
    {
        const std::wstring unit = L"AudioObjects/Default Work Unit";
        sn::Project& project = *m_session.GetProject();
        Tree().Expand(Tree().GetItemWithGUID(sn::FindByPath(project, unit)->Id(), TVI_ROOT), TVE_EXPAND);
        sn::ProjectObject* object = sn::FindByPath(project, unit + L"/" + path);
        return object ? Tree().GetItemWithGUID(object->Id(), TVI_ROOT) : nullptr;
    }

    bool IsExpanded(std::wstring const& path)
    {
        HTREEITEM item = Row(path);
        return item && (Tree().GetItemState(item, TVIS_EXPANDED) & TVIS_EXPANDED);
    }

    std::wstring TopRow() { return Tree().GetItemText(Tree().GetFirstVisibleItem()); }

    fs::path m_dir = fs::temp_directory_path() / ("sonarium-project-state-" + std::to_string(getpid()));
    sn::AppSession m_session{sn::HostOptions{m_dir / "preferences.json"}};
};
} // namespace

TEST_F(ProjectState, EachProjectKeepsItsOwnExpandedRowsAndTopRow)
{
    Tree().Expand(Row(L"Alpha"), TVE_EXPAND);
    Tree().Expand(Row(L"Gamma"), TVE_EXPAND);
    Tree().SelectSetFirstVisible(Row(L"Alpha/Alpha_10"));

    Open("Second");
    EXPECT_FALSE(IsExpanded(L"Alpha")) << "the second project starts as it was never opened";
    Tree().Expand(Row(L"Beta"), TVE_EXPAND);
    Tree().SelectSetFirstVisible(Row(L"Beta/Beta_3"));

    Open("First");
    EXPECT_TRUE(IsExpanded(L"Alpha"));
    EXPECT_FALSE(IsExpanded(L"Beta"));
    EXPECT_TRUE(IsExpanded(L"Gamma"));
    EXPECT_EQ(TopRow(), L"Alpha_10");

    Open("Second");
    EXPECT_FALSE(IsExpanded(L"Alpha"));
    EXPECT_TRUE(IsExpanded(L"Beta"));
    EXPECT_EQ(TopRow(), L"Beta_3");
}

TEST_F(ProjectState, ClosingAProjectKeepsItsStateAndAnEmptyPaneKeepsNothing)
{
    Tree().Expand(Row(L"Beta"), TVE_EXPAND);
    Tree().SelectSetFirstVisible(Row(L"Beta/Beta_2"));

    // The panes stay open, empty, while no project is; the project then opened finds its own state.
    m_session.CloseProject();
    ASSERT_EQ(Tree().GetRowCount(), 0);
    m_session.CloseAllPanes();
    m_session.OpenPane({L"Audio", {OrbObjectCategories::AudioObjects}}, CRect(0, 0, 300, 400));
    Open("First");
    EXPECT_TRUE(IsExpanded(L"Beta"));
    EXPECT_EQ(TopRow(), L"Beta_2");

    // A project is known by the GUID its file keeps, not by its name or its folder.
    m_session.CloseProject();
    fs::rename(m_dir / "First", m_dir / "Moved");
    Open("Moved");
    EXPECT_TRUE(IsExpanded(L"Beta"));
    EXPECT_EQ(TopRow(), L"Beta_2");
}
