#pragma once
// Writing audio files with libsndfile, and short sounds of our own making for the sample
// project and tests: the same name always gives the same samples, byte for byte.

#include <filesystem>
#include <string>
#include <vector>

namespace sn::audio
{
struct AudioData
{
    int channels = 1;
    int sampleRate = 16000;
    std::vector<float> samples; // interleaved, -1..1
};

// Writes a WAV file of 16- or 24-bit PCM; false with the reason on failure.
bool WriteWav(const std::filesystem::path& path, const AudioData& audio, int bits, std::string& error);

// A sound for a name: its character follows words in the name (a footstep is a short thud of
// noise, a loop a steady wash, a voice a sung vowel, a click a chirp), its details come from the
// name itself.
AudioData Synthesize(const std::wstring& name, int sampleRate);
} // namespace sn::audio
