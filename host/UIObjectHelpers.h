#pragma once
// Object operations started by the user, with the host's own undo step and notifications; some
// ask the user first.

#include "host/StdStr.h"

#include <vector>

class IOrbObject;

namespace UIObjectHelpers
{
// Deletes the objects (and what they hold) as one undo step. When something outside them refers
// to one of them, the user is asked first; true when the objects were deleted.
bool DeleteObjects(const std::vector<IOrbObject*>& objects);
// Renames object as one undo step; false when the host refuses the name.
bool RenameObject(IOrbObject* object, const CStdStr<wchar_t>& name);
} // namespace UIObjectHelpers
