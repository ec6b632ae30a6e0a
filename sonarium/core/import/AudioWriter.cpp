#include "sonarium/core/import/AudioWriter.h"

#include <sndfile.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cwctype>
#include <functional>
#include <numbers>

namespace sn::audio
{
namespace
{
// A small generator of our own, so that the samples do not depend on a library's distributions.
class Noise
{
public:
    explicit Noise(uint64_t seed) : m_state(seed | 1) {}
    // Uniform in -1..1.
    float Next()
    {
        m_state ^= m_state << 13;
        m_state ^= m_state >> 7;
        m_state ^= m_state << 17;
        return static_cast<float>(static_cast<double>(m_state >> 11) / 4503599627370496.0 - 1.0);
    }

private:
    uint64_t m_state;
};

uint64_t Hash(const std::wstring& text)
{
    uint64_t hash = 1469598103934665603ull;
    for (wchar_t c : text)
        hash = (hash ^ static_cast<uint64_t>(c)) * 1099511628211ull;
    return hash;
}

bool Mentions(const std::wstring& lower, std::initializer_list<const wchar_t*> words)
{
    return std::any_of(words.begin(), words.end(), [&](const wchar_t* word) { return lower.find(word) != std::wstring::npos; });
}

// Rises over `attack` seconds, then falls away with time constant `decay`.
float Envelope(double t, double attack, double decay)
{
    return static_cast<float>(t < attack ? t / attack : std::exp(-(t - attack) / decay));
}
} // namespace

bool WriteWav(const std::filesystem::path& path, const AudioData& audio, int bits, std::string& error)
{
    SF_INFO info{};
    info.channels = audio.channels;
    info.samplerate = audio.sampleRate;
    info.format = SF_FORMAT_WAV | (bits == 24 ? SF_FORMAT_PCM_24 : SF_FORMAT_PCM_16);
    SNDFILE* file = sf_open(path.c_str(), SFM_WRITE, &info);
    if (!file)
    {
        error = sf_strerror(nullptr);
        return false;
    }
    const auto frames = static_cast<sf_count_t>(audio.samples.size() / static_cast<size_t>(std::max(1, audio.channels)));
    const bool written = sf_writef_float(file, audio.samples.data(), frames) == frames;
    if (!written)
        error = sf_strerror(file);
    return sf_close(file) == 0 && written;
}

AudioData Synthesize(const std::wstring& name, int sampleRate)
{
    std::wstring lower = name;
    for (wchar_t& c : lower)
        c = static_cast<wchar_t>(std::towlower(static_cast<wint_t>(c)));
    const uint64_t hash = Hash(lower);
    Noise noise(hash);
    // A pitch and a length of its own within the kind's range.
    const double shade = static_cast<double>(hash % 1000) / 1000.0;
    const double rate = sampleRate;
    constexpr double pi = std::numbers::pi;

    AudioData audio;
    audio.sampleRate = sampleRate;
    double seconds = 0.4;
    std::function<float(double)> sample;
    float low = 0; // one-pole low-pass state for the noises
    if (Mentions(lower, {L"loop", L"rain", L"wind", L"waterfall", L"ambience", L"reel", L"gears"}))
    {
        seconds = 1.0;
        const float smooth = static_cast<float>(0.05 + 0.3 * shade);
        sample = [&, smooth](double t)
        {
            low += smooth * (noise.Next() - low);
            const double fade = std::min({1.0, t / 0.1, (seconds - t) / 0.1});
            return static_cast<float>(0.8 * fade) * low * (1.0f + 0.3f * static_cast<float>(std::sin(2 * pi * 3 * t)));
        };
    }
    else if (Mentions(lower, {L"voice", L"hurt", L"taunt", L"vo_", L"guide", L"growl", L"death"}))
    {
        seconds = 0.6 + 0.3 * shade;
        const double f0 = 110 + 110 * shade;
        sample = [=](double t)
        {
            // A vowel: harmonics of the voice's pitch, loudest near two formants.
            double value = 0;
            const double vibrato = 1 + 0.01 * std::sin(2 * pi * 5 * t);
            for (int h = 1; h <= 12; ++h)
            {
                const double f = f0 * h;
                const double weight = std::exp(-std::pow((f - 700) / 250, 2)) + 0.6 * std::exp(-std::pow((f - 1200) / 300, 2));
                value += weight * std::sin(2 * pi * f * vibrato * t);
            }
            return static_cast<float>(0.35 * value) * Envelope(t, 0.05, seconds / 3);
        };
    }
    else if (Mentions(lower, {L"click", L"menu", L"select", L"back", L"pickup", L"alarm", L"stinger"}))
    {
        seconds = 0.15 + 0.15 * shade;
        const double from = 600 + 900 * shade, to = from * 1.8;
        sample = [=](double t)
        {
            const double f = from + (to - from) * t / seconds;
            return static_cast<float>(0.6 * std::sin(2 * pi * f * t)) * Envelope(t, 0.005, seconds / 4);
        };
    }
    else if (Mentions(lower, {L"footstep", L"land", L"jump", L"impact", L"debris", L"explosion", L"thunder",
                              L"fire", L"shot", L"attach", L"cloth", L"rustle", L"slide"}))
    {
        const bool large = Mentions(lower, {L"explosion", L"thunder", L"debris"});
        seconds = large ? 1.0 : 0.2 + 0.25 * shade;
        const float smooth = static_cast<float>(large ? 0.04 : 0.2 + 0.4 * shade);
        sample = [&, smooth, large](double t)
        {
            low += smooth * (noise.Next() - low);
            return 0.9f * low * Envelope(t, 0.003, large ? 0.3 : seconds / 5);
        };
    }
    else
    {
        seconds = 0.5;
        const double f = 220 + 440 * shade;
        sample = [=](double t)
        {
            // A bell: a tone with an inharmonic partial, ringing out.
            return static_cast<float>(0.5 * std::sin(2 * pi * f * t) + 0.25 * std::sin(2 * pi * f * 2.76 * t)) *
                   Envelope(t, 0.002, 0.15);
        };
    }
    const auto frames = static_cast<size_t>(seconds * rate);
    audio.samples.reserve(frames);
    float loudest = 0;
    for (size_t i = 0; i < frames; ++i)
    {
        audio.samples.push_back(sample(static_cast<double>(i) / rate));
        loudest = std::max(loudest, std::abs(audio.samples.back()));
    }
    // Every sound peaks at the same level, a little below full scale.
    const float gain = loudest > 0 ? 0.8f / loudest : 1.0f;
    for (float& value : audio.samples)
        value = std::clamp(value * gain, -1.0f, 1.0f);
    return audio;
}
} // namespace sn::audio
