// A save moves, copies and writes files in an order that never destroys content still needed:
// renames that hand one unit's old name to another, name cycles, units whose files are not in
// memory, and the leftovers of earlier saves.

#include "DiskFixture.h"
#include "StorageText.h"

#include "host/Utf8.h"
#include "sonarium/core/host/ProjectBuilder.h"
#include "sonarium/core/model/ProjectEdit.h"
#include "sonarium/core/storage/ProjectStorage.h"
#include "sonarium/core/storage/SavePlan.h"
#include "sonarium/core/storage/StorageState.h"

#include <gtest/gtest.h>

#include <set>

namespace
{
namespace fs = std::filesystem;
using namespace sn;
using disk::ChecksumsOf;

WorkUnitObject* Unit(Project& project, const std::wstring& path)
{
    auto* unit = dynamic_cast<WorkUnitObject*>(FindByPath(project, path));
    EXPECT_TRUE(unit) << Utf8::FromWide(path);
    return unit;
}

void Rename(Project& project, const std::wstring& path, const std::wstring& name)
{
    ProjectObject* object = FindByPath(project, path);
    ASSERT_TRUE(object) << Utf8::FromWide(path);
    ASSERT_TRUE(ProjectEdit::Rename(object, name)) << Utf8::FromWide(path);
}

void Collect(const ProjectObject& object, std::set<std::string>& ids)
{
    for (const CSmartPtr<ProjectObject>& child : object.Children())
    {
        ids.insert(GuidText::ToString(child->Id()));
        Collect(*child, ids);
    }
}

// The GUIDs of every object a unit's file holds, read back from disk.
std::set<std::string> ObjectsOnDisk(const fs::path& folder, const GUID& unit)
{
    OpenResult opened = OpenProject(folder);
    EXPECT_TRUE(opened.project) << Problems(opened.problems);
    std::set<std::string> ids;
    if (!opened.project)
        return ids;
    auto* found = dynamic_cast<WorkUnitObject*>(opened.project->Find(unit));
    EXPECT_TRUE(found);
    StorageProblems problems;
    if (found && LoadWorkUnit(*opened.project, found, problems))
        Collect(*found, ids);
    EXPECT_TRUE(problems.empty()) << Problems(problems);
    return ids;
}
} // namespace

TEST(SavePlan, AUnitTakingTheNameOfAnUnloadedOrUnreadableOneKeepsBothContents)
{
    disk::SampleCopy sample;
    const fs::path world = sample.File("AudioObjects/World");
    const std::string broken = "{ \"format\": \"sonarium-workunit\", \"version\": 1, oops";
    disk::Spit(world / "Ambience.swu", broken);
    const disk::Checksums before = ChecksumsOf(sample.Path());

    OpenResult opened = OpenProject(sample.Path());
    ASSERT_TRUE(opened.project);
    Project& project = *opened.project;
    const GUID cinematics = Unit(project, L"AudioObjects/World/Cinematics")->Id();
    const GUID props = Unit(project, L"AudioObjects/World/Props")->Id();
    const GUID ambience = Unit(project, L"AudioObjects/World/Ambience")->Id();
    ASSERT_FALSE(project.Find(cinematics)->IsLoaded()) << "the sample keeps Cinematics unloaded";
    ASSERT_FALSE(project.Find(ambience)->IsLoaded()) << "its file cannot be read";
    std::set<std::string> propsObjects;
    Collect(*project.Find(props), propsObjects);
    const std::set<std::string> cinematicsObjects = ObjectsOnDisk(disk::SampleCopy().Path(), cinematics);
    ASSERT_FALSE(cinematicsObjects.empty());

    // Each unit takes the name the next one gives up.
    Rename(project, L"AudioObjects/World/Cinematics", L"Old_Cinematics");
    Rename(project, L"AudioObjects/World/Props", L"Cinematics");
    Rename(project, L"AudioObjects/World/Ambience", L"Props");
    StorageProblems problems;
    ASSERT_TRUE(SaveProject(project, problems)) << Problems(problems);

    const disk::Checksums after = ChecksumsOf(sample.Path());
    EXPECT_EQ(after.at("AudioObjects/World/Old_Cinematics.swu"),
              before.at("AudioObjects/World/Cinematics.swu"));
    EXPECT_EQ(after.at("AudioObjects/World/Props.swu"), before.at("AudioObjects/World/Ambience.swu"))
        << "the file the user meant to repair is carried along, unread";
    EXPECT_FALSE(after.count("AudioObjects/World/Ambience.swu"));
    EXPECT_EQ(disk::Changes(before, after),
              "-AudioObjects/World/Ambience.swu\n~AudioObjects/World/Cinematics.swu\n"
              "~AudioObjects/World/Props.swu\n~Demo.sonproj\n+AudioObjects/World/Old_Cinematics.swu\n");
    ForgetStorageState(project);
    EXPECT_EQ(ObjectsOnDisk(sample.Path(), cinematics), cinematicsObjects);
    EXPECT_EQ(ObjectsOnDisk(sample.Path(), props), propsObjects);
}

TEST(SavePlan, NamesSwappedInACycleAndMovedBetweenFoldersLoseNothing)
{
    disk::SampleCopy sample;
    const disk::Checksums before = ChecksumsOf(sample.Path());
    OpenResult opened = OpenProject(sample.Path());
    ASSERT_TRUE(opened.project);
    Project& project = *opened.project;
    WorkUnitObject* player = Unit(project, L"AudioObjects/Characters/Player");
    WorkUnitObject* enemies = Unit(project, L"AudioObjects/Characters/Enemies");
    ASSERT_TRUE(UnloadWorkUnit(project, player));
    ASSERT_TRUE(UnloadWorkUnit(project, enemies));

    // Player <-> Enemies, both unloaded: only temporary files can break the cycle.
    Rename(project, L"AudioObjects/Characters/Player", L"Swap");
    Rename(project, L"AudioObjects/Characters/Enemies", L"Player");
    Rename(project, L"AudioObjects/Characters/Swap", L"Enemies");
    StorageProblems problems;
    ASSERT_TRUE(SaveProject(project, problems)) << Problems(problems);
    disk::Checksums after = ChecksumsOf(sample.Path());
    EXPECT_EQ(after.at("AudioObjects/Characters/Enemies.swu"), before.at("AudioObjects/Characters/Player.swu"));
    EXPECT_EQ(after.at("AudioObjects/Characters/Player.swu"), before.at("AudioObjects/Characters/Enemies.swu"));

    // The folders trade names too, with an unloaded unit inside one of them.
    Rename(project, L"AudioObjects/Characters", L"World2");
    Rename(project, L"AudioObjects/World", L"Characters");
    Rename(project, L"AudioObjects/World2", L"World");
    ASSERT_TRUE(SaveProject(project, problems)) << Problems(problems);
    after = ChecksumsOf(sample.Path());
    EXPECT_EQ(after.at("AudioObjects/World/Enemies.swu"), before.at("AudioObjects/Characters/Player.swu"));
    EXPECT_EQ(after.at("AudioObjects/Characters/Cinematics.swu"), before.at("AudioObjects/World/Cinematics.swu"));
    EXPECT_EQ(after.size(), before.size());
    ASSERT_TRUE(LoadWorkUnit(project, player, problems)) << Problems(problems);
    ASSERT_TRUE(LoadWorkUnit(project, enemies, problems)) << Problems(problems);
}

TEST(SavePlan, ListsEveryStepAndTreatsNamesDifferingInCaseAsTheSameFile)
{
    disk::SampleCopy sample;
    OpenResult opened = OpenProject(sample.Path());
    ASSERT_TRUE(opened.project);
    Project& project = *opened.project;
    // On a file system that ignores case, writing "cinematics.swu" would replace "Cinematics.swu".
    Rename(project, L"AudioObjects/World/Cinematics", L"Old_Cinematics");
    Rename(project, L"AudioObjects/World/Props", L"cinematics");
    // A unit renamed in case only stays one file.
    Rename(project, L"AudioObjects/World/Ambience", L"AMBIENCE");

    const SavePlan plan = PlanSave(project, project.GetFolder(), StorageStateOf(project), false);
    EXPECT_TRUE(plan.refusals.empty()) << Problems(plan.refusals);
    auto step = [&](const std::string& name) -> const SaveStep*
    {
        for (const SaveStep& s : plan.steps)
            if (s.target.filename() == name)
                return &s;
        return nullptr;
    };
    const fs::path world = sample.File("AudioObjects/World");
    ASSERT_TRUE(step("Old_Cinematics.swu"));
    EXPECT_EQ(step("Old_Cinematics.swu")->kind, SaveStep::Carry);
    EXPECT_EQ(step("Old_Cinematics.swu")->source, world / "Cinematics.swu");
    EXPECT_FALSE(step("Old_Cinematics.swu")->staged);
    ASSERT_TRUE(step("cinematics.swu"));
    EXPECT_EQ(step("cinematics.swu")->kind, SaveStep::Write);
    EXPECT_TRUE(step("cinematics.swu")->staged) << "another unit's file until the project file is written";
    ASSERT_TRUE(step("AMBIENCE.swu"));
    EXPECT_FALSE(step("AMBIENCE.swu")->staged) << "its own file, whatever the case";
    EXPECT_TRUE(plan.writeProjectFile);

    StorageProblems problems;
    ASSERT_TRUE(SaveProject(project, problems)) << Problems(problems);
    ForgetStorageState(project);
    OpenResult reopened = OpenProject(sample.Path());
    EXPECT_TRUE(reopened.problems.empty()) << Problems(reopened.problems);
    EXPECT_FALSE(fs::exists(world / "Props.swu"));
}
