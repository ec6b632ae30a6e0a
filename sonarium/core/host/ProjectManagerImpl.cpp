#include "sonarium/core/host/ProjectManagerImpl.h"

#include "host/Utf8.h"
#include "host/WorkUnitHelpers.h"
#include "sonarium/core/host/Host.h"
#include "sonarium/core/model/CurrentState.h"
#include "sonarium/core/model/NodeRules.h"
#include "sonarium/core/model/ProjectEdit.h"
#include "sonarium/core/storage/ProjectStorage.h"
#include "sonarium/core/storage/StorageState.h"

ProjectManager* ProjectManager::m_pInstance = nullptr;

namespace sn
{
bool ProjectManagerImpl::GetTopWorkUnit(OrbObjectCategories::Category category, CSmartPtr<IOrbWorkUnit>& out) const
{
    out = nullptr;
    Project* project = m_host.GetProject();
    if (WorkUnitObject* root = project ? project->GetRoot(category) : nullptr)
        out = root;
    return out.Get() != nullptr;
}

bool ProjectManagerImpl::GetTopWorkUnit(IOrbObject* object, CSmartPtr<IOrbWorkUnit>& out) const
{
    out = nullptr;
    const ProjectObject* model = AsProjectObject(object);
    if (!model || !model->IsInProject())
        return false;
    while (model->Parent())
        model = model->Parent();
    if (auto* root = dynamic_cast<WorkUnitObject*>(const_cast<ProjectObject*>(model)); root && root->IsTopWorkUnit())
        out = root;
    return out.Get() != nullptr;
}

bool ProjectManagerImpl::AddToDefaultWorkUnit(IOrbObject* object)
{
    ProjectObject* model = AsProjectObject(object);
    Project* project = m_host.GetProject();
    if (!model || !project || model->Parent() || model->IsInProject())
        return false;
    WorkUnitObject* root = project->GetRoot(rules::HomeCategory(model->GetNodeType()));
    if (!root)
        return false;
    const CStdStr<wchar_t> name = WorkUnitHelpers::GetDefaultWorkUnitName();
    ProjectObject* unit = nullptr;
    for (const CSmartPtr<ProjectObject>& child : root->Children())
        if (child->GetNodeType() == PMTreeNode::WorkUnit && child->GetName().EqualsNoCase(name))
            unit = child.Get();
    if (!unit)
        unit = ProjectEdit::Create(root, PMTreeNode::WorkUnit, name);
    // An unloaded unit keeps its objects on disk: what it would receive could not be saved.
    if (!unit || !unit->IsLoaded())
        return false;
    return ProjectEdit::Adopt(model, unit);
}

GUID ProjectManagerImpl::GetCurrentPlatform() const
{
    return m_host.GetProject() ? CurrentPlatform() : GUID_NULL;
}

CStdStr<wchar_t> ProjectManagerImpl::GetProjectPath() const
{
    const Project* project = m_host.GetProject();
    if (!project || project->GetFolder().empty())
        return {};
    const std::filesystem::path& file = StorageStateOf(*project).projectFile;
    return Utf8::ToWide((file.empty() ? ProjectFilePath(*project, project->GetFolder()) : file).string());
}
} // namespace sn
