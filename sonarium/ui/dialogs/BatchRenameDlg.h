#pragma once
// The host's batch-rename tool over a selection: the user writes a rule, sees every new name
// (checked by the naming rules) as it changes, and renames them all as one undo step.

#include <cstddef>
#include <vector>

class IOrbObject;

namespace sn
{
class BatchRenameDlg
{
public:
    // Returns how many objects were renamed.
    static size_t Run(const std::vector<IOrbObject*>& objects);
};
} // namespace sn
