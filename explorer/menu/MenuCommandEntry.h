#pragma once
// What a dynamic context-menu command creates, recorded when the menu is built and
// read by the creation handlers when the command comes back.

#include "host/OrbObject.h"
#include "host/SmartPtr.h"

#include <cstdint>
#include <map>

struct MenuCommandEntry
{
    enum Kind : uint32_t
    {
        EffectChild = 0,
        EventChildWithAction = 1,
        AudioDeviceChild = 2,
        ChildFromPreset = 3,
        SecondEffectChild = 4,
        NewEvent = 5,
        ParentFromPreset = 6,
    };

    uint32_t kind = 0;
    uint32_t value = 0; // node type, plug-in id or event action type, by kind
    uint32_t scope = 0; // event action scope (kinds 1 and 5)
    CSmartPtr<IOrbObject> preset; // kinds 3 and 6
};

using MenuCommandMap = std::map<uint32_t, MenuCommandEntry>;
