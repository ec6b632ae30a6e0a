// Where work units live, for the host's work-unit operations and dialogs.

#include "host/WorkUnitHelpers.h"

#include "host/Utf8.h"
#include "sonarium/core/model/Project.h"
#include "sonarium/core/storage/ProjectStorage.h"

namespace WorkUnitHelpers
{
CSmartPtr<IOrbWorkUnit> GetParentTopWorkUnit(IOrbObject* object)
{
    for (sn::ProjectObject* up = sn::AsProjectObject(object); up; up = up->Parent())
        if (up->IsTopWorkUnit() || up->GetNodeType() == PMTreeNode::PhysicalFolder)
            return CSmartPtr<IOrbWorkUnit>(dynamic_cast<sn::WorkUnitObject*>(up));
    return nullptr;
}

bool GetWorkUnitFilePath(IOrbWorkUnit* unit, CStdStr<wchar_t>& path, bool fileName)
{
    auto* model = dynamic_cast<sn::WorkUnitObject*>(sn::AsProjectObject(unit));
    const sn::Project* project = model ? model->GetProject() : nullptr;
    if (!project || project->GetFolder().empty() || !model->IsInProject())
        return false;
    if (model->IsFile())
    {
        const std::filesystem::path file = sn::WorkUnitFilePath(*model, project->GetFolder());
        path = Utf8::ToWide((fileName ? file : file.parent_path()).string());
        return true;
    }
    // A root or a physical folder is a folder: what it holds lives in it.
    path = Utf8::ToWide(sn::FolderPath(*model, project->GetFolder()).string());
    return true;
}

CStdStr<wchar_t> GetDefaultWorkUnitName()
{
    return L"Default Work Unit";
}
} // namespace WorkUnitHelpers
