// Expanding and collapsing the selected subtrees: the marks are set on the node model and
// the tree is rebuilt from the root nodes in one batch.

#include "explorer/DlgProjectExplorer.h"

void DlgProjectExplorer::Expand(bool expand, bool allDescendants)
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
            if (allDescendants)
                node->SetExpandedForAllChildren(true);
        }
    }
    else
    {
        for (auto it = nodes.rbegin(); it != nodes.rend(); ++it)
        {
            if (!*it)
                continue;
            if (allDescendants)
                (*it)->SetExpandedForAllChildren(false);
            (*it)->IsExpanded(false);
            (*it)->Refresh(true, childrenChanged);
        }
    }
    FillTreeView();
    EndUpdate();
}
