// The keys users of native tree controls expect: finding a row by typing its start, expanding a
// whole branch from the keypad, Backspace to the parent and Ctrl+A.

#include "TreeFixture.h"

#include "platform/WindowSystem.h"

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
      Rifle : SoundSFX
      Revolver : SoundSFX
      Knife : SoundSFX
)";
const std::wstring kUnit = L"AudioObjects/Default Work Unit";

class TreeKeysTest : public TreeTest
{
protected:
    void SetUp() override
    {
        TreeTest::SetUp();
        Open(kProject);
        InsertRoot(OrbObjectCategories::AudioObjects);
        m_tree.Click(ButtonOf(Item(kUnit)), 0);
        m_tree.SetFocus();
    }

    std::wstring Focused()
    {
        return m_tree.GetFocusedItem() ? m_tree.GetItemText(m_tree.GetFocusedItem()) : L"";
    }
    void Type(std::wstring const& text)
    {
        for (wchar_t ch : text)
            m_tree.TypeChar(ch);
    }
};
} // namespace

TEST_F(TreeKeysTest, TypingFindsTheNextRowStartingWithWhatWasTyped)
{
    m_tree.Click(ButtonOf(Item(kUnit + L"/Weapons")), 0);
    m_tree.Click(LabelOf(Item(kUnit)), 0);

    // Case does not matter; one letter again and again steps through the rows it starts.
    Type(L"r");
    EXPECT_EQ(Focused(), L"Rifle");
    EXPECT_TRUE(m_tree.IsSelected(Item(kUnit + L"/Weapons/Rifle")));
    EXPECT_EQ(m_tree.GetSelectedCount(), 1u);
    Type(L"R");
    EXPECT_EQ(Focused(), L"Revolver");
    Type(L"r");
    EXPECT_EQ(Focused(), L"Rifle") << "the search wraps round to the top";

    // Letters typed in a burst make one prefix, searched from the focused row.
    WindowSystem::Get().Advance(MultiSelectionTreeCtrl::k_typeAheadMs + 1);
    Type(L"rev");
    EXPECT_EQ(Focused(), L"Revolver");
    // After a pause the typing starts a new search; a blank never starts one.
    WindowSystem::Get().Advance(MultiSelectionTreeCtrl::k_typeAheadMs + 1);
    Type(L" am");
    EXPECT_EQ(Focused(), L"Ambience");
    WindowSystem::Get().Advance(MultiSelectionTreeCtrl::k_typeAheadMs + 1);
    Type(L"default w");
    EXPECT_EQ(Focused(), L"Default Work Unit");
    // Nothing matching moves nothing; rows hidden under a collapsed parent are not searched.
    WindowSystem::Get().Advance(MultiSelectionTreeCtrl::k_typeAheadMs + 1);
    Type(L"g");
    EXPECT_EQ(Focused(), L"Default Work Unit");
    // The selection moved as a keyboard gesture, in one batch per character.
    EXPECT_GT(m_parent.Count(MultiSelectionTreeCtrl::NotifyBatchSelChangeEnd), 0u);
}

TEST_F(TreeKeysTest, KeypadStarExpandsTheBranchBackspaceClimbsCtrlAAllRows)
{
    HTREEITEM ambience = Item(kUnit + L"/Ambience");
    m_tree.Click(LabelOf(ambience), 0);
    m_tree.KeyPress(VK_MULTIPLY, 0);
    // Everything below the focused row is open, and nothing beside it.
    EXPECT_EQ(RowTexts(), (std::vector<std::wstring>{L"Audio Objects", L"Default Work Unit", L"Ambience",
                                                     L"Rain", L"Wind", L"Gust", L"Breeze", L"Weapons"}));

    m_tree.Click(LabelOf(Item(kUnit + L"/Ambience/Wind/Gust")), 0);
    m_tree.KeyPress(VK_BACK, 0);
    EXPECT_EQ(Focused(), L"Wind");
    EXPECT_TRUE(m_tree.IsSelected(Item(kUnit + L"/Ambience/Wind")));
    EXPECT_EQ(m_tree.GetSelectedCount(), 1u);
    m_tree.KeyPress(VK_BACK, 0);
    m_tree.KeyPress(VK_BACK, 0);
    m_tree.KeyPress(VK_BACK, 0);
    m_tree.KeyPress(VK_BACK, 0);
    EXPECT_EQ(Focused(), L"Audio Objects") << "the top row has no parent to go to";

    // Ctrl+A selects the rows shown, not the items of collapsed branches, in one batch.
    m_parent.notes.clear();
    m_tree.KeyPress('A', MK_CONTROL);
    EXPECT_EQ(m_tree.GetSelectedCount(), static_cast<UINT>(m_tree.GetRowCount()));
    EXPECT_EQ(m_parent.Count(MultiSelectionTreeCtrl::NotifyBatchSelChangeEnd), 1u);
    EXPECT_EQ(Focused(), L"Audio Objects");
    // 'A' alone is a letter, not a command.
    m_tree.KeyPress('A', 0);
    EXPECT_EQ(m_tree.GetSelectedCount(), static_cast<UINT>(m_tree.GetRowCount()));
}

TEST_F(TreeKeysTest, TypingGoesToAnOpenLabelEditor)
{
    HTREEITEM ambience = Item(kUnit + L"/Ambience");
    m_tree.Click(LabelOf(ambience), 0);
    ASSERT_NE(m_tree.EditLabel(ambience), nullptr);
    m_tree.GetEditControl()->SetWindowText(L"");
    Type(L"wx");
    EXPECT_EQ(m_tree.GetEditControl()->GetWindowText(), L"wx");
    EXPECT_EQ(Focused(), L"Ambience");
}
