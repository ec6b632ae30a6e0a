// A save of a large generated project killed (SIGKILL) at random moments: whatever moment it
// stopped at, the next open finds every file either as it was before the save or as the save
// meant to write it, never torn, and the project opens. SONARIUM_KILLED_SAVES sets the number of
// kills (10 by default; the README's reliability section runs 100).

#include "DiskFixture.h"
#include "KilledChild.h"

#include "sonarium/core/host/ProjectGenerator.h"
#include "sonarium/core/model/ProjectEdit.h"
#include "sonarium/core/storage/ProjectStorage.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <random>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
namespace fs = std::filesystem;
using namespace sn;

using Contents = std::map<std::string, std::string>; // relative path -> bytes

Contents ContentsOf(const fs::path& folder)
{
    Contents contents;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder))
        if (entry.is_regular_file() && entry.path().filename() != ProjectLock::kFileName)
            contents[fs::relative(entry.path(), folder).string()] = disk::Slurp(entry.path());
    return contents;
}

void CopyFolder(const fs::path& from, const fs::path& to)
{
    fs::copy(from, to, fs::copy_options::recursive | fs::copy_options::overwrite_existing);
}

// Changes every work unit (its first object's name), renames one unit so that its file moves, and
// deletes another: a save then writes, moves and removes files.
void EditEverywhere(Project& project)
{
    std::vector<WorkUnitObject*> units = project.FileWorkUnits();
    for (WorkUnitObject* unit : units)
        if (!unit->Children().empty())
        {
            ProjectObject* first = unit->Children().front().Get();
            ProjectEdit::Rename(first, first->GetName() + L"_Saved");
        }
    ASSERT_GE(units.size(), 4u);
    ASSERT_TRUE(ProjectEdit::Rename(units[1], units[1]->GetName() + L"_Moved"));
    ASSERT_TRUE(ProjectEdit::Delete(units[3]));
}

// Opens, edits and saves the project in a child process; kills it after `delay` unless negative.
// Returns how long the save ran.
std::chrono::microseconds SaveInChild(const fs::path& folder, long delayMicroseconds)
{
    std::unique_ptr<Project> project;
    const child::KilledRun run = child::RunKilledAfter(
        [&]
        {
            project = OpenProject(folder).project;
            if (!project)
                ::_exit(2);
            EditEverywhere(*project);
        },
        [&]
        {
            StorageProblems problems;
            return SaveProject(*project, problems);
        },
        delayMicroseconds);
    if (delayMicroseconds < 0)
    {
        EXPECT_TRUE(run.ranWhole) << "the whole save failed";
    }
    return run.duration;
}

bool IsLeftover(const std::string& path)
{
    // A temporary file of a write that never finished: the next save removes it.
    const std::string name = fs::path(path).filename().string();
    return name.size() > 4 && name[0] == '.' && name.compare(name.size() - 4, 4, ".tmp") == 0;
}
} // namespace

TEST(KilledSave, EveryFileIsOldOrNewAfterAKillAtAnyMoment)
{
    disk::TempFolder original;
    {
        auto project = GenerateProject(20000, 11);
        StorageProblems problems;
        ASSERT_TRUE(SaveProjectAs(*project, original.Path(), problems));
    }
    const Contents before = ContentsOf(original.Path());

    disk::TempFolder whole;
    CopyFolder(original.Path(), whole.Path());
    const auto duration = SaveInChild(whole.Path(), -1);
    const Contents after = ContentsOf(whole.Path());
    ASSERT_NE(before, after);

    const char* runsText = std::getenv("SONARIUM_KILLED_SAVES");
    const int runs = runsText ? std::max(1, std::atoi(runsText)) : 10;
    std::mt19937_64 random(std::random_device{}());
    for (int run = 0; run < runs; ++run)
    {
        disk::TempFolder folder;
        CopyFolder(original.Path(), folder.Path());
        // Up to a little past the whole save's length, so that some runs end whole.
        const long delay = std::uniform_int_distribution<long>(0, duration.count() * 11 / 10)(random);
        SaveInChild(folder.Path(), delay);
        const std::string when = "killed " + std::to_string(delay) + " us into a save of " +
                                 std::to_string(duration.count()) + " us: ";

        OpenResult opened = OpenProject(folder.Path());
        ASSERT_TRUE(opened.project) << when << "the project does not open";
        for (const StorageProblem& problem : opened.problems)
            EXPECT_EQ(problem.reason.find("line "), std::string::npos) << when << problem.path << ": " << problem.reason;

        const Contents now = ContentsOf(folder.Path());
        for (const auto& [path, bytes] : now)
        {
            if (IsLeftover(path))
                continue;
            const auto old = before.find(path);
            const auto new_ = after.find(path);
            const bool isOld = old != before.end() && old->second == bytes;
            const bool isNew = new_ != after.end() && new_->second == bytes;
            EXPECT_TRUE(isOld || isNew) << when << path << " is neither as before the save nor as after it";
        }
        // A file both states hold is there.
        for (const auto& [path, bytes] : before)
            if (after.count(path))
            {
                EXPECT_TRUE(now.count(path)) << when << path << " is gone";
            }
        if (testing::Test::HasFailure())
            break;
    }
}
