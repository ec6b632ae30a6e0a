#pragma once
// The lock an instance holds on the folder of the project it has open, so that a second instance
// opening the same project knows, opens it read-only, and never saves over the first one's files.
// It is an advisory lock on a file in the folder (".sonarium.lock"), which the system releases
// when the holder ends, however it ends; the file names the holder for the other's message.

#include <filesystem>
#include <memory>
#include <string>

namespace sn
{
class ProjectLock
{
public:
    struct Result
    {
        std::shared_ptr<ProjectLock> lock; // null when not taken
        // Who holds the folder, when another instance does: "process 1234 on host \"x\"".
        std::string heldBy;
    };

    // Takes the lock of folder. A folder where no lock file can be made (read-only, say) is
    // opened without one: nothing can be saved there anyway.
    static Result Acquire(const std::filesystem::path& folder);

    ~ProjectLock();
    ProjectLock(const ProjectLock&) = delete;
    ProjectLock& operator=(const ProjectLock&) = delete;

    static constexpr const char* kFileName = ".sonarium.lock";

private:
    ProjectLock(int fd, std::filesystem::path path, long process)
        : m_fd(fd), m_path(std::move(path)), m_process(process)
    {
    }

    int m_fd;
    std::filesystem::path m_path;
    // A process forked from the holder inherits its memory, not its lock.
    long m_process;
};
} // namespace sn
