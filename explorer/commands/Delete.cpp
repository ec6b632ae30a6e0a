// Deleting the selection.

#include "explorer/DlgProjectExplorer.h"

LRESULT DlgProjectExplorer::OnDeleteObject(WPARAM, LPARAM)
{
    // Deletion comes with the structure commands; the message is answered as handled.
    return 1;
}
