#pragma once
// Draws the rows of the project tree exactly as the tree control describes them.

#include "host/PETreeCtrl.h"

#include <QColor>

#include <vector>

class QPainter;

namespace sn::qt
{
struct TreePalette
{
    QColor background;
    QColor selection;
    QColor selectionText;
    // The selection of a view without the keyboard focus.
    QColor inactiveSelection;
    QColor inactiveSelectionText;
    QColor cutText;
    // From the loaded theme, with the control's own background when it has one.
    static TreePalette FromTheme(PETreeCtrl const& tree);
};

// `hasFocus`: the selection wears the focused colour, and the focus rectangle is drawn, only
// while the view holds the keyboard focus. A selected row is highlighted over its whole width;
// a label that runs past the row's right edge is elided.
void PaintRows(QPainter& painter, std::vector<PETreeRow> const& rows, TreePalette const& palette,
               bool hasFocus);
// Whether the row's label does not fit and is drawn elided (its tooltip then shows it whole).
bool IsLabelElided(PETreeRow const& row);
} // namespace sn::qt
