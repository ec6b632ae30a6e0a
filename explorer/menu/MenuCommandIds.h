#pragma once
// The explorer's menu command identifiers, above the base that keeps them clear of the host's
// own entries: fixed ones for the commands, and 500-wide ranges for the dynamic commands of the
// context menu and the toolbar that create objects, each range standing for one kind of command.

#include <cstdint>

namespace MenuCommandIds
{
constexpr uint32_t Base = 0xB00000;
constexpr uint32_t Rename = Base + 0x01;
constexpr uint32_t Delete = Base + 0x02;
constexpr uint32_t ImportAudioFiles = Base + 0x03;
constexpr uint32_t ImportSoundBankDefinition = Base + 0x04;
constexpr uint32_t LoadUnloadWorkUnit = Base + 0x05;
constexpr uint32_t BatchRename = Base + 0x06;
constexpr uint32_t IncludeSelection = Base + 0x14;
constexpr uint32_t ExcludeSelection = Base + 0x15;
constexpr uint32_t LinkInclusion = Base + 0x16;
constexpr uint32_t UnlinkInclusion = Base + 0x17;
constexpr uint32_t ExpandDescendants = Base + 0x21;
constexpr uint32_t CollapseDescendants = Base + 0x22;
constexpr uint32_t RangeSize = 500;

constexpr uint32_t NewParent = Base + 500;          // + node type
constexpr uint32_t NewChild = Base + 1000;          // + node type
constexpr uint32_t NewEventPerObject = Base + 2500; // one event per selected object
constexpr uint32_t NewEventForAll = Base + 3000;    // one event for the whole selection
constexpr uint32_t NewSource = Base + 4000;         // a sound with a source plug-in
constexpr uint32_t NewChildPreset = Base + 5000;    // a child from a preset
constexpr uint32_t NewParentPreset = Base + 6000;   // a parent from a preset

constexpr bool InRange(uint32_t id, uint32_t first)
{
    return id >= first && id < first + RangeSize;
}
} // namespace MenuCommandIds
