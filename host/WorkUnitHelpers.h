#pragma once
// Questions about work units: the files a project is stored in.

#include "host/StdStr.h"

#include <set>
#include <vector>

class IOrbObject;
class IOrbWorkUnit;

namespace WorkUnitHelpers
{
// Whether the user may load or unload this work unit (one with a file of its own).
bool CanUnloadWorkUnit(IOrbWorkUnit* unit);
// Adds to dirty every work unit with unsaved changes at or below the objects.
void GetDirtyWorkUnitsUnder(const std::vector<IOrbObject*>& objects, std::set<IOrbObject*>& dirty);
// The file of the work unit that holds object (or of the work unit itself). With onDisk, only a
// file that exists on disk now is given; false when there is none.
bool GetWorkUnitFilePath(const IOrbObject* object, CStdStr<wchar_t>& path, bool onDisk);
} // namespace WorkUnitHelpers
