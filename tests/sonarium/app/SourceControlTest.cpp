// Work units show the status git gives their files: modified, added or unversioned, nothing for a
// committed unchanged file or a project outside any repository; the rows follow a new reading.

#include "sonarium/app/session/AppSession.h"
#include "sonarium/app/session/TreeText.h"
#include "sonarium/core/host/ProjectBuilder.h"
#include "sonarium/core/model/ProjectEdit.h"
#include "sonarium/core/storage/ProjectStorage.h"

#include <git2.h>
#include <gtest/gtest.h>

#include <fstream>
#include <unistd.h>

namespace
{
namespace fs = std::filesystem;

// A repository whose first commit holds everything in its folder.
void Commit(const fs::path& folder)
{
    git_libgit2_init();
    git_repository* repository = nullptr;
    ASSERT_EQ(git_repository_init(&repository, folder.c_str(), 0), 0);
    git_index* index = nullptr;
    ASSERT_EQ(git_repository_index(&index, repository), 0);
    ASSERT_EQ(git_index_add_all(index, nullptr, 0, nullptr, nullptr), 0);
    ASSERT_EQ(git_index_write(index), 0);
    git_oid tree, commit;
    ASSERT_EQ(git_index_write_tree(&tree, index), 0);
    git_tree* written = nullptr;
    git_tree_lookup(&written, repository, &tree);
    git_signature* author = nullptr;
    git_signature_now(&author, "Sound Designer", "designer@example.com");
    ASSERT_EQ(git_commit_create_v(&commit, repository, "HEAD", author, author, nullptr, "First", written, 0), 0);
    git_signature_free(author);
    git_tree_free(written);
    git_index_free(index);
    git_repository_free(repository);
    git_libgit2_shutdown();
}

// Stages one file of the repository at folder, as "git add" does.
void Stage(const fs::path& folder, const std::string& relative)
{
    git_libgit2_init();
    git_repository* repository = nullptr;
    ASSERT_EQ(git_repository_open(&repository, folder.c_str()), 0);
    git_index* index = nullptr;
    git_repository_index(&index, repository);
    ASSERT_EQ(git_index_add_bypath(index, relative.c_str()), 0);
    git_index_write(index);
    git_index_free(index);
    git_repository_free(repository);
    git_libgit2_shutdown();
}

void Append(const fs::path& file, const char* text)
{
    std::ofstream(file, std::ios::app) << text;
}

class SourceControl : public testing::Test
{
protected:
    void SetUp() override
    {
        fs::remove_all(m_dir);
        auto project = sn::ProjectBuilder::Build(
            L"Game",
            L"AudioObjects\n  Props : WorkUnit\n    Door : SoundSFX\n  Ambience : WorkUnit\n    Rain : SoundSFX\n"
            L"  Weapons : WorkUnit\n",
            nullptr);
        sn::StorageProblems problems;
        ASSERT_TRUE(sn::SaveProjectAs(*project, m_dir / "repo" / "Game", problems));
    }
    void TearDown() override
    {
        m_session.CloseAllPanes();
        fs::remove_all(m_dir);
    }

    void Open()
    {
        std::vector<std::wstring> messages;
        ASSERT_TRUE(m_session.OpenProject(m_dir / "repo" / "Game", messages));
        if (m_session.Panes().empty())
            m_session.OpenPane({L"Audio", {OrbObjectCategories::AudioObjects}}, CRect(0, 0, 300, 400));
    }

    std::vector<std::wstring> Tree() { return sn::TreeLines(m_session.Panes().front().view->GetTreeCtrl()); }

    fs::path Units() const { return m_dir / "repo" / "Game" / "AudioObjects"; }

    fs::path m_dir = fs::temp_directory_path() / ("sonarium-git-" + std::to_string(getpid()));
    sn::AppSession m_session{sn::HostOptions{m_dir / "preferences.json"}};
};
} // namespace

TEST_F(SourceControl, RowsShowTheStatusOfTheirFilesAndFollowANewReading)
{
    Open();
    EXPECT_FALSE(m_session.GetHost().SourceControl().HasRepository());
    const std::vector<std::wstring> plain{L"- Audio Objects", L"  + Props", L"  + Ambience", L"    Weapons"};
    EXPECT_EQ(Tree(), plain) << "no repository, no overlays";

    Commit(m_dir / "repo");
    Open();
    EXPECT_TRUE(m_session.GetHost().SourceControl().HasRepository());
    EXPECT_EQ(Tree(), plain) << "committed and unchanged";

    Append(Units() / "Props.swu", " ");
    Open();
    EXPECT_EQ(Tree(), (std::vector<std::wstring>{L"- Audio Objects", L"  + Props  [modified]", L"  + Ambience",
                                                 L"    Weapons"}));

    // Saving reads the status again: a new unit's file is unversioned until the index holds it.
    ASSERT_TRUE(sn::ProjectEdit::Create(sn::FindByPath(*m_session.GetProject(), L"AudioObjects"),
                                        PMTreeNode::WorkUnit, L"Music"));
    std::vector<std::wstring> messages;
    ASSERT_TRUE(m_session.SaveProject(messages));
    EXPECT_EQ(Tree().back(), L"    Music  [unversioned]");
    Stage(m_dir / "repo", "Game/AudioObjects/Music.swu");
    EXPECT_TRUE(m_session.GetHost().ReadSourceControlStatus());
    m_session.Pump();
    EXPECT_EQ(Tree().back(), L"    Music  [added]") << "the overlays drawn from the old reading were dropped";
}
