#pragma once
// What stops a change of the project before it is made, and tells the user why: a work unit
// whose objects are not in memory (unloaded by the user, or unreadable from its file) cannot
// save anything put into it, so nothing is; and objects nest no deeper than project files hold,
// so that every project saved opens again. The work unit's own name and place belong to the
// project file, so they still change, and the unit still loads.

#include "sonarium/core/model/ProjectObject.h"

#include <cstddef>
#include <string>

namespace sn::EditGuard
{
// The most ancestors an object may have (a category's root has none). The readers of project
// files accept this depth and no more.
constexpr size_t kMaxDepth = 250;

// Whether what object's work-unit file holds may change through object (its children, and its
// own values): not while that work unit is out of memory. why names the unit and the reason.
bool CanChangeInside(const ProjectObject* object, std::wstring* why = nullptr);
// Whether a subtree of that height (1: a lone object) may go under parent.
bool CanNestUnder(const ProjectObject* parent, size_t height, std::wstring* why = nullptr);

// Both checks for a subtree of that height going under parent; a refusal is told to the host's
// window ("Host"/"EditRefused").
bool AllowsInsert(const ProjectObject* parent, size_t height);
// CanChangeInside, with a refusal told to the host's window.
bool AllowsChange(const ProjectObject* object);

// The levels of the subtree under and including object.
size_t HeightOf(const ProjectObject* object);
} // namespace sn::EditGuard
