// Where an object is kept: its work unit and that work unit's file, relative to the project.

#include "host/Utf8.h"
#include "sonarium/core/storage/ProjectStorage.h"
#include "sonarium/core/storage/StorageState.h"
#include "sonarium/core/storage/WorkUnitFile.h"
#include "sonarium/ui/properties/PropertyRowSource.h"

namespace sn
{
namespace
{
std::wstring FileOf(WorkUnitObject const& unit)
{
    Project const* project = unit.GetProject();
    if (!project)
        return {};
    StorageState const& state = StorageStateOf(*project);
    auto saved = state.savedPaths.find(unit.Id());
    const std::filesystem::path path =
        saved != state.savedPaths.end() ? saved->second : WorkUnitFilePath(unit, project->GetFolder());
    const std::filesystem::path relative = path.lexically_relative(project->GetFolder());
    return (relative.empty() || *relative.begin() == ".." ? path : relative).wstring();
}

void Rows(ProjectObject const& object, PropertyRowSink& rows)
{
    WorkUnitObject const* unit = object.OwningWorkUnit();
    if (!unit)
        return;
    if (unit != &object)
        rows.Add("work-unit", L"Work Unit", unit->GetName().c_str());
    if (!unit->IsFile())
    {
        rows.Add("file", L"File", L"(kept in the project file)");
        return;
    }
    rows.Add("file", L"File", FileOf(*unit));
    // A unit whose objects are not in memory says so, and for a file that failed to load, what is
    // wrong with it.
    const WorkUnitFile file = DescribeWorkUnitFile(*unit);
    if (file.state != WorkUnitFile::Loaded)
        rows.Add("file-state", L"State", Utf8::ToWide(WorkUnitFileStateName(file.state)));
    if (file.state == WorkUnitFile::Unreadable)
        rows.Add("file-problem", L"Problem", Utf8::ToWide(file.problem));
}

[[maybe_unused]] const bool k_registered = RegisterPropertyRowSource({200, &Rows, nullptr});
} // namespace
} // namespace sn
