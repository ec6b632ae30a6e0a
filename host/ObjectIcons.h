#pragma once
// The host's object icons: one per icon type, each with a disabled variant.
//
// Icon types are a numbering of their own. Most object types have one icon; the object
// types that stand for two node types (work unit / physical folder, random / sequence
// container, sound SFX / voice) need a second icon, and 3, 9 and 51 are those second icons.

#include "host/OrbObjectType.h"
#include "host/PMTreeNode.h"
#include "host/Theme.h"

#include <array>

class ObjectIcons
{
public:
    enum IconType : int
    {
        IconType_None = 0,
        IconType_Project = 1,
        IconType_WorkUnit = 2,
        IconType_SequenceContainer = 3,
        IconType_Folder = 4,
        IconType_ActorMixer = 5,
        IconType_RandomContainer = 6,
        IconType_SwitchContainer = 7,
        IconType_BlendContainer = 8,
        IconType_SoundVoice = 9,
        IconType_SoundSFX = 10,
        IconType_AudioSource = 11,
        IconType_Event = 12,
        IconType_EventAction = 13,
        IconType_Bus = 14,
        IconType_AuxBus = 15,
        IconType_SoundBank = 16,
        IconType_SwitchGroup = 17,
        IconType_Switch = 18,
        IconType_StateGroup = 19,
        IconType_State = 20,
        IconType_GameParameter = 21,
        IconType_Trigger = 22,
        IconType_Effect = 23,
        IconType_MixerPlugin = 24,
        IconType_AudioDevice = 25,
        IconType_SourcePlugin = 26,
        IconType_MusicSwitchContainer = 27,
        IconType_MusicPlaylistContainer = 28,
        IconType_MusicSegment = 29,
        IconType_MusicTrack = 30,
        IconType_MusicPlaylistItem = 31,
        IconType_MusicClip = 32,
        IconType_AuditionSession = 33,
        IconType_MixingSession = 34,
        IconType_ControlSurfaceSession = 35,
        IconType_Query = 36,
        IconType_Platform = 37,
        IconType_PhysicalFolder = 51,
        // A category's root: the top of one kind of project content.
        IconType_CategoryRoot = 60,
        // A work unit whose file failed to load.
        IconType_WorkUnitUnreadable = 61,
        // Source-control overlays, drawn over the corner of a work unit's icon.
        IconType_OverlayModified = 62,
        IconType_OverlayAdded = 63,
        IconType_OverlayUnversioned = 64,
    };

    // Every icon type that has art, IconType_None excepted.
    static constexpr std::array<IconType, 43> k_allIconTypes = {
        IconType_Project,         IconType_WorkUnit,
        IconType_SequenceContainer, IconType_Folder,
        IconType_ActorMixer,      IconType_RandomContainer,
        IconType_SwitchContainer, IconType_BlendContainer,
        IconType_SoundVoice,      IconType_SoundSFX,
        IconType_AudioSource,     IconType_Event,
        IconType_EventAction,     IconType_Bus,
        IconType_AuxBus,          IconType_SoundBank,
        IconType_SwitchGroup,     IconType_Switch,
        IconType_StateGroup,      IconType_State,
        IconType_GameParameter,   IconType_Trigger,
        IconType_Effect,          IconType_MixerPlugin,
        IconType_AudioDevice,     IconType_SourcePlugin,
        IconType_MusicSwitchContainer, IconType_MusicPlaylistContainer,
        IconType_MusicSegment,    IconType_MusicTrack,
        IconType_MusicPlaylistItem, IconType_MusicClip,
        IconType_AuditionSession, IconType_MixingSession,
        IconType_ControlSurfaceSession, IconType_Query,
        IconType_Platform,        IconType_PhysicalFolder,
        IconType_CategoryRoot,    IconType_WorkUnitUnreadable,
        IconType_OverlayModified, IconType_OverlayAdded,
        IconType_OverlayUnversioned,
    };

    // The icon of an object of that type, or null for OrbObjectType_None and unknown numbers.
    // The pointer stays valid for the life of the process.
    static sn::theme::Bitmap const* GetObjectIcon(OrbObjectType type, bool disabled);
    // The icon of that icon type, or null for IconType_None and unknown numbers.
    static sn::theme::Bitmap const* GetObjectIcon(IconType type, bool disabled);

    // The icon shown for an object of that type (the first of its node types).
    static constexpr IconType IconTypeOfObject(OrbObjectType type)
    {
        switch (type)
        {
        case OrbObjectType_Project: return IconType_Project;
        case OrbObjectType_WorkUnit: return IconType_WorkUnit;
        case OrbObjectType_Folder: return IconType_Folder;
        case OrbObjectType_ActorMixer: return IconType_ActorMixer;
        case OrbObjectType_Container: return IconType_RandomContainer;
        case OrbObjectType_SwitchContainer: return IconType_SwitchContainer;
        case OrbObjectType_BlendContainer: return IconType_BlendContainer;
        case OrbObjectType_AudioSource: return IconType_AudioSource;
        case OrbObjectType_Sound: return IconType_SoundSFX;
        case OrbObjectType_Event: return IconType_Event;
        case OrbObjectType_Switch: return IconType_Switch;
        case OrbObjectType_SwitchGroup: return IconType_SwitchGroup;
        case OrbObjectType_State: return IconType_State;
        case OrbObjectType_StateGroup: return IconType_StateGroup;
        case OrbObjectType_GameParameter: return IconType_GameParameter;
        case OrbObjectType_EventAction: return IconType_EventAction;
        case OrbObjectType_Effect: return IconType_Effect;
        case OrbObjectType_SoundBank: return IconType_SoundBank;
        case OrbObjectType_Bus: return IconType_Bus;
        case OrbObjectType_AuxBus: return IconType_AuxBus;
        case OrbObjectType_MusicSwitchContainer: return IconType_MusicSwitchContainer;
        case OrbObjectType_MusicPlaylistContainer: return IconType_MusicPlaylistContainer;
        case OrbObjectType_MusicSegment: return IconType_MusicSegment;
        case OrbObjectType_MusicTrack: return IconType_MusicTrack;
        case OrbObjectType_Trigger: return IconType_Trigger;
        case OrbObjectType_AuditionSession: return IconType_AuditionSession;
        case OrbObjectType_MixingSession: return IconType_MixingSession;
        case OrbObjectType_Query: return IconType_Query;
        case OrbObjectType_ControlSurfaceSession: return IconType_ControlSurfaceSession;
        case OrbObjectType_MusicPlaylistItem: return IconType_MusicPlaylistItem;
        case OrbObjectType_SourcePlugin: return IconType_SourcePlugin;
        case OrbObjectType_MusicClip: return IconType_MusicClip;
        case OrbObjectType_AudioDevice: return IconType_AudioDevice;
        case OrbObjectType_Platform: return IconType_Platform;
        case OrbObjectType_MixerPlugin: return IconType_MixerPlugin;
        case OrbObjectType_None: break;
        }
        return IconType_None;
    }

    // The icon of a tree node of that type: what PMTreeNode::GetIconType() answers.
    static constexpr IconType IconTypeOfNode(PMTreeNode::NodeType type)
    {
        switch (type)
        {
        case PMTreeNode::SourcePlugin: return IconType_SourcePlugin;
        case PMTreeNode::PhysicalFolder: return IconType_PhysicalFolder;
        case PMTreeNode::WorkUnit: return IconType_WorkUnit;
        case PMTreeNode::Folder: return IconType_Folder;
        case PMTreeNode::ActorMixer: return IconType_ActorMixer;
        case PMTreeNode::SwitchContainer: return IconType_SwitchContainer;
        case PMTreeNode::RandomContainer: return IconType_RandomContainer;
        case PMTreeNode::SequenceContainer: return IconType_SequenceContainer;
        case PMTreeNode::BlendContainer: return IconType_BlendContainer;
        case PMTreeNode::SoundSFX: return IconType_SoundSFX;
        case PMTreeNode::SoundVoice: return IconType_SoundVoice;
        case PMTreeNode::Bus: return IconType_Bus;
        case PMTreeNode::AuxBus: return IconType_AuxBus;
        case PMTreeNode::AudioSource: return IconType_AudioSource;
        case PMTreeNode::EventAction: return IconType_EventAction;
        case PMTreeNode::Event: return IconType_Event;
        case PMTreeNode::SoundBank: return IconType_SoundBank;
        case PMTreeNode::Switch: return IconType_Switch;
        case PMTreeNode::SwitchGroup: return IconType_SwitchGroup;
        case PMTreeNode::State: return IconType_State;
        case PMTreeNode::StateGroup: return IconType_StateGroup;
        case PMTreeNode::GameParameter: return IconType_GameParameter;
        case PMTreeNode::EffectPlugin: return IconType_Effect;
        case PMTreeNode::MixerPlugin: return IconType_MixerPlugin;
        case PMTreeNode::AudioDevice: return IconType_AudioDevice;
        case PMTreeNode::AuditionSession: return IconType_AuditionSession;
        case PMTreeNode::MusicSwitchContainer: return IconType_MusicSwitchContainer;
        case PMTreeNode::MusicPlaylistContainer: return IconType_MusicPlaylistContainer;
        case PMTreeNode::MusicSegment: return IconType_MusicSegment;
        case PMTreeNode::MusicTrack: return IconType_MusicTrack;
        case PMTreeNode::MusicPlaylistItem: return IconType_MusicPlaylistItem;
        case PMTreeNode::MixingSession: return IconType_MixingSession;
        case PMTreeNode::Trigger: return IconType_Trigger;
        case PMTreeNode::ControlSurfaceSession: return IconType_ControlSurfaceSession;
        case PMTreeNode::MusicClip: return IconType_MusicClip;
        case PMTreeNode::Query: return IconType_Query;
        case PMTreeNode::None:
        case PMTreeNode::NodeTypeCount: break;
        }
        return IconType_None;
    }
};
