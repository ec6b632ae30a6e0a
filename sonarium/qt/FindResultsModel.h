#pragma once
// The results of a pane's search as rows of a list, a few hundred more each time the list is
// scrolled to the end, and the delegate that paints them.

#include "sonarium/app/session/PaneFind.h"

#include <QAbstractListModel>
#include <QStyledItemDelegate>

namespace sn::qt
{
class FindResultsModel : public QAbstractListModel
{
    Q_OBJECT

public:
    enum Role
    {
        ParentsRole = Qt::UserRole + 1, // QString: the path of the parents
        MarksRole,                      // QVariantList of QPoint(first, end): matched characters
    };

    explicit FindResultsModel(PaneFind& find, QObject* parent = nullptr) : QAbstractListModel(parent), m_find(find) {}

    // The results changed: the list starts again from the first ones.
    void Reset();

    int rowCount(QModelIndex const& parent = {}) const override;
    QVariant data(QModelIndex const& index, int role) const override;
    bool canFetchMore(QModelIndex const& parent) const override;
    void fetchMore(QModelIndex const& parent) override;

private:
    // The row last read: painting one row asks for several of its roles in turn.
    PaneFind::Row const& RowAt(int row) const;

    PaneFind& m_find;
    int m_shown = 0;
    mutable int m_cachedRow = -1;
    mutable PaneFind::Row m_cached;
};

class FindResultDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void paint(QPainter* painter, QStyleOptionViewItem const& option, QModelIndex const& index) const override;
    QSize sizeHint(QStyleOptionViewItem const& option, QModelIndex const& index) const override;
};
} // namespace sn::qt
