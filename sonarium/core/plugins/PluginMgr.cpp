// The host's plug-in queries, answered from the running host's registry.

#include "host/PluginInfo.h"

#include "sonarium/core/host/Host.h"

const PluginInfo* PluginMgr::GetPluginInfo(uint32_t classId)
{
    sn::Host* host = sn::Host::Get();
    return host ? host->Plugins().Find(classId) : nullptr;
}

namespace EffectHelpers
{
bool EffectPluginSetLess::operator()(uint32_t a, uint32_t b) const
{
    // Known plug-ins by name, then unknown ones, each by class identifier.
    const PluginInfo* first = PluginMgr::GetPluginInfo(a);
    const PluginInfo* second = PluginMgr::GetPluginInfo(b);
    if ((first != nullptr) != (second != nullptr))
        return first != nullptr;
    if (first && first->Name() != second->Name())
        return first->Name() < second->Name();
    return a < b;
}

const PluginInfo* GetPluginInfo(uint32_t classId)
{
    return PluginMgr::GetPluginInfo(classId);
}

void GetPossibleEffectPlugins(PluginInfo::PluginType type, const IOrbObject*, EffectPluginSet& plugins, GUID const&)
{
    // The host's plug-ins run on every platform and may be inserted on anything of their kind.
    sn::Host* host = sn::Host::Get();
    if (!host)
        return;
    for (const PluginInfo* plugin : host->Plugins().OfType(type))
        plugins.insert(plugin->ClassID());
}
} // namespace EffectHelpers
