#pragma once
// Large projects for benchmarks and stress runs: every category, work units (grouped in physical
// folders when there are many), and below them hierarchies 4 to 8 levels deep with a few to a few
// dozen children per object, named like a game's content ("Impact_0042"). The model is built
// directly, without undo or notifications, so a million objects take seconds; the project comes
// out clean.

#include "sonarium/core/model/Project.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace sn
{
// Exactly objectCount objects, category roots included, as soon as there is one root per category
// (fewer give the roots alone). The same seed gives the same project, GUIDs included.
std::unique_ptr<Project> GenerateProject(size_t objectCount, uint32_t seed);
} // namespace sn
