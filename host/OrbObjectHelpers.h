#pragma once
// Questions and operations on project objects that several views share.

#include <vector>

class IOrbObject;
class PMTreeNode;

namespace OrbObjectHelpers
{
bool CanDelete(const IOrbObject* object);
bool CanRename(const IOrbObject* object);
// Removes every node that has an ancestor in the list, keeping the order of the others.
void RemoveAllChildObjectsFromList(std::vector<PMTreeNode*>& nodes);
} // namespace OrbObjectHelpers
