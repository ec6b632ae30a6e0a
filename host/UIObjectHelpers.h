#pragma once
// Operations on project objects that may ask the user first.

#include <vector>

class IOrbObject;

namespace UIObjectHelpers
{
// Deletes the objects (and what they hold) as one undo step. When something outside them refers
// to one of them, the user is asked first; true when the objects were deleted.
bool DeleteObjects(const std::vector<IOrbObject*>& objects);
} // namespace UIObjectHelpers
