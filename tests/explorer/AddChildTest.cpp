// New children of the selected row: each one undo step made under the host's lock, named by the
// host's rules and then by the user in place; work units and physical folders named in the
// host's dialog; plug-ins, events with an action, sounds with a source, children from presets.

#include "CreationFixture.h"

#include "explorer/menu/MenuCommandIds.h"
#include "host/PresetManager.h"
#include "sonarium/core/plugins/PluginRegistry.h"

using namespace creation;
using N = PMTreeNode;
namespace Ids = MenuCommandIds;

TEST_F(CreationTest, AButtonMakesANamedChildAsOneStepAndTheUserNamesItInPlace)
{
    Select({kAmbience});
    ASSERT_TRUE(ClickButton(N::RandomContainer));
    EXPECT_EQ(ChildNames(kAmbience).back(), L"New Random Container");
    EXPECT_EQ(m_lockValues, (std::vector<long long>{1, 0})) << "raised and lowered once";
    EXPECT_EQ(UndoSteps(), 1u);
    EXPECT_EQ(LastUndo(), L"New Child");

    ASSERT_TRUE(Editor());
    EXPECT_EQ(EditedName(), L"New Random Container");
    EXPECT_EQ(Editor()->GetLimitText(), 260u);
    Type(L"  Gusts  ");
    PressKey(VK_RETURN);
    EXPECT_FALSE(Editor());
    EXPECT_EQ(ChildNames(kAmbience).back(), L"Gusts") << "the blanks around the name are dropped";
    EXPECT_EQ(LastUndo(), L"Rename");
    EXPECT_TRUE(m_view->GetTreeCtrl().IsSelected(ItemOf(m_view, kAmbience + L"/Gusts")));

    // A second one is made unique by the host; undo takes back one creation at a time.
    Select({kAmbience});
    ClickButton(N::RandomContainer);
    PressKey(VK_ESCAPE);
    EXPECT_EQ(ChildNames(kAmbience).back(), L"New Random Container");
    ASSERT_TRUE(HostRef().Undo().Undo());
    ASSERT_TRUE(HostRef().Undo().Undo());
    EXPECT_EQ(ChildNames(kAmbience).back(), L"New Random Container");
    ASSERT_TRUE(HostRef().Undo().Undo());
    EXPECT_EQ(ChildNames(kAmbience), (std::vector<std::wstring>{L"Rain", L"Thunder", L"Wind", L"Birds"}));
    ASSERT_TRUE(HostRef().Undo().Redo());
    EXPECT_EQ(ChildNames(kAmbience).back(), L"New Random Container");
    EXPECT_TRUE(ItemOf(m_view, kAmbience + L"/New Random Container")) << "the tree follows undo and redo";

    // The host's command of that name, when there is one, creates instead.
    int runs = 0;
    HostRef().CommandRegistry().Register(ROString("ViewProject ExplorerCreateChildSoundSFX"),
                                         [&runs](auto...) { return ++runs, true; });
    Select({kAmbience});
    const size_t before = ChildNames(kAmbience).size();
    ClickButton(N::SoundSFX);
    EXPECT_EQ(runs, 1);
    EXPECT_EQ(ChildNames(kAmbience).size(), before);
}

TEST_F(CreationTest, TheFirstBusOfATreeIsTheMasterBus)
{
    Select({L"Busses/Mixing"});
    ClickButton(N::Bus);
    PressKey(VK_ESCAPE);
    Select({L"Busses/Mixing/Main/World"});
    ClickButton(N::Bus);
    PressKey(VK_ESCAPE);
    EXPECT_EQ(ChildNames(L"Busses/Mixing"), (std::vector<std::wstring>{L"Main", L"New Master Bus"}));
    EXPECT_EQ(ChildNames(L"Busses/Mixing/Main/World"), std::vector<std::wstring>{L"New Bus"});
}

TEST_F(CreationTest, WorkUnitsAreNamedInTheDialogUntilTheHostTakesTheName)
{
    Select({L"AudioObjects"});
    // The reserved name in any case: OK brings the dialog back with what was typed.
    m_dialogs.AnswerNewWorkUnit(L"  default WORK unit ");
    m_dialogs.AnswerMessageBox(IDOK);
    m_dialogs.AnswerNewWorkUnit(L"Con");
    m_dialogs.AnswerMessageBox(IDOK);
    m_dialogs.AnswerNewWorkUnit(L"Forest");
    EXPECT_TRUE(ClickButton(N::WorkUnit));
    const std::vector<sn::DialogRecord>& shown = m_dialogs.Records();
    ASSERT_EQ(shown.size(), 5u) << Utf8::FromWide(m_dialogs.Transcript());
    EXPECT_NE(shown[0].line.find(L"name=\"New Work Unit\""), std::wstring::npos) << Utf8::FromWide(shown[0].line);
    EXPECT_EQ(shown[1].caption, L"New Work Unit");
    EXPECT_EQ(shown[1].text,
              L"This name is reserved and cannot be used to create a new Work Unit:\r\n\r\n        default WORK unit");
    EXPECT_EQ(shown[1].style, 17u);
    EXPECT_NE(shown[2].line.find(L"name=\"default WORK unit\""), std::wstring::npos)
        << "the dialog comes back with the entered text";
    EXPECT_NE(shown[3].text.find(L"kept by file systems"), std::wstring::npos) << "the host says what is wrong";
    EXPECT_EQ(ChildNames(L"AudioObjects"),
              (std::vector<std::wstring>{L"Default Work Unit", L"Levels", L"Forest"}));
    EXPECT_FALSE(Editor()) << "named in the dialog, not in place";
    EXPECT_EQ(UndoSteps(), 1u);
    auto* forest = dynamic_cast<sn::WorkUnitObject*>(At(L"AudioObjects/Forest"));
    ASSERT_TRUE(forest);
    EXPECT_TRUE(forest->IsDirty()) << "its file is written at the next save";

    // Cancelled at the dialog or at the reserved-name box: nothing, and nothing to undo.
    m_dialogs.Clear();
    Select({L"AudioObjects/Levels"});
    m_dialogs.CancelNewWorkUnit();
    ClickButton(N::PhysicalFolder);
    m_dialogs.AnswerNewWorkUnit(L"Default Work Unit");
    m_dialogs.AnswerMessageBox(IDCANCEL);
    ClickButton(N::WorkUnit);
    EXPECT_EQ(ChildNames(L"AudioObjects/Levels"), std::vector<std::wstring>{L"Caves"});
    EXPECT_EQ(UndoSteps(), 1u);

    // A physical folder is not the reserved name's business, and is not edited in place either.
    m_dialogs.AnswerNewWorkUnit(L"Default Work Unit");
    ClickButton(N::PhysicalFolder);
    EXPECT_EQ(ChildNames(L"AudioObjects/Levels"), (std::vector<std::wstring>{L"Caves", L"Default Work Unit"}));
    EXPECT_EQ(At(L"AudioObjects/Levels/Default Work Unit")->GetNodeType(), N::PhysicalFolder);
    EXPECT_FALSE(Editor());
}

TEST_F(CreationTest, DuringPlaybackOnlyFoldersAndTheirLikeGetChildren)
{
    HostRef().SetPlayback(true);
    Select({kSketches});
    EXPECT_TRUE(m_view->AddChildToItem(N::SoundSFX, false, nullptr));
    EXPECT_EQ(ChildNames(kSketches), std::vector<std::wstring>{L"New Sound SFX"});

    Select({kAmbience});
    GUID made = sn::NewGuid();
    EXPECT_FALSE(m_view->AddChildToItem(N::SoundSFX, true, &made));
    EXPECT_EQ(made, GUID_NULL);
    EXPECT_EQ(ChildNames(kAmbience).size(), 4u);
    EXPECT_EQ(UndoSteps(), 1u) << "a refused creation leaves no step";
    EXPECT_EQ(m_lockValues, (std::vector<long long>{1, 0})) << "the lock is lowered on the refusal too";
    EXPECT_TRUE(m_dialogs.Records().empty()) << "refused silently";
}

TEST_F(CreationTest, PlugInChildrenAreNamedAfterTheirPlugInAndKeepIt)
{
    const std::wstring longName(300, L'x');
    HostRef().Plugins().Install(PluginInfo(PluginInfo::PluginType_Effect, 0x00020099, longName));
    Select({L"Busses/Mixing/Main"});
    EXPECT_TRUE(m_view->AddEffectChildToItem(0x00020099, OrbObjectType_Effect));
    const std::wstring effectName = ChildNames(L"Busses/Mixing/Main").back();
    EXPECT_EQ(effectName.size(), 260u) << "cut to the limit before the host makes it valid";
    EXPECT_TRUE(effectName.starts_with(L"New xxx"));
    PressKey(VK_ESCAPE);
    auto* effect = dynamic_cast<sn::EffectPluginObject*>(At(L"Busses/Mixing/Main/" + effectName));
    ASSERT_TRUE(effect);
    EXPECT_EQ(effect->GetPluginID(), 0x00020099u);

    Select({L"Busses/Mixing/Main"});
    EXPECT_TRUE(m_view->AddEffectChildToItem(sn::PluginRegistry::SpatialMixer, OrbObjectType_MixerPlugin));
    PressKey(VK_ESCAPE);
    EXPECT_EQ(At(L"Busses/Mixing/Main/New Spatial Mixer")->GetNodeType(), N::MixerPlugin);

    // An output device keeps its output's name, and is shown selected rather than edited.
    Select({L"Busses/Outputs"});
    EXPECT_TRUE(m_view->AddAudioDeviceChildToItem(sn::PluginRegistry::HeadphoneOutput));
    EXPECT_EQ(ChildNames(L"Busses/Outputs"), (std::vector<std::wstring>{L"Speakers", L"Headphone Output"}));
    EXPECT_FALSE(Editor());
    EXPECT_TRUE(m_view->GetTreeCtrl().IsSelected(ItemOf(m_view, L"Busses/Outputs/Headphone Output")));
    EXPECT_EQ(At(L"Busses/Outputs/Headphone Output")->GetProperty("PluginName"), L"Headphone Output");

    // A plug-in the host does not know makes nothing.
    const size_t steps = UndoSteps();
    Select({L"Busses/Mixing/Main"});
    EXPECT_FALSE(m_view->AddEffectChildToItem(0x7777, OrbObjectType_Effect));
    EXPECT_EQ(UndoSteps(), steps);
}

TEST_F(CreationTest, EventChildrenGetTheirFirstActionAndTheCaseTheUserWants)
{
    const std::wstring combat = L"Events/Gameplay/Combat";
    Select({combat});
    EXPECT_TRUE(m_view->AddEventChildToItem(OrbEventActionEnum::ActionType_Stop, OrbEventActionEnum::ActionScope_All));
    PressKey(VK_ESCAPE);
    sn::ProjectObject* stopAll = At(combat + L"/Stop All");
    ASSERT_TRUE(stopAll);
    ASSERT_EQ(stopAll->Children().size(), 1u);
    EXPECT_EQ(EventHelpers::GetActionType(stopAll->Children()[0].Get()), OrbPropertyEnums::Action_StopAll);

    Prefer(L"ModifyEventNameCase", true);
    Select({combat});
    m_view->AddEventChildToItem(OrbEventActionEnum::ActionType_SetState, OrbEventActionEnum::ActionScope_Target);
    PressKey(VK_ESCAPE);
    Prefer(L"EventNameCaseAllLower", true);
    Select({combat});
    m_view->AddEventChildToItem(OrbEventActionEnum::ActionType_None, OrbEventActionEnum::ActionScope_None);
    PressKey(VK_ESCAPE);
    EXPECT_EQ(ChildNames(combat), (std::vector<std::wstring>{L"Stop All", L"SET STATE", L"new event"}));
    EXPECT_TRUE(At(combat + L"/new event")->Children().empty()) << "no action without a type";
}

TEST_F(CreationTest, ASourceCommandMakesASoundWithItsSourceAndShowsTheSource)
{
    HostEars ears;
    const UINT command = Ids::NewSource + 1;
    m_view->MenuCommands()[command] = {MenuCommandEntry::EffectChild, sn::PluginRegistry::ToneGenerator, 0, {}};
    Select({kAmbience});
    ears.Take();
    m_view->OnAddSource(command);
    WindowSystem::Get().RunUntilIdle();
    sn::ProjectObject* sound = At(kAmbience + L"/New Sound SFX");
    ASSERT_TRUE(sound);
    ASSERT_EQ(sound->Children().size(), 1u);
    const sn::ProjectObject* source = sound->Children()[0].Get();
    EXPECT_EQ(source->GetName(), L"Tone Generator");
    EXPECT_EQ(source->GetProperty("PluginID"), L"0x00010001");
    EXPECT_EQ(sound->GetProperty("ActiveSource"), Utf8::ToWide(GuidText::ToString(source->Id())));
    EXPECT_FALSE(Editor());
    EXPECT_TRUE(m_view->GetTreeCtrl().IsSelected(ItemOf(m_view, kAmbience + L"/New Sound SFX")));
    const std::vector<std::string> heard = ears.Take();
    EXPECT_NE(std::find(heard.begin(), heard.end(), "Inspector/Inspect Tone Generator (double click)"), heard.end())
        << testing::PrintToString(heard);
    EXPECT_EQ(UndoSteps(), 1u);
    EXPECT_EQ(LastUndo(), L"New Source");

    // During playback the command does nothing at all; an unknown command neither.
    HostRef().SetPlayback(true);
    Select({kSketches});
    m_view->OnAddSource(command);
    HostRef().SetPlayback(false);
    m_view->OnAddSource(command + 1);
    EXPECT_TRUE(ChildNames(kSketches).empty());
    EXPECT_EQ(UndoSteps(), 1u);
}

TEST_F(CreationTest, AChildFromAPresetStartsWithItsValuesInTheSameStep)
{
    std::vector<IOrbObject*> presets;
    ASSERT_TRUE(IPresetManager::m_pInstance->GetPresets(OrbObjectType_Container, presets));
    ASSERT_EQ(presets.size(), 1u);
    m_view->MenuCommands()[Ids::NewChildPreset] = {MenuCommandEntry::ChildFromPreset, N::RandomContainer, 0,
                                                   presets[0]};
    m_view->MenuCommands()[Ids::NewChildPreset + 1] = {MenuCommandEntry::ParentFromPreset, N::RandomContainer, 0,
                                                       presets[0]};
    presets[0]->Release();

    Select({kAmbience});
    m_view->OnAddNode(Ids::NewChildPreset);
    ASSERT_TRUE(Editor()) << "the name is edited before the values come";
    PressKey(VK_ESCAPE);
    sn::ProjectObject* made = At(kAmbience + L"/New Random Container");
    ASSERT_TRUE(made);
    EXPECT_EQ(made->GetProperty("PlayMode"), L"Shuffle");
    EXPECT_EQ(made->GetProperty("AvoidRepeating"), L"2");
    EXPECT_EQ(UndoSteps(), 1u);
    EXPECT_EQ(LastUndo(), L"New Child with Preset");

    // An entry of another kind in the child range: an empty step, nothing made.
    Select({kAmbience});
    m_view->OnAddNode(Ids::NewChildPreset + 1);
    EXPECT_EQ(ChildNames(kAmbience).size(), 5u);
    EXPECT_EQ(UndoSteps(), 1u);
}
