#include "sonarium/core/sourcecontrol/WritableFiles.h"

#include "sonarium/core/model/ModelNotify.h"
#include "sonarium/core/model/Project.h"
#include "sonarium/core/storage/StorageState.h"
#include "sonarium/core/undo/UndoManager.h"

namespace sn
{
namespace fs = std::filesystem;

bool WritableFiles::IsReadOnly(const fs::path& file)
{
    std::error_code ec;
    const fs::file_status status = fs::status(file, ec);
    return !ec && fs::is_regular_file(status) && (status.permissions() & fs::perms::owner_write) == fs::perms::none;
}

bool WritableFiles::SetReadOnly(const fs::path& file, bool readOnly)
{
    std::error_code ec;
    fs::permissions(file, fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write,
                    readOnly ? fs::perm_options::remove : fs::perm_options::add, ec);
    if (!readOnly && !ec)
        return !IsReadOnly(file);
    return !ec;
}

bool WritableFiles::MayChange(std::initializer_list<const ProjectObject*> holders, bool projectFile)
{
    // Declines are remembered for the command they were made in, and only while it runs.
    if (m_undo.GroupDepth() == 0 || m_undo.OuterGroupCount() != m_declinedIn)
        m_declined.clear();
    const Project* project = nullptr;
    std::set<fs::path> files;
    for (const ProjectObject* holder : holders)
    {
        if (!holder || !holder->GetProject())
            continue;
        project = holder->GetProject();
        const StorageState& state = StorageStateOf(*project);
        if (const WorkUnitObject* unit = holder->OwningWorkUnit())
        {
            if (auto saved = state.savedPaths.find(unit->Id()); saved != state.savedPaths.end())
                files.insert(saved->second);
        }
        else
            projectFile = true;
    }
    if (project && projectFile && !StorageStateOf(*project).projectFile.empty())
        files.insert(StorageStateOf(*project).projectFile);
    for (const fs::path& file : files)
        if (!MayWrite(*project, file))
        {
            notify::SourceControl(notify::evSourceControlAborted);
            return false;
        }
    return true;
}

bool WritableFiles::MayWrite(const Project& project, const fs::path& file)
{
    if (!IsReadOnly(file))
        return true;
    if (m_declined.count(file))
        return false;
    if (m_question && m_question(file.lexically_proximate(project.GetFolder())) && SetReadOnly(file, false))
        return true;
    m_declined.insert(file);
    m_declinedIn = m_undo.OuterGroupCount();
    return false;
}
} // namespace sn
