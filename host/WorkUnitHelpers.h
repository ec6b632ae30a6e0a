#pragma once
// Questions about work units, the files a project is stored in: where they live, which have
// unsaved changes, the folders that hold new ones, and the name of the work unit that receives
// new objects of a category.

#include "host/OrbObject.h"
#include "host/SmartPtr.h"
#include "host/StdStr.h"

#include <set>
#include <vector>

namespace WorkUnitHelpers
{
// Whether the user may load or unload this work unit (one with a file of its own).
bool CanUnloadWorkUnit(IOrbWorkUnit* unit);
// Adds to dirty every work unit with unsaved changes at or below the objects.
void GetDirtyWorkUnitsUnder(const std::vector<IOrbObject*>& objects, std::set<IOrbObject*>& dirty);
// The work unit that would hold a new work unit made under object: the nearest physical folder
// or category root at or above it.
CSmartPtr<IOrbWorkUnit> GetParentTopWorkUnit(IOrbObject* object);
// With fileName, the file of the work unit that holds object (or of the work unit itself), given
// only when it exists on disk now. Without, the folder its content lives in: a category root's or
// physical folder's own, a work unit's file's folder. False when there is none (the project has
// no folder on disk yet, or the unit was never saved).
bool GetWorkUnitFilePath(const IOrbObject* object, CStdStr<wchar_t>& path, bool fileName);
// "Default Work Unit": the name of the work unit that receives new objects of its category.
CStdStr<wchar_t> GetDefaultWorkUnitName();
} // namespace WorkUnitHelpers
