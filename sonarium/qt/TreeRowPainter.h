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
    QColor cutText;
    // From the loaded theme, with the control's own background when it has one.
    static TreePalette FromTheme(PETreeCtrl const& tree);
};

// `hasFocus`: the focus rectangle is drawn only while the view holds the keyboard focus.
void PaintRows(QPainter& painter, std::vector<PETreeRow> const& rows, TreePalette const& palette,
               bool hasFocus);
} // namespace sn::qt
