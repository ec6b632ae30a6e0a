#include "sonarium/app/session/TreePoints.h"

namespace sn
{
namespace
{
// Left of any label at the first levels, so the point falls on no row's label or button.
constexpr int k_emptySpaceX = 40;

int MiddleOf(RECT const& rect)
{
    return (rect.top + rect.bottom) / 2;
}
} // namespace

CPoint LabelPoint(PETreeCtrl& tree, HTREEITEM item)
{
    const PETreeRow row = tree.GetRow(item);
    return CPoint(row.label.left + 2, MiddleOf(row.row));
}

std::optional<CPoint> ButtonPoint(PETreeCtrl& tree, HTREEITEM item)
{
    const PETreeRow row = tree.GetRow(item);
    if (!row.hasButton)
        return std::nullopt;
    return CPoint((row.button.left + row.button.right) / 2, MiddleOf(row.row));
}

std::optional<CPoint> BelowLastRow(PETreeCtrl& tree)
{
    const int row = tree.GetRowCount() - tree.GetScrollRow();
    if (row >= static_cast<int>(tree.GetVisibleCount()))
        return std::nullopt;
    const int height = tree.GetItemHeight();
    return CPoint(k_emptySpaceX, row * height + height / 2);
}
} // namespace sn
