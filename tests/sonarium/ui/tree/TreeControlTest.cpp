// The tree control's items, viewport, hit-testing and label editor.

#include "TreeFixture.h"

#include "platform/WindowSystem.h"
#include "sonarium/core/model/ProjectEdit.h"

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
      Shotgun : SoundSFX
      Grenade : SoundSFX
      Launcher : SoundSFX
      Knife : SoundSFX
      Bow : SoundSFX
      Crossbow : SoundSFX
)";
const std::wstring kUnit = L"AudioObjects/Default Work Unit";
} // namespace

TEST_F(TreeTest, HitTestNamesEachRegionOfARow)
{
    Open(kProject);
    HTREEITEM root = InsertRoot(OrbObjectCategories::AudioObjects);
    m_tree.SetStateIconWidth(10);
    HTREEITEM unit = Item(kUnit);
    ASSERT_EQ(1, m_tree.GetItemDepth(unit));
    PETreeRow row = m_tree.GetRow(unit);
    const int y = (row.row.top + row.row.bottom) / 2;
    auto flagsAt = [&](int x, int atY)
    {
        UINT flags = 0;
        m_tree.HitTest(CPoint(x, atY), &flags);
        return flags;
    };
    EXPECT_EQ(TVHT_ONITEMINDENT, flagsAt(2, y));
    EXPECT_EQ(TVHT_ONITEMBUTTON, flagsAt(row.button.left + 2, y));
    EXPECT_EQ(TVHT_ONITEMSTATEICON, flagsAt(row.button.right + 2, y));
    EXPECT_EQ(TVHT_ONITEMICON, flagsAt(row.icon.left + 2, y));
    EXPECT_EQ(TVHT_ONITEMLABEL, flagsAt(row.label.left + 2, y));
    EXPECT_EQ(TVHT_ONITEMRIGHT, flagsAt(row.label.right + 5, y));
    EXPECT_EQ(TVHT_NOWHERE, flagsAt(50, 5 * CTreeCtrl::DefaultItemHeight));
    EXPECT_EQ(TVHT_TORIGHT, flagsAt(Width + 1, y));
    EXPECT_EQ(TVHT_ABOVE, flagsAt(10, -1));
    EXPECT_EQ(TVHT_BELOW, flagsAt(10, Rows * CTreeCtrl::DefaultItemHeight));

    // A leaf has no button: its button column is indent.
    m_tree.Click(ButtonOf(unit), 0);
    m_tree.Click(ButtonOf(Item(kUnit + L"/Ambience")), 0);
    HTREEITEM rain = Item(kUnit + L"/Ambience/Rain");
    PETreeRow leaf = m_tree.GetRow(rain);
    EXPECT_EQ(TVHT_ONITEMINDENT, flagsAt(leaf.button.left + 2, (leaf.row.top + leaf.row.bottom) / 2));

    // The same through the message, as the module asks.
    TVHITTESTINFO info;
    info.pt = CPoint(leaf.label.left + 1, leaf.row.top + 1);
    EXPECT_EQ(reinterpret_cast<LRESULT>(rain),
              m_tree.SendMessage(TVM_HITTEST, 0, reinterpret_cast<LPARAM>(&info)));
    EXPECT_EQ(TVHT_ONITEMLABEL, info.flags);
    EXPECT_TRUE(root);
}

TEST_F(TreeTest, RowsWiderThanTheControlScrollSidewaysAndHitTestingFollows)
{
    Open(kProject);
    InsertRoot(OrbObjectCategories::AudioObjects);
    HTREEITEM unit = Item(kUnit);
    const PETreeRow before = m_tree.GetRow(unit);
    m_tree.ScrollToX(50);
    EXPECT_EQ(m_tree.GetScrollX(), 0) << "rows that fit do not scroll";

    m_tree.SetTextMeasure([](std::wstring const&) { return 1000; });
    const int width = m_tree.GetRowsWidth();
    EXPECT_EQ(width, before.label.left + 1000 + 2 * CTreeCtrl::LabelPadding) << "the deepest row is the widest";
    m_tree.ScrollToX(20);
    const PETreeRow row = m_tree.GetRow(unit);
    EXPECT_EQ(row.label.left, before.label.left - 20);
    EXPECT_EQ(row.icon.left, before.icon.left - 20);
    EXPECT_EQ(row.button.left, before.button.left - 20);
    EXPECT_EQ(row.row.right, Width) << "the row ends where the control does";
    const int y = (row.row.top + row.row.bottom) / 2;
    UINT flags = 0;
    EXPECT_EQ(m_tree.HitTest(CPoint(row.label.left + 2, y), &flags), unit);
    EXPECT_EQ(flags, UINT(TVHT_ONITEMLABEL));
    m_tree.HitTest(CPoint(row.icon.left + 2, y), &flags);
    EXPECT_EQ(flags, UINT(TVHT_ONITEMICON));

    m_tree.ScrollToX(100000);
    EXPECT_EQ(m_tree.GetScrollX(), width - Width);
    m_tree.SetTextMeasure(nullptr);
    EXPECT_EQ(m_tree.GetScrollX(), 0) << "rows that fit again bring the offset back";
    EXPECT_EQ(m_tree.GetRow(unit).label.left, before.label.left);
}

TEST_F(TreeTest, TheSidewaysRangeFollowsTheRowsInView)
{
    Open(kProject);
    InsertRoot(OrbObjectCategories::AudioObjects);
    HTREEITEM unit = Item(kUnit);
    m_tree.Click(ButtonOf(unit), 0);
    HTREEITEM weapons = Item(kUnit + L"/Weapons");
    m_tree.Click(ButtonOf(weapons), 0);
    ASSERT_GT(m_tree.GetRowCount(), Rows);
    m_tree.SetTextMeasure([](std::wstring const& text) { return text == L"Crossbow" ? 1000 : 10; });
    const int narrow = m_tree.GetRowsWidth();
    EXPECT_LT(narrow, 1000) << "the wide row is below the view";

    HTREEITEM crossbow = Item(kUnit + L"/Weapons/Crossbow");
    m_tree.EnsureVisible(crossbow);
    const int wide = m_tree.GetRowsWidth();
    EXPECT_EQ(wide, m_tree.GetRow(crossbow).label.left + 1000 + 2 * CTreeCtrl::LabelPadding);
    m_tree.ScrollToX(100000);
    EXPECT_EQ(m_tree.GetScrollX(), wide - Width);

    m_tree.DeleteItem(crossbow);
    EXPECT_LT(m_tree.GetRowsWidth(), 1000) << "an edit measures the rows in view again";
    EXPECT_EQ(m_tree.GetScrollX(), 0);
}

TEST_F(TreeTest, ItemsFollowExpansionAndARebuildRestoresMarksAndTheTopRow)
{
    Open(kProject);
    InsertRoot(OrbObjectCategories::AudioObjects);
    EXPECT_EQ(2, m_tree.GetRowCount()) << "the root starts open, the work unit closed";
    EXPECT_FALSE(Item(kUnit + L"/Ambience")) << "no items below a collapsed node";

    m_tree.SendMessage(TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(Item(kUnit)));
    m_tree.Click(ButtonOf(Item(kUnit + L"/Weapons")), 0);
    m_tree.Click(LabelOf(Item(kUnit + L"/Weapons/Rifle")), 0);
    EXPECT_EQ(12, m_tree.GetRowCount());

    // Collapsing drops the items; the nodes keep the marks.
    m_tree.Click(ButtonOf(Item(kUnit + L"/Weapons")), 0);
    EXPECT_FALSE(Item(kUnit + L"/Weapons/Rifle"));
    EXPECT_EQ(Item(kUnit + L"/Weapons"), m_tree.GetFocusedItem()) << "the focus leaves the hidden row";
    m_tree.Click(ButtonOf(Item(kUnit + L"/Weapons")), 0);
    EXPECT_TRUE(m_tree.IsSelected(Item(kUnit + L"/Weapons/Rifle")));

    // A new child appears when the collapsed parent is opened again: expanding refreshes.
    m_tree.Click(ButtonOf(Item(kUnit + L"/Ambience")), 0);
    sn::ProjectEdit::Create(At(kUnit + L"/Weapons"), PMTreeNode::SoundSFX, L"Whip", 0);
    m_tree.Click(ButtonOf(Item(kUnit + L"/Weapons")), 0);
    m_tree.Click(ButtonOf(Item(kUnit + L"/Weapons")), 0);
    EXPECT_TRUE(Item(kUnit + L"/Weapons/Whip"));

    // Scroll, rebuild from scratch, restore the top row by GUID.
    m_tree.ScrollToRow(4);
    HTREEITEM top = reinterpret_cast<HTREEITEM>(m_tree.SendMessage(TVM_GETNEXTITEM, TVGN_FIRSTVISIBLE, 0));
    const GUID topId = m_tree.GetNodeFromItem(top)->ID();
    const UINT topState = m_tree.GetItemState(top, 3);
    m_tree.SendMessage(WM_SETREDRAW, FALSE, 0);
    const int paints = m_tree.GetInvalidationCount();
    m_tree.SendMessage(TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(TVI_ROOT));
    EXPECT_EQ(0u, m_tree.GetCount());
    EXPECT_FALSE(m_tree.IsItemValid(top));
    EXPECT_FALSE(m_tree.GetItemWithGUID(topId, TVI_ROOT));
    m_tree.InsertItem(m_roots[0].get(), TVI_ROOT, TVI_LAST);
    EXPECT_EQ(paints, m_tree.GetInvalidationCount()) << "nothing is drawn while redraw is off";
    HTREEITEM again = m_tree.GetItemWithGUID(topId, TVI_ROOT);
    ASSERT_TRUE(again);
    EXPECT_NE(top, again) << "handles are never reused";
    m_tree.SendMessage(TVM_SELECTITEM, TVGN_FIRSTVISIBLE, reinterpret_cast<LPARAM>(again));
    m_tree.SendMessage(WM_SETREDRAW, TRUE, 0);
    EXPECT_GT(m_tree.GetInvalidationCount(), paints);
    EXPECT_EQ(again, m_tree.GetFirstVisibleItem());
    EXPECT_EQ(topState, m_tree.GetItemState(again, 3));
    EXPECT_TRUE(m_tree.IsSelected(Item(kUnit + L"/Weapons/Rifle"))) << "selection restored from the marks";

    // Look-ups below a start item, and after a single delete.
    HTREEITEM weapons = Item(kUnit + L"/Weapons");
    HTREEITEM ambience = Item(kUnit + L"/Ambience");
    EXPECT_TRUE(m_tree.GetItemWithGUID(*At(kUnit + L"/Weapons/Bow")->GetGUID(), weapons));
    EXPECT_FALSE(m_tree.GetItemWithGUID(*At(kUnit + L"/Weapons/Bow")->GetGUID(), ambience));
    HTREEITEM bow = Item(kUnit + L"/Weapons/Bow");
    m_tree.DeleteItem(bow);
    EXPECT_FALSE(m_tree.IsItemValid(bow));
    EXPECT_FALSE(Item(kUnit + L"/Weapons/Bow"));
    EXPECT_EQ(L"", m_tree.GetItemText(bow));
}

TEST_F(TreeTest, EnsureVisibleOpensCollapsedAncestorsAndScrollsMinimally)
{
    // A plain tree-view keeps items under collapsed parents.
    Open(kProject);
    HTREEITEM top = m_tree.InsertItem(L"Top", 0, 0);
    std::vector<HTREEITEM> chain{top};
    for (int depth = 0; depth < 4; ++depth)
        chain.push_back(m_tree.InsertItem(L"Level", 0, 0, chain.back()));
    for (int i = 0; i < 30; ++i)
        m_tree.InsertItem(L"Filler", 0, 0, TVI_ROOT);
    HTREEITEM deep = m_tree.InsertItem(L"Deep", 0, 0, chain.back());
    EXPECT_EQ(31, m_tree.GetRowCount());
    EXPECT_EQ(-1, m_tree.GetItemRow(deep));

    m_tree.ScrollToRow(20);
    m_parent.notes.clear();
    ASSERT_TRUE(m_tree.EnsureVisible(deep));
    EXPECT_EQ(5u, m_parent.Count(TVN_ITEMEXPANDINGW));
    EXPECT_EQ(5, m_tree.GetItemRow(deep));
    EXPECT_EQ(5, m_tree.GetScrollRow()) << "scrolled up just enough";
    m_tree.ScrollToRow(0);
    HTREEITEM last = m_tree.GetLastVisibleItem();
    m_tree.EnsureVisible(last);
    EXPECT_EQ(m_tree.GetRowCount() - Rows, m_tree.GetScrollRow())
        << "scrolled down to show it on the last row";
    m_tree.Wheel(WHEEL_DELTA);
    EXPECT_EQ(m_tree.GetRowCount() - Rows - 3, m_tree.GetScrollRow());
    m_tree.ScrollToRow(1000);
    EXPECT_EQ(m_tree.GetRowCount() - Rows, m_tree.GetScrollRow()) << "never scrolled past the last page";

    // An expansion the parent refuses does not happen.
    m_parent.answers[TVN_ITEMEXPANDINGW] = 1;
    m_tree.Expand(top, TVE_COLLAPSE);
    EXPECT_TRUE(m_tree.GetItemState(top, TVIS_EXPANDED));
}

TEST_F(TreeTest, LabelEditorBeginsEndsCancelsAndCanBeRefused)
{
    Open(kProject);
    InsertRoot(OrbObjectCategories::AudioObjects);
    HTREEITEM unit = Item(kUnit);

    m_parent.answers[TVN_BEGINLABELEDITW] = 1;
    EXPECT_EQ(0, m_tree.SendMessage(TVM_EDITLABELW, 0, reinterpret_cast<LPARAM>(unit)));
    EXPECT_EQ(0, m_tree.SendMessage(TVM_GETEDITCONTROL));
    m_parent.answers[TVN_BEGINLABELEDITW] = 0;

    // What the user types replaces the whole text, also the text the parent put there.
    m_parent.fillEditor = L"Default Work Unit (full name)";
    auto edit = reinterpret_cast<HWND>(m_tree.SendMessage(TVM_EDITLABELW, 0, reinterpret_cast<LPARAM>(unit)));
    ASSERT_TRUE(edit);
    EXPECT_EQ(reinterpret_cast<LRESULT>(edit), m_tree.SendMessage(TVM_GETEDITCONTROL));
    EXPECT_EQ(edit, ::GetFocus());
    EXPECT_TRUE(m_tree.GetRow(unit).editing);
    m_tree.TypeText(L"Footsteps");
    m_parent.notes.clear();
    m_tree.KeyPress(VK_RETURN, 0);
    ASSERT_EQ(1u, m_parent.Count(TVN_ENDLABELEDITW));
    EXPECT_TRUE(m_parent.notes[0].hasText);
    EXPECT_EQ(L"Footsteps", m_parent.notes[0].text);
    m_parent.fillEditor.clear();
    EXPECT_EQ(0, m_tree.SendMessage(TVM_GETEDITCONTROL));
    EXPECT_EQ(m_tree.GetSafeHwnd(), ::GetFocus());
    EXPECT_NE(L"Footsteps", m_tree.GetItemText(unit)) << "the label comes from the node, not the editor";

    // Escape ends with no text; the loss of the focus ends with the text.
    m_tree.SendMessage(TVM_EDITLABELW, 0, reinterpret_cast<LPARAM>(unit));
    m_parent.notes.clear();
    m_tree.KeyPress(VK_ESCAPE, 0);
    ASSERT_EQ(1u, m_parent.Count(TVN_ENDLABELEDITW));
    EXPECT_FALSE(m_parent.notes[0].hasText);
    m_tree.SendMessage(TVM_EDITLABELW, 0, reinterpret_cast<LPARAM>(unit));
    m_parent.notes.clear();
    m_parent.SetFocus();
    ASSERT_EQ(1u, m_parent.Count(TVN_ENDLABELEDITW));
    EXPECT_TRUE(m_parent.notes[0].hasText);
    EXPECT_EQ(0, m_tree.SendMessage(TVM_GETEDITCONTROL));

    // Deleting the edited item takes the editor with it.
    m_tree.SendMessage(TVM_EDITLABELW, 0, reinterpret_cast<LPARAM>(unit));
    m_tree.SendMessage(TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(TVI_ROOT));
    EXPECT_EQ(0, m_tree.SendMessage(TVM_GETEDITCONTROL));
}

TEST_F(TreeTest, ItemsKeepTheirOwnTextStateAndDepthWhatEverSlotTheyReuse)
{
    HTREEITEM top = m_tree.InsertItem(L"top", -1, 0);
    HTREEITEM labelled = m_tree.InsertItem(L"labelled", 300, 0, top);
    HTREEITEM deep = m_tree.InsertItem(nullptr, 0, 0, m_tree.InsertItem(nullptr, 0, 0, labelled));
    EXPECT_EQ(3, m_tree.GetItemDepth(deep));
    EXPECT_EQ(0, m_tree.GetItemDepth(top));
    EXPECT_EQ(-1, m_tree.GetItemImage(top));
    EXPECT_EQ(300, m_tree.GetItemImage(labelled));

    // Every state bit a caller may use, overlay and state-image indices included.
    const UINT all = TVIS_BOLD | TVIS_CUT | 0x0F00 | 0xF000;
    m_tree.SetItemState(labelled, all, 0xFFFF);
    EXPECT_EQ(all, m_tree.GetItemState(labelled, 0xFFFF));
    m_tree.SetItemState(labelled, 0, 0x0F00);
    EXPECT_EQ(TVIS_BOLD | TVIS_CUT | 0xF000u, m_tree.GetItemState(labelled, 0xFFFF));

    EXPECT_EQ(L"labelled", m_tree.GetItemText(labelled));
    EXPECT_EQ(L"", m_tree.GetItemText(deep)) << "no node: the control asks and gets nothing";
    m_tree.SetItemText(deep, L"own");
    EXPECT_EQ(L"own", m_tree.GetItemText(deep));
    m_tree.SetItemText(deep, nullptr);
    EXPECT_EQ(L"", m_tree.GetItemText(deep));

    // Items made in the slots freed by a deletion start clean.
    m_tree.DeleteItem(labelled);
    EXPECT_FALSE(m_tree.ItemExists(deep));
    for (int i = 0; i < 3; ++i)
    {
        HTREEITEM fresh = m_tree.InsertItem(nullptr, 0, 0, top);
        EXPECT_EQ(L"", m_tree.GetItemText(fresh));
        EXPECT_EQ(0u, m_tree.GetItemState(fresh, 0xFFFF));
        EXPECT_EQ(1, m_tree.GetItemDepth(fresh));
    }
    EXPECT_EQ(4u, m_tree.GetCount());
}

TEST_F(TreeTest, ItemsAreFoundByGuidAcrossManyRebuildsAndNotAfterTheyGo)
{
    Open(kProject);
    InsertRoot(OrbObjectCategories::AudioObjects);
    m_tree.Expand(Item(kUnit), TVE_EXPAND);
    const std::wstring weapons = kUnit + L"/Weapons";
    // Each rebuild leaves the entries of the items it deleted: enough to fill the index often.
    for (int i = 0; i < 200; ++i)
    {
        m_tree.Expand(Item(weapons), TVE_EXPAND);
        HTREEITEM pistol = Item(weapons + L"/Pistol");
        ASSERT_TRUE(pistol) << "rebuild " << i;
        EXPECT_EQ(L"Pistol", m_tree.GetItemText(pistol));
        EXPECT_EQ(Item(weapons), m_tree.GetParentItem(pistol));
        m_tree.Expand(Item(weapons), TVE_COLLAPSE);
        EXPECT_EQ(nullptr, m_tree.GetItemWithGUID(*At(weapons + L"/Pistol")->GetGUID()));
    }
    EXPECT_TRUE(Item(kUnit + L"/Ambience")) << "items never rebuilt stay found";
}

TEST_F(TreeTest, ASlowSecondClickOnTheOnlySelectedLabelEditsItAndNothingElseDoes)
{
    Open(kProject);
    InsertRoot(OrbObjectCategories::AudioObjects);
    m_tree.Expand(Item(kUnit), TVE_EXPAND);
    HTREEITEM ambience = Item(kUnit + L"/Ambience");
    HTREEITEM weapons = Item(kUnit + L"/Weapons");
    WindowSystem& system = WindowSystem::Get();
    const UINT wait = system.GetDoubleClickTime();
    auto edits = [&] { return m_parent.Count(TVN_BEGINLABELEDITW); };

    // The click that selects never edits, nor one that brings the focus back to the tree.
    m_tree.Click(LabelOf(ambience), 0);
    system.Advance(wait * 2);
    m_parent.SetFocus();
    m_tree.Click(LabelOf(ambience), 0);
    system.Advance(wait * 2);
    EXPECT_EQ(0u, edits());

    // The second click waits out the double-click time, then edits.
    m_tree.Click(LabelOf(ambience), 0);
    system.Advance(wait - 1);
    EXPECT_EQ(0u, edits());
    system.Advance(1);
    ASSERT_EQ(1u, edits());
    EXPECT_TRUE(m_tree.GetRow(ambience).editing);
    m_tree.KeyPress(VK_ESCAPE, 0);
    m_parent.notes.clear();

    // A double click, a key, a drag, a right click or a click elsewhere takes the edit back.
    m_tree.DoubleClick(LabelOf(ambience), 0);
    system.Advance(wait * 2);
    m_tree.Click(LabelOf(ambience), 0);
    m_tree.KeyPress(VK_RIGHT, 0);
    system.Advance(wait * 2);
    m_tree.Click(LabelOf(ambience), 0);
    m_tree.RightClick(LabelOf(ambience), 0);
    system.Advance(wait * 2);
    m_tree.Click(LabelOf(ambience), 0);
    m_tree.Click(LabelOf(weapons), 0);
    system.Advance(wait * 2);
    EXPECT_EQ(0u, edits());
    EXPECT_TRUE(m_tree.IsSelected(weapons));

    // Only a plain click on the label of the only selected item counts.
    m_tree.Click(IconOf(weapons), 0);
    m_tree.Click(LabelOf(weapons), MK_CONTROL);
    m_tree.Click(LabelOf(weapons), MK_CONTROL);
    system.Advance(wait * 2);
    m_tree.Click(LabelOf(ambience), MK_CONTROL);
    m_tree.Click(LabelOf(weapons), 0);
    system.Advance(wait * 2);
    EXPECT_EQ(0u, edits());

    // The selection changed by the program meanwhile: no edit of a row no longer selected.
    m_tree.Click(LabelOf(weapons), 0);
    m_tree.Click(LabelOf(weapons), 0);
    m_tree.SelectAll(false);
    system.Advance(wait * 2);
    EXPECT_EQ(0u, edits());
}
