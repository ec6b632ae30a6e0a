#pragma once
// Names of the icon types: the file names of their art ("<name>.svg") and the text that
// scripts and tree dumps show.

#include "host/ObjectIcons.h"

#include <optional>
#include <string_view>

namespace sn
{
// Null for IconType_None and numbers that are not icon types.
char const* IconTypeName(ObjectIcons::IconType type);
std::optional<ObjectIcons::IconType> IconTypeFromName(std::string_view name);
} // namespace sn
