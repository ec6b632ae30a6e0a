// New events acting on the selected objects: one per object, or one for the whole selection,
// each in the default work unit of events, named after its action and target.

#include "explorer/DlgProjectExplorer.h"

#include "explorer/commands/CreationGuards.h"
#include "explorer/commands/ObjectNaming.h"
#include "explorer/menu/MenuCommandIds.h"
#include "host/OrbObjNotify.h"
#include "host/OrbObjectHelpers.h"
#include "host/ProjectManager.h"
#include "host/StringHelp.h"
#include "host/Undo.h"
#include "module/ExplorerNames.h"

namespace
{
// What the item's node stands for, or else what its parent node stands for.
CSmartPtr<IOrbObject> TargetOfItem(PETreeCtrl& tree, HTREEITEM item)
{
    IDataManager* data = IDataManager::Get();
    CSmartPtr<IOrbObject> target;
    if (!data)
        return target;
    if (PMTreeNode* node = tree.GetNodeFromItem(item))
        target.Attach(data->GetObjectByGUID(node->ID()));
    if (!target)
    {
        auto parent = reinterpret_cast<HTREEITEM>(
            tree.SendMessage(TVM_GETNEXTITEM, TVGN_PARENT, reinterpret_cast<LPARAM>(item)));
        if (PMTreeNode* node = parent ? tree.GetNodeFromItem(parent) : nullptr)
            target.Attach(data->GetObjectByGUID(node->ID()));
    }
    return target;
}

// An event without a name takes this one; one that has a name keeps it.
void NameIfUnnamed(IOrbObject* event, const CStdStr<wchar_t>& name)
{
    if (!event->GetName().empty())
        return;
    event->BeginChangeNotification(2);
    event->SetName(name);
    event->EndChangeNotification(2);
}
} // namespace

void DlgProjectExplorer::OnNewEvent(UINT id)
{
    auto entry = m_menuCommands.find(id);
    if (entry == m_menuCommands.end() || entry->second.kind != MenuCommandEntry::NewEvent)
        return;
    CreateOrbEventObject(false, static_cast<OrbEventActionEnum::OrbEventActionType>(entry->second.value),
                         static_cast<OrbEventActionEnum::OrbEventActionScope>(entry->second.scope),
                         id - MenuCommandIds::NewEventPerObject < MenuCommandIds::RangeSize);
}

void DlgProjectExplorer::CreateOrbEventObject(bool defaultName, OrbEventActionEnum::OrbEventActionType action,
                                              OrbEventActionEnum::OrbEventActionScope scope, bool oneEventPerObject)
{
    UILockRaise lock;
    AutoComplexUndo undo(StringHelp::Localize(L"New Event").c_str(), false);
    {
        CSmartPtr<IOrbObject> event;
        CSmartPtr<IOrbObject> currentAction;
        CSmartPtr<IOrbObject> firstEvent;
        int count = 0;
        for (HTREEITEM item = m_tree.GetFirstSelectedItem(); item; item = m_tree.GetNextSelectedItem(item))
        {
            if (!event)
            {
                event.Attach(priv::CreateOrbObject(OrbObjectType_Event, 0, GUID_NULL, 0));
                if (!event)
                    continue;
                if (ProjectManager::m_pInstance)
                    ProjectManager::m_pInstance->AddToDefaultWorkUnit(event);
                ++count;
                if (!firstEvent)
                    firstEvent = event;
            }
            if (defaultName)
                NameIfUnnamed(event, MakeEventName(true, nullptr, L""));
            else
            {
                if (!currentAction)
                    currentAction = EventHelpers::AddAction(event, action, scope);
                auto* eventAction = dynamic_cast<IOrbEventAction*>(currentAction.Get());
                if (eventAction)
                {
                    const CSmartPtr<IOrbObject> target = TargetOfItem(m_tree, item);
                    const CStdStr<wchar_t> objectName =
                        target && oneEventPerObject ? target->GetName() : CStdStr<wchar_t>();
                    NameIfUnnamed(event, MakeEventName(false, eventAction, objectName));
                    if (target)
                    {
                        const OrbObjectType targetType = target->GetObjectType();
                        const bool isGlobal =
                            OrbObjectHelpers::GetDefaultActionIsGlobalValue(action, targetType, false);
                        // An action that cannot act on this target keeps none.
                        if (EventHelpers::IsActionTypeValid(targetType, EventHelpers::GetActionType(currentAction)))
                        {
                            eventAction->SetReferenceProperty(PENames::rosTarget, target);
                            eventAction->SetVariantProperty(PENames::rosScope, OrbPropertyValue(isGlobal));
                        }
                    }
                }
            }
            if (oneEventPerObject)
                event = nullptr;
            // With scope 3 a single event shares one action, targeted again for each object.
            if (oneEventPerObject || scope != OrbEventActionEnum::ActionScope_All)
                currentAction = nullptr;
        }
        // A single new event is shown in the inspector; several are not.
        if (count == 1)
            OrbObjNotify::FireInspectNotification(firstEvent, -1, -1, true, NotifyHelper::InspectTab_Default, false,
                                                  true, true, nullptr);
        lock.Lower();
    }
}
