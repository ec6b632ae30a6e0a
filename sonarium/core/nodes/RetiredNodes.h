#pragma once
// Nodes a refresh took out of the tree, kept until the views are idle. The explorer may hold a
// node in a list it is still working through (expanding the selected rows, say) when refreshing
// one of them replaces another; freeing it at once would leave that list pointing at freed
// memory. Tree items never read a node once a refresh replaced it, so only lists are at stake.

class PMTreeNode;

namespace sn::nodes
{
// Takes the node (and its subtree) out of use; it is deleted when the window system is idle.
void Retire(PMTreeNode* node);
// Deletes every retired node now: when no view can hold one (the host shutting down).
void FreeRetired();
} // namespace sn::nodes
