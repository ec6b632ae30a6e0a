#include "sonarium/core/storage/FileIO.h"

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

// The rename itself is only durable once the folder's entry is on disk.
void SyncFolder(const std::filesystem::path& folder)
{
    FileDescriptor dir(::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (dir.IsOpen())
        ::fsync(dir.Get());
}
} // namespace

bool ReadFile(const std::filesystem::path& path, std::string& bytes, std::string& error)
{
    FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
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
        error = "is not a regular file";
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
    return true;
}

bool WriteAtomically(const std::filesystem::path& path, std::string_view bytes, std::string& error)
{
    const std::filesystem::path folder = path.parent_path();
    std::error_code ec;
    if (!folder.empty())
    {
        std::filesystem::create_directories(folder, ec);
        if (ec)
        {
            error = "cannot create folder " + folder.string() + ": " + ec.message();
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
    if (::rename(temporary.c_str(), path.c_str()) != 0)
    {
        error = SystemError("cannot replace the file");
        return false;
    }
    guard.Release();
    SyncFolder(folder);
    return true;
}
} // namespace sn::FileIO
