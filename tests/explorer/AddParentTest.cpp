// New parents: a new object takes the place of the selected siblings and they move under it.

#include "CreationFixture.h"

#include "explorer/menu/MenuCommandIds.h"
#include "host/PresetManager.h"

using namespace creation;
using N = PMTreeNode;

TEST_F(CreationTest, ANewParentTakesTheSelectionsPlaceAsOneStepAndIsNamedInPlace)
{
    Select({kAmbience + L"/Thunder", kAmbience + L"/Wind"});
    ASSERT_TRUE(ClickButton(N::RandomContainer, true));
    EXPECT_EQ(ChildNames(kAmbience), (std::vector<std::wstring>{L"Rain", L"New Random Container", L"Birds"}));
    EXPECT_EQ(ChildNames(kAmbience + L"/New Random Container"), (std::vector<std::wstring>{L"Thunder", L"Wind"}));
    EXPECT_EQ(m_lockValues, (std::vector<long long>{1, 0}));
    ASSERT_TRUE(Editor());
    EXPECT_EQ(EditedName(), L"New Random Container");
    Type(L"Storm");
    PressKey(VK_RETURN);
    EXPECT_EQ(UndoSteps(), 2u);
    ASSERT_TRUE(HostRef().Undo().Undo());
    ASSERT_TRUE(HostRef().Undo().Undo());
    EXPECT_EQ(UndoSteps(), 0u);
    EXPECT_EQ(ChildNames(kAmbience), (std::vector<std::wstring>{L"Rain", L"Thunder", L"Wind", L"Birds"}));
    EXPECT_TRUE(ItemOf(m_view, kAmbience + L"/Wind"));
}

TEST_F(CreationTest, TopRowsAndMixedSelectionsDuringPlaybackGetNoParent)
{
    Select({kUnit});
    EXPECT_FALSE(m_view->AddParentToItem(N::Folder, nullptr)) << "a work unit goes only into a physical folder";
    Select({L"AudioObjects"});
    EXPECT_FALSE(m_view->AddParentToItem(N::PhysicalFolder, nullptr)) << "a root has no parent row";

    HostRef().SetPlayback(true);
    Select({kSketches, kAmbience});
    EXPECT_FALSE(m_view->AddParentToItem(N::Folder, nullptr)) << "the container may not change during playback";
    EXPECT_EQ(m_lockValues, (std::vector<long long>{1, 0}));
    EXPECT_EQ(ChildNames(kUnit), (std::vector<std::wstring>{L"Ambience", L"Sketches"}));
    EXPECT_EQ(UndoSteps(), 0u);
    HostRef().SetPlayback(false);
    EXPECT_TRUE(m_view->AddParentToItem(N::Folder, nullptr));
    PressKey(VK_ESCAPE);
    EXPECT_EQ(ChildNames(kUnit), std::vector<std::wstring>{L"New Folder"});
}

TEST_F(CreationTest, AFolderOnDiskAroundWorkUnitsIsNamedInPlaceAndStartsTheHistoryAfresh)
{
    At(kAmbience + L"/Rain")->SetName(L"Drizzle");
    ASSERT_EQ(UndoSteps(), 1u);
    Select({kUnit});
    m_dialogs.AnswerNewWorkUnit(L"Zone");
    GUID made = GUID_NULL;
    ASSERT_TRUE(m_view->AddParentToItem(N::PhysicalFolder, &made));
    EXPECT_EQ(ChildNames(L"AudioObjects"), (std::vector<std::wstring>{L"Zone", L"Levels"}));
    EXPECT_EQ(*At(L"AudioObjects/Zone")->GetGUID(), made);
    EXPECT_EQ(ChildNames(L"AudioObjects/Zone"), std::vector<std::wstring>{L"Default Work Unit"});
    ASSERT_TRUE(Editor()) << "unlike a new child, a new physical folder parent is named in place";
    PressKey(VK_ESCAPE);
    EXPECT_EQ(UndoSteps(), 0u) << "moving work units' files clears the history";
    EXPECT_FALSE(HostRef().Undo().CanRedo());
}

TEST_F(CreationTest, AParentFromAPresetStartsWithItsValuesInTheSameStep)
{
    std::vector<IOrbObject*> presets;
    ASSERT_TRUE(IPresetManager::m_pInstance->GetPresets(OrbObjectType_Container, presets));
    m_view->MenuCommands()[MenuCommandIds::NewParentPreset + 3] = {MenuCommandEntry::ParentFromPreset,
                                                                   N::RandomContainer, 0, presets[0]};
    presets[0]->Release();
    Select({kAmbience + L"/Rain"});
    m_view->OnAddNode(MenuCommandIds::NewParentPreset + 3);
    PressKey(VK_ESCAPE);
    EXPECT_EQ(At(kAmbience + L"/New Random Container")->GetProperty("PlayMode"), L"Shuffle");
    EXPECT_EQ(UndoSteps(), 1u);
    EXPECT_EQ(LastUndo(), L"New Parent with Preset");
}
