#pragma once
// What storage remembers about an open project between saves: where each work unit's file was
// last read or written, which files could not be read (and so must never be overwritten), and
// where the project file itself lives.

#include "sonarium/core/model/Project.h"

#include <filesystem>
#include <map>
#include <set>

namespace sn
{
struct StorageState
{
    std::filesystem::path projectFile;
    std::map<GUID, std::filesystem::path, GUIDLess> savedPaths;
    std::set<GUID, GUIDLess> broken;
    // The folders of physical folders as last saved: those that go away are removed when empty.
    std::set<std::filesystem::path> folders;
};

// The state of project, empty on first use. A project destroyed and another one created at the
// same address never share a state.
StorageState& StorageStateOf(const Project& project);
// Starts over with an empty state (a project just opened or saved to a new folder).
StorageState& ResetStorageState(const Project& project);
// Drops the state of a project being closed.
void ForgetStorageState(const Project& project);

bool IsWorkUnitBroken(const Project& project, const WorkUnitObject* unit);
} // namespace sn
