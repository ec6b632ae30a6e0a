#include "sonarium/core/storage/WorkUnitFile.h"

#include "sonarium/core/storage/ProjectStorage.h"
#include "sonarium/core/storage/StorageState.h"

namespace sn
{
WorkUnitFile DescribeWorkUnitFile(const WorkUnitObject& unit)
{
    WorkUnitFile file;
    const Project* project = unit.GetProject();
    if (!project || !unit.IsFile())
        return file;
    const StorageState& state = StorageStateOf(*project);
    auto saved = state.savedPaths.find(unit.Id());
    file.path = saved != state.savedPaths.end() ? saved->second : std::filesystem::path();
    if (state.broken.count(unit.Id()))
    {
        file.state = WorkUnitFile::Unreadable;
        file.problem = unit.LoadProblem();
    }
    else if (!unit.IsLoaded())
        file.state = WorkUnitFile::Unloaded;
    return file;
}

const char* WorkUnitFileStateName(WorkUnitFile::State state)
{
    switch (state)
    {
    case WorkUnitFile::Unloaded:
        return "unloaded";
    case WorkUnitFile::Unreadable:
        return "unreadable";
    case WorkUnitFile::Loaded:
        break;
    }
    return "loaded";
}
} // namespace sn
