// A work unit whose file failed to load is not one the user unloaded: its row says so with its own
// icon and text, the inspector names the file and what is wrong, and its file is never written over.

#include "host/ObjectIcons.h"
#include "sonarium/app/script/ScriptRunner.h"
#include "sonarium/app/session/AppSession.h"
#include "sonarium/app/session/TreeText.h"
#include "sonarium/core/host/ProjectBuilder.h"
#include "sonarium/core/model/ProjectEdit.h"
#include "sonarium/core/storage/FileIO.h"
#include "sonarium/core/storage/ProjectStorage.h"
#include "sonarium/core/storage/WorkUnitFile.h"

#include <algorithm>
#include <gtest/gtest.h>

#include <sstream>
#include <unistd.h>

namespace
{
namespace fs = std::filesystem;

class UnreadableUnit : public testing::Test
{
protected:
    void SetUp() override
    {
        fs::remove_all(m_dir);
        auto project = sn::ProjectBuilder::Build(
            L"Game", L"AudioObjects\n  Props : WorkUnit\n    Door : SoundSFX\n  Ambience : WorkUnit\n"
                     L"    Rain : SoundSFX\n  Weapons : WorkUnit\n    Rifle : SoundSFX\n",
            nullptr);
        sn::StorageProblems problems;
        ASSERT_TRUE(sn::SaveProjectAs(*project, m_dir / "Game", problems));
        auto* weapons = dynamic_cast<sn::WorkUnitObject*>(sn::FindByPath(*project, L"AudioObjects/Weapons"));
        ASSERT_TRUE(sn::UnloadWorkUnit(*project, weapons));
        ASSERT_TRUE(sn::SaveProject(*project, problems));
        std::string error;
        ASSERT_TRUE(sn::FileIO::WriteAtomically(Ambience(), m_broken, error));
    }
    void TearDown() override
    {
        m_session.CloseAllPanes();
        fs::remove_all(m_dir);
    }

    fs::path Ambience() const { return m_dir / "Game" / "AudioObjects" / "Ambience.swu"; }

    sn::WorkUnitObject* Unit(const wchar_t* path)
    {
        return dynamic_cast<sn::WorkUnitObject*>(sn::FindByPath(*m_session.GetProject(), path));
    }

    const std::string m_broken = "{\n  \"format\": \"sonarium-workunit\",\n  oops\n}\n";
    fs::path m_dir = fs::temp_directory_path() / ("sonarium-unreadable-" + std::to_string(getpid()));
    sn::AppSession m_session{sn::HostOptions{m_dir / "preferences.json"}};
};
} // namespace

TEST_F(UnreadableUnit, IsShownAndReportedApartFromAnUnloadedOneAndNeverWrittenOver)
{
    std::vector<std::wstring> messages;
    ASSERT_TRUE(m_session.OpenProject(m_dir / "Game", messages));
    ASSERT_EQ(messages.size(), 1u) << "only the unreadable unit is reported";
    m_session.OpenPane({L"Audio", {OrbObjectCategories::AudioObjects}}, CRect(0, 0, 300, 400));
    PETreeCtrl& tree = m_session.Panes().front().view->GetTreeCtrl();
    EXPECT_EQ(sn::TreeLines(tree), (std::vector<std::wstring>{L"- Audio Objects", L"  + Props",
                                                              L"    Ambience (unreadable)",
                                                              L"    Weapons (unloaded)"}));
    auto iconOf = [&](const wchar_t* path)
    { return tree.GetItemImage(tree.GetItemWithGUID(Unit(path)->Id(), TVI_ROOT)); };
    EXPECT_EQ(iconOf(L"AudioObjects/Ambience"), ObjectIcons::IconType_WorkUnitUnreadable);
    EXPECT_EQ(iconOf(L"AudioObjects/Weapons"), ObjectIcons::IconType_WorkUnit);

    const sn::WorkUnitFile broken = sn::DescribeWorkUnitFile(*Unit(L"AudioObjects/Ambience"));
    EXPECT_EQ(broken.state, sn::WorkUnitFile::Unreadable);
    EXPECT_EQ(broken.path, Ambience());
    EXPECT_EQ(broken.problem.rfind("line 3, column 3: syntax error", 0), 0u) << broken.problem;
    EXPECT_EQ(sn::DescribeWorkUnitFile(*Unit(L"AudioObjects/Weapons")).state, sn::WorkUnitFile::Unloaded);
    EXPECT_EQ(sn::DescribeWorkUnitFile(*Unit(L"AudioObjects/Props")).state, sn::WorkUnitFile::Loaded);

    // The inspector names the file, from the project's folder, and what is wrong with it.
    std::wostringstream out;
    sn::ScriptRunner runner(m_session, out);
    std::wstring error;
    ASSERT_TRUE(runner.RunLine(L"double-click AudioObjects/Ambience", error)) << error;
    const std::vector<std::wstring> rows = m_session.Inspector().Lines();
    EXPECT_NE(std::find(rows.begin(), rows.end(), L"File: AudioObjects/Ambience.swu"), rows.end());
    EXPECT_NE(std::find(rows.begin(), rows.end(), L"State: unreadable"), rows.end());
    EXPECT_TRUE(std::any_of(rows.begin(), rows.end(), [](std::wstring const& row)
                            { return row.rfind(L"Problem: line 3, column 3: ", 0) == 0; }));

    // Saving the project, even under a new name for the unit's folder, leaves the file as it was.
    ASSERT_TRUE(sn::ProjectEdit::Create(Unit(L"AudioObjects/Props"), PMTreeNode::SoundSFX, L"Window"));
    ASSERT_TRUE(sn::ProjectEdit::Rename(Unit(L"AudioObjects/Ambience"), L"Weather"));
    ASSERT_TRUE(m_session.SaveProject(messages));
    std::string bytes, readError;
    ASSERT_TRUE(sn::FileIO::ReadFile(m_dir / "Game" / "AudioObjects" / "Weather.swu", bytes, readError));
    EXPECT_EQ(bytes, m_broken);
}
