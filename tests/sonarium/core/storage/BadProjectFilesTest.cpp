// Every way a project file or a work unit's file can be wrong, each with the exact message the
// user reads. A bad project file opens nothing; a bad work unit opens empty and unloaded, the rest
// of the project with it. Either way no file on disk changes, not even by a save.

#include "ChildRun.h"
#include "DiskFixture.h"
#include "StorageText.h"

#include "sonarium/core/host/ProjectBuilder.h"
#include "sonarium/core/storage/ProjectStorage.h"

#include <gtest/gtest.h>

#include <functional>
#include <sys/stat.h>

namespace
{
namespace fs = std::filesystem;
using namespace sn;

constexpr const char* kPropsId = "{25F59B1E-B7F6-488D-8CD8-F498C0837176}";
constexpr const char* kPropsMixerId = "{01A93869-F1F2-4B76-A8C7-9F5256830A3E}";
constexpr const char* kExplosionsId = "{AB4DF8DC-2FAC-4DA6-9FD3-A1AB0C1D2196}";
constexpr const char* kWorldFolderId = "{216907A8-2DBD-4558-BF7D-C10CFDCC3036}";

std::string Replaced(std::string text, const std::string& from, const std::string& to)
{
    const size_t at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    if (at != std::string::npos)
        text.replace(at, from.size(), to);
    return text;
}

// How the file is spoiled, and what the user is told (after the file's path and ": ").
struct BadFile
{
    const char* what;
    std::function<void(const fs::path& file)> spoil;
    std::string reason;
    // Read with what was wrong set right and said, the unit then unsaved: the user's save writes it.
    bool setRight = false;
};

void Rewrite(const fs::path& file, const std::function<std::string(std::string)>& change)
{
    disk::Spit(file, change(disk::Slurp(file)));
}

std::function<void(const fs::path&)> Replacing(std::string from, std::string to)
{
    return [=](const fs::path& file)
    { Rewrite(file, [&](std::string text) { return Replaced(text, from, to); }); };
}

std::function<void(const fs::path&)> Both(std::function<void(const fs::path&)> first,
                                          std::function<void(const fs::path&)> second)
{
    return [=](const fs::path& file)
    {
        first(file);
        second(file);
    };
}

// Rows both kinds of file share: the bytes themselves, and what stands in the file's place.
std::vector<BadFile> CommonRows()
{
    return {
        {"empty", [](const fs::path& file) { disk::Spit(file, " \n"); }, "the file is empty"},
        {"truncated",
         [](const fs::path& file) {
             Rewrite(file,
                     [](std::string text) { return text.substr(0, text.find("\"version\": 1,") + 14); });
         },
         "line 4, column 1: syntax error while parsing object key - unexpected end of input; expected string "
         "literal"},
        {"invalid UTF-8", Replacing("\"version\": 1,", "\"version\": 1, \"x\": \"\xC3\x28\","),
         "line 3: bytes that are not UTF-8 are read as U+FFFD", true},
        {"NUL byte", Replacing("\"version\": 1,", std::string("\"version\": 1,\0", 14)),
         "line 3, column 16: a NUL byte, which no text file holds"},
        {"not JSON", [](const fs::path& file) { disk::Spit(file, "\x89PNG\r\n\x1A\n"); },
         "line 1, column 1: the file does not hold JSON text"},
        {"wrong top type", [](const fs::path& file) { disk::Spit(file, "[1, 2, 3]"); },
         "the file does not hold a JSON object"},
        {"missing", [](const fs::path& file) { fs::remove(file); }, "file not found"},
        {"a folder",
         [](const fs::path& file)
         {
             fs::remove(file);
             fs::create_directory(file);
         },
         "is a folder, not a file"},
        {"symlink loop",
         [](const fs::path& file)
         {
             fs::remove(file);
             fs::create_symlink(file.filename(), file);
         },
         "Too many levels of symbolic links"},
    };
}
} // namespace

TEST(BadProjectFiles, AWorkUnitFileOpensEmptyAndIsNeverWrittenOver)
{
    std::vector<BadFile> rows = CommonRows();
    const std::vector<BadFile> own = {
        {"wrong type of children", Replacing("\"children\": [", "\"children\": 7, \"x\": ["),
         "key \"children\" must be an array"},
        {"missing id", Replacing(std::string("\"id\": \"") + kPropsId + "\",", ""), "missing key \"id\""},
        {"unknown object type", Replacing("\"type\": \"ActorMixer\"", "\"type\": \"Gizmo\""),
         "unknown type key \"Gizmo\""},
        {"illegal parent type", Replacing("\"type\": \"RandomContainer\"", "\"type\": \"Bus\""),
         "\"Bus\" {29B65822-C37A-4832-95B4-8CE6B8521EE0} cannot be held by \"ActorMixer\" " +
             std::string(kExplosionsId)},
        {"GUID twice in the file", Replacing(kExplosionsId, kPropsMixerId),
         "duplicate GUID " + std::string(kPropsMixerId)},
        {"its own ancestor", Replacing(kPropsMixerId, kPropsId), "duplicate GUID " + std::string(kPropsId)},
        {"GUID of another unit's object", Replacing(kExplosionsId, kWorldFolderId),
         "duplicate GUID " + std::string(kWorldFolderId)},
        // Read first, checked against the project afterwards: the first fault in the file's order is said.
        {"GUID of another unit's object, then an unknown type",
         Both(Replacing(kExplosionsId, kWorldFolderId), Replacing("\"type\": \"RandomContainer\"", "\"type\": \"Gizmo\"")),
         "duplicate GUID " + std::string(kWorldFolderId)},
        {"GUID of another unit's object, then a colour that is no number",
         Both(Replacing(kPropsMixerId, kWorldFolderId), Replacing("\"color\": 3", "\"color\": \"red\"")),
         "duplicate GUID " + std::string(kWorldFolderId)},
        {"an unknown type, then the GUID of another unit's object",
         Both(Replacing("\"type\": \"ActorMixer\"", "\"type\": \"Gizmo\""), Replacing(kExplosionsId, kWorldFolderId)),
         "unknown type key \"Gizmo\""},
        {"name over 260 characters",
         Replacing("\"name\": \"Props\",\n      \"color\"",
                   "\"name\": \"" + std::string(300, 'p') + "\",\n      \"color\""),
         "the name of " + std::string(kPropsMixerId) +
             " was refused (The name has 300 characters; a name has 260 at most.): renamed \"" +
             std::string(260, 'p') + "\"",
         true},
    };
    rows.insert(rows.end(), own.begin(), own.end());
    for (const BadFile& row : rows)
    {
        SCOPED_TRACE(row.what);
        disk::SampleCopy sample;
        const fs::path props = sample.File("AudioObjects/World/Props.swu");
        row.spoil(props);
        const disk::Checksums before = disk::ChecksumsOf(sample.Path());
        OpenResult opened = OpenProject(sample.Path());
        ASSERT_TRUE(opened.project) << Problems(opened.problems);
        EXPECT_EQ(Problems(opened.problems), props.string() + ": " + row.reason + "\n");
        auto* unit = dynamic_cast<WorkUnitObject*>(FindByPath(*opened.project, L"AudioObjects/World/Props"));
        ASSERT_TRUE(unit);
        EXPECT_EQ(unit->IsLoaded(), row.setRight);
        EXPECT_EQ(unit->IsDirty(), row.setRight);
        EXPECT_EQ(unit->Children().empty(), !row.setRight);
        EXPECT_EQ(disk::Changes(before, disk::ChecksumsOf(sample.Path())), "") << "opening changes nothing";
        StorageProblems problems;
        EXPECT_TRUE(SaveProject(*opened.project, problems)) << Problems(problems);
        EXPECT_EQ(disk::Changes(before, disk::ChecksumsOf(sample.Path())),
                  row.setRight ? "~AudioObjects/World/Props.swu\n" : "");
    }
}

TEST(BadProjectFiles, AProjectFileOpensNothingAndSaysWhy)
{
    std::vector<BadFile> rows = CommonRows();
    const std::vector<BadFile> own = {
        {"wrong type of platforms", Replacing("\"platforms\": [", "\"platforms\": 3, \"x\": ["),
         "key \"platforms\" must be an array"},
        {"missing name", Replacing("\"name\": \"Demo\",", ""), "missing key \"name\""},
        {"unknown item type", Replacing("\"type\": \"PhysicalFolder\"", "\"type\": \"Attic\""),
         "unknown type key \"Attic\""},
        {"an object outside any unit", Replacing("\"type\": \"WorkUnit\"", "\"type\": \"SoundSFX\""),
         "type \"SoundSFX\" does not belong in the project file"},
        {"a unit inside a unit",
         Replacing("\"name\": \"Player\"\n",
                   "\"name\": \"Player\", \"children\": [{\"type\": \"WorkUnit\", \"id\": "
                   "\"{00000000-0000-0000-0000-000000000001}\", \"name\": \"Inner\"}]\n"),
         "work unit {08C9C0BB-CBB3-4E94-ACCE-FB80C8878551} lists objects in the project file"},
        {"its own ancestor",
         Replacing("\"{CDAF26AF-1A67-4466-AA7F-6E902D4AB122}\"",
                   "\"{367D482B-9652-4BF4-92A6-1F39D665B5D2}\""),
         "duplicate GUID {367D482B-9652-4BF4-92A6-1F39D665B5D2}"},
        {"two units with one GUID",
         Replacing("{ABACDBC2-AD25-4023-8220-BE0663CFC801}", "{08C9C0BB-CBB3-4E94-ACCE-FB80C8878551}"),
         "duplicate GUID {08C9C0BB-CBB3-4E94-ACCE-FB80C8878551}"},
        {"a unit's name over 260 characters",
         Replacing("\"name\": \"Enemies\"", "\"name\": \"" + std::string(300, 'e') + "\""),
         "invalid name \"" + std::string(300, 'e') +
             "\": The name has 300 characters; a name has 260 at most."},
        {"a folder's name with a slash", Replacing("\"name\": \"Characters\"", "\"name\": \"Char/acters\""),
         "invalid name \"Char/acters\": The name of a work unit or physical folder is a file or folder name: "
         "it cannot hold any of \\ / : * ? \" < > |."},
    };
    rows.insert(rows.end(), own.begin(), own.end());
    for (const BadFile& row : rows)
    {
        SCOPED_TRACE(row.what);
        disk::SampleCopy sample;
        const fs::path file = sample.File("Demo.sonproj");
        row.spoil(file);
        const disk::Checksums before = disk::ChecksumsOf(sample.Path());
        OpenResult opened = OpenProject(file);
        EXPECT_EQ(opened.project != nullptr, row.setRight);
        EXPECT_EQ(Problems(opened.problems), file.string() + ": " + row.reason + "\n");
        EXPECT_EQ(disk::Changes(before, disk::ChecksumsOf(sample.Path())), "");
    }
}

TEST(BadProjectFiles, AFileTheUserMayNotReadIsSaidAndKept)
{
    // Run as an ordinary user, so that the permissions stop even a test run as root.
    disk::SampleCopy sample;
    const fs::path props = sample.File("AudioObjects/World/Props.swu");
    const fs::path project = sample.File("Demo.sonproj");
    const disk::Checksums before = disk::ChecksumsOf(sample.Path());
    EXPECT_EQ(child::Run(
                  [&](child::Findings& found)
                  {
                      if (!child::BecomeOrdinaryUser(sample.Path()))
                          return found.Check(false, "cannot run as an ordinary user");
                      ::chmod(props.c_str(), 0);
                      OpenResult opened = OpenProject(sample.Path());
                      found.Check(opened.project != nullptr, "the project opens");
                      found.Equal(Problems(opened.problems), props.string() + ": Permission denied\n",
                                  "the unit");
                      StorageProblems problems;
                      found.Check(opened.project && SaveProject(*opened.project, problems),
                                  "saves: " + Problems(problems));
                      ::chmod(props.c_str(), 0644);

                      ::chmod(project.c_str(), 0);
                      opened = OpenProject(sample.Path());
                      found.Check(!opened.project, "no project opens");
                      found.Equal(Problems(opened.problems), project.string() + ": Permission denied\n",
                                  "the project");
                      ::chmod(project.c_str(), 0644);
                  }),
              "");
    EXPECT_EQ(disk::Changes(before, disk::ChecksumsOf(sample.Path())), "");
}
