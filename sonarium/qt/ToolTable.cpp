#include "sonarium/qt/ToolTable.h"

#include <QHeaderView>
#include <QTableWidget>

namespace sn::qt
{
QTableWidget* NewToolTable(const QStringList& headers, int stretched, QWidget* parent)
{
    auto* table = new QTableWidget(0, static_cast<int>(headers.size()), parent);
    table->setHorizontalHeaderLabels(headers);
    for (int column = 0; column < headers.size(); ++column)
        table->horizontalHeader()->setSectionResizeMode(
            column, column == stretched ? QHeaderView::Stretch : QHeaderView::ResizeToContents);
    table->verticalHeader()->hide();
    table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().height() + 6);
    table->setWordWrap(false);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionMode(QAbstractItemView::NoSelection);
    return table;
}

QTableWidgetItem* ToolCell(const QString& text, bool problem)
{
    auto* item = new QTableWidgetItem(text);
    item->setToolTip(text);
    if (problem)
        item->setForeground(QColor(0xc0, 0x39, 0x2b));
    return item;
}
} // namespace sn::qt
