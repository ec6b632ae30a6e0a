#pragma once
// Lists of plug-ins in menus.

#include "host/PluginInfo.h"
#include "platform/Menu.h"

namespace EffectHelpersUI
{
// Called once per plug-in with the menu, the plug-in, its identifier, the caller's pointer and
// whether the entry is enabled; the callback appends the entry itself.
using AddEffectCallback = void (*)(CMenu* menu, const PluginInfo& plugin, unsigned id, void* user, bool enabled);

// Hands every plug-in of the set to the callback, in the set's order, numbered from first on.
// Returns the next free identifier.
unsigned AddEffectsInMenu(CMenu* menu, unsigned first, const EffectHelpers::EffectPluginSet& plugins, bool enabled,
                          AddEffectCallback callback, void* user);
} // namespace EffectHelpersUI
