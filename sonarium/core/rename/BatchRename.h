#pragma once
// Renaming many objects at once by one rule: find and replace, a prefix, a suffix and a running
// number. Every new name is checked by the host's naming rules before anything changes, and the
// renames are one undo step.

#include "sonarium/core/model/ProjectObject.h"

#include <string>
#include <vector>

namespace sn::rename
{
struct BatchRenameRule
{
    std::wstring find;    // replaced wherever it occurs, with case; empty: nothing is replaced
    std::wstring replace;
    std::wstring prefix;
    std::wstring suffix;
    // A number after the suffix, counting from `start` in the objects' order, zero-padded to `digits`.
    bool numbering = false;
    int start = 1;
    int digits = 2;
};

struct BatchRenameRow
{
    std::wstring oldName;
    std::wstring newName;
    // Why the object keeps its name (an invalid name, one another object of the same place would
    // have too); empty when it is renamed or its name stays the same.
    std::wstring problem;
};

// Puts the objects in the order the project holds them (a parent before its children, siblings
// in their order): the order numbers are given in.
void SortInHierarchyOrder(std::vector<ProjectObject*>& objects);
// The name the rule gives to the object at position index of the list.
std::wstring NewName(const std::wstring& name, const BatchRenameRule& rule, size_t index);
// One row per object, in the list's order.
std::vector<BatchRenameRow> Preview(const std::vector<ProjectObject*>& objects, const BatchRenameRule& rule);
// Renames every object whose row has no problem, as one undo step "Batch Rename"; returns how
// many names changed.
size_t Apply(const std::vector<ProjectObject*>& objects, const BatchRenameRule& rule);
} // namespace sn::rename
