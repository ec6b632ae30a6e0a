// The right-click menu of the tree.

#include "explorer/DlgProjectExplorer.h"

void DlgProjectExplorer::OnContextMenu(CWnd*, CPoint)
{
    // The context menu comes with its own command set.
}
