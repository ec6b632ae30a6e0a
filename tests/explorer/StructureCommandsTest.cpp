// Deleting the selection and the row selected afterwards, expanding and collapsing whole
// subtrees, and including, excluding and linking the selection on the current platform.

#include "ExplorerFixture.h"

#include "explorer/menu/MenuCommandIds.h"
#include "sonarium/core/model/ProjectEdit.h"

namespace
{
const wchar_t* kProject = LR"(
platform Desktop
platform Console
AudioObjects
  Default Work Unit : WorkUnit
    Ambience : ActorMixer
      Rain : SoundSFX
        rain.wav : AudioSource
      Thunder : SoundSFX
      Wind : SoundSFX
    Weather : Folder
      Storm : RandomContainer
        Gust : SoundSFX
    Lonely : ActorMixer
      Only : SoundSFX
Events
  Default Work Unit : WorkUnit
    Play_Thunder : Event
      Play : EventAction | Target=@AudioObjects/Default Work Unit/Ambience/Thunder
)";

const std::wstring kUnit = L"AudioObjects/Default Work Unit";
const std::wstring kAmbience = kUnit + L"/Ambience";
const std::wstring kWeather = kUnit + L"/Weather";
const std::wstring kLonely = kUnit + L"/Lonely";
const std::wstring kAction = L"Events/Default Work Unit/Play_Thunder/Play";
} // namespace

class StructureCommandsTest : public ExplorerTest
{
protected:
    void SetUp() override
    {
        ExplorerTest::SetUp();
        Open(kProject);
        m_view = OpenView({OrbObjectCategories::AudioObjects});
    }

    void Select(std::initializer_list<std::wstring> paths) { SelectRows(m_view, paths); }

    void Delete()
    {
        m_view->SendMessage(HostMessages::DeleteObject, 0, 0);
        WindowSystem::Get().RunUntilIdle();
    }

    // The selected rows' texts, the focused one marked with "*".
    std::vector<std::wstring> Selection()
    {
        PETreeCtrl& tree = m_view->GetTreeCtrl();
        std::vector<std::wstring> rows;
        for (int row = 0; row < tree.GetRowCount(); ++row)
            if (HTREEITEM item = tree.GetRowItem(row); tree.IsSelected(item))
                rows.push_back(tree.GetItemText(item) + (item == tree.GetFocusedItem() ? L"*" : L""));
        return rows;
    }

    long long Lock() { return GlobalPropMgr::m_pInstance->Prop(sn::propLockUIUpdate, 3, 1).GetInt(); }

    DlgProjectExplorer* m_view = nullptr;
};

TEST_F(StructureCommandsTest, DeletingLandsOnTheNextRowThePreviousOneOrTheParent)
{
    using V = std::vector<std::wstring>;
    Select({kAmbience + L"/Rain"});
    Delete();
    EXPECT_EQ(V{L"Thunder*"}, Selection()) << "a middle row: the one below";
    EXPECT_EQ(nullptr, sn::FindByPath(*HostRef().GetProject(), kAmbience + L"/Rain"));

    Select({kAmbience + L"/Wind"});
    Delete();
    EXPECT_EQ(V{L"Thunder*"}, Selection()) << "the bottom row: the one above";

    Select({kLonely + L"/Only"});
    Delete();
    EXPECT_EQ(V{L"Lonely*"}, Selection()) << "an only child: its parent";
    EXPECT_EQ(0, Lock());
}

TEST_F(StructureCommandsTest, AFolderDeletedWithItsChildGoesOnceAndUndoBringsBothBack)
{
    sn::ProjectObject* storm = At(kWeather + L"/Storm");
    const GUID stormId = storm->Id();
    Reveal(m_view, kWeather + L"/Storm/Gust");
    Select({kWeather + L"/Storm/Gust", kWeather});
    const size_t steps = HostRef().Undo().UndoCount();
    Delete();
    EXPECT_EQ(steps + 1, HostRef().Undo().UndoCount()) << "one undo step";
    EXPECT_EQ(nullptr, sn::FindByPath(*HostRef().GetProject(), kWeather));

    HostRef().Undo().Undo();
    WindowSystem::Get().RunUntilIdle();
    EXPECT_EQ(storm, HostRef().GetProject()->Find(stormId)) << "the same objects, with their GUIDs";
    EXPECT_TRUE(At(kWeather + L"/Storm/Gust"));
    EXPECT_TRUE(ItemOf(m_view, kWeather)) << "the tree shows them again";
}

TEST_F(StructureCommandsTest, WhatOthersReferToIsDeletedOnlyWhenTheUserSaysSo)
{
    Select({kAmbience + L"/Thunder", kAmbience + L"/Rain"});
    const std::wstring target = At(kAction)->GetProperty("Target");

    m_dialogs.AnswerMessageBox(IDNO);
    Delete();
    ASSERT_EQ(1u, m_dialogs.Records().size());
    EXPECT_NE(std::wstring::npos, m_dialogs.Records()[0].text.find(L"\"Play_Thunder / Play\" (Target) refers to \"Thunder\""));
    EXPECT_TRUE(At(kAmbience + L"/Thunder")) << "refused: nothing deleted";
    EXPECT_TRUE(At(kAmbience + L"/Rain"));
    EXPECT_EQ((std::vector<std::wstring>{L"Rain*", L"Thunder"}), Selection()) << "and the selection stays";

    m_dialogs.AnswerMessageBox(IDYES);
    Delete();
    EXPECT_EQ(nullptr, sn::FindByPath(*HostRef().GetProject(), kAmbience + L"/Thunder"));
    EXPECT_EQ(L"", At(kAction)->GetProperty("Target")) << "the action no longer names it";
    EXPECT_EQ(L"Delete", HostRef().Undo().GetUndoName());

    HostRef().Undo().Undo();
    EXPECT_EQ(target, At(kAction)->GetProperty("Target"));
    EXPECT_EQ(At(kAmbience + L"/Thunder")->Id(), *GuidText::FromString(Utf8::FromWide(target)));
}

TEST_F(StructureCommandsTest, NothingIsDeletedWhenOneRowCannotBe)
{
    Select({L"AudioObjects", kAmbience + L"/Rain"});
    const size_t objects = HostRef().GetProject()->ObjectCount();
    Delete();
    EXPECT_EQ(objects, HostRef().GetProject()->ObjectCount()) << "a category's work unit stays, and so does Rain";
    EXPECT_EQ(0, Lock()) << "the lock raised around the test is lowered";
}

TEST_F(StructureCommandsTest, DescendantsExpandFromEachSelectedRowAndCollapseFromTheLast)
{
    Select({kAmbience, kWeather});
    m_view->OnExpandDescendants();
    EXPECT_EQ((std::vector<std::wstring>{L"Audio Objects", L"  Default Work Unit", L"    Ambience", L"      Rain",
                                         L"      Thunder", L"      Wind", L"    Weather", L"      Storm",
                                         L"        Gust", L"    Lonely"}),
              Rows(m_view));
    EXPECT_EQ((std::vector<std::wstring>{L"Ambience*", L"Weather"}), Selection())
        << "the rebuilt tree keeps the selection, the focus on the first selected row";

    m_view->OnCollapseDescendants();
    EXPECT_EQ((std::vector<std::wstring>{L"Audio Objects", L"  Default Work Unit", L"    Ambience", L"    Weather",
                                         L"    Lonely"}),
              Rows(m_view));
    // Collapsed below too: expanding one level shows the children closed.
    Select({kWeather});
    m_view->Expand(true, false);
    EXPECT_EQ(L"      Storm", Rows(m_view)[4]);
    EXPECT_EQ(5u + 1u, Rows(m_view).size());
}

TEST_F(StructureCommandsTest, AMixedSelectionShowsNoMarkAndIsIncludedInOneStep)
{
    sn::ProjectEdit::SetIncluded(At(kAmbience + L"/Rain"), GUID_NULL, false);
    HostRef().Undo().Clear();
    Select({kAmbience + L"/Rain", kAmbience + L"/Wind"});
    EXPECT_EQ(0u, m_view->IsIncluded());
    EXPECT_EQ(MenuCommandIds::LinkInclusion, m_view->IsInclusionLinked());

    m_view->OnCheckSelection();
    EXPECT_EQ(MenuCommandIds::IncludeSelection, m_view->IsIncluded());
    EXPECT_EQ(1u, HostRef().Undo().UndoCount()) << "one step for the whole selection";
    EXPECT_EQ(L"Inclusion", HostRef().Undo().GetUndoName()) << "named after its first change";
    EXPECT_EQ(0, Lock());

    m_view->OnUncheckSelection();
    EXPECT_EQ(MenuCommandIds::ExcludeSelection, m_view->IsIncluded());
    HostRef().Undo().Undo();
    EXPECT_EQ(MenuCommandIds::IncludeSelection, m_view->IsIncluded()) << "undo reverts both at once";
}

TEST_F(StructureCommandsTest, MarksFollowThePlatformAndExcludedRowsAreDrawnExcluded)
{
    const GUID desktop = HostRef().GetProject()->Platforms()[0].id;
    const GUID console = HostRef().GetProject()->Platforms()[1].id;
    Select({kAmbience});
    HostRef().SetPlatform(console);
    m_view->OnUnLinkInclusion();
    m_view->OnUncheckSelection();
    WindowSystem::Get().RunUntilIdle();
    EXPECT_EQ(MenuCommandIds::ExcludeSelection, m_view->IsIncluded());
    EXPECT_EQ(MenuCommandIds::UnlinkInclusion, m_view->IsInclusionLinked());
    PETreeCtrl& tree = m_view->GetTreeCtrl();
    auto excluded = [&](const std::wstring& path) { return tree.GetNodeFromItem(ItemOf(m_view, path))->IsExcludedOnCurrentPlatform(); };
    Reveal(m_view, kAmbience + L"/Rain");
    EXPECT_TRUE(excluded(kAmbience));
    EXPECT_TRUE(excluded(kAmbience + L"/Rain")) << "what it holds goes with it";

    const sn::ProjectObject* ambience = At(kAmbience);
    HostRef().SetPlatform(desktop);
    WindowSystem::Get().RunUntilIdle();
    EXPECT_EQ(MenuCommandIds::IncludeSelection, m_view->IsIncluded()) << "another platform: another mark";
    EXPECT_FALSE(excluded(kAmbience));
    EXPECT_TRUE(ambience->IsIncludedOnPlatform(desktop, 0));
    EXPECT_FALSE(ambience->IsIncludedOnPlatform(console, 0)) << "and no object changed for it";
}

TEST_F(StructureCommandsTest, DuringPlaybackLinkWorksWhileIncludeDoesNothing)
{
    Select({kAmbience + L"/Rain"});
    m_view->OnUnLinkInclusion();
    m_view->OnUncheckSelection();
    const size_t steps = HostRef().Undo().UndoCount();
    HostRef().SetPlayback(true);
    m_view->OnCheckSelection();
    EXPECT_EQ(MenuCommandIds::ExcludeSelection, m_view->IsIncluded());
    EXPECT_EQ(steps, HostRef().Undo().UndoCount()) << "not even an empty step";
    m_view->OnLinkInclusion();
    EXPECT_EQ(MenuCommandIds::LinkInclusion, m_view->IsInclusionLinked());
    EXPECT_EQ(0, Lock());
}
