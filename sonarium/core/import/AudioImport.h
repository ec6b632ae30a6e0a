#pragma once
// Importing audio files as sounds: each usable file is copied into the project's folder of
// original files and becomes a sound with a source playing the copy (or a new source of an
// existing sound), all as one undo step. A cancelled import leaves nothing behind.

#include "sonarium/core/import/AudioFile.h"
#include "sonarium/core/model/ProjectObject.h"
#include "sonarium/core/storage/ProjectStorage.h"

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace sn::audio
{

struct ImportChoices
{
    bool voice = false;          // sounds are voices (one source per language) rather than effects
    unsigned long language = 0;  // the language of voice sources
};

struct ImportItem
{
    std::wstring text;           // the file as the user named it
    std::filesystem::path file;
    AudioFileInfo info;          // info.problem also holds why the file is left out of the import
    std::wstring soundName;
    bool newSound = true;        // false: a new source of the existing sound soundName
    PMTreeNode::NodeType soundType = PMTreeNode::SoundSFX;

    bool Usable() const { return info.ok; }
    // "new Sound SFX \"Rain\"", "new source of \"Rain\"", or why it is left out.
    std::wstring Becomes() const;
};

struct ImportResult
{
    size_t imported = 0;
    bool cancelled = false;
    std::vector<std::wstring> problems; // files that failed while copying, each named
};

class AudioImport
{
public:
    // Reads every file once; destination is the object the sounds go into (or the sound that
    // receives the sources).
    AudioImport(ProjectObject* destination, const std::vector<std::wstring>& files);

    ProjectObject* Destination() const { return m_destination.Get(); }
    // Why nothing can be imported at all (no project folder, a destination that holds no
    // sounds), or empty.
    const std::wstring& Problem() const { return m_problem; }
    // For each file, in the order given: its format or what is wrong with it, and the sound and
    // source it becomes under these choices.
    std::vector<ImportItem> Plan(const ImportChoices& choices) const;
    // progress(done, file) is asked before each file; false stops the import, and the files
    // copied so far are removed again.
    ImportResult Run(const ImportChoices& choices,
                     const std::function<bool(size_t done, const std::wstring& file)>& progress) const;

private:
    CSmartPtr<ProjectObject> m_destination;
    std::vector<ImportItem> m_files;
    std::wstring m_problem;
};
} // namespace sn::audio
