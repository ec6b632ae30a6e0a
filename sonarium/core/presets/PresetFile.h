#pragma once
// The presets of a project live beside its project file, in "Presets.json":
//
//   {"format": "sonarium-presets", "version": 1,
//    "presets": [{"type": "SoundSFX", "id": "{...}", "name": "Loop", "properties": {"Loop": "yes"}}]}

#include "sonarium/core/model/Project.h"
#include "sonarium/core/storage/StorageProblem.h"

#include <filesystem>

namespace sn
{
inline constexpr const char* kPresetsFileName = "Presets.json";

// Reads the presets of the project in folder; no file means no presets. A preset that cannot be
// used is reported and left out; the others are read.
void ReadPresets(Project& project, const std::filesystem::path& folder, StorageProblems& problems);
// Writes the presets into folder when the file would change; false when writing failed.
bool WritePresets(const Project& project, const std::filesystem::path& folder, StorageProblems& problems);
} // namespace sn
