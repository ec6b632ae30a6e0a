#include "sonarium/core/model/ProjectEdit.h"

#include "host/Guid.h"
#include "host/Undo.h"
#include "host/Utf8.h"
#include "sonarium/core/model/EditGuard.h"
#include "sonarium/core/model/ModelNotify.h"
#include "sonarium/core/model/NodeRules.h"
#include "sonarium/core/model/ObjectKinds.h"
#include "sonarium/core/model/Project.h"
#include "sonarium/core/model/ViewsLock.h"
#include "sonarium/core/naming/NamingRules.h"
#include "sonarium/core/storage/ProjectStorage.h"
#include "sonarium/core/undo/UndoManager.h"

#include <functional>
#include <map>

namespace sn::ProjectEdit
{
namespace
{
void Record(std::unique_ptr<IUndoCommand> command, const wchar_t* name)
{
    if (auto* undo = dynamic_cast<UndoManager*>(IUndoMgr::m_instance))
        undo->Record(std::move(command), name);
}

bool IsFileKind(NodeType type)
{
    return type == PMTreeNode::WorkUnit || type == PMTreeNode::PhysicalFolder;
}

// The name on disk: a folder's own, a work unit's with its file's extension.
CStdStr<wchar_t> FileNameOf(NodeType type, const CStdStr<wchar_t>& name)
{
    return type == PMTreeNode::WorkUnit ? CStdStr<wchar_t>(name + Utf8::ToWide(kWorkUnitFileExtension)) : name;
}

IChangeGate* g_gate = nullptr;

// Whether the files that hold these objects may be changed: the gate asks about read-only ones.
bool MayChange(std::initializer_list<const ProjectObject*> holders, bool projectFile = false)
{
    return !g_gate || g_gate->MayChange(holders, projectFile);
}

// Puts a subtree into the hierarchy or takes it out, raising what views follow.
class StructureCommand : public IUndoCommand
{
public:
    StructureCommand(ProjectObject* parent, size_t index, ProjectObject* child, bool insert, bool move = false)
        : m_parent(parent), m_index(index), m_child(child), m_insert(insert), m_move(move)
    {
    }
    void Redo() override { m_insert ? Insert() : Remove(); }
    void Undo() override { m_insert ? Remove() : Insert(); }

    void Insert()
    {
        m_parent->RawInsertChild(m_index, m_child.Get());
        if (Project* project = m_parent->GetProject())
            project->Index(m_child.Get());
        Touch();
        // A work unit new to its place has a file to write.
        if (m_child->GetNodeType() == PMTreeNode::WorkUnit)
            MarkDirty(m_child.Get());
        notify::Object(notify::evChildAdded, m_parent.Get());
    }
    void Remove()
    {
        // A destroyed object is announced twice, before and after it leaves: views rebuild once.
        const ScopedViewsLock lock;
        // A moved object leaves its parent without being destroyed.
        if (!m_move)
            notify::Object(notify::evPreDestroy, m_child.Get());
        const size_t index = m_parent->IndexOf(m_child.Get());
        if (index >= m_parent->Children().size())
            return;
        if (Project* project = m_parent->GetProject())
            project->Unindex(m_child.Get());
        m_parent->RawRemoveChild(index);
        Touch();
        notify::Object(notify::evChildRemoved, m_parent.Get());
    }

private:
    void Touch()
    {
        MarkDirty(m_parent.Get());
        if (IsFileKind(m_child->GetNodeType()))
            if (Project* project = m_parent->GetProject())
                project->SetDirty(true);
    }

    CSmartPtr<ProjectObject> m_parent;
    size_t m_index;
    CSmartPtr<ProjectObject> m_child;
    bool m_insert;
    bool m_move;
};

// A change of one value, applied by a function given the value to set.
template <class T>
class ValueCommand : public IUndoCommand
{
public:
    ValueCommand(CSmartPtr<ProjectObject> object, T before, T after, std::function<void(ProjectObject*, const T&)> apply)
        : m_object(std::move(object)), m_before(std::move(before)), m_after(std::move(after)), m_apply(std::move(apply))
    {
    }
    void Redo() override { m_apply(m_object.Get(), m_after); }
    void Undo() override { m_apply(m_object.Get(), m_before); }

private:
    CSmartPtr<ProjectObject> m_object;
    T m_before;
    T m_after;
    std::function<void(ProjectObject*, const T&)> m_apply;
};

template <class T>
void Change(ProjectObject* object, T before, T after, std::function<void(ProjectObject*, const T&)> apply,
            const wchar_t* undoName)
{
    auto command = std::make_unique<ValueCommand<T>>(CSmartPtr<ProjectObject>(object), std::move(before),
                                                     std::move(after), std::move(apply));
    command->Redo();
    Record(std::move(command), undoName);
}

ProjectObject* CloneTree(const ProjectObject* source, Project* project, const CStdStr<wchar_t>& name)
{
    ProjectObject* copy = NewProjectObject(project, source->GetNodeType(), name, NewGuid());
    copy->RawSetColor(source->GetColor());
    copy->RawSetFlags(source->GetObjectFlags());
    copy->RawSetInclusionLinked(source->IsInclusionLinked());
    copy->m_includedEverywhere = source->m_includedEverywhere;
    copy->RawSetIncludedOn(source->IncludedOn());
    for (const auto& [key, value] : source->Properties())
        copy->RawSetProperty(key, value);
    for (const CSmartPtr<ProjectObject>& child : source->Children())
        copy->RawInsertChild(AtEnd, CloneTree(child.Get(), project, child->GetName()));
    return copy;
}
// Renames, checked already, as an undo step.
void RecordRename(ProjectObject* object, const CStdStr<wchar_t>& name)
{
    Change<CStdStr<wchar_t>>(
        object, object->GetName(), name,
        [](ProjectObject* o, const CStdStr<wchar_t>& value) {
            o->RawSetName(value);
            MarkDirty(o);
            if (IsFileKind(o->GetNodeType()) && o->GetProject())
                o->GetProject()->SetDirty(true);
            notify::Object(notify::evNameChanged, o);
        },
        L"Rename");
}

} // namespace

bool CanHold(const ProjectObject* parent, NodeType type)
{
    if (!parent)
        return false;
    const rules::NodeRule& rule =
        rules::RuleFor(parent->GetNodeType(), parent->GetCategory(), parent->IsTopWorkUnit());
    // Objects without nodes of their own belong to the object that shows them.
    switch (type)
    {
    case PMTreeNode::AudioSource:
        return parent->GetObjectType() == OrbObjectType_Sound;
    case PMTreeNode::EventAction:
        return parent->GetObjectType() == OrbObjectType_Event;
    case PMTreeNode::MusicPlaylistItem:
        // A playlist's sequences, then the items of a sequence.
        return parent->GetObjectType() == OrbObjectType_MusicPlaylistContainer ||
               (parent->GetObjectType() == OrbObjectType_MusicPlaylistItem && parent->Parent() &&
                parent->Parent()->GetObjectType() == OrbObjectType_MusicPlaylistContainer);
    case PMTreeNode::MusicClip:
        return parent->GetObjectType() == OrbObjectType_MusicTrack;
    default:
        return rule.children.count(type) != 0;
    }
}

bool IsValidName(const ProjectObject* object, NodeType type, const ProjectObject* parent,
                 const CStdStr<wchar_t>& name, std::wstring* why)
{
    const OrbObjectType objectType = rules::ObjectTypeOf(type);
    const naming::Result result = naming::Check(objectType, name, parent, object);
    if (result != ObjectName::NameValid)
    {
        if (why)
            *why = naming::Describe(result, objectType, name);
        return false;
    }
    // A folder "X.swu" beside a work unit "X" would be one path.
    if (IsFileKind(type) && parent)
        for (const CSmartPtr<ProjectObject>& sibling : parent->Children())
            if (sibling.Get() != object && IsFileKind(sibling->GetNodeType()) &&
                FileNameOf(sibling->GetNodeType(), sibling->GetName()).CompareNoCase(FileNameOf(type, name)) == 0)
            {
                if (why)
                    *why = L"A work unit's file and a folder here would have the same name.";
                return false;
            }
    return true;
}


ProjectObject* Create(ProjectObject* parent, NodeType type, const CStdStr<wchar_t>& name, size_t index, GUID const* id)
{
    // Nothing is made under an object the project no longer holds (a row a locked view still
    // shows after its object was deleted): it would be indexed with no place in the hierarchy.
    if (!parent || !parent->IsInProject())
        return nullptr;
    if (!CanHold(parent, type) || !IsValidName(nullptr, type, parent, name) || !EditGuard::AllowsInsert(parent, 1))
        return nullptr;
    Project* project = parent->GetProject();
    if (id && project && project->Find(*id))
        return nullptr;
    if (!MayChange({parent}, IsFileKind(type)))
        return nullptr;
    ProjectObject* object = NewProjectObject(project, type, name, id ? *id : NewGuid());
    CSmartPtr<ProjectObject> keep(object);
    // A new work unit has no file yet: it shows unsaved until the next save writes one.
    if (auto* unit = dynamic_cast<WorkUnitObject*>(object); unit && type == PMTreeNode::WorkUnit)
        unit->RawSetDirty(true);
    auto command = std::make_unique<StructureCommand>(parent, index, object, true);
    command->Redo();
    notify::Object(notify::evCreated, object);
    Record(std::move(command), L"New Object");
    return object;
}

bool Adopt(ProjectObject* object, ProjectObject* parent, size_t index)
{
    // An object may come in unnamed, to be named once it is in place (a new event is).
    if (!object || object->Parent() || !CanHold(parent, object->GetNodeType()) ||
        (!object->NameUtf8().empty() && !IsValidName(object, object->GetNodeType(), parent, object->GetName())) ||
        !EditGuard::AllowsInsert(parent, EditGuard::HeightOf(object)))
        return false;
    if (!MayChange({parent}, IsFileKind(object->GetNodeType())))
        return false;
    CSmartPtr<ProjectObject> keep(object);
    auto command = std::make_unique<StructureCommand>(parent, index, object, true);
    command->Redo();
    Record(std::move(command), L"New Object");
    return true;
}

bool Rename(ProjectObject* object, const CStdStr<wchar_t>& name)
{
    if (!object || !IsValidName(object, object->GetNodeType(), object->Parent(), name))
        return false;
    if (object->GetName() == name)
        return true;
    // A work unit's or folder's name is the project file's; anything else's, its unit's.
    if (!IsFileKind(object->GetNodeType()) && !EditGuard::AllowsChange(object))
        return false;
    if (!MayChange({object}, IsFileKind(object->GetNodeType())))
        return false;
    RecordRename(object, name);
    return true;
}

bool Delete(ProjectObject* object)
{
    ProjectObject* parent = object ? object->Parent() : nullptr;
    if (!parent || (!IsFileKind(object->GetNodeType()) && !EditGuard::AllowsChange(parent)) ||
        !MayChange({parent}, IsFileKind(object->GetNodeType())))
        return false;
    auto command = std::make_unique<StructureCommand>(parent, parent->IndexOf(object), object, false);
    command->Redo();
    Record(std::move(command), L"Delete");
    return true;
}

// Moves under parent with the name given (a new one only for a move to another parent).
static bool MoveAs(ProjectObject* object, ProjectObject* parent, size_t index, const CStdStr<wchar_t>& name)
{
    // Only what the project holds moves, and only within it: an object of a deleted subtree, which
    // the clipboard or the undo history may still hold, would come back unindexed.
    if (!object || !object->IsInProject() || !parent || !parent->IsInProject())
        return false;
    ProjectObject* from = object->Parent();
    if (!from || parent == object || object->IsAncestorOf(parent) || !CanHold(parent, object->GetNodeType()))
        return false;
    if (parent != from && !IsValidName(object, object->GetNodeType(), parent, name))
        return false;
    if (parent == from && name != object->GetName())
        return false;
    if ((!IsFileKind(object->GetNodeType()) && !EditGuard::AllowsChange(from)) ||
        !EditGuard::AllowsInsert(parent, EditGuard::HeightOf(object)))
        return false;
    if (!MayChange({from, parent}, IsFileKind(object->GetNodeType())))
        return false;
    CSmartPtr<ProjectObject> keep(object);
    const size_t oldIndex = from->IndexOf(object);
    if (parent == from && index != AtEnd && index > oldIndex)
        --index; // the index was counted with the object still in place
    // Leaving one parent and joining another undo as one step, and show as one change.
    const ScopedViewsLock lock;
    AutoComplexUndo step(L"Move", false);
    auto out = std::make_unique<StructureCommand>(from, oldIndex, object, false, true);
    auto in = std::make_unique<StructureCommand>(parent, index, object, true, true);
    out->Redo();
    in->Redo();
    Record(std::move(out), L"Move");
    Record(std::move(in), L"Move");
    // The new name is given once the object is in place, so that the name is checked there.
    if (name != object->GetName())
        RecordRename(object, name);
    return true;
}

bool Move(ProjectObject* object, ProjectObject* parent, size_t index)
{
    return object && MoveAs(object, parent, index, object->GetName());
}

bool MoveUnderFreeName(ProjectObject* object, ProjectObject* parent, size_t index)
{
    if (!object || !parent)
        return false;
    const bool elsewhere = object->Parent() != parent;
    return MoveAs(object, parent, index, elsewhere ? UniqueChildName(parent, object->GetName()) : object->GetName());
}

ProjectObject* Copy(ProjectObject* source, ProjectObject* parent, size_t index)
{
    if (!source || !parent || !parent->IsInProject() || !CanHold(parent, source->GetNodeType()) ||
        !EditGuard::AllowsInsert(parent, EditGuard::HeightOf(source)) ||
        !MayChange({parent}, IsFileKind(source->GetNodeType())))
        return nullptr;
    const CStdStr<wchar_t> name = UniqueChildName(parent, source->GetName());
    ProjectObject* copy = CloneTree(source, parent->GetProject(), name);
    CSmartPtr<ProjectObject> keep(copy);
    auto command = std::make_unique<StructureCommand>(parent, index, copy, true);
    command->Redo();
    notify::Object(notify::evCreated, copy);
    Record(std::move(command), L"Paste");
    return copy;
}

void SetIncluded(ProjectObject* object, GUID const& platform, bool included)
{
    if (!object || object->GetIncluded(platform) == included || !EditGuard::AllowsChange(object) ||
        !MayChange({object}))
        return;
    // The whole inclusion state is kept, so that undo also forgets a per-platform value that
    // did not exist before.
    using State = std::pair<bool, std::map<GUID, bool, GUIDLess>>;
    State before{object->m_includedEverywhere, object->IncludedOn()};
    State after = before;
    if (object->IsInclusionLinked() || platform == GUID_NULL)
        after.first = included;
    else
        after.second[platform] = included;
    Change<State>(
        object, std::move(before), std::move(after),
        [](ProjectObject* o, const State& value) {
            o->m_includedEverywhere = value.first;
            o->RawSetIncludedOn(value.second);
            MarkDirty(o);
            notify::Object(notify::evInclusionChanged, o);
        },
        L"Inclusion");
}

void SetInclusionLinked(ProjectObject* object, bool linked)
{
    if (!object || object->IsInclusionLinked() == linked || !EditGuard::AllowsChange(object) || !MayChange({object}))
        return;
    Change<bool>(
        object, !linked, linked,
        [](ProjectObject* o, const bool& value) {
            o->RawSetInclusionLinked(value);
            MarkDirty(o);
            notify::Object(notify::evInclusionChanged, o);
        },
        L"Link Inclusion");
}

void SetColor(ProjectObject* object, int color)
{
    if (!object || object->GetColor() == color || !EditGuard::AllowsChange(object) || !MayChange({object}))
        return;
    Change<int>(
        object, object->GetColor(), color,
        [](ProjectObject* o, const int& value) {
            o->RawSetColor(value);
            MarkDirty(o);
            notify::Object(notify::evColorChanged, o);
        },
        L"Color");
}

bool SetProperty(ProjectObject* object, const std::string& key, const std::wstring& value, ROString const* event,
                 ROString const* channel)
{
    if (!object)
        return false;
    if (object->GetProperty(key) == value)
        return true;
    if (!EditGuard::AllowsChange(object) || !MayChange({object}))
        return false;
    const ROString raised = event ? *event : ROString();
    const ROString on = channel ? *channel : notify::chObject;
    Change<std::wstring>(
        object, object->GetProperty(key), value,
        [key, raised, on](ProjectObject* o, const std::wstring& v) {
            o->RawSetProperty(key, v);
            MarkDirty(o);
            if (raised != ROString())
                notify::About(on, raised, o);
        },
        L"Property");
    return true;
}

bool SetSourceFile(ProjectObject* source, const std::wstring& file)
{
    if (!source || source->GetObjectType() != OrbObjectType_AudioSource || file.empty())
        return false;
    return SetProperty(source, "File", file, &notify::evSourceFileChanged);
}

bool SetActiveSource(ProjectObject* sound, ProjectObject* source)
{
    if (!sound || !source || source->Parent() != sound ||
        source->GetObjectType() != OrbObjectType_AudioSource)
        return false;
    return SetProperty(sound, SoundObject::ActiveSourceKey(SoundObject::LanguageOf(*source)),
                       Utf8::ToWide(GuidText::ToString(source->Id())), &notify::evActiveSourceChanged);
}

bool SetTrackType(ProjectObject* track, const std::wstring& type)
{
    if (!track || track->GetObjectType() != OrbObjectType_MusicTrack || type.empty())
        return false;
    if (track->GetProperty("TrackType") == type)
        return true;
    if (!EditGuard::AllowsChange(track) || !MayChange({track}))
        return false;
    Change<std::wstring>(
        track, track->GetProperty("TrackType"), type,
        [](ProjectObject* o, const std::wstring& value) {
            o->RawSetProperty("TrackType", value);
            MarkDirty(o);
            notify::Music(MusicNotify::rosTrackTypeChanged, o);
        },
        L"Track Type");
    return true;
}

CStdStr<wchar_t> UniqueChildName(const ProjectObject* parent, const CStdStr<wchar_t>& name)
{
    return naming::MakeUnique(name, parent, nullptr);
}

void SetChangeGate(IChangeGate* gate)
{
    g_gate = gate;
}

void MarkDirty(ProjectObject* object)
{
    if (!object)
        return;
    WorkUnitObject* unit = object->OwningWorkUnit();
    if (!unit)
    {
        if (object->GetProject())
            object->GetProject()->SetDirty(true);
        return;
    }
    // An unloaded unit's file is carried along as it is: nothing of it is unsaved.
    if (!unit->IsLoaded())
        return;
    if (!unit->IsDirty())
    {
        unit->RawSetDirty(true);
        notify::WorkUnit(notify::evDirtyChanged, unit);
    }
}
} // namespace sn::ProjectEdit
