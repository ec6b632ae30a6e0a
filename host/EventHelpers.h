#pragma once
// Events and their actions: what an action does (its type) and to which objects (its scope),
// the objects that stand for them, and the helpers that make and describe actions.

#include "host/OrbObject.h"
#include "host/ROString.h"
#include "host/SmartPtr.h"

#include <variant>

using OrbObjectSmartPtr = CSmartPtr<IOrbObject>;

namespace OrbEventActionEnum
{
// What an action does. The numbers are stable: menus and files test them by value, and the New
// Event menus' rules read them (1 to 6 and 24 play or stop, 7 and 10 act on busses only, 9 and 12
// do not apply to music, 26 not to playlist containers, 30 posts an event, 31 is for random
// containers only).
enum OrbEventActionType : int
{
    ActionType_None = 0,
    ActionType_Play = 1,
    ActionType_Stop = 2,
    ActionType_Pause = 3,
    ActionType_Resume = 4,
    ActionType_Break = 5,
    ActionType_Seek = 6,
    ActionType_BypassBusEffects = 7,
    ActionType_Mute = 8,
    ActionType_SetPitch = 9,
    ActionType_RestoreBusEffects = 10,
    ActionType_Unmute = 11,
    ActionType_ResetPitch = 12,
    ActionType_SetVolume = 13,
    ActionType_ResetVolume = 14,
    ActionType_SetState = 15,
    ActionType_SetSwitch = 16,
    ActionType_PostTrigger = 17,
    ActionType_SetGameParameter = 18,
    ActionType_ResetGameParameter = 19,
    ActionType_ReleaseEnvelope = 24,
    ActionType_SetLoopCount = 26,
    ActionType_PostEvent = 30,
    ActionType_ResetRandomHistory = 31,
};

// Which objects an action acts on. An action on every object needs no target, so a single
// event made for several objects shares one such action.
enum OrbEventActionScope : int
{
    ActionScope_None = 0,
    ActionScope_Target = 1,       // its target
    ActionScope_AllButTarget = 2, // every object but its target
    ActionScope_All = 3,          // every object
};
} // namespace OrbEventActionEnum

namespace OrbPropertyEnums
{
// The action an action object performs: one value per type and scope that go together, as
// stored in the action's "ActionType" property.
enum ActionType : int
{
    Action_None = 0,
    Action_Play = 1,
    Action_Stop = 2,
    Action_StopAllButTarget = 3,
    Action_StopAll = 4,
    Action_Pause = 5,
    Action_PauseAllButTarget = 6,
    Action_PauseAll = 7,
    Action_Resume = 8,
    Action_ResumeAllButTarget = 9,
    Action_ResumeAll = 10,
    Action_Break = 11,
    Action_Seek = 12,
    Action_Mute = 13,
    Action_Unmute = 14,
    Action_UnmuteAll = 15,
    Action_SetVolume = 16,
    Action_ResetVolume = 17,
    Action_ResetVolumeAll = 18,
    Action_SetState = 19,
    Action_SetSwitch = 20,
    Action_PostTrigger = 21,
    Action_SetGameParameter = 22,
    Action_ResetGameParameter = 23,
    Action_ReleaseEnvelope = 24,
    Action_SetLoopCount = 25,
    Action_ResetRandomHistory = 26,
    Action_SetPitch = 27,
    Action_ResetPitch = 28,
    Action_BypassBusEffects = 29,
    Action_RestoreBusEffects = 30,
    Action_PostEvent = 31,
};
} // namespace OrbPropertyEnums

// A value of an object's property: a flag, a number or a text.
using OrbPropertyValue = std::variant<bool, long long, std::wstring>;

class IOrbEvent : public virtual IOrbObject
{
protected:
    ~IOrbEvent() override = default;
};

class IOrbEventAction : public virtual IOrbObject
{
public:
    // "Target": the object the action acts on (null clears it).
    virtual bool SetReferenceProperty(const ROString& name, IOrbObject* value) = 0;
    // "Scope": true when the action acts for every game object, false for the one that posts it.
    virtual bool SetVariantProperty(const ROString& name, const OrbPropertyValue& value) = 0;

protected:
    ~IOrbEventAction() override = default;
};

namespace EventHelpers
{
// A new action of that type and scope at the end of the event's actions, or null when the two do
// not make an action of the host.
OrbObjectSmartPtr AddAction(IOrbObject* event, OrbEventActionEnum::OrbEventActionType type,
                            OrbEventActionEnum::OrbEventActionScope scope);
OrbPropertyEnums::ActionType GetActionType(const IOrbObject* action);
// Whether an action of that type may target an object of that type.
bool IsActionTypeValid(OrbObjectType targetType, OrbPropertyEnums::ActionType type);
} // namespace EventHelpers
