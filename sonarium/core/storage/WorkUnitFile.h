#pragma once
// What a work unit's file is to the user: where it is, whether its objects are in memory, and
// for a file that could not be read, what is wrong with it. A unit the user unloaded and a unit
// whose file failed to load look alike in the model (both are empty and not loaded); this says
// which is which, for the tree, the inspector and scripts.

#include "sonarium/core/model/ProjectObject.h"

#include <filesystem>
#include <string>

namespace sn
{
struct WorkUnitFile
{
    enum State
    {
        Loaded,
        Unloaded,   // by the user: the file is fine and waits on disk
        Unreadable, // the file failed to load; it is never written over
    };

    std::filesystem::path path; // empty while the unit was never saved
    State state = Loaded;
    std::string problem; // UTF-8, for an unreadable file: e.g. "line 3, column 1: syntax error ..."
};

WorkUnitFile DescribeWorkUnitFile(const WorkUnitObject& unit);
// "loaded", "unloaded" or "unreadable".
const char* WorkUnitFileStateName(WorkUnitFile::State state);
} // namespace sn
