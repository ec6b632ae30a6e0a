// Importing audio files as sounds: what each file becomes, the copies in the project's Originals
// folder, one undo step, and a cancel that leaves nothing behind.

#include "HostFixture.h"

#include "host/Utf8.h"
#include "sonarium/core/model/CurrentState.h"

#include "sonarium/core/import/AudioImport.h"
#include "sonarium/core/import/AudioWriter.h"
#include "sonarium/core/storage/ProjectStorage.h"

#include <fstream>

using namespace sn;
using namespace sn::audio;

namespace
{
const wchar_t* kProject = LR"(
platform Desktop
language 1 English reference
language 2 French
AudioObjects
  Default Work Unit : WorkUnit
    Ambience : ActorMixer
      Rain : SoundSFX
        rain_old.wav : AudioSource
    Dialogue : SoundVoice
Events
  Default Work Unit : WorkUnit
)";

const std::wstring kAmbience = L"AudioObjects/Default Work Unit/Ambience";

class AudioImportTest : public HostTest
{
protected:
    void SetUp() override
    {
        HostTest::SetUp();
        OpenSaved(kProject);
    }

    std::wstring Tone(const std::string& name)
    {
        std::string error;
        std::filesystem::create_directories(m_dir / "in");
        EXPECT_TRUE(WriteWav(m_dir / "in" / name, Synthesize(Utf8::ToWide(name), 8000), 16, error)) << error;
        return (m_dir / "in" / name).wstring();
    }

    std::vector<std::wstring> Becomes(const AudioImport& import, ImportChoices choices = {})
    {
        std::vector<std::wstring> lines;
        for (const ImportItem& item : import.Plan(choices))
            lines.push_back(item.Becomes());
        return lines;
    }

    std::filesystem::path Originals() { return m_dir / "Project" / "Originals"; }
};
} // namespace

TEST_F(AudioImportTest, EachFileBecomesASoundOrANewSourceOfOneOfItsName)
{
    const std::wstring rain = Tone("Rain.wav"), hail = Tone("Hail.wav"), again = Tone("hail.wav");
    std::ofstream(m_dir / "in" / "notes.wav") << "text";
    const AudioImport import(At(kAmbience), {rain, hail, again, (m_dir / "in" / "notes.wav").wstring()});
    EXPECT_EQ(L"", import.Problem());
    const std::vector<std::wstring> lines = Becomes(import);
    EXPECT_EQ(L"new source of \"Rain\"", lines[0]);
    EXPECT_EQ(L"new Sound SFX \"Hail\"", lines[1]);
    EXPECT_EQ(L"left out: another file of this import makes a sound of the same name", lines[2]);
    EXPECT_NE(std::wstring::npos, lines[3].find(L"left out: this is not an audio file"));
    EXPECT_EQ(L"new Sound Voice \"Hail\"", Becomes(import, {true, 2})[1]);

    const ImportResult result = import.Run({}, {});
    EXPECT_EQ(2u, result.imported);
    EXPECT_TRUE(result.problems.empty());
    ProjectObject* sound = At(kAmbience + L"/Rain");
    ASSERT_EQ(2u, sound->Children().size());
    ProjectObject* source = sound->Children()[1].Get();
    EXPECT_EQ(L"Originals/SFX/Rain.wav", source->GetProperty("File"));
    EXPECT_EQ(Utf8::ToWide(GuidText::ToString(source->Id())), sound->GetProperty("ActiveSource")) << "it plays the new one";
    EXPECT_TRUE(std::filesystem::exists(Originals() / "SFX" / "Hail.wav"));
    EXPECT_EQ(L"Import Audio Files", HostRef().Undo().GetUndoName());
    EXPECT_EQ(0, HostRef().Properties()[propLockUIUpdate].GetInt());

    HostRef().Undo().Undo();
    EXPECT_EQ(nullptr, FindByPath(*HostRef().GetProject(), kAmbience + L"/Hail")) << "one step";
    EXPECT_EQ(1u, sound->Children().size());
}

TEST_F(AudioImportTest, VoicesGoToTheirLanguageAndAFileAlreadyThereIsNotCopiedTwice)
{
    const std::wstring line = Tone("Line_01.wav");
    const AudioImport first(At(L"AudioObjects/Default Work Unit/Dialogue"), {line});
    EXPECT_EQ((std::vector<std::wstring>{L"new source of \"Dialogue\""}), Becomes(first));
    first.Run({true, 2}, {});
    const AudioImport second(At(L"AudioObjects/Default Work Unit/Dialogue"), {line});
    second.Run({true, 2}, {});
    // A different file of the same name keeps the first and gets a numbered name.
    std::string error;
    WriteWav(m_dir / "in" / "Line_01.wav", Synthesize(L"other", 8000), 16, error);
    const AudioImport third(At(L"AudioObjects/Default Work Unit/Dialogue"), {line});
    third.Run({true, 2}, {});
    const auto& sources = At(L"AudioObjects/Default Work Unit/Dialogue")->Children();
    ASSERT_EQ(3u, sources.size());
    EXPECT_EQ(L"Originals/Voices/French/Line_01.wav", sources[0]->GetProperty("File"));
    EXPECT_EQ(L"Originals/Voices/French/Line_01.wav", sources[1]->GetProperty("File"));
    EXPECT_EQ(L"Originals/Voices/French/Line_01_1.wav", sources[2]->GetProperty("File"));
    EXPECT_EQ(L"2", sources[0]->GetProperty("Language"));
    EXPECT_EQ(L"Line_01.wav", sources[1]->GetName()) << "a source is named after its file";
}

TEST_F(AudioImportTest, ACancelledImportLeavesNothingBehind)
{
    const std::vector<std::wstring> files{Tone("A.wav"), Tone("B.wav"), Tone("C.wav")};
    const AudioImport import(At(kAmbience), files);
    const size_t objects = HostRef().GetProject()->ObjectCount();
    const size_t steps = HostRef().Undo().UndoCount();
    std::vector<std::wstring> asked;
    const ImportResult result = import.Run({}, [&](size_t done, const std::wstring& file)
                                           {
                                               asked.push_back(file);
                                               return done < 2;
                                           });
    EXPECT_TRUE(result.cancelled);
    EXPECT_EQ(3u, asked.size());
    EXPECT_EQ(objects, HostRef().GetProject()->ObjectCount());
    EXPECT_EQ(steps, HostRef().Undo().UndoCount());
    EXPECT_FALSE(std::filesystem::exists(Originals() / "SFX" / "A.wav")) << "the copies made are removed";
    EXPECT_FALSE(std::filesystem::exists(Originals() / "SFX" / "B.wav"));
}

TEST_F(AudioImportTest, NothingIsImportedWhereSoundsCannotGoOrFilesHaveNoPlace)
{
    const std::wstring tone = Tone("A.wav");
    const AudioImport intoEvents(At(L"Events/Default Work Unit"), {tone});
    EXPECT_EQ(L"\"Default Work Unit\" cannot hold sounds.", intoEvents.Problem());
    EXPECT_EQ(0u, intoEvents.Run({}, {}).imported);
    HostRef().GetProject()->SetFolder({});
    const AudioImport unsaved(At(kAmbience), {tone});
    EXPECT_NE(std::wstring::npos, unsaved.Problem().find(L"save it first"));
    EXPECT_NE(std::wstring::npos, Becomes(unsaved)[0].find(L"save it first"));
}
