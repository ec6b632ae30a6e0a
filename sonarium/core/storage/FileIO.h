#pragma once
// Whole-file reads and crash-safe whole-file replacement for project files.

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace sn::FileIO
{
// What a file was when it was last read or written: enough to tell whether another program has
// replaced it since.
struct FileStamp
{
    bool known = false;
    uint64_t size = 0;
    int64_t modified = 0; // nanoseconds
    uint64_t device = 0;
    uint64_t inode = 0;
    uint64_t hash = 0; // StampHash of the bytes

    // Same size, time and file: nothing can have changed.
    bool SameMetadata(const FileStamp& other) const;
};

// A hash of file contents that stays the same from one build and run to the next.
uint64_t ContentHash(std::string_view bytes);
// A hash of file contents for stamps, which live only as long as the process: eight times
// quicker than ContentHash on the hundreds of megabytes of a large project, and free to change
// from one version to the next.
uint64_t StampHash(std::string_view bytes);

// Reads the whole file; on failure error says why ("is a directory", "No such file or directory", ...).
// Anything but a regular file (a folder, a FIFO, a device) is refused without waiting on it.
bool ReadFile(const std::filesystem::path& path, std::string& bytes, std::string& error,
              FileStamp* stamp = nullptr);

// Writes bytes to a temporary file in the same folder, flushes it to disk and renames it over path,
// so a reader (or a crash) sees the old content or the new one, never a mix. The temporary file is
// gone on every path out. Creates missing parent folders.
bool WriteAtomically(const std::filesystem::path& path, std::string_view bytes, std::string& error,
                     FileStamp* stamp = nullptr);

// The first half of WriteAtomically: the bytes go to a new temporary file beside path, flushed to
// disk; staged receives its name. PutInPlace is the second half.
bool WriteBeside(const std::filesystem::path& path, std::string_view bytes, std::filesystem::path& staged,
                 std::string& error);
// Renames staged over path and makes the rename durable.
bool PutInPlace(const std::filesystem::path& staged, const std::filesystem::path& path, std::string& error,
                FileStamp* stamp = nullptr);

// The stamp of the file as it is now, without its hash; known is false when it cannot be seen.
FileStamp StampOf(const std::filesystem::path& path);
// Whether the file at path still holds what stamp describes. A file that is gone has not been
// changed into anything; a file with other metadata is read and compared by its hash.
bool IsAsStamped(const std::filesystem::path& path, const FileStamp& stamp);

// Whether name is that of a temporary file these writes make, and the process that made it.
bool IsTemporaryName(const std::string& name, long* process = nullptr);

// Why path cannot hold a file: "is a folder, not a file" (or not a regular file) for path itself,
// "<folder> is a file, not a folder" for a folder on its way. Empty when nothing is in the way.
std::string ObstacleTo(const std::filesystem::path& path);
} // namespace sn::FileIO
