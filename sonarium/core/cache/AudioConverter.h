#pragma once
// Converts one audio file as conversion settings say: PCM and ADPCM into WAV files, Vorbis into
// an Ogg file, at the source's rate or resampled to the one asked for. Read and written with
// libsndfile; the output is written beside its place and renamed into it only when complete.

#include "sonarium/core/audio/Conversion.h"

#include <filesystem>
#include <string>

namespace sn::cache
{
// The extension of converted files: ".wav" or ".ogg".
const char* ConvertedExtension(conversion::Format format);
// False with the reason ("cannot read it: ...", "cannot write PATH: ...") when the source cannot be read or the output
// written.
bool ConvertAudioFile(const std::filesystem::path& source, const std::filesystem::path& target,
                      const conversion::Settings& settings, std::string& why);
} // namespace sn::cache
