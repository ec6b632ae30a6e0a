// Scripted answers to the tools' dialogs: an answer the dialog cannot take is a fault on record,
// and a progress dialog takes a Cancel only when one is next in line.

#include "HostFixture.h"

#include "host/ProjectLoadProgress.h"
#include "sonarium/ui/dialogs/ScriptedDialogService.h"

namespace
{
class ToolDialogServiceTest : public HostTest
{
protected:
    sn::ScriptedDialogService m_dialogs;
    sn::ScopedDialogService m_installed{&m_dialogs};
};

TEST_F(ToolDialogServiceTest, AnImporterAnswerNeedsALanguageOfTheProject)
{
    sn::ImporterRequest request;
    request.destination = L"AudioObjects/Props";
    request.languages = {L"English"};
    request.describe = [](bool voice, const std::wstring&)
    { return std::vector<sn::ImporterRow>{{L"a.wav", L"WAV", true, voice ? L"voice" : L"sfx"}}; };
    m_dialogs.AnswerImporter(true, L"Klingon");
    m_dialogs.AnswerImporter(true, L"English");
    EXPECT_FALSE(m_dialogs.ShowImporter(request).ok);
    EXPECT_EQ(1u, m_dialogs.UnansweredCount());
    EXPECT_TRUE(m_dialogs.ShowImporter(request).ok);
    EXPECT_EQ(L"importer destination=\"AudioObjects/Props\" -> Import voice \"English\"\n  \"a.wav\" WAV -> voice",
              m_dialogs.Records().back().line);
}

TEST_F(ToolDialogServiceTest, ProgressRunsToTheEndUnlessACancelIsNext)
{
    {
        CDlgLoadProjectProgress progress;
        progress.SetProjectPath(L"/p/Demo.sonproj");
        progress.Begin(L"Loading Work Units", 2);
        EXPECT_TRUE(progress.Step(L"A"));
        EXPECT_TRUE(progress.Step(L"B"));
        progress.Problem(L"B.swu: broken");
    }
    EXPECT_EQ(L"progress caption=\"Loading Work Units\" steps=2 -> done\n  problem: B.swu: broken",
              m_dialogs.Records().back().line)
        << "the dialog closes with its owner";

    m_dialogs.CancelProgressAt(1);
    CDlgLoadProjectProgress progress;
    progress.Begin(L"Unloading Work Units", 3);
    EXPECT_TRUE(progress.Step(L"A"));
    EXPECT_FALSE(progress.Step(L"B"));
    EXPECT_FALSE(progress.Step(L"C")) << "cancelled stays cancelled";
    progress.End();
    EXPECT_EQ(L"progress caption=\"Unloading Work Units\" steps=3 -> cancelled after 1", m_dialogs.Records().back().line);
    EXPECT_EQ(0u, m_dialogs.UnansweredCount());
    EXPECT_EQ(0u, m_dialogs.PendingAnswers());
}
} // namespace
