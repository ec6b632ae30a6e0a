// What a view tells the host about its selection (event viewer, transport, inspector) and how
// it answers clicks and keys.

#include "ExplorerFixture.h"

#include "host/HostMessages.h"
#include "host/UserPreferences.h"
#include "sonarium/core/model/ModelNotify.h"

namespace
{
const wchar_t* kProject = LR"(
platform Linux
AudioObjects
  Default Work Unit : WorkUnit
    Ambience : ActorMixer
      Rain : SoundSFX
      Thunder : SoundSFX
      Wind : SoundSFX
SoundBanks
  Default Work Unit : WorkUnit
    Init : SoundBank
)";

const std::wstring kAmbience = L"AudioObjects/Default Work Unit/Ambience";
const std::wstring kRain = kAmbience + L"/Rain";
const std::wstring kThunder = kAmbience + L"/Thunder";
const std::wstring kWind = kAmbience + L"/Wind";
const std::wstring kInit = L"SoundBanks/Default Work Unit/Init";

using Lines = std::vector<std::string>;
const Lines kNothing;
} // namespace

class SelectionTest : public ExplorerTest
{
protected:
    void SetUp() override
    {
        ExplorerTest::SetUp();
        Open(kProject);
    }

    static void InspectOnSingleClick(bool inspect)
    {
        IUserPreferences::Get()->SetIntValue(L"Preferences", L"InspectOnSingleClick", inspect ? 1 : 0);
    }

    // A click below the last row, where there is no item.
    static void ClickOnEmptySpace(DlgProjectExplorer* view)
    {
        CRect client;
        view->GetTreeCtrl().GetClientRect(&client);
        view->GetTreeCtrl().Click(CPoint(5, client.bottom - 5), 0);
    }

    // What the host heard once the view's posted messages ran.
    Lines HeardAfterIdle()
    {
        WindowSystem::Get().RunUntilIdle();
        return m_ears->Take();
    }

    // A view whose opening the host's listeners did not hear.
    template <class View = DlgProjectExplorer>
    View* OpenQuietView(std::set<OrbObjectCategories::Category> categories)
    {
        View* view = OpenView<View>(std::move(categories));
        m_ears = std::make_unique<HostEars>();
        return view;
    }

    void TearDown() override
    {
        m_ears.reset();
        ExplorerTest::TearDown();
    }

    std::unique_ptr<HostEars> m_ears;
};

TEST_F(SelectionTest, ARangeSelectionIsAnnouncedAndInspectedOncePerGesture)
{
    DlgProjectExplorer* view = OpenQuietView({OrbObjectCategories::AudioObjects});
    Reveal(view, kWind);

    ClickOn(view, kRain);
    EXPECT_EQ(HeardAfterIdle(),
              (Lines{"EventViewer/ObjectsList Rain", "SonariumObject/PlayInPrimaryTransport Rain"}))
        << "the view's first selection is not inspected";

    ClickOn(view, kWind, MK_SHIFT);
    EXPECT_EQ(HeardAfterIdle(),
              (Lines{"EventViewer/ObjectsList Wind,Rain,Thunder", "Inspector/Inspect Wind,Rain,Thunder"}))
        << "focused object first, one announcement and one inspection for three changes";

    // A press inside the selection narrows it on release, still one of each.
    ClickOn(view, kThunder);
    EXPECT_EQ(HeardAfterIdle(),
              (Lines{"EventViewer/ObjectsList Thunder", "SonariumObject/PlayInPrimaryTransport Thunder",
                     "Inspector/Inspect Thunder"}));

    // While the tree defers inspection (a drag under way), the end of a batch inspects nothing.
    view->GetTreeCtrl().SetInspectionDeferred(true);
    ClickOn(view, kRain, MK_SHIFT);
    EXPECT_EQ(HeardAfterIdle(), (Lines{"EventViewer/ObjectsList Rain,Thunder"}));

    view->GetTreeCtrl().SetInspectionDeferred(false);
    ClickOn(view, kWind);
    EXPECT_EQ(HeardAfterIdle(),
              (Lines{"EventViewer/ObjectsList Wind", "SonariumObject/PlayInPrimaryTransport Wind",
                     "Inspector/Inspect Wind"}));
}

TEST_F(SelectionTest, TheEventViewerGetsEligibleSelectionsAndTheTransportSingleObjects)
{
    InspectOnSingleClick(false);
    DlgProjectExplorer* view =
        OpenQuietView({OrbObjectCategories::AudioObjects, OrbObjectCategories::SoundBanks});
    PETreeCtrl& tree = view->GetTreeCtrl();

    ClickOn(view, kRain);
    HeardAfterIdle();
    ClickOn(view, kInit, MK_CONTROL);
    EXPECT_EQ(HeardAfterIdle(), kNothing)
        << "a bank makes the selection ineligible; two objects are not played";
    ClickOn(view, kInit);
    EXPECT_EQ(HeardAfterIdle(), (Lines{"SonariumObject/PlayInPrimaryTransport Init"}));

    ClickOnEmptySpace(view);
    ASSERT_EQ(0u, tree.GetSelectedCount());
    EXPECT_EQ(HeardAfterIdle(), (Lines{"Transport/TransportPrimaryDisable"}));

    tree.SetTransportClearedOnEmptySelection(false);
    ClickOn(view, kRain);
    HeardAfterIdle();
    ClickOnEmptySpace(view);
    EXPECT_EQ(HeardAfterIdle(), kNothing);
}

TEST_F(SelectionTest, HiddenViewsAndViewsBarredFromTheTransportStayQuiet)
{
    InspectOnSingleClick(false);
    DlgProjectExplorer* view = OpenQuietView({OrbObjectCategories::AudioObjects});
    ClickOn(view, kRain);
    HeardAfterIdle();

    view->ShowWindow(SW_HIDE);
    ClickOn(view, kWind);
    EXPECT_EQ(HeardAfterIdle(), kNothing);
    view->ShowWindow(SW_SHOW);
    ClickOn(view, kRain);
    EXPECT_EQ(HeardAfterIdle(),
              (Lines{"EventViewer/ObjectsList Rain", "SonariumObject/PlayInPrimaryTransport Rain"}))
        << "the hidden view's announcement does not stay pending";

    m_main.allowTransport = false;
    ClickOn(view, kWind);
    EXPECT_EQ(HeardAfterIdle(), (Lines{"EventViewer/ObjectsList Wind"}));
    ClickOnEmptySpace(view);
    EXPECT_EQ(HeardAfterIdle(), kNothing);
}

TEST_F(SelectionTest, DoubleClicksInspectFromTheLabelOnlyAndNeverToggleTheItem)
{
    InspectOnSingleClick(false);
    DlgProjectExplorer* view = OpenQuietView({OrbObjectCategories::AudioObjects});
    PETreeCtrl& tree = view->GetTreeCtrl();
    const HTREEITEM ambience = Reveal(view, kAmbience);
    ASSERT_TRUE(tree.ItemHasChildren(ambience));

    tree.DoubleClick(LabelCenter(view, ambience), 0);
    EXPECT_FALSE(tree.GetItemState(ambience, TVIS_EXPANDED));
    EXPECT_EQ(HeardAfterIdle(),
              (Lines{"EventViewer/ObjectsList Ambience", "SonariumObject/PlayInPrimaryTransport Ambience",
                     "Inspector/Inspect Ambience (double click)"}));

    const RECT button = tree.GetRow(ambience).button;
    const UINT expanded = tree.GetItemState(ambience, TVIS_EXPANDED);
    tree.DoubleClick(CPoint((button.left + button.right) / 2, (button.top + button.bottom) / 2), 0);
    EXPECT_EQ(HeardAfterIdle(), kNothing) << "the expand button is not the object";
    EXPECT_EQ(tree.GetItemState(ambience, TVIS_EXPANDED), expanded)
        << "toggled by each press, back as it was";

    // An inspection still queued when the focus leaves the view is dropped.
    tree.DoubleClick(LabelCenter(view, Reveal(view, kRain)), 0);
    m_main.SetFocus();
    EXPECT_EQ(HeardAfterIdle(),
              (Lines{"EventViewer/ObjectsList Rain", "SonariumObject/PlayInPrimaryTransport Rain"}));
}

TEST_F(SelectionTest, KeysActOnASingleSelectionOnly)
{
    InspectOnSingleClick(false);
    auto* view = OpenQuietView<EditableView>({OrbObjectCategories::AudioObjects});
    PETreeCtrl& tree = view->GetTreeCtrl();
    const HTREEITEM wind = Reveal(view, kWind);
    ClickOn(view, kRain);
    ClickOn(view, kWind, MK_CONTROL);
    HeardAfterIdle();

    tree.KeyPress(VK_F2, 0);
    tree.KeyPress(VK_RETURN, 0);
    EXPECT_TRUE(view->edited.empty());
    EXPECT_EQ(m_ears->Take(), kNothing);

    // Alt+Down forwarded by the host keeps the focused item alone.
    MSG key{};
    key.message = WM_KEYDOWN;
    key.wParam = VK_DOWN;
    WindowSystem::Get().SetKeyDown(VK_MENU, true);
    view->SendMessage(HostMessages::ForwardedKey, reinterpret_cast<WPARAM>(&key), 0);
    WindowSystem::Get().SetKeyDown(VK_MENU, false);
    std::vector<HTREEITEM> selected;
    tree.GetSelectedList(selected);
    EXPECT_EQ(selected, std::vector<HTREEITEM>{wind});

    tree.KeyPress(VK_RETURN, 0);
    EXPECT_EQ(m_ears->Take(), (Lines{"Inspector/Inspect Wind (double click)"}))
        << "Enter counts as a double click";
    tree.KeyPress(VK_F2, 0);
    EXPECT_EQ(view->edited, std::vector<HTREEITEM>{wind});
    tree.KeyPress(VK_ESCAPE, 0);

    tree.KeyPress(VK_F5, 0);
    EXPECT_FALSE(tree.IsItemValid(wind)) << "F5 rebuilds the tree";
}

TEST_F(SelectionTest, ClosingTheProjectEmptiesTheTreeAndAnnouncesTheEmptySelection)
{
    DlgProjectExplorer* view = OpenQuietView({OrbObjectCategories::AudioObjects});
    ClickOn(view, kRain);
    HeardAfterIdle();

    // Subscribed after the view, so it sees the tree as the view left it.
    struct CloseWatch
    {
        DlgProjectExplorer* view;
        HostEars* ears;
        UINT rows = 99;
        Lines heard{};
        void OnProject(CNotifyItemBase* item)
        {
            if (std::string(item->pData->event.c_str()) != "Pre_Close")
                return;
            rows = view->GetTreeCtrl().GetCount();
            heard = ears->Take();
        }
    } watch{view, m_ears.get(), 99, {}};
    const ROString project("Project");
    INotifyMgr::m_pInstance->Register(project, NotifyDelegate(&watch, &CloseWatch::OnProject));
    HostRef().CloseProject();
    INotifyMgr::m_pInstance->UnRegister(project, NotifyDelegate(&watch, &CloseWatch::OnProject));

    EXPECT_EQ(0u, watch.rows);
    EXPECT_EQ(watch.heard, (Lines{"Transport/TransportPrimaryDisable"}));
}
