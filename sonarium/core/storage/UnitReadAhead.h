#pragma once
// Reading a project's work-unit files ahead of the thread that builds their objects. Reading a
// file (its bytes, its stamp, its UTF-8 check) and writing its tape need nothing of the project,
// so a few threads do them for the units to come while the caller builds the objects of the
// unit at hand, in the files' order: what is built, and every message, stays as it would be
// read one after the other.

#include "sonarium/core/storage/FileIO.h"
#include "sonarium/core/storage/JsonTape.h"

#include <condition_variable>
#include <exception>
#include <filesystem>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace sn::storage
{
// One work-unit file, read and parsed. Never moved once made: the tape looks into the bytes.
struct UnitText
{
    std::string bytes;
    JsonTape tape;
    FileIO::FileStamp stamp;
    std::vector<std::string> fixed; // what was set right while reading (bytes that were not UTF-8)
    std::exception_ptr error;       // why the file could not be read, thrown again by its reader
};

// Reads a file into text; throws what makes it unreadable.
using UnitTextReader = void (*)(const std::filesystem::path& path, UnitText& text);

class UnitReadAhead
{
public:
    // Starts reading; at most a few units are held ahead of the caller.
    UnitReadAhead(std::vector<std::filesystem::path> paths, UnitTextReader read);
    // Stops the readers, also when the caller stops taking units before the last.
    ~UnitReadAhead();
    UnitReadAhead(const UnitReadAhead&) = delete;
    UnitReadAhead& operator=(const UnitReadAhead&) = delete;

    // The unit at index, read; indexes are taken in increasing order.
    std::unique_ptr<UnitText> Take(size_t index);
    // One file read at once, on the calling thread.
    static std::unique_ptr<UnitText> ReadNow(const std::filesystem::path& path, UnitTextReader read);

private:
    void ReadUnits();

    const std::vector<std::filesystem::path> m_paths;
    const UnitTextReader m_read;
    const size_t m_window;
    std::vector<std::unique_ptr<UnitText>> m_done;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    size_t m_next = 0;  // the next unit a reader takes up
    size_t m_taken = 0; // units the caller has taken
    bool m_stop = false;
    std::vector<std::thread> m_readers;
};
} // namespace sn::storage
