#pragma once
// Top-level areas of a project: each has its top work unit, shown as a root of the explorer.

#include "host/OrbObjectType.h"

#include <cstdint>
#include <set>
#include <vector>

class IOrbObject;

namespace OrbObjectCategories
{
enum Category : int
{
    None = 0,
    Busses = 2,
    AudioObjects = 3,
    Events = 4,
    Switches = 5,
    States = 6,
    SoundBanks = 7,
    GameParameters = 8,
    AuditionSessions = 11,
    MixingSessions = 12,
    Music = 13,
    Triggers = 14,
    Queries = 17,
    ControlSurfaces = 18,
};

// Categories that exist in the running host, in display order.
std::vector<Category> GetActiveCategories();
Category GetOrbObjectCategory(IOrbObject const* object);
void GetSupportedObjectTypes(Category category, std::set<OrbObjectType>& types);
} // namespace OrbObjectCategories
