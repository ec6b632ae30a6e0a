// Files no editor of this host writes: nesting tens of thousands deep, a named pipe in place of
// a file, values and names out of range, duplicates, a folder turned into a file. Each is
// reported with the file, the place and what was done; nothing hangs or crashes, and nothing on
// disk changes but what the user saves.

#include "DiskFixture.h"
#include "StorageText.h"

#include "host/Utf8.h"
#include "sonarium/core/host/ProjectBuilder.h"
#include "sonarium/core/model/ProjectEdit.h"
#include "sonarium/core/prefs/PreferencesStore.h"
#include "sonarium/core/storage/ProjectStorage.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <sys/stat.h>

namespace
{
namespace fs = std::filesystem;
using namespace sn;

std::string Nested(size_t depth, const std::string& open, const std::string& inner, const std::string& close)
{
    std::string text;
    text.reserve(depth * (open.size() + close.size()) + inner.size());
    for (size_t i = 0; i < depth; ++i)
        text += open;
    text += inner;
    for (size_t i = 0; i < depth; ++i)
        text += close;
    return text;
}

// A work unit file whose one bus holds `busses` more, each inside the last.
std::string DeepUnit(const std::string& id, size_t busses)
{
    std::string text = R"({"format": "sonarium-workunit", "version": 1, "id": ")" + id +
                       R"(", "name": "Mixing", "children": [)";
    for (size_t i = 0; i < busses; ++i)
    {
        char guid[40];
        std::snprintf(guid, sizeof(guid), "{00000000-0000-0000-0000-%012zx}", i + 1);
        text += R"({"type": "Bus", "id": ")" + std::string(guid) + R"(", "name": "b", "children": [)";
    }
    for (size_t i = 0; i < busses; ++i)
        text += "]}";
    return text + "]}";
}

std::string ReplaceOnce(std::string text, const std::string& from, const std::string& to)
{
    const size_t at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    if (at != std::string::npos)
        text.replace(at, from.size(), to);
    return text;
}

std::string IdOf(const fs::path& folder, const std::wstring& path)
{
    OpenResult opened = OpenProject(folder);
    return opened.project ? GuidText::ToString(FindByPath(*opened.project, path)->Id()) : std::string();
}
} // namespace

TEST(HostileFiles, NestingBeyondTheLimitIsReportedWithItsPlaceNotACrash)
{
    disk::SampleCopy sample;
    const fs::path mixing = sample.File("Busses/Mixing.swu");
    const fs::path ambience = sample.File("AudioObjects/World/Ambience.swu");
    disk::Spit(mixing, DeepUnit(IdOf(sample.Path(), L"Busses/Mixing"), 10000));
    // An unknown key nested 100,000 deep inside an object.
    disk::Spit(ambience, ReplaceOnce(disk::Slurp(ambience), "\"children\"",
                                     "\"extra\": " + Nested(100000, "[", "", "]") + ", \"children\""));
    const disk::Checksums before = disk::ChecksumsOf(sample.Path());

    OpenResult opened = OpenProject(sample.Path());
    ASSERT_TRUE(opened.project);
    ASSERT_EQ(opened.problems.size(), 2u) << Problems(opened.problems);
    for (const StorageProblem& problem : opened.problems)
    {
        EXPECT_TRUE(problem.path == mixing || problem.path == ambience) << problem.path;
        EXPECT_NE(problem.reason.find("nested deeper than 512 levels, the most this host reads"), std::string::npos)
            << problem.reason;
        EXPECT_EQ(problem.reason.rfind("line 1, column ", 0), problem.path == mixing ? 0u : std::string::npos)
            << problem.reason;
    }
    StorageProblems problems;
    EXPECT_TRUE(SaveProject(*opened.project, problems)) << Problems(problems);
    EXPECT_EQ(disk::Changes(before, disk::ChecksumsOf(sample.Path())), "") << "unreadable files stay as they are";

    // Just within the limit, the deepest the editor makes reads back.
    disk::Spit(mixing, DeepUnit(IdOf(sample.Path(), L"Busses/Mixing"), 248));
    OpenResult deepest = OpenProject(sample.Path());
    ASSERT_EQ(deepest.problems.size(), 1u) << Problems(deepest.problems);
    EXPECT_EQ(deepest.problems[0].path, ambience);

    // The project file itself.
    const fs::path projectFile = sample.File("Demo.sonproj");
    disk::Spit(projectFile, ReplaceOnce(disk::Slurp(projectFile), "\"platforms\"",
                                        "\"extra\": " + Nested(100000, "{\"a\":", "1", "}") + ", \"platforms\""));
    OpenResult project = OpenProject(sample.Path());
    EXPECT_FALSE(project.project);
    ASSERT_EQ(project.problems.size(), 1u) << Problems(project.problems);
    EXPECT_NE(project.problems[0].reason.find("nested deeper than 512"), std::string::npos);
}

TEST(HostileFiles, ANamedPipeInPlaceOfAFileIsReportedWithoutWaitingOnIt)
{
    disk::SampleCopy sample;
    const fs::path props = sample.File("AudioObjects/World/Props.swu");
    fs::remove(props);
    ASSERT_EQ(::mkfifo(props.c_str(), 0600), 0);
    OpenResult opened = OpenProject(sample.Path());
    ASSERT_TRUE(opened.project);
    ASSERT_EQ(opened.problems.size(), 1u) << Problems(opened.problems);
    EXPECT_EQ(opened.problems[0].reason, "is not a regular file (a named pipe)");
    StorageProblems problems;
    ProjectEdit::Rename(FindByPath(*opened.project, L"AudioObjects/World/Props"), L"Moved");
    EXPECT_TRUE(SaveProject(*opened.project, problems)) << Problems(problems);
    EXPECT_EQ(fs::status(props).type(), fs::file_type::fifo) << "left where it is";

    const fs::path projectFile = sample.File("Demo.sonproj");
    fs::remove(projectFile);
    ASSERT_EQ(::mkfifo(projectFile.c_str(), 0600), 0);
    OpenResult project = OpenProject(projectFile);
    EXPECT_FALSE(project.project);
    ASSERT_EQ(project.problems.size(), 1u);
    EXPECT_EQ(project.problems[0].reason, "is not a regular file (a named pipe)");

    disk::TempFolder config;
    const fs::path preferences = config.Path() / "preferences.json";
    ASSERT_EQ(::mkfifo(preferences.c_str(), 0600), 0);
    PreferencesStore store(preferences);
    ASSERT_EQ(store.Problems().size(), 1u);
    EXPECT_NE(store.Problems()[0].find(L"named pipe"), std::wstring::npos);
    store.SetIntValue(L"S", L"k", 1);
    EXPECT_EQ(fs::status(preferences).type(), fs::file_type::fifo);
}

TEST(HostileFiles, ValuesAndNamesTheEditorRefusesAreSetRightAndSaid)
{
    disk::SampleCopy sample;
    const fs::path props = sample.File("AudioObjects/World/Props.swu");
    std::string unit = disk::Slurp(props);
    unit = ReplaceOnce(unit, "\"color\": 3", "\"color\": 4294967299");
    unit = ReplaceOnce(unit, "\"name\": \"Explosions\"", "\"name\": \"Ex\\u0000plo\\u0007sions\", \"flags\": 1099511627777");
    unit = ReplaceOnce(unit, "\"name\": \"Explosion_Small\"", "\"name\": \"" + std::string(300, 'n') + "\"");
    disk::Spit(props, unit);
    const fs::path projectFile = sample.File("Demo.sonproj");
    std::string project = disk::Slurp(projectFile);
    const size_t platforms = project.find("\"platforms\": [") + std::string("\"platforms\": [").size();
    const size_t firstEnd = project.find("\n    }", platforms) + std::string("\n    }").size();
    const std::string firstPlatform = project.substr(platforms, firstEnd - platforms);
    project.insert(firstEnd, "," + ReplaceOnce(firstPlatform, "\"Desktop\"", "\"Again\""));
    project = ReplaceOnce(project, "\"name\": \"French\"", "\"name\": \"Fr\\tench\"");
    disk::Spit(projectFile, project);

    OpenResult opened = OpenProject(sample.Path());
    ASSERT_TRUE(opened.project) << Problems(opened.problems);
    const std::string said = Problems(opened.problems);
    EXPECT_EQ(opened.problems.size(), 6u) << said;
    for (const char* expected :
         {"is not one of the palette's (-1 to 15): set to -1", "do not fit in 32 bits: set to 0",
          "another control character.): renamed \"Ex plo sions\"", "renamed \"" ,
          "appears twice: the second was dropped", "renamed \"Fr ench\""})
        EXPECT_NE(said.find(expected), std::string::npos) << expected << " in\n" << said;
    Project& read = *opened.project;
    ProjectObject* explosions = FindByPath(read, L"AudioObjects/World/Props/Props/Ex plo sions");
    ASSERT_TRUE(explosions);
    EXPECT_EQ(explosions->GetObjectFlags(), 0u);
    EXPECT_EQ(explosions->Parent()->GetColor(), -1);
    EXPECT_LE(explosions->Children()[0]->GetName().size(), 300u);
    std::wstring why;
    EXPECT_TRUE(ProjectEdit::IsValidName(explosions->Children()[0].Get(), PMTreeNode::RandomContainer, explosions,
                                         explosions->Children()[0]->GetName(), &why))
        << Utf8::FromWide(why);
    EXPECT_EQ(read.Platforms().size(), 3u);
    EXPECT_EQ(read.Languages()[1].name, L"Fr ench");
    // Set right in memory, marked unsaved: the next save writes what the user was told.
    EXPECT_TRUE(dynamic_cast<WorkUnitObject*>(FindByPath(read, L"AudioObjects/World/Props"))->IsDirty());
    EXPECT_TRUE(read.IsDirty());
    StorageProblems problems;
    ASSERT_TRUE(SaveProject(read, problems)) << Problems(problems);
    EXPECT_TRUE(OpenProject(sample.Path()).problems.empty());
}

TEST(HostileFiles, AFolderTurnedFileAndAFolderNamedLikeAUnitsFileAreSaidPlainly)
{
    disk::SampleCopy sample;
    // A unit "Props" beside a folder "Props.swu": one path, refused when the name is given.
    OpenResult opened = OpenProject(sample.Path());
    ASSERT_TRUE(opened.project);
    ProjectObject* world = FindByPath(*opened.project, L"AudioObjects/World");
    std::wstring why;
    EXPECT_FALSE(ProjectEdit::IsValidName(nullptr, PMTreeNode::PhysicalFolder, world, L"props.SWU", &why));
    EXPECT_EQ(why, L"A work unit's file and a folder here would have the same name.");
    EXPECT_EQ(ProjectEdit::Create(world, PMTreeNode::PhysicalFolder, L"Props.swu"), nullptr);
    ProjectObject* folder = ProjectEdit::Create(world, PMTreeNode::PhysicalFolder, L"Sub.swu");
    ASSERT_TRUE(folder);
    EXPECT_FALSE(ProjectEdit::Rename(FindByPath(*opened.project, L"AudioObjects/World/Props"), L"Sub"));

    // The folder of three units has become a file.
    fs::remove_all(sample.File("AudioObjects/World"));
    disk::Spit(sample.File("AudioObjects/World"), "not a folder");
    OpenResult broken = OpenProject(sample.Path());
    ASSERT_TRUE(broken.project);
    ASSERT_EQ(broken.problems.size(), 2u) << Problems(broken.problems) << "the unloaded unit is not read";
    for (const StorageProblem& problem : broken.problems)
        EXPECT_EQ(problem.reason, sample.File("AudioObjects/World").string() + " is a file, not a folder");
}

TEST(HostilePreferences, DeepValuesAreSetAsideWithTheirPlaceNotACrash)
{
    disk::TempFolder config;
    const fs::path path = config.Path() / "preferences.json";
    const std::string deep = R"({"version": 1, "sections": {"S": {"k": {"type": "x", "value": )" +
                             Nested(100000, "[", "", "]") + "}}}}";
    disk::Spit(path, deep);
    {
        PreferencesStore store(path);
        ASSERT_EQ(store.Problems().size(), 1u);
        const std::wstring& problem = store.Problems()[0];
        EXPECT_NE(problem.find(path.wstring() + L": line 1, column "), std::wstring::npos) << Utf8::FromWide(problem);
        EXPECT_NE(problem.find(L"nested deeper than 512 levels"), std::wstring::npos);
        EXPECT_NE(problem.find(L"moved aside to " + path.wstring() + L".corrupt-1"), std::wstring::npos);
        store.SetIntValue(L"S", L"k", 1);
    }
    EXPECT_EQ(disk::Slurp(path.string() + ".corrupt-1"), deep);
    EXPECT_TRUE(PreferencesStore(path).Problems().empty());
}

TEST(HostilePreferences, ValuesNeverGrowTheFile)
{
    disk::TempFolder config;
    const fs::path path = config.Path() / "preferences.json";
    // A value kept for another version, nested as deep as is read: saving adds nothing to it.
    const std::string nested = R"({"version": 1, "sections": {"S": {"kept": {"type": "future", "value": )" +
                               Nested(500, "[", "1", "]") + "}}}}";
    disk::Spit(path, nested);
    {
        PreferencesStore store(path);
        EXPECT_TRUE(store.Problems().empty());
        for (int i = 0; i < 3; ++i)
            store.SetIntValue(L"S", L"k", i);
    }
    EXPECT_LT(fs::file_size(path), nested.size() + 200);
    PreferencesStore reread(path);
    EXPECT_TRUE(reread.Problems().empty());
    EXPECT_EQ(reread.GetIntValue(L"S", L"k", -1), 2);
}
