#pragma once
// The project's cache of converted audio: beside the project file, in ".cache", one file per
// audio source that its sound converts, named by the source's GUID. A source's original is the
// file its "File" property names, or else its own name, in the project's "Originals" folder.
// Filling and clearing raise "Project"/"CacheChanged" once when something in the cache changed.

#include "sonarium/core/audio/Conversion.h"
#include "sonarium/core/model/Project.h"

#include <filesystem>
#include <string>
#include <vector>

namespace sn::cache
{
std::filesystem::path Folder(const Project& project);
std::filesystem::path OriginalOf(const ProjectObject* source);

struct FillResult
{
    int converted = 0;
    // Sources whose sound plays its originals.
    int skipped = 0;
    // "NAME: why", one per source that could not be converted.
    std::vector<std::wstring> failures;
};
// Converts every audio source at or below the object with the conversion settings that apply to
// it, replacing what the cache held for the source.
FillResult Fill(ProjectObject* object);
// Empties the cache; false when there was nothing in it.
bool Clear(const Project& project);

struct Entry
{
    const ProjectObject* source = nullptr; // null when the source is gone from the project
    std::filesystem::path file;
    std::wstring format; // "PCM 48000, 2 channels", read back from the file
};
std::vector<Entry> Entries(const Project& project);
} // namespace sn::cache
