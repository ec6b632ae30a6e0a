#include "sonarium/core/events/ActionTable.h"

namespace sn::actions
{
namespace
{
using namespace OrbEventActionEnum;
using namespace OrbPropertyEnums;
} // namespace

const std::vector<ActionInfo>& All()
{
    // clang-format off
    static const std::vector<ActionInfo> actions{
        {Action_Play, "Play", ActionType_Play, ActionScope_Target, L"Play", Targets::Playable},
        {Action_Stop, "Stop", ActionType_Stop, ActionScope_Target, L"Stop", Targets::Playable},
        {Action_StopAllButTarget, "StopAllButTarget", ActionType_Stop, ActionScope_AllButTarget, L"Stop All Except", Targets::Playable},
        {Action_StopAll, "StopAll", ActionType_Stop, ActionScope_All, L"Stop All", Targets::None},
        {Action_Pause, "Pause", ActionType_Pause, ActionScope_Target, L"Pause", Targets::Playable},
        {Action_PauseAllButTarget, "PauseAllButTarget", ActionType_Pause, ActionScope_AllButTarget, L"Pause All Except", Targets::Playable},
        {Action_PauseAll, "PauseAll", ActionType_Pause, ActionScope_All, L"Pause All", Targets::None},
        {Action_Resume, "Resume", ActionType_Resume, ActionScope_Target, L"Resume", Targets::Playable},
        {Action_ResumeAllButTarget, "ResumeAllButTarget", ActionType_Resume, ActionScope_AllButTarget, L"Resume All Except", Targets::Playable},
        {Action_ResumeAll, "ResumeAll", ActionType_Resume, ActionScope_All, L"Resume All", Targets::None},
        {Action_Break, "Break", ActionType_Break, ActionScope_Target, L"Break", Targets::Playable},
        {Action_Seek, "Seek", ActionType_Seek, ActionScope_Target, L"Seek", Targets::Playable},
        {Action_Mute, "Mute", ActionType_Mute, ActionScope_Target, L"Mute", Targets::PlayableOrBus},
        {Action_Unmute, "Unmute", ActionType_Unmute, ActionScope_Target, L"Unmute", Targets::PlayableOrBus},
        {Action_UnmuteAll, "UnmuteAll", ActionType_Unmute, ActionScope_All, L"Unmute All", Targets::None},
        {Action_SetVolume, "SetVolume", ActionType_SetVolume, ActionScope_Target, L"Set Volume", Targets::PlayableOrBus},
        {Action_ResetVolume, "ResetVolume", ActionType_ResetVolume, ActionScope_Target, L"Reset Volume", Targets::PlayableOrBus},
        {Action_ResetVolumeAll, "ResetVolumeAll", ActionType_ResetVolume, ActionScope_All, L"Reset Volume All", Targets::None},
        {Action_SetState, "SetState", ActionType_SetState, ActionScope_Target, L"Set State", Targets::State},
        {Action_SetSwitch, "SetSwitch", ActionType_SetSwitch, ActionScope_Target, L"Set Switch", Targets::Switch},
        {Action_PostTrigger, "PostTrigger", ActionType_PostTrigger, ActionScope_Target, L"Post Trigger", Targets::Trigger},
        {Action_SetGameParameter, "SetGameParameter", ActionType_SetGameParameter, ActionScope_Target, L"Set Game Parameter", Targets::GameParameter},
        {Action_ResetGameParameter, "ResetGameParameter", ActionType_ResetGameParameter, ActionScope_Target, L"Reset Game Parameter", Targets::GameParameter},
        {Action_ReleaseEnvelope, "ReleaseEnvelope", ActionType_ReleaseEnvelope, ActionScope_Target, L"Release Envelope", Targets::Playable},
        {Action_SetLoopCount, "SetLoopCount", ActionType_SetLoopCount, ActionScope_Target, L"Set Loop Count", Targets::Playable},
        {Action_ResetRandomHistory, "ResetRandomHistory", ActionType_ResetRandomHistory, ActionScope_Target, L"Reset Random History", Targets::Container},
        {Action_SetPitch, "SetPitch", ActionType_SetPitch, ActionScope_Target, L"Set Pitch", Targets::SoundOrBus},
        {Action_ResetPitch, "ResetPitch", ActionType_ResetPitch, ActionScope_Target, L"Reset Pitch", Targets::SoundOrBus},
        {Action_BypassBusEffects, "BypassBusEffects", ActionType_BypassBusEffects, ActionScope_Target, L"Bypass Bus Effects", Targets::Bus},
        {Action_RestoreBusEffects, "RestoreBusEffects", ActionType_RestoreBusEffects, ActionScope_Target, L"Restore Bus Effects", Targets::Bus},
        {Action_PostEvent, "PostEvent", ActionType_PostEvent, ActionScope_Target, L"Post Event", Targets::Event},
    };
    // clang-format on
    return actions;
}

const ActionInfo* Find(ActionType type)
{
    for (const ActionInfo& action : All())
        if (action.type == type)
            return &action;
    return nullptr;
}

const ActionInfo* Find(OrbEventActionType verb, OrbEventActionScope scope)
{
    for (const ActionInfo& action : All())
        if (action.verb == verb && action.scope == scope)
            return &action;
    return nullptr;
}

const ActionInfo* FindKey(const std::string& key)
{
    for (const ActionInfo& action : All())
        if (key == action.key)
            return &action;
    return nullptr;
}

bool CanTarget(const ActionInfo& action, OrbObjectType targetType)
{
    auto playable = [&] {
        switch (targetType)
        {
        case OrbObjectType_ActorMixer:
        case OrbObjectType_Container:
        case OrbObjectType_SwitchContainer:
        case OrbObjectType_BlendContainer:
        case OrbObjectType_Sound:
        case OrbObjectType_MusicSwitchContainer:
        case OrbObjectType_MusicPlaylistContainer:
        case OrbObjectType_MusicSegment:
            return true;
        default:
            return false;
        }
    };
    switch (action.targets)
    {
    case Targets::None:
        return false;
    case Targets::Playable:
        return playable();
    case Targets::PlayableOrBus:
        return playable() || targetType == OrbObjectType_Bus || targetType == OrbObjectType_AuxBus;
    case Targets::SoundOrBus:
        return targetType == OrbObjectType_ActorMixer || targetType == OrbObjectType_Container ||
               targetType == OrbObjectType_SwitchContainer || targetType == OrbObjectType_BlendContainer ||
               targetType == OrbObjectType_Sound || targetType == OrbObjectType_Bus ||
               targetType == OrbObjectType_AuxBus;
    case Targets::Bus:
        return targetType == OrbObjectType_Bus || targetType == OrbObjectType_AuxBus;
    case Targets::Container:
        return targetType == OrbObjectType_Container;
    case Targets::Event:
        return targetType == OrbObjectType_Event;
    case Targets::State:
        return targetType == OrbObjectType_State;
    case Targets::Switch:
        return targetType == OrbObjectType_Switch;
    case Targets::Trigger:
        return targetType == OrbObjectType_Trigger;
    case Targets::GameParameter:
        return targetType == OrbObjectType_GameParameter;
    }
    return false;
}

bool IsGlobalByDefault(OrbEventActionType verb, OrbObjectType targetType)
{
    if (verb == ActionType_SetState)
        return true;
    return targetType == OrbObjectType_Bus || targetType == OrbObjectType_AuxBus;
}
} // namespace sn::actions
