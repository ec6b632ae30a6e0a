#pragma once
// What lets a save that was cut short (a crash, a kill, a power cut) end as if it had finished or
// as if it had never started. A save that must replace a file the project on disk still names
// writes the new content beside it first, and lists those files here before it writes the new
// project file; only then are they renamed into place. Whoever opens or saves the project next
// finds the list: if the project file it names is the one on disk, the renames are done,
// otherwise the files beside are dropped. Temporary files of writes that never finished are
// removed by the next save of the folders they are in.

#include "sonarium/core/storage/StorageProblem.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace sn::SaveJournal
{
struct Rename
{
    std::filesystem::path staged;
    std::filesystem::path target;
};

// Lists renames, valid once the project file holds the bytes of hash projectHash.
bool Write(const std::filesystem::path& folder, const std::filesystem::path& projectFile, uint64_t projectHash,
           const std::vector<Rename>& renames, std::string& error);
void Remove(const std::filesystem::path& folder);

// Completes or drops the save a journal in folder describes; problems say what was done.
void Recover(const std::filesystem::path& folder, StorageProblems& problems);

// Removes the temporary files of writes that never finished from folders (not those of another
// process still running, which may be writing them now).
void RemoveLeftovers(const std::vector<std::filesystem::path>& folders);
} // namespace sn::SaveJournal
