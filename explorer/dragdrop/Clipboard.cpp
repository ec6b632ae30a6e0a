// Cut, copy and paste through the host's object clipboard.

#include "explorer/DlgProjectExplorer.h"

namespace
{
// The host's can-cut, can-copy and can-paste questions are answered 1 (allowed) or 2.
constexpr LRESULT kNotAllowed = 2;
} // namespace

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
    return kNotAllowed;
}

LRESULT DlgProjectExplorer::OnWmCanCopy(WPARAM, LPARAM)
{
    return kNotAllowed;
}

LRESULT DlgProjectExplorer::OnWmCanPaste(WPARAM, LPARAM)
{
    return kNotAllowed;
}
