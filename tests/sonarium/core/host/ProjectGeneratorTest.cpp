#include "HostFixture.h"
#include "ProjectShape.h"

#include "sonarium/core/host/ProjectGenerator.h"
#include "sonarium/core/storage/ProjectStorage.h"

#include <regex>

using namespace sn;

namespace
{
// Kinds, names and GUIDs in hierarchy order: equal listings mean equal projects.
std::string Listing(const ProjectObject& object)
{
    std::string text = std::string(rules::NodeTypeKey(object.GetNodeType())) + " " +
                       Utf8::FromWide(object.GetName()) + " " + GuidText::ToString(object.Id()) + "\n";
    for (const CSmartPtr<ProjectObject>& child : object.Children())
        text += Listing(*child);
    return text;
}

std::string Listing(const Project& project)
{
    std::string text;
    for (const WorkUnitObject* root : project.Roots())
        text += Listing(*root);
    return text;
}

bool AllNamesNumbered(const ProjectObject& object, std::string& odd)
{
    static const std::regex numbered("[A-Za-z_]+_[0-9]{4,}");
    if (!object.IsTopWorkUnit() && !std::regex_match(Utf8::FromWide(object.GetName()), numbered))
    {
        odd = Utf8::FromWide(object.GetName());
        return false;
    }
    for (const CSmartPtr<ProjectObject>& child : object.Children())
        if (!AllNamesNumbered(*child, odd))
            return false;
    return true;
}
} // namespace

TEST(ProjectGenerator, GivesTheCountAskedForTheSameWayForTheSameSeed)
{
    const size_t categories = rules::AllCategories().size();
    for (size_t count : {size_t(0), categories, categories + 1, size_t(40), size_t(777), size_t(25000)})
    {
        SCOPED_TRACE(count);
        std::unique_ptr<Project> project = GenerateProject(count, 7);
        ASSERT_TRUE(project);
        EXPECT_EQ(project->ObjectCount(), std::max(count, categories));
        EXPECT_EQ(shape::Measure(*project).objects, project->ObjectCount()) << "every object is indexed";
        EXPECT_EQ(project->Roots().size(), categories);
    }
    const std::string first = Listing(*GenerateProject(3000, 42));
    EXPECT_EQ(Listing(*GenerateProject(3000, 42)), first);
    EXPECT_NE(Listing(*GenerateProject(3000, 43)), first);
}

TEST(ProjectGenerator, BuildsOnlyWhatTheStructureAllowsAtARealisticDepth)
{
    for (size_t count : {size_t(500), size_t(60000)})
    {
        SCOPED_TRACE(count);
        std::unique_ptr<Project> project = GenerateProject(count, 2024);
        shape::Shape shape = shape::Measure(*project);
        EXPECT_TRUE(shape.refused.empty()) << shape.refused.front();
        EXPECT_GE(shape.depth, 4u);
        EXPECT_LE(shape.depth, 8u);
        EXPECT_LE(shape.widest, 80u);
        for (OrbObjectCategories::Category category : rules::AllCategories())
            EXPECT_GE(shape.workUnits[category], 1u) << rules::CategoryKey(category);
        std::string odd;
        for (const WorkUnitObject* root : project->Roots())
            EXPECT_TRUE(AllNamesNumbered(*root, odd)) << odd;
        // Big enough for every kind, and for work units grouped in physical folders.
        if (count > 50000)
        {
            EXPECT_EQ(shape.types, shape::AllowedTypes());
        }
    }
}

TEST_F(HostTest, GeneratedProjectIsCleanAndSavesAndOpensAsIs)
{
    std::unique_ptr<Project> project = GenerateProject(4000, 11);
    EXPECT_FALSE(project->IsDirty());
    for (const WorkUnitObject* unit : project->FileWorkUnits())
        EXPECT_TRUE(unit->IsLoaded() && !unit->IsDirty());
    const std::string listing = Listing(*project);

    m_host->SetProject(std::move(project));
    EXPECT_FALSE(m_host->Undo().CanUndo());
    StorageProblems problems;
    ASSERT_TRUE(SaveProjectAs(*m_host->GetProject(), m_dir / "Generated", problems));
    OpenResult opened = OpenProject(m_dir / "Generated");
    ASSERT_TRUE(opened.project);
    EXPECT_TRUE(opened.problems.empty());
    EXPECT_EQ(Listing(*opened.project), listing);
}
