#include "sonarium/qt/FindResultsModel.h"

#include "host/ObjectIcons.h"
#include "sonarium/core/model/ProjectObject.h"
#include "sonarium/qt/IconArt.h"
#include "sonarium/qt/QtText.h"

#include <QApplication>
#include <QPainter>
#include <QPoint>

namespace sn::qt
{
namespace
{
constexpr int kBatch = 200;
constexpr int kIconSize = 16;
} // namespace

PaneFind::Row const& FindResultsModel::RowAt(int row) const
{
    if (row != m_cachedRow)
    {
        m_cached = m_find.RowAt(static_cast<size_t>(row));
        m_cachedRow = row;
    }
    return m_cached;
}

void FindResultsModel::Reset()
{
    beginResetModel();
    m_cachedRow = -1;
    m_shown = static_cast<int>(std::min<size_t>(m_find.Count(), kBatch));
    endResetModel();
}

int FindResultsModel::rowCount(QModelIndex const& parent) const
{
    return parent.isValid() ? 0 : m_shown;
}

bool FindResultsModel::canFetchMore(QModelIndex const& parent) const
{
    return !parent.isValid() && static_cast<size_t>(m_shown) < m_find.Count();
}

void FindResultsModel::fetchMore(QModelIndex const& parent)
{
    const int more = static_cast<int>(std::min<size_t>(m_find.Count() - static_cast<size_t>(m_shown), kBatch));
    if (parent.isValid() || more <= 0)
        return;
    beginInsertRows({}, m_shown, m_shown + more - 1);
    m_shown += more;
    endInsertRows();
}

QVariant FindResultsModel::data(QModelIndex const& index, int role) const
{
    if (!index.isValid() || index.row() >= m_shown)
        return {};
    const PaneFind::Row& row = RowAt(index.row());
    if (!row.object)
        return {};
    switch (role)
    {
    case Qt::DisplayRole:
        return ToQt(row.name);
    case Qt::ToolTipRole:
        return ToQt(row.parents + L"/" + row.name);
    case Qt::DecorationRole:
        return QIcon(IconArt::Get().Pixmap(ObjectIcons::IconTypeOfNode(row.object->GetNodeType()), false, kIconSize,
                                           qApp->devicePixelRatio()));
    case ParentsRole:
        return ToQt(row.parents);
    case MarksRole:
    {
        QVariantList marks;
        for (auto [first, end] : row.marks)
            marks.push_back(QPoint(static_cast<int>(first), static_cast<int>(end)));
        return marks;
    }
    default:
        return {};
    }
}

QSize FindResultDelegate::sizeHint(QStyleOptionViewItem const& option, QModelIndex const&) const
{
    return {option.rect.width(), option.fontMetrics.height() + 6};
}

void FindResultDelegate::paint(QPainter* painter, QStyleOptionViewItem const& option, QModelIndex const& index) const
{
    QStyleOptionViewItem background = option;
    initStyleOption(&background, index);
    background.text.clear();
    background.icon = {};
    QApplication::style()->drawControl(QStyle::CE_ItemViewItem, &background, painter, option.widget);

    painter->save();
    const QRect row = option.rect.adjusted(4, 0, -4, 0);
    const QIcon icon = index.data(Qt::DecorationRole).value<QIcon>();
    icon.paint(painter, QRect(row.left(), row.center().y() - kIconSize / 2, kIconSize, kIconSize));

    // The name, its matched parts in bold on a marked ground, then the parents' path, quieter.
    const QString name = index.data(Qt::DisplayRole).toString();
    const bool selected = option.state & QStyle::State_Selected;
    const QColor text = selected ? option.palette.highlightedText().color() : option.palette.text().color();
    QFont plain = option.font, bold = option.font;
    bold.setBold(true);
    int x = row.left() + kIconSize + 6;
    int at = 0;
    auto draw = [&](int first, int end, bool marked)
    {
        if (first >= end)
            return;
        const QString part = name.mid(first, end - first);
        painter->setFont(marked ? bold : plain);
        const int width = QFontMetrics(painter->font()).horizontalAdvance(part);
        const QRect box(x, row.top(), width, row.height());
        if (marked && !selected)
            painter->fillRect(box.adjusted(0, 3, 0, -3), ThemeColor("Find_MatchBackground"));
        painter->setPen(text);
        painter->drawText(box, Qt::AlignVCenter | Qt::AlignLeft, part);
        x += width;
    };
    for (const QVariant& mark : index.data(FindResultsModel::MarksRole).toList())
    {
        const QPoint range = mark.toPoint();
        draw(at, range.x(), false);
        draw(range.x(), range.y(), true);
        at = range.y();
    }
    draw(at, static_cast<int>(name.size()), false);

    painter->setFont(plain);
    QColor quiet = text;
    quiet.setAlphaF(0.6f);
    painter->setPen(quiet);
    const QRect rest(x + 12, row.top(), std::max(0, row.right() - x - 12), row.height());
    painter->drawText(rest, Qt::AlignVCenter | Qt::AlignLeft,
                      QFontMetrics(plain).elidedText(index.data(FindResultsModel::ParentsRole).toString(),
                                                     Qt::ElideLeft, rest.width()));
    painter->restore();
}
} // namespace sn::qt
