#pragma once
// Questions and operations on project objects that several views share.

#include "host/EventHelpers.h"
#include "host/StdStr.h"

#include <functional>
#include <vector>

class IOrbObject;
class PMTreeNode;

namespace OrbObjectHelpers
{
// What a paste or a drop does with the objects it carries.
enum ObjectsOperation
{
    Move = 0, // the objects leave their parents and keep their GUIDs
    Copy = 1, // new objects with new GUIDs and unique names
    Link = 2, // the target refers to the objects (a drop only)
};

bool CanDelete(const IOrbObject* object);
bool CanRename(const IOrbObject* object);
// Whether audio files may be imported into the object: it holds sounds or music tracks.
bool CanImportAudio(const IOrbObject* object);
// Removes every node that has an ancestor in the list, keeping the order of the others.
void RemoveAllChildObjectsFromList(std::vector<PMTreeNode*>& nodes);

// Whether predicate holds for an ancestor of object (or object itself, with includeSelf).
bool AnyAncestor(const IOrbObject* object, const std::function<bool(const IOrbObject*)>& predicate,
                 bool includeSelf);

// Whether a new action of that type on a target of that type acts for every game object.
bool GetDefaultActionIsGlobalValue(OrbEventActionEnum::OrbEventActionType type, OrbObjectType targetType,
                                   bool reserved);
// The display name of an action ("Play", "Stop All"), from the action object or from its type
// and scope.
CStdStr<wchar_t> ConvertActionTypeToString(const IOrbEventAction* action);
CStdStr<wchar_t> ConvertActionTypeToString(OrbEventActionEnum::OrbEventActionType type,
                                           OrbEventActionEnum::OrbEventActionScope scope);
} // namespace OrbObjectHelpers
