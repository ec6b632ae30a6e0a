#include "HostFixture.h"

#include "host/DlgNewWorkUnit.h"
#include "host/FileDialog.h"
#include "host/MessageBox.h"
#include "host/UnloadDirtyWorkUnitsDlg.h"
#include "sonarium/ui/dialogs/ScriptedDialogService.h"

namespace
{
class HostDialogsTest : public HostTest
{
protected:
    sn::ScriptedDialogService m_dialogs;
    sn::ScopedDialogService m_installed{&m_dialogs};
};

TEST_F(HostDialogsTest, SaveDialogAddsTheDefaultExtensionOnlyWhereNoneWasTyped)
{
    m_dialogs.AnswerFile({L"/work/mix"});
    m_dialogs.AnswerFile({L"/work/mix.wav"});
    CxFileDialog save(CxFileDialog::FileDialogOperation_Save, L".txt", L"mix",
                      CFileDialog::Flag_OverwritePrompt, L"Text Files (*.txt)|*.txt||", nullptr);

    ASSERT_EQ(IDOK, save.DoModal());
    EXPECT_EQ(L"/work/mix.txt", save.GetPathName());
    EXPECT_EQ(L"mix.txt", save.GetFileName());
    ASSERT_EQ(IDOK, save.DoModal());
    EXPECT_EQ(L"/work/mix.wav", save.GetPathName());
    EXPECT_EQ(L"file save caption=\"Save As\" filter=\"Text Files (*.txt)|*.txt||\" extension=\".txt\" "
              L"name=\"mix\" flags=0x2 -> OK paths=[\"/work/mix\"]",
              m_dialogs.Records()[0].line);
}

TEST_F(HostDialogsTest, OpenDialogHonoursSingleOrMultipleSelection)
{
    const CStdStr<wchar_t> filter = L"Text Files (*.txt)|*.txt|All Files (*.*)|*.*||";
    CxFileDialog single(CxFileDialog::FileDialogOperation_Open, L"", L"", 6, filter, nullptr);
    single.SetCaption(L"Import Definitions");

    m_dialogs.AnswerFile({L"/a.txt", L"/b.txt"});
    EXPECT_EQ(IDCANCEL, single.DoModal());
    EXPECT_TRUE(single.GetPathName().empty());
    EXPECT_NE(std::wstring::npos, m_dialogs.Records()[0].line.find(L"UNANSWERED (the dialog takes one path"));

    m_dialogs.AnswerFile({L""});
    EXPECT_EQ(IDCANCEL, single.DoModal());

    m_dialogs.CancelFile();
    EXPECT_EQ(IDCANCEL, single.DoModal());

    CxFileDialog several(CxFileDialog::FileDialogOperation_Open, L"", L"", CFileDialog::Flag_AllowMultiSelect,
                         filter, nullptr);
    m_dialogs.AnswerFile({L"/a.txt", L"/b.txt"});
    ASSERT_EQ(IDOK, several.DoModal());
    EXPECT_EQ((std::vector<CStdStr<wchar_t>>{L"/a.txt", L"/b.txt"}), several.GetPathNames());
    EXPECT_EQ(L"/a.txt", several.GetPathName());

    ASSERT_EQ(4u, m_dialogs.Records().size());
    EXPECT_EQ(L"Import Definitions", m_dialogs.Records()[0].caption);
    EXPECT_EQ(L"Open", m_dialogs.Records()[3].caption);
    EXPECT_EQ(2u, m_dialogs.UnansweredCount());
}

TEST_F(HostDialogsTest, NewWorkUnitDialogChangesTheNameOnlyOnOk)
{
    CStdStr<wchar_t> name = L"New Work Unit";
    m_dialogs.AnswerNewWorkUnit(L"Ambience");
    EXPECT_EQ(1, CDlgNewWorkUnit::Show(PMTreeNode::WorkUnit, L"/p/Actor-Mixer Hierarchy", name));
    EXPECT_EQ(L"Ambience", name);

    m_dialogs.CancelNewWorkUnit();
    EXPECT_EQ(2, CDlgNewWorkUnit::Show(PMTreeNode::WorkUnit, L"/p/Actor-Mixer Hierarchy", name));
    EXPECT_EQ(L"Ambience", name);

    EXPECT_EQ(2, CDlgNewWorkUnit::Show(PMTreeNode::PhysicalFolder, L"/p", name));
    EXPECT_EQ(L"Ambience", name);

    const std::wstring typeName = PMTreeNode::GetNodeTypeName(PMTreeNode::WorkUnit);
    EXPECT_EQ(L"new-work-unit type=3 \"" + typeName +
                  L"\" folder=\"/p/Actor-Mixer Hierarchy\" name=\"New Work Unit\" -> OK name=\"Ambience\"",
              m_dialogs.Records()[0].line);
    EXPECT_FALSE(m_dialogs.Records()[2].answered);
}

TEST_F(HostDialogsTest, UnloadDirtyDialogListsThePathsAndCancelsWhenUnanswered)
{
    const std::vector<CStdStr<wchar_t>> paths{L"/p/Music.wu", L"/p/Sfx \"old\".wu"};
    m_dialogs.AnswerUnloadDirty(UnloadDirtyWorkUnitsDlg::Decision_Discard);
    EXPECT_EQ(UnloadDirtyWorkUnitsDlg::Decision_Discard, UnloadDirtyWorkUnitsDlg::Show(paths));
    EXPECT_EQ(UnloadDirtyWorkUnitsDlg::Decision_Cancel, UnloadDirtyWorkUnitsDlg::Show(paths));

    EXPECT_EQ(
        L"unload-dirty paths=[\"/p/Music.wu\", \"/p/Sfx \\\"old\\\".wu\"] -> Discard\n"
        L"unload-dirty paths=[\"/p/Music.wu\", \"/p/Sfx \\\"old\\\".wu\"] -> UNANSWERED (no answer queued), "
        L"Cancel\n",
        m_dialogs.Transcript());
}

TEST(HostDialogsWithoutService, NothingIsShownAndEveryDialogIsCancelled)
{
    sn::ScopedDialogService none(nullptr);
    EXPECT_EQ(0, CXMessageBox(L"Anyone?", MB_OKCANCEL));
    CStdStr<wchar_t> name = L"Proposed";
    EXPECT_EQ(2, CDlgNewWorkUnit::Show(PMTreeNode::WorkUnit, L"/p", name));
    EXPECT_EQ(L"Proposed", name);
    EXPECT_EQ(UnloadDirtyWorkUnitsDlg::Decision_Cancel, UnloadDirtyWorkUnitsDlg::Show({L"/p/a.wu"}));
    CxFileDialog open(CxFileDialog::FileDialogOperation_Open, L"", L"", 0, L"", nullptr);
    EXPECT_EQ(IDCANCEL, open.DoModal());
}
} // namespace
