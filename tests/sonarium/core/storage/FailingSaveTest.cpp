// Saves that fail underneath: a disk that fills up (a real write refused by the system, with the
// file size limit of a child process) and a folder the user may not write to. The save says which
// file and why, every change stays in memory and unsaved, no file on disk is ever torn or left
// half-made, and once the cause is gone the next save writes everything.

#include "ChildRun.h"
#include "DiskFixture.h"
#include "StorageText.h"

#include "host/Utf8.h"
#include "sonarium/core/host/ProjectBuilder.h"
#include "sonarium/core/model/ProjectEdit.h"
#include "sonarium/core/storage/ProjectStorage.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace
{
namespace fs = std::filesystem;
using namespace sn;

// The units Edit changes; renaming a unit changes the project file, which carries its file along.
const wchar_t* const kEditedUnits[] = {L"Busses/Mixing", L"Events/Player_Events",
                                       L"AudioObjects/World/Cutscenes"};

// Changes in a small unit and a large one, and a third unit renamed (a new file, and a new
// project file naming it).
void Edit(Project& project)
{
    ProjectEdit::Rename(FindByPath(project, L"Busses/Mixing/Main_Bus"), L"Master_Bus");
    ProjectEdit::Rename(FindByPath(project, L"Events/Player_Events/Movement/Play_Footsteps"), L"Play_Steps");
    ProjectEdit::Rename(FindByPath(project, L"AudioObjects/World/Cinematics"), L"Cutscenes");
}

bool IsDirty(Project& project, const wchar_t* unit)
{
    auto* object = dynamic_cast<WorkUnitObject*>(FindByPath(project, unit));
    return object && object->IsDirty();
}

// The project on disk holds every edit.
void ExpectSaved(const fs::path& folder, child::Findings& found)
{
    OpenResult reopened = OpenProject(folder);
    found.Check(reopened.project && reopened.problems.empty(),
                "reopens cleanly: " + Problems(reopened.problems));
    if (!reopened.project)
        return;
    for (const wchar_t* path : {L"Busses/Mixing/Master_Bus", L"Events/Player_Events/Movement/Play_Steps",
                                L"AudioObjects/World/Cutscenes"})
        found.Check(FindByPath(*reopened.project, path), "saved: " + Utf8::FromWide(path));
}

// Each file a failed save left is the one there before or the one the next good save wrote.
void ExpectOldOrNew(const disk::Checksums& before, const disk::Checksums& afterFailure,
                    const disk::Checksums& saved, child::Findings& found)
{
    for (const auto& [path, sum] : afterFailure)
    {
        const bool old = before.count(path) && before.at(path) == sum;
        const bool now = saved.count(path) && saved.at(path) == sum;
        found.Check(old || now, "torn or left behind: " + path);
    }
}
} // namespace

TEST(FailingSave, AFullDiskNamesTheFileKeepsTheChangesAndLeavesEveryFileWhole)
{
    // All writes refused, then only those of the larger files: each time, what is on disk is the
    // old file or the new one, and the units not written stay unsaved.
    for (const rlim_t limit : {rlim_t(16), rlim_t(4000)})
    {
        SCOPED_TRACE("file size limit " + std::to_string(limit));
        disk::SampleCopy sample;
        const disk::Checksums before = disk::ChecksumsOf(sample.Path());
        EXPECT_EQ(
            child::Run(
                [&](child::Findings& found)
                {
                    OpenResult opened = OpenProject(sample.Path());
                    Project& project = *opened.project;
                    Edit(project);
                    std::vector<std::wstring> edited;
                    for (const wchar_t* unit : kEditedUnits)
                        if (IsDirty(project, unit))
                            edited.push_back(unit);
                    found.Equal(edited.size(), size_t(2), "units with unsaved changes");
                    child::LimitFileSize(limit);
                    StorageProblems problems;
                    found.Check(!SaveProject(project, problems), "the save reports failure");
                    found.Equal(problems.size(), size_t(1), "one problem: " + Problems(problems));
                    if (!problems.empty())
                    {
                        found.Equal(problems[0].reason, std::string("cannot write: File too large"),
                                    "the reason");
                        found.Check(
                            problems[0].path.parent_path().string().starts_with(sample.Path().string()) &&
                                problems[0].path.extension() == ".swu",
                            "names a unit's file: " + problems[0].path.string());
                    }
                    found.Check(project.IsDirty(), "the project stays unsaved");
                    found.Check(IsDirty(project, L"Events/Player_Events"), "the largest unit stays unsaved");
                    std::vector<std::wstring> clean;
                    for (const std::wstring& unit : edited)
                        if (!IsDirty(project, unit.c_str()))
                            clean.push_back(unit);
                    const disk::Checksums afterFailure = disk::ChecksumsOf(sample.Path());
                    if (limit == 16)
                    {
                        found.Equal(disk::Changes(before, afterFailure), std::string(), "nothing written");
                        found.Equal(clean.size(), size_t(0), "units marked saved");
                    }
                    else
                        found.Equal(clean, std::vector<std::wstring>{L"Busses/Mixing"}, "the unit that fit");
                    OpenResult meanwhile = OpenProject(sample.Path());
                    found.Check(meanwhile.project && meanwhile.problems.empty(),
                                "the project on disk opens whole: " + Problems(meanwhile.problems));

                    child::LiftFileSizeLimit();
                    problems.clear();
                    found.Check(SaveProject(project, problems),
                                "the second save succeeds: " + Problems(problems));
                    for (const std::wstring& unit : edited)
                        found.Check(!IsDirty(project, unit.c_str()), "saved: " + Utf8::FromWide(unit));
                    found.Check(!project.IsDirty(), "the project is saved");
                    ExpectSaved(sample.Path(), found);

                    // A unit the failed save marked saved had its file written then.
                    const disk::Checksums saved = disk::ChecksumsOf(sample.Path());
                    ExpectOldOrNew(before, afterFailure, saved, found);
                    for (const std::wstring& unit : clean)
                    {
                        auto* object = dynamic_cast<WorkUnitObject*>(FindByPath(project, unit));
                        const std::string file =
                            fs::relative(WorkUnitFilePath(*object, sample.Path()), sample.Path()).string();
                        found.Check(afterFailure.count(file) && afterFailure.at(file) == saved.at(file),
                                    "marked saved, yet not on disk: " + file);
                    }
                }),
            "");
    }
}

TEST(FailingSave, AFolderTheUserMayNotWriteToNamesTheFileAndKeepsTheChanges)
{
    // A folder of units, then the project's own folder (its file cannot be replaced: the renamed
    // unit's new file, already written, must go again). Run as an ordinary user, even under root.
    const std::pair<const char*, const char*> cases[] = {
        {"Events", "Events/Player_Events.swu"},
        {"", "Demo.sonproj"},
    };
    for (const auto& [locked, failing] : cases)
    {
        SCOPED_TRACE(std::string("read-only folder \"") + locked + "\"");
        disk::SampleCopy sample;
        const disk::Checksums before = disk::ChecksumsOf(sample.Path());
        const fs::path folder = sample.Path() / locked;
        EXPECT_EQ(child::Run(
                      [&](child::Findings& found)
                      {
                          if (!child::BecomeOrdinaryUser(sample.Path()))
                              return found.Check(false, "cannot run as an ordinary user");
                          OpenResult opened = OpenProject(sample.Path());
                          Project& project = *opened.project;
                          Edit(project);
                          ::chmod(folder.c_str(), 0555);
                          StorageProblems problems;
                          found.Check(!SaveProject(project, problems), "the save reports failure");
                          found.Equal(Problems(problems),
                                      (sample.Path() / failing).string() +
                                          ": cannot create a temporary file: Permission denied\n",
                                      "the problem");
                          found.Check(project.IsDirty(), "the project stays unsaved");
                          // Units in folders that can still be written to are saved in place.
                          found.Equal(IsDirty(project, L"Events/Player_Events"), *locked != 0,
                                      "the unit unsaved");
                          const disk::Checksums afterFailure = disk::ChecksumsOf(sample.Path());
                          ::chmod(folder.c_str(), 0755);

                          problems.clear();
                          found.Check(SaveProject(project, problems),
                                      "the second save succeeds: " + Problems(problems));
                          found.Check(!project.IsDirty() && !IsDirty(project, L"Events/Player_Events"),
                                      "all saved");
                          ExpectSaved(sample.Path(), found);
                          const disk::Checksums saved = disk::ChecksumsOf(sample.Path());
                          ExpectOldOrNew(before, afterFailure, saved, found);
                          found.Check(!afterFailure.count("AudioObjects/World/Cutscenes.swu"),
                                      "the renamed unit's new file is gone with the failed save");
                      }),
                  "");
    }
}
