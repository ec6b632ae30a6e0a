#pragma once
// What an audio file holds, read with libsndfile: its format, channels, rate and length, or
// what is wrong with it; and a picture of its samples for a waveform.

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace sn::audio
{
struct AudioFileInfo
{
    bool ok = false;
    std::wstring problem; // why the file cannot be used, when not ok
    std::wstring format;  // "WAV 16-bit PCM"
    int channels = 0;
    int sampleRate = 0;
    int64_t frames = 0;

    double Seconds() const { return sampleRate > 0 ? static_cast<double>(frames) / sampleRate : 0.0; }
    // "WAV 16-bit PCM, 2 channels, 48000 Hz, 1.25 s", or the problem.
    std::wstring Describe() const;
};

// The lowest and highest sample of a stretch of the file, all channels together, in -1..1.
struct Peak
{
    float low = 0;
    float high = 0;
};

// Reads the whole file, so that a file cut short is found as well as one that does not open.
AudioFileInfo ReadAudioFileInfo(const std::filesystem::path& path);
// The file's samples in `buckets` stretches of equal length (fewer for a shorter file); empty
// when the file cannot be read.
std::vector<Peak> ReadPeaks(const std::filesystem::path& path, size_t buckets);

// A path the user gave as text: the name of what it names, or why it cannot be used (a name that
// was not valid UTF-8 reaches us with replacement characters and names no file).
bool PathFromText(const std::wstring& text, std::filesystem::path& path, std::wstring& problem);
} // namespace sn::audio
