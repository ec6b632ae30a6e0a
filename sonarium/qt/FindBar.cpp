#include "sonarium/qt/FindBar.h"

#include "sonarium/qt/FindResultsModel.h"
#include "sonarium/qt/QtText.h"
#include "sonarium/qt/QtWindowSystemDriver.h"
#include "sonarium/qt/TreeViewWidget.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QVBoxLayout>

namespace sn::qt
{
FindBar::FindBar(PaneFind& find, TreeViewWidget& tree, QtWindowSystemDriver& driver, QWidget* parent)
    : QWidget(parent), m_find(find), m_tree(tree), m_driver(driver)
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 0, 4, 0);
    layout->setSpacing(2);
    auto* line = new QHBoxLayout;
    m_field = new QLineEdit(this);
    m_field->setObjectName(QStringLiteral("findField"));
    m_field->setPlaceholderText(tr("Find (Ctrl+F)"));
    m_field->setClearButtonEnabled(true);
    m_field->setToolTip(tr("Every word must occur in the name, in any case; type:Kind keeps one kind (type:Sound, type:RandomContainer)"));
    line->addWidget(m_field, 1);
    m_count = new QLabel(this);
    m_count->setObjectName(QStringLiteral("findCount"));
    line->addWidget(m_count);
    layout->addLayout(line);

    m_list = new QListView(this);
    m_list->setObjectName(QStringLiteral("findResults"));
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_list->setUniformItemSizes(true);
    m_list->setVisible(false);
    m_model = new FindResultsModel(m_find, this);
    m_list->setModel(m_model);
    m_list->setItemDelegate(new FindResultDelegate(m_list));
    layout->addWidget(m_list, 1);

    m_field->installEventFilter(this);
    m_list->installEventFilter(this);
    connect(m_field, &QLineEdit::textChanged, this, &FindBar::OnTextChanged);
    connect(m_list, &QListView::clicked, this, [this](QModelIndex const& index)
            { Reveal({static_cast<size_t>(index.row())}); });
    connect(&driver, &QtWindowSystemDriver::Pumped, this, &FindBar::OnPumped);
}

void FindBar::FocusField()
{
    m_field->setFocus(Qt::ShortcutFocusReason);
    m_field->selectAll();
}

bool FindBar::IsShowingResults() const
{
    return m_list->isVisible();
}

void FindBar::OnTextChanged(QString const& text)
{
    m_find.SetText(FromQt(text));
    m_model->Reset();
    const bool shown = !m_find.Query().IsEmpty() || !m_find.Query().problem.empty();
    if (shown != m_list->isVisible())
    {
        m_list->setVisible(shown);
        Q_EMIT ResultsShown(shown);
    }
    if (m_model->rowCount() > 0)
        m_list->setCurrentIndex(m_model->index(0));
    ShowCount();
}

void FindBar::OnPumped()
{
    // What was deleted or renamed must not linger in the list.
    if (!m_find.Text().empty() && m_find.Update())
    {
        const int row = m_list->currentIndex().row();
        m_model->Reset();
        if (m_model->rowCount() > 0)
            m_list->setCurrentIndex(m_model->index(std::clamp(row, 0, m_model->rowCount() - 1)));
        ShowCount();
    }
}

void FindBar::ShowCount()
{
    if (m_find.Query().IsEmpty() && m_find.Query().problem.empty())
        m_count->clear();
    else if (!m_find.Query().problem.empty() && m_find.Count() == 0)
        m_count->setText(ToQt(m_find.Query().problem));
    else
        m_count->setText(m_find.Count() == 1 ? tr("1 found") : tr("%L1 found").arg(qulonglong(m_find.Count())));
}

void FindBar::RevealSelected()
{
    std::vector<size_t> rows;
    for (QModelIndex const& index : m_list->selectionModel()->selectedIndexes())
        rows.push_back(static_cast<size_t>(index.row()));
    std::sort(rows.begin(), rows.end());
    // The current row goes last: it is the one scrolled into view.
    if (const QModelIndex current = m_list->currentIndex(); current.isValid())
    {
        std::erase(rows, static_cast<size_t>(current.row()));
        rows.push_back(static_cast<size_t>(current.row()));
    }
    Reveal(rows);
}

void FindBar::Reveal(std::vector<size_t> const& rows)
{
    if (rows.empty() || !m_find.Reveal(rows))
        return;
    m_tree.setFocus(Qt::OtherFocusReason);
    m_driver.Pump();
    m_tree.SyncFromTree();
    m_tree.viewport()->update();
}

void FindBar::Dismiss()
{
    m_field->clear();
    m_tree.setFocus(Qt::OtherFocusReason);
}

bool FindBar::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    auto* key = static_cast<QKeyEvent*>(event);
    switch (key->key())
    {
    case Qt::Key_Escape:
        Dismiss();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        RevealSelected();
        return true;
    case Qt::Key_Down:
    case Qt::Key_Up:
    case Qt::Key_PageDown:
    case Qt::Key_PageUp:
        // The field keeps the keyboard for typing; the arrows move in the results.
        if (watched == m_field && m_list->isVisible())
        {
            QKeyEvent forwarded(key->type(), key->key(), key->modifiers());
            QCoreApplication::sendEvent(m_list, &forwarded);
            return true;
        }
        break;
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}
} // namespace sn::qt
