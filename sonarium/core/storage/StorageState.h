#pragma once
// What storage remembers about an open project between saves: where each work unit's file was
// last read or written and what it held then, which files could not be read (and so must never be
// overwritten), where the project file itself lives, and the lock that keeps other instances from
// saving into the same folder.

#include "sonarium/core/model/Project.h"
#include "sonarium/core/storage/FileIO.h"

#include <filesystem>
#include <map>
#include <memory>
#include <set>
#include <string>

namespace sn
{
class ProjectLock;

struct StorageState
{
    std::filesystem::path projectFile;
    std::map<GUID, std::filesystem::path, GUIDLess> savedPaths;
    std::set<GUID, GUIDLess> broken;
    // What the files of loaded units and the project file were when read or written: a file that
    // differs has been changed by another program.
    std::map<GUID, FileIO::FileStamp, GUIDLess> stamps;
    FileIO::FileStamp projectStamp;
    // The bytes of files removed with their deleted units: undoing the delete of a unit that was
    // not loaded brings its content back from here.
    std::map<GUID, std::string, GUIDLess> removedFiles;
    // Held while the project is open; shared by the copies a save works on.
    std::shared_ptr<ProjectLock> lock;
    // Why the project cannot be saved (another instance holds its folder); empty when it can.
    std::string readOnly;
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
