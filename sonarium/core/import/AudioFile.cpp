#include "sonarium/core/import/AudioFile.h"

#include "host/StringHelp.h"
#include "host/Utf8.h"

#include <sndfile.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <memory>

namespace sn::audio
{
namespace
{
namespace fs = std::filesystem;

struct SndFileCloser
{
    void operator()(SNDFILE* file) const { sf_close(file); }
};
using SndFilePtr = std::unique_ptr<SNDFILE, SndFileCloser>;

std::wstring Text(const wchar_t* english)
{
    return StringHelp::Localize(english).c_str();
}

// libsndfile's own name of a format or encoding, for those without a short name of ours.
std::wstring LibraryName(int format, const wchar_t* unknown)
{
    SF_FORMAT_INFO info{};
    info.format = format;
    if (sf_command(nullptr, SFC_GET_FORMAT_INFO, &info, sizeof info) == 0 && info.name)
        return Utf8::ToWide(info.name);
    return unknown;
}

std::wstring MajorName(int format)
{
    switch (format & SF_FORMAT_TYPEMASK)
    {
    case SF_FORMAT_WAV:
    case SF_FORMAT_WAVEX:
        return L"WAV";
    case SF_FORMAT_AIFF:
        return L"AIFF";
    case SF_FORMAT_FLAC:
        return L"FLAC";
    case SF_FORMAT_OGG:
        return L"Ogg";
    case SF_FORMAT_W64:
        return L"Wave64";
    case SF_FORMAT_RF64:
        return L"RF64";
    case SF_FORMAT_CAF:
        return L"CAF";
    default:
        return LibraryName(format & SF_FORMAT_TYPEMASK, L"audio");
    }
}

std::wstring SubtypeName(int format)
{
    switch (format & SF_FORMAT_SUBMASK)
    {
    case SF_FORMAT_PCM_S8:
    case SF_FORMAT_PCM_U8:
        return L"8-bit PCM";
    case SF_FORMAT_PCM_16:
        return L"16-bit PCM";
    case SF_FORMAT_PCM_24:
        return L"24-bit PCM";
    case SF_FORMAT_PCM_32:
        return L"32-bit PCM";
    case SF_FORMAT_FLOAT:
        return L"32-bit float";
    case SF_FORMAT_DOUBLE:
        return L"64-bit float";
    case SF_FORMAT_VORBIS:
        return L"Vorbis";
    default:
        return LibraryName(format & SF_FORMAT_SUBMASK, L"");
    }
}

uint32_t LittleEndian32(const unsigned char* bytes)
{
    return uint32_t(bytes[0]) | uint32_t(bytes[1]) << 8 | uint32_t(bytes[2]) << 16 | uint32_t(bytes[3]) << 24;
}

// A WAV file whose sample chunk claims more bytes than the file holds was cut short (an aborted
// copy or download); libsndfile reads what is there without a word, so the header is checked.
std::wstring TruncatedWav(const fs::path& path, uintmax_t size)
{
    std::ifstream in(path, std::ios::binary);
    std::array<unsigned char, 12> riff{};
    if (!in.read(reinterpret_cast<char*>(riff.data()), riff.size()) || std::memcmp(riff.data(), "RIFF", 4) != 0 ||
        std::memcmp(riff.data() + 8, "WAVE", 4) != 0)
        return {};
    for (uintmax_t offset = 12; offset + 8 <= size;)
    {
        std::array<unsigned char, 8> chunk{};
        if (!in.seekg(static_cast<std::streamoff>(offset)) ||
            !in.read(reinterpret_cast<char*>(chunk.data()), chunk.size()))
            return {};
        const uint32_t length = LittleEndian32(chunk.data() + 4);
        const uintmax_t end = offset + 8 + length;
        if (std::memcmp(chunk.data(), "data", 4) == 0)
        {
            if (end <= size)
                return {};
            return Text(L"the file is cut short: its samples should take ") + std::to_wstring(length) +
                   Text(L" bytes, and only ") + std::to_wstring(size - offset - 8) + Text(L" are there");
        }
        offset = end + (length & 1); // chunks are padded to an even length
    }
    return {};
}

// Why a path cannot be read as a file at all, or empty when it can be opened.
std::wstring FileProblem(const fs::path& path, uintmax_t& size)
{
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (!fs::exists(status))
        return Text(L"there is no such file");
    if (fs::is_directory(status))
        return Text(L"this is a folder, not an audio file");
    if (!fs::is_regular_file(status))
        return Text(L"this is not a regular file");
    size = fs::file_size(path, error);
    if (error)
        return Text(L"the file cannot be read: ") + Utf8::ToWide(error.message());
    std::ifstream probe(path, std::ios::binary);
    if (!probe)
        return Text(L"the file cannot be read: ") + Utf8::ToWide(std::strerror(errno));
    if (size == 0)
        return Text(L"the file is empty");
    return {};
}

SndFilePtr Open(const fs::path& path, SF_INFO& info, std::wstring& problem)
{
    info = SF_INFO{};
    SndFilePtr file(sf_open(path.c_str(), SFM_READ, &info));
    if (!file)
        problem = Text(L"this is not an audio file that can be read (") + Utf8::ToWide(sf_strerror(nullptr)) + L")";
    else if (info.channels <= 0 || info.samplerate <= 0)
        problem = Text(L"the file names no channels or no sample rate");
    else if (info.frames <= 0)
        problem = Text(L"the file holds no samples");
    return problem.empty() ? std::move(file) : nullptr;
}
} // namespace

std::wstring AudioFileInfo::Describe() const
{
    if (!ok)
        return problem;
    wchar_t seconds[32];
    std::swprintf(seconds, std::size(seconds), L"%.2f s", Seconds());
    return format + L", " + std::to_wstring(channels) + (channels == 1 ? L" channel, " : L" channels, ") +
           std::to_wstring(sampleRate) + L" Hz, " + seconds;
}

AudioFileInfo ReadAudioFileInfo(const fs::path& path)
{
    AudioFileInfo result;
    uintmax_t size = 0;
    if ((result.problem = FileProblem(path, size)).empty())
        result.problem = TruncatedWav(path, size);
    if (!result.problem.empty())
        return result;
    SF_INFO info;
    SndFilePtr file = Open(path, info, result.problem);
    if (!file)
        return result;
    // Every frame the header promises must come out.
    std::vector<float> block(4096 * static_cast<size_t>(info.channels));
    sf_count_t read = 0;
    for (sf_count_t got; (got = sf_readf_float(file.get(), block.data(), 4096)) > 0;)
        read += got;
    if (read < info.frames)
    {
        result.problem = Text(L"the file is cut short: ") + std::to_wstring(read) + Text(L" of ") +
                         std::to_wstring(info.frames) + Text(L" frames could be read");
        return result;
    }
    const std::wstring subtype = SubtypeName(info.format);
    result.ok = true;
    result.format = MajorName(info.format) + (subtype.empty() ? L"" : L" " + subtype);
    result.channels = info.channels;
    result.sampleRate = info.samplerate;
    result.frames = info.frames;
    return result;
}

std::vector<Peak> ReadPeaks(const fs::path& path, size_t buckets)
{
    SF_INFO info;
    std::wstring problem;
    SndFilePtr file = buckets > 0 ? Open(path, info, problem) : nullptr;
    if (!file)
        return {};
    const auto frames = static_cast<size_t>(info.frames);
    const auto channels = static_cast<size_t>(info.channels);
    buckets = std::min(buckets, frames);
    std::vector<Peak> peaks(buckets);
    std::vector<float> block(4096 * channels);
    size_t frame = 0;
    for (sf_count_t got; (got = sf_readf_float(file.get(), block.data(), 4096)) > 0;)
        for (size_t i = 0; i < static_cast<size_t>(got); ++i, ++frame)
        {
            Peak& peak = peaks[std::min(buckets - 1, frame * buckets / frames)];
            for (size_t c = 0; c < channels; ++c)
            {
                const float sample = std::clamp(block[i * channels + c], -1.0f, 1.0f);
                peak.low = std::min(peak.low, sample);
                peak.high = std::max(peak.high, sample);
            }
        }
    return peaks;
}

bool PathFromText(const std::wstring& text, fs::path& path, std::wstring& problem)
{
    if (text.empty())
    {
        problem = Text(L"no file was named");
        return false;
    }
    for (wchar_t c : text)
    {
        const auto code = static_cast<char32_t>(c);
        if (code == 0xFFFD || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF))
        {
            problem = Text(L"the file's name is not valid UTF-8 text, so the file cannot be found by it");
            return false;
        }
    }
    path = fs::path(Utf8::FromWide(text));
    return true;
}
} // namespace sn::audio
