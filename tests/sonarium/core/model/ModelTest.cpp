#include "HostFixture.h"

#include "sonarium/core/model/NodeRules.h"
#include "sonarium/core/model/ProjectEdit.h"

using namespace sn;
using N = PMTreeNode;

namespace
{
const wchar_t* kProject = LR"(
platform Linux
platform Console
language 1 English reference
AudioObjects
  Default Work Unit : WorkUnit
    Ambience : ActorMixer
      Rain : SoundSFX
      Wind : RandomContainer
    Dialogue : SoundVoice
  Weapons : PhysicalFolder
    Guns : WorkUnit
Events
  Default Work Unit : WorkUnit
    Play_Rain : Event
)";

std::wstring Names(const ProjectObject* parent)
{
    std::wstring names;
    for (const auto& child : parent->Children())
        names += (names.empty() ? L"" : L",") + child->GetName();
    return names;
}
} // namespace

TEST(NodeRules, StructureFollowsCategoriesAndKinds)
{
    using rules::RuleFor;
    const auto audio = OrbObjectCategories::AudioObjects;
    EXPECT_EQ((std::set<N::NodeType>{N::WorkUnit, N::PhysicalFolder}), RuleFor(N::WorkUnit, audio, true).children);
    EXPECT_TRUE(RuleFor(N::WorkUnit, audio, false).children.count(N::SoundSFX));
    EXPECT_FALSE(RuleFor(N::WorkUnit, OrbObjectCategories::Events, false).children.count(N::SoundSFX));
    EXPECT_TRUE(RuleFor(N::Folder, OrbObjectCategories::Events, false).children.count(N::Event));
    EXPECT_TRUE(RuleFor(N::SoundSFX, audio, false).children.empty());
    EXPECT_TRUE(RuleFor(N::SoundSFX, audio, false).parents.count(N::RandomContainer));
    EXPECT_FALSE(RuleFor(N::SoundSFX, audio, false).parents.count(N::WorkUnit)) << "a file is never a new parent";

    // Roots may only hold files; nobody may delete, rename or move them.
    const auto& root = RuleFor(N::WorkUnit, audio, true).capabilities;
    EXPECT_FALSE(root[N::CanDelete] || root[N::CanRename] || root[N::CanClipboard]);
    EXPECT_TRUE(RuleFor(N::SoundSFX, audio, false).capabilities[N::CanClipboard]);

    // The object types that stand for two node kinds.
    EXPECT_EQ(OrbObjectType_WorkUnit, rules::ObjectTypeOf(N::PhysicalFolder));
    EXPECT_EQ(OrbObjectType_Container, rules::ObjectTypeOf(N::SequenceContainer));
    EXPECT_EQ(OrbObjectType_Sound, rules::ObjectTypeOf(N::SoundVoice));
    EXPECT_EQ(N::WorkUnit, rules::NodeTypeOf(OrbObjectType_WorkUnit));
    EXPECT_EQ(N::RandomContainer, rules::NodeTypeOf(OrbObjectType_Container));
    EXPECT_EQ(N::SoundSFX, rules::NodeTypeOf(OrbObjectType_Sound));
    for (int type = 1; type < N::NodeTypeCount; ++type)
    {
        N::NodeType parsed;
        ASSERT_TRUE(rules::ParseNodeType(rules::NodeTypeKey(N::NodeType(type)), parsed));
        EXPECT_EQ(type, parsed);
    }
}

TEST_F(HostTest, BuilderReportsTheLineAndWhatIsWrong)
{
    std::wstring error;
    EXPECT_FALSE(ProjectBuilder::Build(L"x", L"AudioObjects\n  A : WorkUnit\n    B : Event\n", &error));
    EXPECT_EQ(L"line 3: a Work Unit cannot hold a Event", error);
    EXPECT_FALSE(ProjectBuilder::Build(L"x", L"Nowhere\n", &error));
    EXPECT_EQ(L"line 1: unknown category \"Nowhere\"", error);
    EXPECT_FALSE(ProjectBuilder::Build(L"x", L"Events\n  A/B : WorkUnit\n", &error));
    EXPECT_NE(std::wstring::npos, error.find(L"line 2"));
}

TEST_F(HostTest, EditsNotifyMarkDirtyAndUndoRestoresTheModelExactly)
{
    Project& project = Open(kProject);
    ProjectObject* unit = At(L"AudioObjects/Default Work Unit");
    ProjectObject* ambience = At(L"AudioObjects/Default Work Unit/Ambience");
    auto* file = dynamic_cast<WorkUnitObject*>(unit);
    ASSERT_TRUE(file);
    EXPECT_FALSE(file->IsDirty());
    const size_t objects = project.ObjectCount();

    BusRecorder bus({"SonariumObject", "WorkUnit"});
    ProjectObject* thunder = ProjectEdit::Create(ambience, N::SoundSFX, L"Thunder");
    ASSERT_TRUE(thunder);
    EXPECT_EQ((std::vector<std::string>{"WorkUnit/DirtyChanged Default Work Unit", "SonariumObject/ChildAdded Ambience",
                                        "SonariumObject/Created Thunder"}),
              bus.events);
    EXPECT_TRUE(file->IsDirty());
    EXPECT_FALSE(ProjectEdit::Create(ambience, N::Event, L"Nope")) << "the rule table refuses";
    EXPECT_FALSE(ProjectEdit::Create(ambience, N::SoundSFX, L"  ")) << "blank names are refused";

    EXPECT_TRUE(ProjectEdit::Rename(thunder, L"Thunder Far"));
    EXPECT_TRUE(ProjectEdit::Move(At(L"AudioObjects/Default Work Unit/Dialogue"), ambience, 0));
    EXPECT_FALSE(ProjectEdit::Move(ambience, At(L"AudioObjects/Default Work Unit/Ambience/Wind")))
        << "never into its own subtree";
    ProjectObject* copy = ProjectEdit::Copy(ambience, unit);
    ASSERT_TRUE(copy);
    EXPECT_EQ(L"Ambience 1", copy->GetName());
    EXPECT_NE(ambience->Children()[0]->Id(), copy->Children()[0]->Id()) << "copies get new identities";
    const GUID linux = project.Platforms()[0].id, console = project.Platforms()[1].id;
    ProjectEdit::SetInclusionLinked(thunder, false);
    ProjectEdit::SetIncluded(thunder, console, false);
    EXPECT_TRUE(thunder->IsIncludedOnPlatform(linux, 0));
    EXPECT_FALSE(thunder->IsIncludedOnPlatform(console, 0));
    ProjectEdit::SetIncluded(ambience, linux, false);
    EXPECT_FALSE(thunder->IsIncludedOnPlatform(linux, 0)) << "an excluded parent excludes its children";
    ProjectEdit::SetColor(ambience, 3);
    EXPECT_TRUE(ProjectEdit::Delete(At(L"AudioObjects/Default Work Unit/Ambience/Rain")));
    EXPECT_EQ(L"Dialogue,Wind,Thunder Far", Names(ambience));
    EXPECT_EQ(L"Ambience,Ambience 1", Names(unit));

    UndoManager& undo = HostRef().Undo();
    while (undo.CanUndo())
        undo.Undo();
    EXPECT_EQ(L"Ambience,Dialogue", Names(unit));
    EXPECT_EQ(L"Rain,Wind", Names(ambience));
    EXPECT_EQ(-1, ambience->GetColor());
    EXPECT_TRUE(ambience->GetIncluded(linux));
    EXPECT_EQ(objects, project.ObjectCount());
    EXPECT_FALSE(thunder->IsInProject());

    while (undo.CanRedo())
        undo.Redo();
    EXPECT_EQ(L"Ambience,Ambience 1", Names(unit));
    EXPECT_EQ(L"Dialogue,Wind,Thunder Far", Names(ambience));
    EXPECT_FALSE(thunder->IsIncludedOnPlatform(console, 0));
    EXPECT_EQ(3, ambience->GetColor());
}

TEST_F(HostTest, GroupsNestIntoOneNamedStepAndEmptyGroupsLeaveNothing)
{
    Open(kProject);
    ProjectObject* ambience = At(L"AudioObjects/Default Work Unit/Ambience");
    UndoManager& undo = HostRef().Undo();
    {
        AutoComplexUndo outer(L"Create Sounds", false);
        {
            AutoComplexUndo inner(L"Inner", false);
            ProjectEdit::Create(ambience, N::SoundSFX, L"A");
        }
        ProjectEdit::Create(ambience, N::SoundSFX, L"B");
        EXPECT_EQ(1, undo.GroupDepth());
    }
    {
        AutoComplexUndo empty(L"Nothing", false);
    }
    EXPECT_EQ(1u, undo.UndoCount());
    EXPECT_EQ(L"Create Sounds", undo.GetUndoName());
    {
        AutoComplexUndo named;
        named.Open(new ComplexUndoWithFirstEventName);
        ProjectEdit::Rename(ambience, L"Ambient");
    }
    EXPECT_EQ(L"Rename", undo.GetUndoName()) << "named after its first change";
    undo.Undo();
    undo.Undo();
    EXPECT_EQ(L"Rain,Wind", Names(ambience));
    EXPECT_EQ(L"Ambience", ambience->GetName());
}

TEST_F(HostTest, WorkUnitNamesAreFileNames)
{
    Open(kProject);
    ProjectObject* guns = At(L"AudioObjects/Weapons/Guns");
    EXPECT_FALSE(ProjectEdit::Rename(guns, L"Guns/Rifles"));
    EXPECT_FALSE(ProjectEdit::Rename(guns, L"Guns "));
    EXPECT_TRUE(ProjectEdit::Rename(At(L"AudioObjects/Default Work Unit/Ambience"), L"Rain: heavy"))
        << "other objects are not files";
    ProjectObject* weapons = At(L"AudioObjects/Weapons");
    EXPECT_TRUE(ProjectEdit::Create(weapons, N::WorkUnit, L"Melee"));
    EXPECT_FALSE(ProjectEdit::Create(weapons, N::WorkUnit, L"GUNS")) << "file names differ whatever their case";
    EXPECT_TRUE(HostRef().GetProject()->IsDirty()) << "the project file lists the work units";
}
