#pragma once
// The host's dialog that asks for the name of a new work unit or physical folder.

#include "host/PMTreeNode.h"
#include "host/StdStr.h"

class CDlgNewWorkUnit
{
public:
    // folderPath: where the new file or folder will be made. name: proposed on entry, the
    // entered text on return. Answers 1 (OK) or 2 (cancelled; name unchanged).
    static long long Show(PMTreeNode::NodeType type, const CStdStr<wchar_t>& folderPath, CStdStr<wchar_t>& name);
};
