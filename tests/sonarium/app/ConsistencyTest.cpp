// The check the reliability tools run after every step: it must see a pane that shows what the
// project no longer holds, a lock or undo group left open, and files that changed on disk.

#include "SessionFixture.h"

#include "host/Utf8.h"
#include "platform/WindowSystem.h"
#include "sonarium/app/script/ScriptRunner.h"
#include "sonarium/app/session/Consistency.h"
#include "sonarium/app/session/FolderSnapshot.h"
#include "sonarium/core/host/ProjectBuilder.h"
#include "sonarium/core/model/CurrentState.h"

#include <fstream>
#include <sstream>

namespace
{
std::wstring Joined(std::vector<std::wstring> const& lines)
{
    std::wstring all;
    for (std::wstring const& line : lines)
        all += line + L"\n";
    return all;
}
} // namespace

class ConsistencyTest : public SessionTest
{
protected:
    sn::ProjectObject* At(std::wstring const& path) { return sn::FindByPath(*session.GetProject(), path); }
    std::vector<std::wstring> Problems(int locks = 0) { return sn::ConsistencyProblems(session, locks); }
};

TEST_F(ConsistencyTest, PanesThatFollowTheProjectAgreeWithItWhateverIsExpanded)
{
    EXPECT_EQ(Problems(), std::vector<std::wstring>{});
    std::wostringstream out;
    sn::ScriptRunner runner(session, out);
    std::wstring error;
    for (wchar_t const* line :
         {L"toggle AudioObjects/Characters", L"toggle AudioObjects/Characters/Player",
          L"host create AudioObjects/Characters/Player Folder New", L"host rename AudioObjects/Characters/Player/New Newer",
          L"host platform Console", L"toggle AudioObjects/World", L"host delete AudioObjects/Characters/Player/Newer",
          L"check"})
        ASSERT_TRUE(runner.RunLine(line, error)) << Utf8::FromWide(error);
}

TEST_F(ConsistencyTest, SeesRowsThatNoLongerMirrorTheProject)
{
    std::wstring error;
    std::wostringstream out;
    sn::ScriptRunner runner(session, out);
    ASSERT_TRUE(runner.RunLine(L"toggle AudioObjects/Characters", error));

    // Changes made behind the views' back, as a host that forgot to notify would.
    sn::ProjectObject* characters = At(L"AudioObjects/Characters");
    ASSERT_TRUE(characters && characters->Children().size() >= 2);
    characters->RawSetName(L"Cast");
    CSmartPtr<sn::ProjectObject> taken = characters->RawRemoveChild(0);
    const std::wstring problems = Joined(Problems());
    EXPECT_NE(problems.find(L"as \"Characters\" where the project names it \"Cast\""), std::wstring::npos)
        << Utf8::FromWide(problems);
    EXPECT_NE(problems.find(L"which does not hold it"), std::wstring::npos) << Utf8::FromWide(problems);
    EXPECT_FALSE(runner.RunLine(L"check", error));
    EXPECT_EQ(error.find(L"the session disagrees with the project: "), 0u);
    EXPECT_NE(problems.find(L"the project's index holds"), std::wstring::npos) << "the child left it untold";

    characters->RawInsertChild(0, taken.Get());
    characters->RawSetName(L"Characters");
    EXPECT_EQ(Problems(), std::vector<std::wstring>{});
}

TEST_F(ConsistencyTest, SeesLocksAndUndoGroupsLeftOpen)
{
    std::wstring error;
    std::wostringstream out;
    sn::ScriptRunner runner(session, out);
    // A raise the script holds is expected; the check then leaves the rows alone.
    ASSERT_TRUE(runner.RunLine(L"host lock", error));
    ASSERT_TRUE(runner.RunLine(L"host create AudioObjects/Characters/Player Folder Held", error));
    EXPECT_TRUE(runner.RunLine(L"check", error)) << Utf8::FromWide(error);
    EXPECT_EQ(Problems(0).front(), L"\"LockUIUpdate\" is 1 where 0 raise(s) are held");

    // Lowered behind the script's back, the views catch up; an undo group left open is seen.
    session.GetHost().Properties().Prop(sn::propLockUIUpdate, 3, 1) = 0;
    session.GetHost().Undo().BeginGroup(false);
    const std::vector<std::wstring> problems = Problems(0);
    session.GetHost().Undo().EndGroup(L"Test", false);
    EXPECT_EQ(problems, std::vector<std::wstring>{L"1 undo group(s) left open"});
}

TEST(FolderSnapshotTest, NamesEveryFileThatChangedAppearedOrWent)
{
    const auto folder = std::filesystem::temp_directory_path() / ("sonarium-snapshot-" + std::to_string(getpid()));
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder / "Units" / ".cache");
    std::ofstream(folder / "Units" / "A.swu") << "one";
    std::ofstream(folder / "Units" / "B.swu") << "two";
    std::ofstream(folder / ".sonarium.lock") << "1";
    const sn::FolderSnapshot before(folder);

    std::ofstream(folder / "Units" / "A.swu") << "One"; // same size, other bytes
    std::filesystem::remove(folder / "Units" / "B.swu");
    std::ofstream(folder / "Units" / "C.swu") << "three";
    std::ofstream(folder / ".sonarium.lock") << "22";      // not the project's content
    std::ofstream(folder / ".cache" / "x.wav") << "cached"; // neither
    EXPECT_EQ(sn::FolderSnapshot(folder).Differences(before),
              (std::vector<std::wstring>{L"changed: Units/A.swu", L"gone: Units/B.swu", L"new: Units/C.swu"}));
    EXPECT_EQ(before.Differences(before), std::vector<std::wstring>{});
    std::filesystem::remove_all(folder);
}
