#pragma once
// The host's menu of event actions: every action a new event (or a new action of an event) may
// start with, the common ones directly in the menu and the others grouped in submenus.

#include "host/EventHelpers.h"
#include "platform/Menu.h"

#include <map>

namespace EventMenu
{
// One entry of the menu: an action type with its scope. The numbers are stable: validators test
// them by value.
enum MenuItem : int
{
    Item_Play = 24,
    Item_Stop = 25,
    Item_StopAllButTarget = 26,
    Item_StopAll = 27,
    Item_Pause = 28,
    Item_PauseAllButTarget = 29,
    Item_PauseAll = 30,
    Item_Resume = 31,
    Item_ResumeAllButTarget = 32,
    Item_ResumeAll = 33,
    Item_Break = 34,
    Item_Seek = 35,
    Item_Mute = 36,
    Item_Unmute = 37,
    Item_UnmuteAll = 38,
    Item_SetVolume = 39,
    Item_ResetVolume = 40,
    Item_ResetVolumeAll = 41,
    Item_ReleaseEnvelope = 42,
    Item_SetLoopCount = 43,
    Item_ResetRandomHistory = 44,
    Item_SetPitch = 45,
    Item_ResetPitch = 46,
    Item_BypassBusEffects = 47,
    Item_RestoreBusEffects = 48,
    Item_SetState = 50,
    Item_SetSwitch = 53,
    Item_PostTrigger = 58,
    Item_SetGameParameter = 61,
    Item_ResetGameParameter = 62,
    Item_PostEvent = 64,
};

// What a validator answers for an entry.
enum ItemState : int
{
    State_Enabled = 0,
    State_Disabled = 1,
    State_Hidden = 2,
};

using Validator = ItemState (*)(MenuItem item, void* context);

// Appends the entries the validator does not hide, numbered from first on (never past last), and
// records in out what each identifier stands for. A submenu whose entries are all hidden is left
// out. Returns the number of entries added.
unsigned AppendItems(CMenu* menu, unsigned first, unsigned last, Validator validator, void* context,
                     std::map<unsigned, MenuItem>& out);

// The action type and scope of an entry; false for a value that is no entry.
bool GetActionTypeData(MenuItem item, OrbEventActionEnum::OrbEventActionType& type,
                       OrbEventActionEnum::OrbEventActionScope& scope);
} // namespace EventMenu
