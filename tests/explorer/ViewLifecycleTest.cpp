// The view's life in the host: built over its categories, loaded and saved per group, painted,
// and leaving nothing behind when it goes.

#include "TreeStateFixture.h"

#include "host/Theme.h"
#include "sonarium/core/host/Theme.h"

#include <fstream>
#include <sstream>

namespace
{
// Enough rows under the audio and the event work units to scroll both.
std::wstring Project()
{
    return L"platform Linux\nAudioObjects\n  Default Work Unit : WorkUnit\n    Ambience : ActorMixer\n" +
           NumberedObjects(L"S", L"SoundSFX", 30, 4) +
           L"Busses\n  Default Work Unit : WorkUnit\n    Master : Bus\nEvents\n  Default Work Unit : "
           L"WorkUnit\n" +
           NumberedObjects(L"E", L"Event", 30, 4);
}
} // namespace

using ViewLifecycleTest = TreeStateTest;

TEST_F(ViewLifecycleTest, RootsFollowTheHostsCategoryOrderAndOnlyTheViewsCategories)
{
    Open(Project());
    // The set orders Busses (2) before AudioObjects (3); the host lists audio first.
    DlgProjectExplorer* mixed = OpenView({OrbObjectCategories::Busses, OrbObjectCategories::AudioObjects});
    // Music has no top work unit in this project: no root and no error.
    DlgProjectExplorer* events = OpenView({OrbObjectCategories::Music, OrbObjectCategories::Events});
    ASSERT_EQ(2u, mixed->RootTreeNodes().size());
    EXPECT_EQ(IdOf(L"AudioObjects"), mixed->RootTreeNodes()[0]->ID());
    EXPECT_EQ(IdOf(L"Busses"), mixed->RootTreeNodes()[1]->ID());
    EXPECT_EQ(ItemOf(mixed, L"Busses"),
              mixed->GetTreeCtrl().GetNextSiblingItem(mixed->GetTreeCtrl().GetRootItem()));
    EXPECT_FALSE(ItemOf(mixed, L"Events"));
    EXPECT_EQ((std::vector<std::wstring>{L"Events", L"  Default Work Unit"}), Rows(events));
}

TEST_F(ViewLifecycleTest, TwoViewsWithDifferentCategoriesAndGroupsEachShowAndSaveOnlyTheirOwn)
{
    OpenStable(Project());
    DlgProjectExplorer* audio = OpenViewInGroup({OrbObjectCategories::AudioObjects}, 0);
    DlgProjectExplorer* mixed =
        OpenViewInGroup({OrbObjectCategories::Events, OrbObjectCategories::Busses}, 1);
    ClickButton(audio, ItemOf(audio, L"AudioObjects/Default Work Unit"));
    audio->GetTreeCtrl().ScrollToRow(5);
    const GUID audioTop = audio->GetGUIDOfItem(FirstVisible(audio));
    ClickButton(mixed, ItemOf(mixed, L"Events/Default Work Unit"));
    mixed->GetTreeCtrl().SelectSetFirstVisible(ItemOf(mixed, L"Busses/Default Work Unit"));
    EXPECT_FALSE(ItemOf(mixed, L"AudioObjects"));
    EXPECT_FALSE(ItemOf(audio, L"Events"));
    CloseView(audio);
    CloseView(mixed);

    EXPECT_EQ(std::vector<GUID>{IdOf(L"AudioObjects/Default Work Unit")}, StoredGuids(L"Expanded_3_0"));
    EXPECT_EQ(std::vector<GUID>{IdOf(L"Events/Default Work Unit")}, StoredGuids(L"Expanded_4_1"));
    EXPECT_EQ(std::vector<GUID>{}, StoredGuids(L"Expanded_2_1"));
    EXPECT_EQ(audioTop, StoredGuid(L"FirstVisible_3_0"));
    // The scroll key takes the smallest category of the view, not that of its first root.
    EXPECT_EQ(IdOf(L"Busses/Default Work Unit"), StoredGuid(L"FirstVisible_2_1"));
    for (const wchar_t* foreign : {L"Expanded_3_1", L"Expanded_4_0", L"Expanded_2_0"})
        EXPECT_FALSE(StoredGuids(foreign)) << "a view wrote another view's key";
    EXPECT_EQ(GUID_NULL, StoredGuid(L"FirstVisible_4_1"));

    // The same categories in another group start from that group's state.
    DlgProjectExplorer* other = OpenViewInGroup({OrbObjectCategories::AudioObjects}, 1);
    EXPECT_FALSE(IsExpanded(other, ItemOf(other, L"AudioObjects/Default Work Unit")));
    EXPECT_EQ(other->GetTreeCtrl().GetRootItem(), FirstVisible(other));
    DlgProjectExplorer* again = OpenViewInGroup({OrbObjectCategories::AudioObjects}, 0);
    EXPECT_TRUE(IsExpanded(again, ItemOf(again, L"AudioObjects/Default Work Unit")));
    EXPECT_EQ(audioTop, again->GetGUIDOfItem(FirstVisible(again)));
}

TEST_F(ViewLifecycleTest, ViewsThatWereNeverLoadedOrShowNothingWriteNoState)
{
    Open(Project());
    DlgProjectExplorer* unloaded = OpenView({OrbObjectCategories::AudioObjects}, false);
    ClickButton(unloaded, ItemOf(unloaded, L"AudioObjects/Default Work Unit"));
    DlgProjectExplorer* empty = OpenView({});
    EXPECT_EQ(0u, empty->GetTreeCtrl().GetCount());
    CloseView(unloaded);
    CloseView(empty);

    std::stringstream text;
    text << std::ifstream(m_dir / "preferences.json").rdbuf();
    EXPECT_EQ(std::string::npos, text.str().find("Expanded_")) << text.str();
    EXPECT_EQ(std::string::npos, text.str().find("FirstVisible_")) << text.str();
}

TEST_F(ViewLifecycleTest, TheTreeTakesTheThemeColoursAtTheNextErase)
{
    struct LightAgain
    {
        ~LightAgain() { sn::theme::Load(sn::theme::Scheme::Light); }
    } restore;
    Open(Project());
    DlgProjectExplorer* view = OpenView({OrbObjectCategories::AudioObjects});
    PETreeCtrl& tree = view->GetTreeCtrl();
    CRect rect;
    tree.GetWindowRect(&rect);
    view->ScreenToClient(&rect);
    EXPECT_EQ(20, rect.top) << "the toolbar band";

    view->SendMessage(WM_ERASEBKGND, 0, 0);
    const COLORREF light = sn::theme::Color("Explorer_BackgroundColor");
    EXPECT_EQ(light, tree.GetBkColor());
    EXPECT_EQ(COLORREF(sn::theme::Color("Explorer_NormalText")), tree.GetTextColor());
    sn::theme::Load(sn::theme::Scheme::Dark);
    EXPECT_EQ(light, tree.GetBkColor());
    view->SendMessage(WM_ERASEBKGND, 0, 0);
    EXPECT_NE(light, tree.GetBkColor());
    EXPECT_EQ(COLORREF(sn::theme::Color("Explorer_BackgroundColor")), tree.GetBkColor());
}

TEST_F(ViewLifecycleTest, AClosedViewLeavesNoSubscriberBehind)
{
    Open(Project());
    std::vector<ROString> channels{MusicNotify::rosInteractiveMusic};
    for (const char* name : {"Project", "SonariumObject", "WorkUnit", "SourceControl", "EditingManager",
                             "Conversion", "Clipboard", "__PEDROPTARGET__"})
        channels.emplace_back(name);
    auto counts = [&]
    {
        std::vector<size_t> result;
        for (const ROString& channel : channels)
            result.push_back(HostRef().Notifications().SubscriberCount(channel));
        return result;
    };
    const std::vector<size_t> before = counts();
    std::vector<size_t> subscribed = before;
    for (size_t& count : subscribed)
        ++count;
    DlgProjectExplorer* view = OpenView({OrbObjectCategories::AudioObjects});
    EXPECT_EQ(subscribed, counts());
    CloseView(view);
    EXPECT_EQ(before, counts());

    // A freed view must not hear of property changes or of the project closing.
    {
        UILock lock;
        HostRef().SetLanguage(2);
    }
    HostRef().CloseProject();
    WindowSystem::Get().RunUntilIdle();
}
