// The host's questions about work units, answered from the model and what storage remembers.

#include "host/WorkUnitHelpers.h"

#include "host/Utf8.h"
#include "sonarium/core/model/Project.h"
#include "sonarium/core/storage/ProjectStorage.h"
#include "sonarium/core/storage/StorageState.h"

namespace
{
void CollectDirty(sn::ProjectObject* object, std::set<IOrbObject*>& dirty)
{
    auto* unit = dynamic_cast<sn::WorkUnitObject*>(object);
    if (!unit)
        return;
    if (unit->IsFile())
    {
        if (unit->IsDirty())
            dirty.insert(static_cast<IOrbObject*>(static_cast<sn::ProjectObject*>(unit)));
        return; // work units do not nest inside a work unit's file
    }
    // A physical folder or a category's root: the work units below it.
    for (const CSmartPtr<sn::ProjectObject>& child : unit->Children())
        CollectDirty(child.Get(), dirty);
}
} // namespace

namespace WorkUnitHelpers
{
bool CanUnloadWorkUnit(IOrbWorkUnit* unit)
{
    auto* model = dynamic_cast<sn::WorkUnitObject*>(unit);
    // A unit with a file of its own, in a project that lives in a folder: the file is where its
    // content goes while it is unloaded.
    return model && model->IsFile() && model->IsInProject() && !model->GetProject()->GetFolder().empty();
}

void GetDirtyWorkUnitsUnder(const std::vector<IOrbObject*>& objects, std::set<IOrbObject*>& dirty)
{
    for (IOrbObject* object : objects)
        if (sn::ProjectObject* model = sn::AsProjectObject(object))
            CollectDirty(model, dirty);
}

CSmartPtr<IOrbWorkUnit> GetParentTopWorkUnit(IOrbObject* object)
{
    for (sn::ProjectObject* up = sn::AsProjectObject(object); up; up = up->Parent())
        if (up->IsTopWorkUnit() || up->GetNodeType() == PMTreeNode::PhysicalFolder)
            return CSmartPtr<IOrbWorkUnit>(dynamic_cast<sn::WorkUnitObject*>(up));
    return nullptr;
}

bool GetWorkUnitFilePath(const IOrbObject* object, CStdStr<wchar_t>& path, bool fileName)
{
    const sn::ProjectObject* model = sn::AsProjectObject(object);
    const sn::WorkUnitObject* unit = model ? model->OwningWorkUnit() : nullptr;
    // A root or a physical folder is a folder: what it holds lives in it.
    const auto* folder = unit ? nullptr : dynamic_cast<const sn::WorkUnitObject*>(model);
    const sn::ProjectObject* holder = unit ? unit : folder;
    const sn::Project* project = holder && holder->IsInProject() ? holder->GetProject() : nullptr;
    if (!project || project->GetFolder().empty())
        return false;
    if (folder)
    {
        if (fileName)
            return false;
        path = Utf8::ToWide(sn::FolderPath(*folder, project->GetFolder()).string());
        return true;
    }
    // Where it was last read or written; a unit never saved goes where its name puts it.
    const sn::StorageState& state = sn::StorageStateOf(*project);
    auto saved = state.savedPaths.find(unit->Id());
    const std::filesystem::path file = saved != state.savedPaths.end()
                                           ? saved->second
                                           : sn::WorkUnitFilePath(*unit, project->GetFolder());
    std::error_code error;
    if (fileName && !std::filesystem::is_regular_file(file, error))
        return false;
    path = Utf8::ToWide((fileName ? file : file.parent_path()).string());
    return true;
}

CStdStr<wchar_t> GetDefaultWorkUnitName()
{
    return L"Default Work Unit";
}
} // namespace WorkUnitHelpers
