#include "HostFixture.h"
#include "ProjectShape.h"

#include "sonarium/core/storage/FileIO.h"
#include "sonarium/core/storage/ProjectLock.h"
#include "sonarium/core/storage/ProjectStorage.h"

#include <functional>
#include <map>

using namespace sn;
namespace fs = std::filesystem;

namespace
{
const fs::path kSample = fs::path(SONARIUM_SAMPLES_DIR) / "Demo";

std::map<fs::path, std::string> Files(const fs::path& folder)
{
    std::map<fs::path, std::string> files;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder))
        if (entry.is_regular_file() && entry.path().filename() != ProjectLock::kFileName)
        {
            std::string bytes, error;
            EXPECT_TRUE(FileIO::ReadFile(entry.path(), bytes, error)) << error;
            files[fs::relative(entry.path(), folder)] = bytes;
        }
    return files;
}

std::string Problems(const StorageProblems& problems)
{
    std::string text;
    for (const StorageProblem& problem : problems)
        text += Utf8::FromWide(problem.Text()) + "\n";
    return text;
}

std::vector<std::string> UnloadedUnits(const Project& project)
{
    std::vector<std::string> names;
    for (const WorkUnitObject* unit : project.FileWorkUnits())
        if (!unit->IsLoaded())
            names.push_back(Utf8::FromWide(unit->GetName()));
    return names;
}

std::unique_ptr<Project> OpenClean(const fs::path& folder)
{
    OpenResult opened = OpenProject(folder);
    EXPECT_TRUE(opened.project);
    EXPECT_TRUE(opened.problems.empty()) << Problems(opened.problems);
    return std::move(opened.project);
}
} // namespace

TEST(SampleProject, OpensCleanlyAndShowsEveryKindTheStructureAllows)
{
    std::unique_ptr<Project> project = OpenClean(kSample);
    ASSERT_TRUE(project);
    EXPECT_FALSE(project->IsDirty());
    shape::Shape shape = shape::Measure(*project);
    EXPECT_EQ(shape.objects, project->ObjectCount());
    EXPECT_GE(shape.objects, 200u);
    EXPECT_GE(shape.depth, 4u);
    EXPECT_TRUE(shape.refused.empty()) << shape.refused.front();
    EXPECT_EQ(shape.types, shape::AllowedTypes());
    for (OrbObjectCategories::Category category : rules::AllCategories())
    {
        EXPECT_TRUE(project->GetRoot(category)) << rules::CategoryKey(category);
        EXPECT_GE(shape.workUnits[category], 2u) << rules::CategoryKey(category);
    }

    EXPECT_EQ(UnloadedUnits(*project), std::vector<std::string>{"Cinematics"});
    auto* cinematics = dynamic_cast<WorkUnitObject*>(FindByPath(*project, L"AudioObjects/World/Cinematics"));
    ASSERT_TRUE(cinematics);
    EXPECT_TRUE(cinematics->Children().empty());
    EXPECT_TRUE(fs::is_regular_file(kSample / "AudioObjects" / "World" / "Cinematics.swu"));

    // References written as paths in the source must name objects that are there.
    size_t actions = 0;
    std::function<void(const ProjectObject&)> check = [&](const ProjectObject& object)
    {
        if (object.GetNodeType() == PMTreeNode::EventAction)
        {
            ++actions;
            const std::optional<GUID> target =
                GuidText::FromString(Utf8::FromWide(object.GetProperty("Target")));
            EXPECT_TRUE(target && project->Find(*target)) << Utf8::FromWide(object.Parent()->GetName());
        }
        for (const CSmartPtr<ProjectObject>& child : object.Children())
            check(*child);
    };
    for (const WorkUnitObject* root : project->Roots())
        check(*root);
    EXPECT_GE(actions, 20u);
}

TEST_F(HostTest, SampleSavesBackByteForByteAndItsUnloadedUnitComesBack)
{
    std::unique_ptr<Project> project = OpenClean(kSample);
    ASSERT_TRUE(project);
    StorageProblems problems;
    ASSERT_TRUE(SaveProjectAs(*project, m_dir / "Copy", problems)) << Problems(problems);
    EXPECT_EQ(Files(m_dir / "Copy"), Files(kSample));

    // Loading the unit from the copy brings its objects back, and the project remembers it.
    auto* cinematics = dynamic_cast<WorkUnitObject*>(FindByPath(*project, L"AudioObjects/World/Cinematics"));
    ASSERT_TRUE(cinematics);
    const size_t before = project->ObjectCount();
    ASSERT_TRUE(LoadWorkUnit(*project, cinematics, problems)) << Problems(problems);
    EXPECT_GT(project->ObjectCount(), before + 5);
    EXPECT_TRUE(FindByPath(*project, L"AudioObjects/World/Cinematics/Cinematics/Intro_Cutscene"));
    EXPECT_TRUE(project->IsDirty());
    ASSERT_TRUE(SaveProject(*project, problems)) << Problems(problems);
    std::unique_ptr<Project> reopened = OpenClean(m_dir / "Copy");
    ASSERT_TRUE(reopened);
    EXPECT_TRUE(UnloadedUnits(*reopened).empty());
    EXPECT_EQ(reopened->ObjectCount(), project->ObjectCount());

    // Unloading again is saved too, the unit's file left as it was: the copy is the sample again.
    ASSERT_TRUE(UnloadWorkUnit(*project, cinematics));
    ASSERT_TRUE(SaveProject(*project, problems)) << Problems(problems);
    EXPECT_EQ(Files(m_dir / "Copy"), Files(kSample));
}
