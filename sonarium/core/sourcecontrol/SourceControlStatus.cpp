#include "sonarium/core/sourcecontrol/SourceControlStatus.h"

#include "sonarium/core/storage/StorageState.h"

#include <git2.h>

#include <map>
#include <memory>

namespace sn
{
namespace
{
namespace fs = std::filesystem;

// libgit2 is set up once for the process and stays up: its shutdown is not needed at exit.
void InitGit()
{
    static const int once = git_libgit2_init();
    (void)once;
}

std::string LastError(const char* what)
{
    const git_error* error = git_error_last();
    return std::string(what) + ": " + (error && error->message ? error->message : "unknown error");
}

FileStatus FromFlags(unsigned flags)
{
    if (flags & GIT_STATUS_INDEX_NEW)
        return FileStatus::Added;
    if (flags & GIT_STATUS_WT_NEW)
        return FileStatus::Unversioned;
    constexpr unsigned changed = GIT_STATUS_INDEX_MODIFIED | GIT_STATUS_WT_MODIFIED | GIT_STATUS_INDEX_RENAMED |
                                 GIT_STATUS_WT_RENAMED | GIT_STATUS_INDEX_TYPECHANGE | GIT_STATUS_WT_TYPECHANGE |
                                 GIT_STATUS_CONFLICTED;
    return flags & changed ? FileStatus::Modified : FileStatus::None;
}

fs::path Canonical(const fs::path& path)
{
    std::error_code ec;
    fs::path canonical = fs::weakly_canonical(path, ec);
    return ec ? path.lexically_normal() : canonical;
}

struct RepositoryCloser
{
    void operator()(git_repository* repository) const { git_repository_free(repository); }
};
struct StatusListCloser
{
    void operator()(git_status_list* list) const { git_status_list_free(list); }
};
} // namespace

const char* FileStatusName(FileStatus status)
{
    switch (status)
    {
    case FileStatus::Modified:
        return "modified";
    case FileStatus::Added:
        return "added";
    case FileStatus::Unversioned:
        return "unversioned";
    case FileStatus::None:
        break;
    }
    return "";
}

void SourceControlStatus::Clear()
{
    m_status.clear();
    m_workdir.clear();
    m_problem.clear();
}

FileStatus SourceControlStatus::StatusOf(GUID const& unit) const
{
    auto found = m_status.find(unit);
    return found == m_status.end() ? FileStatus::None : found->second;
}

bool SourceControlStatus::Read(const Project& project)
{
    Clear();
    if (project.GetFolder().empty())
        return true;
    InitGit();
    const fs::path folder = Canonical(project.GetFolder());
    git_repository* opened = nullptr;
    const int found = git_repository_open_ext(&opened, folder.c_str(), 0, nullptr);
    std::unique_ptr<git_repository, RepositoryCloser> repository(opened);
    if (found == GIT_ENOTFOUND)
        return true;
    if (found < 0)
    {
        m_problem = LastError("cannot open the repository");
        return false;
    }
    const char* workdir = git_repository_workdir(repository.get());
    if (!workdir)
        return true; // a bare repository holds no working files
    const fs::path root = Canonical(workdir);

    // Only the project's folder is looked at, however large the repository.
    const std::string prefix = folder.lexically_relative(root).generic_string();
    git_status_options options;
    git_status_options_init(&options, GIT_STATUS_OPTIONS_VERSION);
    options.show = GIT_STATUS_SHOW_INDEX_AND_WORKDIR;
    options.flags = GIT_STATUS_OPT_INCLUDE_UNTRACKED | GIT_STATUS_OPT_RECURSE_UNTRACKED_DIRS |
                    GIT_STATUS_OPT_DISABLE_PATHSPEC_MATCH;
    char* paths[] = {const_cast<char*>(prefix.c_str())};
    if (!prefix.empty() && prefix != ".")
        options.pathspec = {paths, 1};
    git_status_list* listed = nullptr;
    if (git_status_list_new(&listed, repository.get(), &options) < 0)
    {
        m_problem = LastError("cannot read the status");
        return false;
    }
    std::unique_ptr<git_status_list, StatusListCloser> list(listed);
    m_workdir = root.string();

    std::map<std::string, FileStatus> byPath;
    for (size_t i = 0, count = git_status_list_entrycount(list.get()); i < count; ++i)
    {
        const git_status_entry* entry = git_status_byindex(list.get(), i);
        const git_diff_delta* delta = entry->index_to_workdir ? entry->index_to_workdir : entry->head_to_index;
        if (const FileStatus status = FromFlags(entry->status); status != FileStatus::None && delta)
            byPath[delta->new_file.path] = status;
    }
    if (byPath.empty())
        return true;
    const StorageState& state = StorageStateOf(project);
    for (const auto& [unit, path] : state.savedPaths)
    {
        auto status = byPath.find(Canonical(path).lexically_relative(root).generic_string());
        if (status != byPath.end())
            m_status[unit] = status->second;
    }
    return true;
}
} // namespace sn
