#pragma once
// What the host knows of an installed plug-in: its kind, its name and its class identifier.

#include "host/StdStr.h"

#include <cstdint>

class PluginInfo
{
public:
    // Kinds of plug-ins. The numbers are stable: menus and files test them by value.
    enum PluginType : int
    {
        PluginType_None = 0,
        PluginType_Source = 1,       // generates sound: a source of a sound object
        PluginType_Effect = 2,       // processes sound on an object or a bus
        PluginType_EffectShared = 3, // an effect whose settings several objects share
        PluginType_AudioDevice = 9,  // an output of the master busses
        PluginType_Mixer = 11,       // mixes the children of a bus
    };

    PluginType Type = PluginType_None;
    CStdStr<wchar_t> Name;
    uint32_t ClassID = 0;
};
