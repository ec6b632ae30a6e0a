// A new parent inserted above nodes: the new object takes the first node's place under its parent,
// and the nodes' objects move under it.

#include "host/TreeNodeWithObject.h"

#include "host/Undo.h"
#include "sonarium/core/model/NodeRules.h"
#include "sonarium/core/model/ProjectEdit.h"
#include "sonarium/core/naming/NamingRules.h"
#include "sonarium/core/undo/UndoManager.h"

#include <algorithm>
#include <unordered_set>

namespace
{
// The objects to move: those of the nodes, without any that moves along with an ancestor.
bool ObjectsToMove(const std::vector<PMTreeNode*>& nodes, std::vector<sn::ProjectObject*>& objects)
{
    for (PMTreeNode* node : nodes)
    {
        auto* withObject = dynamic_cast<TreeNodeWithObject*>(node);
        sn::ProjectObject* object = sn::AsProjectObject(withObject ? withObject->GetObject() : nullptr);
        if (!object || !object->Parent())
            return false;
        if (std::find(objects.begin(), objects.end(), object) == objects.end())
            objects.push_back(object);
    }
    const std::unordered_set<const sn::ProjectObject*> chosen(objects.begin(), objects.end());
    std::erase_if(objects, [&](const sn::ProjectObject* object) {
        for (const sn::ProjectObject* up = object->Parent(); up; up = up->Parent())
            if (chosen.count(up))
                return true;
        return false;
    });
    return !objects.empty();
}

// Whether every object can live under a new parent of that type, with no two of the same name.
bool CanGather(const std::vector<sn::ProjectObject*>& objects, PMTreeNode::NodeType type, const sn::ProjectObject* holder)
{
    const PMTreeNode::KindRules& rule = sn::rules::RuleFor(type, holder->GetCategory(), false);
    std::unordered_set<std::string> names;
    for (const sn::ProjectObject* object : objects)
    {
        if (!rule.children.count(object->GetNodeType()))
            return false;
        // Names clash without regard to ASCII case.
        std::string name = object->NameUtf8();
        std::transform(name.begin(), name.end(), name.begin(),
                       [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
        if (!names.insert(std::move(name)).second)
            return false;
    }
    return true;
}
} // namespace

bool TreeNodeWithObject::AddParentToNodes(std::vector<PMTreeNode*>& nodes, NodeType type, const CStdStr<wchar_t>& name,
                                          GUID* outGuid)
{
    if (outGuid)
        *outGuid = GUID_NULL;
    std::vector<sn::ProjectObject*> objects;
    if (!ObjectsToMove(nodes, objects))
        return false;
    sn::ProjectObject* holder = objects.front()->Parent();
    if (!sn::ProjectEdit::CanHold(holder, type) || !CanGather(objects, type, holder))
        return false;

    sn::ProjectObject* parent = nullptr;
    {
        AutoComplexUndo step(L"New Parent", false);
        std::wstring valid = name;
        sn::naming::MakeValid(sn::rules::ObjectTypeOf(type), valid, holder, nullptr);
        parent = sn::ProjectEdit::Create(holder, type, valid, holder->IndexOf(objects.front()));
        if (!parent)
            return false;
        for (sn::ProjectObject* object : objects)
            sn::ProjectEdit::Move(object, parent);
    }
    if (NeedUndoResetWhenAddingParent(type))
        if (auto* undo = dynamic_cast<sn::UndoManager*>(IUndoMgr::m_instance))
            undo->Clear();
    if (outGuid)
        *outGuid = parent->Id();
    return true;
}

bool TreeNodeWithObject::NeedUndoResetWhenAddingParent(NodeType type)
{
    // Gathering work units into a new folder changes where their files live: the history starts
    // afresh, as after loading a work unit, rather than offering to move files back.
    return type == WorkUnit || type == PhysicalFolder;
}
