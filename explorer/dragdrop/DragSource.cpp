// The tree as a drag source.

#include "explorer/DlgProjectExplorer.h"

void DlgProjectExplorer::OnTvnBegindragProjectTree(NMHDR*, LRESULT* result)
{
    // Dragging objects out of the tree comes with the drag and drop commands.
    *result = 0;
}
