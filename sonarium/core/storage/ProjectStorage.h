#pragma once
// A project on disk is a folder: "<name>.sonproj" holds the project's settings and its tree of
// physical folders and work units; each work unit's objects live in
// "<category>/<physical folders...>/<work unit>.swu". Reading builds the model without undo,
// notifications or dirty marks; saving writes only what changed, each file replaced atomically.

#include "sonarium/core/model/Project.h"
#include "sonarium/core/storage/StorageProblem.h"

#include <filesystem>
#include <memory>

namespace sn
{
inline constexpr const char* kProjectFileExtension = ".sonproj";
inline constexpr const char* kWorkUnitFileExtension = ".swu";

struct OpenResult
{
    std::unique_ptr<Project> project; // null when the project file cannot be used
    StorageProblems problems;
};

// Opens the project file, or the single project file of a folder. Work units whose files cannot
// be read open empty and unloaded, and are never overwritten by a save.
OpenResult OpenProject(const std::filesystem::path& projectFileOrFolder);

// Writes the project file and the work units that changed; false when anything failed.
bool SaveProject(Project& project, StorageProblems& problems);
// Writes the whole project into folder, which becomes the project's folder on success.
bool SaveProjectAs(Project& project, const std::filesystem::path& folder, StorageProblems& problems);

// Reads an unloaded work unit's objects back from its file.
bool LoadWorkUnit(Project& project, WorkUnitObject* unit, StorageProblems& problems);
// Drops a work unit's objects from memory; refused for a unit with unsaved changes.
bool UnloadWorkUnit(Project& project, WorkUnitObject* unit);

// Where the files belong now, from the names in the tree.
std::filesystem::path ProjectFilePath(const Project& project, const std::filesystem::path& folder);
std::filesystem::path WorkUnitFilePath(const WorkUnitObject& unit, const std::filesystem::path& folder);
// The folder on disk of a category's root or of a physical folder.
std::filesystem::path FolderPath(const ProjectObject& folderObject, const std::filesystem::path& folder);
} // namespace sn
