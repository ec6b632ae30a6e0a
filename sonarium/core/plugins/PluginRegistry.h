#pragma once
// The plug-ins installed in the reference host: its own sources, effects, shared effects, output
// devices and mixers, and any that are installed later (PluginRegistry::Install).

#include "host/PluginInfo.h"

#include <map>
#include <vector>

namespace sn
{
class PluginRegistry
{
public:
    // Class identifiers of the host's own plug-ins: the plug-in type in the high half.
    enum ClassId : uint32_t
    {
        ToneGenerator = 0x00010001,
        NoiseGenerator = 0x00010002,
        Silence = 0x00010003,
        // Sound made by the game itself; offered on its own where the edition allows it.
        ExternalSource = 0x00390010,
        Compressor = 0x00020001,
        Delay = 0x00020002,
        ParametricEQ = 0x00020003,
        PeakLimiter = 0x00020004,
        PitchShifter = 0x00020005,
        RoomReverb = 0x00020006,
        HallReverb = 0x00030001,
        PlateReverb = 0x00030002,
        SystemOutput = 0x00090001,
        ControllerSpeaker = 0x00090002,
        HeadphoneOutput = 0x00090003,
        NoOutput = 0x00090004,
        StereoMixer = 0x000B0001,
        SpatialMixer = 0x000B0002,
    };

    // With the host's own plug-ins.
    PluginRegistry();

    // Installs a plug-in; false when its class identifier is taken. Unlisted plug-ins are known
    // by identifier but not offered among the plug-ins of their type.
    bool Install(PluginInfo info, bool listed = true);
    const PluginInfo* Find(uint32_t classId) const;
    // The listed plug-ins of a type, by class identifier.
    std::vector<const PluginInfo*> OfType(PluginInfo::PluginType type) const;

private:
    struct Entry
    {
        PluginInfo info;
        bool listed;
    };
    std::map<uint32_t, Entry> m_plugins;
};
} // namespace sn
