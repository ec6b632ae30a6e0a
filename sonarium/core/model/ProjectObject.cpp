#include "sonarium/core/model/ProjectObject.h"

#include "host/Utf8.h"
#include "sonarium/core/model/ModelNotify.h"
#include "sonarium/core/model/NodeRules.h"
#include "sonarium/core/model/ObjectKinds.h"
#include "sonarium/core/model/Project.h"
#include "sonarium/core/model/ProjectEdit.h"
#include "sonarium/core/naming/NamingRules.h"

#include <algorithm>

namespace sn
{
ProjectObject::ProjectObject(Project* project, GUID const& id, NodeType nodeType, OrbObjectType objectType,
                             CStdStr<wchar_t> name)
    : m_project(project), m_id(id), m_name(Utf8::FromWide(name)), m_nodeType(static_cast<uint16_t>(nodeType)),
      m_objectType(static_cast<uint16_t>(objectType))
{
}

ProjectObject::~ProjectObject()
{
    for (const CSmartPtr<ProjectObject>& child : m_children)
        child->m_parent = nullptr;
}

void ProjectObject::AddRef() const
{
    ++m_refs;
}

void ProjectObject::Release() const
{
    if (--m_refs == 0)
        delete this;
}

IOrbObject* ProjectObject::GetParentObject() const
{
    if (m_parent)
        m_parent->AddRef();
    return m_parent;
}

bool ProjectObject::IsPropertyLinked(const PropertyKey&) const
{
    return m_inclusionLinked;
}

void ProjectObject::SetPropertyLinked(const PropertyKey&, bool link)
{
    ProjectEdit::SetInclusionLinked(this, link);
}

bool ProjectObject::IsIncludedOnPlatform(const GUID& platform, int) const
{
    // An object is excluded on a platform when it or any ancestor is.
    for (const ProjectObject* object = this; object; object = object->m_parent)
        if (!object->GetIncluded(platform))
            return false;
    return true;
}

bool ProjectObject::GetIncluded(GUID const& platform) const
{
    if (m_inclusionLinked)
        return m_includedEverywhere;
    const PlatformInclusion& includedOn = IncludedOn();
    auto it = includedOn.find(platform);
    return it == includedOn.end() ? m_includedEverywhere : it->second;
}

const ProjectObject::PlatformInclusion& ProjectObject::IncludedOn() const
{
    static const PlatformInclusion none;
    return m_extras ? m_extras->includedOn : none;
}

const ProjectObject::PropertyMap& ProjectObject::Properties() const
{
    static const PropertyMap none;
    return m_extras ? m_extras->properties : none;
}

ProjectObject::Extras& ProjectObject::MutableExtras()
{
    if (!m_extras)
        m_extras = std::make_unique<Extras>();
    return *m_extras;
}

void ProjectObject::TrimExtras()
{
    if (m_extras && m_extras->includedOn.empty() && m_extras->properties.empty() &&
        m_extras->category == OrbObjectCategories::None)
        m_extras.reset();
}

IOrbObject* ProjectObject::GetOwnerObject() const
{
    // Sources, actions and clips are shown through the object that holds them.
    switch (GetObjectType())
    {
    case OrbObjectType_AudioSource:
    case OrbObjectType_EventAction:
    case OrbObjectType_MusicClip:
        return m_parent;
    case OrbObjectType_MusicPlaylistItem:
        // A playlist's sequences and items are shown by their playlist container.
        for (ProjectObject* at = m_parent; at; at = at->m_parent)
            if (at->GetObjectType() == OrbObjectType_MusicPlaylistContainer)
                return at;
        return nullptr;
    default:
        return nullptr;
    }
}

CStdStr<wchar_t> ProjectObject::GetName() const
{
    return Utf8::ToWide(m_name);
}

bool ProjectObject::SetName(const CStdStr<wchar_t>& name)
{
    // A module's rename is a proposal: the host makes it follow the naming rules, so that two
    // events made from the same object get two names. The user's renames are checked first.
    std::wstring valid = name;
    naming::MakeValid(GetObjectType(), valid, m_parent, this);
    return ProjectEdit::Rename(this, valid);
}

void ProjectObject::BeginChangeNotification(int kind)
{
    notify::HoldChanges(this, kind);
}

void ProjectObject::EndChangeNotification(int kind)
{
    notify::ReleaseChanges(this, kind);
}

void ProjectObject::RawSetName(const CStdStr<wchar_t>& name)
{
    m_name = Utf8::FromWide(name);
    if (m_project)
        m_project->Names().Renamed(this);
    Touch();
}

size_t ProjectObject::IndexOf(const ProjectObject* child) const
{
    auto it = std::find_if(m_children.begin(), m_children.end(),
                           [&](const CSmartPtr<ProjectObject>& c) { return c.Get() == child; });
    return static_cast<size_t>(it - m_children.begin());
}

bool ProjectObject::IsAncestorOf(const ProjectObject* other) const
{
    for (const ProjectObject* up = other ? other->m_parent : nullptr; up; up = up->m_parent)
        if (up == this)
            return true;
    return false;
}

bool ProjectObject::IsInProject() const
{
    return m_project && m_project->Find(m_id) == this;
}

OrbObjectCategories::Category ProjectObject::GetCategory() const
{
    const ProjectObject* top = this;
    while (top->m_parent)
        top = top->m_parent;
    return top->m_extras ? top->m_extras->category : OrbObjectCategories::None;
}

WorkUnitObject* ProjectObject::OwningWorkUnit() const
{
    for (const ProjectObject* object = this; object; object = object->m_parent)
    {
        auto* unit = dynamic_cast<WorkUnitObject*>(const_cast<ProjectObject*>(object));
        if (unit && unit->IsFile())
            return unit;
    }
    return nullptr;
}

bool ProjectObject::IsTopWorkUnit() const
{
    return !m_parent && GetObjectType() == OrbObjectType_WorkUnit &&
           GetCategory() != OrbObjectCategories::None;
}

std::wstring ProjectObject::GetProperty(const std::string& key) const
{
    const PropertyMap& properties = Properties();
    auto it = properties.find(key);
    return it == properties.end() ? std::wstring() : it->second;
}

bool ProjectObject::IsHierarchyMember(OrbObjectType type)
{
    switch (type)
    {
    case OrbObjectType_AudioSource:
    case OrbObjectType_EventAction:
    case OrbObjectType_MusicClip:
    case OrbObjectType_MusicPlaylistItem:
    case OrbObjectType_Platform:
        return false;
    default:
        return true;
    }
}

void ProjectObject::RawInsertChild(size_t index, ProjectObject* child)
{
    index = std::min(index, m_children.size());
    child->m_parent = this;
    m_memberChildren += IsHierarchyMember(child->GetObjectType()) ? 1 : 0;
    m_children.insert(m_children.begin() + static_cast<std::ptrdiff_t>(index),
                      CSmartPtr<ProjectObject>(child));
    Touch();
}

CSmartPtr<ProjectObject> ProjectObject::RawRemoveChild(size_t index)
{
    CSmartPtr<ProjectObject> child = m_children.at(index);
    m_children.erase(m_children.begin() + static_cast<std::ptrdiff_t>(index));
    m_memberChildren -= IsHierarchyMember(child->GetObjectType()) ? 1 : 0;
    child->m_parent = nullptr;
    Touch();
    return child;
}

void ProjectObject::RawSetIncluded(GUID const& platform, bool included)
{
    if (m_inclusionLinked || platform == GUID_NULL)
        m_includedEverywhere = included;
    else
        MutableExtras().includedOn[platform] = included;
    Touch();
}

void ProjectObject::RawSetIncludedOn(PlatformInclusion included)
{
    MutableExtras().includedOn = std::move(included);
    TrimExtras();
    Touch();
}

void ProjectObject::RawSetProperty(const std::string& key, std::wstring value)
{
    if (IsInProject())
        m_project->References().ChangeProperty(this, key, GetProperty(key), value);
    if (value.empty())
    {
        if (m_extras)
            m_extras->properties.erase(key);
    }
    else
        MutableExtras().properties[key] = std::move(value);
    TrimExtras();
    Touch();
}

void ProjectObject::RawSetCategory(OrbObjectCategories::Category category)
{
    MutableExtras().category = category;
    TrimExtras();
    Touch();
}

WorkUnitObject::WorkUnitObject(Project* project, GUID const& id, NodeType nodeType, CStdStr<wchar_t> name)
    : ProjectObject(project, id, nodeType, OrbObjectType_WorkUnit, std::move(name))
{
}

ProjectObject* NewProjectObject(Project* project, PMTreeNode::NodeType type, CStdStr<wchar_t> name,
                                GUID const& id)
{
    switch (type)
    {
    case PMTreeNode::WorkUnit:
    case PMTreeNode::PhysicalFolder:
        return new WorkUnitObject(project, id, type, std::move(name));
    case PMTreeNode::Event:
        return new EventObject(project, id, std::move(name));
    case PMTreeNode::EventAction:
        return new EventActionObject(project, id, std::move(name));
    case PMTreeNode::SoundSFX:
    case PMTreeNode::SoundVoice:
        return new SoundObject(project, id, type, std::move(name));
    case PMTreeNode::EffectPlugin:
    case PMTreeNode::MixerPlugin:
        return new EffectPluginObject(project, id, type, std::move(name));
    case PMTreeNode::AudioDevice:
        return new AudioDeviceObject(project, id, std::move(name));
    default:
        return new ProjectObject(project, id, type, rules::ObjectTypeOf(type), std::move(name));
    }
}

ProjectObject* AsProjectObject(const IOrbObject* object)
{
    return dynamic_cast<ProjectObject*>(const_cast<IOrbObject*>(object));
}
} // namespace sn
