#include "sonarium/app/session/TreeText.h"

#include "host/ObjectIcons.h"
#include "host/TreeNodeWithObject.h"
#include "sonarium/app/session/HostRecorder.h"

namespace sn
{
std::vector<std::wstring> TreeLines(PETreeCtrl const& tree)
{
    std::vector<std::wstring> lines;
    for (int index = 0; index < tree.GetRowCount(); ++index)
    {
        const PETreeRow row = tree.GetRow(tree.GetRowItem(index));
        std::wstring line(static_cast<size_t>(2 * row.depth), L' ');
        line += row.hasButton ? (row.expanded ? L"- " : L"+ ") : L"  ";
        line += row.text;
        std::wstring marks;
        auto mark = [&marks](bool on, wchar_t const* name)
        {
            if (on)
                marks += (marks.empty() ? L"" : L", ") + std::wstring(name);
        };
        mark(row.selected, L"selected");
        mark(row.focused, L"focused");
        mark(row.cut, L"cut");
        mark(row.excluded, L"excluded");
        mark(row.languageExcluded, L"excluded in language");
        mark(row.overlay == ObjectIcons::IconType_OverlayModified, L"modified");
        mark(row.overlay == ObjectIcons::IconType_OverlayAdded, L"added");
        mark(row.overlay == ObjectIcons::IconType_OverlayUnversioned, L"unversioned");
        mark(row.editing, L"editing");
        if (!marks.empty())
            line += L"  [" + marks + L"]";
        lines.push_back(std::move(line));
    }
    return lines;
}

std::vector<std::wstring> SelectionLines(PETreeCtrl const& tree)
{
    std::vector<std::wstring> lines;
    std::vector<HTREEITEM> items;
    tree.GetSelectedList(items);
    for (HTREEITEM item : items)
    {
        auto* node = dynamic_cast<TreeNodeWithObject*>(tree.GetNodeFromItem(item));
        lines.push_back((item == tree.GetFocusedItem() ? L"* " : L"  ") +
                        (node ? ObjectPath(node->GetObject()) : L"?"));
    }
    if (HTREEITEM focus = tree.GetFocusedItem(); focus && !tree.IsSelected(focus))
        if (auto* node = dynamic_cast<TreeNodeWithObject*>(tree.GetNodeFromItem(focus)))
            lines.push_back(L"* " + ObjectPath(node->GetObject()) + L"  (focused, not selected)");
    return lines;
}
} // namespace sn
