// What each host notification and global property change does to the tree, the single
// entry point for refresh requests, and the two timers that defer work.

#include "explorer/DlgProjectExplorer.h"

#include "host/OrbObjNotify.h"
#include "host/ServiceProvider.h"
#include "host/TreeNodeWithObject.h"
#include "module/ExplorerNames.h"

using namespace PENames;

bool DlgProjectExplorer::IsEditingLabel()
{
    return m_tree.GetSafeHwnd() && m_tree.SendMessage(TVM_GETEDITCONTROL, 0, 0) != 0;
}

void DlgProjectExplorer::InvalidateTree()
{
    if (m_tree.GetSafeHwnd())
        m_tree.Invalidate(TRUE);
}

void DlgProjectExplorer::NotifyRefreshTree(unsigned long mask)
{
    m_pendingRefresh |= mask;
    if (IsUILocked())
        return;
    if (IsEditingLabel())
    {
        // Whatever was pending, the edit's end rebuilds the tree; only that much is kept.
        m_pendingRefresh = RefreshChildrenAdded;
        return;
    }
    RefreshTree(true);
}

void DlgProjectExplorer::OnUILockChange(CProp&)
{
    if (!IsUILocked() && !IsEditingLabel())
        RefreshTree(true);
}

void DlgProjectExplorer::OnPlatformChange(CProp&)
{
    NotifyRefreshTree(RefreshVisuals | RefreshInclusion);
}

void DlgProjectExplorer::OnLanguageChange(CProp&)
{
    NotifyRefreshTree(RefreshVisuals);
}

bool DlgProjectExplorer::IsObjectInProjectExplorer(IOrbObject const* object) const
{
    if (!object || object->GetObjectType() == OrbObjectType_Platform)
        return false;
    return m_categories.count(OrbObjectCategories::GetOrbObjectCategory(object)) != 0;
}

void DlgProjectExplorer::ScheduleRefreshVisuals()
{
    if (m_visualsTimerArmed)
        return;
    m_visualsTimerArmed = true;
    SetTimer(TIMER_REFRESH_VISUALS, TIMER_DELAY_MS, nullptr);
}

void DlgProjectExplorer::ScheduleEditItem(HTREEITEM item)
{
    if (m_itemToEdit)
    {
        m_itemToEdit = nullptr;
        KillTimer(TIMER_EDIT_ITEM);
    }
    m_itemToEdit = item;
    SetTimer(TIMER_EDIT_ITEM, TIMER_DELAY_MS, nullptr);
}

void DlgProjectExplorer::OnTimer(UINT_PTR id)
{
    if (id == TIMER_REFRESH_VISUALS && m_visualsTimerArmed)
    {
        NotifyRefreshTree(RefreshVisuals);
        m_visualsTimerArmed = false;
        KillTimer(TIMER_REFRESH_VISUALS);
    }
    else if (id == TIMER_EDIT_ITEM && m_itemToEdit)
    {
        m_tree.SendMessage(TVM_EDITLABEL, 0, reinterpret_cast<LPARAM>(m_itemToEdit));
        m_itemToEdit = nullptr;
        KillTimer(TIMER_EDIT_ITEM);
    }
}

void DlgProjectExplorer::OnProjectChange(CNotifyItemBase* item)
{
    if (!item || !item->pData)
        return;
    const ROString& event = item->pData->event;
    if (event == rosPost_Close || event == rosProjectCreated || event == rosProjectLoaded)
    {
        NotifyRefreshTree(RefreshAll);
    }
    else if (event == rosPre_Close)
    {
        m_tree.SendMessage(TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(TVI_ROOT));
        SendSelection(0, 0);
    }
    else if (event == rosCacheChanged)
    {
        ScheduleRefreshVisuals();
    }
}

void DlgProjectExplorer::OnOrbObjectNotification(CNotifyItemBase* item)
{
    if (!item || !item->pData)
        return;
    const ROString& event = item->pData->event;
    // A new object shows up through its parent's "ChildAdded".
    if (event == rosObjectCreated || event == rosObjectLoaded)
        return;
    auto* param = dynamic_cast<OrbObjNotify::OrbObjectNotifyParam*>(item->pData);
    if (!param || !param->object)
        return;
    IOrbObject* object = param->object;
    const GUID id = *object->GetGUID();
    const OrbObjectType type = object->GetObjectType();

    if (event == rosConversionSettingsChanged)
    {
        InvalidateTree();
        return;
    }
    const bool alwaysNotified =
        type == OrbObjectType_WorkUnit || type == OrbObjectType_Bus || type == OrbObjectType_AuxBus;
    if (!alwaysNotified && (object->GetObjectFlags() & OrbObjectFlag_Internal))
        return;
    if (!IsObjectInProjectExplorer(object))
        return;

    const bool playlistItem = type == OrbObjectType_MusicPlaylistItem;
    if (event == rosChildAdded)
    {
        NotifyRefreshTree(playlistItem ? RefreshChildrenAdded | RefreshVisuals : RefreshChildrenAdded);
    }
    else if (event == rosChildRemoved || event == rosPreDestroy)
    {
        NotifyRefreshTree(playlistItem ? RefreshChildrenRemoved | RefreshVisuals : RefreshChildrenRemoved);
    }
    else if (event == rosNameChanged)
    {
        if (IsUILocked())
            m_pendingNameRefresh.insert(id);
        else
            RefreshItemNameWithGUID(id);
    }
    else if (event == rosInclusionChanged)
    {
        if (IsUILocked())
            m_pendingPFRefresh.insert(id);
        else
            RefreshItemPF(m_tree.GetItemWithGUID(id, TVI_ROOT), true);
    }
    else if (event == rosLanguageInclusionChanged)
    {
        RefreshItemVisualState(m_tree.GetItemWithGUID(id, TVI_ROOT));
    }
    else if (event == rosActiveSourceChanged)
    {
        RefreshItemVisualState(id);
    }
    else if (event == rosSourceFileChanged)
    {
        CSmartPtr<IOrbObject> owner;
        owner.Attach(object->GetParentObject());
        if (owner)
            RefreshItemVisualState(*owner->GetGUID());
    }
    else if (event == rosObjectSubTypeChanged)
    {
        NotifyRefreshTree(RefreshVisuals);
    }
    else if (event == rosColorChanged)
    {
        InvalidateTree();
    }
}

void DlgProjectExplorer::OnWorkUnitNotification(CNotifyItemBase* item)
{
    if (!item || !item->pData || item->pData->event != rosDirtyChanged)
        return;
    auto* param = dynamic_cast<OrbObjNotify::OrbObjectNotifyParam*>(item->pData);
    if (param && param->object)
        RefreshItemNameWithGUID(*param->object->GetGUID());
}

void DlgProjectExplorer::OnMusicNotification(CNotifyItemBase* item)
{
    if (!item || !item->pData)
        return;
    const ROString& event = item->pData->event;
    if (event == MusicNotify::rosTrackTypeChanged)
    {
        auto* param = dynamic_cast<OrbObjNotify::OrbObjectNotifyParam*>(item->pData);
        if (param && param->object)
            if (HTREEITEM found = m_tree.GetItemWithGUID(*param->object->GetGUID(), TVI_ROOT))
                m_tree.UpdateIcon(found);
    }
    else if (event == MusicNotify::rosSequenceAdded || event == MusicNotify::rosSequenceRemoved ||
             event == MusicNotify::rosSequenceItemAdded || event == MusicNotify::rosSequenceItemRemoved)
    {
        ScheduleRefreshVisuals();
    }
}

void DlgProjectExplorer::OnSourceControlNotification(CNotifyItemBase* item)
{
    if (!item || !item->pData)
        return;
    if (item->pData->event == rosSourceControlIconsRefreshAll)
    {
        m_tree.ClearOverlayIcons();
        NotifyRefreshTree(RefreshVisuals);
    }
    else if (item->pData->event == rosSourceControlAborted)
    {
        m_sourceControlAborted = true;
    }
}

void DlgProjectExplorer::OnEditingCapabilitiesChange(CNotifyItemBase* item)
{
    if (!item || !item->pData)
        return;
    UpdateToolbar();
}

void DlgProjectExplorer::OnConversionNotification(CNotifyItemBase* item)
{
    if (!item || !item->pData)
        return;
    const ROString& event = item->pData->event;
    if (event != rosConversionUsageChanged && event != rosOverrideConversionChanged)
        return;
    auto* param = dynamic_cast<OrbObjNotify::OrbObjectNotifyParam*>(item->pData);
    if (param && IsObjectInProjectExplorer(param->object))
        InvalidateTree();
}

void DlgProjectExplorer::OnClipboardNotification(CNotifyItemBase* item)
{
    if (!item || !item->pData || item->pData->event != rosReferenceBeingRemoved)
        return;
    auto* clipboard =
        sn::g_serviceProviderInstance
            ? sn::g_serviceProviderInstance->Get<sn::IObjectClipboardService>(sn::ServiceId_ObjectClipboard)
            : nullptr;
    if (!clipboard)
        return;

    std::vector<IOrbObject*> objects;
    clipboard->GetObjects(objects);
    bool changed = false;
    for (IOrbObject* object : objects)
    {
        PMTreeNode* node = GetNodeWithGUID(*object->GetGUID());
        if (node && node->m_bCutMarked)
        {
            node->m_bCutMarked = false;
            changed = true;
        }
    }
    for (IOrbObject* object : objects)
        object->Release();

    if (changed)
        NotifyRefreshTree(RefreshVisuals);
}
