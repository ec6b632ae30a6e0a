#pragma once
// The loaded theme: named colours; loading a theme changes the load id that views watch.

#include "platform/WinTypes.h"

#include <map>
#include <string>

namespace sn::theme
{
enum class Scheme
{
    Light,
    Dark,
};

void Load(Scheme scheme);
Scheme Current();
// Every colour name of the loaded theme, for the painters.
const std::map<std::string, COLORREF>& Colors();
} // namespace sn::theme
