#include "sonarium/core/model/Project.h"

#include <random>

namespace sn
{
Project::Project(CStdStr<wchar_t> name) : m_name(std::move(name)), m_id(NewGuid())
{
}

Project::~Project()
{
    // Objects still referenced elsewhere (a clipboard, an undo step) outlive the project.
    m_index.ForEach([](ProjectObject* object) { object->Detach(); });
    for (const CSmartPtr<ProjectObject>& preset : m_presets)
        preset->Detach();
}

WorkUnitObject* Project::GetRoot(OrbObjectCategories::Category category) const
{
    for (const CSmartPtr<WorkUnitObject>& root : m_roots)
        if (root->GetCategory() == category)
            return root.Get();
    return nullptr;
}

WorkUnitObject* Project::AddRoot(OrbObjectCategories::Category category, GUID const& id, CStdStr<wchar_t> name)
{
    if (GetRoot(category) || Find(id))
        return nullptr;
    auto* root = new WorkUnitObject(this, id, PMTreeNode::WorkUnit, std::move(name));
    root->RawSetCategory(category);
    m_roots.emplace_back(root);
    Index(root);
    return root;
}

std::vector<WorkUnitObject*> Project::Roots() const
{
    std::vector<WorkUnitObject*> roots;
    for (const CSmartPtr<WorkUnitObject>& root : m_roots)
        roots.push_back(root.Get());
    return roots;
}

ProjectObject* Project::Find(GUID const& id) const
{
    ProjectObject* const* found = m_index.Find(id);
    return found ? *found : nullptr;
}

void Project::Index(ProjectObject* object)
{
    Enter(object, true);
}

ProjectObject* Project::IndexNew(ProjectObject* object)
{
    return Enter(object, false);
}

ProjectObject* Project::Enter(ProjectObject* object, bool replace)
{
    if (replace)
        m_index.Insert(object);
    else if (!m_index.InsertNew(object))
        return object;
    object->Attach(this);
    m_references.AddObject(object);
    m_names.Enter(object);
    for (const CSmartPtr<ProjectObject>& child : object->Children())
        if (ProjectObject* taken = Enter(child.Get(), replace))
            return taken;
    return nullptr;
}

void Project::Unindex(ProjectObject* object)
{
    for (const CSmartPtr<ProjectObject>& child : object->Children())
        Unindex(child.Get());
    if (Find(object->Id()) == object)
    {
        m_references.RemoveObject(object);
        m_names.Leave(object);
        m_index.Erase(object->Id());
    }
}

namespace
{
void CollectFiles(ProjectObject* object, std::vector<WorkUnitObject*>& out)
{
    auto* unit = dynamic_cast<WorkUnitObject*>(object);
    if (unit && unit->IsFile())
    {
        out.push_back(unit);
        return; // work units do not nest inside a work unit's file
    }
    if (object->GetObjectType() != OrbObjectType_WorkUnit)
        return;
    for (const CSmartPtr<ProjectObject>& child : object->Children())
        CollectFiles(child.Get(), out);
}
} // namespace

std::vector<WorkUnitObject*> Project::FileWorkUnits() const
{
    std::vector<WorkUnitObject*> units;
    for (const CSmartPtr<WorkUnitObject>& root : m_roots)
        CollectFiles(root.Get(), units);
    return units;
}

GUID NewGuid()
{
    static thread_local std::mt19937_64 engine{std::random_device{}()};
    return NewGuid(engine);
}

GUID NewGuid(std::mt19937_64& engine)
{
    const unsigned long long a = engine(), b = engine();
    GUID id;
    id.Data1 = static_cast<uint32_t>(a >> 32);
    id.Data2 = static_cast<uint16_t>(a >> 16);
    id.Data3 = static_cast<uint16_t>((a & 0x0FFF) | 0x4000); // version 4
    for (int i = 0; i < 8; ++i)
        id.Data4[i] = static_cast<uint8_t>(b >> (8 * i));
    id.Data4[0] = static_cast<uint8_t>((id.Data4[0] & 0x3F) | 0x80);
    return id;
}
} // namespace sn
