// Audio files as libsndfile reads them: what a good file is, what is wrong with a bad one, and the
// peaks a waveform is drawn from.

#include "HostFixture.h"

#include "host/Utf8.h"
#include "sonarium/core/model/CurrentState.h"

#include "sonarium/core/import/AudioFile.h"
#include "sonarium/core/import/AudioWriter.h"

#include <fstream>

using namespace sn::audio;

namespace
{
class AudioFileTest : public testing::Test
{
protected:
    void SetUp() override { std::filesystem::create_directories(m_dir); }
    void TearDown() override { std::filesystem::remove_all(m_dir); }

    std::filesystem::path Write(const std::string& name, const AudioData& audio, int bits = 16)
    {
        std::string error;
        EXPECT_TRUE(WriteWav(m_dir / name, audio, bits, error)) << error;
        return m_dir / name;
    }

    const std::filesystem::path m_dir =
        std::filesystem::temp_directory_path() / ("sonarium-audio-" + std::to_string(::getpid()));
};
} // namespace

TEST_F(AudioFileTest, AGoodFileSaysWhatItIs)
{
    AudioData stereo{2, 48000, std::vector<float>(2 * 24000, 0.25f)};
    const AudioFileInfo info = ReadAudioFileInfo(Write("stereo.wav", stereo, 24));
    ASSERT_TRUE(info.ok) << std::string(info.problem.begin(), info.problem.end());
    EXPECT_EQ(L"WAV 24-bit PCM, 2 channels, 48000 Hz, 0.50 s", info.Describe());
    EXPECT_EQ(24000, info.frames);
}

TEST_F(AudioFileTest, EachBadFileIsNamedWithWhatIsWrong)
{
    const std::filesystem::path good = Write("good.wav", Synthesize(L"thunder", 8000));
    std::filesystem::copy_file(good, m_dir / "cut.wav");
    std::filesystem::resize_file(m_dir / "cut.wav", std::filesystem::file_size(good) - 100);
    std::ofstream(m_dir / "empty.wav");
    std::ofstream(m_dir / "text.wav") << "hello";
    // A header that promises no samples at all.
    Write("silent.wav", AudioData{1, 8000, {}});
    auto problem = [&](const std::filesystem::path& path) { return ReadAudioFileInfo(path).problem; };
    EXPECT_NE(std::wstring::npos, problem(m_dir / "cut.wav").find(L"cut short")) << problem(m_dir / "cut.wav");
    EXPECT_EQ(L"the file is empty", problem(m_dir / "empty.wav"));
    EXPECT_NE(std::wstring::npos, problem(m_dir / "text.wav").find(L"not an audio file"));
    EXPECT_EQ(L"the file holds no samples", problem(m_dir / "silent.wav"));
    EXPECT_EQ(L"there is no such file", problem(m_dir / "missing.wav"));
    EXPECT_EQ(L"this is a folder, not an audio file", problem(m_dir));

    std::filesystem::path path;
    std::wstring why;
    EXPECT_FALSE(PathFromText(Utf8::ToWide("bad\xFF.wav"), path, why)) << "a name that was not UTF-8";
    EXPECT_NE(std::wstring::npos, why.find(L"not valid UTF-8"));
    EXPECT_TRUE(PathFromText(L"caf\u00e9.wav", path, why));
    EXPECT_EQ("caf\xC3\xA9.wav", path.string());
}

TEST_F(AudioFileTest, PeaksSpanEachStretchOfTheSamples)
{
    // A quiet first half and a loud, one-sided second half.
    AudioData audio{1, 8000, {}};
    for (int i = 0; i < 8000; ++i)
        audio.samples.push_back(i < 4000 ? (i % 2 ? 0.1f : -0.1f) : 0.8f);
    const std::vector<Peak> peaks = ReadPeaks(Write("steps.wav", audio), 4);
    ASSERT_EQ(4u, peaks.size());
    EXPECT_NEAR(-0.1f, peaks[0].low, 0.01f);
    EXPECT_NEAR(0.1f, peaks[1].high, 0.01f);
    EXPECT_NEAR(0.8f, peaks[3].high, 0.01f);
    EXPECT_NEAR(0.0f, peaks[3].low, 0.01f) << "nothing below the middle there";
    EXPECT_EQ(3u, ReadPeaks(Write("short.wav", AudioData{1, 8000, {0.5f, 0.5f, 0.5f}}), 100).size())
        << "no more peaks than samples";
    EXPECT_TRUE(ReadPeaks(m_dir / "missing.wav", 10).empty());
}

TEST_F(AudioFileTest, TheSameNameAlwaysGivesTheSameSound)
{
    const AudioData a = Synthesize(L"Footstep_Grass_01", 16000);
    EXPECT_EQ(a.samples, Synthesize(L"footstep_grass_01", 16000).samples);
    EXPECT_NE(a.samples, Synthesize(L"Footstep_Grass_02", 16000).samples);
    EXPECT_FALSE(a.samples.empty());
}
