#include "host/ObjectIcons.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace
{
// Icon bitmaps are drawn from a 15-pixel source square; views scale them.
constexpr int k_iconSourceSize = 15;

using IconTable = std::array<std::array<sn::theme::Bitmap, 2>, ObjectIcons::k_allIconTypes.size()>;

constexpr IconTable MakeIconTable()
{
    IconTable table{};
    for (size_t i = 0; i < ObjectIcons::k_allIconTypes.size(); ++i)
        for (int disabled = 0; disabled < 2; ++disabled)
            table[i][disabled] = sn::theme::Bitmap{ObjectIcons::k_allIconTypes[i], k_iconSourceSize, disabled != 0};
    return table;
}

// Immutable and static: the pointers handed out stay valid and are the same on every call.
constexpr IconTable k_icons = MakeIconTable();
} // namespace

sn::theme::Bitmap const* ObjectIcons::GetObjectIcon(IconType type, bool disabled)
{
    auto const& all = k_allIconTypes;
    auto found = std::find(all.begin(), all.end(), type);
    if (found == all.end())
        return nullptr;
    return &k_icons[static_cast<size_t>(found - all.begin())][disabled ? 1 : 0];
}

sn::theme::Bitmap const* ObjectIcons::GetObjectIcon(OrbObjectType type, bool disabled)
{
    return GetObjectIcon(IconTypeOfObject(type), disabled);
}
