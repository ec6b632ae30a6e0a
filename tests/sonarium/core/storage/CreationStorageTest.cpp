// What creation adds to a project on disk: plug-ins, actions, sources and presets kept across a
// save, new work units and physical folders that come and go with undo, and the default work
// unit new events go to.

#include "HostFixture.h"

#include "host/AudioSourcesHelpers.h"
#include "host/OrbObjectHelpers.h"
#include "host/PresetManager.h"
#include "host/ProjectManager.h"
#include "host/TreeNodeWithObject.h"
#include "host/Utf8.h"
#include "sonarium/core/model/ObjectKinds.h"
#include "sonarium/core/model/ProjectEdit.h"
#include "sonarium/core/nodes/ProjectNode.h"
#include "sonarium/core/plugins/PluginRegistry.h"
#include "sonarium/core/storage/FileIO.h"
#include "sonarium/core/storage/ProjectStorage.h"

using namespace sn;
namespace fs = std::filesystem;
using N = PMTreeNode;

namespace
{
const wchar_t* kProject = LR"(
platform Desktop
preset RandomContainer Shuffle | PlayMode=Shuffle
AudioObjects
  Default Work Unit : WorkUnit
    Ambience : ActorMixer
      Rain : SoundSFX
Busses
  Mixing : WorkUnit
    Main : Bus
Events
  Gameplay : WorkUnit
States
  Weather : WorkUnit
    Sky : StateGroup
      Storm : State
)";

std::string Problems(const StorageProblems& problems)
{
    std::string text;
    for (const StorageProblem& problem : problems)
        text += Utf8::FromWide(problem.Text()) + "\n";
    return text;
}
} // namespace

class CreationStorageTest : public HostTest
{
protected:
    void SetUp() override
    {
        HostTest::SetUp();
        Open(kProject);
        StorageProblems problems;
        ASSERT_TRUE(SaveProjectAs(*HostRef().GetProject(), m_dir / "p", problems)) << Problems(problems);
    }

    void Save()
    {
        StorageProblems problems;
        EXPECT_TRUE(SaveProject(*HostRef().GetProject(), problems)) << Problems(problems);
    }

    std::unique_ptr<Project> Reopen()
    {
        OpenResult opened = OpenProject(m_dir / "p");
        EXPECT_TRUE(opened.problems.empty()) << Problems(opened.problems);
        return std::move(opened.project);
    }
};

TEST_F(CreationStorageTest, PlugInsActionsSourcesAndPresetsAreKeptByASave)
{
    ProjectObject* main = At(L"Busses/Mixing/Main");
    auto* limiter = dynamic_cast<EffectPluginObject*>(ProjectEdit::Create(main, N::EffectPlugin, L"Limiter"));
    ASSERT_TRUE(limiter);
    limiter->SetPlugin(PluginRegistry::PeakLimiter, L"Peak Limiter");
    ASSERT_TRUE(AudioSourcesHelpers::CreateSourcePlugin(PluginRegistry::NoiseGenerator,
                                                        At(L"AudioObjects/Default Work Unit/Ambience/Rain"), 2));
    EXPECT_FALSE(AudioSourcesHelpers::CreateSourcePlugin(PluginRegistry::Compressor,
                                                         At(L"AudioObjects/Default Work Unit/Ambience/Rain"), 2))
        << "an effect is no source";

    CSmartPtr<IOrbObject> event;
    event.Attach(priv::CreateOrbObject(OrbObjectType_Event, 0, GUID_NULL, 0));
    ASSERT_TRUE(ProjectManager::m_pInstance->AddToDefaultWorkUnit(event));
    event->SetName(L"Set_Storm");
    OrbObjectSmartPtr action =
        EventHelpers::AddAction(event, OrbEventActionEnum::ActionType_SetState, OrbEventActionEnum::ActionScope_Target);
    auto* setState = dynamic_cast<IOrbEventAction*>(action.Get());
    ASSERT_TRUE(setState);
    setState->SetReferenceProperty(ROString("Target"), At(L"States/Weather/Sky/Storm"));
    setState->SetVariantProperty(ROString("Scope"), true);
    Save();

    std::unique_ptr<Project> reopened = Reopen();
    ASSERT_TRUE(reopened);
    auto* kept = dynamic_cast<EffectPluginObject*>(FindByPath(*reopened, L"Busses/Mixing/Main/Limiter"));
    ASSERT_TRUE(kept);
    EXPECT_EQ(kept->GetPluginID(), PluginRegistry::PeakLimiter);
    auto* rain = dynamic_cast<SoundObject*>(FindByPath(*reopened, L"AudioObjects/Default Work Unit/Ambience/Rain"));
    ASSERT_TRUE(rain);
    CSmartPtr<IOrbObject> source;
    EXPECT_FALSE(rain->GetActiveSource(AudioSourcesHelpers::LanguageIndependent, GUID_NULL, source));
    ASSERT_TRUE(rain->GetActiveSource(2, GUID_NULL, source)) << "the source plays in its own language";
    EXPECT_EQ(source->GetName(), L"Noise Generator");
    const ProjectObject* stormAction = FindByPath(*reopened, L"Events/Default Work Unit/Set_Storm/Set State");
    ASSERT_TRUE(stormAction);
    EXPECT_EQ(EventHelpers::GetActionType(stormAction), OrbPropertyEnums::Action_SetState);
    EXPECT_EQ(stormAction->GetProperty("Scope"), L"Global");
    EXPECT_EQ(stormAction->GetProperty("Target"),
              Utf8::ToWide(GuidText::ToString(FindByPath(*reopened, L"States/Weather/Sky/Storm")->Id())));
    ASSERT_EQ(reopened->Presets().size(), 1u);
    EXPECT_EQ(reopened->Presets()[0]->GetName(), L"Shuffle");
    EXPECT_EQ(reopened->Presets()[0]->GetNodeType(), N::RandomContainer);
    EXPECT_EQ(reopened->Presets()[0]->GetProperty("PlayMode"), L"Shuffle");
}

TEST_F(CreationStorageTest, APresetThatCannotBeReadIsReportedAndTheOthersKept)
{
    const fs::path file = m_dir / "p" / "Presets.json";
    std::string bytes, error;
    ASSERT_TRUE(FileIO::ReadFile(file, bytes, error));
    bytes.insert(bytes.find("    {"), "    {\"type\": \"Spaceship\", \"id\": \"x\", \"name\": \"Warp\"},\n");
    ASSERT_TRUE(FileIO::WriteAtomically(file, bytes, error));
    OpenResult opened = OpenProject(m_dir / "p");
    ASSERT_TRUE(opened.project);
    ASSERT_EQ(opened.problems.size(), 1u);
    EXPECT_EQ(opened.problems[0].path, file);
    EXPECT_NE(opened.problems[0].reason.find("preset 1: unknown type key \"Spaceship\""), std::string::npos)
        << opened.problems[0].reason;
    ASSERT_EQ(opened.project->Presets().size(), 1u);

    ASSERT_TRUE(FileIO::WriteAtomically(file, "{ not json", error));
    opened = OpenProject(m_dir / "p");
    ASSERT_TRUE(opened.project) << "the project opens without its presets";
    EXPECT_TRUE(opened.project->Presets().empty());
    ASSERT_EQ(opened.problems.size(), 1u);
}

TEST_F(CreationStorageTest, NewWorkUnitsAndFoldersAreOnDiskOnlyWhileTheyAreInTheProject)
{
    ProjectObject* root = At(L"AudioObjects");
    ASSERT_TRUE(ProjectEdit::Create(root, N::WorkUnit, L"Forest"));
    ProjectObject* zone = ProjectEdit::Create(root, N::PhysicalFolder, L"Zone");
    ASSERT_TRUE(zone);
    ASSERT_TRUE(ProjectEdit::Create(zone, N::WorkUnit, L"Caves"));
    Save();
    const fs::path category = m_dir / "p" / "AudioObjects";
    EXPECT_TRUE(fs::is_regular_file(category / "Forest.swu"));
    EXPECT_TRUE(fs::is_regular_file(category / "Zone" / "Caves.swu"));

    // Undone, saved: gone from disk; the files that stay are untouched.
    std::string before, error;
    ASSERT_TRUE(FileIO::ReadFile(category / "Default Work Unit.swu", before, error));
    while (HostRef().Undo().CanUndo())
        HostRef().Undo().Undo();
    Save();
    EXPECT_FALSE(fs::exists(category / "Forest.swu"));
    EXPECT_FALSE(fs::exists(category / "Zone"));
    std::string after;
    ASSERT_TRUE(FileIO::ReadFile(category / "Default Work Unit.swu", after, error));
    EXPECT_EQ(before, after);
    ASSERT_TRUE(Reopen());

    // Redone, saved: back.
    while (HostRef().Undo().CanRedo())
        HostRef().Undo().Redo();
    Save();
    EXPECT_TRUE(fs::is_regular_file(category / "Zone" / "Caves.swu"));
}

TEST_F(CreationStorageTest, NewEventsGoToTheDefaultWorkUnitMadeWhenMissing)
{
    std::vector<CSmartPtr<IOrbObject>> events(2);
    for (CSmartPtr<IOrbObject>& event : events)
    {
        event.Attach(priv::CreateOrbObject(OrbObjectType_Event, 0, GUID_NULL, 0));
        ASSERT_TRUE(event);
        EXPECT_EQ(event->GetName(), L"") << "named once placed";
        EXPECT_TRUE(ProjectManager::m_pInstance->AddToDefaultWorkUnit(event));
    }
    ProjectObject* unit = At(L"Events/Default Work Unit");
    ASSERT_TRUE(unit);
    EXPECT_EQ(unit->Children().size(), 2u);
    EXPECT_FALSE(ProjectManager::m_pInstance->AddToDefaultWorkUnit(events[0])) << "already placed";
    EXPECT_FALSE(priv::CreateOrbObject(OrbObjectType_Event, 0, *unit->GetGUID(), 0)) << "an identity taken";

    // An unloaded default unit receives nothing it could not save.
    Save();
    ASSERT_TRUE(UnloadWorkUnit(*HostRef().GetProject(), dynamic_cast<WorkUnitObject*>(unit)));
    CSmartPtr<IOrbObject> third;
    third.Attach(priv::CreateOrbObject(OrbObjectType_Event, 0, GUID_NULL, 0));
    EXPECT_FALSE(ProjectManager::m_pInstance->AddToDefaultWorkUnit(third));
}

TEST_F(CreationStorageTest, ANewParentGathersOnlyWhatItCanHold)
{
    ProjectObject* ambience = At(L"AudioObjects/Default Work Unit/Ambience");
    ASSERT_TRUE(ProjectEdit::Create(ambience, N::SoundSFX, L"Wind"));
    ProjectNode unitNode(nullptr, At(L"AudioObjects/Default Work Unit"));
    PMTreeNode* ambienceNode = unitNode.Children()[0];
    std::vector<PMTreeNode*> sounds = ambienceNode->Children();
    std::vector<PMTreeNode*> withParent = {ambienceNode, sounds[0]};
    GUID made = GUID_NULL;
    ASSERT_TRUE(TreeNodeWithObject::AddParentToNodes(sounds, N::SwitchContainer, L"Weather", &made));
    EXPECT_EQ(ambience->Children()[0]->GetName(), L"Weather");
    EXPECT_EQ(*ambience->Children()[0]->GetGUID(), made);
    made = GUID_NULL;
    EXPECT_EQ(At(L"AudioObjects/Default Work Unit/Ambience/Weather")->Children().size(), 2u);
    EXPECT_FALSE(TreeNodeWithObject::AddParentToNodes(withParent, N::BlendContainer, L"Layer", &made))
        << "a blend container cannot hold an actor-mixer";
    EXPECT_EQ(made, GUID_NULL);
    EXPECT_TRUE(TreeNodeWithObject::NeedUndoResetWhenAddingParent(N::PhysicalFolder));
    EXPECT_FALSE(TreeNodeWithObject::NeedUndoResetWhenAddingParent(N::Folder));
}

TEST(ActionTable, ActionsTargetWhatTheyActOnAndStatesAreGlobal)
{
    using namespace OrbPropertyEnums;
    EXPECT_TRUE(EventHelpers::IsActionTypeValid(OrbObjectType_Sound, Action_Play));
    EXPECT_FALSE(EventHelpers::IsActionTypeValid(OrbObjectType_Folder, Action_Play));
    EXPECT_TRUE(EventHelpers::IsActionTypeValid(OrbObjectType_State, Action_SetState));
    EXPECT_FALSE(EventHelpers::IsActionTypeValid(OrbObjectType_Sound, Action_SetState));
    EXPECT_FALSE(EventHelpers::IsActionTypeValid(OrbObjectType_Sound, Action_StopAll)) << "acts on everything";
    EXPECT_TRUE(EventHelpers::IsActionTypeValid(OrbObjectType_Bus, Action_Mute));
    EXPECT_TRUE(OrbObjectHelpers::GetDefaultActionIsGlobalValue(OrbEventActionEnum::ActionType_SetState,
                                                                OrbObjectType_State, false));
    EXPECT_TRUE(OrbObjectHelpers::GetDefaultActionIsGlobalValue(OrbEventActionEnum::ActionType_Mute,
                                                                OrbObjectType_Bus, false));
    EXPECT_FALSE(OrbObjectHelpers::GetDefaultActionIsGlobalValue(OrbEventActionEnum::ActionType_Mute,
                                                                 OrbObjectType_Sound, false));
    EXPECT_EQ(OrbObjectHelpers::ConvertActionTypeToString(OrbEventActionEnum::ActionType_Stop,
                                                          OrbEventActionEnum::ActionScope_AllButTarget),
              L"Stop All Except");
    EXPECT_EQ(OrbObjectHelpers::ConvertActionTypeToString(OrbEventActionEnum::ActionType_SetState,
                                                          OrbEventActionEnum::ActionScope_All),
              L"Set State")
        << "a scope the type does not take names the type";
}
