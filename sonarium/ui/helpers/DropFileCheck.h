#pragma once
// Whether a file dragged from the file system can be imported, and why not.

#include <filesystem>
#include <string>

namespace sn
{
// Empty when the file is an audio file libsndfile reads, or a standard MIDI file named ".mid", or
// a folder holding such files (a dropped folder brings them); else what is wrong, in a phrase for
// the user.
std::wstring DropFileProblem(const std::filesystem::path& path);
} // namespace sn
