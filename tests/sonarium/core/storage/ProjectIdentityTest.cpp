// A project is known by the GUID its file keeps: per-project settings follow it through renames
// and moves, and a file from before projects had one is still known by the same GUID each time.

#include "sonarium/core/host/ProjectBuilder.h"
#include "sonarium/core/prefs/PreferencesStore.h"
#include "sonarium/core/storage/FileIO.h"
#include "sonarium/core/storage/ProjectStorage.h"

#include <gtest/gtest.h>

#include <regex>
#include <unistd.h>

namespace
{
namespace fs = std::filesystem;

class ProjectIdentity : public testing::Test
{
protected:
    void SetUp() override { fs::remove_all(m_dir); }
    void TearDown() override { fs::remove_all(m_dir); }

    // Writes a project and returns its GUID.
    GUID Write(const fs::path& folder)
    {
        auto project = sn::ProjectBuilder::Build(L"Game", L"AudioObjects\n  Unit : WorkUnit\n", nullptr);
        sn::StorageProblems problems;
        EXPECT_TRUE(sn::SaveProjectAs(*project, folder, problems));
        return project->GetId();
    }

    GUID IdOf(const fs::path& folder)
    {
        sn::OpenResult opened = sn::OpenProject(folder);
        EXPECT_TRUE(opened.project && opened.problems.empty());
        return opened.project ? opened.project->GetId() : GUID_NULL;
    }

    // The project file without its "id" line, as projects were written before they had one.
    void DropId(const fs::path& folder)
    {
        const fs::path file = folder / "Game.sonproj";
        std::string bytes, error;
        ASSERT_TRUE(sn::FileIO::ReadFile(file, bytes, error));
        bytes = std::regex_replace(bytes, std::regex("\n  \"id\": \"[^\"]*\","), "");
        ASSERT_TRUE(sn::FileIO::WriteAtomically(file, bytes, error));
    }

    fs::path m_dir = fs::temp_directory_path() / ("sonarium-identity-" + std::to_string(getpid()));
};
} // namespace

TEST_F(ProjectIdentity, TheFileKeepsItAndAnOlderFileIsKnownByWhereItIs)
{
    const GUID written = Write(m_dir / "A");
    EXPECT_EQ(IdOf(m_dir / "A"), written);
    fs::rename(m_dir / "A", m_dir / "B");
    EXPECT_EQ(IdOf(m_dir / "B"), written) << "moved, the project stays who it is";

    DropId(m_dir / "B");
    const GUID derived = IdOf(m_dir / "B");
    EXPECT_NE(derived, written);
    EXPECT_EQ(IdOf(m_dir / "B"), derived) << "the same at every opening";
    Write(m_dir / "C");
    DropId(m_dir / "C");
    EXPECT_NE(IdOf(m_dir / "C"), derived) << "two projects named alike are two projects";

    // Saving writes the GUID down, and it stays when the project moves from then on.
    sn::OpenResult opened = sn::OpenProject(m_dir / "B");
    opened.project->SetDirty(true);
    sn::StorageProblems problems;
    ASSERT_TRUE(sn::SaveProject(*opened.project, problems));
    fs::rename(m_dir / "B", m_dir / "D");
    EXPECT_EQ(IdOf(m_dir / "D"), derived);

    // A malformed GUID is named, not replaced.
    std::string bytes, error;
    ASSERT_TRUE(sn::FileIO::ReadFile(m_dir / "D" / "Game.sonproj", bytes, error));
    bytes = std::regex_replace(bytes, std::regex("\"id\": \"\\{[^\"]*\\}\",\n  \"platforms"), "\"id\": \"nope\",\n  \"platforms");
    ASSERT_TRUE(sn::FileIO::WriteAtomically(m_dir / "D" / "Game.sonproj", bytes, error));
    opened = sn::OpenProject(m_dir / "D");
    EXPECT_FALSE(opened.project);
    ASSERT_EQ(opened.problems.size(), 1u);
    EXPECT_EQ(opened.problems[0].reason, "malformed GUID \"nope\" in \"id\"");
}

TEST(ProjectSections, AreThoseOfTheOpenProjectAndDoNotExistWithoutOne)
{
    const fs::path file = fs::temp_directory_path() / ("sonarium-sections-" + std::to_string(getpid()) + ".json");
    {
        sn::PreferencesStore store(file);
        const wchar_t* section = L"ProjectExplorer\\<PROJECT>";
        const GUID top{1, 2, 3, {4}};
        store.SetGUIDValue(section, L"FirstVisible_3_0", top);
        GUID read = top;
        store.GetGUIDValue(read, section, L"FirstVisible_3_0", GUID_NULL);
        EXPECT_EQ(read, GUID_NULL) << "nothing is kept while no project is open";

        store.SetProjectKey(L"{A}");
        store.SetGUIDValue(section, L"FirstVisible_3_0", top);
        store.SetStringValue(section, L"Name", L"first");
        store.SetProjectKey(L"{B}");
        wchar_t const* text = nullptr;
        EXPECT_FALSE(store.GetStringValue(section, L"Name", &text)) << "another project's section";
        store.SetStringValue(section, L"Name", L"second");
        store.SetProjectKey(L"{A}");
        ASSERT_TRUE(store.GetStringValue(section, L"Name", &text));
        EXPECT_STREQ(text, L"first");
        store.GetGUIDValue(read, L"ProjectExplorer\\{A}", L"FirstVisible_3_0", GUID_NULL);
        EXPECT_EQ(read, top) << "stored under the project's key";
        EXPECT_EQ(store.GetIntValue(L"Other", L"Key", 7), 7);
    }
    fs::remove(file);
}
