#include "sonarium/core/model/NodeRules.h"

#include <array>
#include <map>
#include <string>

namespace sn::rules
{
namespace
{
using N = PMTreeNode;
using Caps = PMTreeNode::CapabilitySet;

struct TypeInfo
{
    NodeType type;
    OrbObjectType object;
    std::string_view key; // of a literal: its length is known, and data() ends with a zero
    const wchar_t* name;
    Category home;
    // Capability bits: delete, include, move, new child, new parent, colour, rename, new event,
    // play, clipboard, convert, localise.
    const char* caps;
};

constexpr Category NoCategory = OrbObjectCategories::None;

// clang-format off
const std::array<TypeInfo, 37> kTypes{{
    {N::None, OrbObjectType_None, "None", L"", NoCategory, "000000000000"},
    {N::SourcePlugin, OrbObjectType_SourcePlugin, "SourcePlugin", L"Source Plug-in", NoCategory, "100000100000"},
    {N::PhysicalFolder, OrbObjectType_WorkUnit, "PhysicalFolder", L"Physical Folder", NoCategory, "100110100000"},
    {N::WorkUnit, OrbObjectType_WorkUnit, "WorkUnit", L"Work Unit", NoCategory, "100110100000"},
    {N::Folder, OrbObjectType_Folder, "Folder", L"Folder", NoCategory, "101110100100"},
    {N::ActorMixer, OrbObjectType_ActorMixer, "ActorMixer", L"Actor-Mixer", OrbObjectCategories::AudioObjects, "111111111100"},
    {N::SwitchContainer, OrbObjectType_SwitchContainer, "SwitchContainer", L"Switch Container", OrbObjectCategories::AudioObjects, "111111111110"},
    {N::RandomContainer, OrbObjectType_Container, "RandomContainer", L"Random Container", OrbObjectCategories::AudioObjects, "111111111110"},
    {N::SequenceContainer, OrbObjectType_Container, "SequenceContainer", L"Sequence Container", OrbObjectCategories::AudioObjects, "111111111110"},
    {N::BlendContainer, OrbObjectType_BlendContainer, "BlendContainer", L"Blend Container", OrbObjectCategories::AudioObjects, "111111111110"},
    {N::SoundSFX, OrbObjectType_Sound, "SoundSFX", L"Sound SFX", OrbObjectCategories::AudioObjects, "111011111111"},
    {N::SoundVoice, OrbObjectType_Sound, "SoundVoice", L"Sound Voice", OrbObjectCategories::AudioObjects, "111011111111"},
    {N::Bus, OrbObjectType_Bus, "Bus", L"Bus", OrbObjectCategories::Busses, "101111111100"},
    {N::AuxBus, OrbObjectType_AuxBus, "AuxBus", L"Auxiliary Bus", OrbObjectCategories::Busses, "101111111100"},
    {N::AudioSource, OrbObjectType_AudioSource, "AudioSource", L"Audio Source", NoCategory, "100000100000"},
    {N::EventAction, OrbObjectType_EventAction, "EventAction", L"Event Action", NoCategory, "100000000000"},
    {N::Event, OrbObjectType_Event, "Event", L"Event", OrbObjectCategories::Events, "101010111100"},
    {N::SoundBank, OrbObjectType_SoundBank, "SoundBank", L"SoundBank", OrbObjectCategories::SoundBanks, "101010100100"},
    {N::Switch, OrbObjectType_Switch, "Switch", L"Switch", OrbObjectCategories::Switches, "101000100100"},
    {N::SwitchGroup, OrbObjectType_SwitchGroup, "SwitchGroup", L"Switch Group", OrbObjectCategories::Switches, "101110110100"},
    {N::State, OrbObjectType_State, "State", L"State", OrbObjectCategories::States, "101000100100"},
    {N::StateGroup, OrbObjectType_StateGroup, "StateGroup", L"State Group", OrbObjectCategories::States, "101110110100"},
    {N::GameParameter, OrbObjectType_GameParameter, "GameParameter", L"Game Parameter", OrbObjectCategories::GameParameters, "101010110100"},
    {N::EffectPlugin, OrbObjectType_Effect, "EffectPlugin", L"Effect Plug-in", NoCategory, "100000100000"},
    {N::MixerPlugin, OrbObjectType_MixerPlugin, "MixerPlugin", L"Mixer Plug-in", NoCategory, "100000100000"},
    {N::AudioDevice, OrbObjectType_AudioDevice, "AudioDevice", L"Audio Device", OrbObjectCategories::Busses, "101000000100"},
    {N::AuditionSession, OrbObjectType_AuditionSession, "AuditionSession", L"Audition Session", OrbObjectCategories::AuditionSessions, "101010100100"},
    {N::MusicSwitchContainer, OrbObjectType_MusicSwitchContainer, "MusicSwitchContainer", L"Music Switch Container", OrbObjectCategories::Music, "111111111100"},
    {N::MusicPlaylistContainer, OrbObjectType_MusicPlaylistContainer, "MusicPlaylistContainer", L"Music Playlist Container", OrbObjectCategories::Music, "111111111100"},
    {N::MusicSegment, OrbObjectType_MusicSegment, "MusicSegment", L"Music Segment", OrbObjectCategories::Music, "111111111100"},
    {N::MusicTrack, OrbObjectType_MusicTrack, "MusicTrack", L"Music Track", OrbObjectCategories::Music, "111001101100"},
    {N::MusicPlaylistItem, OrbObjectType_MusicPlaylistItem, "MusicPlaylistItem", L"Music Playlist Item", NoCategory, "100000000000"},
    {N::MixingSession, OrbObjectType_MixingSession, "MixingSession", L"Mixing Session", OrbObjectCategories::MixingSessions, "101010100100"},
    {N::Trigger, OrbObjectType_Trigger, "Trigger", L"Trigger", OrbObjectCategories::Triggers, "101010110100"},
    {N::ControlSurfaceSession, OrbObjectType_ControlSurfaceSession, "ControlSurfaceSession", L"Control Surface Session", OrbObjectCategories::ControlSurfaces, "101010100100"},
    {N::MusicClip, OrbObjectType_MusicClip, "MusicClip", L"Music Clip", NoCategory, "100000000000"},
    {N::Query, OrbObjectType_Query, "Query", L"Query", OrbObjectCategories::Queries, "101010100100"},
}};

struct CategoryInfo
{
    Category category;
    const char* key;
    const wchar_t* name;
    // What a work unit or folder of the category holds.
    std::set<NodeType> content;
};

const std::vector<CategoryInfo>& Categories()
{
    static const std::vector<CategoryInfo> categories{
        {OrbObjectCategories::AudioObjects, "AudioObjects", L"Audio Objects",
         {N::ActorMixer, N::SwitchContainer, N::RandomContainer, N::SequenceContainer, N::BlendContainer,
          N::SoundSFX, N::SoundVoice}},
        {OrbObjectCategories::Busses, "Busses", L"Busses", {N::Bus, N::AuxBus, N::AudioDevice}},
        {OrbObjectCategories::Music, "Music", L"Interactive Music",
         {N::MusicSwitchContainer, N::MusicPlaylistContainer, N::MusicSegment}},
        {OrbObjectCategories::Events, "Events", L"Events", {N::Event}},
        {OrbObjectCategories::Switches, "Switches", L"Switches", {N::SwitchGroup}},
        {OrbObjectCategories::States, "States", L"States", {N::StateGroup}},
        {OrbObjectCategories::GameParameters, "GameParameters", L"Game Parameters", {N::GameParameter}},
        {OrbObjectCategories::Triggers, "Triggers", L"Triggers", {N::Trigger}},
        {OrbObjectCategories::SoundBanks, "SoundBanks", L"SoundBanks", {N::SoundBank}},
        {OrbObjectCategories::AuditionSessions, "AuditionSessions", L"Audition Sessions", {N::AuditionSession}},
        {OrbObjectCategories::MixingSessions, "MixingSessions", L"Mixing Sessions", {N::MixingSession}},
        {OrbObjectCategories::Queries, "Queries", L"Queries", {N::Query}},
        {OrbObjectCategories::ControlSurfaces, "ControlSurfaces", L"Control Surface Sessions",
         {N::ControlSurfaceSession}},
    };
    return categories;
}

// Children of the kinds that are not containers of a category's content. Objects that process
// sound hold their effects; busses also hold the mixer of their children.
const std::map<NodeType, std::set<NodeType>>& FixedChildren()
{
    static const std::map<NodeType, std::set<NodeType>> children{
        {N::ActorMixer, {N::ActorMixer, N::SwitchContainer, N::RandomContainer, N::SequenceContainer,
                         N::BlendContainer, N::SoundSFX, N::SoundVoice, N::EffectPlugin}},
        {N::SwitchContainer, {N::SwitchContainer, N::RandomContainer, N::SequenceContainer, N::BlendContainer,
                              N::SoundSFX, N::SoundVoice, N::EffectPlugin}},
        {N::RandomContainer, {N::SwitchContainer, N::RandomContainer, N::SequenceContainer, N::BlendContainer,
                              N::SoundSFX, N::SoundVoice, N::EffectPlugin}},
        {N::SequenceContainer, {N::SwitchContainer, N::RandomContainer, N::SequenceContainer, N::BlendContainer,
                                N::SoundSFX, N::SoundVoice, N::EffectPlugin}},
        {N::BlendContainer, {N::SwitchContainer, N::RandomContainer, N::SequenceContainer, N::BlendContainer,
                             N::SoundSFX, N::SoundVoice, N::EffectPlugin}},
        {N::Bus, {N::Bus, N::AuxBus, N::EffectPlugin, N::MixerPlugin}},
        {N::AuxBus, {N::Bus, N::AuxBus, N::EffectPlugin, N::MixerPlugin}},
        {N::SwitchGroup, {N::Switch}},
        {N::StateGroup, {N::State}},
        {N::MusicSwitchContainer, {N::MusicSwitchContainer, N::MusicPlaylistContainer, N::MusicSegment}},
        {N::MusicPlaylistContainer, {N::MusicSegment}},
        {N::MusicSegment, {N::MusicTrack}},
    };
    return children;
}

Caps ParseCaps(const char* bits)
{
    Caps caps;
    for (size_t i = 0; i < caps.size() && bits[i]; ++i)
        caps[i] = bits[i] == '1';
    return caps;
}

const CategoryInfo* FindCategory(Category category)
{
    for (const CategoryInfo& info : Categories())
        if (info.category == category)
            return &info;
    return nullptr;
}

NodeRule Build(NodeType type, Category category, bool top)
{
    NodeRule rule;
    const CategoryInfo* info = FindCategory(category);
    const std::set<NodeType> content = info ? info->content : std::set<NodeType>{};
    if (type >= 0 && type < static_cast<int>(kTypes.size()))
        rule.capabilities = ParseCaps(kTypes[static_cast<size_t>(type)].caps);

    if (top)
    {
        rule.children = {N::WorkUnit, N::PhysicalFolder};
        rule.capabilities.reset();
        rule.capabilities.set(N::CanCreateChild);
        return rule;
    }
    switch (type)
    {
    case N::PhysicalFolder:
        rule.children = {N::WorkUnit, N::PhysicalFolder};
        // Files and folders of the category may be gathered into a new physical folder.
        rule.parents = {N::PhysicalFolder};
        return rule;
    case N::WorkUnit:
        rule.children = content;
        rule.children.insert(N::Folder);
        rule.parents = {N::PhysicalFolder};
        return rule;
    case N::Folder:
        rule.children = content;
        rule.children.insert(N::Folder);
        break;
    default:
        if (auto it = FixedChildren().find(type); it != FixedChildren().end())
            rule.children = it->second;
        break;
    }
    // A new parent may be any kind of the category that could hold this one, except the kinds
    // that are files or roots.
    std::set<NodeType> holders = content;
    holders.insert(N::Folder);
    for (NodeType holder : holders)
    {
        auto it = FixedChildren().find(holder);
        const bool holds = holder == N::Folder ? (content.count(type) || type == N::Folder)
                                               : (it != FixedChildren().end() && it->second.count(type));
        if (holds)
            rule.parents.insert(holder);
    }
    if (!rule.capabilities[N::CanInsertParent])
        rule.parents.clear();
    return rule;
}
// clang-format on
} // namespace

const NodeRule& RuleFor(NodeType type, Category category, bool topWorkUnit)
{
    static std::map<std::tuple<int, int, bool>, NodeRule> cache;
    const auto key = std::make_tuple(static_cast<int>(type), static_cast<int>(category), topWorkUnit);
    auto it = cache.find(key);
    if (it == cache.end())
        it = cache.emplace(key, Build(type, category, topWorkUnit)).first;
    return it->second;
}

OrbObjectType ObjectTypeOf(NodeType type)
{
    return type >= 0 && type < static_cast<int>(kTypes.size()) ? kTypes[static_cast<size_t>(type)].object
                                                                 : OrbObjectType_None;
}

NodeType NodeTypeOf(OrbObjectType type)
{
    // The first kind listed for an object type is its usual one.
    for (const TypeInfo& info : kTypes)
        if (info.object == type && type != OrbObjectType_None)
            return info.type == N::PhysicalFolder ? N::WorkUnit : info.type;
    return N::None;
}

Category HomeCategory(NodeType type)
{
    return type >= 0 && type < static_cast<int>(kTypes.size()) ? kTypes[static_cast<size_t>(type)].home
                                                                 : NoCategory;
}

const wchar_t* NodeTypeName(NodeType type)
{
    return type >= 0 && type < static_cast<int>(kTypes.size()) ? kTypes[static_cast<size_t>(type)].name : L"";
}

const wchar_t* CategoryName(Category category)
{
    const CategoryInfo* info = FindCategory(category);
    return info ? info->name : L"";
}

const char* NodeTypeKey(NodeType type)
{
    return type >= 0 && type < static_cast<int>(kTypes.size()) ? kTypes[static_cast<size_t>(type)].key.data() : "";
}

bool ParseNodeType(std::string_view key, NodeType& type)
{
    for (const TypeInfo& info : kTypes)
        if (info.type != N::None && key == info.key)
        {
            type = info.type;
            return true;
        }
    return false;
}

const char* CategoryKey(Category category)
{
    const CategoryInfo* info = FindCategory(category);
    return info ? info->key : "";
}

bool ParseCategory(const std::string& key, Category& category)
{
    for (const CategoryInfo& info : Categories())
        if (key == info.key)
        {
            category = info.category;
            return true;
        }
    return false;
}

const std::vector<Category>& AllCategories()
{
    static const std::vector<Category> all = [] {
        std::vector<Category> list;
        for (const CategoryInfo& info : Categories())
            list.push_back(info.category);
        return list;
    }();
    return all;
}
} // namespace sn::rules
