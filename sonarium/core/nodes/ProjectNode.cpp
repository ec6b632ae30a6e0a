#include "sonarium/core/nodes/ProjectNode.h"

#include "host/ObjectIcons.h"
#include "host/Utf8.h"
#include "sonarium/core/audio/VoiceLanguages.h"
#include "sonarium/core/host/Host.h"
#include "sonarium/core/model/CurrentState.h"
#include "sonarium/core/model/NodeRules.h"
#include "sonarium/core/model/Project.h"
#include "sonarium/core/model/ProjectEdit.h"
#include "sonarium/core/storage/StorageState.h"
#include "sonarium/core/naming/NamingRules.h"
#include "sonarium/core/nodes/RetiredNodes.h"

#include <array>
#include <unordered_map>

namespace sn
{
namespace
{
ObjectIcons::IconType IconOf(PMTreeNode::NodeType type)
{
    using I = ObjectIcons;
    using enum PMTreeNode::NodeType;
    switch (type)
    {
    case PhysicalFolder:
        return I::IconType_PhysicalFolder;
    case WorkUnit:
        return I::IconType_WorkUnit;
    case Folder:
        return I::IconType_Folder;
    case ActorMixer:
        return I::IconType_ActorMixer;
    case SwitchContainer:
        return I::IconType_SwitchContainer;
    case RandomContainer:
        return I::IconType_RandomContainer;
    case SequenceContainer:
        return I::IconType_SequenceContainer;
    case BlendContainer:
        return I::IconType_BlendContainer;
    case SoundSFX:
        return I::IconType_SoundSFX;
    case SoundVoice:
        return I::IconType_SoundVoice;
    case Bus:
        return I::IconType_Bus;
    case AuxBus:
        return I::IconType_AuxBus;
    case AudioSource:
        return I::IconType_AudioSource;
    case EventAction:
        return I::IconType_EventAction;
    case Event:
        return I::IconType_Event;
    case SoundBank:
        return I::IconType_SoundBank;
    case Switch:
        return I::IconType_Switch;
    case SwitchGroup:
        return I::IconType_SwitchGroup;
    case State:
        return I::IconType_State;
    case StateGroup:
        return I::IconType_StateGroup;
    case GameParameter:
        return I::IconType_GameParameter;
    case EffectPlugin:
        return I::IconType_Effect;
    case MixerPlugin:
        return I::IconType_MixerPlugin;
    case AudioDevice:
        return I::IconType_AudioDevice;
    case SourcePlugin:
        return I::IconType_SourcePlugin;
    case AuditionSession:
        return I::IconType_AuditionSession;
    case MusicSwitchContainer:
        return I::IconType_MusicSwitchContainer;
    case MusicPlaylistContainer:
        return I::IconType_MusicPlaylistContainer;
    case MusicSegment:
        return I::IconType_MusicSegment;
    case MusicTrack:
        return I::IconType_MusicTrack;
    case MusicPlaylistItem:
        return I::IconType_MusicPlaylistItem;
    case MixingSession:
        return I::IconType_MixingSession;
    case Trigger:
        return I::IconType_Trigger;
    case ControlSurfaceSession:
        return I::IconType_ControlSurfaceSession;
    case MusicClip:
        return I::IconType_MusicClip;
    case Query:
        return I::IconType_Query;
    default:
        return I::IconType_None;
    }
}
} // namespace

ProjectNode::ProjectNode(PMTreeNode* parent, ProjectObject* object)
    : TreeNodeWithObject(parent, object, object->GetNodeType()), m_model(object),
      m_readAt(ProjectObject::ChangeClock()), m_shownStamp(0)
{
    // Born changed, and so are the ancestors: a node stamped now must find them stamped too.
    NoteShownChange();
    m_rules = &rules::RuleFor(object->GetNodeType(), object->GetCategory(), object->IsTopWorkUnit());
    // A category's root starts open, as a fresh view shows it.
    m_expanded = object->IsTopWorkUnit();
    ReadVisuals();
    ReadInclusion();
    m_shownAt = ShownStateGeneration();
}

CStdStr<wchar_t> ProjectNode::GetDisplayName() const
{
    return Utf8::ToWide(m_displayName);
}

int ProjectNode::GetIconType() const
{
    if (m_unreadable)
        return ObjectIcons::IconType_WorkUnitUnreadable;
    // A category's root is not a work unit the user made: it has an icon of its own.
    if (m_model->IsTopWorkUnit())
        return ObjectIcons::IconType_CategoryRoot;
    return IconOf(m_type);
}

bool ProjectNode::HasNode(const ProjectObject* object)
{
    return ProjectObject::IsHierarchyMember(object->GetObjectType());
}

uint32_t ProjectNode::PaletteColor(int index)
{
    static const std::array<uint32_t, ProjectObject::kColorCount> palette{0x7A7A7A, 0x3F6FD8, 0x2E9FD6, 0x23A88D, 0x3CA63C, 0x8DB32B,
                                                  0xC9B21C, 0xE08A1E, 0xD9582B, 0xC93A3A, 0xC23A7E, 0xA03FC2,
                                                  0x6E4BD1, 0x8C6A4A, 0x4F6B5B, 0xB0B0B0};
    return index >= 0 && index < static_cast<int>(palette.size()) ? palette[static_cast<size_t>(index)]
                                                                  : 0xFFFFFFFF;
}

bool ProjectNode::HasChildren() const
{
    return m_childrenRead ? !m_children.empty() : m_model->HasMemberChildren();
}

void ProjectNode::ReadChildren(std::vector<PMTreeNode*>& children)
{
    for (const CSmartPtr<ProjectObject>& child : m_model->Children())
        if (HasNode(child.Get()))
            children.push_back(new ProjectNode(this, child.Get()));
}

bool ProjectNode::DoCreateChild(NodeType type, CStdStr<wchar_t> const& name, GUID* outGuid)
{
    // The proposed name is made to follow the naming rules among the new siblings.
    std::wstring valid = name;
    naming::MakeValid(rules::ObjectTypeOf(type), valid, m_model, nullptr);
    ProjectObject* created = ProjectEdit::Create(m_model, type, valid);
    if (created && outGuid)
        *outGuid = created->Id();
    return created != nullptr;
}

bool ProjectNode::AcceptsParentType(NodeType type) const
{
    if (!m_rules->parents.count(type))
        return false;
    // The new parent takes this node's place, so the current parent must be able to hold it.
    const ProjectObject* holder = m_model->Parent();
    return holder && ProjectEdit::CanHold(holder, type);
}

void ProjectNode::SetIncluded(bool include, bool)
{
    ProjectEdit::SetIncluded(m_model, CurrentPlatform(), include);
}

bool ProjectNode::MarkShownChange()
{
    const uint32_t now = ProjectObject::ChangeClock();
    if (m_shownStamp == now)
        return false;
    m_shownStamp = now;
    return true;
}

void ProjectNode::ReadVisuals()
{
    const int icon = GetIconType();
    m_displayName = m_model->NameUtf8();
    m_unreadable = false;
    m_languageExcluded = !voices::IsIncludedInLanguage(m_model, CurrentLanguage());
    if (auto* unit = dynamic_cast<WorkUnitObject*>(m_model))
    {
        if (unit->IsDirty())
            m_displayName += "*"; // unsaved changes
        if (!unit->IsLoaded())
        {
            // A file that failed to load is not one the user chose to unload.
            m_unreadable = m_model->GetProject() && IsWorkUnitBroken(*m_model->GetProject(), unit);
            m_displayName += m_unreadable ? " (unreadable)" : " (unloaded)";
        }
    }
    if (GetIconType() != icon)
    {
        NoteShownChange();
        NoteIconChange();
    }
}

int ProjectNode::GetOverlayIcon() const
{
    Host* host = Host::Get();
    if (!host || m_type != WorkUnit)
        return ObjectIcons::IconType_None;
    switch (host->SourceControl().StatusOf(ID()))
    {
    case FileStatus::Modified:
        return ObjectIcons::IconType_OverlayModified;
    case FileStatus::Added:
        return ObjectIcons::IconType_OverlayAdded;
    case FileStatus::Unversioned:
        return ObjectIcons::IconType_OverlayUnversioned;
    case FileStatus::None:
        break;
    }
    return ObjectIcons::IconType_None;
}

uint32_t ProjectNode::GetColor() const
{
    int color = -1;
    for (const ProjectObject* object = m_model; object && color < 0; object = object->Parent())
        color = object->GetColor();
    return PaletteColor(color);
}

void ProjectNode::ReadInclusion()
{
    m_excluded = !m_model->IsIncludedOnPlatform(CurrentPlatform(), 0);
}

void ProjectNode::RefreshName()
{
    ReadVisuals();
}

void ProjectNode::RefreshVisualState()
{
    ReadVisuals();
    ReadInclusion();
}

void ProjectNode::RefreshPF(GuidSet& pending)
{
    ReadInclusion();
    pending.erase(ID());
    for (PMTreeNode* child : m_children)
        child->RefreshPF(pending);
}

void ProjectNode::Refresh(bool force, unsigned long flags)
{
    RefreshSubtree(force, flags, ProjectObject::AdvanceChangeClock());
}

void ProjectNode::RefreshSubtree(bool force, unsigned long flags, uint32_t reading)
{
    // A subtree in which nothing changed since it was read has nothing new to show: what a node
    // shows (name, unsaved and loaded marks, language) is stamped on its object when it changes.
    // Only a refresh of every row's inclusion has to visit it, or a change of what rows show that
    // no object's stamp records (a platform or language switched). An inclusion changed on the
    // node's own object stamps it: its subtree is read again from here.
    const bool outOfDate = IsOutOfDate();
    const bool stale = m_shownAt != ShownStateGeneration();
    if (!outOfDate && !stale && !(flags & 8))
        return;
    // A forced refresh re-reads what the node shows too: names changed while the views were
    // locked are otherwise only applied by the visual bit, and the view may keep fewer bits than
    // were raised while a label is edited.
    if (force || (flags & 4) || stale || outOfDate)
        ReadVisuals();
    if ((flags & 8) || stale)
        ReadInclusion();
    if (stale)
        m_shownAt = ShownStateGeneration();
    else if (outOfDate)
    {
        // An inclusion changed here since the last reading: the rows below have no stamp of it.
        const uint32_t included = InclusionChangedAt(m_model);
        if (included != 0 && included >= m_readAt)
            ReadSubtreeState();
    }
    if ((flags & 3) && outOfDate)
        SyncChildren(force, flags, reading);
    else
        for (PMTreeNode* child : m_children)
            static_cast<ProjectNode*>(child)->RefreshSubtree(force, flags, reading);
    // Names and children below are now those of the project, as of the reading.
    if ((flags & 3) && (force || (flags & 4)))
        m_readAt = reading;
}

void ProjectNode::ReadSubtreeState()
{
    // Depth-first over the nodes read so far, shown or not: what a row shows of inclusion
    // comes from its ancestors too.
    std::vector<ProjectNode*> pending{this};
    while (!pending.empty())
    {
        ProjectNode* node = pending.back();
        pending.pop_back();
        node->ReadVisuals();
        node->ReadInclusion();
        for (PMTreeNode* child : node->m_children)
            pending.push_back(static_cast<ProjectNode*>(child));
    }
}

void ProjectNode::SyncChildren(bool force, unsigned long flags, uint32_t reading)
{
    if (!m_childrenRead)
        return; // read when first needed, from the project as it is then
    auto modelOf = [](PMTreeNode* node) { return static_cast<const ProjectNode*>(node)->m_model; };
    // Most refreshes find the children as they were and in the same order: they are matched in
    // step, and from the first difference on, the nodes left are looked up by their object.
    std::vector<PMTreeNode*> children;
    children.reserve(m_children.size());
    std::unordered_map<const ProjectObject*, PMTreeNode*> setAside;
    size_t next = 0;
    for (const CSmartPtr<ProjectObject>& object : m_model->Children())
    {
        if (!HasNode(object.Get()))
            continue;
        PMTreeNode* node = nullptr;
        if (next < m_children.size() && modelOf(m_children[next]) == object.Get())
            node = m_children[next++];
        else
        {
            for (; next < m_children.size(); ++next)
                setAside.emplace(modelOf(m_children[next]), m_children[next]);
            if (auto it = setAside.find(object.Get()); it != setAside.end())
            {
                node = it->second;
                setAside.erase(it);
            }
        }
        if (node)
        {
            children.push_back(node);
            static_cast<ProjectNode*>(node)->RefreshSubtree(force, flags, reading);
        }
        else
            children.push_back(new ProjectNode(this, object.Get()));
    }
    for (; next < m_children.size(); ++next)
        nodes::Retire(m_children[next]);
    for (auto& [object, node] : setAside)
        nodes::Retire(node);
    if (children != m_children)
        NoteShownChange();
    m_children = std::move(children);
}

void ProjectNode::ExpandAndSelectNode(GUID const& id)
{
    Project* project = m_model->GetProject();
    ProjectObject* target = project ? project->Find(id) : nullptr;
    if (!target || (target != m_model && !m_model->IsAncestorOf(target)))
        return;
    // The path from this node's object down to the target.
    std::vector<ProjectObject*> path;
    for (ProjectObject* object = target; object != m_model; object = object->Parent())
        path.push_back(object);
    PMTreeNode* node = this;
    for (auto it = path.rbegin(); it != path.rend(); ++it)
    {
        node->IsExpanded(true);
        PMTreeNode* next = nullptr;
        for (PMTreeNode* child : node->Children())
            if (child->ID() == (*it)->Id())
                next = child;
        if (!next)
            return; // the target has no node of its own
        node = next;
    }
    node->IsSelected(true);
}
} // namespace sn

TreeNodeWithObject::TreeNodeWithObject(PMTreeNode* parent, IOrbObject* object, NodeType type)
    : PMTreeNode(parent, type), m_object(object)
{
}

PMTreeNode::NodeType TreeNodeWithObject::GetNodeType(IOrbObject* object)
{
    const sn::ProjectObject* model = sn::AsProjectObject(object);
    return model ? model->GetNodeType() : (object ? ConvertObjectType(object->GetObjectType()) : None);
}

PMTreeNode::NodeType TreeNodeWithObject::ConvertObjectType(OrbObjectType type)
{
    return sn::rules::NodeTypeOf(type);
}

OrbObjectType TreeNodeWithObject::ConvertObjectType(NodeType type)
{
    return sn::rules::ObjectTypeOf(type);
}

TreeNodeWithObject* NodeFactory::CreateNode(PMTreeNode* parent, IOrbObject* object)
{
    sn::ProjectObject* model = sn::AsProjectObject(object);
    return model ? new sn::ProjectNode(parent, model) : nullptr;
}
