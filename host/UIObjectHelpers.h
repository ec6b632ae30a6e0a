#pragma once
// Object operations started by the user, with the host's own undo step and notifications; some
// ask the user first.

#include "host/OrbObjectHelpers.h"
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
// The container that receives objects pasted onto the targets: the single target when it may
// hold every object, else its parent when that may; null otherwise, or when a move would put an
// object inside itself. A borrowed pointer, valid while the project holds the object.
IOrbObject* GetDestinationContainer(const std::vector<IOrbObject*>& objects, std::vector<IOrbObject*>& targets,
                                    OrbObjectHelpers::ObjectsOperation operation);
// Moves or copies the objects under destination as one undo step, with "LockUIUpdate" raised
// around the whole operation so that views refresh once. A copy makes new objects (new GUIDs,
// unique names, with their children, sources and actions) and appends owned references to them
// to newObjects. False when nothing could be moved or copied.
bool MoveOrCopyObjects(const std::vector<IOrbObject*>& objects, IOrbObject* destination,
                       OrbObjectHelpers::ObjectsOperation operation, std::vector<IOrbObject*>* newObjects);
} // namespace UIObjectHelpers
