// Renaming in place: what the editor opens on, what an entered name becomes, and the editor that
// comes back on its row after the host refused a name.

#include "CreationFixture.h"

using namespace creation;

namespace
{
const std::wstring kRain = kAmbience + L"/Rain";
} // namespace

class RenameTest : public CreationTest
{
protected:
    void Rename(const std::wstring& path, const std::wstring& text)
    {
        Select({path});
        m_view->SendMessage(HostMessages::RenameObject, 0, 0);
        ASSERT_TRUE(Editor()) << "no editor on " << Utf8::FromWide(path);
        Type(text);
        PressKey(VK_RETURN);
    }
};

TEST_F(RenameTest, TheEditorHoldsTheNameAloneAndWhatIsTypedIsTrimmedFixedAndExact)
{
    // An unsaved work unit shows a mark after its name; the editor does not.
    At(kRain)->SetName(L"Rainfall");
    Select({kUnit});
    ASSERT_NE(m_view->GetTreeCtrl().GetItemText(ItemOf(m_view, kUnit)), L"Default Work Unit");
    m_view->SendMessage(HostMessages::RenameObject, 0, 0);
    ASSERT_TRUE(Editor());
    EXPECT_EQ(Editor()->GetWindowText(), L"Default Work Unit");
    int start = -1, end = -1;
    Editor()->GetSel(start, end);
    EXPECT_EQ(std::make_pair(start, end), std::make_pair(0, 17)) << "the whole name is selected";
    PressKey(VK_ESCAPE);

    const size_t steps = UndoSteps();
    Rename(kAmbience + L"/Rainfall", L"\t Rain\tfall  ");
    EXPECT_EQ(ChildNames(kAmbience)[0], L"Rain fall") << "trimmed, and the tab inside made a blank";
    Rename(kAmbience + L"/Rain fall", L"rain FALL");
    EXPECT_EQ(ChildNames(kAmbience)[0], L"rain FALL") << "a change of case alone is a rename";
    EXPECT_EQ(UndoSteps(), steps + 2);

    // The same name, or nothing: kept silently, no step, the row selected again.
    Rename(kAmbience + L"/rain FALL", L"rain FALL");
    Rename(kAmbience + L"/rain FALL", L"   ");
    EXPECT_EQ(UndoSteps(), steps + 2);
    EXPECT_TRUE(m_dialogs.Records().empty());
    EXPECT_TRUE(m_view->GetTreeCtrl().IsSelected(ItemOf(m_view, kAmbience + L"/rain FALL")));
}

TEST_F(RenameTest, ARefusedNameIsExplainedAndTheEditorComesBackOnItsRow)
{
    m_dialogs.AnswerMessageBox(IDOK);
    Rename(kRain, L"THUNDER");
    ASSERT_EQ(m_dialogs.Records().size(), 1u);
    EXPECT_EQ(m_dialogs.Records()[0].caption, L"Invalid Name");
    EXPECT_NE(m_dialogs.Records()[0].text.find(L"already named \"THUNDER\""), std::wstring::npos);
    EXPECT_EQ(ChildNames(kAmbience)[0], L"Rain");
    EXPECT_FALSE(Editor());

    WindowSystem::Get().Advance(199);
    EXPECT_FALSE(Editor());
    WindowSystem::Get().Advance(1);
    ASSERT_TRUE(Editor());
    EXPECT_EQ(EditedName(), L"Rain");
    EXPECT_EQ(Editor()->GetWindowText(), L"Rain") << "with the name as it was";

    Type(std::wstring(300, L'w'));
    EXPECT_EQ(Editor()->GetWindowText().size(), 260u) << "the editor takes 260 characters";
    // Text put in some other way than typing is still checked by the host.
    Editor()->SetWindowText(std::wstring(261, L'w').c_str());
    m_dialogs.AnswerMessageBox(IDOK);
    PressKey(VK_RETURN);
    EXPECT_NE(m_dialogs.Records().back().text.find(L"261 characters"), std::wstring::npos);

    // Another refusal while the editor is waiting to come back: only the last row gets it, 200 ms
    // after its own refusal.
    WindowSystem::Get().Advance(150);
    m_dialogs.AnswerMessageBox(IDOK);
    Rename(kAmbience + L"/Wind", L"rain");
    WindowSystem::Get().Advance(199);
    EXPECT_FALSE(Editor());
    WindowSystem::Get().Advance(1);
    ASSERT_TRUE(Editor());
    EXPECT_EQ(EditedName(), L"Wind");
    PressKey(VK_ESCAPE);
    WindowSystem::Get().Advance(400);
    EXPECT_FALSE(Editor()) << "a cancelled edit is not reopened";
    EXPECT_EQ(ChildNames(kAmbience), (std::vector<std::wstring>{L"Rain", L"Thunder", L"Wind", L"Birds"}));
}

TEST_F(RenameTest, OnlyOneRowThatMayBeRenamedGetsTheEditor)
{
    Select({kRain, kAmbience + L"/Wind"});
    m_view->SendMessage(HostMessages::RenameObject, 0, 0);
    EXPECT_FALSE(Editor()) << "two rows selected";

    Select({L"Busses/Outputs/Speakers"});
    PressKey(VK_F2);
    EXPECT_FALSE(Editor()) << "output devices keep their output's name";

    // An end of edit that no accepted beginning opened changes nothing.
    Select({kRain});
    std::wstring text = L"Drizzle";
    NMTVDISPINFOW info{};
    info.hdr.hwndFrom = m_view->GetTreeCtrl().GetSafeHwnd();
    info.hdr.idFrom = DlgProjectExplorer::IDC_PROJECT_TREE;
    info.hdr.code = TVN_ENDLABELEDITW;
    info.item.hItem = ItemOf(m_view, kRain);
    info.item.pszText = text.data();
    EXPECT_EQ(m_view->SendMessage(WM_NOTIFY, info.hdr.idFrom, reinterpret_cast<LPARAM>(&info)), 0);
    EXPECT_EQ(ChildNames(kAmbience)[0], L"Rain");
}
