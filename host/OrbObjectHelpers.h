#pragma once
// Questions and operations on project objects that several views share.

class IOrbObject;

namespace OrbObjectHelpers
{
bool CanDelete(const IOrbObject* object);
bool CanRename(const IOrbObject* object);
} // namespace OrbObjectHelpers
