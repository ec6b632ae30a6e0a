#pragma once
// A project object's stored state as facts, in a stable order: what scripts print with
// "print object PATH" (one line per fact, its word then its text) and what the property inspector
// shows of an object's parts and properties (one row per fact).
//
//   type Sound SFX
//   name Menu_Open
//   plug-in Peak Limiter (0x00020004)               an effect, mixer or output device
//   source "Tone Generator": plug-in Tone Generator (0x00010001), no language, active
//   source "menu_open.wav": file -, no language: (what the file holds, or what is wrong with it)
//   action "Play": type Play, scope game object, target AudioObjects/Interface/Interface/Menu_Open
//   property Volume = -3                             every other property, by key
//   inclusion linked: included
//   part Music Clip "combat_loop.wav", Start = 0           a music track's clips
//   inclusion unlinked: Desktop included, Console excluded, Handheld included
//   platform Console: excluded (through "Weather")         each platform, and where an exclusion comes from

#include "sonarium/core/model/Project.h"

#include <string>
#include <vector>

namespace sn
{
struct ObjectFact
{
    std::wstring word;  // what the fact is about: "type", "source", "property"...
    std::wstring label; // the inspector's label ("Source", or a property's key)
    std::wstring text;  // the rest of the printed line; a property's value alone
};

std::vector<ObjectFact> ObjectFacts(const Project& project, const ProjectObject& object);
// "word text", one line per fact ("property KEY = VALUE" for a property).
std::vector<std::wstring> ObjectLines(const Project& project, const ProjectObject& object);
} // namespace sn
