#pragma once
// Builds a project from a few readable lines, for tests, new projects and samples:
//
//   platform Linux
//   language 1 English reference
//   AudioObjects
//     Default Work Unit : WorkUnit
//       Ambience : ActorMixer
//         Rain : SoundSFX
//
// A line without indentation names a category (optionally "Key = Root name"); indented
// lines are "Name : Kind", nested by indentation, optionally followed by attributes, each
// after a "|":
//
//         Play : EventAction | Target=@AudioObjects/Default Work Unit/Ambience/Rain
//         Rain : SoundSFX | color=4 | exclude=Linux | Loop=yes
//
// "color" sets the colour, "exclude" excludes the object on a platform, any other key sets a
// property; "@path" stands for the GUID of the object at that path, anywhere in the text.
// A line "preset Kind Name | key=value..." adds a preset of the project for objects of that kind.
// The project comes out clean: nothing to save, nothing to undo.

#include "sonarium/core/model/Project.h"

#include <memory>
#include <random>
#include <string>

namespace sn
{
class ProjectBuilder
{
public:
    // Null and a message naming the line on bad input. With ids, GUIDs come from that engine, so
    // that the same text and seed always give the same project.
    static std::unique_ptr<Project> Build(const std::wstring& name, const std::wstring& text,
                                          std::wstring* error, std::mt19937_64* ids = nullptr);
};

// The object at a path of names from a category key: "AudioObjects/Default Work Unit/Rain".
ProjectObject* FindByPath(const Project& project, const std::wstring& path);
// The path FindByPath takes back to the object.
std::wstring PathOf(const ProjectObject& object);
} // namespace sn
