#include "sonarium/qt/PropertiesWidget.h"

#include "sonarium/core/nodes/ProjectNode.h"
#include "sonarium/qt/QtText.h"
#include "sonarium/qt/QtWindowSystemDriver.h"
#include "sonarium/ui/properties/PropertiesModel.h"

#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QInputDialog>
#include <QLabel>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QTableWidget>
#include <QVBoxLayout>

namespace sn::qt
{
namespace
{
// Several objects are shown side by side up to this many; beyond, only what they share.
constexpr int k_sideBySide = 4;
constexpr int k_paletteSize = 16;
constexpr int k_keyRole = Qt::UserRole;
constexpr int k_editRole = Qt::UserRole + 1;
constexpr int k_valueRole = Qt::UserRole + 2; // the value whole, lines and all

QIcon Swatch(QColor const& colour)
{
    QPixmap pixmap(12, 12);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setPen(colour.darker(140));
    painter.setBrush(colour);
    painter.drawRect(0, 0, 11, 11);
    return QIcon(pixmap);
}

// "3 #23A88D" shows its colour; "inherited" none.
QIcon ColourIcon(QString const& value)
{
    bool number = false;
    const int index = value.section(QLatin1Char(' '), 0, 0).toInt(&number);
    return number ? Swatch(QColor(QRgb(ProjectNode::PaletteColor(index)))) : QIcon();
}

// A cell shows one line: the lines of a note are joined.
QString OneLine(QString text)
{
    return text.replace(QLatin1Char('\n'), QStringLiteral(" \u21B5 "));
}

// Editors by the kind of row: names on a line, colours from the palette.
class PropertyDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QWidget* createEditor(QWidget* parent, QStyleOptionViewItem const& option,
                          QModelIndex const& index) const override
    {
        if (static_cast<PropertyEdit>(index.data(k_editRole).toInt()) != PropertyEdit::Colour)
            return QStyledItemDelegate::createEditor(parent, option, index);
        auto* box = new QComboBox(parent);
        box->addItem(QObject::tr("inherited"), QStringLiteral("inherited"));
        for (int colour = 0; colour < k_paletteSize; ++colour)
            box->addItem(Swatch(QColor(QRgb(ProjectNode::PaletteColor(colour)))), QString::number(colour),
                         QString::number(colour));
        return box;
    }

    void setEditorData(QWidget* editor, QModelIndex const& index) const override
    {
        if (auto* box = qobject_cast<QComboBox*>(editor))
        {
            const QString value = index.data(Qt::EditRole).toString().section(QLatin1Char(' '), 0, 0);
            box->setCurrentIndex(std::max(0, box->findData(value)));
            return;
        }
        QStyledItemDelegate::setEditorData(editor, index);
    }

    void setModelData(QWidget* editor, QAbstractItemModel* model, QModelIndex const& index) const override
    {
        if (auto* box = qobject_cast<QComboBox*>(editor))
        {
            model->setData(index, box->currentData().toString(), Qt::EditRole);
            return;
        }
        QStyledItemDelegate::setModelData(editor, model, index);
    }
};
} // namespace

PropertiesWidget::PropertiesWidget(PropertiesModel& model, QtWindowSystemDriver& driver, QWidget* parent)
    : QWidget(parent), m_model(model), m_driver(driver)
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    m_heading = new QLabel(this);
    m_heading->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    QFont bold = m_heading->font();
    bold.setBold(true);
    m_heading->setFont(bold);
    layout->addWidget(m_heading);
    m_table = new QTableWidget(this);
    m_table->setObjectName(QStringLiteral("inspectorTable"));
    m_table->verticalHeader()->hide();
    m_table->verticalHeader()->setDefaultSectionSize(m_table->fontMetrics().height() + 8);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                             QAbstractItemView::SelectedClicked);
    m_table->setWordWrap(false);
    m_table->setTextElideMode(Qt::ElideMiddle);
    auto* delegate = new PropertyDelegate(m_table);
    m_table->setItemDelegate(delegate);
    connect(delegate, &QAbstractItemDelegate::closeEditor, this, [this] { OnModelChanged(this); });
    m_table->horizontalHeader()->setStretchLastSection(true);
    layout->addWidget(m_table, 1);
    connect(m_table, &QTableWidget::itemChanged, this, &PropertiesWidget::OnItemChanged);
    connect(m_table, &QTableWidget::cellActivated, this, &PropertiesWidget::OnCellActivated);
    connect(m_table, &QTableWidget::cellDoubleClicked, this, &PropertiesWidget::OnCellActivated);
    m_model.SetListener(&PropertiesWidget::OnModelChanged, this);
    Refresh();
}

PropertiesWidget::~PropertiesWidget()
{
    m_model.SetListener(nullptr, nullptr);
}

void PropertiesWidget::OnModelChanged(void* context)
{
    // Changes arrive in the middle of the host's work: the table follows afterwards.
    auto* widget = static_cast<PropertiesWidget*>(context);
    if (widget->m_refreshQueued)
        return;
    widget->m_refreshQueued = true;
    QMetaObject::invokeMethod(widget, &PropertiesWidget::Refresh, Qt::QueuedConnection);
}

void PropertiesWidget::Refresh()
{
    m_refreshQueued = false;
    // An editor open in a cell lives in the viewport; refilling would take it away.
    QWidget* focus = QApplication::focusWidget();
    if (focus && focus != m_table->viewport() && m_table->viewport()->isAncestorOf(focus))
        return; // the editor's closing refreshes

    m_filling = true;
    const std::vector<ProjectObject*> objects = m_model.Objects();
    std::vector<PropertyRow> const& rows = m_model.Rows();
    const int count = static_cast<int>(objects.size());
    const int own = count > 1 && count <= k_sideBySide ? count : 0;
    QStringList headers{tr("Property"), count > 1 ? tr("All %1").arg(count) : tr("Value")};
    for (int i = 0; i < own; ++i)
        headers << ToQt(std::wstring(objects[static_cast<size_t>(i)]->GetName().c_str()));
    m_table->clear();
    m_table->setColumnCount(static_cast<int>(headers.size()));
    m_table->setHorizontalHeaderLabels(headers);
    m_table->setRowCount(static_cast<int>(rows.size()));
    for (int r = 0; r < static_cast<int>(rows.size()); ++r)
    {
        PropertyRow const& row = rows[static_cast<size_t>(r)];
        auto* label = new QTableWidgetItem(ToQt(row.label));
        label->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
        m_table->setItem(r, 0, label);
        const std::optional<std::wstring> common = row.Common();
        auto* shared = new QTableWidgetItem(common ? OneLine(ToQt(*common)) : tr("(mixed)"));
        shared->setData(k_valueRole, common ? ToQt(*common) : QString());
        shared->setData(k_keyRole, QString::fromStdString(row.key));
        shared->setData(k_editRole, static_cast<int>(row.edit));
        shared->setToolTip(shared->text());
        if (!common)
            shared->setForeground(palette().color(QPalette::Disabled, QPalette::Text));
        if (row.edit == PropertyEdit::Colour && common)
            shared->setIcon(ColourIcon(shared->text()));
        // Notes open a text box of their own; names and colours are edited in place.
        const bool inPlace = row.edit == PropertyEdit::Text || row.edit == PropertyEdit::Colour;
        shared->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable |
                         (inPlace ? Qt::ItemIsEditable : Qt::NoItemFlags));
        m_table->setItem(r, 1, shared);
        for (int i = 0; i < own; ++i)
        {
            std::optional<std::wstring> const& value = row.values[static_cast<size_t>(i)];
            auto* item = new QTableWidgetItem(value ? OneLine(ToQt(*value)) : QStringLiteral("-"));
            item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
            item->setToolTip(item->text());
            m_table->setItem(r, 2 + i, item);
        }
    }
    m_table->resizeColumnToContents(0);
    m_heading->setText(count == 0   ? tr("Nothing inspected")
                       : count == 1 ? ToQt(std::wstring(objects.front()->GetName().c_str()))
                                    : tr("%1 objects").arg(count));
    m_filling = false;
}

bool PropertiesWidget::Apply(QString const& key, QString const& value)
{
    std::wstring why;
    const bool done = m_model.Edit(key.toStdString(), FromQt(value), why);
    m_driver.Pump();
    if (!done)
        Q_EMIT Refused(ToQt(why));
    Refresh();
    return done;
}

void PropertiesWidget::OnItemChanged(QTableWidgetItem* item)
{
    if (m_filling || item->column() != 1)
        return;
    const QString key = item->data(k_keyRole).toString();
    const QString value = item->text();
    // The table is refilled from the model, which may not have taken the value.
    QMetaObject::invokeMethod(
        this, [this, key, value] { Apply(key, value); }, Qt::QueuedConnection);
}

void PropertiesWidget::OnCellActivated(int row, int column)
{
    QTableWidgetItem* item = m_table->item(row, 1);
    if (column != 1 || !item ||
        static_cast<PropertyEdit>(item->data(k_editRole).toInt()) != PropertyEdit::Notes)
        return;
    bool accepted = false;
    const QString notes = QInputDialog::getMultiLineText(this, tr("Notes"), m_table->item(row, 0)->text(),
                                                         item->data(k_valueRole).toString(), &accepted);
    if (accepted)
        Apply(item->data(k_keyRole).toString(), notes);
}
} // namespace sn::qt
