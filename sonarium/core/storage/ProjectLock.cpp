#include "sonarium/core/storage/ProjectLock.h"

#include <cerrno>
#include <fcntl.h>
#include <map>
#include <mutex>
#include <string>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace sn
{
namespace
{
std::string ReadHolder(int fd)
{
    char buffer[256] = {};
    const ssize_t got = ::pread(fd, buffer, sizeof(buffer) - 1, 0);
    std::string text(buffer, got > 0 ? static_cast<size_t>(got) : 0);
    while (!text.empty() && (text.back() == '\n' || text.back() == '\r'))
        text.pop_back();
    return text.empty() ? std::string("an unknown process") : text;
}

std::string Holder()
{
    char host[256] = {};
    ::gethostname(host, sizeof(host) - 1);
    return "process " + std::to_string(::getpid()) + " on host \"" + host + "\"";
}
// The locks this process holds: a project opened again here (reopened, say) shares its lock with
// the copy still open, rather than finding its own instance in the way.
std::map<std::filesystem::path, std::weak_ptr<ProjectLock>>& Held()
{
    static std::map<std::filesystem::path, std::weak_ptr<ProjectLock>> held;
    return held;
}

std::mutex& HeldMutex()
{
    static std::mutex mutex;
    return mutex;
}
} // namespace

ProjectLock::Result ProjectLock::Acquire(const std::filesystem::path& folder)
{
    std::error_code ec;
    const std::filesystem::path path = std::filesystem::weakly_canonical(folder, ec) / kFileName;
    std::lock_guard<std::mutex> guard(HeldMutex());
    if (std::shared_ptr<ProjectLock> held = Held()[path].lock(); held && held->m_process == ::getpid())
        return {held, {}};
    // The holder removes the file as it lets go: a file locked after that is no longer the lock.
    for (int attempt = 0; attempt < 8; ++attempt)
    {
        const int fd = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0644);
        if (fd < 0)
            return {};
        struct stat opened = {}, named = {};
        if (::fstat(fd, &opened) != 0 || !S_ISREG(opened.st_mode))
        {
            ::close(fd);
            return {};
        }
        if (::flock(fd, LOCK_EX | LOCK_NB) != 0)
        {
            const int error = errno;
            std::string heldBy = error == EWOULDBLOCK ? ReadHolder(fd) : std::string();
            ::close(fd);
            return {nullptr, heldBy};
        }
        if (::stat(path.c_str(), &named) != 0 || named.st_ino != opened.st_ino || named.st_dev != opened.st_dev)
        {
            ::close(fd);
            continue;
        }
        const std::string holder = Holder() + "\n";
        if (::ftruncate(fd, 0) == 0 && ::pwrite(fd, holder.data(), holder.size(), 0) < 0)
        {
            // The name of the holder is a courtesy; the lock holds without it.
        }
        std::shared_ptr<ProjectLock> lock(new ProjectLock(fd, path, ::getpid()));
        Held()[path] = lock;
        return {lock, {}};
    }
    return {};
}

ProjectLock::~ProjectLock()
{
    {
        std::lock_guard<std::mutex> guard(HeldMutex());
        Held().erase(m_path);
    }
    // Removed while still held, so that whoever opened the old file sees it is gone.
    ::unlink(m_path.c_str());
    ::close(m_fd);
}
} // namespace sn
