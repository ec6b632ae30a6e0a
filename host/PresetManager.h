#pragma once
// Presets: named sets of property values that the project keeps for a kind of object and that a
// new object can start from.

#include "host/OrbObject.h"

#include <vector>

class IOrbPreset : public virtual IOrbObject
{
public:
    // Gives object the preset's values, as one undoable change; false when it is not of the
    // preset's kind.
    virtual bool ApplyTo(IOrbObject* object) const = 0;

protected:
    ~IOrbPreset() override = default;
};

class IPresetManager
{
public:
    static IPresetManager* m_pInstance; // null when no host runs

    // The presets for objects of the type, each with a reference the caller releases; false
    // when there are none.
    virtual bool GetPresets(OrbObjectType type, std::vector<IOrbObject*>& presets) const = 0;

protected:
    virtual ~IPresetManager() = default;
};
