#pragma once
// The source-control status of a project's work-unit files, read from the git repository the
// project's folder lives in: a file changed since the last commit is modified, a new file the
// index holds is added, a file git does not track is unversioned. Committed, unchanged and
// ignored files have no status, and neither has any file of a project outside a repository.
// The status is read when asked (opening, saving, a refresh), never behind the user's back.

#include "sonarium/core/model/Project.h"

#include <string>
#include <unordered_map>

namespace sn
{
enum class FileStatus
{
    None,
    Modified,
    Added,
    Unversioned,
};

// "modified", "added", "unversioned", or "" for none.
const char* FileStatusName(FileStatus status);

class SourceControlStatus
{
public:
    // Reads the status of every work-unit file of the project; false (with Problem()) when the
    // repository exists but could not be read.
    bool Read(const Project& project);
    void Clear();

    FileStatus StatusOf(GUID const& unit) const;
    // Whether the project lives in a repository at all.
    bool HasRepository() const { return !m_workdir.empty(); }
    const std::string& Workdir() const { return m_workdir; }
    // What went wrong at the last reading, or empty.
    const std::string& Problem() const { return m_problem; }

private:
    std::unordered_map<GUID, FileStatus> m_status;
    std::string m_workdir;
    std::string m_problem;
};
} // namespace sn
