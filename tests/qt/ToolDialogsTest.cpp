// The windows of the host's tools: the importer's rows follow the user's choices, batch rename
// shows every new name as the rule is typed, and the waveform reads what a sound plays.

#include "sonarium/app/session/AppSession.h"
#include "sonarium/core/host/ProjectBuilder.h"
#include "sonarium/qt/BatchRenameDialog.h"
#include "sonarium/qt/ImporterDialog.h"
#include "sonarium/qt/WaveformWidget.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTableWidget>

#include <gtest/gtest.h>

namespace
{
QString Cell(QTableWidget* table, int row, int column)
{
    QTableWidgetItem* item = table->item(row, column);
    return item ? item->text() : QString();
}
} // namespace

TEST(ToolDialogs, TheImporterDescribesTheFilesForTheChoicesMade)
{
    sn::ImporterRequest request;
    request.destination = L"AudioObjects/Props";
    request.languages = {L"English", L"French"};
    request.language = L"English";
    request.describe = [](bool voice, const std::wstring& language)
    {
        return std::vector<sn::ImporterRow>{
            {L"/in/a.wav", L"WAV", true, voice ? L"voice in " + language : L"new Sound SFX \"a\""},
            {L"/in/b.wav", L"the file is empty", false, L"left out: the file is empty"}};
    };
    sn::qt::ImporterDialog dialog(request, nullptr);
    QTableWidget* files = dialog.Files();
    ASSERT_EQ(2, files->rowCount());
    EXPECT_EQ(QStringLiteral("a.wav"), Cell(files, 0, 0));
    EXPECT_EQ(QStringLiteral("new Sound SFX \"a\""), Cell(files, 0, 2));
    EXPECT_FALSE(dialog.LanguageChoice()->isEnabled()) << "a language only for voices";
    EXPECT_TRUE(dialog.ImportButton()->isEnabled());

    dialog.VoiceChoice()->setChecked(true);
    dialog.LanguageChoice()->setCurrentText(QStringLiteral("French"));
    EXPECT_EQ(QStringLiteral("voice in French"), Cell(files, 0, 2));
    const sn::ImporterAnswer answer = dialog.Answer();
    EXPECT_TRUE(answer.voice);
    EXPECT_EQ(L"French", answer.language);

    request.problem = L"The project has not been saved to a folder yet.";
    sn::qt::ImporterDialog refused(request, nullptr);
    EXPECT_FALSE(refused.ImportButton()->isEnabled());
}

TEST(ToolDialogs, BatchRenameShowsEveryNewNameAsTheRuleIsTyped)
{
    std::vector<sn::rename::BatchRenameRule> asked;
    sn::BatchRenameRequest request;
    request.objects = {L"AudioObjects/Rain", L"AudioObjects/Wind"};
    request.preview = [&](const sn::rename::BatchRenameRule& rule)
    {
        asked.push_back(rule);
        std::vector<sn::rename::BatchRenameRow> rows;
        for (std::wstring name : {L"Rain", L"Wind"})
            rows.push_back({name, sn::rename::NewName(name, rule, rows.size()),
                            rule.prefix == L"/" ? L"not allowed" : L""});
        return rows;
    };
    sn::qt::BatchRenameDialog dialog(request, nullptr);
    EXPECT_FALSE(dialog.RenameButton()->isEnabled()) << "nothing changes yet";
    dialog.Prefix()->setText(QStringLiteral("Amb_"));
    dialog.Numbering()->setChecked(true);
    EXPECT_EQ(QStringLiteral("Amb_Wind02"), Cell(dialog.Preview(), 1, 1));
    EXPECT_TRUE(dialog.RenameButton()->isEnabled());
    EXPECT_TRUE(dialog.Rule().numbering);
    dialog.Prefix()->setText(QStringLiteral("/"));
    EXPECT_EQ(QStringLiteral("not allowed"), Cell(dialog.Preview(), 0, 2));
    EXPECT_FALSE(dialog.RenameButton()->isEnabled()) << "no name it could give";
    EXPECT_GE(asked.size(), 4u) << "asked again at each change";
}

TEST(ToolDialogs, TheWaveformReadsWhatASoundPlays)
{
    sn::AppSession session;
    std::vector<std::wstring> messages;
    ASSERT_TRUE(session.OpenProject(SONARIUM_SAMPLES_DIR "/Demo", messages));
    sn::ProjectObject* sound =
        sn::FindByPath(*session.GetProject(), L"AudioObjects/World/Ambience/Weather/Thunder/Thunder_Far");
    ASSERT_TRUE(sound);
    sn::qt::WaveformWidget waveform;
    waveform.resize(200, 60);
    waveform.ShowObject(sound);
    ASSERT_TRUE(waveform.Audio().info.ok) << std::string(waveform.Audio().info.problem.begin(),
                                                         waveform.Audio().info.problem.end());
    EXPECT_EQ(200u, waveform.Audio().peaks.size()) << "a peak per column";
    float loudest = 0;
    for (const sn::audio::Peak& peak : waveform.Audio().peaks)
        loudest = std::max(loudest, peak.high);
    EXPECT_GT(loudest, 0.1f) << "the sample's thunder is not silence";
    waveform.resize(100, 60);
    waveform.ShowObject(sound);
    EXPECT_EQ(100u, waveform.Audio().peaks.size());
    EXPECT_FALSE(waveform.grab().isNull());

    waveform.ShowObject(sn::FindByPath(*session.GetProject(), L"AudioObjects/World"));
    EXPECT_EQ(nullptr, waveform.Audio().source) << "a folder plays nothing";
}
