#include "host/DialogBase.h"

#include "host/Theme.h"
#include "platform/Canvas.h"

BEGIN_MESSAGE_MAP(CDialogBase, CDialog)
ON_WM_SIZE()
ON_WM_ERASEBKGND()
ON_WM_DESTROY()
END_MESSAGE_MAP()

void CDialogBase::OnSize(UINT type, int cx, int cy)
{
    Invalidate();
}

BOOL CDialogBase::OnEraseBkgnd(CDC* dc)
{
    ICanvas* canvas = dc ? HdcToCanvas(dc->GetSafeHdc()) : nullptr;
    if (!canvas)
        return FALSE;
    CRect client;
    GetClientRect(client);
    canvas->FillRect(client, sn::theme::Color("Window_Background"));
    return TRUE;
}

void CDialogBase::OnDestroy()
{
    // Otherwise the focus would die with the dialog and keys would reach no window.
    CWnd* focus = CWnd::GetFocus();
    CWnd* parent = GetParent();
    if (focus && parent && (focus == this || IsChild(focus)))
        parent->SetFocus();
}
