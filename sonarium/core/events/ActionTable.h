#pragma once
// The reference host's event actions: one row per action it performs, with the type and scope
// that make it, its key in files, its name for the user and the objects it may target.

#include "host/EventHelpers.h"

#include <string>
#include <vector>

namespace sn::actions
{
// What an action may target.
enum class Targets
{
    None,          // acts on every object: a target means nothing to it
    Playable,      // actor-mixers, containers, sounds and music objects
    PlayableOrBus, // the same, and busses
    SoundOrBus,    // what has a pitch: actor-mixers, containers, sounds and busses, not music
    Bus,           // busses and auxiliary busses
    Container,     // random and sequence containers
    Event,
    State,
    Switch,
    Trigger,
    GameParameter,
};

struct ActionInfo
{
    OrbPropertyEnums::ActionType type;
    const char* key; // the value of an action's "ActionType" property
    OrbEventActionEnum::OrbEventActionType verb;
    OrbEventActionEnum::OrbEventActionScope scope;
    const wchar_t* name;
    Targets targets;
};

const std::vector<ActionInfo>& All();
const ActionInfo* Find(OrbPropertyEnums::ActionType type);
const ActionInfo* Find(OrbEventActionEnum::OrbEventActionType verb, OrbEventActionEnum::OrbEventActionScope scope);
const ActionInfo* FindKey(const std::string& key);

bool CanTarget(const ActionInfo& action, OrbObjectType targetType);
// Whether the action acts for every game object unless told otherwise: states are global, and so
// are changes to busses, which every game object shares.
bool IsGlobalByDefault(OrbEventActionEnum::OrbEventActionType verb, OrbObjectType targetType);
} // namespace sn::actions
