#pragma once
// Where a user aims in a tree control's client area: a row's label, its expand button, the
// empty space below the last row. Gestures and drops aim at the same points.

#include "host/PETreeCtrl.h"

#include <optional>

namespace sn
{
// Just inside the start of the row's label, halfway down the row.
CPoint LabelPoint(PETreeCtrl& tree, HTREEITEM item);
// The middle of the row's expand button; nothing when the row has none.
std::optional<CPoint> ButtonPoint(PETreeCtrl& tree, HTREEITEM item);
// The first row's height of empty space below the last row; nothing when the rows fill the view.
std::optional<CPoint> BelowLastRow(PETreeCtrl& tree);
} // namespace sn
