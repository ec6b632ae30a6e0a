// Sources made from source plug-ins: the same source objects as those of audio files, holding a
// plug-in instead of a file.

#include "host/AudioSourcesHelpers.h"

#include "host/PluginInfo.h"
#include "sonarium/core/model/ObjectKinds.h"
#include "sonarium/core/model/Project.h"
#include "sonarium/core/model/ProjectEdit.h"

namespace AudioSourcesHelpers
{
CSmartPtr<IOrbObject> CreateSourcePlugin(uint32_t classId, IOrbObject* sound, unsigned long language)
{
    const PluginInfo* plugin = PluginMgr::GetPluginInfo(classId);
    sn::ProjectObject* owner = sn::AsProjectObject(sound);
    if (!plugin || plugin->Type() != PluginInfo::PluginType_Source || !owner ||
        owner->GetObjectType() != OrbObjectType_Sound || !owner->IsInProject())
        return nullptr;
    CSmartPtr<sn::ProjectObject> source(
        sn::NewProjectObject(owner->GetProject(), PMTreeNode::AudioSource, plugin->Name(), sn::NewGuid()));
    source->RawSetProperty("PluginID", sn::PluginHolder::IdText(classId));
    source->RawSetProperty("PluginName", plugin->Name());
    if (language != LanguageIndependent)
        source->RawSetProperty("Language", std::to_wstring(language));
    if (!sn::ProjectEdit::Adopt(source.Get(), owner))
        return nullptr;
    sn::ProjectEdit::SetActiveSource(owner, source.Get());
    return CSmartPtr<IOrbObject>(source.Get());
}
} // namespace AudioSourcesHelpers
