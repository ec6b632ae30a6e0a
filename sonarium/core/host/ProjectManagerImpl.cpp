#include "sonarium/core/host/ProjectManagerImpl.h"

#include "sonarium/core/host/Host.h"
#include "sonarium/core/model/NodeRules.h"
#include "sonarium/core/model/ProjectEdit.h"

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
    if (!model || !project || model->Parent())
        return false;
    // The first work unit of the object's home category that can hold it.
    WorkUnitObject* root = project->GetRoot(rules::HomeCategory(model->GetNodeType()));
    if (!root)
        return false;
    for (WorkUnitObject* unit : project->FileWorkUnits())
        if (unit->GetCategory() == root->GetCategory() && unit->IsLoaded() &&
            ProjectEdit::CanHold(unit, model->GetNodeType()))
        {
            return ProjectEdit::Adopt(model, unit);
        }
    return false;
}
} // namespace sn
