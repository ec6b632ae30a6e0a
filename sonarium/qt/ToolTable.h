#pragma once
// The read-only tables of the host's tool windows (the importer's files, batch rename's names):
// one line per row, nothing to select, and what is wrong drawn in the warning colour.

#include <QStringList>

class QTableWidget;
class QTableWidgetItem;
class QWidget;

namespace sn::qt
{
// stretched: the column that takes the room the others leave.
QTableWidget* NewToolTable(const QStringList& headers, int stretched, QWidget* parent);
// A cell with its whole text as the tooltip, in the warning colour when it tells of a problem.
QTableWidgetItem* ToolCell(const QString& text, bool problem = false);
} // namespace sn::qt
