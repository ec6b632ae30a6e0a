// What each row of the project tree shows: decided here, drawn as is by the painters.

#include "host/PETreeCtrl.h"

#include "host/Theme.h"

namespace
{
COLORREF Resolved(COLORREF set, char const* themeName)
{
    return set == CLR_NONE || set == CLR_DEFAULT ? sn::theme::Color(themeName).ToCOLORREF() : set;
}

// Halfway between two colours: how excluded objects' names are dimmed.
COLORREF Blend(COLORREF a, COLORREF b)
{
    return RGB(static_cast<BYTE>((GetRValue(a) + GetRValue(b)) / 2), static_cast<BYTE>((GetGValue(a) + GetGValue(b)) / 2),
               static_cast<BYTE>((GetBValue(a) + GetBValue(b)) / 2));
}
} // namespace

PETreeRow PETreeCtrl::GetRow(HTREEITEM item) const
{
    PETreeRow row;
    if (!GetItemRect(item, &row.row, FALSE))
        return row;
    row.item = item;
    row.depth = GetItemDepth(item);
    GetItemRect(item, &row.label, TRUE);
    const int indent = GetIndent();
    const int buttonLeft = row.depth * indent - GetScrollX();
    row.button = {buttonLeft, row.row.top, buttonLeft + indent, row.row.bottom};
    const int iconTop = row.row.top + (GetItemHeight() - IconSize) / 2;
    const int iconLeft = row.label.left - LabelGap - IconSize;
    row.icon = {iconLeft, iconTop, iconLeft + IconSize, iconTop + IconSize};
    row.text = GetItemText(item);
    row.iconType = GetItemImage(item);
    row.hasButton = ItemHasChildren(item) != FALSE;
    const UINT state = GetItemState(item, 0xFFFF);
    row.expanded = (state & TVIS_EXPANDED) != 0;
    row.selected = (state & TVIS_SELECTED) != 0;
    row.focused = (state & TVIS_FOCUSED) != 0;
    row.dropTarget = (state & TVIS_DROPHILITED) != 0;
    row.editing = GetEditItem() == item;
    const COLORREF text = Resolved(GetTextColor(), "Explorer_NormalText");
    row.textColor = text;
    if (PMTreeNode* node = GetNodeFromItem(item))
    {
        row.cut = node->m_bCutMarked;
        row.excluded = node->IsExcludedOnCurrentPlatform();
        row.languageExcluded = node->IsExcludedInCurrentLanguage();
        row.colorTag = node->GetColor();
        auto overlay = m_overlays.find(item);
        if (overlay == m_overlays.end())
            overlay = m_overlays.emplace(item, node->GetOverlayIcon()).first;
        row.overlay = overlay->second;
        if (row.excluded || row.languageExcluded)
            row.textColor = Blend(text, Resolved(GetBkColor(), "Explorer_BackgroundColor"));
    }
    return row;
}

void PETreeCtrl::GetVisibleRows(std::vector<PETreeRow>& rows) const
{
    rows.clear();
    const int first = GetScrollRow();
    // A partly shown last row is drawn too.
    const int count = static_cast<int>(GetVisibleCount()) + 1;
    for (int row = first; row < first + count; ++row)
        if (HTREEITEM item = GetRowItem(row))
            rows.push_back(GetRow(item));
}
