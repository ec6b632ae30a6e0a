// Expanding and collapsing the selected subtrees: the marks are set on the node model and
// the tree is rebuilt from the root nodes in one batch.

#include "explorer/DlgProjectExplorer.h"

void DlgProjectExplorer::Expand(bool expand, bool recursive)
{
    std::vector<PMTreeNode*> nodes;
    GetSelectedNodeList(nodes);
    BeginUpdate();
    const unsigned long childrenChanged = RefreshChildrenAdded | RefreshChildrenRemoved;
    if (expand)
    {
        for (PMTreeNode* node : nodes)
        {
            if (!node)
                continue;
            node->IsExpanded(true);
            node->Refresh(true, childrenChanged);
            if (recursive)
                node->SetExpandedForAllChildren(true);
        }
    }
    else
    {
        // Mirrored: from the last selected node up, the descendants before the node itself.
        for (auto it = nodes.rbegin(); it != nodes.rend(); ++it)
        {
            if (!*it)
                continue;
            if (recursive)
                (*it)->SetExpandedForAllChildren(false);
            (*it)->IsExpanded(false);
            (*it)->Refresh(true, childrenChanged);
        }
    }
    // Every item again from the root nodes, the focus on the first selected row.
    FillTreeView();
    EndUpdate();
}

void DlgProjectExplorer::OnExpandDescendants()
{
    Expand(true, true);
}

void DlgProjectExplorer::OnCollapseDescendants()
{
    Expand(false, true);
}
