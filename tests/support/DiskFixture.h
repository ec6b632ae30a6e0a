#pragma once
// Files on disk for storage tests: a private folder per test, a private copy of the bundled
// sample project, and checksums of every file under a folder, so that a test can say exactly
// which files an operation changed.

#include "sonarium/core/storage/ProjectLock.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>

namespace disk
{
namespace fs = std::filesystem;

class TempFolder
{
public:
    TempFolder()
    {
        std::string pattern = (fs::temp_directory_path() / "storage-test-XXXXXX").string();
        m_path = ::mkdtemp(pattern.data());
    }
    ~TempFolder()
    {
        std::error_code ec;
        fs::permissions(m_path, fs::perms::owner_all, fs::perm_options::add, ec);
        fs::remove_all(m_path, ec);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    const fs::path& Path() const { return m_path; }

private:
    fs::path m_path;
};

// The bundled sample project, copied to a folder of the test's own.
class SampleCopy : public TempFolder
{
public:
    SampleCopy()
    {
        // Another test may have the sample open at this moment: its lock is not part of the project.
        const fs::path sample = SONARIUM_SAMPLES_DIR "/Demo";
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(sample))
        {
            const fs::path target = Path() / fs::relative(entry.path(), sample);
            std::error_code ec;
            if (entry.is_directory(ec))
                fs::create_directories(target);
            else if (entry.path().filename() != sn::ProjectLock::kFileName)
                fs::copy_file(entry.path(), target, ec);
        }
    }
    fs::path File(const std::string& relative) const { return Path() / relative; }
};

inline std::string Slurp(const fs::path& path)
{
    std::ifstream in(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << in.rdbuf();
    return bytes.str();
}

inline void Spit(const fs::path& path, const std::string& bytes)
{
    std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
}

inline uint64_t Checksum(const std::string& bytes)
{
    uint64_t hash = 14695981039346656037ull;
    for (unsigned char c : bytes)
        hash = (hash ^ c) * 1099511628211ull;
    return hash;
}

// Relative path -> checksum of every regular file under folder.
using Checksums = std::map<std::string, uint64_t>;

inline Checksums ChecksumsOf(const fs::path& folder)
{
    Checksums sums;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder))
    {
        std::error_code ec; // a symbolic link that loops is no file
        if (entry.is_regular_file(ec))
            sums[fs::relative(entry.path(), folder).string()] = Checksum(Slurp(entry.path()));
    }
    return sums;
}

// What differs between two checksum sets: "+path" added, "-path" removed, "~path" changed.
inline std::string Changes(const Checksums& before, const Checksums& after)
{
    std::string text;
    for (const auto& [path, sum] : before)
    {
        auto found = after.find(path);
        if (found == after.end())
            text += "-" + path + "\n";
        else if (found->second != sum)
            text += "~" + path + "\n";
    }
    for (const auto& [path, sum] : after)
        if (!before.count(path))
            text += "+" + path + "\n";
    return text;
}
} // namespace disk
