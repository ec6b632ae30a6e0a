#pragma once
// The kinds of project objects that answer more than IOrbObject: events and their actions,
// sounds with their sources, and the objects that hold a plug-in. What they hold is kept in
// their properties, so that it is saved, copied and undone like every other property:
//
//   action  "ActionType" (a key of the host's action table), "Target" (a GUID), "Scope"
//           ("Global" or "GameObject")
//   sound   "ActiveSource" (the GUID of its source without language), "ActiveSource.<language>"
//   source  "File" (an audio file) or "PluginID" and "PluginName" (a source plug-in),
//           "Language" (absent for sources without language)
//   effect, mixer and audio device  "PluginID" ("0x" and eight hex digits), "PluginName"

#include "host/AudioSourcesHelpers.h"
#include "host/EventHelpers.h"
#include "host/PluginInfo.h"
#include "sonarium/core/model/ProjectObject.h"

#include <optional>

namespace sn
{
class EventObject : public ProjectObject, public IOrbEvent
{
public:
    EventObject(Project* project, GUID const& id, CStdStr<wchar_t> name);
};

class EventActionObject : public ProjectObject, public IOrbEventAction
{
public:
    EventActionObject(Project* project, GUID const& id, CStdStr<wchar_t> name);

    bool SetReferenceProperty(const ROString& name, IOrbObject* value) override;
    bool SetVariantProperty(const ROString& name, const OrbPropertyValue& value) override;
};

class SoundObject : public ProjectObject, public IOrbSound
{
public:
    SoundObject(Project* project, GUID const& id, NodeType type, CStdStr<wchar_t> name);

    bool GetActiveSource(unsigned long language, GUID const& platform, CSmartPtr<IOrbObject>& source) const override;

    // The property that names the active source of a language.
    static std::string ActiveSourceKey(unsigned long language);
    // The language of a source (LanguageIndependent when it has none).
    static unsigned long LanguageOf(const ProjectObject& source);
};

// The plug-in an object holds, as kept in its properties.
class PluginHolder
{
public:
    static std::optional<uint32_t> GetPluginID(const ProjectObject& object);
    static void SetPlugin(ProjectObject& object, uint32_t classId, const CStdStr<wchar_t>& name);
    static std::wstring IdText(uint32_t classId);
};

// An object that holds a plug-in, in its properties.
class PluginObject : public ProjectObject, public virtual IOrbPluginObject
{
public:
    PluginObject(Project* project, GUID const& id, NodeType type, OrbObjectType objectType, CStdStr<wchar_t> name);

    void SetPlugin(uint32_t classId, const CStdStr<wchar_t>& name) override;
    uint32_t GetPluginID() const override;
};

// An effect on an object or a bus (node kind 23), or a bus's mixer (24).
class EffectPluginObject : public PluginObject, public IOrbBaseEffectPlugin
{
public:
    EffectPluginObject(Project* project, GUID const& id, NodeType type, CStdStr<wchar_t> name);
};

class AudioDeviceObject : public PluginObject, public IOrbAudioDevicePlugin
{
public:
    AudioDeviceObject(Project* project, GUID const& id, CStdStr<wchar_t> name);
};
} // namespace sn
