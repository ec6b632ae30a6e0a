// Dragging project objects: their drag data, the effects a drop may have and which one the keys
// ask for, the drop itself, and the tree's scrolling while a drag hovers at an edge.

#include "host/ClipboardHelpers.h"
#include "host/EventHelpers.h"
#include "host/OrbObjectDataSource.h"
#include "host/OrbObjectHelpers.h"
#include "host/StringHelp.h"
#include "host/UIObjectHelpers.h"
#include "host/Undo.h"
#include "platform/Menu.h"
#include "platform/TreeCtrl.h"
#include "platform/WindowSystem.h"
#include "sonarium/core/model/Project.h"
#include "sonarium/core/model/ProjectObject.h"

#include <algorithm>

void COrbObjectDataSource::Init(const std::vector<IOrbObject*>& objects)
{
    m_objects.clear();
    for (IOrbObject* object : objects)
        if (object)
            m_objects.emplace_back(object);
}

COrbObjectDataSource* COrbObjectDataSource::Get(COleDataObject* data)
{
    return data ? dynamic_cast<COrbObjectDataSource*>(data->GetSource()) : nullptr;
}

std::vector<IOrbObject*> COrbObjectDataSource::IOrbObjects() const
{
    std::vector<IOrbObject*> objects;
    for (const CSmartPtr<IOrbObject>& object : m_objects)
        objects.push_back(object.Get());
    return objects;
}

namespace
{
const ROString k_target("Target");
const ROString k_scope("Scope");

bool IsPlayable(const IOrbObject* object)
{
    return EventHelpers::IsActionTypeValid(object->GetObjectType(), OrbPropertyEnums::Action_Play);
}

// Links the objects to an event: one action playing each, as one undo step.
bool LinkToEvent(IOrbObject* event, const std::vector<IOrbObject*>& objects, std::vector<IOrbObject*>* created)
{
    AutoComplexUndo step(L"Link", false);
    bool any = false;
    for (IOrbObject* object : objects)
    {
        OrbObjectSmartPtr action =
            EventHelpers::AddAction(event, OrbEventActionEnum::ActionType_Play, OrbEventActionEnum::ActionScope_Target);
        auto* eventAction = dynamic_cast<IOrbEventAction*>(action.Get());
        if (!eventAction)
            continue;
        eventAction->SetReferenceProperty(k_target, object);
        // The scope a new Play action on this kind of object has anywhere else.
        eventAction->SetVariantProperty(k_scope, OrbPropertyValue(OrbObjectHelpers::GetDefaultActionIsGlobalValue(
                                                     OrbEventActionEnum::ActionType_Play, object->GetObjectType(), false)));
        any = true;
        if (created)
        {
            action->AddRef();
            created->push_back(action.Get());
        }
    }
    return any;
}

// The user's choice among the valid effects, from a menu at the drop point; none when dismissed.
DWORD AskEffect(DWORD valid, CPoint screenPoint)
{
    CMenu menu;
    menu.CreatePopupMenu();
    for (auto [effect, text] : {std::pair{DROPEFFECT_MOVE, L"Move Here"}, {DROPEFFECT_COPY, L"Copy Here"},
                                {DROPEFFECT_LINK, L"Link Here"}})
        if (valid & effect)
            menu.AppendMenu(MF_STRING, effect, StringHelp::Localize(text).c_str());
    menu.AppendMenu(MF_SEPARATOR);
    menu.AppendMenu(MF_STRING, 0x100, StringHelp::Localize(L"Cancel").c_str());
    const UINT chosen = menu.TrackPopupMenu(TPM_RETURNCMD, screenPoint.x, screenPoint.y, nullptr);
    return chosen == 0x100 ? DROPEFFECT_NONE : chosen;
}
} // namespace

DWORD ClipboardHelpers::ValidOperations(const GUID& target, OrbObjectType targetType,
                                        const std::set<OrbObjectType>& childTypes,
                                        const std::vector<IOrbObject*>& objects)
{
    if (objects.empty())
        return DROPEFFECT_NONE;
    if (targetType == OrbObjectType_Event)
        return std::all_of(objects.begin(), objects.end(), IsPlayable) ? DROPEFFECT_LINK : DROPEFFECT_NONE;
    DWORD operations = DROPEFFECT_MOVE | DROPEFFECT_COPY;
    for (IOrbObject* object : objects)
    {
        if (!childTypes.count(object->GetObjectType()) || *object->GetGUID() == target)
            return DROPEFFECT_NONE;
        const sn::ProjectObject* model = sn::AsProjectObject(object);
        const sn::ProjectObject* into = model ? model->GetProject()->Find(target) : nullptr;
        if (into && model->IsAncestorOf(into))
            operations &= ~DROPEFFECT_MOVE;
    }
    return operations;
}

DWORD ClipboardHelpers::DragEffect(DWORD operations, DWORD keyState)
{
    const bool control = keyState & MK_CONTROL;
    const bool shift = keyState & MK_SHIFT;
    const DWORD wanted = control && shift ? DROPEFFECT_LINK : control ? DROPEFFECT_COPY : DROPEFFECT_MOVE;
    if (operations & wanted)
        return wanted;
    // Without keys, a target that only links (an event) links.
    if (!control && !shift && operations == DROPEFFECT_LINK)
        return DROPEFFECT_LINK;
    return DROPEFFECT_NONE;
}

DWORD ClipboardHelpers::DropObjects(IOrbObject* target, COleDataObject* data, DWORD dropDefault, DWORD dropList,
                                    CPoint screenPoint, bool rightDrag, std::vector<IOrbObject*>* created)
{
    COrbObjectDataSource* source = COrbObjectDataSource::Get(data);
    if (!target || !source)
        return DROPEFFECT_NONE;
    const std::vector<IOrbObject*> objects = source->IOrbObjects();
    const DWORD effect = rightDrag ? AskEffect(dropList, screenPoint) : dropDefault;
    if (effect == DROPEFFECT_LINK)
        return target->GetObjectType() == OrbObjectType_Event && LinkToEvent(target, objects, created) ? effect
                                                                                                       : DROPEFFECT_NONE;
    if (effect != DROPEFFECT_MOVE && effect != DROPEFFECT_COPY)
        return DROPEFFECT_NONE;
    const auto operation = effect == DROPEFFECT_MOVE ? OrbObjectHelpers::Move : OrbObjectHelpers::Copy;
    return UIObjectHelpers::MoveOrCopyObjects(objects, target, operation, created) ? effect : DROPEFFECT_NONE;
}

DROPEFFECT ClipboardHelpers::OleDropTarget::OnDragEnter(CWnd* wnd, COleDataObject* data, DWORD keyState, CPoint point)
{
    m_rightDrag = (keyState & MK_RBUTTON) != 0;
    return COleDropTarget::OnDragEnter(wnd, data, keyState, point);
}

int CScrollTreeDropTarget::m_ihScrollDir = 0;
int CScrollTreeDropTarget::m_ivScrollDir = 0;
UINT_PTR CScrollTreeDropTarget::m_idScrollTimer = 0;
CTreeCtrl* CScrollTreeDropTarget::m_pScrollTreeCtrl = nullptr;

void CScrollTreeDropTarget::ScrollTimerProc(HWND, UINT, UINT_PTR, DWORD)
{
    // Down or up by a row, and sideways by a level of indentation, at each tick.
    if (!m_pScrollTreeCtrl)
        return;
    if (m_ivScrollDir)
        m_pScrollTreeCtrl->ScrollRows(m_ivScrollDir);
    if (m_ihScrollDir)
        m_pScrollTreeCtrl->ScrollToX(m_pScrollTreeCtrl->GetScrollX() + m_ihScrollDir * m_pScrollTreeCtrl->GetIndent());
}

void CScrollTreeDropTarget::CancelScrollTimer()
{
    if (m_idScrollTimer)
        ::KillTimer(nullptr, m_idScrollTimer);
    m_idScrollTimer = 0;
    m_ihScrollDir = m_ivScrollDir = 0;
}
