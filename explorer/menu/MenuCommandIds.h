#pragma once
// The explorer's fixed menu command identifiers, above the base that keeps them clear of the
// host's own entries.

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
} // namespace MenuCommandIds
