// How a view follows the host's changes: what it refreshes, when, and what it leaves alone.

#include "ExplorerFixture.h"

#include "host/ObjectIcons.h"
#include "sonarium/core/model/ModelNotify.h"
#include "sonarium/core/model/ProjectEdit.h"
#include "sonarium/core/nodes/ProjectNode.h"

namespace
{
const wchar_t* kProject = LR"(
platform Linux
platform Windows
AudioObjects
  Default Work Unit : WorkUnit
    Ambience : ActorMixer
      Rain : SoundSFX | exclude=Windows
        rain.wav : AudioSource
        rain_soft.wav : AudioSource
      Wind : SoundSFX
Events
  Default Work Unit : WorkUnit
    Play_Rain : Event
Music
  Default Work Unit : WorkUnit
    Theme : MusicSegment
      Drums : MusicTrack
)";

const std::wstring kAmbience = L"AudioObjects/Default Work Unit/Ambience";
const std::wstring kRain = kAmbience + L"/Rain";
const std::wstring kWind = kAmbience + L"/Wind";
const std::wstring kPlayRain = L"Events/Default Work Unit/Play_Rain";
const std::wstring kDrums = L"Music/Default Work Unit/Theme/Drums";

namespace Edit = sn::ProjectEdit;
using Lines = std::vector<std::string>;
} // namespace

class NotificationsTest : public ExplorerTest
{
protected:
    void SetUp() override
    {
        ExplorerTest::SetUp();
        Open(kProject);
    }

    GUID PlatformNamed(const wchar_t* name)
    {
        for (const sn::Platform& platform : HostRef().GetProject()->Platforms())
            if (platform.name == name)
                return platform.id;
        ADD_FAILURE() << "no platform";
        return GUID_NULL;
    }

    static void Idle() { WindowSystem::Get().RunUntilIdle(); }
};

TEST_F(NotificationsTest, NamesAndInclusionChangedUnderTheLockAreAppliedOnceAtUnlock)
{
    DlgProjectExplorer* view = OpenView({OrbObjectCategories::AudioObjects});
    PETreeCtrl& tree = view->GetTreeCtrl();
    HostEars ears;
    const HTREEITEM wind = Reveal(view, kWind);
    ClickOn(view, kRain);
    const HTREEITEM rain = ItemOf(view, kRain);
    Idle();
    ears.Take();

    {
        UILock outer;
        {
            UILock inner;
            ASSERT_TRUE(Edit::Rename(At(kRain), L"Drizzle"));
            ASSERT_TRUE(Edit::Rename(At(kAmbience + L"/Drizzle"), L"Shower"));
            Edit::SetIncluded(At(kWind), GUID_NULL, false);
        }
        Idle();
        EXPECT_EQ(L"Rain", tree.GetItemText(rain)) << "still locked by the outer operation";
        EXPECT_FALSE(tree.GetRow(wind).excluded);
        EXPECT_TRUE(ears.Take().empty());
    }
    EXPECT_TRUE(tree.IsItemValid(rain) && tree.IsItemValid(wind)) << "names and inclusion need no rebuild";
    EXPECT_EQ(L"Shower", tree.GetItemText(rain));
    EXPECT_TRUE(tree.GetRow(wind).excluded);
    Idle();
    EXPECT_EQ(ears.Take(),
              (Lines{"EventViewer/ObjectsList Shower", "SonariumObject/PlayInPrimaryTransport Shower"}))
        << "one refresh, announced once";

    // A structural change in the same lock rebuilds the tree.
    {
        UILock lock;
        Edit::Rename(At(kAmbience + L"/Shower"), L"Storm");
        ASSERT_TRUE(Edit::Create(At(kAmbience), PMTreeNode::SoundSFX, L"Thunder"));
        EXPECT_FALSE(ItemOf(view, kAmbience + L"/Thunder"));
    }
    EXPECT_FALSE(tree.IsItemValid(rain));
    EXPECT_TRUE(ItemOf(view, kAmbience + L"/Thunder"));
    EXPECT_EQ(L"Storm", tree.GetItemText(ItemOf(view, kAmbience + L"/Storm"))) << "the rebuild shows the new name";
}

TEST_F(NotificationsTest, DuringALabelEditOnlyTheStructuralRefreshIsKept)
{
    auto* view = OpenView<EditableView>({OrbObjectCategories::AudioObjects});
    PETreeCtrl& tree = view->GetTreeCtrl();
    const HTREEITEM wind = Reveal(view, kWind);
    ClickOn(view, kAmbience);
    tree.KeyPress(VK_F2, 0);
    ASSERT_TRUE(tree.GetEditControl());

    HostRef().SetPlatform(PlatformNamed(L"Windows")); // visuals and inclusion
    ASSERT_TRUE(Edit::Create(At(kAmbience), PMTreeNode::SoundSFX, L"Thunder"));
    EXPECT_TRUE(tree.IsItemValid(wind)) << "nothing is rebuilt under an open editor";
    EXPECT_FALSE(ItemOf(view, kAmbience + L"/Thunder"));

    tree.KeyPress(VK_ESCAPE, 0);
    ASSERT_FALSE(tree.GetEditControl());
    {
        UILock lock; // its release applies whatever is pending
    }
    EXPECT_TRUE(ItemOf(view, kAmbience + L"/Thunder"));
    // The view kept only the structural bit; the host's nodes still read what changed since they
    // last read it, so the platform shows all the same.
    EXPECT_TRUE(tree.GetRow(ItemOf(view, kRain)).excluded) << "the nodes read the platform switched under the edit";

    HostRef().SetPlatform(PlatformNamed(L"Linux"));
    HostRef().SetPlatform(PlatformNamed(L"Windows"));
    EXPECT_TRUE(tree.GetRow(ItemOf(view, kRain)).excluded) << "without an editor the platform shows";
}

TEST_F(NotificationsTest, BurstsOfSequenceEditsShareOneVisualRefresh)
{
    DlgProjectExplorer* view = OpenView({OrbObjectCategories::Music});
    PETreeCtrl& tree = view->GetTreeCtrl();
    HostEars ears;
    ClickOn(view, kDrums);
    Idle();
    ears.Take();
    const Lines announced{"EventViewer/ObjectsList Drums", "SonariumObject/PlayInPrimaryTransport Drums"};

    const HTREEITEM drums = ItemOf(view, kDrums);
    bool first = true;
    for (const ROString* event : {&MusicNotify::rosSequenceAdded, &MusicNotify::rosSequenceItemAdded,
                                  &MusicNotify::rosSequenceItemRemoved, &MusicNotify::rosSequenceRemoved})
    {
        if (!std::exchange(first, false))
            WindowSystem::Get().Advance(50);
        sn::notify::Music(*event, At(L"Music/Default Work Unit/Theme"));
        Idle();
    }
    WindowSystem::Get().Advance(49);
    EXPECT_TRUE(tree.IsItemValid(drums));
    EXPECT_TRUE(ears.Take().empty());
    WindowSystem::Get().Advance(1); // 200 ms after the first
    EXPECT_FALSE(tree.IsItemValid(drums));
    EXPECT_EQ(ears.Take(), announced);
    WindowSystem::Get().Advance(1000);
    EXPECT_TRUE(ears.Take().empty()) << "the timer stops after its refresh";

    // The project's cache shares the same timer.
    sn::notify::Project(ROString("CacheChanged"));
    sn::notify::Music(MusicNotify::rosSequenceAdded, At(L"Music/Default Work Unit/Theme"));
    sn::notify::Project(ROString("SomethingElse"));
    WindowSystem::Get().Advance(1000);
    EXPECT_EQ(ears.Take(), announced);
}

TEST_F(NotificationsTest, OnlyTheLastScheduledLabelEditOpens)
{
    auto* view = OpenView<EditableView>({OrbObjectCategories::AudioObjects});
    PETreeCtrl& tree = view->GetTreeCtrl();
    const HTREEITEM rain = Reveal(view, kRain);
    const HTREEITEM wind = Reveal(view, kWind);

    view->ScheduleEditItem(rain);
    WindowSystem::Get().Advance(150);
    view->ScheduleEditItem(wind);
    WindowSystem::Get().Advance(150);
    EXPECT_TRUE(view->edited.empty()) << "the first request was replaced, not kept";
    WindowSystem::Get().Advance(50);
    EXPECT_EQ(view->edited, std::vector<HTREEITEM>{wind});
    EXPECT_EQ(wind, tree.GetEditItem());

    tree.KeyPress(VK_ESCAPE, 0);
    WindowSystem::Get().Advance(1000);
    EXPECT_EQ(1u, view->edited.size());
}

TEST_F(NotificationsTest, RepaintsFollowTheViewsCategoriesExceptForConversionSettings)
{
    DlgProjectExplorer* view = OpenView({OrbObjectCategories::AudioObjects});
    PETreeCtrl& tree = view->GetTreeCtrl();
    const HTREEITEM rain = Reveal(view, kRain);
    int repaints = tree.GetInvalidationCount();
    auto repainted = [&]
    {
        const int before = std::exchange(repaints, tree.GetInvalidationCount());
        return repaints != before;
    };

    Edit::SetColor(At(kPlayRain), 3);
    EXPECT_FALSE(repainted()) << "another category's colour";
    Edit::SetColor(At(kAmbience), 5);
    EXPECT_TRUE(repainted());
    EXPECT_EQ(sn::ProjectNode::PaletteColor(5), tree.GetRow(rain).colorTag) << "inherited by the child";

    const ROString conversionSettings("ConversionSettingsChanged");
    sn::notify::Object(conversionSettings, At(kPlayRain));
    EXPECT_TRUE(repainted()) << "conversion settings repaint whatever the category";
    At(kRain)->RawSetFlags(OrbObjectFlag_Internal);
    Edit::SetColor(At(kRain), 7);
    EXPECT_FALSE(repainted()) << "an internal object's notifications are filtered";
    sn::notify::Object(conversionSettings, At(kRain));
    EXPECT_TRUE(repainted()) << "conversion settings come before that filter";

    const ROString conversion("Conversion");
    OrbObjNotify::OrbObjectNotifyParam usage(ROString("ConversionUsageChanged"), At(kPlayRain));
    INotifyMgr::m_pInstance->Notify(conversion, usage);
    EXPECT_FALSE(repainted());
    usage.object = At(kWind);
    INotifyMgr::m_pInstance->Notify(conversion, usage);
    EXPECT_TRUE(repainted());
}

TEST_F(NotificationsTest, EachViewRebuildsForItsOwnObjectsAndForTheProjectOnly)
{
    DlgProjectExplorer* audio = OpenView({OrbObjectCategories::AudioObjects});
    DlgProjectExplorer* events = OpenView({OrbObjectCategories::Events});
    // Whether the view's tree was rebuilt since the last look: each rebuild holds its drawing.
    // (Its items may survive a rebuild whole when nothing in them changed.)
    uint64_t audioRoot = audio->GetTreeCtrl().RedrawSuspensionCount();
    uint64_t eventsRoot = events->GetTreeCtrl().RedrawSuspensionCount();
    auto rebuilt = [](DlgProjectExplorer* view, uint64_t& count, const wchar_t*)
    {
        const uint64_t now = view->GetTreeCtrl().RedrawSuspensionCount();
        const bool again = now != count;
        count = now;
        return again;
    };

    ASSERT_TRUE(Edit::Create(At(L"Events/Default Work Unit"), PMTreeNode::Event, L"Stop_Rain"));
    EXPECT_FALSE(rebuilt(audio, audioRoot, L"AudioObjects"));
    EXPECT_TRUE(rebuilt(events, eventsRoot, L"Events"));
    ASSERT_TRUE(Edit::Delete(At(kWind)));
    EXPECT_TRUE(rebuilt(audio, audioRoot, L"AudioObjects"));
    EXPECT_FALSE(rebuilt(events, eventsRoot, L"Events"));

    // A new object shows through its parent's "ChildAdded"; the project's own events rebuild.
    sn::notify::Object(sn::notify::evCreated, At(kRain));
    sn::notify::Object(sn::notify::evLoaded, At(kRain));
    EXPECT_FALSE(rebuilt(audio, audioRoot, L"AudioObjects"));
    sn::notify::Project(sn::notify::evLoaded);
    EXPECT_TRUE(rebuilt(audio, audioRoot, L"AudioObjects"));
    EXPECT_TRUE(rebuilt(events, eventsRoot, L"Events"));
}

TEST_F(NotificationsTest, SourceAndTrackChangesRefreshTheirOwnersRows)
{
    DlgProjectExplorer* view = OpenView({OrbObjectCategories::AudioObjects, OrbObjectCategories::Music});
    PETreeCtrl& tree = view->GetTreeCtrl();
    const HTREEITEM rain = Reveal(view, kRain);
    int repaints = tree.GetInvalidationCount();

    ASSERT_TRUE(Edit::SetSourceFile(At(kRain + L"/rain.wav"), L"Sounds/rain_v2.wav"));
    EXPECT_GT(tree.GetInvalidationCount(), repaints) << "the sound's row is redrawn";
    repaints = tree.GetInvalidationCount();
    ASSERT_TRUE(Edit::SetActiveSource(At(kRain), At(kRain + L"/rain_soft.wav")));
    EXPECT_GT(tree.GetInvalidationCount(), repaints);
    EXPECT_TRUE(tree.IsItemValid(rain)) << "one row, not the tree";
    {
        UILock lock;
        Edit::SetActiveSource(At(kRain), At(kRain + L"/rain.wav"));
        EXPECT_TRUE(tree.IsItemValid(rain));
    }
    EXPECT_FALSE(tree.IsItemValid(rain)) << "under the lock it waits for a visual refresh";

    const HTREEITEM drums = Reveal(view, kDrums);
    tree.SetItemImage(drums, ObjectIcons::IconType_None);
    ASSERT_TRUE(Edit::SetTrackType(At(kDrums), L"RandomStep"));
    EXPECT_EQ(ObjectIcons::IconType_MusicTrack, tree.GetItemImage(drums));
}

TEST_F(NotificationsTest, SourceControlClipboardAndUnsavedStateReachTheRows)
{
    DlgProjectExplorer* view = OpenView({OrbObjectCategories::AudioObjects});
    PETreeCtrl& tree = view->GetTreeCtrl();
    HTREEITEM rain = Reveal(view, kRain);

    const int clears = tree.GetOverlayClearCount();
    uint64_t rebuilds = tree.RedrawSuspensionCount();
    HostRef().RefreshSourceControlIcons();
    EXPECT_EQ(clears + 1, tree.GetOverlayClearCount());
    EXPECT_LT(rebuilds, tree.RedrawSuspensionCount());

    // Objects leaving the clipboard lose their cut mark.
    rain = ItemOf(view, kRain);
    tree.GetNodeFromItem(rain)->m_bCutMarked = true;
    HostRef().Clipboard().SetObjects({At(kRain)}, 0);
    ASSERT_TRUE(tree.GetRow(rain).cut);
    rebuilds = tree.RedrawSuspensionCount();
    HostRef().Clipboard().Clear();
    EXPECT_LT(rebuilds, tree.RedrawSuspensionCount()) << "the rows are redrawn without the mark";
    EXPECT_FALSE(tree.GetRow(ItemOf(view, kRain)).cut);

    // The work unit shows its unsaved state at once, lock or not.
    UILock lock;
    Edit::Rename(At(kWind), L"Gust");
    EXPECT_EQ(L"Default Work Unit*", tree.GetItemText(ItemOf(view, L"AudioObjects/Default Work Unit")));
}
