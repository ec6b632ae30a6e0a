// sonarium-test-audio FOLDER: the audio files the end-to-end scripts import, written with
// libsndfile: three good ones of different formats, and the kinds of bad file users meet (empty,
// cut short, not audio at all).

#include "sonarium/core/import/AudioWriter.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

namespace
{
namespace fs = std::filesystem;
using sn::audio::AudioData;

AudioData Stereo(AudioData mono)
{
    AudioData stereo{2, mono.sampleRate, {}};
    for (float sample : mono.samples)
        stereo.samples.insert(stereo.samples.end(), {sample, -sample});
    return stereo;
}

bool Write(const fs::path& path, const AudioData& audio, int bits)
{
    std::string error;
    if (sn::audio::WriteWav(path, audio, bits, error))
        return true;
    std::fprintf(stderr, "sonarium-test-audio: %s: %s\n", path.c_str(), error.c_str());
    return false;
}
} // namespace

int main(int argc, char** argv)
{
    if (argc != 2)
    {
        std::fprintf(stderr, "usage: sonarium-test-audio FOLDER\n");
        return 2;
    }
    const fs::path folder = argv[1];
    fs::create_directories(folder);
    const AudioData thunder = sn::audio::Synthesize(L"thunder_far", 22050);
    if (!Write(folder / "Rain_Heavy.wav", Stereo(sn::audio::Synthesize(L"rain_heavy_loop", 44100)), 16) ||
        !Write(folder / "Wind_Gust.wav", sn::audio::Synthesize(L"wind_gust", 48000), 24) ||
        !Write(folder / "Thunder_Far.wav", thunder, 16) || !Write(folder / "Cut_Short.wav", thunder, 16))
        return 1;
    // A copy that stopped halfway, as an interrupted download leaves it.
    fs::resize_file(folder / "Cut_Short.wav", fs::file_size(folder / "Cut_Short.wav") / 2);
    std::ofstream(folder / "Empty.wav");
    std::ofstream(folder / "Notes.wav") << "These are notes about the session, not audio.\n";
    return 0;
}
