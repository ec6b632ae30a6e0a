#pragma once
// A project object of the reference host: identity, kind, name, ordered children, flags,
// colour, per-platform inclusion with its link flag, and free-form properties (an action's
// target, a source's file). Parents own their children; references keep an object alive
// after it has left the project, as long as someone holds it.
//
// Projects hold millions of objects, so an object stays small: its name is kept in UTF-8
// (short names need no allocation), and what few objects have (per-platform inclusion,
// properties, a category) lives in a separate record made on first use.

#include "host/OrbObject.h"
#include "host/OrbObjectCategories.h"
#include "host/PMTreeNode.h"
#include "host/SmartPtr.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace sn
{
class Project;
class WorkUnitObject;

class ProjectObject : public virtual IOrbObject
{
public:
    using NodeType = PMTreeNode::NodeType;

    ProjectObject(Project* project, GUID const& id, NodeType nodeType, OrbObjectType objectType,
                  CStdStr<wchar_t> name);
    ~ProjectObject() override;

    // IOrbObject
    void AddRef() const override;
    void Release() const override;
    unsigned int GetObjectFlags() const override { return m_flags; }
    OrbObjectType GetObjectType() const override { return static_cast<OrbObjectType>(m_objectType); }
    GUID const* GetGUID() const override { return &m_id; }
    IOrbObject* GetParentObject() const override;
    bool IsPropertyLinked(const PropertyKey& key) const override;
    void SetPropertyLinked(const PropertyKey& key, bool link) override;
    bool IsIncludedOnPlatform(const GUID& platform, int reserved) const override;
    bool IsLoaded() const override { return true; }
    IOrbObject* GetOwnerObject() const override;
    CStdStr<wchar_t> GetName() const override;
    bool SetName(const CStdStr<wchar_t>& name) override;
    void BeginChangeNotification(int kind) override;
    void EndChangeNotification(int kind) override;

    GUID const& Id() const { return m_id; }
    const std::string& NameUtf8() const { return m_name; }
    NodeType GetNodeType() const { return static_cast<NodeType>(m_nodeType); }
    Project* GetProject() const { return m_project; }
    ProjectObject* Parent() const { return m_parent; }
    const std::vector<CSmartPtr<ProjectObject>>& Children() const { return m_children; }
    // Whether objects of the type are members of the hierarchy, rather than parts of their
    // parent: a sound's sources, an event's actions, a clip of a track, a playlist's sequences and
    // items and a platform are parts.
    static bool IsHierarchyMember(OrbObjectType type);
    // Whether some child is a member of the hierarchy; kept as children come and go, so that
    // asking never visits the children.
    bool HasMemberChildren() const { return m_memberChildren != 0; }
    size_t IndexOf(const ProjectObject* child) const;
    bool IsAncestorOf(const ProjectObject* other) const;
    // Whether the object is part of its project's hierarchy now.
    bool IsInProject() const;
    OrbObjectCategories::Category GetCategory() const;
    // The work unit whose file holds the object (itself for a work unit), or null.
    WorkUnitObject* OwningWorkUnit() const;
    bool IsTopWorkUnit() const;

    // Colours are indexes into the host's palette of kColorCount; -1 is the parent's colour.
    static constexpr int kColorCount = 16;
    int GetColor() const { return m_color; } // -1: the parent's colour
    bool IsInclusionLinked() const { return m_inclusionLinked; }
    bool GetIncluded(GUID const& platform) const; // the stored value, link considered
    using PlatformInclusion = std::map<GUID, bool, GUIDLess>;
    // The values kept for single platforms, used once the link is broken.
    const PlatformInclusion& IncludedOn() const;
    using PropertyMap = std::map<std::string, std::wstring>;
    const PropertyMap& Properties() const;
    std::wstring GetProperty(const std::string& key) const;

    // When anything in the subtree last changed, on the clock below: a reader that noted the
    // clock when it last read the subtree has missed a change exactly when this is not earlier.
    uint32_t ChangeStamp() const { return m_changeStamp; }
    static uint32_t ChangeClock() { return s_changeClock; }
    // Starts a new reading: changes made from now on carry a later stamp than those before.
    static uint32_t AdvanceChangeClock() { return ++s_changeClock; }

    // Raw mutators: the project's edit operations call them and take care of undo,
    // notifications and dirty state. Each stamps the object and its ancestors.
    void RawInsertChild(size_t index, ProjectObject* child);
    CSmartPtr<ProjectObject> RawRemoveChild(size_t index);
    void RawSetName(const CStdStr<wchar_t>& name);
    void RawSetColor(int color)
    {
        m_color = static_cast<int16_t>(color);
        Touch();
    }
    void RawSetFlags(unsigned int flags)
    {
        m_flags = flags;
        Touch();
    }
    void RawSetIncluded(GUID const& platform, bool included);
    void RawSetIncludedOn(PlatformInclusion included);
    void RawSetInclusionLinked(bool linked)
    {
        m_inclusionLinked = linked;
        Touch();
    }
    void RawSetProperty(const std::string& key, std::wstring value);
    void RawSetCategory(OrbObjectCategories::Category category);
    void Detach() { m_project = nullptr; }
    // Where the project's name index keeps the object (NameIndex::kNoSlot: nowhere).
    uint32_t NameSlot() const { return m_nameSlot; }
    void SetNameSlot(uint32_t slot) { m_nameSlot = slot; }
    void Attach(Project* project) { m_project = project; }

protected:
    struct Extras
    {
        PlatformInclusion includedOn;
        PropertyMap properties;
        OrbObjectCategories::Category category = OrbObjectCategories::None; // roots only
    };
    Extras& MutableExtras();
    // Forgets the record once it holds nothing.
    void TrimExtras();
    // Stamps the object and its ancestors with the clock; stops at the first one stamped already,
    // whose ancestors were stamped with it.
    void Touch()
    {
        for (ProjectObject* object = this; object && object->m_changeStamp != s_changeClock; object = object->m_parent)
            object->m_changeStamp = s_changeClock;
    }
    static inline uint32_t s_changeClock = 1;

    Project* m_project;
    ProjectObject* m_parent = nullptr;
    std::vector<CSmartPtr<ProjectObject>> m_children;
    GUID m_id;
    std::string m_name; // UTF-8
    std::unique_ptr<Extras> m_extras;
    mutable uint32_t m_refs = 0;
    unsigned int m_flags = 0;
    uint32_t m_memberChildren = 0;
    // Both kinds are small numbers; half-words keep the object within its size.
    uint16_t m_nodeType;
    uint16_t m_objectType;
    uint32_t m_changeStamp = 0;
    int16_t m_color = -1;
    bool m_inclusionLinked = true;

public:
    // The platform-independent inclusion, used while the link holds. Declared last so that it
    // shares a word with the flag above.
    bool m_includedEverywhere = true;

private:
    // Fits in the padding after the flags: the object does not grow.
    uint32_t m_nameSlot = UINT32_MAX;
};

// A work unit: a file of the project (or a category's root, or a physical folder, which are
// work units without a file of their own).
class WorkUnitObject : public ProjectObject, public IOrbWorkUnit
{
public:
    WorkUnitObject(Project* project, GUID const& id, NodeType nodeType, CStdStr<wchar_t> name);

    bool HasWorkUnitCategory() const override { return GetCategory() != OrbObjectCategories::None; }
    OrbObjectCategories::Category GetWorkUnitCategory() const override { return GetCategory(); }
    bool IsDirty() const override { return m_dirty; }
    bool IsLoaded() const override { return m_loaded; }
    bool IsReadyForNewWorkUnits() const override;

    // A work unit with a file of its own (not a root, not a physical folder).
    bool IsFile() const { return !IsTopWorkUnit() && GetNodeType() == PMTreeNode::WorkUnit; }
    void RawSetDirty(bool dirty)
    {
        m_dirty = dirty;
        Touch();
    }
    void RawSetLoaded(bool loaded)
    {
        m_loaded = loaded;
        Touch();
    }
    // Why the unit's file could not be read ("<path>: <reason>"), when it could not; empty once
    // it has been read.
    const std::string& LoadProblem() const { return m_loadProblem; }
    void RawSetLoadProblem(std::string problem)
    {
        m_loadProblem = std::move(problem);
        Touch();
    }

private:
    std::string m_loadProblem;
    bool m_dirty = false;
    bool m_loaded = true;
};

// A new object of a node kind (a work unit object for work units and physical folders), not
// yet in any hierarchy.
ProjectObject* NewProjectObject(Project* project, PMTreeNode::NodeType type, CStdStr<wchar_t> name,
                                GUID const& id);

// The object behind an interface pointer of this host, or null.
ProjectObject* AsProjectObject(const IOrbObject* object);
} // namespace sn
