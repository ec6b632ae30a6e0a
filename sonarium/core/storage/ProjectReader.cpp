#include "sonarium/core/storage/ProjectStorage.h"

#include "host/Utf8.h"
#include "sonarium/core/model/ModelNotify.h"
#include "sonarium/core/model/NodeRules.h"
#include "sonarium/core/model/ProjectEdit.h"
#include "sonarium/core/presets/PresetFile.h"
#include "sonarium/core/storage/FileIO.h"
#include "sonarium/core/storage/ProjectIdentity.h"
#include "sonarium/core/storage/ProjectLock.h"
#include "sonarium/core/storage/SaveJournal.h"
#include "sonarium/core/storage/StorageJson.h"
#include "sonarium/core/storage/StorageState.h"
#include "sonarium/core/storage/UnitReadAhead.h"

#include <algorithm>
#include <limits>

namespace sn
{
namespace
{
using storage::FormatError;
using storage::Json;
namespace fs = std::filesystem;

std::string Quoted(const std::string& text)
{
    return "\"" + text + "\"";
}

// With fixes, bytes that are not UTF-8 are read as U+FFFD and said so there; without, they are
// an error.
std::string ReadBytes(const fs::path& path, FileIO::FileStamp* stamp, std::vector<std::string>* fixes)
{
    std::error_code ec;
    if (!fs::exists(path, ec))
    {
        // Not there for a reason of its own (a symbolic link that loops, a folder that cannot be entered).
        if (ec)
            throw FormatError(ec.message());
        // A folder of the path that has become a file hides the file rather than losing it.
        const std::string obstacle = FileIO::ObstacleTo(path);
        throw FormatError(obstacle.empty() ? "file not found" : obstacle);
    }
    std::string bytes, error;
    if (!FileIO::ReadFile(path, bytes, error, stamp))
        throw FormatError(error);
    if (fixes)
        if (std::string fix = storage::MakeValidUtf8(bytes); !fix.empty())
            fixes->push_back(fix);
    return bytes;
}

Json ReadDocument(const fs::path& path, const char* format, FileIO::FileStamp* stamp,
                  std::vector<std::string>* fixes = nullptr)
{
    Json document = storage::Parse(ReadBytes(path, stamp, fixes));
    storage::CheckHeader(document, format);
    return document;
}

// Names of files and folders end up in paths: they must be ones the model would accept.
void CheckName(PMTreeNode::NodeType type, const ProjectObject* parent, const std::wstring& name)
{
    std::wstring why;
    if (!ProjectEdit::IsValidName(nullptr, type, parent, name, &why))
        throw FormatError("invalid name " + Quoted(Utf8::FromWide(name)) + ": " + Utf8::FromWide(why));
}

void ReadFolderTree(Project& project, const Json& items, ProjectObject* parent)
{
    for (const Json& item : items)
    {
        const std::string key = storage::StringMember(item, "type");
        PMTreeNode::NodeType type = PMTreeNode::None;
        if (!rules::ParseNodeType(key, type))
            throw FormatError("unknown type key " + Quoted(key));
        if (type != PMTreeNode::PhysicalFolder && type != PMTreeNode::WorkUnit)
            throw FormatError("type " + Quoted(key) + " does not belong in the project file");
        const GUID id = storage::GuidMember(item, "id");
        const std::wstring name = Utf8::ToWide(storage::StringMember(item, "name"));
        if (project.Find(id))
            throw FormatError("duplicate GUID " + GuidText::ToString(id));
        CheckName(type, parent, name);
        if (type == PMTreeNode::WorkUnit && item.contains("children"))
            throw FormatError("work unit " + GuidText::ToString(id) + " lists objects in the project file");

        auto* folder = new WorkUnitObject(&project, id, type, name);
        parent->RawInsertChild(parent->Children().size(), folder);
        if (type == PMTreeNode::WorkUnit && item.contains("unloaded"))
        {
            const Json& unloaded = item["unloaded"];
            if (!unloaded.is_boolean())
                throw FormatError("key \"unloaded\" of work unit " + GuidText::ToString(id) +
                                  " must be true or false");
            folder->RawSetLoaded(!unloaded.get<bool>());
        }
        project.Index(folder);
        if (type == PMTreeNode::PhysicalFolder && item.contains("children"))
            ReadFolderTree(project, storage::ArrayMember(item, "children"), folder);
    }
}

void ReadCategories(Project& project, const Json& categories)
{
    for (const Json& item : categories)
    {
        const std::string key = storage::StringMember(item, "category");
        OrbObjectCategories::Category category = OrbObjectCategories::None;
        if (!rules::ParseCategory(key, category))
            throw FormatError("unknown category key " + Quoted(key));
        const GUID id = storage::GuidMember(item, "id");
        if (project.Find(id))
            throw FormatError("duplicate GUID " + GuidText::ToString(id));
        WorkUnitObject* root =
            project.AddRoot(category, id, Utf8::ToWide(storage::StringMember(item, "name")));
        if (!root)
            throw FormatError("category " + Quoted(key) + " appears twice");
        ReadFolderTree(project, storage::ArrayMember(item, "children"), root);
    }
}

// The project's name names its file: one the editor would refuse gives way to the file's own.
std::wstring ProjectName(const Json& document, const fs::path& path, std::vector<std::string>& fixed)
{
    const std::wstring name = Utf8::ToWide(storage::StringMember(document, "name"));
    std::wstring why;
    if (ProjectEdit::IsValidName(nullptr, PMTreeNode::WorkUnit, nullptr, name, &why))
        return name;
    fixed.push_back("the project's name was refused (" + Utf8::FromWide(why) + "): named " +
                    Quoted(path.stem().string()) + " after its file");
    return Utf8::ToWide(path.stem().string());
}

// Platforms and languages are told apart by their ids: a second one with an id is dropped.
template <class List, class Id>
void AddOnce(List& list, const Id& id, const std::wstring& name, const std::string& what,
             std::vector<std::string>& fixed)
{
    if (std::any_of(list.begin(), list.end(), [&](const auto& entry) { return entry.id == id; }))
        fixed.push_back(what + " " + Quoted(Utf8::FromWide(name)) + " appears twice: the second was dropped");
    else
        list.push_back({id, name});
}

void ReadPlatformsAndLanguages(Project& project, const Json& document, std::vector<std::string>& fixed)
{
    for (const Json& item : storage::ArrayMember(document, "platforms"))
    {
        const GUID id = storage::GuidMember(item, "id");
        const std::string what = "platform " + GuidText::ToString(id);
        AddOnce(project.Platforms(), id,
                storage::CheckedName(storage::StringMember(item, "name"), PMTreeNode::None, nullptr, what, fixed),
                what, fixed);
    }
    for (const Json& item : storage::ArrayMember(document, "languages"))
    {
        const Json& id = storage::Member(item, "id");
        if (!id.is_number_unsigned() || id.get<unsigned long long>() > std::numeric_limits<unsigned long>::max())
            throw FormatError("key \"id\" of a language must be a non-negative integer");
        const std::string what = "language " + id.dump();
        AddOnce(project.Languages(), id.get<unsigned long>(),
                storage::CheckedName(storage::StringMember(item, "name"), PMTreeNode::None, nullptr, what, fixed),
                what, fixed);
    }
}

std::unique_ptr<Project> ReadProjectFile(const fs::path& path, FileIO::FileStamp& stamp,
                                         std::vector<std::string>& fixed)
{
    const Json document = ReadDocument(path, "sonarium-project", &stamp, &fixed);
    auto project = std::make_unique<Project>(ProjectName(document, path, fixed));
    storage::ReadProjectIdentity(document, path, *project);
    ReadPlatformsAndLanguages(*project, document, fixed);
    const Json& reference = storage::Member(document, "referenceLanguage");
    if (!reference.is_number_unsigned())
        throw FormatError("key \"referenceLanguage\" must be a non-negative integer");
    project->SetReferenceLanguage(reference.get<unsigned long>());
    ReadCategories(*project, storage::ArrayMember(document, "categories"));
    return project;
}

// The first object below parent, in the file's order, whose GUID the project holds.
const ProjectObject* FirstTaken(const Project& project, const ProjectObject& parent)
{
    for (const CSmartPtr<ProjectObject>& child : parent.Children())
    {
        if (project.Find(child->Id()))
            return child.Get();
        if (const ProjectObject* taken = FirstTaken(project, *child))
            return taken;
    }
    return nullptr;
}

// Takes out what was read of a unit whose file fails (called while its error is being handled),
// and throws again. GUIDs are checked against the rest of the project when the objects are
// indexed, after the whole file was read; a reading that stopped at the first object whose GUID
// is taken would have said so before any later fault, and so does this.
[[noreturn]] void DropRead(Project& project, WorkUnitObject& unit)
{
    for (const CSmartPtr<ProjectObject>& child : unit.Children())
        project.Unindex(child.Get());
    const ProjectObject* taken = FirstTaken(project, unit);
    const std::string duplicate = taken ? "duplicate GUID " + GuidText::ToString(taken->Id()) : std::string();
    while (!unit.Children().empty())
        unit.RawRemoveChild(unit.Children().size() - 1);
    if (!duplicate.empty())
        throw FormatError(duplicate);
    throw;
}

// What reading a unit's file needs of nothing but the file: done ahead on reader threads.
void ReadUnitText(const fs::path& path, storage::UnitText& text)
{
    // Units are most of a project's bytes: read through a tape, without a document of values.
    text.bytes = ReadBytes(path, &text.stamp, &text.fixed);
    storage::ParseTape(text.bytes, text.tape);
}

// Fills unit from its file, read into text; on failure the unit stays empty and problem says why.
bool ReadWorkUnitFile(Project& project, WorkUnitObject& unit, const fs::path& path, storage::UnitText& text,
                      StorageProblems& problems)
{
    try
    {
        if (text.error)
            std::rethrow_exception(text.error);
        std::vector<std::string>& fixed = text.fixed;
        const storage::JsonValue document = text.tape.Root();
        storage::CheckHeader(document, "sonarium-workunit");
        const GUID id = storage::GuidMember(document, "id");
        if (id != unit.Id())
            throw FormatError("id " + GuidText::ToString(id) + " is not the work unit's " +
                              GuidText::ToString(unit.Id()));
        storage::StringMember(document, "name");
        storage::GuidSet ids;
        try
        {
            storage::ReadChildren(storage::ArrayMember(document, "children"), &unit, ids, fixed);
            for (const CSmartPtr<ProjectObject>& child : unit.Children())
                if (const ProjectObject* taken = project.IndexNew(child.Get()))
                    throw FormatError("duplicate GUID " + GuidText::ToString(taken->Id()));
        }
        catch (...)
        {
            DropRead(project, unit);
        }
        StorageStateOf(project).stamps[unit.Id()] = text.stamp;
        // Told, and saved as set right: nothing changes behind the user's back.
        for (std::string& fix : fixed)
            problems.push_back({path, std::move(fix)});
        unit.RawSetDirty(!fixed.empty());
        return true;
    }
    catch (const std::exception& error)
    {
        problems.push_back({path, error.what()});
        unit.RawSetLoadProblem(problems.back().reason);
        return false;
    }
}

// The folders of the physical folders read, so that a save can remove those that go away.
void RememberFolders(const Project& project, StorageState& state)
{
    const std::vector<WorkUnitObject*> roots = project.Roots();
    std::vector<const ProjectObject*> pending(roots.begin(), roots.end());
    while (!pending.empty())
    {
        const ProjectObject* folder = pending.back();
        pending.pop_back();
        for (const CSmartPtr<ProjectObject>& child : folder->Children())
            if (child->GetNodeType() == PMTreeNode::PhysicalFolder)
            {
                state.folders.insert(FolderPath(*child, project.GetFolder()));
                pending.push_back(child.Get());
            }
    }
}

fs::path FindProjectFile(const fs::path& path, StorageProblems& problems)
{
    std::error_code ec;
    if (!fs::is_directory(path, ec))
    {
        // Any other file (a work unit's, a text) would only show as a JSON error or a wrong format.
        if (fs::exists(fs::symlink_status(path, ec)) && path.extension() != kProjectFileExtension)
        {
            problems.push_back({path, std::string("is not a project file (*") + kProjectFileExtension + ")"});
            return {};
        }
        return path;
    }
    std::vector<fs::path> found;
    for (const fs::directory_entry& entry : fs::directory_iterator(path, ec))
        if (entry.path().extension() == kProjectFileExtension)
            found.push_back(entry.path());
    if (ec)
        problems.push_back({path, ec.message()});
    else if (found.empty() && path.extension() == kProjectFileExtension)
        problems.push_back({path, "is a folder, not a file"}); // a project file that has become a folder
    else if (found.empty())
        problems.push_back(
            {path, std::string("no project file (*") + kProjectFileExtension + ") in the folder"});
    else if (found.size() > 1)
        problems.push_back(
            {path, std::string("more than one project file (*") + kProjectFileExtension + ") in the folder"});
    return found.size() == 1 ? found.front() : fs::path();
}
} // namespace

OpenResult OpenProject(const fs::path& projectFileOrFolder, const OpenOptions& options)
{
    OpenResult result;
    const fs::path file = FindProjectFile(projectFileOrFolder, result.problems);
    if (file.empty())
        return result;
    ProjectLock::Result lock;
    if (options.lock)
    {
        lock = ProjectLock::Acquire(file.parent_path());
        if (!lock.heldBy.empty())
            result.readOnly = "the project is open in another instance of Sonarium (" + lock.heldBy +
                              "): it was opened read-only, and nothing can be saved until it is closed "
                              "there and opened here again";
    }
    // The instance holding the folder may be in the middle of a save: only its holder finishes one.
    if (result.readOnly.empty())
        SaveJournal::Recover(file.parent_path(), result.problems);
    FileIO::FileStamp stamp;
    std::vector<std::string> fixed;
    try
    {
        result.project = ReadProjectFile(file, stamp, fixed);
    }
    catch (const std::exception& error)
    {
        result.problems.push_back({file, error.what()});
        return result;
    }

    Project& project = *result.project;
    project.SetFolder(file.parent_path());
    ReadPresets(project, project.GetFolder(), result.problems);
    StorageState& state = ResetStorageState(project);
    state.projectFile = file;
    state.projectStamp = stamp;
    state.lock = std::move(lock.lock);
    state.readOnly = result.readOnly;
    RememberFolders(project, state);
    const std::vector<WorkUnitObject*> units = project.FileWorkUnits();
    const size_t total = static_cast<size_t>(
        std::count_if(units.begin(), units.end(), [](const WorkUnitObject* unit) { return unit->IsLoaded(); }));
    std::vector<fs::path> paths, toRead;
    for (const WorkUnitObject* unit : units)
    {
        paths.push_back(WorkUnitFilePath(*unit, project.GetFolder()));
        if (unit->IsLoaded())
            toRead.push_back(paths.back());
    }
    storage::UnitReadAhead readAhead(std::move(toRead), ReadUnitText);
    size_t read = 0;
    // Stopped on the way, the project is dropped as if never opened.
    auto cancelled = [&](size_t done)
    {
        if (!options.progress || options.progress(done, total))
            return false;
        ForgetStorageState(project);
        result.project.reset();
        result.cancelled = true;
        return true;
    };
    for (size_t i = 0; i < units.size(); ++i)
    {
        WorkUnitObject* unit = units[i];
        if (unit->IsLoaded() && cancelled(read))
            return result;
        const fs::path& path = paths[i];
        state.savedPaths[unit->Id()] = path;
        unit->RawSetDirty(false);
        // A unit saved unloaded stays on disk until the user loads it.
        if (unit->IsLoaded() && !ReadWorkUnitFile(project, *unit, path, *readAhead.Take(read++), result.problems))
        {
            state.broken.insert(unit->Id());
            unit->RawSetLoaded(false);
        }
    }
    if (cancelled(total))
        return result;
    for (std::string& fix : fixed)
        result.problems.push_back({file, std::move(fix)});
    project.SetDirty(!fixed.empty());
    return result;
}

bool LoadWorkUnit(Project& project, WorkUnitObject* unit, StorageProblems& problems)
{
    if (!unit || !unit->IsFile() || unit->GetProject() != &project)
        return false;
    if (unit->IsLoaded())
        return true;
    StorageState& state = StorageStateOf(project);
    auto saved = state.savedPaths.find(unit->Id());
    const fs::path path =
        saved != state.savedPaths.end() ? saved->second : WorkUnitFilePath(*unit, project.GetFolder());
    if (!ReadWorkUnitFile(project, *unit, path, *storage::UnitReadAhead::ReadNow(path, ReadUnitText), problems))
    {
        state.broken.insert(unit->Id());
        unit->RawSetLoaded(false); // stamps the unit: its row now says it is unreadable
        return false;
    }
    state.broken.erase(unit->Id());
    unit->RawSetLoadProblem({});
    state.savedPaths[unit->Id()] = path;
    unit->RawSetLoaded(true);
    // The project file records which units are unloaded.
    project.SetDirty(true);
    notify::Object(notify::evChildAdded, unit);
    notify::Object(notify::evLoaded, unit);
    return true;
}

namespace
{
void DropContent(Project& project, WorkUnitObject& unit)
{
    while (!unit.Children().empty())
    {
        const size_t last = unit.Children().size() - 1;
        project.Unindex(unit.Children()[last].Get());
        unit.RawRemoveChild(last);
    }
    StorageStateOf(project).stamps.erase(unit.Id());
}
} // namespace

bool UnloadWorkUnit(Project& project, WorkUnitObject* unit)
{
    if (!unit || !unit->IsFile() || unit->GetProject() != &project || unit->IsDirty())
        return false;
    if (!unit->IsLoaded())
        return true;
    DropContent(project, *unit);
    unit->RawSetLoaded(false);
    project.SetDirty(true);
    notify::Object(notify::evChildRemoved, unit);
    return true;
}

bool ReloadWorkUnit(Project& project, WorkUnitObject* unit, StorageProblems& problems)
{
    if (!unit || !unit->IsFile() || unit->GetProject() != &project || !unit->IsLoaded())
        return false;
    const bool projectDirty = project.IsDirty();
    DropContent(project, *unit);
    unit->RawSetLoaded(false);
    if (unit->IsDirty())
    {
        unit->RawSetDirty(false);
        notify::WorkUnit(notify::evDirtyChanged, unit);
    }
    notify::Object(notify::evChildRemoved, unit);
    const bool loaded = LoadWorkUnit(project, unit, problems);
    // Read again, the unit is where it was: the project file has nothing new to say.
    project.SetDirty(projectDirty);
    return loaded;
}
} // namespace sn
