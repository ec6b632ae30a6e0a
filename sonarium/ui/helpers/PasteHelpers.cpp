// Pasting the object clipboard: where the objects go, and moving or copying them there as one
// undo step.

#include "host/ClipboardHelpers.h"
#include "host/DragDropHelpers.h"
#include "host/GlobalProp.h"
#include "host/ServiceProvider.h"
#include "host/UIObjectHelpers.h"
#include "host/Undo.h"
#include "sonarium/core/model/CurrentState.h"
#include "sonarium/core/model/ProjectEdit.h"

namespace
{
using OrbObjectHelpers::ObjectsOperation;

// Still part of the project: deleted objects, and objects of a deleted subtree, are not.
bool IsPlaced(const sn::ProjectObject* object)
{
    return object && object->IsInProject();
}

bool CanReceive(const sn::ProjectObject* container, const std::vector<sn::ProjectObject*>& objects,
                ObjectsOperation operation)
{
    if (!container)
        return false;
    for (const sn::ProjectObject* object : objects)
    {
        if (!sn::ProjectEdit::CanHold(container, object->GetNodeType()))
            return false;
        // A move may not put an object inside itself.
        if (operation == OrbObjectHelpers::Move && (object == container || object->IsAncestorOf(container)))
            return false;
    }
    return true;
}

std::vector<sn::ProjectObject*> PlacedModels(const std::vector<IOrbObject*>& objects)
{
    std::vector<sn::ProjectObject*> models;
    for (IOrbObject* object : objects)
        if (sn::ProjectObject* model = sn::AsProjectObject(object); IsPlaced(model))
            models.push_back(model);
    return models;
}
} // namespace

IOrbObject* UIObjectHelpers::GetDestinationContainer(const std::vector<IOrbObject*>& objects,
                                                     std::vector<IOrbObject*>& targets, ObjectsOperation operation)
{
    // Several targets give no single place to paste to.
    if (targets.size() != 1 || objects.empty())
        return nullptr;
    const std::vector<sn::ProjectObject*> models = PlacedModels(objects);
    // An object that left the project meanwhile makes the whole paste void.
    if (models.size() != objects.size())
        return nullptr;
    sn::ProjectObject* target = sn::AsProjectObject(targets.front());
    if (!IsPlaced(target))
        return nullptr;
    if (CanReceive(target, models, operation))
        return target;
    // Pasted onto one of the objects' would-be siblings, they go next to it.
    if (target && CanReceive(target->Parent(), models, operation))
        return target->Parent();
    return nullptr;
}

bool UIObjectHelpers::MoveOrCopyObjects(const std::vector<IOrbObject*>& objects, IOrbObject* destination,
                                        ObjectsOperation operation, std::vector<IOrbObject*>* newObjects)
{
    sn::ProjectObject* container = sn::AsProjectObject(destination);
    const std::vector<sn::ProjectObject*> models = PlacedModels(objects);
    if (!container || models.empty() || !CanReceive(container, models, operation))
        return false;
    CXAutoWaitCursor wait;
    // Views rebuild once, when the lock falls, not once per object.
    ScopedGlobalPropRaise lock(sn::propLockUIUpdate);
    AutoComplexUndo step(operation == OrbObjectHelpers::Move ? L"Move" : L"Paste", false);
    bool any = false;
    for (sn::ProjectObject* object : models)
    {
        if (operation == OrbObjectHelpers::Move)
        {
            any |= object->Parent() == container || sn::ProjectEdit::MoveUnderFreeName(object, container);
            continue;
        }
        if (sn::ProjectObject* copy = sn::ProjectEdit::Copy(object, container))
        {
            any = true;
            if (newObjects)
            {
                copy->AddRef();
                newObjects->push_back(copy);
            }
        }
    }
    return any;
}

bool ClipboardHelpers::CanPasteObjects(std::vector<IOrbObject*>& targets)
{
    auto* clipboard = sn::g_serviceProviderInstance
                          ? sn::g_serviceProviderInstance->Get<sn::IObjectClipboardService>(sn::ServiceId_ObjectClipboard)
                          : nullptr;
    if (!clipboard)
        return false;
    std::vector<IOrbObject*> objects;
    clipboard->GetObjects(objects);
    const auto operation = (clipboard->GetFlags() & 0x20) ? OrbObjectHelpers::Move : OrbObjectHelpers::Copy;
    const bool can = UIObjectHelpers::GetDestinationContainer(objects, targets, operation) != nullptr;
    for (IOrbObject* object : objects)
        object->Release();
    return can;
}
