#pragma once
// The host's base of every dialog and view. Views placed in the host's panes answer the host's
// view protocol below; derived message maps chain to this one and call the base handlers.

#include "platform/Dialog.h"

// Binds a member control to its identifier in the dialog, creating it when the dialog has no
// template for it.
inline void DDX_CXControl(CDataExchange* pDX, int id, CWnd& control)
{
    DDX_Control(pDX, id, control);
}

class CDialogBase : public CDialog
{
public:
    CDialogBase() = default;
    explicit CDialogBase(UINT templateId, CWnd* parent = nullptr) : CDialog(templateId, parent) {}

    // The module whose resources the dialog loads; null for the host's own.
    virtual HINSTANCE GetResourceHandle() { return nullptr; }
    // The host moved the view to another synchronisation group.
    virtual void OnSyncGroupChanged(UINT_PTR group) {}
    // The host is about to remove the view from its pane.
    virtual void OnDeleteView() {}
    // The host has shown the view with a project.
    virtual void OnLoadView() {}

protected:
    // A resized dialog repaints whole.
    void OnSize(UINT type, int cx, int cy);
    // Fills the client area with the theme's window background.
    BOOL OnEraseBkgnd(CDC* dc);
    // Hands the focus back to the parent when it was inside the dialog.
    void OnDestroy();

    DECLARE_MESSAGE_MAP()
};
