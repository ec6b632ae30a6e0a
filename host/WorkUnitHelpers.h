#pragma once
// Where work units live: the folders that hold new ones, their place on disk, and the name of
// the work unit that receives new objects of a category.

#include "host/OrbObject.h"
#include "host/SmartPtr.h"
#include "host/StdStr.h"

namespace WorkUnitHelpers
{
// The work unit that would hold a new work unit made under object: the nearest physical folder
// or category root at or above it.
CSmartPtr<IOrbWorkUnit> GetParentTopWorkUnit(IOrbObject* object);
// The folder of a category root or physical folder, or the file of a work unit (with fileName);
// false when the project has no folder on disk yet.
bool GetWorkUnitFilePath(IOrbWorkUnit* unit, CStdStr<wchar_t>& path, bool fileName);
// "Default Work Unit": the name of the work unit that receives new objects of its category.
CStdStr<wchar_t> GetDefaultWorkUnitName();
} // namespace WorkUnitHelpers
