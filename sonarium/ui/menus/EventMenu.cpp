#include "host/EventMenu.h"

#include "host/OrbObjectHelpers.h"
#include "host/StringHelp.h"

#include <array>

namespace EventMenu
{
namespace
{
using namespace OrbEventActionEnum;

struct Entry
{
    MenuItem item;
    OrbEventActionType type;
    OrbEventActionScope scope;
    const wchar_t* group; // null: directly in the menu
};

// The common actions first, straight in the menu; the rest grouped by what they act on.
constexpr std::array<Entry, 31> k_entries{{
    {Item_Play, ActionType_Play, ActionScope_Target, nullptr},
    {Item_Stop, ActionType_Stop, ActionScope_Target, nullptr},
    {Item_Pause, ActionType_Pause, ActionScope_Target, nullptr},
    {Item_Resume, ActionType_Resume, ActionScope_Target, nullptr},
    {Item_Break, ActionType_Break, ActionScope_Target, nullptr},
    {Item_Seek, ActionType_Seek, ActionScope_Target, nullptr},
    {Item_PostEvent, ActionType_PostEvent, ActionScope_Target, nullptr},
    {Item_StopAll, ActionType_Stop, ActionScope_All, L"All Objects"},
    {Item_PauseAll, ActionType_Pause, ActionScope_All, L"All Objects"},
    {Item_ResumeAll, ActionType_Resume, ActionScope_All, L"All Objects"},
    {Item_UnmuteAll, ActionType_Unmute, ActionScope_All, L"All Objects"},
    {Item_ResetVolumeAll, ActionType_ResetVolume, ActionScope_All, L"All Objects"},
    {Item_StopAllButTarget, ActionType_Stop, ActionScope_AllButTarget, L"All Objects but the Target"},
    {Item_PauseAllButTarget, ActionType_Pause, ActionScope_AllButTarget, L"All Objects but the Target"},
    {Item_ResumeAllButTarget, ActionType_Resume, ActionScope_AllButTarget, L"All Objects but the Target"},
    {Item_ReleaseEnvelope, ActionType_ReleaseEnvelope, ActionScope_Target, L"Playback"},
    {Item_SetLoopCount, ActionType_SetLoopCount, ActionScope_Target, L"Playback"},
    {Item_ResetRandomHistory, ActionType_ResetRandomHistory, ActionScope_Target, L"Playback"},
    {Item_Mute, ActionType_Mute, ActionScope_Target, L"Mixing"},
    {Item_Unmute, ActionType_Unmute, ActionScope_Target, L"Mixing"},
    {Item_SetVolume, ActionType_SetVolume, ActionScope_Target, L"Mixing"},
    {Item_ResetVolume, ActionType_ResetVolume, ActionScope_Target, L"Mixing"},
    {Item_SetPitch, ActionType_SetPitch, ActionScope_Target, L"Mixing"},
    {Item_ResetPitch, ActionType_ResetPitch, ActionScope_Target, L"Mixing"},
    {Item_BypassBusEffects, ActionType_BypassBusEffects, ActionScope_Target, L"Mixing"},
    {Item_RestoreBusEffects, ActionType_RestoreBusEffects, ActionScope_Target, L"Mixing"},
    {Item_SetState, ActionType_SetState, ActionScope_Target, L"States"},
    {Item_SetSwitch, ActionType_SetSwitch, ActionScope_Target, L"Switches"},
    {Item_PostTrigger, ActionType_PostTrigger, ActionScope_Target, L"Triggers"},
    {Item_SetGameParameter, ActionType_SetGameParameter, ActionScope_Target, L"Game Parameters"},
    {Item_ResetGameParameter, ActionType_ResetGameParameter, ActionScope_Target, L"Game Parameters"},
}};

const Entry* Find(MenuItem item)
{
    for (const Entry& entry : k_entries)
        if (entry.item == item)
            return &entry;
    return nullptr;
}
} // namespace

unsigned AppendItems(CMenu* menu, unsigned first, unsigned last, Validator validator, void* context,
                     std::map<unsigned, MenuItem>& out)
{
    if (!menu)
        return 0;
    unsigned id = first;
    unsigned added = 0;
    HMENU group = nullptr;
    const wchar_t* groupName = nullptr;
    bool groupEnabled = false;
    auto closeGroup = [&]
    {
        if (group && GetMenuItemCount(group) > 0)
            menu->AppendMenu(MF_POPUP | (groupEnabled ? 0u : MF_GRAYED), reinterpret_cast<UINT_PTR>(group),
                             StringHelp::Localize(groupName).c_str());
        else if (group)
            DestroyMenu(group);
        group = nullptr;
    };
    for (const Entry& entry : k_entries)
    {
        if (id > last)
            break;
        const ItemState state = validator ? validator(entry.item, context) : State_Enabled;
        if (state == State_Hidden)
            continue;
        if (!entry.group || !groupName || std::wstring_view(entry.group) != groupName)
        {
            closeGroup();
            groupName = entry.group;
            groupEnabled = false;
            if (entry.group)
                group = CreatePopupMenu();
        }
        const UINT flags = MF_STRING | (state == State_Disabled ? MF_GRAYED : 0u);
        const CStdStr<wchar_t> text = OrbObjectHelpers::ConvertActionTypeToString(entry.type, entry.scope);
        if (group)
            AppendMenuW(group, flags, id, text.c_str());
        else
            menu->AppendMenu(flags, id, text.c_str());
        groupEnabled = groupEnabled || state == State_Enabled;
        out[id++] = entry.item;
        ++added;
    }
    closeGroup();
    return added;
}

bool GetActionTypeData(MenuItem item, OrbEventActionEnum::OrbEventActionType& type,
                       OrbEventActionEnum::OrbEventActionScope& scope)
{
    const Entry* entry = Find(item);
    if (!entry)
        return false;
    type = entry->type;
    scope = entry->scope;
    return true;
}
} // namespace EventMenu
