#include "host/EffectHelpersUI.h"

namespace EffectHelpersUI
{
unsigned AddEffectsInMenu(CMenu* menu, unsigned first, const EffectHelpers::EffectPluginSet& plugins, bool enabled,
                          AddEffectCallback callback, void* user)
{
    unsigned id = first;
    for (uint32_t classId : plugins)
        if (const PluginInfo* plugin = EffectHelpers::GetPluginInfo(classId))
            if (callback)
                callback(menu, *plugin, id++, user, enabled);
    return id;
}
} // namespace EffectHelpersUI
