// Revealing objects that other panes ask a view to show: the path opened down to them, the
// selection replaced by them, and the (last) one scrolled into view.

#include "TreeStateFixture.h"

#include "sonarium/core/model/ProjectEdit.h"

namespace
{
const wchar_t* kThunder = L"AudioObjects/Default Work Unit/Ambience/Weather/Storms/Thunder";
const wchar_t* kS02 = L"AudioObjects/Default Work Unit/S02";
const wchar_t* kDoor = L"AudioObjects/Props/Door";
const wchar_t* kPlay = L"Events/Default Work Unit/Play_Thunder";
} // namespace

class FindObjectTest : public TreeStateTest
{
protected:
    void SetUp() override
    {
        TreeStateTest::SetUp();
        Open(L"platform Linux\nAudioObjects\n  Default Work Unit : WorkUnit\n" +
             NumberedObjects(L"S", L"SoundSFX", 30, 4) +
             L"    Ambience : ActorMixer\n      Weather : ActorMixer\n        Storms : RandomContainer\n"
             L"          Thunder : SoundSFX\n            Thunder.wav : AudioSource\n"
             L"  Props : WorkUnit\n    Door : SoundSFX\nEvents\n  Default Work Unit : WorkUnit\n" +
             NumberedObjects(L"E", L"Event", 5, 4) + L"    Play_Thunder : Event\n" +
             L"      Play : EventAction | Target=@" + kThunder + L"\n");
    }

    std::vector<GUID> Selection(DlgProjectExplorer* view)
    {
        std::vector<HTREEITEM> items;
        view->GetTreeCtrl().GetSelectedList(items);
        std::vector<GUID> ids;
        for (HTREEITEM item : items)
            ids.push_back(view->GetGUIDOfItem(item));
        return ids;
    }
};

TEST_F(FindObjectTest, ADeepObjectInACollapsedWorkUnitIsOpenedDownToSelectedAndScrolledTo)
{
    DlgProjectExplorer* view = OpenView({OrbObjectCategories::AudioObjects, OrbObjectCategories::Events});
    ClickRow(view, L"AudioObjects/Props");
    view->FindOrbObject(At(kThunder));
    for (std::wstring path = kThunder; path != L"AudioObjects";)
    {
        path.erase(path.rfind(L'/'));
        EXPECT_TRUE(IsExpanded(view, ItemOf(view, path))) << Utf8::FromWide(path);
    }
    EXPECT_EQ(std::vector<GUID>{IdOf(kThunder)}, Selection(view)) << "the earlier selection was kept";
    EXPECT_TRUE(IsInView(view, ItemOf(view, kThunder)));
    EXPECT_GT(view->GetTreeCtrl().GetScrollRow(), 0);

    // What has no row of its own is shown by its holder: a source by its sound, an action by its event.
    view->FindOrbObject(At(kThunder + std::wstring(L"/Thunder.wav")));
    EXPECT_EQ(std::vector<GUID>{IdOf(kThunder)}, Selection(view));
    view->FindOrbObject(At(kPlay + std::wstring(L"/Play")));
    EXPECT_EQ(std::vector<GUID>{IdOf(kPlay)}, Selection(view));
    EXPECT_TRUE(IsInView(view, ItemOf(view, kPlay)));
    EXPECT_TRUE(view->GetTreeCtrl().IsRedrawEnabled());
}

TEST_F(FindObjectTest, AListIsRevealedAcrossWorkUnitsWithTheLastOneScrolledTo)
{
    DlgProjectExplorer* view = OpenView({OrbObjectCategories::AudioObjects, OrbObjectCategories::Events});
    ClickRow(view, L"AudioObjects/Default Work Unit");
    std::vector<IOrbObject*> objects{At(kDoor), At(kS02), At(kPlay)};
    view->FindOrbObject(objects);
    EXPECT_EQ((std::vector<GUID>{IdOf(kS02), IdOf(kDoor), IdOf(kPlay)}), Selection(view));
    EXPECT_TRUE(IsInView(view, ItemOf(view, kPlay)));
    EXPECT_FALSE(IsInView(view, ItemOf(view, kS02)));

    // A work unit in the list is itself selected.
    objects = {At(kPlay), At(L"AudioObjects/Props")};
    view->FindOrbObject(objects);
    EXPECT_EQ((std::vector<GUID>{IdOf(L"AudioObjects/Props"), IdOf(kPlay)}), Selection(view));
    EXPECT_TRUE(IsInView(view, ItemOf(view, L"AudioObjects/Props")));

    // An empty list clears the selection and scrolls nothing.
    const int scroll = view->GetTreeCtrl().GetScrollRow();
    objects.clear();
    view->FindOrbObject(objects);
    EXPECT_TRUE(Selection(view).empty());
    EXPECT_EQ(scroll, view->GetTreeCtrl().GetScrollRow());

    // Objects outside the view are skipped; when the last one is, nothing scrolls.
    DlgProjectExplorer* audio = OpenView({OrbObjectCategories::AudioObjects});
    const GUID top = audio->GetGUIDOfItem(FirstVisible(audio));
    objects = {At(L"AudioObjects/Default Work Unit/S29"), At(kPlay)};
    audio->FindOrbObject(objects);
    EXPECT_EQ(std::vector<GUID>{IdOf(L"AudioObjects/Default Work Unit/S29")}, Selection(audio));
    EXPECT_EQ(top, audio->GetGUIDOfItem(FirstVisible(audio))) << "scrolled to a skipped object";
    EXPECT_TRUE(audio->GetTreeCtrl().IsRedrawEnabled());
}

TEST_F(FindObjectTest, AListRevealsDeepObjectsThroughEveryCollapsedLevel)
{
    DlgProjectExplorer* view = OpenView({OrbObjectCategories::AudioObjects, OrbObjectCategories::Events});
    const std::wstring rain = L"AudioObjects/Default Work Unit/Ambience/Weather/Rain";
    sn::ProjectObject* weather = At(L"AudioObjects/Default Work Unit/Ambience/Weather");
    ASSERT_TRUE(sn::ProjectEdit::Create(weather, PMTreeNode::SoundSFX, L"Rain"));
    std::vector<IOrbObject*> objects{At(rain), At(kThunder)};
    view->FindOrbObject(objects);
    EXPECT_EQ((std::vector<GUID>{IdOf(kThunder), IdOf(rain)}), Selection(view));
    for (std::wstring path : {L"AudioObjects/Default Work Unit", L"AudioObjects/Default Work Unit/Ambience",
                              L"AudioObjects/Default Work Unit/Ambience/Weather",
                              L"AudioObjects/Default Work Unit/Ambience/Weather/Storms"})
        EXPECT_TRUE(IsExpanded(view, ItemOf(view, path))) << Utf8::FromWide(path);
    EXPECT_TRUE(IsInView(view, ItemOf(view, kThunder)));

    // Marks are set on the node model, not only on the rows: a refill shows the same.
    view->RefreshTree(true);
    EXPECT_TRUE(IsExpanded(view, ItemOf(view, L"AudioObjects/Default Work Unit/Ambience/Weather/Storms")));
}
