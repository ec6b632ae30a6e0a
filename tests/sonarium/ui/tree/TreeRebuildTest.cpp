// Rebuilding the tree while drawing is off keeps the items of unchanged subtrees: a kept item
// must look exactly like one inserted afresh, only its handle survives.

#include "TreeFixture.h"

#include "sonarium/core/model/ProjectEdit.h"
#include "sonarium/core/nodes/ProjectNode.h"

#include <optional>
#include <random>

namespace
{
const wchar_t* kProject = LR"(
platform Linux
AudioObjects
  Default Work Unit : WorkUnit
    Ambience : ActorMixer
      Rain : SoundSFX
      Wind : RandomContainer
        Gust : SoundSFX
        Breeze : SoundSFX
    Weapons : ActorMixer
      Pistol : SoundSFX
      Rifle : SoundSFX
      Guns : RandomContainer
        Shotgun : SoundSFX
        Grenade : SoundSFX
    Vehicles : ActorMixer
      Car : SoundSFX
      Truck : SoundSFX
)";
const std::wstring kUnit = L"AudioObjects/Default Work Unit";

// What a row shows, handles aside.
struct RowLook
{
    std::wstring text;
    int depth = 0;
    int image = 0;
    UINT state = 0;
    bool hasChildren = false;
    bool selected = false;
    bool operator==(RowLook const&) const = default;
};

std::vector<RowLook> Looks(PETreeCtrl& tree)
{
    std::vector<RowLook> looks;
    for (int row = 0; row < tree.GetRowCount(); ++row)
    {
        HTREEITEM item = tree.GetRowItem(row);
        looks.push_back({tree.GetItemText(item), tree.GetItemDepth(item), tree.GetItemImage(item),
                         tree.GetItemState(item, 0xFFFF), tree.ItemHasChildren(item) != FALSE,
                         tree.IsSelected(item) != FALSE});
    }
    return looks;
}

// The rebuild the explorer makes: drawing off, every item deleted, the roots inserted again.
// With drawing on, every item is deleted for good and built afresh.
void Rebuild(PETreeCtrl& tree, std::vector<std::unique_ptr<PMTreeNode>> const& roots, bool drawingOff = true)
{
    for (auto const& root : roots)
        root->Refresh(true, 1 | 2 | 4);
    std::optional<RedrawSuspension> quiet;
    if (drawingOff)
        quiet.emplace(tree);
    tree.SendMessage(TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(TVI_ROOT));
    for (auto const& root : roots)
        tree.InsertItem(root.get(), TVI_ROOT, TVI_LAST);
}
} // namespace

class TreeRebuildTest : public TreeTest
{
protected:
    void OpenExpanded()
    {
        Open(kProject);
        InsertRoot(OrbObjectCategories::AudioObjects);
        m_roots[0]->SetExpandedForAllChildren(true);
        // The first rebuild reads everything; from the second on, unchanged items are kept.
        Rebuild(m_tree, m_roots);
        Rebuild(m_tree, m_roots);
    }
};

TEST_F(TreeRebuildTest, UnchangedSubtreesKeepTheirItemsAndChangedOnesAreBuiltAgain)
{
    OpenExpanded();
    const std::vector<RowLook> before = Looks(m_tree);
    HTREEITEM rain = Item(kUnit + L"/Ambience/Rain");
    HTREEITEM wind = Item(kUnit + L"/Ambience/Wind");
    HTREEITEM guns = Item(kUnit + L"/Weapons/Guns");
    HTREEITEM shotgun = Item(kUnit + L"/Weapons/Guns/Shotgun");
    Rebuild(m_tree, m_roots);
    EXPECT_EQ(before, Looks(m_tree));
    EXPECT_EQ(guns, Item(kUnit + L"/Weapons/Guns")) << "nothing changed: every item is kept";
    EXPECT_EQ(shotgun, m_tree.GetRowItem(m_tree.GetItemRow(shotgun)));

    // A sound added to Wind: Wind and its ancestors are built again, their other children kept.
    sn::ProjectEdit::Create(At(kUnit + L"/Ambience/Wind"), PMTreeNode::SoundSFX, L"Whirl");
    Rebuild(m_tree, m_roots);
    EXPECT_FALSE(m_tree.IsItemValid(wind)) << "the changed node's item is new";
    HTREEITEM whirl = Item(kUnit + L"/Ambience/Wind/Whirl");
    ASSERT_TRUE(whirl);
    EXPECT_EQ(Item(kUnit + L"/Ambience/Wind"), m_tree.GetParentItem(whirl));
    EXPECT_EQ(rain, Item(kUnit + L"/Ambience/Rain"));
    EXPECT_EQ(guns, Item(kUnit + L"/Weapons/Guns"));
    EXPECT_EQ(before.size() + 1, static_cast<size_t>(m_tree.GetRowCount()));
    EXPECT_EQ(static_cast<UINT>(m_tree.GetRowCount()), m_tree.GetCount());

    // Collapsing a node (its mark changes) rebuilds its item without children, once.
    m_tree.SendMessage(TVM_EXPAND, TVE_COLLAPSE, reinterpret_cast<LPARAM>(guns));
    Rebuild(m_tree, m_roots);
    HTREEITEM gunsAgain = Item(kUnit + L"/Weapons/Guns");
    EXPECT_NE(guns, gunsAgain);
    EXPECT_FALSE(m_tree.GetItemState(gunsAgain, TVIS_EXPANDED));
    EXPECT_TRUE(m_tree.ItemHasChildren(gunsAgain));
    EXPECT_FALSE(m_tree.IsItemValid(shotgun));
    Rebuild(m_tree, m_roots);
    EXPECT_EQ(gunsAgain, Item(kUnit + L"/Weapons/Guns"));

    // A label changed in the control alone, its node unchanged: the item is built again from the
    // node, its siblings kept.
    HTREEITEM car = Item(kUnit + L"/Vehicles/Car");
    HTREEITEM truck = Item(kUnit + L"/Vehicles/Truck");
    m_tree.SetItemText(car, L"Scribble");
    Rebuild(m_tree, m_roots);
    EXPECT_FALSE(m_tree.IsItemValid(car));
    EXPECT_TRUE(Item(kUnit + L"/Vehicles/Car"));
    EXPECT_EQ(truck, Item(kUnit + L"/Vehicles/Truck"));
}

TEST_F(TreeRebuildTest, RetiredItemsAreInvisibleAndTheFocusAndEditedItemAreNotKept)
{
    OpenExpanded();
    HTREEITEM rifle = Item(kUnit + L"/Weapons/Rifle");
    HTREEITEM car = Item(kUnit + L"/Vehicles/Car");
    m_tree.Click(LabelOf(rifle), 0);
    ASSERT_EQ(rifle, m_tree.GetFocusedItem());
    m_tree.SelectDropTarget(car);

    m_tree.SendMessage(WM_SETREDRAW, FALSE, 0);
    m_tree.SendMessage(TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(TVI_ROOT));
    // Between the delete and the insertions nothing of the old items shows.
    EXPECT_FALSE(m_tree.IsItemValid(rifle));
    EXPECT_FALSE(m_tree.GetNodeFromItem(car));
    EXPECT_FALSE(m_tree.GetRootItem());
    EXPECT_EQ(0, m_tree.GetRowCount());
    EXPECT_EQ(0u, m_tree.GetCount());
    EXPECT_EQ(0u, m_tree.GetSelectedCount());
    EXPECT_FALSE(m_tree.GetFocusedItem());
    EXPECT_FALSE(m_tree.GetDropHilightItem());
    m_tree.InsertItem(m_roots[0].get(), TVI_ROOT, TVI_LAST);
    m_tree.SendMessage(WM_SETREDRAW, TRUE, 0);
    EXPECT_FALSE(m_tree.GetNodeFromItem(car)) << "asked between, the items were deleted for good";

    // Retired items are deleted as soon as anything outside the rebuild looks.
    Rebuild(m_tree, m_roots);
    rifle = Item(kUnit + L"/Weapons/Rifle");
    m_tree.Click(LabelOf(rifle), 0);
    m_tree.SelectDropTarget(Item(kUnit + L"/Vehicles/Car"));
    HTREEITEM truck = Item(kUnit + L"/Vehicles/Truck");
    Rebuild(m_tree, m_roots);
    EXPECT_FALSE(m_tree.IsItemValid(rifle)) << "the focused item is built afresh";
    EXPECT_FALSE(m_tree.GetFocusedItem());
    EXPECT_FALSE(m_tree.GetDropHilightItem());
    EXPECT_EQ(0u, m_tree.GetItemState(Item(kUnit + L"/Vehicles/Car"), TVIS_DROPHILITED));
    EXPECT_EQ(truck, Item(kUnit + L"/Vehicles/Truck"));
    EXPECT_TRUE(m_tree.IsSelected(Item(kUnit + L"/Weapons/Rifle"))) << "the selection comes from the marks";
    EXPECT_EQ(1u, m_tree.GetSelectedCount());

    truck = Item(kUnit + L"/Vehicles/Truck");
    ASSERT_TRUE(m_tree.EditLabel(truck));
    Rebuild(m_tree, m_roots);
    EXPECT_FALSE(m_tree.GetEditControl()) << "a rebuild ends the edit, as deleting the item does";
    EXPECT_FALSE(m_tree.IsItemValid(truck));
}

// Random edits, expansions and clicks; after each, the tree rebuilt keeping items and a second
// tree rebuilt from scratch over the same nodes must show the same rows.
TEST_F(TreeRebuildTest, KeptItemsShowWhatFreshOnesShowThroughRandomEdits)
{
    OpenExpanded();
    RecordingParent freshParent;
    freshParent.Create(L"Fresh", L"", WS_VISIBLE, CRect(0, 0, Width, 400), nullptr, 0);
    PETreeCtrl fresh;
    fresh.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, Width, Rows * CTreeCtrl::DefaultItemHeight), &freshParent, 2012);
    freshParent.tree = &fresh;

    std::mt19937 random(20);
    auto pick = [&]() -> HTREEITEM {
        const int rows = m_tree.GetRowCount();
        return m_tree.GetRowItem(static_cast<int>(random() % static_cast<unsigned>(rows)));
    };
    auto objectOf = [&](HTREEITEM item) {
        auto* node = dynamic_cast<sn::ProjectNode*>(m_tree.GetNodeFromItem(item));
        return node ? node->Object() : nullptr;
    };
    for (int step = 0; step < 300; ++step)
    {
        HTREEITEM item = pick();
        sn::ProjectObject* object = objectOf(item);
        ASSERT_TRUE(object);
        const bool top = m_tree.GetParentItem(item) == nullptr;
        switch (random() % 7)
        {
        case 0:
            sn::ProjectEdit::Create(object, random() % 2 ? PMTreeNode::SoundSFX : PMTreeNode::ActorMixer,
                                    L"New" + std::to_wstring(step));
            break;
        case 1:
            if (!top && m_tree.GetParentItem(m_tree.GetParentItem(item)))
                sn::ProjectEdit::Delete(object);
            break;
        case 2:
            if (!top)
                sn::ProjectEdit::Rename(object, L"Renamed" + std::to_wstring(step));
            break;
        case 3:
            if (sn::ProjectObject* target = objectOf(pick()); target && !top)
                sn::ProjectEdit::Move(object, target);
            break;
        case 4:
            m_tree.SendMessage(TVM_EXPAND, TVE_TOGGLE, reinterpret_cast<LPARAM>(item));
            break;
        default:
            m_tree.Click(LabelOf(item), random() % 3 == 0 ? MK_CONTROL : 0);
            m_tree.EnsureVisible(item);
            break;
        }
        Rebuild(m_tree, m_roots);
        Rebuild(fresh, m_roots, false);
        ASSERT_EQ(Looks(fresh), Looks(m_tree)) << "step " << step;
        ASSERT_EQ(fresh.GetCount(), m_tree.GetCount()) << "step " << step;
        ASSERT_EQ(fresh.GetSelectedCount(), m_tree.GetSelectedCount()) << "step " << step;
        ASSERT_EQ(nullptr, m_tree.GetFocusedItem());
    }
    fresh.DestroyWindow();
    freshParent.DestroyWindow();
}
