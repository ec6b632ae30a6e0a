// The host's tools the explorer opens on its selection: the audio-file importer into the one
// selected object, batch rename over the host's selection, and the SoundBank-definition importer
// behind a file dialog.

#include "ExplorerFixture.h"

#include "sonarium/core/import/AudioWriter.h"
#include "sonarium/core/import/SoundBankDefinition.h"
#include "sonarium/core/storage/ProjectStorage.h"
#include "sonarium/ui/dialogs/HostTools.h"

#include <fstream>

namespace
{
const wchar_t* kProject = LR"(
platform Desktop
AudioObjects
  Default Work Unit : WorkUnit
    Ambience : ActorMixer
      Rain : SoundSFX
      Wind : SoundSFX
Events
  Default Work Unit : WorkUnit
    Play_Rain : Event
SoundBanks
  Default Work Unit : WorkUnit
    Init : SoundBank
)";

const std::wstring kAmbience = L"AudioObjects/Default Work Unit/Ambience";
} // namespace

class ToolCommandsTest : public ExplorerTest
{
protected:
    void SetUp() override
    {
        ExplorerTest::SetUp();
        OpenSaved(kProject);
        m_view = OpenView({OrbObjectCategories::AudioObjects, OrbObjectCategories::SoundBanks});
        sn::RegisterHostTools(HostRef().CommandRegistry(),
                              [this]
                              {
                                  std::vector<IOrbObject*> objects;
                                  m_view->GetSelectedObjects(objects);
                                  return objects;
                              });
    }

    std::wstring WriteTone(const std::string& name)
    {
        std::string error;
        const std::filesystem::path path = m_dir / name;
        EXPECT_TRUE(sn::audio::WriteWav(path, sn::audio::Synthesize(Utf8::ToWide(name), 8000), 16, error)) << error;
        return path.wstring();
    }

    DlgProjectExplorer* m_view = nullptr;
};

TEST_F(ToolCommandsTest, AudioFilesAreImportedIntoTheOneSelectedObject)
{
    const std::wstring drip = WriteTone("Drip.wav");
    ClickOn(m_view, kAmbience + L"/Rain");
    ClickOn(m_view, kAmbience + L"/Wind", MK_CONTROL);
    m_view->OnAudioFileImporter();
    EXPECT_TRUE(m_dialogs.Records().empty()) << "two rows: nothing happens";

    ClickOn(m_view, kAmbience);
    m_dialogs.AnswerFile({drip});
    m_dialogs.AnswerImporter(false);
    m_view->OnAudioFileImporter();
    WindowSystem::Get().RunUntilIdle();
    ASSERT_EQ(3u, m_dialogs.Records().size()) << Utf8::FromWide(m_dialogs.Transcript());
    EXPECT_NE(std::wstring::npos, m_dialogs.Records()[1].line.find(L"-> new Sound SFX \"Drip\""));
    sn::ProjectObject* sound = At(kAmbience + L"/Drip");
    ASSERT_TRUE(sound);
    ASSERT_EQ(1u, sound->Children().size());
    EXPECT_EQ(L"Originals/SFX/Drip.wav", sound->Children()[0]->GetProperty("File"));
    EXPECT_TRUE(std::filesystem::exists(m_dir / "Project" / "Originals" / "SFX" / "Drip.wav"));
    EXPECT_TRUE(ItemOf(m_view, kAmbience + L"/Drip")) << "the tree shows the new sound";
    EXPECT_EQ(L"Import Audio Files", HostRef().Undo().GetUndoName());
}

TEST_F(ToolCommandsTest, BatchRenameWorksOnTheHostSelection)
{
    ClickOn(m_view, kAmbience + L"/Rain");
    ClickOn(m_view, kAmbience + L"/Wind", MK_CONTROL);
    sn::rename::BatchRenameRule rule;
    rule.prefix = L"Amb_";
    m_dialogs.AnswerBatchRename(rule);
    m_view->OnBatchRename();
    EXPECT_TRUE(At(kAmbience + L"/Amb_Rain"));
    EXPECT_TRUE(At(kAmbience + L"/Amb_Wind"));
    EXPECT_EQ(ROString("ShowBatchRename"), HostRef().CommandRegistry().Executed().back());
    HostRef().Undo().Undo();
    EXPECT_TRUE(At(kAmbience + L"/Rain")) << "one step for the batch";
    EXPECT_TRUE(At(kAmbience + L"/Wind"));
}

TEST_F(ToolCommandsTest, ASoundBankDefinitionIsChosenInAFileDialogAndApplied)
{
    const std::filesystem::path file = m_dir / "banks.txt";
    std::ofstream(file) << "Ambience\tAudioObjects/Default Work Unit/Ambience\nNo tab here\n";
    ClickOn(m_view, L"SoundBanks/Default Work Unit");
    m_dialogs.CancelFile();
    m_view->OnImportSoundbankDefinition();
    ASSERT_EQ(1u, m_dialogs.Records().size());
    EXPECT_EQ(L"file open caption=\"Open\" filter=\"Text Files (*.txt)|*.txt|All Files (*.*)|*.*||\" extension=\"\" "
              L"name=\"\" flags=0x6 -> Cancel",
              m_dialogs.Records()[0].line);

    m_dialogs.AnswerFile({file.wstring()});
    m_dialogs.AnswerMessageBox(IDOK);
    m_view->OnImportSoundbankDefinition();
    sn::ProjectObject* bank = At(L"SoundBanks/Default Work Unit/Ambience");
    ASSERT_TRUE(bank) << "created under the selected work unit";
    EXPECT_EQ(std::vector<sn::ProjectObject*>{At(kAmbience)}, sn::banks::Contents(*bank));
    const std::wstring report = m_dialogs.Records().back().text;
    EXPECT_NE(std::wstring::npos, report.find(L"1 entries were added to SoundBanks"));
    EXPECT_NE(std::wstring::npos, report.find(L"line 2: expected a SoundBank name, a tab"));
}
