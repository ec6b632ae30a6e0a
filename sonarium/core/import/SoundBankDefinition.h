#pragma once
// SoundBank definition files: plain UTF-8 text, one entry per line,
//
//     # comment
//     Level_Valley<TAB>Events/World_Events/Ambience/Play_Rain_Loop
//
// a SoundBank's name, a tab, then the path of an event or object to put in it (its category
// key, then the names from the category's root down, separated by "/"). Blank lines and lines
// starting with "#" are skipped. A SoundBank that does not exist yet is created.

#include "sonarium/core/model/Project.h"

#include <filesystem>
#include <string>
#include <vector>

namespace sn::banks
{
// A SoundBank keeps what it holds in this property: GUIDs separated by ";".
inline constexpr const char* kContentsKey = "Contents";

// A line that cannot be applied, and why.
struct LineProblem
{
    int line = 0; // 0: the file as a whole
    std::wstring what;

    // "line 4: no object at ..."
    std::wstring Text() const;
};

struct DefinitionLine
{
    int number = 0;
    std::wstring bank;
    std::wstring path;
};

struct Definition
{
    std::vector<DefinitionLine> lines;
    std::vector<LineProblem> problems; // lines that cannot be read
    std::wstring fileProblem;          // why the file cannot be read at all, or empty
};

struct DefinitionResult
{
    size_t added = 0;        // entries put into SoundBanks
    size_t alreadyThere = 0; // entries the SoundBank held already
    size_t banksCreated = 0;
    std::vector<LineProblem> problems; // lines that were not applied
};

Definition ReadDefinition(const std::filesystem::path& path);
Definition ParseDefinition(const std::string& bytes);
// Applies the lines as one undo step with the views' updates held back until the end; new
// SoundBanks go under target when it can hold them, else into the first SoundBanks work unit.
DefinitionResult ApplyDefinition(Project& project, const std::vector<DefinitionLine>& lines, ProjectObject* target);
// The objects a SoundBank holds, in the order they were put in.
std::vector<ProjectObject*> Contents(const ProjectObject& bank);
} // namespace sn::banks
