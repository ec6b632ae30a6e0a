#pragma once
// Kinds of project objects. The numbers are stable: code and files test them by value.

enum OrbObjectType : int
{
    OrbObjectType_None = 0,
    OrbObjectType_Project = 1,
    OrbObjectType_WorkUnit = 2, // a work unit or a physical folder
    OrbObjectType_Folder = 3,
    OrbObjectType_ActorMixer = 4,
    OrbObjectType_Container = 5, // a random or a sequence container
    OrbObjectType_SwitchContainer = 6,
    OrbObjectType_BlendContainer = 7,
    OrbObjectType_AudioSource = 8, // belongs to a sound; has no node of its own
    OrbObjectType_Sound = 9,       // a sound effect or a voice
    OrbObjectType_Event = 10,
    OrbObjectType_Switch = 11,
    OrbObjectType_SwitchGroup = 12,
    OrbObjectType_State = 13,
    OrbObjectType_StateGroup = 14,
    OrbObjectType_GameParameter = 15,
    OrbObjectType_EventAction = 16, // belongs to an event; has no node of its own
    OrbObjectType_Effect = 17,
    OrbObjectType_SoundBank = 18,
    OrbObjectType_Bus = 19,
    OrbObjectType_AuxBus = 20,
    OrbObjectType_MusicSwitchContainer = 21,
    OrbObjectType_MusicPlaylistContainer = 22,
    OrbObjectType_MusicSegment = 23,
    OrbObjectType_MusicTrack = 24,
    OrbObjectType_Trigger = 25,
    OrbObjectType_AuditionSession = 26,
    OrbObjectType_MixingSession = 27,
    OrbObjectType_Query = 28,
    OrbObjectType_ControlSurfaceSession = 29,
    OrbObjectType_MusicPlaylistItem = 32,
    OrbObjectType_SourcePlugin = 51,
    OrbObjectType_MusicClip = 52, // belongs to a music track; has no node of its own
    OrbObjectType_AudioDevice = 68,
    OrbObjectType_Platform = 75, // never shown in the explorer
    OrbObjectType_MixerPlugin = 77,
};

// Bits of IOrbObject::GetObjectFlags().
enum OrbObjectFlags : unsigned int
{
    OrbObjectFlag_None = 0,
    OrbObjectFlag_Internal = 0x100, // kept out of object notifications to views
};
