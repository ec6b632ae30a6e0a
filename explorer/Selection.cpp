// The selection's way out of the view: the event viewer, the primary transport and the
// property inspector; and the tree's keys and clicks.

#include "explorer/DlgProjectExplorer.h"

#include "host/HostMessages.h"
#include "host/HostWindows.h"
#include "host/OrbObjNotify.h"
#include "host/ProjectManager.h"
#include "host/TreeNodeWithObject.h"
#include "host/UserPreferences.h"
#include "module/ExplorerNames.h"
#include "platform/WindowSystem.h"

using namespace PENames;

namespace
{
// Categories whose objects the event viewer can list.
bool IsEventViewerCategory(OrbObjectCategories::Category category)
{
    switch (category)
    {
    case OrbObjectCategories::Busses:
    case OrbObjectCategories::AudioObjects:
    case OrbObjectCategories::Events:
    case OrbObjectCategories::Switches:
    case OrbObjectCategories::States:
    case OrbObjectCategories::GameParameters:
    case OrbObjectCategories::Music:
    case OrbObjectCategories::Triggers:
        return true;
    default:
        return false;
    }
}
} // namespace

void DlgProjectExplorer::DelayNotifySelection()
{
    if (m_selectionPosted)
        return;
    m_selectionPosted = true;
    PostMessage(s_uSendSelectionMsg, 0, 0);
}

LRESULT DlgProjectExplorer::SendSelection(WPARAM, LPARAM)
{
    std::vector<IOrbObject*> objects;
    GetSelectedObjects(objects);
    if (IsWindowVisible())
    {
        bool eligible = !objects.empty();
        for (IOrbObject* object : objects)
            eligible = eligible && IsEventViewerCategory(OrbObjectCategories::GetOrbObjectCategory(object));
        if (eligible && INotifyMgr::m_pInstance)
        {
            OrbObjNotify::MultiObjectNotificationParam param(rosObjectsList, objects);
            INotifyMgr::m_pInstance->Notify(rosEventViewer, param);
        }

        if (objects.size() == 1 && objects.front())
            SendOrbObjectToTransport(*objects.front()->GetGUID());
        else if (objects.empty())
            SendOrbObjectToTransport(GUID_NULL);
    }
    m_selectionPosted = false;
    return 0;
}

void DlgProjectExplorer::SendOrbObjectToTransport(GUID const& id)
{
    CWnd* mainWnd = SonariumGetMainWnd();
    if (!mainWnd)
        return;
    if (mainWnd->SendMessage(HostMessages::MayDriveTransport, reinterpret_cast<WPARAM>(GetSafeHwnd()), 0) ==
        0)
        return;
    if (!IsWindowVisible())
        return;
    INotifyMgr* notify = INotifyMgr::m_pInstance;
    if (id == GUID_NULL)
    {
        if (m_tree.IsTransportClearedOnEmptySelection() && notify)
        {
            NotifyData data(rosTransportPrimaryDisable);
            notify->Notify(rosTransport, data);
        }
        return;
    }
    CSmartPtr<IOrbObject> object;
    object.Attach(priv::LookupOrbObject(id));
    if (object && notify)
    {
        OrbObjNotify::OrbPlayInPrimaryTransportParam param(rosPlayInPrimaryTransport, object, false);
        notify->Notify(rosSonariumObject, param);
    }
}

LRESULT DlgProjectExplorer::InspectObject(WPARAM, LPARAM lParam)
{
    CWnd* focus = CWnd::GetFocus();
    if (!focus || !IsChild(focus))
        return 0;
    std::vector<HTREEITEM> items;
    m_tree.GetSelectedList(items);
    std::vector<IOrbObject*> objects;
    GetSelectedObjects(items, objects);
    UpdateToolbar(items);
    OrbObjNotify::FireInspectNotification(objects, -1, -1, false, NotifyHelper::InspectTab_Default, false,
                                          lParam != 0, true, nullptr);
    return 0;
}

void DlgProjectExplorer::InspectSelectionIfRequired()
{
    if (m_inspectPending && !m_tree.IsInspectionDeferred())
    {
        PostMessage(PENames::uInspectObjectMsg, 0, 0);
        m_inspectPending = false;
    }
}

void DlgProjectExplorer::OnTvnBatchSelChangeEndProjectTree(NMHDR*, LRESULT*)
{
    InspectSelectionIfRequired();
}

PMTreeNode* DlgProjectExplorer::GetTopWorkUnitNode(IOrbObject* object)
{
    ProjectManager* projects = ProjectManager::m_pInstance;
    CSmartPtr<IOrbWorkUnit> workUnit;
    if (!projects || !object || !projects->GetTopWorkUnit(object, workUnit) || !workUnit)
        return nullptr;
    return GetNodeWithGUID(*workUnit->GetGUID());
}

void DlgProjectExplorer::SetFocusOnTree()
{
    m_tree.SetFocus();
}

void DlgProjectExplorer::OnTvnSelchangedProjectTree(NMHDR* hdr, LRESULT* result)
{
    if (!m_updating)
    {
        const auto* change = reinterpret_cast<NMTREEVIEWW*>(hdr);
        SetSelectedFlag(change->itemOld.hItem, false);
        SetSelectedFlag(change->itemNew.hItem, true);
        DelayNotifySelection();

        if (!m_suppressNextInspect && InspectUserPref::GetInspectOnSingleClick())
        {
            if (GetKeyState(VK_LBUTTON) >= 0 && m_tree.SelectionBatchDepth() <= 0)
                PostMessage(PENames::uInspectObjectMsg, 0, 0);
            else
                m_inspectPending = true;
        }
    }
    m_suppressNextInspect = false;
    *result = 0;
}

void DlgProjectExplorer::OnNMLButtonDownProjectTree(NMHDR*, LRESULT* result)
{
    *result = 0;
    CPoint point;
    GetCursorPos(&point);
    m_tree.ScreenToClient(&point);
    m_hitTestFlags = 0;
    m_hitTestItem = m_tree.HitTest(point, &m_hitTestFlags);
}

void DlgProjectExplorer::OnNMDblclkProjectTree(NMHDR*, LRESULT* result)
{
    *result = 1;
    HTREEITEM focused = m_tree.GetFocusedItem();
    if (focused && focused == m_hitTestItem && m_tree.GetNodeFromItem(focused) &&
        (m_hitTestFlags & (TVHT_ONITEMICON | TVHT_ONITEMLABEL)))
        PostMessage(PENames::uInspectObjectMsg, 0, 1);
}

void DlgProjectExplorer::OnNMClickProjectTree(NMHDR*, LRESULT*)
{
    // A click acts through the selection change it causes.
}

bool DlgProjectExplorer::IsSingleItemSelected() const
{
    HTREEITEM first = m_tree.GetFirstSelectedItem();
    return first && !m_tree.GetNextSelectedItem(first);
}

void DlgProjectExplorer::OnTvnKeydownProjectTree(NMHDR* hdr, LRESULT* result)
{
    *result = 0;
    const auto* key = reinterpret_cast<NMTVKEYDOWN*>(hdr);
    switch (key->wVKey)
    {
    case VK_DELETE:
        OnDeleteObject();
        break;
    case VK_F5:
        NotifyRefreshTree(RefreshAll);
        break;
    case VK_F2:
        if (IsSingleItemSelected())
            m_tree.SendMessage(TVM_EDITLABEL, 0, reinterpret_cast<LPARAM>(m_tree.GetFirstSelectedItem()));
        break;
    case VK_ADD:
        Expand(true, false);
        break;
    case VK_SUBTRACT:
        Expand(false, false);
        break;
    case VK_RETURN:
        if (IsSingleItemSelected())
        {
            auto* node =
                static_cast<TreeNodeWithObject*>(m_tree.GetNodeFromItem(m_tree.GetFirstSelectedItem()));
            if (node && node->GetObject())
            {
                CSmartPtr<IOrbObject> object(node->GetObject());
                OrbObjNotify::FireInspectNotification(object, -1, -1, false, NotifyHelper::InspectTab_Default,
                                                      false, true, true, nullptr);
            }
        }
        break;
    default:
        break;
    }
}

LRESULT DlgProjectExplorer::OnKeyMessage(WPARAM wParam, LPARAM)
{
    const auto* msg = reinterpret_cast<const MSG*>(wParam);
    if (!msg)
        return 0;
    if (msg->wParam == VK_SHIFT)
    {
        UpdateToolbar();
    }
    else if (msg->wParam == VK_DOWN && GetKeyState(VK_MENU) < 0)
    {
        HTREEITEM focused = m_tree.GetFocusedItem();
        m_tree.SelectAll(false);
        if (focused)
            m_tree.SelectItem(focused);
    }
    return 0;
}

void DlgProjectExplorer::UpdateToolbar()
{
    std::vector<HTREEITEM> items;
    m_tree.GetSelectedList(items);
    UpdateToolbar(items);
}

void DlgProjectExplorer::UpdateToolbar(std::vector<HTREEITEM> const& items)
{
    if (items.empty())
    {
        m_toolbar.UpdateButtons(nullptr);
        return;
    }
    std::vector<PMTreeNode*> nodes;
    GetSelectedNodeList(items, nodes);
    if (nodes.front())
        m_toolbar.UpdateButtons(&nodes);
}
