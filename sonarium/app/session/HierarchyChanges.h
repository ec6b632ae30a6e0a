#pragma once
// What one gesture did to the project's hierarchy, found by comparing it before and after: the
// objects that appeared (copies, imports, linking actions), that moved and that left. Scripts
// print it under each drop and drag.

#include "host/Guid.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace sn
{
class Project;
class ProjectObject;

class HierarchySnapshot
{
public:
    explicit HierarchySnapshot(const Project* project);

    // One line per change since the snapshot, in tree order: "created PATH", "imported FILE as
    // PATH" (when filesDropped), "linked TARGET to EVENT by a "Play" action", "moved FROM to TO",
    // "removed PATH".
    std::vector<std::wstring> ChangesSince(const Project* project, bool filesDropped) const;

private:
    struct Place
    {
        GUID parent;
        std::wstring path;
    };
    std::vector<GUID> m_order; // the objects in tree order, to list the removed ones in it
    std::unordered_map<GUID, Place> m_places;
};
} // namespace sn
