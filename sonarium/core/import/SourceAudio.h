#pragma once
// What a sound plays, as the property inspector shows it: the format and length of its source's
// audio file and the peaks of its samples for a waveform picture.

#include "sonarium/core/import/AudioFile.h"
#include "sonarium/core/model/ProjectObject.h"

#include <filesystem>
#include <vector>

namespace sn::audio
{
struct SourceAudio
{
    ProjectObject* source = nullptr; // null when the object plays no source
    std::filesystem::path file;      // the source's file, from the project's folder
    AudioFileInfo info;              // info.problem says why the file cannot be shown
    std::vector<Peak> peaks;
};

// The source an object plays: a source itself, a sound's active source (else its first one).
ProjectObject* PlayedSource(ProjectObject* object);
// The file of a source on disk: its "File" taken from the project's folder when relative.
std::filesystem::path SourceFilePath(const ProjectObject& source);
// Reads the played source's file; `buckets` peaks (none for 0).
SourceAudio QuerySourceAudio(ProjectObject* object, size_t buckets);
} // namespace sn::audio
