#pragma once
// Object operations started by the user, with the host's own undo step and notifications.

#include "host/StdStr.h"

class IOrbObject;

namespace UIObjectHelpers
{
// Renames object as one undo step; false when the host refuses the name.
bool RenameObject(IOrbObject* object, const CStdStr<wchar_t>& name);
} // namespace UIObjectHelpers
