#include "sonarium/qt/TreeRowPainter.h"

#include "sonarium/qt/IconArt.h"
#include "sonarium/qt/QtText.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace sn::qt
{
namespace
{
constexpr int k_colorTagWidth = 3;

void PaintButton(QPainter& painter, PETreeRow const& row, QColor const& colour)
{
    const QRectF box = QRectF(ToQRect(row.button)).adjusted(0, 0, -1, -1);
    const QPointF centre = box.center();
    const qreal half = 3.5;
    QPainterPath chevron;
    if (row.expanded)
    {
        chevron.moveTo(centre.x() - half, centre.y() - half / 2);
        chevron.lineTo(centre.x(), centre.y() + half / 2);
        chevron.lineTo(centre.x() + half, centre.y() - half / 2);
    }
    else
    {
        chevron.moveTo(centre.x() - half / 2, centre.y() - half);
        chevron.lineTo(centre.x() + half / 2, centre.y());
        chevron.lineTo(centre.x() - half / 2, centre.y() + half);
    }
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colour, 1.4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(chevron);
    painter.restore();
}

void PaintRow(QPainter& painter, PETreeRow const& row, TreePalette const& palette, bool hasFocus)
{
    QColor text = ToQColor(row.textColor);
    // The label as shown: no further than the row's right edge.
    QRect label = ToQRect(row.label);
    label.setRight(std::min(label.right(), ToQRect(row.row).right()));
    if (row.selected)
    {
        painter.fillRect(ToQRect(row.row), hasFocus ? palette.selection : palette.inactiveSelection);
        text = hasFocus ? palette.selectionText : palette.inactiveSelectionText;
    }
    if (row.dropTarget)
    {
        painter.fillRect(label, palette.selection);
        text = palette.selectionText;
    }
    if (row.dropTarget)
    {
        painter.setPen(QPen(palette.selectionText, 1));
        painter.drawRect(label.adjusted(0, 0, -1, -1));
    }
    if (row.cut)
        text = palette.cutText;
    if (row.colorTag != 0xFFFFFFFF)
    {
        const QColor tag((row.colorTag >> 16) & 0xFF, (row.colorTag >> 8) & 0xFF, row.colorTag & 0xFF);
        painter.fillRect(QRect(row.icon.left - k_colorTagWidth - 1, row.row.top + 2, k_colorTagWidth,
                               row.row.bottom - row.row.top - 4),
                         tag);
    }
    if (row.hasButton)
        PaintButton(painter, row, ToQColor(row.textColor));

    const int iconSize = row.icon.right - row.icon.left;
    const qreal ratio = painter.device()->devicePixelRatioF();
    const QPixmap icon = IconArt::Get().Pixmap(row.iconType, row.excluded || row.languageExcluded, iconSize, ratio);
    // The source-control overlay's art fills the icon's square, its badge in a corner.
    const QPixmap overlay = row.overlay ? IconArt::Get().Pixmap(row.overlay, false, iconSize, ratio) : QPixmap();
    if (!icon.isNull() || !overlay.isNull())
    {
        painter.save();
        if (row.cut)
            painter.setOpacity(0.45);
        if (!icon.isNull())
            painter.drawPixmap(ToQRect(row.icon), icon);
        if (!overlay.isNull())
            painter.drawPixmap(ToQRect(row.icon), overlay);
        painter.restore();
    }
    if (!row.editing)
    {
        painter.setPen(text);
        // All the room up to the row's end: only a label that does not fit there is elided.
        QRect room = label.adjusted(CTreeCtrl::LabelPadding, 0, 0, 0);
        room.setRight(ToQRect(row.row).right() - CTreeCtrl::LabelPadding);
        const QString text = ToQt(row.text);
        const QString shown =
            IsLabelElided(row) ? painter.fontMetrics().elidedText(text, Qt::ElideRight, room.width()) : text;
        painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter, shown);
    }
    if (row.focused && hasFocus)
    {
        QPen pen(text, 1, Qt::DotLine);
        painter.setPen(pen);
        painter.drawRect(label.adjusted(0, 0, -1, -1));
    }
}
} // namespace

TreePalette TreePalette::FromTheme(PETreeCtrl const& tree)
{
    TreePalette palette;
    const COLORREF background = tree.GetBkColor();
    palette.background = background == CLR_NONE || background == CLR_DEFAULT
                             ? ThemeColor("Explorer_BackgroundColor")
                             : ToQColor(background);
    palette.selection = ThemeColor("Explorer_SelectionBackground");
    palette.selectionText = ThemeColor("Explorer_SelectionText");
    palette.inactiveSelection = ThemeColor("Explorer_InactiveSelectionBackground");
    palette.inactiveSelectionText = ThemeColor("Explorer_InactiveSelectionText");
    palette.cutText = ThemeColor("Explorer_CutText");
    return palette;
}

bool IsLabelElided(PETreeRow const& row)
{
    return row.label.right > row.row.right;
}

void PaintRows(QPainter& painter, std::vector<PETreeRow> const& rows, TreePalette const& palette,
               bool hasFocus)
{
    for (PETreeRow const& row : rows)
        PaintRow(painter, row, palette, hasFocus);
}
} // namespace sn::qt
