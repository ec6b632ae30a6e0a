#pragma once
// A save decided before anything is written: every work-unit file to write from memory or to
// carry along unread from where it lies, which of those must wait until the new project file is
// on disk (they replace a file that the project on disk still names), what to remove afterwards,
// and what makes the save impossible (two files or folders at one path, whatever the letter
// case; a folder or a file in the way; a file another program changed that the user keeps).

#include "sonarium/core/storage/ProjectStorage.h"
#include "sonarium/core/storage/StorageState.h"

#include <filesystem>
#include <string>
#include <vector>

namespace sn
{
struct SaveStep
{
    enum Kind
    {
        Write, // the unit's objects, from memory
        Carry, // the bytes of the unit's file, unread, from source (or from removedFiles)
    };
    Kind kind = Write;
    WorkUnitObject* unit = nullptr;
    // Carry: the file the bytes come from; empty when they were kept when the file was removed.
    std::filesystem::path source;
    std::filesystem::path target;
    // Written beside target and renamed over it once the project file names the new places.
    bool staged = false;
};

struct SavePlan
{
    std::vector<SaveStep> steps;
    std::filesystem::path projectFile;
    bool writeProjectFile = false;
    // Every physical folder, so that empty ones exist too.
    std::vector<std::filesystem::path> folders;
    // Files the project will no longer name, removed once the new project file is on disk.
    std::vector<std::filesystem::path> obsolete;
    // Deleted units, whose entries leave the state with the save.
    std::vector<GUID> forgotten;
    // Loaded units whose files another program changed and the user chose to read again.
    std::vector<WorkUnitObject*> reload;
    // Loaded units whose changes stay unsaved because the user kept another program's file.
    std::vector<WorkUnitObject*> keptTheirs;
    // Why the save cannot be done; nothing is written when there is any.
    StorageProblems refusals;
};

// Plans saving project into folder (everything: every file, as into a new folder). Files another
// program changed since they were read are put to onExternalChange, or refused without it.
SavePlan PlanSave(Project& project, const std::filesystem::path& folder, const StorageState& state,
                  bool everything, const ExternalChangeHandler& onExternalChange = {});

// The same path for a file system that ignores letter case.
std::wstring FoldedPath(const std::filesystem::path& path);
} // namespace sn
