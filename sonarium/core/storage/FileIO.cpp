#include "sonarium/core/storage/FileIO.h"

#include <bit>
#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <random>
#include <sys/stat.h>
#include <unistd.h>

namespace sn::FileIO
{
namespace
{
class FileDescriptor
{
public:
    explicit FileDescriptor(int fd) : m_fd(fd) {}
    ~FileDescriptor() { Close(); }
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;

    int Get() const { return m_fd; }
    bool IsOpen() const { return m_fd >= 0; }
    // Reports the error of close() itself: on some file systems that is where a failed write shows.
    bool Close()
    {
        if (m_fd < 0)
            return true;
        const int fd = m_fd;
        m_fd = -1;
        return ::close(fd) == 0;
    }

private:
    int m_fd;
};

// Removes the temporary file unless the rename consumed it.
class TemporaryFileGuard
{
public:
    explicit TemporaryFileGuard(std::filesystem::path path) : m_path(std::move(path)) {}
    ~TemporaryFileGuard()
    {
        if (!m_path.empty())
            ::unlink(m_path.c_str());
    }
    TemporaryFileGuard(const TemporaryFileGuard&) = delete;
    TemporaryFileGuard& operator=(const TemporaryFileGuard&) = delete;

    void Release() { m_path.clear(); }

private:
    std::filesystem::path m_path;
};

std::string SystemError(const char* what)
{
    return std::string(what) + ": " + std::strerror(errno);
}

bool WriteAll(int fd, std::string_view bytes)
{
    while (!bytes.empty())
    {
        const ssize_t written = ::write(fd, bytes.data(), bytes.size());
        if (written < 0)
        {
            if (errno == EINTR)
                continue;
            return false;
        }
        bytes.remove_prefix(static_cast<size_t>(written));
    }
    return true;
}

// A name no other writer in this folder uses; O_EXCL below makes a clash visible rather than shared.
std::filesystem::path TemporaryNameFor(const std::filesystem::path& path)
{
    static std::mt19937_64 random{std::random_device{}()};
    char suffix[32];
    std::snprintf(suffix, sizeof(suffix), ".%d.%016llx.tmp", static_cast<int>(::getpid()),
                  static_cast<unsigned long long>(random()));
    return path.parent_path() / ("." + path.filename().string() + suffix);
}

const char* KindOf(mode_t mode)
{
    if (S_ISFIFO(mode))
        return "a named pipe";
    if (S_ISSOCK(mode))
        return "a socket";
    if (S_ISCHR(mode) || S_ISBLK(mode))
        return "a device";
    return "not a file";
}

FileStamp StampFrom(const struct stat& info)
{
    FileStamp stamp;
    stamp.known = true;
    stamp.size = static_cast<uint64_t>(info.st_size);
    stamp.modified = static_cast<int64_t>(info.st_mtim.tv_sec) * 1000000000 + info.st_mtim.tv_nsec;
    stamp.device = static_cast<uint64_t>(info.st_dev);
    stamp.inode = static_cast<uint64_t>(info.st_ino);
    return stamp;
}

// The rename itself is only durable once the folder's entry is on disk.
void SyncFolder(const std::filesystem::path& folder)
{
    FileDescriptor dir(::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (dir.IsOpen())
        ::fsync(dir.Get());
}
} // namespace

bool FileStamp::SameMetadata(const FileStamp& other) const
{
    return known && other.known && size == other.size && modified == other.modified &&
           device == other.device && inode == other.inode;
}

uint64_t ContentHash(std::string_view bytes)
{
    // FNV-1a: simple, and the same everywhere, unlike std::hash.
    uint64_t hash = 14695981039346656037ull;
    for (unsigned char c : bytes)
        hash = (hash ^ c) * 1099511628211ull;
    return hash;
}

uint64_t StampHash(std::string_view bytes)
{
    // Four independent lanes of eight bytes each, so the multiplications overlap, then folded
    // with the length and the bytes left over.
    constexpr uint64_t kPrime = 0x9E3779B97F4A7C15ull;
    uint64_t lanes[4] = {1, 2, 3, 4};
    size_t i = 0;
    for (; i + 32 <= bytes.size(); i += 32)
        for (size_t lane = 0; lane < 4; ++lane)
        {
            uint64_t word = 0;
            std::memcpy(&word, bytes.data() + i + 8 * lane, sizeof(word));
            lanes[lane] = std::rotl((lanes[lane] ^ word) * kPrime, 29);
        }
    uint64_t hash = bytes.size();
    for (uint64_t lane : lanes)
        hash = std::rotl((hash ^ lane) * kPrime, 29);
    return hash ^ ContentHash(bytes.substr(i));
}

bool ReadFile(const std::filesystem::path& path, std::string& bytes, std::string& error, FileStamp* stamp)
{
    // Without O_NONBLOCK, opening a FIFO waits for a writer that may never come.
    FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!file.IsOpen())
    {
        error = std::strerror(errno);
        return false;
    }
    struct stat info = {};
    if (::fstat(file.Get(), &info) != 0)
    {
        error = std::strerror(errno);
        return false;
    }
    if (S_ISDIR(info.st_mode))
    {
        error = "is a folder, not a file";
        return false;
    }
    if (!S_ISREG(info.st_mode))
    {
        error = std::string("is not a regular file (") + KindOf(info.st_mode) + ")";
        return false;
    }
    bytes.clear();
    bytes.reserve(static_cast<size_t>(info.st_size));
    char buffer[65536];
    for (;;)
    {
        const ssize_t got = ::read(file.Get(), buffer, sizeof(buffer));
        if (got == 0)
            break;
        if (got < 0)
        {
            if (errno == EINTR)
                continue;
            error = std::strerror(errno);
            return false;
        }
        bytes.append(buffer, static_cast<size_t>(got));
    }
    if (stamp)
    {
        *stamp = StampFrom(info);
        stamp->hash = StampHash(bytes);
    }
    return true;
}

bool WriteBeside(const std::filesystem::path& path, std::string_view bytes, std::filesystem::path& staged,
                 std::string& error)
{
    const std::filesystem::path folder = path.parent_path();
    if (!folder.empty())
    {
        std::error_code ec;
        std::filesystem::create_directories(folder, ec);
        if (ec)
        {
            const std::string obstacle = ObstacleTo(path);
            error = obstacle.empty() ? "cannot create folder " + folder.string() + ": " + ec.message() : obstacle;
            return false;
        }
    }

    // Keep the permissions of the file being replaced; a new file gets the usual ones minus umask.
    mode_t mode = 0666;
    struct stat existing = {};
    const bool replacing = ::stat(path.c_str(), &existing) == 0;
    if (replacing)
    {
        if (S_ISDIR(existing.st_mode))
        {
            error = "is a folder, not a file";
            return false;
        }
        if (!S_ISREG(existing.st_mode))
        {
            error = std::string("is not a regular file (") + KindOf(existing.st_mode) + ")";
            return false;
        }
        mode = existing.st_mode & 07777;
    }

    std::filesystem::path temporary;
    int fd = -1;
    for (int attempt = 0; attempt < 16 && fd < 0; ++attempt)
    {
        temporary = TemporaryNameFor(path);
        fd = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
        if (fd < 0 && errno != EEXIST)
            break;
    }
    FileDescriptor file(fd);
    if (!file.IsOpen())
    {
        error = SystemError("cannot create a temporary file");
        return false;
    }
    TemporaryFileGuard guard(temporary);
    if (replacing)
        ::fchmod(file.Get(), mode);

    if (!WriteAll(file.Get(), bytes))
    {
        error = SystemError("cannot write");
        return false;
    }
    if (::fsync(file.Get()) != 0)
    {
        error = SystemError("cannot flush to disk");
        return false;
    }
    if (!file.Close())
    {
        error = SystemError("cannot close");
        return false;
    }
    guard.Release();
    staged = temporary;
    return true;
}

bool PutInPlace(const std::filesystem::path& staged, const std::filesystem::path& path, std::string& error,
                FileStamp* stamp)
{
    if (::rename(staged.c_str(), path.c_str()) != 0)
    {
        error = SystemError("cannot replace the file");
        return false;
    }
    SyncFolder(path.parent_path());
    if (stamp)
    {
        const uint64_t hash = stamp->hash;
        *stamp = StampOf(path);
        stamp->hash = hash;
    }
    return true;
}

bool WriteAtomically(const std::filesystem::path& path, std::string_view bytes, std::string& error,
                     FileStamp* stamp)
{
    std::filesystem::path staged;
    if (!WriteBeside(path, bytes, staged, error))
        return false;
    TemporaryFileGuard guard(staged);
    if (stamp)
        stamp->hash = StampHash(bytes);
    if (!PutInPlace(staged, path, error, stamp))
        return false;
    guard.Release();
    return true;
}

FileStamp StampOf(const std::filesystem::path& path)
{
    struct stat info = {};
    if (::stat(path.c_str(), &info) != 0)
        return {};
    return StampFrom(info);
}

bool IsAsStamped(const std::filesystem::path& path, const FileStamp& stamp)
{
    const FileStamp now = StampOf(path);
    if (!now.known || now.SameMetadata(stamp))
        return true;
    std::string bytes, error;
    if (!ReadFile(path, bytes, error))
        return false;
    return stamp.known && StampHash(bytes) == stamp.hash;
}

bool IsTemporaryName(const std::string& name, long* process)
{
    // "." + file name + "." + process + "." + 16 hexadecimal digits + ".tmp"
    static constexpr std::string_view suffix = ".tmp";
    if (name.size() < 1 + 1 + 2 + 17 + suffix.size() || name.front() != '.' || !name.ends_with(suffix))
        return false;
    const size_t hexEnd = name.size() - suffix.size();
    const size_t hexStart = hexEnd - 16;
    if (name[hexStart - 1] != '.')
        return false;
    for (size_t i = hexStart; i < hexEnd; ++i)
        if (!std::isxdigit(static_cast<unsigned char>(name[i])))
            return false;
    const size_t pidEnd = hexStart - 1;
    size_t pidStart = pidEnd;
    while (pidStart > 1 && std::isdigit(static_cast<unsigned char>(name[pidStart - 1])))
        --pidStart;
    if (pidStart == pidEnd || pidStart < 3 || name[pidStart - 1] != '.')
        return false;
    if (process)
        *process = std::stol(name.substr(pidStart, pidEnd - pidStart));
    return true;
}

std::string ObstacleTo(const std::filesystem::path& path)
{
    struct stat info = {};
    if (::stat(path.c_str(), &info) == 0)
    {
        if (S_ISDIR(info.st_mode))
            return "is a folder, not a file";
        if (!S_ISREG(info.st_mode))
            return std::string("is not a regular file (") + KindOf(info.st_mode) + ")";
        return {};
    }
    // The nearest folder on the way that exists must be a folder.
    for (std::filesystem::path folder = path.parent_path(); !folder.empty() && folder != folder.root_path();
         folder = folder.parent_path())
        if (::stat(folder.c_str(), &info) == 0)
            return S_ISDIR(info.st_mode) ? std::string() : folder.string() + " is a file, not a folder";
    return {};
}
} // namespace sn::FileIO
