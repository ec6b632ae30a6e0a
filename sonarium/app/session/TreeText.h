#pragma once
// The explorer tree as text, one row per line: what scripts print and what the application
// prints when there is no display.
//
//   - Default Work Unit                 an expanded row
//     + Ambience  [selected, focused]   a collapsed row with children, and its marks
//       Rain  [excluded]                a leaf

#include "host/PETreeCtrl.h"

#include <string>
#include <vector>

namespace sn
{
std::vector<std::wstring> TreeLines(PETreeCtrl const& tree);
// The selected rows' object paths, the focused one marked with "*".
std::vector<std::wstring> SelectionLines(PETreeCtrl const& tree);
} // namespace sn
