#pragma once
// What the host knows of an installed plug-in: its kind, its name and its class identifier, and
// where modules ask for them.

#include "host/OrbObject.h"

#include <cstdint>
#include <set>

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

    PluginInfo() = default;
    PluginInfo(PluginType type, uint32_t classId, CStdStr<wchar_t> name)
        : m_type(type), m_classId(classId), m_name(std::move(name))
    {
    }

    PluginType Type() const { return m_type; }
    uint32_t ClassID() const { return m_classId; }
    const CStdStr<wchar_t>& Name() const { return m_name; }

private:
    PluginType m_type = PluginType_None;
    uint32_t m_classId = 0;
    CStdStr<wchar_t> m_name;
};

class PluginMgr
{
public:
    // The installed plug-in of that class identifier, or null; owned by the host.
    static const PluginInfo* GetPluginInfo(uint32_t classId);
};

namespace EffectHelpers
{
// Plug-ins listed in menus: by name, then by class identifier.
struct EffectPluginSetLess
{
    bool operator()(uint32_t a, uint32_t b) const;
};
using EffectPluginSet = std::set<uint32_t, EffectPluginSetLess>;

const PluginInfo* GetPluginInfo(uint32_t classId);
// Adds the plug-ins of a kind that may be inserted on owner (null: anywhere) on the platform
// (GUID_NULL: any platform).
void GetPossibleEffectPlugins(PluginInfo::PluginType type, const IOrbObject* owner, EffectPluginSet& plugins,
                              GUID const& platform);
} // namespace EffectHelpers

// Objects that hold a plug-in: an effect (on an object or a bus, or a bus's mixer) and an
// output device. The plug-in is stored with the object.
class IOrbPluginObject : public virtual IOrbObject
{
public:
    virtual void SetPlugin(uint32_t classId, const CStdStr<wchar_t>& name) = 0;
    virtual uint32_t GetPluginID() const = 0;

protected:
    ~IOrbPluginObject() override = default;
};

class IOrbBaseEffectPlugin : public virtual IOrbPluginObject
{
protected:
    ~IOrbBaseEffectPlugin() override = default;
};

class IOrbAudioDevicePlugin : public virtual IOrbPluginObject
{
protected:
    ~IOrbAudioDevicePlugin() override = default;
};
