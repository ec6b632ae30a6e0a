#pragma once
// What a project folder holds, file by file (size and a hash of the bytes), so that a later
// look can say which files changed, appeared or went. The lock file and the cache of converted
// audio are not the project's content and are left out.

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace sn
{
class FolderSnapshot
{
public:
    FolderSnapshot() = default;
    explicit FolderSnapshot(std::filesystem::path const& folder);

    bool Empty() const { return m_files.empty(); }
    // One line per difference from `earlier`: "changed: PATH", "new: PATH", "gone: PATH". Audio
    // an import copied into the originals folder is not new content: it stays when the import is
    // undone, as undo never deletes the user's media.
    std::vector<std::wstring> Differences(FolderSnapshot const& earlier) const;

private:
    struct Print
    {
        uintmax_t size = 0;
        uint64_t hash = 0;
        bool operator==(Print const& other) const { return size == other.size && hash == other.hash; }
    };
    std::map<std::filesystem::path, Print> m_files; // by path relative to the folder
};
} // namespace sn
