// The right-click menu of the tree: composed for the selection, shown by the host with its own
// object entries, and the chosen command handed to its handler.

#include "explorer/DlgProjectExplorer.h"
#include "explorer/commands/PEHelper.h"
#include "explorer/menu/ContextMenuBuilder.h"
#include "explorer/menu/MenuCommandIds.h"
#include "host/ObjectContextMenu.h"
#include "host/TreeNodeWithObject.h"

namespace
{
// The host's standard entries the explorer's menu offers.
constexpr unsigned long k_hostEntries = 0x1FBFD;
} // namespace

void DlgProjectExplorer::OnContextMenu(CWnd* wnd, CPoint point)
{
    if (!wnd || wnd->GetSafeHwnd() != m_tree.GetSafeHwnd())
        return;
    CPoint client = point;
    m_tree.ScreenToClient(&client);
    UINT flags = 0;
    HTREEITEM item = m_tree.HitTest(client, &flags);
    if (!item || !(flags & (TVHT_ONITEMICON | TVHT_ONITEMLABEL | TVHT_ONITEMSTATEICON)))
        return;
    if (!m_tree.IsSelected(item))
    {
        // The menu is for that row alone, as a left click would have made it.
        m_tree.SelectAll(false);
        m_tree.SelectItem(item);
    }

    std::vector<PMTreeNode*> nodes;
    GetSelectedNodeList(nodes);
    if (nodes.empty())
        return;
    m_menuCommands.clear();
    const unsigned included = IsIncluded();
    const unsigned linked = IsInclusionLinked();
    ContextMenuParts parts;
    BuildContextMenuItems(nodes, parts, m_menuCommands, 0xFFFFFFFF, linked, included);

    std::vector<IOrbObject*> objects;
    for (PMTreeNode* node : nodes)
        if (node)
            objects.push_back(NodeObject(node));
    DispatchMenuCommand(ObjectContextMenu::DoMenu(this, objects, k_hostEntries, parts.items, {}));
}

void DlgProjectExplorer::DispatchMenuCommand(uint32_t id)
{
    using namespace MenuCommandIds;
    switch (id)
    {
    case Delete:
        OnDeleteObject();
        return;
    case Rename:
        if (IsSingleItemSelected())
            m_tree.SendMessage(TVM_EDITLABELW, 0, reinterpret_cast<LPARAM>(m_tree.GetFirstSelectedItem()));
        return;
    case BatchRename:
        OnBatchRename();
        return;
    case ImportAudioFiles:
        OnAudioFileImporter();
        return;
    case ImportSoundBankDefinition:
        OnImportSoundbankDefinition();
        return;
    default:
        break;
    }
    if (InRange(id, NewChild) || InRange(id, NewParent) || InRange(id, NewParentPreset))
        return OnAddNode(id);
    if (InRange(id, NewEventPerObject) || InRange(id, NewEventForAll))
        return OnNewEvent(id);
    if (InRange(id, Base + 1500) || InRange(id, Base + 3500))
        return OnAddNode(id);
    if (InRange(id, NewSource))
        return OnAddSource(id);
    if (InRange(id, Base + 2000) || InRange(id, NewChildPreset))
        return OnAddNode(id);
    switch (id)
    {
    case IncludeSelection:
        return CheckSelectedNode(true);
    case ExcludeSelection:
        return CheckSelectedNode(false);
    case LinkInclusion:
        return LinkInclusionInSelectedNode(true);
    case UnlinkInclusion:
        return LinkInclusionInSelectedNode(false);
    case LoadUnloadWorkUnit:
        return OnEnableWorkUnit();
    case CollapseDescendants:
        return Expand(false, true);
    case ExpandDescendants:
        return Expand(true, true);
    default:
        return;
    }
}
