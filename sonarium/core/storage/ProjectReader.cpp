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
using storage::FormatError;
using storage::Json;
namespace fs = std::filesystem;

std::string Quoted(const std::string& text)
{
    return "\"" + text + "\"";
}

// With fixes, bytes that are not UTF-8 are read as U+FFFD and said so there; without, they are
// an error.
Json ReadDocument(const fs::path& path, const char* format, std::vector<std::string>* fixes = nullptr)
{
    std::error_code ec;
    if (!fs::exists(path, ec) && !ec)
        throw FormatError("file not found");
    std::string bytes, error;
    if (!FileIO::ReadFile(path, bytes, error))
        throw FormatError(error);
    if (fixes)
        if (std::string fix = storage::MakeValidUtf8(bytes); !fix.empty())
            fixes->push_back(fix);
    Json document = storage::Parse(bytes);
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

std::unique_ptr<Project> ReadProjectFile(const fs::path& path)
{
    const Json document = ReadDocument(path, "sonarium-project");
    auto project = std::make_unique<Project>(Utf8::ToWide(storage::StringMember(document, "name")));
    for (const Json& item : storage::ArrayMember(document, "platforms"))
        project->Platforms().push_back(
            {storage::GuidMember(item, "id"), Utf8::ToWide(storage::StringMember(item, "name"))});
    for (const Json& item : storage::ArrayMember(document, "languages"))
    {
        const Json& id = storage::Member(item, "id");
        if (!id.is_number_unsigned())
            throw FormatError("key \"id\" of a language must be a non-negative integer");
        project->Languages().push_back(
            {id.get<unsigned long>(), Utf8::ToWide(storage::StringMember(item, "name"))});
    }
    const Json& reference = storage::Member(document, "referenceLanguage");
    if (!reference.is_number_unsigned())
        throw FormatError("key \"referenceLanguage\" must be a non-negative integer");
    project->SetReferenceLanguage(reference.get<unsigned long>());
    ReadCategories(*project, storage::ArrayMember(document, "categories"));
    return project;
}

// Fills unit from its file; on failure the unit stays empty and problem says why.
bool ReadWorkUnitFile(Project& project, WorkUnitObject& unit, const fs::path& path, StorageProblems& problems)
{
    try
    {
        std::vector<std::string> fixes;
        const Json document = ReadDocument(path, "sonarium-workunit", &fixes);
        const GUID id = storage::GuidMember(document, "id");
        if (id != unit.Id())
            throw FormatError("id " + GuidText::ToString(id) + " is not the work unit's " +
                              GuidText::ToString(unit.Id()));
        storage::StringMember(document, "name");
        std::set<GUID, GUIDLess> ids;
        try
        {
            storage::ReadChildren(storage::ArrayMember(document, "children"), &unit, ids, &fixes);
        }
        catch (...)
        {
            // Nothing read so far was indexed: taking the objects out is enough.
            while (!unit.Children().empty())
                unit.RawRemoveChild(unit.Children().size() - 1);
            throw;
        }
        for (const CSmartPtr<ProjectObject>& child : unit.Children())
            project.Index(child.Get());
        // The fixed names are the unit's now: saving it writes them.
        for (const std::string& fix : fixes)
            problems.push_back({path, fix});
        if (!fixes.empty())
            unit.RawSetDirty(true);
        return true;
    }
    catch (const std::exception& error)
    {
        problems.push_back({path, error.what()});
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
        return path;
    std::vector<fs::path> found;
    for (const fs::directory_entry& entry : fs::directory_iterator(path, ec))
        if (entry.path().extension() == kProjectFileExtension)
            found.push_back(entry.path());
    if (ec)
        problems.push_back({path, ec.message()});
    else if (found.empty())
        problems.push_back(
            {path, std::string("no project file (*") + kProjectFileExtension + ") in the folder"});
    else if (found.size() > 1)
        problems.push_back(
            {path, std::string("more than one project file (*") + kProjectFileExtension + ") in the folder"});
    return found.size() == 1 ? found.front() : fs::path();
}
} // namespace

OpenResult OpenProject(const fs::path& projectFileOrFolder)
{
    OpenResult result;
    const fs::path file = FindProjectFile(projectFileOrFolder, result.problems);
    if (file.empty())
        return result;
    try
    {
        result.project = ReadProjectFile(file);
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
    RememberFolders(project, state);
    for (WorkUnitObject* unit : project.FileWorkUnits())
    {
        const fs::path path = WorkUnitFilePath(*unit, project.GetFolder());
        state.savedPaths[unit->Id()] = path;
        unit->RawSetDirty(false);
        // A unit saved unloaded stays on disk until the user loads it.
        if (unit->IsLoaded() && !ReadWorkUnitFile(project, *unit, path, result.problems))
        {
            state.broken.insert(unit->Id());
            unit->RawSetLoaded(false);
        }
    }
    project.SetDirty(false);
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
    if (!ReadWorkUnitFile(project, *unit, path, problems))
    {
        state.broken.insert(unit->Id());
        return false;
    }
    state.broken.erase(unit->Id());
    state.savedPaths[unit->Id()] = path;
    unit->RawSetLoaded(true);
    // The project file records which units are unloaded.
    project.SetDirty(true);
    notify::Object(notify::evChildAdded, unit);
    notify::Object(notify::evLoaded, unit);
    return true;
}

bool UnloadWorkUnit(Project& project, WorkUnitObject* unit)
{
    if (!unit || !unit->IsFile() || unit->GetProject() != &project || unit->IsDirty())
        return false;
    if (!unit->IsLoaded())
        return true;
    while (!unit->Children().empty())
    {
        const size_t last = unit->Children().size() - 1;
        project.Unindex(unit->Children()[last].Get());
        unit->RawRemoveChild(last);
    }
    unit->RawSetLoaded(false);
    project.SetDirty(true);
    notify::Object(notify::evChildRemoved, unit);
    return true;
}
} // namespace sn
