// Refreshing the tree from the host's nodes: nothing done when nothing is pending, the top row
// kept across a rebuild, and what the host changed while it held the UI lock.

#include "TreeStateFixture.h"

#include "sonarium/core/model/ProjectEdit.h"

namespace
{
const wchar_t* kUnit = L"AudioObjects/Default Work Unit";

std::wstring Under(const wchar_t* name)
{
    return std::wstring(kUnit) + L"/" + name;
}
} // namespace

class TreeRefreshTest : public TreeStateTest
{
protected:
    void SetUp() override
    {
        TreeStateTest::SetUp();
        Open(L"platform Linux\nAudioObjects\n  Default Work Unit : WorkUnit\n    Ambience : ActorMixer\n"
             L"      Rain : SoundSFX\n      Wind : SoundSFX\n" +
             NumberedObjects(L"S", L"SoundSFX", 30, 4));
        m_view = OpenView({OrbObjectCategories::AudioObjects});
        ClickButton(m_view, ItemOf(m_view, kUnit));
        ClickButton(m_view, ItemOf(m_view, Under(L"Ambience")));
        WindowSystem::Get().RunUntilIdle();
    }

    // The rows' item handles: unchanged exactly when nothing was rebuilt.
    std::vector<HTREEITEM> Handles()
    {
        std::vector<HTREEITEM> items;
        for (int row = 0; row < m_view->GetTreeCtrl().GetRowCount(); ++row)
            items.push_back(m_view->GetTreeCtrl().GetRowItem(row));
        return items;
    }

    bool IsExcluded(const wchar_t* name)
    {
        return m_view->GetTreeCtrl().GetRow(ItemOf(m_view, Under(name))).excluded;
    }

    DlgProjectExplorer* m_view = nullptr;
};

TEST_F(TreeRefreshTest, NothingPendingMeansNothingRebuiltAndNothingAnnounced)
{
    const std::vector<HTREEITEM> before = Handles();
    m_view->RefreshTree(true);
    {
        UILock lock; // raised and lowered with no change in between
    }
    EXPECT_EQ(before, Handles());
    EXPECT_EQ(0u, WindowSystem::Get().PendingMessages()) << "a selection announcement was posted";
    EXPECT_TRUE(m_view->GetTreeCtrl().IsRedrawEnabled());
}

TEST_F(TreeRefreshTest, TheTopRowStaysOnTopAcrossARebuildWithItsStateBitsUnchanged)
{
    PETreeCtrl& tree = m_view->GetTreeCtrl();
    ClickRow(m_view, Under(L"S10"));
    ClickRow(m_view, Under(L"S05"), MK_CONTROL);
    ClickRow(m_view, Under(L"S05"), MK_CONTROL); // focused, no longer selected
    tree.SelectSetFirstVisible(ItemOf(m_view, Under(L"S05")));

    // A new object above the top row rebuilds the tree and pushes every row down. The refill
    // hands the focus to the first selected row; scrolling back must not select the top row.
    const std::vector<HTREEITEM> before = Handles();
    ASSERT_TRUE(sn::ProjectEdit::Create(At(kUnit), PMTreeNode::SoundSFX, L"Thunder", 0));
    EXPECT_NE(before, Handles());
    EXPECT_EQ(ItemOf(m_view, Under(L"S05")), FirstVisible(m_view));
    EXPECT_EQ(0u, tree.GetItemState(ItemOf(m_view, Under(L"S05")), TVIS_SELECTED | TVIS_FOCUSED));
    EXPECT_EQ(UINT(TVIS_SELECTED | TVIS_FOCUSED), tree.GetItemState(ItemOf(m_view, Under(L"S10")), 3));

    // A selected and focused top row keeps both, and stays the only one selected.
    tree.SelectSetFirstVisible(ItemOf(m_view, Under(L"S10")));
    ASSERT_TRUE(sn::ProjectEdit::Create(At(kUnit), PMTreeNode::SoundSFX, L"Hail", 0));
    EXPECT_EQ(ItemOf(m_view, Under(L"S10")), FirstVisible(m_view));
    EXPECT_EQ(UINT(TVIS_SELECTED | TVIS_FOCUSED), tree.GetItemState(FirstVisible(m_view), 3));
    EXPECT_EQ(1u, tree.GetSelectedCount());

    // When the top row itself goes, the control's own position stands.
    ASSERT_TRUE(sn::ProjectEdit::Delete(At(Under(L"S10"))));
    EXPECT_TRUE(FirstVisible(m_view));
    EXPECT_TRUE(tree.IsRedrawEnabled());
}

TEST_F(TreeRefreshTest, ChangesMadeUnderTheLockAreAppliedWhenItIsLowered)
{
    const GUID platform = HostRef().GetProject()->Platforms().front().id;
    // Names and inclusion alone: applied item by item, without a rebuild, announced once.
    const std::vector<HTREEITEM> before = Handles();
    {
        UILock lock;
        ASSERT_TRUE(sn::ProjectEdit::Rename(At(Under(L"Ambience/Rain")), L"Drizzle"));
        sn::ProjectEdit::SetIncluded(At(Under(L"Ambience/Wind")), platform, false);
        EXPECT_EQ(L"Rain", m_view->GetTreeCtrl().GetItemText(ItemOf(m_view, Under(L"Ambience/Drizzle"))));
        EXPECT_FALSE(IsExcluded(L"Ambience/Wind"));
    }
    EXPECT_EQ(before, Handles());
    EXPECT_EQ(L"Drizzle", m_view->GetTreeCtrl().GetItemText(ItemOf(m_view, Under(L"Ambience/Drizzle"))));
    EXPECT_TRUE(IsExcluded(L"Ambience/Wind"));
    EXPECT_EQ(1u, WindowSystem::Get().PendingMessages());
    WindowSystem::Get().RunUntilIdle();

    // Inclusion together with a structural change: one rebuild that re-reads inclusion too.
    {
        UILock lock;
        sn::ProjectEdit::SetIncluded(At(Under(L"S03")), platform, false);
        ASSERT_TRUE(sn::ProjectEdit::Create(At(Under(L"Ambience")), PMTreeNode::SoundSFX, L"Thunder"));
        EXPECT_FALSE(ItemOf(m_view, Under(L"Ambience/Thunder")));
    }
    EXPECT_TRUE(ItemOf(m_view, Under(L"Ambience/Thunder")));
    EXPECT_TRUE(IsExcluded(L"S03"));
    EXPECT_FALSE(IsExcluded(L"S04"));
    WindowSystem::Get().RunUntilIdle();
    m_view->RefreshTree(true);
    EXPECT_EQ(0u, WindowSystem::Get().PendingMessages()) << "something stayed pending";
}

TEST_F(TreeRefreshTest, SelectedObjectsComeFocusedFirstAndNeverTwice)
{
    ClickRow(m_view, Under(L"Ambience"));
    ClickRow(m_view, Under(L"S01"), MK_CONTROL);
    ClickRow(m_view, Under(L"S02"), MK_CONTROL);
    std::vector<IOrbObject*> objects;
    m_view->GetSelectedObjects(objects);
    EXPECT_EQ((std::vector<IOrbObject*>{At(Under(L"S02")), At(Under(L"Ambience")), At(Under(L"S01"))}),
              objects);

    // Once the focused row leaves the selection the others remain, in row order.
    ClickRow(m_view, Under(L"S02"), MK_CONTROL);
    objects.clear();
    m_view->GetSelectedObjects(objects);
    EXPECT_EQ((std::vector<IOrbObject*>{At(Under(L"Ambience")), At(Under(L"S01"))}), objects);
    EXPECT_FALSE(m_view->IsFocusedNodeSelected());
    EXPECT_EQ(IdOf(Under(L"S02")), m_view->GetFocusedNode()->ID());
}
