// Projects of many work units, whose files are read ahead of the objects being built: what opens,
// what is said about bad files and in which order, and what a save writes must not depend on it.

#include "sonarium/core/storage/ProjectStorage.h"

#include "DiskFixture.h"

#include "sonarium/core/host/ProjectGenerator.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace
{
namespace fs = std::filesystem;
using namespace sn;
using disk::Slurp;
using disk::Spit;
using disk::TempFolder;

struct Generated
{
    TempFolder folder;
    std::vector<fs::path> files; // of the work units, in the project's order
    std::vector<size_t> counts;  // of the objects below each of them
    size_t objects = 0;
};

// 20,000 objects: a few dozen work units, more than are ever read ahead.
std::unique_ptr<Generated> Generate()
{
    auto generated = std::make_unique<Generated>();
    std::unique_ptr<Project> project = GenerateProject(20000, 11);
    StorageProblems problems;
    EXPECT_TRUE(SaveProjectAs(*project, generated->folder.Path(), problems));
    for (const WorkUnitObject* unit : project->FileWorkUnits())
    {
        generated->files.push_back(WorkUnitFilePath(*unit, generated->folder.Path()));
        generated->counts.push_back(0);
        std::vector<const ProjectObject*> pending = {unit};
        for (; !pending.empty(); ++generated->counts.back())
        {
            const ProjectObject* object = pending.back();
            pending.pop_back();
            for (const CSmartPtr<ProjectObject>& child : object->Children())
                pending.push_back(child.Get());
        }
        --generated->counts.back(); // the unit itself
    }
    generated->objects = project->ObjectCount();
    return generated;
}

// The GUID of the first object below the work unit in a unit's file.
std::string FirstObjectId(const std::string& bytes)
{
    const size_t id = bytes.find("\"id\": \"", bytes.find("\"children\"")) + 7;
    return bytes.substr(id, 38);
}
} // namespace

TEST(ManyUnits, OpenAndSaveAsIfReadOneAfterTheOther)
{
    const std::unique_ptr<Generated> generated = Generate();
    ASSERT_GE(generated->files.size(), 20u);
    OpenResult opened = OpenProject(generated->folder.Path());
    ASSERT_TRUE(opened.project);
    EXPECT_TRUE(opened.problems.empty());
    EXPECT_EQ(opened.project->ObjectCount(), generated->objects);
    TempFolder copy;
    StorageProblems problems;
    ASSERT_TRUE(SaveProjectAs(*opened.project, copy.Path(), problems));
    for (const fs::path& file : generated->files)
        EXPECT_EQ(Slurp(copy.Path() / fs::relative(file, generated->folder.Path())), Slurp(file)) << file;
}

TEST(ManyUnits, BadFilesAreSaidInTheUnitsOrderAndOnlyTheyOpenEmpty)
{
    const std::unique_ptr<Generated> generated = Generate();
    const std::vector<fs::path>& files = generated->files;
    // A syntax error, bytes that are not UTF-8 (set right), a folder in the way, and a GUID that
    // an earlier unit holds, in a file that also breaks later on.
    Spit(files[3], "{\"format\": ");
    std::string notUtf8 = Slurp(files[6]);
    const size_t bad = notUtf8.find("\"name\": \"") + 9;
    notUtf8.insert(bad, "\xFF");
    const auto badLine = std::count(notUtf8.begin(), notUtf8.begin() + static_cast<std::ptrdiff_t>(bad), '\n') + 1;
    Spit(files[6], notUtf8);
    fs::remove(files[9]);
    fs::create_directory(files[9]);
    const std::string taken = FirstObjectId(Slurp(files[1]));
    std::string clash = Slurp(files[12]);
    clash.replace(clash.find("\"id\": \"", clash.find("\"children\"")) + 7, 38, taken);
    clash.replace(clash.rfind("\"name\""), 6, "\"nom\"");
    Spit(files[12], clash);

    OpenResult opened = OpenProject(generated->folder.Path());
    ASSERT_TRUE(opened.project);
    ASSERT_EQ(opened.problems.size(), 4u);
    EXPECT_EQ(opened.problems[0].path, files[3]);
    EXPECT_EQ(opened.problems[0].reason.rfind("line 1, column 12: ", 0), 0u) << opened.problems[0].reason;
    EXPECT_EQ(opened.problems[1].path, files[6]);
    EXPECT_EQ(opened.problems[1].reason,
              "line " + std::to_string(badLine) + ": bytes that are not UTF-8 are read as U+FFFD");
    EXPECT_EQ(opened.problems[2].path, files[9]);
    EXPECT_EQ(opened.problems[3].path, files[12]);
    EXPECT_EQ(opened.problems[3].reason, "duplicate GUID " + taken);

    // The broken units are empty and unloaded; the others, the one set right included, whole.
    for (const WorkUnitObject* unit : opened.project->FileWorkUnits())
    {
        const fs::path file = WorkUnitFilePath(*unit, generated->folder.Path());
        const bool broken = file == files[3] || file == files[9] || file == files[12];
        EXPECT_EQ(unit->IsLoaded(), !broken) << file;
        EXPECT_EQ(unit->IsDirty(), file == files[6]) << file;
        if (broken)
        {
            EXPECT_TRUE(unit->Children().empty()) << file;
        }
    }
    const std::vector<size_t>& counts = generated->counts;
    EXPECT_EQ(opened.project->ObjectCount(), generated->objects - counts[3] - counts[9] - counts[12]);
    EXPECT_EQ(opened.project->Find(*GuidText::FromString(taken))->GetProject(), opened.project.get());
}

TEST(ManyUnits, AnOpeningStoppedHalfWayLeavesNothingOpen)
{
    const std::unique_ptr<Generated> generated = Generate();
    for (size_t stopAt : {size_t{0}, size_t{1}, size_t{7}, generated->files.size() - 1})
    {
        SCOPED_TRACE(stopAt);
        OpenOptions options;
        size_t asked = 0;
        options.progress = [&](size_t read, size_t) { return ++asked, read < stopAt; };
        OpenResult stopped = OpenProject(generated->folder.Path(), options);
        EXPECT_TRUE(stopped.cancelled);
        EXPECT_FALSE(stopped.project);
        EXPECT_EQ(asked, stopAt + 1);
    }
    EXPECT_EQ(OpenProject(generated->folder.Path()).project->ObjectCount(), generated->objects);
}
