#include "sonarium/core/storage/ProjectStorage.h"

#include "DiskFixture.h"
#include "StorageText.h"

#include "host/Utf8.h"
#include "sonarium/core/model/ProjectEdit.h"
#include "sonarium/core/storage/FileIO.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <unistd.h>

namespace
{
namespace fs = std::filesystem;
using namespace sn;
using N = PMTreeNode::NodeType;

using disk::TempFolder;

std::string Read(const fs::path& path)
{
    std::string bytes, error;
    EXPECT_TRUE(FileIO::ReadFile(path, bytes, error)) << path << ": " << error;
    return bytes;
}

void Write(const fs::path& path, const std::string& bytes)
{
    std::string error;
    ASSERT_TRUE(FileIO::WriteAtomically(path, bytes, error)) << error;
}

struct Sample
{
    std::unique_ptr<Project> project = std::make_unique<Project>(L"Demo");
    WorkUnitObject* sfx = nullptr;    // AudioObjects/Weapons/Guns.swu
    WorkUnitObject* events = nullptr; // Events/Main.swu
    ProjectObject* shot = nullptr;

    Sample()
    {
        const GUID pc = NewGuid(), console = NewGuid();
        project->Platforms() = {{pc, L"PC"}, {console, L"Console"}};
        project->Languages() = {{1, L"English(US)"}, {7, L"Français"}};
        project->SetReferenceLanguage(7);
        WorkUnitObject* audio =
            project->AddRoot(OrbObjectCategories::AudioObjects, NewGuid(), L"Audio Objects");
        WorkUnitObject* eventRoot = project->AddRoot(OrbObjectCategories::Events, NewGuid(), L"Events");
        ProjectObject* weapons = ProjectEdit::Create(audio, N::PhysicalFolder, L"Weapons");
        sfx = static_cast<WorkUnitObject*>(ProjectEdit::Create(weapons, N::WorkUnit, L"Guns"));
        ProjectObject* mixer = ProjectEdit::Create(sfx, N::ActorMixer, L"Mixer");
        shot = ProjectEdit::Create(mixer, N::SoundSFX, L"Shot \"ü\"");
        ProjectEdit::Create(shot, N::AudioSource, L"shot.wav");
        ProjectEdit::Create(mixer, N::RandomContainer, L"Ricochets");
        ProjectEdit::SetColor(mixer, 12);
        ProjectEdit::SetInclusionLinked(shot, false);
        ProjectEdit::SetIncluded(shot, console, false);
        ProjectEdit::SetProperty(shot, "source", L"Sounds/shot.wav");
        shot->RawSetFlags(5);
        events = static_cast<WorkUnitObject*>(ProjectEdit::Create(eventRoot, N::WorkUnit, L"Main"));
        ProjectObject* play = ProjectEdit::Create(events, N::Event, L"Play_Shot");
        ProjectObject* action = ProjectEdit::Create(play, N::EventAction, L"Play");
        ProjectEdit::SetProperty(action, "target", Utf8::ToWide(GuidText::ToString(shot->Id())));
        ProjectEdit::Create(eventRoot, N::PhysicalFolder, L"Empty");
    }
};

void ExpectSameTree(const ProjectObject& a, const ProjectObject& b)
{
    SCOPED_TRACE(Utf8::FromWide(a.GetName()));
    EXPECT_EQ(a.GetNodeType(), b.GetNodeType());
    EXPECT_EQ(a.GetName(), b.GetName());
    EXPECT_EQ(a.Id(), b.Id());
    EXPECT_EQ(a.GetColor(), b.GetColor());
    EXPECT_EQ(a.GetObjectFlags(), b.GetObjectFlags());
    EXPECT_EQ(a.IsInclusionLinked(), b.IsInclusionLinked());
    EXPECT_EQ(a.m_includedEverywhere, b.m_includedEverywhere);
    EXPECT_EQ(a.IncludedOn(), b.IncludedOn());
    EXPECT_EQ(a.Properties(), b.Properties());
    ASSERT_EQ(a.Children().size(), b.Children().size());
    for (size_t i = 0; i < a.Children().size(); ++i)
        ExpectSameTree(*a.Children()[i], *b.Children()[i]);
}

std::map<fs::path, std::string> Snapshot(const fs::path& folder)
{
    std::map<fs::path, std::string> files;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder))
        if (entry.is_regular_file())
            files[fs::relative(entry.path(), folder)] = Read(entry.path());
    return files;
}

OpenResult SaveAndReopen(Project& project, const fs::path& folder)
{
    StorageProblems problems;
    EXPECT_TRUE(SaveProjectAs(project, folder, problems)) << Problems(problems);
    return OpenProject(folder);
}
} // namespace

TEST(StorageRoundTrip, ReopensTheSameTreeAndRewritesIdenticalBytes)
{
    TempFolder temp;
    Sample sample;
    OpenResult opened = SaveAndReopen(*sample.project, temp.Path());
    ASSERT_TRUE(opened.project) << Problems(opened.problems);
    EXPECT_TRUE(opened.problems.empty()) << Problems(opened.problems);
    EXPECT_EQ(sample.project->GetFolder(), temp.Path());
    EXPECT_FALSE(sample.project->IsDirty());
    EXPECT_FALSE(sample.sfx->IsDirty());

    Project& reopened = *opened.project;
    EXPECT_EQ(reopened.GetName(), L"Demo");
    ASSERT_EQ(reopened.Platforms().size(), 2u);
    EXPECT_EQ(reopened.Platforms()[1].id, sample.project->Platforms()[1].id);
    EXPECT_EQ(reopened.Languages()[1].name, L"Français");
    EXPECT_EQ(reopened.GetReferenceLanguage(), 7u);
    EXPECT_EQ(reopened.ObjectCount(), sample.project->ObjectCount());
    ASSERT_EQ(reopened.Roots().size(), 2u);
    for (size_t i = 0; i < 2; ++i)
        ExpectSameTree(*sample.project->Roots()[i], *reopened.Roots()[i]);
    EXPECT_FALSE(reopened.IsDirty());
    for (WorkUnitObject* unit : reopened.FileWorkUnits())
        EXPECT_TRUE(unit->IsLoaded() && !unit->IsDirty());

    EXPECT_TRUE(fs::exists(temp.Path() / "Demo.sonproj"));
    EXPECT_TRUE(fs::exists(temp.Path() / "AudioObjects" / "Weapons" / "Guns.swu"));
    EXPECT_TRUE(fs::is_directory(temp.Path() / "Events" / "Empty"));
    const std::string unit = Read(temp.Path() / "Events" / "Main.swu");
    EXPECT_EQ(unit.rfind("{\n  \"format\": \"sonarium-workunit\",\n  \"version\": 1,\n  \"id\": ", 0), 0u)
        << unit;
    EXPECT_EQ(unit.back(), '\n');
    EXPECT_EQ(unit.find("color"), std::string::npos) << "defaults stay out of the file";

    // Forcing every file out again must not change a byte.
    const auto before = Snapshot(temp.Path());
    for (WorkUnitObject* unit : reopened.FileWorkUnits())
        unit->RawSetDirty(true);
    reopened.SetDirty(true);
    StorageProblems problems;
    ASSERT_TRUE(SaveProject(reopened, problems)) << Problems(problems);
    EXPECT_EQ(Snapshot(temp.Path()), before);
    EXPECT_FALSE(reopened.FileWorkUnits().front()->IsDirty());
}

TEST(StorageSave, WritesOnlyChangesAndFollowsRenamesAndMoves)
{
    TempFolder temp;
    Sample sample;
    StorageProblems problems;
    ASSERT_TRUE(SaveProjectAs(*sample.project, temp.Path(), problems)) << Problems(problems);
    const fs::path guns = temp.Path() / "AudioObjects" / "Weapons" / "Guns.swu";
    const fs::path main = temp.Path() / "Events" / "Main.swu";

    // A clean unit is left alone: a marker written by hand survives the save.
    Write(main, "marker");
    ProjectEdit::Rename(sample.shot, L"Bang");
    EXPECT_TRUE(sample.sfx->IsDirty());
    ASSERT_TRUE(SaveProject(*sample.project, problems)) << Problems(problems);
    EXPECT_EQ(Read(main), "marker");
    EXPECT_NE(Read(guns).find("\"Bang\""), std::string::npos);
    EXPECT_FALSE(sample.sfx->IsDirty());
    ASSERT_TRUE(SaveAndReopen(*sample.project, temp.Path()).problems.empty());

    // Renaming the unit and its folder: new files written, old ones and the empty folder gone.
    ASSERT_TRUE(ProjectEdit::Rename(sample.sfx, L"Rifles"));
    ASSERT_TRUE(ProjectEdit::Rename(sample.sfx->Parent(), L"Arms"));
    ASSERT_TRUE(ProjectEdit::Rename(sample.events, L"Gameplay"));
    ASSERT_TRUE(SaveProject(*sample.project, problems)) << Problems(problems);
    EXPECT_FALSE(fs::exists(guns));
    EXPECT_FALSE(fs::exists(guns.parent_path()));
    EXPECT_FALSE(fs::exists(main));
    EXPECT_TRUE(fs::exists(temp.Path() / "AudioObjects" / "Arms" / "Rifles.swu"));
    OpenResult reopened = OpenProject(temp.Path() / "Demo.sonproj");
    ASSERT_TRUE(reopened.project) << Problems(reopened.problems);
    EXPECT_TRUE(reopened.problems.empty()) << Problems(reopened.problems);
    ExpectSameTree(*sample.project->Roots()[0], *reopened.project->Roots()[0]);

    // Moving a unit to the category's top, and renaming the project itself.
    WorkUnitObject* audio = sample.project->Roots()[0];
    ASSERT_TRUE(ProjectEdit::Move(sample.sfx, audio));
    sample.project->SetName(L"Renamed");
    sample.project->SetDirty(true);
    ASSERT_TRUE(SaveProject(*sample.project, problems)) << Problems(problems);
    EXPECT_TRUE(fs::exists(temp.Path() / "AudioObjects" / "Rifles.swu"));
    EXPECT_FALSE(fs::exists(temp.Path() / "AudioObjects" / "Arms" / "Rifles.swu"));
    EXPECT_TRUE(fs::exists(temp.Path() / "Renamed.sonproj"));
    EXPECT_FALSE(fs::exists(temp.Path() / "Demo.sonproj"));
    EXPECT_TRUE(problems.empty()) << Problems(problems);
}

TEST(StorageProblems, BrokenWorkUnitOpensEmptyAndIsNeverOverwritten)
{
    TempFolder temp;
    Sample sample;
    StorageProblems problems;
    ASSERT_TRUE(SaveProjectAs(*sample.project, temp.Path(), problems));
    const fs::path guns = temp.Path() / "AudioObjects" / "Weapons" / "Guns.swu";
    const fs::path main = temp.Path() / "Events" / "Main.swu";
    const std::string good = Read(guns);
    const std::string broken =
        "{\n  \"format\": \"sonarium-workunit\",\n  \"version\": 1,\n  \"id\": oops\n}\n";
    Write(guns, broken);
    fs::remove(main);

    OpenResult opened = OpenProject(temp.Path());
    ASSERT_TRUE(opened.project);
    ASSERT_EQ(opened.problems.size(), 2u) << Problems(opened.problems);
    EXPECT_EQ(opened.problems[0].path, guns);
    EXPECT_EQ(opened.problems[0].reason.rfind("line 4, column 9: ", 0), 0u) << opened.problems[0].reason;
    EXPECT_NE(Utf8::FromWide(opened.problems[0].Text()).find(guns.string() + ": line 4"), std::string::npos);
    EXPECT_EQ(opened.problems[1].path, main);
    EXPECT_EQ(opened.problems[1].reason, "file not found");

    Project& project = *opened.project;
    auto* unit = static_cast<WorkUnitObject*>(project.Find(sample.sfx->Id()));
    ASSERT_TRUE(unit);
    EXPECT_FALSE(unit->IsLoaded());
    EXPECT_TRUE(unit->Children().empty());
    EXPECT_EQ(project.Find(sample.shot->Id()), nullptr);

    // Even forced dirty, the broken file keeps its bytes; a rename carries it along unread.
    unit->RawSetDirty(true);
    project.SetDirty(true);
    ASSERT_TRUE(SaveProject(project, problems)) << Problems(problems);
    EXPECT_EQ(Read(guns), broken);
    EXPECT_FALSE(fs::exists(main));
    ASSERT_TRUE(ProjectEdit::Rename(unit, L"Pistols"));
    ASSERT_TRUE(SaveProject(project, problems)) << Problems(problems);
    EXPECT_EQ(Read(guns.parent_path() / "Pistols.swu"), broken);
    EXPECT_FALSE(fs::exists(guns));

    // Repaired on disk, the unit loads again.
    StorageProblems loadProblems;
    EXPECT_FALSE(LoadWorkUnit(project, unit, loadProblems));
    EXPECT_EQ(loadProblems.size(), 1u);
    Write(guns.parent_path() / "Pistols.swu", good);
    EXPECT_TRUE(LoadWorkUnit(project, unit, loadProblems)) << Problems(loadProblems);
    EXPECT_TRUE(unit->IsLoaded());
    ASSERT_NE(project.Find(sample.shot->Id()), nullptr);
    EXPECT_EQ(project.Find(sample.shot->Id())->OwningWorkUnit(), unit);
}

TEST(StorageProblems, UnusableProjectFileOpensNothingAndSaysWhy)
{
    TempFolder temp;
    Sample sample;
    StorageProblems problems;
    ASSERT_TRUE(SaveProjectAs(*sample.project, temp.Path(), problems));
    const fs::path file = temp.Path() / "Demo.sonproj";
    const std::string good = Read(file);
    auto expectProblem = [&](const std::string& bytes, const std::string& reason)
    {
        Write(file, bytes);
        OpenResult opened = OpenProject(file);
        EXPECT_FALSE(opened.project) << bytes;
        ASSERT_EQ(opened.problems.size(), 1u) << Problems(opened.problems);
        EXPECT_EQ(opened.problems[0].path, file);
        EXPECT_NE(opened.problems[0].reason.find(reason), std::string::npos)
            << opened.problems[0].reason << " lacks " << reason;
    };
    auto replaced = [&](const std::string& from, const std::string& to)
    {
        std::string text = good;
        text.replace(text.find(from), from.size(), to);
        return text;
    };
    expectProblem("{\n  \"format\": \n", "line 3, column 1: ");
    expectProblem(replaced("\"referenceLanguage\"", "\"reference\""), "missing key \"referenceLanguage\"");
    expectProblem(replaced("\"referenceLanguage\": 7", "\"referenceLanguage\": \"7\""), "referenceLanguage");
    expectProblem(replaced("\"WorkUnit\"", "\"Foo\""), "unknown type key \"Foo\"");
    expectProblem(replaced("\"sonarium-project\"", "\"other\""), "format \"other\"");
    const std::string rootId = GuidText::ToString(sample.project->Roots()[1]->Id());
    const std::string unitId = GuidText::ToString(sample.sfx->Id());
    expectProblem(replaced(rootId, unitId), "duplicate GUID " + unitId);
    expectProblem(replaced("\"Guns\"", "\"../../Escape.\""), "invalid name");

    fs::remove(file);
    OpenResult missing = OpenProject(file);
    EXPECT_FALSE(missing.project);
    ASSERT_EQ(missing.problems.size(), 1u);
    EXPECT_EQ(missing.problems[0].reason, "file not found");
    OpenResult empty = OpenProject(temp.Path());
    EXPECT_FALSE(empty.project);
    ASSERT_EQ(empty.problems.size(), 1u);
    EXPECT_EQ(empty.problems[0].path, temp.Path());
}

TEST(StorageProblems, UnreadableProjectFileIsReported)
{
    if (::geteuid() == 0)
        GTEST_SKIP() << "permissions do not stop root";
    TempFolder temp;
    Sample sample;
    StorageProblems problems;
    ASSERT_TRUE(SaveProjectAs(*sample.project, temp.Path(), problems));
    const fs::path file = temp.Path() / "Demo.sonproj";
    fs::permissions(file, fs::perms::none);
    OpenResult unreadable = OpenProject(temp.Path());
    EXPECT_FALSE(unreadable.project);
    ASSERT_EQ(unreadable.problems.size(), 1u);
    EXPECT_NE(unreadable.problems[0].reason.find("ermission"), std::string::npos)
        << unreadable.problems[0].reason;
}

TEST(StorageProblems, WorkUnitContentErrorsLeaveOnlyThatUnitEmpty)
{
    TempFolder temp;
    Sample sample;
    StorageProblems problems;
    ASSERT_TRUE(SaveProjectAs(*sample.project, temp.Path(), problems));
    const fs::path main = temp.Path() / "Events" / "Main.swu";
    const std::string good = Read(main);
    const std::string shotId = GuidText::ToString(sample.shot->Id());
    const std::string eventId = GuidText::ToString(sample.events->Children()[0]->Id());
    auto expectBroken = [&](const std::string& from, const std::string& to, const std::string& reason)
    {
        std::string text = good;
        text.replace(text.find(from), from.size(), to);
        Write(main, text);
        OpenResult opened = OpenProject(temp.Path());
        ASSERT_TRUE(opened.project);
        ASSERT_EQ(opened.problems.size(), 1u) << Problems(opened.problems);
        EXPECT_NE(opened.problems[0].reason.find(reason), std::string::npos) << opened.problems[0].reason;
        // Nothing of the bad file is left behind, in the tree or in the index.
        EXPECT_EQ(opened.project->Find(sample.events->Id())->Children().size(), 0u);
        EXPECT_EQ(opened.project->Find(sample.events->Children()[0]->Id()), nullptr);
        EXPECT_NE(opened.project->Find(sample.shot->Id()), nullptr);
    };
    expectBroken(eventId, shotId, "duplicate GUID " + shotId);
    expectBroken("\"EventAction\"", "\"SoundSFX\"", "cannot be held by");
    expectBroken("\"EventAction\"", "\"Nope\"", "unknown type key \"Nope\"");
    expectBroken("\"name\": \"Play\"", "\"name\": 3", "key \"name\" must be a string");
    expectBroken(GuidText::ToString(sample.events->Id()), shotId, "is not the work unit's");

    // A file that cannot be read at all, even by root.
    fs::remove(main);
    fs::create_directory(main);
    OpenResult opened = OpenProject(temp.Path());
    ASSERT_TRUE(opened.project);
    ASSERT_EQ(opened.problems.size(), 1u);
    EXPECT_EQ(opened.problems[0].reason, "is a folder, not a file");
    EXPECT_TRUE(SaveProject(*opened.project, problems)) << Problems(problems);
    EXPECT_TRUE(fs::is_directory(main));
}

TEST(StorageLoad, UnloadAndLoadRoundTrip)
{
    TempFolder temp;
    Sample sample;
    StorageProblems problems;
    ASSERT_TRUE(SaveProjectAs(*sample.project, temp.Path(), problems));
    Project& project = *sample.project;
    const size_t objects = project.ObjectCount();
    const GUID shot = sample.shot->Id();

    ProjectEdit::SetColor(sample.sfx->Children()[0], 3);
    EXPECT_FALSE(UnloadWorkUnit(project, sample.sfx)) << "unsaved changes are never dropped";
    ASSERT_TRUE(SaveProject(project, problems)) << Problems(problems);
    ASSERT_TRUE(UnloadWorkUnit(project, sample.sfx));
    EXPECT_FALSE(sample.sfx->IsLoaded());
    EXPECT_TRUE(sample.sfx->Children().empty());
    EXPECT_EQ(project.Find(shot), nullptr);
    EXPECT_EQ(project.ObjectCount(), objects - 4);

    // While unloaded its file stays as it is, even through a rename of its folder.
    ASSERT_TRUE(ProjectEdit::Rename(sample.sfx->Parent(), L"Arms"));
    ASSERT_TRUE(SaveProject(project, problems)) << Problems(problems);
    EXPECT_TRUE(fs::exists(temp.Path() / "AudioObjects" / "Arms" / "Guns.swu"));

    ASSERT_TRUE(LoadWorkUnit(project, sample.sfx, problems)) << Problems(problems);
    EXPECT_TRUE(sample.sfx->IsLoaded());
    EXPECT_FALSE(sample.sfx->IsDirty());
    EXPECT_EQ(project.ObjectCount(), objects);
    ASSERT_NE(project.Find(shot), nullptr);
    EXPECT_EQ(project.Find(shot)->GetProperty("source"), L"Sounds/shot.wav");
    EXPECT_EQ(sample.sfx->Children()[0]->GetColor(), 3);
    EXPECT_TRUE(problems.empty()) << Problems(problems);
}

TEST(StorageSave, FailedProjectFileKeepsTheFilesItNames)
{
    TempFolder temp;
    Sample sample;
    StorageProblems problems;
    ASSERT_TRUE(SaveProjectAs(*sample.project, temp.Path(), problems));
    const fs::path file = temp.Path() / "Demo.sonproj";
    const fs::path guns = temp.Path() / "AudioObjects" / "Weapons" / "Guns.swu";
    const std::string project = Read(file);
    fs::remove(file);
    fs::create_directory(file);

    ASSERT_TRUE(ProjectEdit::Rename(sample.sfx, L"Rifles"));
    EXPECT_FALSE(SaveProject(*sample.project, problems));
    ASSERT_EQ(problems.size(), 1u);
    EXPECT_EQ(problems[0].path, file);
    EXPECT_TRUE(fs::exists(guns)) << "still named by the project file on disk";
    EXPECT_TRUE(sample.project->IsDirty());

    fs::remove(file);
    Write(file, project);
    problems.clear();
    ASSERT_TRUE(SaveProject(*sample.project, problems)) << Problems(problems);
    EXPECT_FALSE(fs::exists(guns));
    EXPECT_TRUE(fs::exists(guns.parent_path() / "Rifles.swu"));
    EXPECT_FALSE(sample.project->IsDirty());
}
