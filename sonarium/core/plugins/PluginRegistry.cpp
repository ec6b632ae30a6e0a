#include "sonarium/core/plugins/PluginRegistry.h"

namespace sn
{
PluginRegistry::PluginRegistry()
{
    using P = PluginInfo;
    const std::vector<std::pair<P::PluginType, std::vector<std::pair<uint32_t, const wchar_t*>>>> own{
        {P::PluginType_Source, {{ToneGenerator, L"Tone Generator"}, {NoiseGenerator, L"Noise Generator"},
                                {Silence, L"Silence"}}},
        {P::PluginType_Effect, {{Compressor, L"Compressor"}, {Delay, L"Delay"}, {ParametricEQ, L"Parametric EQ"},
                                {PeakLimiter, L"Peak Limiter"}, {PitchShifter, L"Pitch Shifter"},
                                {RoomReverb, L"Room Reverb"}}},
        {P::PluginType_EffectShared, {{HallReverb, L"Hall Reverb"}, {PlateReverb, L"Plate Reverb"}}},
        {P::PluginType_AudioDevice, {{SystemOutput, L"System Output"}, {ControllerSpeaker, L"Controller Speaker"},
                                     {HeadphoneOutput, L"Headphone Output"}, {NoOutput, L"No Output"}}},
        {P::PluginType_Mixer, {{StereoMixer, L"Stereo Mixer"}, {SpatialMixer, L"Spatial Mixer"}}},
    };
    for (const auto& [type, plugins] : own)
        for (const auto& [id, name] : plugins)
            Install(PluginInfo(type, id, name));
    Install(PluginInfo(P::PluginType_Source, ExternalSource, L"Sonarium External Source"), false);
}

bool PluginRegistry::Install(PluginInfo info, bool listed)
{
    const uint32_t id = info.ClassID();
    return m_plugins.emplace(id, Entry{std::move(info), listed}).second;
}

const PluginInfo* PluginRegistry::Find(uint32_t classId) const
{
    auto it = m_plugins.find(classId);
    return it == m_plugins.end() ? nullptr : &it->second.info;
}

std::vector<const PluginInfo*> PluginRegistry::OfType(PluginInfo::PluginType type) const
{
    std::vector<const PluginInfo*> plugins;
    for (const auto& [id, entry] : m_plugins)
        if (entry.listed && entry.info.Type() == type)
            plugins.push_back(&entry.info);
    return plugins;
}
} // namespace sn
