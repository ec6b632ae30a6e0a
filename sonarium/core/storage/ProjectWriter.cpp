#include "sonarium/core/storage/ProjectStorage.h"

#include "host/Utf8.h"
#include "sonarium/core/model/ModelNotify.h"
#include "sonarium/core/model/NodeRules.h"
#include "sonarium/core/model/ProjectEdit.h"
#include "sonarium/core/presets/PresetFile.h"
#include "sonarium/core/storage/FileIO.h"
#include "sonarium/core/storage/StorageJson.h"
#include "sonarium/core/storage/StorageState.h"

namespace sn
{
namespace
{
using storage::Json;
namespace fs = std::filesystem;

fs::path NamePart(const CStdStr<wchar_t>& name)
{
    return fs::path(Utf8::FromWide(name));
}

bool Exists(const fs::path& path)
{
    std::error_code ec;
    return fs::exists(path, ec);
}

// Saving happens in three steps so that the files on disk always make a project that opens:
// the work units' new files, then the project file naming them, and only then the removal of
// files the project no longer names.
class Saver
{
public:
    Saver(Project& project, fs::path folder, StorageState state, bool everything, StorageProblems& problems)
        : m_project(project), m_folder(std::move(folder)), m_state(std::move(state)),
          m_everything(everything), m_problems(problems)
    {
    }

    bool Run()
    {
        const std::vector<WorkUnitObject*> units = m_project.FileWorkUnits();
        for (WorkUnitObject* unit : units)
            m_targets.insert(WorkUnitFilePath(*unit, m_folder));
        for (WorkUnitObject* unit : units)
            SaveUnit(*unit);
        if (m_ok)
            SaveProjectFile();
        // Until the project file names the new places, the old files are the ones it names.
        for (const Move& move : m_moves)
            if (m_ok || move.old.empty())
                m_state.savedPaths[move.id] = move.target;
        if (m_ok && !m_everything)
        {
            ForgetRemovedUnits(units);
            RemoveObsolete();
        }
        if (m_ok)
            m_state.folders = m_folders;
        return m_ok;
    }

    // Records the new state and clears the dirty marks of what was written.
    void Commit()
    {
        StorageStateOf(m_project) = std::move(m_state);
        for (WorkUnitObject* unit : m_written)
            if (unit->IsDirty())
            {
                unit->RawSetDirty(false);
                notify::WorkUnit(notify::evDirtyChanged, unit);
            }
        if (m_projectWritten && m_project.IsDirty())
        {
            m_project.SetDirty(false);
            notify::Project(notify::evDirtyChanged);
        }
    }

private:
    void Fail(const fs::path& path, std::string reason)
    {
        m_problems.push_back({path, std::move(reason)});
        m_ok = false;
    }

    bool Write(const fs::path& path, const Json& document)
    {
        std::string error;
        if (FileIO::WriteAtomically(path, storage::Dump(document), error))
            return true;
        Fail(path, error);
        return false;
    }

    void SaveUnit(WorkUnitObject& unit)
    {
        const fs::path target = WorkUnitFilePath(unit, m_folder);
        auto saved = m_state.savedPaths.find(unit.Id());
        const fs::path old = saved != m_state.savedPaths.end() ? saved->second : fs::path();
        const bool broken = m_state.broken.count(unit.Id()) != 0;
        if (!unit.IsLoaded() || broken)
        {
            // Its content is only on disk: carry the file along, unread and untouched.
            if (old.empty() || old == target || !Exists(old))
                return;
            std::error_code ec;
            fs::create_directories(target.parent_path(), ec);
            if (!ec)
                fs::copy_file(old, target, fs::copy_options::overwrite_existing, ec);
            if (ec)
                return Fail(target, "cannot copy " + old.string() + ": " + ec.message());
            Moved(unit, old, target);
            return;
        }
        if (!m_everything && !unit.IsDirty() && old == target && Exists(target))
            return;
        Json document = storage::Header("sonarium-workunit");
        document["id"] = GuidText::ToString(unit.Id());
        document["name"] = Utf8::FromWide(unit.GetName());
        Json children = Json::array();
        for (const CSmartPtr<ProjectObject>& child : unit.Children())
            children.push_back(storage::ObjectToJson(*child));
        document["children"] = std::move(children);
        if (!Write(target, document))
            return;
        m_written.push_back(&unit);
        Moved(unit, old, target);
    }

    void Moved(const WorkUnitObject& unit, const fs::path& old, const fs::path& target)
    {
        m_moves.push_back({unit.Id(), old, target});
        if (!old.empty() && old != target && !m_targets.count(old))
            m_obsolete.push_back(old);
    }

    Json FolderTree(const ProjectObject& parent)
    {
        Json items = Json::array();
        for (const CSmartPtr<ProjectObject>& child : parent.Children())
        {
            const PMTreeNode::NodeType type = child->GetNodeType();
            if (type != PMTreeNode::PhysicalFolder && type != PMTreeNode::WorkUnit)
            {
                Fail(m_folder, std::string("a ") + rules::NodeTypeKey(type) + " " +
                                   GuidText::ToString(child->Id()) +
                                   " outside any work unit cannot be saved");
                continue;
            }
            Json item = Json::object();
            item["type"] = rules::NodeTypeKey(type);
            item["id"] = GuidText::ToString(child->Id());
            item["name"] = Utf8::FromWide(child->GetName());
            // A unit that failed to read stays unmarked, so that opening reports it again.
            const auto* unit = dynamic_cast<const WorkUnitObject*>(child.Get());
            if (type == PMTreeNode::WorkUnit && unit && !unit->IsLoaded() &&
                !m_state.broken.count(unit->Id()))
                item["unloaded"] = true;
            if (type == PMTreeNode::PhysicalFolder)
            {
                item["children"] = FolderTree(*child);
                std::error_code ec;
                fs::create_directories(FolderPath(*child), ec);
                if (ec)
                    Fail(FolderPath(*child), ec.message());
                m_folders.insert(FolderPath(*child));
            }
            items.push_back(std::move(item));
        }
        return items;
    }

    fs::path FolderPath(const ProjectObject& folder) const { return sn::FolderPath(folder, m_folder); }

    void SaveProjectFile()
    {
        std::wstring why;
        if (!ProjectEdit::IsValidName(nullptr, PMTreeNode::WorkUnit, nullptr, m_project.GetName(), &why))
            return Fail(m_folder, "the project's name cannot name a file: " + Utf8::FromWide(why));
        Json document = storage::Header("sonarium-project");
        document["name"] = Utf8::FromWide(m_project.GetName());
        Json platforms = Json::array();
        for (const Platform& platform : m_project.Platforms())
            platforms.push_back(
                Json{{"id", GuidText::ToString(platform.id)}, {"name", Utf8::FromWide(platform.name)}});
        document["platforms"] = std::move(platforms);
        Json languages = Json::array();
        for (const Language& language : m_project.Languages())
            languages.push_back(Json{{"id", language.id}, {"name", Utf8::FromWide(language.name)}});
        document["languages"] = std::move(languages);
        document["referenceLanguage"] = m_project.GetReferenceLanguage();
        Json categories = Json::array();
        for (const WorkUnitObject* root : m_project.Roots())
            categories.push_back(Json{{"category", rules::CategoryKey(root->GetCategory())},
                                      {"id", GuidText::ToString(root->Id())},
                                      {"name", Utf8::FromWide(root->GetName())},
                                      {"children", FolderTree(*root)}});
        document["categories"] = std::move(categories);
        if (!m_ok)
            return;

        const fs::path target = ProjectFilePath(m_project, m_folder);
        const fs::path old = m_state.projectFile;
        if (!m_everything && !m_project.IsDirty() && old == target && Exists(target))
            return;
        if (!Write(target, document))
            return;
        m_projectWritten = true;
        m_state.projectFile = target;
        if (!old.empty() && old != target)
            m_obsolete.push_back(old);
    }

    // A unit that left the project (deleted, or its creation undone) leaves its file behind, once
    // the project file no longer names it.
    void ForgetRemovedUnits(const std::vector<WorkUnitObject*>& units)
    {
        std::set<GUID, GUIDLess> present;
        for (const WorkUnitObject* unit : units)
            present.insert(unit->Id());
        for (auto it = m_state.savedPaths.begin(); it != m_state.savedPaths.end();)
        {
            if (present.count(it->first))
            {
                ++it;
                continue;
            }
            if (!m_targets.count(it->second))
                m_obsolete.push_back(it->second);
            m_state.broken.erase(it->first);
            it = m_state.savedPaths.erase(it);
        }
    }

    void RemoveObsolete()
    {
        // Folders of physical folders that are gone, when nothing is left in them; deepest first.
        for (auto it = m_state.folders.rbegin(); it != m_state.folders.rend(); ++it)
            if (!m_folders.count(*it))
            {
                std::error_code ec;
                if (fs::is_directory(*it, ec) && fs::is_empty(*it, ec))
                    fs::remove(*it, ec);
            }
        for (const fs::path& path : m_obsolete)
        {
            std::error_code ec;
            fs::remove(path, ec);
            if (ec)
                Fail(path, "cannot remove the old file: " + ec.message());
            // Folders left empty by a move or rename go too, up to the project's folder.
            for (fs::path folder = path.parent_path();
                 !ec && folder != m_folder && folder.has_relative_path() &&
                 folder.string().starts_with(m_folder.string());
                 folder = folder.parent_path())
                if (!fs::remove(folder, ec) || ec)
                    break;
        }
    }

    Project& m_project;
    fs::path m_folder;
    StorageState m_state;
    bool m_everything;
    StorageProblems& m_problems;
    std::set<fs::path> m_targets;
    std::vector<WorkUnitObject*> m_written;
    struct Move
    {
        GUID id;
        fs::path old;
        fs::path target;
    };
    std::vector<Move> m_moves;
    std::vector<fs::path> m_obsolete;
    std::set<fs::path> m_folders; // of the physical folders, as saved now
    bool m_projectWritten = false;
    bool m_ok = true;
};
} // namespace

fs::path ProjectFilePath(const Project& project, const fs::path& folder)
{
    return folder / (Utf8::FromWide(project.GetName()) + kProjectFileExtension);
}

fs::path FolderPath(const ProjectObject& folderObject, const fs::path& folder)
{
    std::vector<fs::path> parts;
    const ProjectObject* top = &folderObject;
    for (; top->Parent(); top = top->Parent())
        parts.push_back(NamePart(top->GetName()));
    fs::path path = folder / rules::CategoryKey(top->GetCategory());
    for (auto it = parts.rbegin(); it != parts.rend(); ++it)
        path /= *it;
    return path;
}

fs::path WorkUnitFilePath(const WorkUnitObject& unit, const fs::path& folder)
{
    fs::path relative = Utf8::FromWide(unit.GetName()) + kWorkUnitFileExtension;
    const ProjectObject* top = unit.Parent();
    for (; top && top->Parent(); top = top->Parent())
        relative = NamePart(top->GetName()) / relative;
    return folder / rules::CategoryKey(top ? top->GetCategory() : unit.GetCategory()) / relative;
}

bool SaveProject(Project& project, StorageProblems& problems)
{
    if (project.GetFolder().empty())
    {
        problems.push_back({{}, "the project has no folder yet: save it to a folder first"});
        return false;
    }
    Saver saver(project, project.GetFolder(), StorageStateOf(project), false, problems);
    const bool ok = saver.Run() && WritePresets(project, project.GetFolder(), problems);
    // What was written is on disk even when something else failed.
    saver.Commit();
    return ok;
}

bool SaveProjectAs(Project& project, const fs::path& folder, StorageProblems& problems)
{
    StorageState state = StorageStateOf(project);
    // Only files read from the old folder are worth remembering: everything else is written anew.
    state.projectFile.clear();
    Saver saver(project, folder, std::move(state), true, problems);
    if (!saver.Run() || !WritePresets(project, folder, problems))
        return false;
    project.SetFolder(folder);
    saver.Commit();
    return true;
}
} // namespace sn
