#pragma once
// A project on disk is a folder: "<name>.sonproj" holds the project's settings and its tree of
// physical folders and work units; each work unit's objects live in
// "<category>/<physical folders...>/<work unit>.swu". Reading builds the model without undo,
// notifications or dirty marks; saving writes only what changed, each file replaced atomically.

#include "sonarium/core/model/Project.h"
#include "sonarium/core/storage/StorageProblem.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

namespace sn
{
inline constexpr const char* kProjectFileExtension = ".sonproj";
inline constexpr const char* kWorkUnitFileExtension = ".swu";
// The folder of the project's original audio files, which sources name their files from.
inline constexpr const char* kOriginalsFolder = "Originals";

struct OpenResult
{
    std::unique_ptr<Project> project; // null when the project file cannot be used
    StorageProblems problems;
    // Why the project opened read-only (another instance holds its folder); empty when it did not.
    std::string readOnly;
    bool cancelled = false; // the progress callback asked to stop: nothing was opened
};

// Hears how many of the work-unit files to read have been read (first with 0); false stops.
using OpenProgress = std::function<bool(size_t read, size_t total)>;

struct OpenOptions
{
    // Holds the project's folder for as long as the project stays open, so that another instance
    // opening it is told and cannot save over this one's files.
    bool lock = false;
    OpenProgress progress;
};

// Opens the project file, or the single project file of a folder. Work units whose files cannot
// be read open empty and unloaded, and are never overwritten by a save. A save that was cut short
// is completed or undone first, unless another instance holds the folder.
OpenResult OpenProject(const std::filesystem::path& projectFileOrFolder, const OpenOptions& options = {});

// A file changed by another program since this project last read or wrote it.
struct ExternalChange
{
    const WorkUnitObject* unit = nullptr; // null: the project file
    std::filesystem::path path;
};

enum class ExternalChangeAnswer
{
    Overwrite,  // this project's version replaces the file
    KeepTheirs, // the file stays as the other program left it; changes here stay unsaved
    Reload,     // the file stays, and the unit is read again from it (its changes here are dropped)
};

using ExternalChangeHandler = std::function<ExternalChangeAnswer(const ExternalChange&)>;

struct SaveOptions
{
    // Asked once per changed file before anything is written; without it, such a file stops the save.
    ExternalChangeHandler onExternalChange;
};

// Writes the project file and the work units that changed; false when anything failed.
bool SaveProject(Project& project, StorageProblems& problems, const SaveOptions& options = {});
// Writes the whole project into folder, which becomes the project's folder on success; the
// original audio files go along.
bool SaveProjectAs(Project& project, const std::filesystem::path& folder, StorageProblems& problems);

// Reads an unloaded work unit's objects back from its file.
bool LoadWorkUnit(Project& project, WorkUnitObject* unit, StorageProblems& problems);
// Drops a work unit's objects from memory; refused for a unit with unsaved changes.
bool UnloadWorkUnit(Project& project, WorkUnitObject* unit);
// Reads a loaded work unit again from its file, dropping what it holds in memory.
bool ReloadWorkUnit(Project& project, WorkUnitObject* unit, StorageProblems& problems);

// Where the files belong now, from the names in the tree.
std::filesystem::path ProjectFilePath(const Project& project, const std::filesystem::path& folder);
std::filesystem::path WorkUnitFilePath(const WorkUnitObject& unit, const std::filesystem::path& folder);
// The folder on disk of a category's root or of a physical folder.
std::filesystem::path FolderPath(const ProjectObject& folderObject, const std::filesystem::path& folder);
} // namespace sn
