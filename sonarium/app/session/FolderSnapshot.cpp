#include "sonarium/app/session/FolderSnapshot.h"

#include "sonarium/core/storage/ProjectLock.h"
#include "sonarium/core/storage/ProjectStorage.h"

#include <fstream>

namespace sn
{
namespace
{
uint64_t HashOf(std::filesystem::path const& file)
{
    // FNV-1a over the bytes: a change of any byte changes it, which is all a comparison needs.
    uint64_t hash = 1469598103934665603ull;
    std::ifstream in(file, std::ios::binary);
    char buffer[1 << 16];
    while (in.read(buffer, sizeof buffer) || in.gcount() > 0)
    {
        for (std::streamsize i = 0; i < in.gcount(); ++i)
            hash = (hash ^ static_cast<unsigned char>(buffer[i])) * 1099511628211ull;
        if (!in)
            break;
    }
    return hash;
}
} // namespace

FolderSnapshot::FolderSnapshot(std::filesystem::path const& folder)
{
    std::error_code ec;
    for (auto it = std::filesystem::recursive_directory_iterator(folder, ec);
         !ec && it != std::filesystem::recursive_directory_iterator(); it.increment(ec))
    {
        const std::filesystem::path relative = it->path().lexically_relative(folder);
        if (it->is_directory(ec) && relative == ".cache")
        {
            it.disable_recursion_pending();
            continue;
        }
        if (!it->is_regular_file(ec) || relative == ProjectLock::kFileName)
            continue;
        m_files[relative] = Print{it->file_size(ec), HashOf(it->path())};
    }
}

std::vector<std::wstring> FolderSnapshot::Differences(FolderSnapshot const& earlier) const
{
    std::vector<std::wstring> lines;
    for (auto const& [path, print] : earlier.m_files)
    {
        auto now = m_files.find(path);
        if (now == m_files.end())
            lines.push_back(L"gone: " + path.generic_wstring());
        else if (!(now->second == print))
            lines.push_back(L"changed: " + path.generic_wstring());
    }
    for (auto const& [path, print] : m_files)
        if (!earlier.m_files.count(path) && *path.begin() != kOriginalsFolder)
            lines.push_back(L"new: " + path.generic_wstring());
    return lines;
}
} // namespace sn
