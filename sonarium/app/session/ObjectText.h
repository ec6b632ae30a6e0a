#pragma once
// A project object's stored state as text, one fact per line, in a stable order: what scripts
// print with "print object PATH".
//
//   type Sound SFX
//   name Menu_Open
//   plug-in Peak Limiter (0x00020004)               an effect, mixer or output device
//   source "Tone Generator": plug-in Tone Generator (0x00010001), no language, active
//   source "menu_open.wav": file -, no language
//   action "Play": type Play, scope game object, target AudioObjects/Interface/Interface/Menu_Open
//   property Volume = -3                             every other property, by key
//   inclusion linked: included
//   inclusion unlinked: Desktop included, Console excluded, Handheld included

#include "sonarium/core/model/Project.h"

#include <string>
#include <vector>

namespace sn
{
std::vector<std::wstring> ObjectLines(const Project& project, const ProjectObject& object);
} // namespace sn
