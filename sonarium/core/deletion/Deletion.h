#pragma once
// Deleting objects together with the references other objects hold to them, as one undo step.

#include "sonarium/core/model/ProjectObject.h"

#include <string>
#include <vector>

namespace sn::deletion
{
// A property of an object that stays (referrer) naming an object that goes (target).
struct Reference
{
    ProjectObject* referrer;
    std::string key;
    ProjectObject* target;
};

// The references to the objects or anything they hold, from objects that are not deleted with
// them.
std::vector<Reference> OutsideReferences(const std::vector<ProjectObject*>& objects);

// "Referrer (as key) refers to target", naming parts (actions, sources) through their owner.
std::wstring Describe(const Reference& reference);

// Deletes the objects (an object below another one of the list goes with it) and takes the
// references out of the referrers, as one undo step "Delete" with the views' updates held back
// until the end. Undo brings back the objects, their GUIDs and the references. False when there
// was nothing to delete.
bool DeleteObjects(const std::vector<ProjectObject*>& objects, const std::vector<Reference>& references);
} // namespace sn::deletion
