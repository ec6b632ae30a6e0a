// Deleting the selection, and the row that is selected once the deleted rows are gone.

#include "explorer/DlgProjectExplorer.h"

#include "explorer/commands/PEHelper.h"
#include "host/OrbObjectHelpers.h"
#include "host/TreeNodeWithObject.h"
#include "host/UIObjectHelpers.h"
#include "module/ExplorerNames.h"

using namespace PENames;

LRESULT DlgProjectExplorer::OnDeleteObject(WPARAM, LPARAM)
{
    std::vector<PMTreeNode*> nodes;
    GetSelectedNodeList(nodes);
    // A node below another selected node goes with it.
    OrbObjectHelpers::RemoveAllChildObjectsFromList(nodes);
    if (nodes.empty())
        return 1;

    ScopedGlobalPropRaise lock(rosLockUIUpdate);
    for (PMTreeNode* node : nodes)
        if (!CanDeleteNode(node))
            return 1;

    std::vector<IOrbObject*> objects;
    for (PMTreeNode* node : nodes)
        objects.push_back(static_cast<TreeNodeWithObject*>(node)->GetObject());
    if (!UIObjectHelpers::DeleteObjects(objects))
        return 1;

    // The tree still shows the deleted rows: the row after the last selected one takes the
    // selection, else the one before it, else its parent.
    std::vector<HTREEITEM> selected;
    m_tree.GetSelectedList(selected);
    HTREEITEM next = nullptr;
    if (!selected.empty())
    {
        const auto last = reinterpret_cast<LPARAM>(selected.back());
        for (WPARAM relation : {TVGN_NEXT, TVGN_PREVIOUS, TVGN_PARENT})
            if ((next = reinterpret_cast<HTREEITEM>(m_tree.SendMessage(TVM_GETNEXTITEM, relation, last))))
                break;
    }
    if (next)
        if (PMTreeNode* node = m_tree.GetNodeFromItem(next))
            node->IsSelected(true);
    return 1;
}
