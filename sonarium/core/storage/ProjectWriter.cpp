#include "sonarium/core/storage/ProjectStorage.h"

#include "host/Utf8.h"
#include "sonarium/core/model/ModelNotify.h"
#include "sonarium/core/model/NodeRules.h"
#include "sonarium/core/model/ProjectEdit.h"
#include "sonarium/core/presets/PresetFile.h"
#include "sonarium/core/storage/FileIO.h"
#include "sonarium/core/storage/ProjectIdentity.h"
#include "sonarium/core/storage/SaveJournal.h"
#include "sonarium/core/storage/SavePlan.h"
#include "sonarium/core/storage/StorageJson.h"
#include "sonarium/core/storage/StorageState.h"

#include <set>

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

// A save carries out its plan in an order that keeps the files on disk a project that opens, with
// every unit's content in it, whenever it stops: the units' files first (those replacing a file
// the project on disk still names are written beside it), then the project file naming them, then
// the files written beside are put in place, and only then the files the project no longer names
// are removed.
class Saver
{
public:
    Saver(Project& project, fs::path folder, StorageState state, bool everything, StorageProblems& problems,
          const SaveOptions& options = {})
        : m_project(project), m_folder(std::move(folder)), m_state(std::move(state)),
          m_everything(everything), m_problems(problems), m_options(options)
    {
    }

    bool Run()
    {
        SaveJournal::Recover(m_folder, m_problems);
        m_plan = PlanSave(m_project, m_folder, m_state, m_everything, m_options.onExternalChange);
        if (!m_plan.refusals.empty())
        {
            m_problems.insert(m_problems.end(), m_plan.refusals.begin(), m_plan.refusals.end());
            return false;
        }
        SaveJournal::RemoveLeftovers(FoldersOfTheProject());
        CreateFolders();
        KeepRemovedFiles();
        m_done.reserve(m_plan.steps.size());
        for (const SaveStep& step : m_plan.steps)
            if (m_ok)
                Prepare(step);
        if (m_ok)
            CommitProjectFile();
        if (!m_ok)
        {
            Discard();
            return false;
        }
        PutStagedInPlace();
        if (!m_everything)
            RemoveObsolete();
        if (m_ok)
            m_state.folders = m_folders;
        return m_ok;
    }

    // Records the new state and clears the dirty marks of what is on disk now.
    void Apply()
    {
        for (const Done& done : m_done)
        {
            WorkUnitObject* unit = done.step.unit;
            // Without the new project file, only files rewritten in place are the units' files.
            if (!m_committed && (!done.staged.empty() || done.step.target != SavedPath(*unit)))
                continue;
            m_state.savedPaths[unit->Id()] = done.step.target;
            if (done.step.kind == SaveStep::Write)
                m_state.stamps[unit->Id()] = done.stamp;
            else if (done.step.source.empty())
                m_state.removedFiles.erase(unit->Id());
            if (done.step.kind == SaveStep::Write || !IsInMemory(*unit))
                m_clean.push_back(unit);
        }
        if (m_committed)
        {
            for (const GUID& id : m_plan.forgotten)
            {
                m_state.savedPaths.erase(id);
                m_state.stamps.erase(id);
            }
            // What is not in memory has nothing unsaved.
            for (WorkUnitObject* unit : m_project.FileWorkUnits())
                if (!IsInMemory(*unit))
                    m_clean.push_back(unit);
        }
        StorageStateOf(m_project) = std::move(m_state);
        for (WorkUnitObject* unit : m_clean)
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

    // The units whose files another program changed and the user chose to read again.
    bool ReloadChosen()
    {
        bool ok = true;
        if (m_committed)
            for (WorkUnitObject* unit : m_plan.reload)
                ok = ReloadWorkUnit(m_project, unit, m_problems) && ok;
        return ok;
    }

private:
    struct Done
    {
        SaveStep step;
        fs::path staged;  // written beside its target, not yet in place
        bool created = false; // the target did not exist before
        FileIO::FileStamp stamp;
    };

    void Fail(const fs::path& path, std::string reason)
    {
        m_problems.push_back({path, std::move(reason)});
        m_ok = false;
    }

    fs::path SavedPath(const WorkUnitObject& unit) const
    {
        auto saved = m_state.savedPaths.find(unit.Id());
        return saved != m_state.savedPaths.end() ? saved->second : fs::path();
    }

    bool IsInMemory(const WorkUnitObject& unit) const
    {
        return unit.IsLoaded() && !m_state.broken.count(unit.Id());
    }

    std::vector<fs::path> FoldersOfTheProject() const
    {
        std::vector<fs::path> folders{m_folder};
        for (const WorkUnitObject* root : m_project.Roots())
            folders.push_back(m_folder / rules::CategoryKey(root->GetCategory()));
        folders.insert(folders.end(), m_plan.folders.begin(), m_plan.folders.end());
        return folders;
    }

    void CreateFolders()
    {
        for (const fs::path& folder : m_plan.folders)
        {
            std::error_code ec;
            fs::create_directories(folder, ec);
            if (ec)
                Fail(folder, ec.message());
        }
    }

    // The files of deleted units go with this save; undoing the delete brings them back from here.
    void KeepRemovedFiles()
    {
        for (const GUID& id : m_plan.forgotten)
        {
            std::string bytes, error;
            auto saved = m_state.savedPaths.find(id);
            if (saved != m_state.savedPaths.end() && FileIO::ReadFile(saved->second, bytes, error))
                m_state.removedFiles[id] = std::move(bytes);
        }
    }

    Json UnitDocument(const WorkUnitObject& unit) const
    {
        Json document = storage::Header("sonarium-workunit");
        document["id"] = GuidText::ToString(unit.Id());
        document["name"] = Utf8::FromWide(unit.GetName());
        Json children = Json::array();
        for (const CSmartPtr<ProjectObject>& child : unit.Children())
            children.push_back(storage::ObjectToJson(*child));
        document["children"] = std::move(children);
        return document;
    }

    void Prepare(const SaveStep& step)
    {
        std::string bytes, error;
        if (step.kind == SaveStep::Write)
            bytes = storage::Dump(UnitDocument(*step.unit));
        else if (step.source.empty())
            bytes = m_state.removedFiles[step.unit->Id()];
        else if (!FileIO::ReadFile(step.source, bytes, error))
            return Fail(step.source, "cannot carry it to " + step.target.string() + ": " + error);

        Done done{step, {}, !Exists(step.target), {}};
        const bool written = step.staged ? FileIO::WriteBeside(step.target, bytes, done.staged, error)
                                         : FileIO::WriteAtomically(step.target, bytes, error, &done.stamp);
        if (!written)
            return Fail(step.target, error);
        done.stamp.hash = FileIO::StampHash(bytes);
        m_done.push_back(std::move(done));
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
                // A physical folder is a folder on disk, even while it holds no work unit.
                const fs::path folder = FolderPath(*child, m_folder);
                std::error_code ec;
                fs::create_directories(folder, ec);
                if (ec)
                    Fail(folder, ec.message());
                m_folders.insert(folder);
            }
            items.push_back(std::move(item));
        }
        return items;
    }

    Json ProjectDocument()
    {
        Json document = storage::Header("sonarium-project");
        document["name"] = Utf8::FromWide(m_project.GetName());
        storage::WriteProjectIdentity(document, m_project);
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
        return document;
    }

    // The moment the save takes effect: from here on the project on disk names the new places.
    void CommitProjectFile()
    {
        if (!m_plan.writeProjectFile)
        {
            m_committed = true;
            return;
        }
        const Json document = ProjectDocument();
        if (!m_ok)
            return;
        const std::string bytes = storage::Dump(document);
        std::vector<SaveJournal::Rename> renames;
        for (const Done& done : m_done)
            if (!done.staged.empty())
                renames.push_back({done.staged, done.step.target});
        std::string error;
        if (!renames.empty() &&
            !SaveJournal::Write(m_folder, m_plan.projectFile, FileIO::ContentHash(bytes), renames, error))
            return Fail(m_folder, "cannot write the save's journal: " + error);
        FileIO::FileStamp stamp;
        if (!FileIO::WriteAtomically(m_plan.projectFile, bytes, error, &stamp))
            return Fail(m_plan.projectFile, error);
        m_committed = m_projectWritten = true;
        m_state.projectFile = m_plan.projectFile;
        m_state.projectStamp = stamp;
    }

    // Nothing of a save that did not take effect stays behind, but files rewritten in place.
    void Discard()
    {
        SaveJournal::Remove(m_folder);
        for (const Done& done : m_done)
        {
            std::error_code ec;
            if (!done.staged.empty())
                fs::remove(done.staged, ec);
            else if (done.created)
                fs::remove(done.step.target, ec);
        }
    }

    void PutStagedInPlace()
    {
        bool all = true;
        for (Done& done : m_done)
        {
            std::string error;
            if (done.staged.empty())
                continue;
            if (FileIO::PutInPlace(done.staged, done.step.target, error, &done.stamp))
                done.staged.clear();
            else
            {
                Fail(done.step.target, error + " (the next save or open finishes this)");
                all = false;
            }
        }
        if (all)
            SaveJournal::Remove(m_folder);
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
        // A file still named under another spelling (letter case) is the same file: it stays.
        std::set<std::pair<uint64_t, uint64_t>> kept;
        std::set<fs::path> targets;
        if (!m_plan.obsolete.empty())
            for (const WorkUnitObject* unit : m_project.FileWorkUnits())
            {
                const fs::path target = WorkUnitFilePath(*unit, m_folder);
                const FileIO::FileStamp stamp = FileIO::StampOf(target);
                targets.insert(target);
                if (stamp.known)
                    kept.insert({stamp.device, stamp.inode});
            }
        for (const fs::path& path : m_plan.obsolete)
        {
            const FileIO::FileStamp stamp = FileIO::StampOf(path);
            if (targets.count(path) || path == m_plan.projectFile ||
                (stamp.known && kept.count({stamp.device, stamp.inode})))
                continue;
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
    SaveOptions m_options;
    SavePlan m_plan;
    std::vector<Done> m_done;
    std::vector<WorkUnitObject*> m_clean;
    bool m_committed = false;
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

bool SaveProject(Project& project, StorageProblems& problems, const SaveOptions& options)
{
    if (project.GetFolder().empty())
    {
        problems.push_back({{}, "the project has no folder yet: save it to a folder first"});
        return false;
    }
    if (const std::string& readOnly = StorageStateOf(project).readOnly; !readOnly.empty())
    {
        problems.push_back({project.GetFolder(), readOnly});
        return false;
    }
    Saver saver(project, project.GetFolder(), StorageStateOf(project), false, problems, options);
    const bool ok = saver.Run();
    // What was written is on disk even when something else failed.
    saver.Apply();
    return saver.ReloadChosen() && ok;
}

bool SaveProjectAs(Project& project, const fs::path& folder, StorageProblems& problems)
{
    StorageState state = StorageStateOf(project);
    // Only files read from the old folder are worth remembering: everything else is written anew.
    state.projectFile.clear();
    Saver saver(project, folder, std::move(state), true, problems);
    if (!saver.Run() || !WritePresets(project, folder, problems))
        return false;
    // Sources name their audio files from the project's folder: the originals go along.
    std::error_code ec;
    const fs::path originals = project.GetFolder() / kOriginalsFolder;
    if (!project.GetFolder().empty() && fs::is_directory(originals, ec) &&
        !fs::equivalent(project.GetFolder(), folder, ec))
    {
        fs::copy(originals, folder / kOriginalsFolder,
                 fs::copy_options::recursive | fs::copy_options::skip_existing, ec);
        if (ec)
        {
            problems.push_back({folder / kOriginalsFolder, "cannot copy the original audio files: " + ec.message()});
            return false;
        }
    }
    project.SetFolder(folder);
    saver.Apply();
    return true;
}
} // namespace sn
