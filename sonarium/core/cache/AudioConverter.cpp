#include "sonarium/core/cache/AudioConverter.h"

#include <sndfile.h>

#include <cmath>
#include <memory>
#include <vector>

namespace sn::cache
{
namespace
{
struct FileCloser
{
    void operator()(SNDFILE* file) const { sf_close(file); }
};
using SoundFile = std::unique_ptr<SNDFILE, FileCloser>;

int OutputFormat(conversion::Format format)
{
    switch (format)
    {
    case conversion::Format::ADPCM:
        return SF_FORMAT_WAV | SF_FORMAT_IMA_ADPCM;
    case conversion::Format::Vorbis:
        return SF_FORMAT_OGG | SF_FORMAT_VORBIS;
    case conversion::Format::PCM:
        break;
    }
    return SF_FORMAT_WAV | SF_FORMAT_PCM_16;
}

// Linear interpolation between neighbouring frames: plain, but enough for previews of the rate.
std::vector<float> Resample(const std::vector<float>& samples, int channels, int from, int to)
{
    if (from == to || samples.empty())
        return samples;
    const size_t frames = samples.size() / static_cast<size_t>(channels);
    const auto outFrames = static_cast<size_t>(std::llround(static_cast<double>(frames) * to / from));
    std::vector<float> out(outFrames * static_cast<size_t>(channels));
    for (size_t frame = 0; frame < outFrames; ++frame)
    {
        const double at = static_cast<double>(frame) * from / to;
        const auto before = std::min(static_cast<size_t>(at), frames - 1);
        const size_t after = std::min(before + 1, frames - 1);
        const auto weight = static_cast<float>(at - static_cast<double>(before));
        for (int c = 0; c < channels; ++c)
            out[frame * static_cast<size_t>(channels) + static_cast<size_t>(c)] =
                samples[before * static_cast<size_t>(channels) + static_cast<size_t>(c)] * (1 - weight) +
                samples[after * static_cast<size_t>(channels) + static_cast<size_t>(c)] * weight;
    }
    return out;
}
} // namespace

const char* ConvertedExtension(conversion::Format format)
{
    return format == conversion::Format::Vorbis ? ".ogg" : ".wav";
}

bool ConvertAudioFile(const std::filesystem::path& source, const std::filesystem::path& target,
                      const conversion::Settings& settings, std::string& why)
{
    SF_INFO in{};
    SoundFile reader(sf_open(source.c_str(), SFM_READ, &in));
    if (!reader)
    {
        why = std::string("cannot read it: ") + sf_strerror(nullptr);
        return false;
    }
    if (in.channels <= 0 || in.samplerate <= 0)
    {
        why = "no audio in it";
        return false;
    }
    std::vector<float> samples(static_cast<size_t>(in.frames) * static_cast<size_t>(in.channels));
    const sf_count_t read = sf_readf_float(reader.get(), samples.data(), in.frames);
    samples.resize(static_cast<size_t>(read) * static_cast<size_t>(in.channels));
    reader.reset();

    SF_INFO out{};
    out.channels = in.channels;
    out.samplerate = settings.sampleRate ? static_cast<int>(settings.sampleRate) : in.samplerate;
    out.format = OutputFormat(settings.format);
    samples = Resample(samples, in.channels, in.samplerate, out.samplerate);
    if (!sf_format_check(&out))
    {
        why = "the format does not take " + std::to_string(out.channels) +
              " channels at " + std::to_string(out.samplerate) + " Hz";
        return false;
    }
    std::error_code ec;
    std::filesystem::create_directories(target.parent_path(), ec);
    std::filesystem::path partial = target;
    partial += ".partial";
    SoundFile writer(sf_open(partial.c_str(), SFM_WRITE, &out));
    const sf_count_t frames = static_cast<sf_count_t>(samples.size()) / out.channels;
    const bool written = writer && sf_writef_float(writer.get(), samples.data(), frames) == frames;
    if (!written)
        why = "cannot write " + target.string() + ": " + sf_strerror(writer.get());
    writer.reset();
    if (written)
        std::filesystem::rename(partial, target, ec);
    if (written && ec)
        why = "cannot write " + target.string() + ": " + ec.message();
    if (!written || ec)
    {
        std::filesystem::remove(partial, ec);
        return false;
    }
    return true;
}
} // namespace sn::cache
