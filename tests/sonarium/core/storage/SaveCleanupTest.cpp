// What a save leaves behind, and what the next one does with it: files of deleted work units
// (and their return by undo), temporary files of a save that was killed, the journal of a save
// cut short between the project file and the files it names, and paths two names would share.

#include "DiskFixture.h"
#include "KilledChild.h"
#include "StorageText.h"

#include "host/Utf8.h"
#include "sonarium/core/host/ProjectBuilder.h"
#include "sonarium/core/model/ProjectEdit.h"
#include "sonarium/core/storage/FileIO.h"
#include "sonarium/core/storage/ProjectStorage.h"
#include "sonarium/core/storage/SaveJournal.h"
#include "sonarium/core/undo/UndoManager.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <set>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
namespace fs = std::filesystem;
using namespace sn;

// The undo manager edits record into, for the test's lifetime.
class ScopedUndo
{
public:
    ScopedUndo() { IUndoMgr::m_instance = &manager; }
    ~ScopedUndo() { IUndoMgr::m_instance = nullptr; }
    UndoManager manager;
};

// A process that has ended: its temporary files are nobody's.
long EndedProcess()
{
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(0);
    ::waitpid(child, nullptr, 0);
    return child;
}

std::string TemporaryName(const std::string& file, long process)
{
    return "." + file + "." + std::to_string(process) + ".00000000deadbeef.tmp";
}
} // namespace

TEST(SaveCleanup, DeletedUnitsFilesGoWithTheSaveAndComeBackWithUndo)
{
    disk::SampleCopy sample;
    const fs::path world = sample.File("AudioObjects/World");
    // A save killed while writing left these; one belongs to a process that still runs.
    const std::string killed = TemporaryName("Props.swu", EndedProcess());
    const std::string running = TemporaryName("Ambience.swu", 1);
    disk::Spit(world / killed, "half a file");
    disk::Spit(world / running, "being written");
    const std::string killedProject = TemporaryName("Demo.sonproj", EndedProcess());
    disk::Spit(sample.File(killedProject), "half a project");
    const disk::Checksums before = disk::ChecksumsOf(sample.Path());

    ScopedUndo undo;
    OpenResult opened = OpenProject(sample.Path());
    ASSERT_TRUE(opened.project);
    Project& project = *opened.project;
    ProjectObject* cinematics = FindByPath(project, L"AudioObjects/World/Cinematics");
    ProjectObject* props = FindByPath(project, L"AudioObjects/World/Props");
    ASSERT_FALSE(cinematics->IsLoaded());
    ASSERT_TRUE(ProjectEdit::Delete(cinematics));
    ASSERT_TRUE(ProjectEdit::Delete(props));
    StorageProblems problems;
    ASSERT_TRUE(SaveProject(project, problems)) << Problems(problems);
    EXPECT_EQ(disk::Changes(before, disk::ChecksumsOf(sample.Path())),
              "-" + killedProject + "\n-AudioObjects/World/" + killed +
                  "\n-AudioObjects/World/Cinematics.swu\n-AudioObjects/World/Props.swu\n~Demo.sonproj\n")
        << "a process still running may be writing " << running;

    // Undone, both units are back: the unloaded one's file as it was, byte for byte.
    ASSERT_TRUE(undo.manager.Undo());
    ASSERT_TRUE(undo.manager.Undo());
    ASSERT_TRUE(SaveProject(project, problems)) << Problems(problems);
    const disk::Checksums afterUndo = disk::ChecksumsOf(sample.Path());
    EXPECT_EQ(afterUndo.at("AudioObjects/World/Cinematics.swu"), before.at("AudioObjects/World/Cinematics.swu"));
    OpenResult reopened = OpenProject(sample.Path());
    EXPECT_TRUE(reopened.problems.empty()) << Problems(reopened.problems);
    ASSERT_TRUE(reopened.project);
    EXPECT_EQ(reopened.project->ObjectCount(), project.ObjectCount());
}

TEST(SaveCleanup, ASaveCutShortIsCompletedOrUndoneByWhoeverOpensTheProjectNext)
{
    disk::SampleCopy sample;
    const fs::path world = sample.File("AudioObjects/World");
    const fs::path projectFile = sample.File("Demo.sonproj");
    const std::string oldProject = disk::Slurp(projectFile);
    const std::string props = disk::Slurp(world / "Props.swu");
    const disk::Checksums before = disk::ChecksumsOf(sample.Path());

    // Cut short before the project file: the file written beside goes, nothing else changes.
    std::string error;
    fs::path staged;
    ASSERT_TRUE(FileIO::WriteBeside(world / "Props.swu", "new content", staged, error)) << error;
    ASSERT_TRUE(SaveJournal::Write(sample.Path(), projectFile, FileIO::ContentHash("a project not yet written"),
                                   {{staged, world / "Props.swu"}}, error))
        << error;
    OpenResult undone = OpenProject(sample.Path());
    ASSERT_TRUE(undone.project);
    ASSERT_EQ(undone.problems.size(), 1u) << Problems(undone.problems);
    EXPECT_NE(undone.problems[0].reason.find("undone"), std::string::npos) << undone.problems[0].reason;
    EXPECT_EQ(disk::Changes(before, disk::ChecksumsOf(sample.Path())), "");

    // Cut short after it: the renames it lists are done.
    ASSERT_TRUE(FileIO::WriteBeside(world / "Props.swu", props, staged, error)) << error;
    std::string newProject = oldProject;
    newProject.replace(newProject.find("\"Demo\""), 6, "\"Demo\" ");
    ASSERT_TRUE(SaveJournal::Write(sample.Path(), projectFile, FileIO::ContentHash(newProject),
                                   {{staged, world / "Props.swu"}}, error));
    disk::Spit(world / "Props.swu", "the old file, replaced");
    disk::Spit(projectFile, newProject);
    OpenResult completed = OpenProject(sample.Path());
    ASSERT_TRUE(completed.project);
    ASSERT_EQ(completed.problems.size(), 1u) << Problems(completed.problems);
    EXPECT_NE(completed.problems[0].reason.find("completed"), std::string::npos);
    EXPECT_EQ(disk::Slurp(world / "Props.swu"), props);
    EXPECT_FALSE(fs::exists(staged));
    EXPECT_FALSE(fs::exists(sample.File(".sonarium-save.json")));

    // A journal naming files outside the project is left alone, and said so.
    disk::Spit(sample.File(".sonarium-save.json"),
               R"({"format": "sonarium-save-journal", "version": 1, "projectFile": "Demo.sonproj",
                   "projectHash": "0", "renames": [{"staged": "../x", "target": "../y"}]})");
    OpenResult refused = OpenProject(sample.Path());
    ASSERT_EQ(refused.problems.size(), 1u) << Problems(refused.problems);
    EXPECT_NE(refused.problems[0].reason.find("outside the project's folder"), std::string::npos);
    EXPECT_TRUE(fs::exists(sample.File(".sonarium-save.json")));
}

TEST(SaveCleanup, TwoNamesForOnePathRefuseTheWholeSaveAndSayWhich)
{
    disk::SampleCopy sample;
    OpenResult opened = OpenProject(sample.Path());
    ASSERT_TRUE(opened.project);
    Project& project = *opened.project;
    ProjectObject* world = FindByPath(project, L"AudioObjects/World");
    // Letter case beyond ASCII: one file where case does not count.
    ASSERT_TRUE(ProjectEdit::Create(world, PMTreeNode::WorkUnit, L"Ärger"));
    ASSERT_TRUE(ProjectEdit::Create(world, PMTreeNode::WorkUnit, L"ärger"));
    ASSERT_TRUE(ProjectEdit::Rename(FindByPath(project, L"AudioObjects/World/Props"), L"Changed"));
    const disk::Checksums before = disk::ChecksumsOf(sample.Path());

    StorageProblems problems;
    EXPECT_FALSE(SaveProject(project, problems));
    ASSERT_EQ(problems.size(), 1u) << Problems(problems);
    EXPECT_NE(problems[0].reason.find("\"Ärger\""), std::string::npos) << problems[0].reason;
    EXPECT_NE(problems[0].reason.find("\"ärger\""), std::string::npos) << problems[0].reason;
    EXPECT_EQ(disk::Changes(before, disk::ChecksumsOf(sample.Path())), "") << "nothing written";
}

namespace
{
// The content each of three units must keep, wherever the project on disk says it is.
struct ChainedRenames
{
    GUID cinematics, props, ambience;
    std::set<std::string> cinematicsObjects, propsObjects;
    std::string ambienceBytes = "{ \"format\": \"sonarium-workunit\", \"version\": 1, oops";

    static void Apply(Project& project)
    {
        for (auto [path, name] : {std::pair{L"AudioObjects/World/Cinematics", L"Old_Cinematics"},
                                  {L"AudioObjects/World/Props", L"Cinematics"},
                                  {L"AudioObjects/World/Ambience", L"Props"}})
            ProjectEdit::Rename(FindByPath(project, path), name);
    }

    static std::set<std::string> Loaded(Project& project, const GUID& id)
    {
        auto* unit = dynamic_cast<WorkUnitObject*>(project.Find(id));
        StorageProblems problems;
        std::set<std::string> ids;
        if (!unit || !LoadWorkUnit(project, unit, problems))
            return ids;
        std::vector<const ProjectObject*> stack{unit};
        while (!stack.empty())
        {
            const ProjectObject* object = stack.back();
            stack.pop_back();
            for (const CSmartPtr<ProjectObject>& child : object->Children())
            {
                ids.insert(GuidText::ToString(child->Id()));
                stack.push_back(child.Get());
            }
        }
        return ids;
    }

    // Whatever moment the save stopped at, the project opens with every unit's content.
    void ExpectWhole(const fs::path& folder, const std::string& when) const
    {
        OpenResult opened = OpenProject(folder);
        ASSERT_TRUE(opened.project) << when << Problems(opened.problems);
        Project& project = *opened.project;
        EXPECT_EQ(Loaded(project, cinematics), cinematicsObjects) << when;
        EXPECT_EQ(Loaded(project, props), propsObjects) << when;
        auto* unit = dynamic_cast<WorkUnitObject*>(project.Find(ambience));
        ASSERT_TRUE(unit) << when;
        EXPECT_EQ(disk::Slurp(WorkUnitFilePath(*unit, folder)), ambienceBytes) << when;
    }
};
} // namespace

TEST(SaveCleanup, ASaveKilledAtAnyMomentLeavesEveryUnitsContentOnDisk)
{
    ChainedRenames chain;
    auto prepare = [&](const fs::path& folder)
    { disk::Spit(folder / "AudioObjects/World/Ambience.swu", chain.ambienceBytes); };
    {
        disk::SampleCopy sample;
        prepare(sample.Path());
        OpenResult opened = OpenProject(sample.Path());
        Project& project = *opened.project;
        chain.cinematics = FindByPath(project, L"AudioObjects/World/Cinematics")->Id();
        chain.props = FindByPath(project, L"AudioObjects/World/Props")->Id();
        chain.ambience = FindByPath(project, L"AudioObjects/World/Ambience")->Id();
        chain.cinematicsObjects = ChainedRenames::Loaded(project, chain.cinematics);
        chain.propsObjects = ChainedRenames::Loaded(project, chain.props);
        ASSERT_FALSE(chain.cinematicsObjects.empty());
    }

    // A save in a child process, killed after a delay that walks across the whole save.
    auto run = [&](const fs::path& folder, int delayMicroseconds)
    {
        std::unique_ptr<Project> project;
        return child::RunKilledAfter(
                   [&]
                   {
                       project = OpenProject(folder).project;
                       ChainedRenames::Apply(*project);
                   },
                   [&]
                   {
                       StorageProblems problems;
                       return SaveProject(*project, problems);
                   },
                   delayMicroseconds)
            .duration;
    };

    disk::SampleCopy whole;
    prepare(whole.Path());
    const auto duration = run(whole.Path(), -1);
    chain.ExpectWhole(whole.Path(), "after a whole save");
    constexpr int kRuns = 40;
    for (int i = 0; i < kRuns; ++i)
    {
        disk::SampleCopy sample;
        prepare(sample.Path());
        const int delay = static_cast<int>(duration.count() * i / kRuns);
        run(sample.Path(), delay);
        chain.ExpectWhole(sample.Path(), "killed after " + std::to_string(delay) + " microseconds: ");
    }
}

TEST(SaveCleanup, AFileAnotherProgramChangedIsNeverSavedOverUnasked)
{
    disk::SampleCopy sample;
    OpenResult opened = OpenProject(sample.Path());
    ASSERT_TRUE(opened.project);
    Project& project = *opened.project;
    ASSERT_TRUE(ProjectEdit::Create(FindByPath(project, L"AudioObjects/World/Props/Props"), PMTreeNode::ActorMixer,
                                    L"Mine"));
    const fs::path props = sample.File("AudioObjects/World/Props.swu");
    const std::string original = disk::Slurp(props);
    std::string theirs = original;
    theirs.replace(theirs.find("\"Explosions\""), 12, "\"Theirs\"");
    disk::Spit(props, theirs);
    const disk::Checksums before = disk::ChecksumsOf(sample.Path());

    StorageProblems problems;
    EXPECT_FALSE(SaveProject(project, problems));
    ASSERT_EQ(problems.size(), 1u) << Problems(problems);
    EXPECT_EQ(problems[0].path, props);
    EXPECT_NE(problems[0].reason.find("changed by another program"), std::string::npos) << problems[0].reason;
    EXPECT_EQ(disk::Changes(before, disk::ChecksumsOf(sample.Path())), "");
    EXPECT_TRUE(dynamic_cast<WorkUnitObject*>(FindByPath(project, L"AudioObjects/World/Props"))->IsDirty());

    // Written again with the bytes that were read, it is not a change: the save goes ahead.
    disk::Spit(props, original);
    problems.clear();
    EXPECT_TRUE(SaveProject(project, problems)) << Problems(problems);
    EXPECT_NE(disk::Slurp(props).find("\"Mine\""), std::string::npos);
}
