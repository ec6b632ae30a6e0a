#pragma once
// Whole-file reads and crash-safe whole-file replacement for project files.

#include <filesystem>
#include <string>
#include <string_view>

namespace sn::FileIO
{
// Reads the whole file; on failure error says why ("is a directory", "No such file or directory", ...).
bool ReadFile(const std::filesystem::path& path, std::string& bytes, std::string& error);

// Writes bytes to a temporary file in the same folder, flushes it to disk and renames it over path,
// so a reader (or a crash) sees the old content or the new one, never a mix. The temporary file is
// gone on every path out. Creates missing parent folders.
bool WriteAtomically(const std::filesystem::path& path, std::string_view bytes, std::string& error);
} // namespace sn::FileIO
