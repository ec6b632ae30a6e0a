// Gestures on the project tree and the selection notifications they produce.

#include "TreeFixture.h"

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
    Weapons : ActorMixer
      Pistol : SoundSFX
      Rifle : SoundSFX
      Shotgun : SoundSFX
)";
const std::wstring kUnit = L"AudioObjects/Default Work Unit";

class TreeSelectionTest : public TreeTest
{
protected:
    void SetUp() override
    {
        TreeTest::SetUp();
        Open(kProject);
        InsertRoot(OrbObjectCategories::AudioObjects);
        m_tree.Click(ButtonOf(Item(kUnit)), 0);
        m_tree.Click(ButtonOf(Item(kUnit + L"/Weapons")), 0);
        m_parent.notes.clear();
    }
};
} // namespace

TEST_F(TreeSelectionTest, ClicksReportEachChangeWithOldAndNewItemsInOneBatch)
{
    HTREEITEM pistol = Item(kUnit + L"/Weapons/Pistol");
    HTREEITEM rifle = Item(kUnit + L"/Weapons/Rifle");
    ASSERT_TRUE(pistol && rifle);

    m_tree.Click(LabelOf(pistol), 0);
    ASSERT_EQ(1u, m_parent.Count(TVN_SELCHANGEDW));
    EXPECT_EQ(nullptr, m_parent.notes[1].oldItem);
    EXPECT_EQ(pistol, m_parent.notes[1].newItem);
    EXPECT_GT(m_parent.notes[1].batchDepth, 0);
    EXPECT_EQ((std::vector<UINT>{NM_LDOWN, TVN_SELCHANGEDW, MultiSelectionTreeCtrl::NotifyBatchSelChangeEnd,
                                 NM_CLICK}),
              m_parent.Codes());
    EXPECT_EQ(pistol, m_tree.GetFocusedItem());
    EXPECT_TRUE(m_tree.GetRow(pistol).selected && m_tree.GetRow(pistol).focused);

    // Moving the selection is one change carrying both items.
    m_parent.notes.clear();
    m_tree.Click(LabelOf(rifle), 0);
    ASSERT_EQ(1u, m_parent.Count(TVN_SELCHANGEDW));
    EXPECT_EQ(pistol, m_parent.notes[1].oldItem);
    EXPECT_EQ(rifle, m_parent.notes[1].newItem);

    // Ctrl adds, Ctrl again removes; a click that changes nothing ends no batch.
    m_tree.Click(LabelOf(pistol), MK_CONTROL);
    EXPECT_EQ((std::vector<HTREEITEM>{pistol, rifle}),
              [&]
              {
                  std::vector<HTREEITEM> v;
                  m_tree.GetSelectedList(v);
                  return v;
              }());
    m_tree.Click(LabelOf(pistol), MK_CONTROL);
    EXPECT_FALSE(m_tree.IsSelected(pistol));
    m_parent.notes.clear();
    m_tree.Click(LabelOf(rifle), 0);
    EXPECT_EQ(0u, m_parent.Count(TVN_SELCHANGEDW));
    EXPECT_EQ(0u, m_parent.Count(MultiSelectionTreeCtrl::NotifyBatchSelChangeEnd));
    EXPECT_EQ(0, m_tree.SelectionBatchDepth());
}

TEST_F(TreeSelectionTest, ShiftRangeIsOneBatchAndKeyboardExtendsFromTheAnchor)
{
    HTREEITEM ambience = Item(kUnit + L"/Ambience");
    HTREEITEM rifle = Item(kUnit + L"/Weapons/Rifle");
    m_tree.Click(LabelOf(ambience), 0);
    m_parent.notes.clear();

    m_tree.Click(LabelOf(rifle), MK_SHIFT);
    EXPECT_EQ(3u, m_parent.Count(TVN_SELCHANGEDW)) << "Weapons, Pistol, Rifle join";
    EXPECT_EQ(1u, m_parent.Count(MultiSelectionTreeCtrl::NotifyBatchSelChangeEnd));
    for (auto const& note : m_parent.notes)
        EXPECT_TRUE(note.code != TVN_SELCHANGEDW || note.batchDepth > 0);
    EXPECT_EQ(4u, m_tree.GetSelectedCount());
    EXPECT_EQ(ambience, m_tree.GetFirstSelectedItem());
    EXPECT_EQ(rifle, m_tree.GetFocusedItem());

    // Shift+Up shrinks the range towards the anchor; Ctrl+Down moves the focus only.
    m_parent.notes.clear();
    m_tree.KeyPress(VK_UP, MK_SHIFT);
    EXPECT_EQ(
        (std::vector<UINT>{TVN_KEYDOWN, TVN_SELCHANGEDW, MultiSelectionTreeCtrl::NotifyBatchSelChangeEnd}),
        m_parent.Codes());
    EXPECT_EQ(rifle, m_parent.notes[1].oldItem);
    EXPECT_EQ(3u, m_tree.GetSelectedCount());
    m_tree.KeyPress(VK_DOWN, MK_CONTROL);
    EXPECT_EQ(rifle, m_tree.GetFocusedItem());
    EXPECT_FALSE(m_tree.IsSelected(rifle));
    m_tree.KeyPress(VK_SPACE, MK_CONTROL);
    EXPECT_TRUE(m_tree.IsSelected(rifle));

    // End selects the last row alone, Home the first.
    m_tree.KeyPress(VK_END, 0);
    EXPECT_EQ(1u, m_tree.GetSelectedCount());
    EXPECT_EQ(Item(kUnit + L"/Weapons/Shotgun"), m_tree.GetFirstSelectedItem());
    m_tree.KeyPress(VK_HOME, 0);
    EXPECT_EQ(m_tree.GetRootItem(), m_tree.GetFirstSelectedItem());
}

TEST_F(TreeSelectionTest, PressOnAMultipleSelectionWaitsForTheReleaseSoADragKeepsIt)
{
    HTREEITEM pistol = Item(kUnit + L"/Weapons/Pistol");
    HTREEITEM shotgun = Item(kUnit + L"/Weapons/Shotgun");
    m_tree.Click(LabelOf(pistol), 0);
    m_tree.Click(LabelOf(shotgun), MK_SHIFT);
    ASSERT_EQ(3u, m_tree.GetSelectedCount());

    m_tree.MouseDown(LabelOf(pistol), 0);
    EXPECT_LT(GetKeyState(VK_LBUTTON), 0) << "the button is held while the gesture runs";
    EXPECT_EQ(3u, m_tree.GetSelectedCount());
    m_parent.notes.clear();
    ASSERT_TRUE(m_tree.BeginDrag(LabelOf(pistol), false));
    ASSERT_EQ(1u, m_parent.Count(TVN_BEGINDRAGW));
    EXPECT_TRUE(m_parent.notes[0].inspectionDeferred) << "no inspection while the drag runs";
    EXPECT_EQ(3u, m_tree.GetSelectedCount()) << "the whole selection is dragged";
    EXPECT_GE(GetKeyState(VK_LBUTTON), 0);
    EXPECT_FALSE(m_tree.IsInspectionDeferred());

    // Without a drag, the release selects the pressed item alone.
    m_tree.Click(LabelOf(pistol), 0);
    EXPECT_EQ(1u, m_tree.GetSelectedCount());
    EXPECT_TRUE(m_tree.IsSelected(pistol));
}

TEST_F(TreeSelectionTest, ButtonsExpandAndCollapseWithoutSelectingAndDoubleClickHonoursTheParent)
{
    HTREEITEM ambience = Item(kUnit + L"/Ambience");
    m_tree.Click(ButtonOf(ambience), 0);
    EXPECT_EQ(0u, m_parent.Count(TVN_SELCHANGEDW));
    EXPECT_TRUE(At(kUnit + L"/Ambience") && Item(kUnit + L"/Ambience/Rain"));

    // The parent answers 1: no toggle on a double click.
    HTREEITEM wind = Item(kUnit + L"/Ambience/Wind");
    m_parent.answers[NM_DBLCLK] = 1;
    m_tree.DoubleClick(LabelOf(wind), 0);
    EXPECT_FALSE(m_tree.GetItemState(wind, TVIS_EXPANDED));
    m_parent.answers[NM_DBLCLK] = 0;
    m_tree.DoubleClick(LabelOf(wind), 0);
    EXPECT_TRUE(m_tree.GetItemState(wind, TVIS_EXPANDED));
    EXPECT_TRUE(Item(kUnit + L"/Ambience/Wind/Gust"));

    // Right click asks the parent, then the context menu goes up to it.
    m_parent.notes.clear();
    m_tree.RightClick(LabelOf(wind), 0);
    EXPECT_EQ(1u, m_parent.Count(NM_RCLICK));
    ASSERT_EQ(1u, m_parent.contextMenus.size());
    CPoint expected = LabelOf(wind);
    m_tree.ClientToScreen(&expected);
    EXPECT_EQ(expected.x, m_parent.contextMenus[0].x);
    m_parent.answers[NM_RCLICK] = 1;
    m_tree.RightClick(LabelOf(wind), 0);
    EXPECT_EQ(1u, m_parent.contextMenus.size()) << "a parent that handled NM_RCLICK gets no WM_CONTEXTMENU";
}
