#include "sonarium/core/presets/PresetObject.h"

#include "host/Undo.h"
#include "sonarium/core/host/Host.h"
#include "sonarium/core/model/NodeRules.h"
#include "sonarium/core/model/ProjectEdit.h"

IPresetManager* IPresetManager::m_pInstance = nullptr;

namespace sn
{
PresetObject::PresetObject(Project* project, GUID const& id, NodeType appliesTo, CStdStr<wchar_t> name)
    : ProjectObject(project, id, appliesTo, rules::ObjectTypeOf(appliesTo), std::move(name))
{
    RawSetFlags(OrbObjectFlag_Internal);
}

bool PresetObject::ApplyTo(IOrbObject* object) const
{
    ProjectObject* target = AsProjectObject(object);
    if (!target || target->GetNodeType() != GetNodeType() || !target->IsInProject())
        return false;
    AutoComplexUndo step(L"Apply Preset", false);
    for (const auto& [key, value] : Properties())
        ProjectEdit::SetProperty(target, key, value);
    return true;
}

bool PresetManagerImpl::GetPresets(OrbObjectType type, std::vector<IOrbObject*>& presets) const
{
    Host* host = Host::Get();
    const Project* project = host ? host->GetProject() : nullptr;
    if (!project)
        return false;
    const size_t before = presets.size();
    for (const CSmartPtr<ProjectObject>& preset : project->Presets())
        if (preset->GetObjectType() == type)
        {
            preset->AddRef();
            presets.push_back(preset.Get());
        }
    return presets.size() > before;
}
} // namespace sn
