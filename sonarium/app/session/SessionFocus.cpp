// Which pane the user works in: the one whose view last had the keyboard focus. It alone drives
// the transport, the Edit menu's commands go to it, and moving the focus into it brings the
// host's panels and its toolbar to its selection.

#include "sonarium/app/session/AppSession.h"

#include "host/OrbObjNotify.h"
#include "host/UserPreferences.h"

#include <algorithm>

namespace sn
{
Pane* AppSession::ActivePane()
{
    const HWND active = m_main.TransportView();
    for (Pane& pane : m_panes)
        if (pane.view->GetSafeHwnd() == active)
            return &pane;
    return m_panes.empty() ? nullptr : &m_panes.front();
}

void AppSession::KeepTransportView()
{
    const bool open =
        std::any_of(m_panes.begin(), m_panes.end(),
                    [this](Pane const& pane) { return pane.view->GetSafeHwnd() == m_main.TransportView(); });
    if (!open)
        m_main.SetTransportView(m_panes.empty() ? nullptr : m_panes.front().view->GetSafeHwnd());
}

void AppSession::OnFocusChanged(HWND focus)
{
    CWnd* focused = CWnd::FromHandle(focus);
    if (!focused)
        return;
    for (Pane& pane : m_panes)
        if (focused == pane.view || pane.view->IsChild(focused))
        {
            if (pane.view->GetSafeHwnd() == m_main.TransportView())
                return;
            m_main.SetTransportView(pane.view->GetSafeHwnd());
            // One announcement of its selection, the same one a click's selection change makes.
            pane.view->DelayNotifySelection();
            m_followPending = true;
            return;
        }
}

void AppSession::FollowFocus()
{
    if (!m_followPending)
        return;
    m_followPending = false;
    Pane* pane = ActivePane();
    if (!pane)
        return;
    // A press whose release is still to come: what the whole click selects is not known yet.
    if (pane->view->GetTreeCtrl().SelectionBatchDepth() > 0)
    {
        m_followPending = true;
        return;
    }
    pane->view->UpdateToolbar();
    if (!InspectUserPref::GetInspectOnSingleClick())
        return;
    std::vector<IOrbObject*> objects;
    pane->view->GetSelectedObjects(objects);
    if (!m_inspector->Shows(objects))
        OrbObjNotify::FireInspectNotification(objects, -1, -1, false, NotifyHelper::InspectTab_Default, false,
                                              false, true, pane->view->GetSafeHwnd());
}
} // namespace sn
