// Cut, copy and paste through the host's object clipboard.

#include "explorer/DlgProjectExplorer.h"

#include "host/HostMessages.h"

LRESULT DlgProjectExplorer::OnWmCut(WPARAM, LPARAM)
{
    return 0;
}

LRESULT DlgProjectExplorer::OnWmCopy(WPARAM, LPARAM)
{
    return 0;
}

LRESULT DlgProjectExplorer::OnWmPaste(WPARAM, LPARAM)
{
    return 0;
}

// Until the clipboard commands exist the host is told they are not available.
LRESULT DlgProjectExplorer::OnWmCanCut(WPARAM, LPARAM)
{
    return HostMessages::NotAllowed;
}

LRESULT DlgProjectExplorer::OnWmCanCopy(WPARAM, LPARAM)
{
    return HostMessages::NotAllowed;
}

LRESULT DlgProjectExplorer::OnWmCanPaste(WPARAM, LPARAM)
{
    return HostMessages::NotAllowed;
}
