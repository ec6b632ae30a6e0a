#pragma once
// The dynamic command identifiers of the context menu and the toolbar that create objects: a
// base and 500-wide ranges above it, each range standing for one kind of command.

#include <cstdint>

namespace MenuCommandIds
{
constexpr uint32_t Base = 0xB00000;
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
