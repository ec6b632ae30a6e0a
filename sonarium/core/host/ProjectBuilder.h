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
// lines are "Name : Kind", nested by indentation. The project comes out clean: nothing to
// save, nothing to undo.

#include "sonarium/core/model/Project.h"

#include <memory>
#include <string>

namespace sn
{
class ProjectBuilder
{
public:
    // Null and a message naming the line on bad input.
    static std::unique_ptr<Project> Build(const std::wstring& name, const std::wstring& text, std::wstring* error);
};

// The object at a path of names from a category key: "AudioObjects/Default Work Unit/Rain".
ProjectObject* FindByPath(const Project& project, const std::wstring& path);
} // namespace sn
