#pragma once
// A preset: a named set of property values for one kind of object, kept with the project. It is
// an object of that kind's type outside the hierarchy, kept out of the object notifications.

#include "host/PresetManager.h"
#include "sonarium/core/model/ProjectObject.h"

namespace sn
{
class PresetObject : public ProjectObject, public IOrbPreset
{
public:
    PresetObject(Project* project, GUID const& id, NodeType appliesTo, CStdStr<wchar_t> name);

    // Sets each of the preset's properties on object, as one undo step.
    bool ApplyTo(IOrbObject* object) const override;
};

// The presets of the open project for objects of a type, and all of them.
class PresetManagerImpl : public IPresetManager
{
public:
    bool GetPresets(OrbObjectType type, std::vector<IOrbObject*>& presets) const override;
};
} // namespace sn
