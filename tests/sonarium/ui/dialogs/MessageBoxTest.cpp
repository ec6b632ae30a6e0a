#include "HostFixture.h"

#include "host/MessageBox.h"
#include "sonarium/ui/dialogs/ScriptedDialogService.h"

namespace
{
constexpr UINT kLoadUnloadStyle = 0x1000021; // OK/Cancel, question, "Don't ask me again"

class MessageBoxTest : public HostTest
{
protected:
    int AskLoadUnload()
    {
        wchar_t key[] = L"LoadUnloadWorkUnits";
        CXMessageBoxDefs::CXMSGBOXPARAMS params;
        params.pszDontAskAgainKey = key;
        return CXMessageBoxEx(nullptr, L"Loading/unloading Work Units cannot be undone.",
                              L"Load/Unload Work Units?", kLoadUnloadStyle, &params);
    }

    void RestartHost()
    {
        m_host.reset();
        sn::HostOptions options;
        options.preferencesFile = m_dir / "preferences.json";
        m_host = std::make_unique<sn::Host>(options);
    }

    sn::ScriptedDialogService m_dialogs;
    sn::ScopedDialogService m_installed{&m_dialogs};
};

TEST_F(MessageBoxTest, TickedAnswerIsRememberedAcrossAHostRestart)
{
    m_dialogs.AnswerMessageBox(IDOK, true);
    EXPECT_EQ(IDOK, AskLoadUnload());

    RestartHost();
    EXPECT_EQ(IDOK, AskLoadUnload());
    EXPECT_EQ(IDOK, AskLoadUnload());

    // Shown once; the later answers came from the preferences file.
    ASSERT_EQ(1u, m_dialogs.Records().size());
    EXPECT_EQ(0u, m_dialogs.UnansweredCount());
}

TEST_F(MessageBoxTest, UntickedOrCancelledAnswersAreAskedAgain)
{
    m_dialogs.AnswerMessageBox(IDOK, false);
    m_dialogs.AnswerMessageBox(IDCANCEL, true);
    m_dialogs.AnswerMessageBox(IDOK, false);
    EXPECT_EQ(IDOK, AskLoadUnload());
    EXPECT_EQ(IDCANCEL, AskLoadUnload());
    RestartHost();
    EXPECT_EQ(IDOK, AskLoadUnload());
    EXPECT_EQ(3u, m_dialogs.Records().size());
    EXPECT_EQ(0u, m_dialogs.UnansweredCount());
}

TEST_F(MessageBoxTest, TheKeyCountsOnlyWithTheDontAskAgainStyle)
{
    wchar_t key[] = L"SomeQuestion";
    CXMessageBoxDefs::CXMSGBOXPARAMS params;
    params.pszDontAskAgainKey = key;

    // Without the style bit the box has no check box to tick: a ticked answer is a script fault.
    m_dialogs.AnswerMessageBox(IDOK, true);
    EXPECT_EQ(IDCANCEL, CXMessageBoxEx(nullptr, L"Go on?", nullptr, MB_OKCANCEL, &params));
    m_dialogs.AnswerMessageBox(IDOK, false);
    EXPECT_EQ(IDOK, CXMessageBoxEx(nullptr, L"Go on?", nullptr, MB_OKCANCEL, &params));

    ASSERT_EQ(2u, m_dialogs.Records().size());
    EXPECT_FALSE(m_dialogs.Records()[0].answered);
    EXPECT_NE(std::wstring::npos, m_dialogs.Records()[0].line.find(L"UNANSWERED"));
    EXPECT_EQ(std::wstring::npos, m_dialogs.Records()[1].line.find(L"dont-ask-again"));
}

TEST_F(MessageBoxTest, AStoredValueThatIsNotAButtonOfTheBoxIsIgnored)
{
    m_host->Preferences().SetIntValue(L"DontAskAgain", L"LoadUnloadWorkUnits", IDYES);
    m_dialogs.AnswerMessageBox(IDOK, true);
    EXPECT_EQ(IDOK, AskLoadUnload());
    EXPECT_EQ(1u, m_dialogs.Records().size());
    // The ticked answer replaced the bad value.
    EXPECT_EQ(IDOK, m_host->Preferences().GetIntValue(L"DontAskAgain", L"LoadUnloadWorkUnits", 0));
}

TEST_F(MessageBoxTest, MissingAnswersAreRecordedAndAnswerTheBoxesOwnCancel)
{
    EXPECT_EQ(IDCANCEL, CXMessageBox(L"Stop?", MB_OKCANCEL | MB_ICONERROR));
    EXPECT_EQ(IDNO, CXMessageBox(L"Keep?", MB_YESNO));
    // A ticked remembered answer never comes from a box nobody answered.
    EXPECT_EQ(IDCANCEL, AskLoadUnload());
    EXPECT_EQ(IDCANCEL, AskLoadUnload());

    ASSERT_EQ(4u, m_dialogs.Records().size());
    EXPECT_EQ(4u, m_dialogs.UnansweredCount());
    EXPECT_EQ(L"Sonarium", m_dialogs.Records()[0].caption);
    EXPECT_EQ(
        L"message caption=\"Sonarium\" text=\"Keep?\" style=0x00000004 -> UNANSWERED (no answer queued), No",
        m_dialogs.Records()[1].line);
}

TEST_F(MessageBoxTest, AnswersMustFitTheDialogThatTakesThem)
{
    m_dialogs.AnswerFile({L"/tmp/a.txt"});
    EXPECT_EQ(IDCANCEL, CXMessageBox(L"First", MB_OKCANCEL));
    // An answer of another kind stays queued for the dialog it was meant for.
    EXPECT_EQ(1u, m_dialogs.PendingAnswers());
    EXPECT_NE(std::wstring::npos, m_dialogs.Records()[0].line.find(L"the next answer is for a file dialog"));
    m_dialogs.Clear();

    // An answer of the right kind but not a button of the box is used up.
    m_dialogs.AnswerMessageBox(IDYES);
    EXPECT_EQ(IDCANCEL, CXMessageBox(L"Second", MB_OKCANCEL));
    EXPECT_EQ(0u, m_dialogs.PendingAnswers());
    EXPECT_NE(std::wstring::npos,
              m_dialogs.Records()[0].line.find(L"UNANSWERED (Yes is not a button of this box)"));
}

TEST_F(MessageBoxTest, TranscriptIsOneEscapedLinePerDialog)
{
    m_dialogs.AnswerMessageBox(IDOK, true);
    m_dialogs.AnswerMessageBox(IDOK);
    AskLoadUnload();
    CXMessageBox(L"Reserved:\r\n\r\n        \"Default Work Unit\"", 17, L"New Work Unit");

    EXPECT_EQ(
        L"message caption=\"Load/Unload Work Units?\" text=\"Loading/unloading Work Units cannot be "
        L"undone.\" "
        L"style=0x01000021 dont-ask-again=\"LoadUnloadWorkUnits\" -> OK ticked\n"
        L"message caption=\"New Work Unit\" text=\"Reserved:\\r\\n\\r\\n        \\\"Default Work Unit\\\"\" "
        L"style=0x00000011 -> OK\n",
        m_dialogs.Transcript());
}

} // namespace
