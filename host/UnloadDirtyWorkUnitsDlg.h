#pragma once
// The host's dialog offered before unloading work units with unsaved changes.

#include "host/StdStr.h"

#include <vector>

class UnloadDirtyWorkUnitsDlg
{
public:
    enum Decision : int
    {
        Decision_Save = 0,
        Decision_Cancel = 1,
        Decision_Discard = 2, // unload without saving
    };

    // paths: the files of the unsaved work units, listed in the dialog.
    static Decision Show(const std::vector<CStdStr<wchar_t>>& paths);
};
