#pragma once
// The open project: the root of every category, an index of objects by GUID, platforms and
// languages, and the folder it lives in.

#include "host/GuidTable.h"
#include "sonarium/core/find/NameIndex.h"
#include "sonarium/core/model/ProjectObject.h"
#include "sonarium/core/model/ReferenceIndex.h"

#include <filesystem>
#include <random>
#include <vector>

namespace sn
{
struct Platform
{
    GUID id;
    CStdStr<wchar_t> name;
};

struct Language
{
    unsigned long id;
    CStdStr<wchar_t> name;
};

class Project
{
public:
    explicit Project(CStdStr<wchar_t> name);
    ~Project();
    Project(const Project&) = delete;
    Project& operator=(const Project&) = delete;

    const CStdStr<wchar_t>& GetName() const { return m_name; }
    void SetName(CStdStr<wchar_t> name) { m_name = std::move(name); }
    // Who the project is, whatever its name or folder: what per-project settings are kept under.
    // A new project gets a new one; the project file keeps it.
    GUID const& GetId() const { return m_id; }
    void SetId(GUID const& id) { m_id = id; }
    const std::filesystem::path& GetFolder() const { return m_folder; }
    void SetFolder(std::filesystem::path folder) { m_folder = std::move(folder); }

    // Category roots, in the host's category order.
    WorkUnitObject* GetRoot(OrbObjectCategories::Category category) const;
    WorkUnitObject* AddRoot(OrbObjectCategories::Category category, GUID const& id, CStdStr<wchar_t> name);
    std::vector<WorkUnitObject*> Roots() const;
    const std::vector<CSmartPtr<WorkUnitObject>>& RootList() const { return m_roots; }

    ProjectObject* Find(GUID const& id) const;
    size_t ObjectCount() const { return m_index.Size(); }
    // Keeps the index in step with objects entering and leaving the hierarchy.
    void Index(ProjectObject* object);
    // Index for objects read from a file, in tree order: it stops at the first object whose GUID
    // the project holds already and returns it, leaving indexed what came before.
    ProjectObject* IndexNew(ProjectObject* object);
    void Unindex(ProjectObject* object);
    // Who refers to which object, among the objects in the hierarchy.
    ReferenceIndex& References() { return m_references; }
    const ReferenceIndex& References() const { return m_references; }
    // The lower-cased names of the hierarchy, in tree order, for finding objects by name.
    NameIndex& Names() { return m_names; }
    const NameIndex& Names() const { return m_names; }

    std::vector<Platform>& Platforms() { return m_platforms; }
    const std::vector<Platform>& Platforms() const { return m_platforms; }
    std::vector<Language>& Languages() { return m_languages; }
    const std::vector<Language>& Languages() const { return m_languages; }
    unsigned long GetReferenceLanguage() const { return m_referenceLanguage; }
    void SetReferenceLanguage(unsigned long id) { m_referenceLanguage = id; }

    // Changes to the project file itself (work units added, renamed or removed).
    bool IsDirty() const { return m_dirty; }
    void SetDirty(bool dirty) { m_dirty = dirty; }

    // Every work unit that has a file, in hierarchy order.
    std::vector<WorkUnitObject*> FileWorkUnits() const;

    // The presets kept with the project: objects outside the hierarchy whose values new objects
    // of their kind can start from.
    std::vector<CSmartPtr<ProjectObject>>& Presets() { return m_presets; }
    const std::vector<CSmartPtr<ProjectObject>>& Presets() const { return m_presets; }

private:
    // Indexes object and its subtree in tree order. Without replace, stops at the first object
    // whose GUID the project holds and returns it.
    ProjectObject* Enter(ProjectObject* object, bool replace);

    struct IndexTraits
    {
        static GUID const& Key(const ProjectObject* object) { return object->Id(); }
        static bool IsEmpty(const ProjectObject* object) { return object == nullptr; }
        // Each key compared is a visit to an object: probe runs are kept short. A million
        // objects take the same room either way.
        static constexpr int kMaxLoadEighths = 4;
    };

    CStdStr<wchar_t> m_name;
    GUID m_id;
    std::filesystem::path m_folder;
    std::vector<CSmartPtr<WorkUnitObject>> m_roots;
    GuidTable<ProjectObject*, IndexTraits> m_index;
    ReferenceIndex m_references;
    NameIndex m_names{*this};
    std::vector<Platform> m_platforms;
    std::vector<Language> m_languages;
    std::vector<CSmartPtr<ProjectObject>> m_presets;
    unsigned long m_referenceLanguage = 0;
    bool m_dirty = false;
};

// A new random GUID.
GUID NewGuid();
// A GUID drawn from engine: the same seed gives the same GUIDs (samples, generated projects).
GUID NewGuid(std::mt19937_64& engine);
} // namespace sn
