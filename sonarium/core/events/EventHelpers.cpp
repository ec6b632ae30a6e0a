// The host's operations on events and actions, over its action table.

#include "host/EventHelpers.h"

#include "host/OrbObjectHelpers.h"
#include "host/Utf8.h"
#include "sonarium/core/events/ActionTable.h"
#include "sonarium/core/model/Project.h"
#include "sonarium/core/model/ProjectEdit.h"

namespace
{
const sn::actions::ActionInfo* ActionOf(const IOrbObject* action)
{
    const sn::ProjectObject* model = sn::AsProjectObject(action);
    return model && model->GetObjectType() == OrbObjectType_EventAction
               ? sn::actions::FindKey(Utf8::FromWide(model->GetProperty("ActionType")))
               : nullptr;
}
} // namespace

namespace EventHelpers
{
OrbObjectSmartPtr AddAction(IOrbObject* event, OrbEventActionEnum::OrbEventActionType type,
                            OrbEventActionEnum::OrbEventActionScope scope)
{
    sn::ProjectObject* owner = sn::AsProjectObject(event);
    const sn::actions::ActionInfo* info = sn::actions::Find(type, scope);
    // Actions are made in events of the project, so that making them can be undone.
    if (!info || !owner || owner->GetObjectType() != OrbObjectType_Event || !owner->IsInProject())
        return nullptr;
    CSmartPtr<sn::ProjectObject> action(
        sn::NewProjectObject(owner->GetProject(), PMTreeNode::EventAction, info->name, sn::NewGuid()));
    action->RawSetProperty("ActionType", Utf8::ToWide(info->key));
    if (!sn::ProjectEdit::Adopt(action.Get(), owner))
        return nullptr;
    return OrbObjectSmartPtr(action.Get());
}

OrbPropertyEnums::ActionType GetActionType(const IOrbObject* action)
{
    const sn::actions::ActionInfo* info = ActionOf(action);
    return info ? info->type : OrbPropertyEnums::Action_None;
}

bool IsActionTypeValid(OrbObjectType targetType, OrbPropertyEnums::ActionType type)
{
    const sn::actions::ActionInfo* info = sn::actions::Find(type);
    return info && sn::actions::CanTarget(*info, targetType);
}
} // namespace EventHelpers

namespace OrbObjectHelpers
{
bool GetDefaultActionIsGlobalValue(OrbEventActionEnum::OrbEventActionType type, OrbObjectType targetType, bool)
{
    return sn::actions::IsGlobalByDefault(type, targetType);
}

CStdStr<wchar_t> ConvertActionTypeToString(const IOrbEventAction* action)
{
    if (const sn::actions::ActionInfo* info = ActionOf(action))
        return info->name;
    return action ? action->GetName() : CStdStr<wchar_t>();
}

CStdStr<wchar_t> ConvertActionTypeToString(OrbEventActionEnum::OrbEventActionType type,
                                           OrbEventActionEnum::OrbEventActionScope scope)
{
    const sn::actions::ActionInfo* info = sn::actions::Find(type, scope);
    if (!info)
        info = sn::actions::Find(type, OrbEventActionEnum::ActionScope_Target);
    return info ? info->name : L"";
}
} // namespace OrbObjectHelpers
