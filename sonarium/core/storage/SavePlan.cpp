#include "sonarium/core/storage/SavePlan.h"

#include "host/Utf8.h"
#include "sonarium/core/model/NodeRules.h"
#include "sonarium/core/model/ProjectEdit.h"

#include <locale>
#include <map>
#include <set>

namespace sn
{
namespace
{
namespace fs = std::filesystem;

std::string Quoted(const CStdStr<wchar_t>& name)
{
    return "\"" + Utf8::FromWide(name) + "\"";
}

bool IsRegularFile(const fs::path& path)
{
    std::error_code ec;
    return fs::is_regular_file(path, ec);
}

class Planner
{
public:
    Planner(Project& project, fs::path folder, const StorageState& state, bool everything,
            const ExternalChangeHandler& ask)
        : m_project(project), m_folder(std::move(folder)), m_state(state), m_everything(everything), m_ask(ask)
    {
        // Until the new project file is on disk, every file the old one names is still needed.
        for (const auto& [id, path] : m_state.savedPaths)
            m_committed.emplace(FoldedPath(path), id);
    }

    SavePlan Run()
    {
        std::wstring why;
        if (!ProjectEdit::IsValidName(nullptr, PMTreeNode::WorkUnit, nullptr, m_project.GetName(), &why))
            Refuse(m_folder, "the project's name cannot name a file: " + Utf8::FromWide(why));
        for (const WorkUnitObject* root : m_project.Roots())
            ClaimFolders(*root, m_folder / rules::CategoryKey(root->GetCategory()));
        for (WorkUnitObject* unit : m_project.FileWorkUnits())
            PlanUnit(*unit);
        PlanDeletedUnits();
        PlanProjectFile();
        return std::move(m_plan);
    }

private:
    void Refuse(const fs::path& path, std::string reason) { m_plan.refusals.push_back({path, std::move(reason)}); }

    // One path, one file or folder: on a file system that ignores case, "A" and "a" are one.
    void Claim(const fs::path& path, const std::string& what)
    {
        auto [claimed, added] = m_claims.emplace(FoldedPath(path), what);
        if (!added)
            Refuse(path, "would hold both " + claimed->second + " and " + what + ": rename one of them");
    }

    void ClaimFolders(const ProjectObject& parent, const fs::path& path)
    {
        for (const CSmartPtr<ProjectObject>& child : parent.Children())
        {
            if (child->GetNodeType() != PMTreeNode::PhysicalFolder)
                continue;
            const fs::path folder = path / Utf8::FromWide(child->GetName());
            Claim(folder, "the folder " + Quoted(child->GetName()));
            std::error_code ec;
            if (fs::exists(folder, ec) && !fs::is_directory(folder, ec))
                Refuse(folder, "is a file, not a folder: the folder " + Quoted(child->GetName()) + " cannot be made");
            m_plan.folders.push_back(folder);
            ClaimFolders(*child, folder);
        }
    }

    // Whether path is, for the project on disk, the file of another unit.
    bool TakenByOther(const fs::path& path, const GUID& id) const
    {
        auto owner = m_committed.find(FoldedPath(path));
        return owner != m_committed.end() && owner->second != id;
    }

    void AddStep(SaveStep::Kind kind, WorkUnitObject& unit, const fs::path& source, const fs::path& target)
    {
        if (const std::string obstacle = FileIO::ObstacleTo(target); !obstacle.empty())
            return Refuse(target, obstacle + ": the work unit " + Quoted(unit.GetName()) + " cannot be saved there");
        m_plan.steps.push_back({kind, &unit, source, target, TakenByOther(target, unit.Id())});
    }

    void PlanUnit(WorkUnitObject& unit)
    {
        const GUID id = unit.Id();
        const fs::path target = WorkUnitFilePath(unit, m_folder);
        Claim(target, "the work unit " + Quoted(unit.GetName()));
        m_current.insert(id);
        auto saved = m_state.savedPaths.find(id);
        const fs::path source = saved != m_state.savedPaths.end() ? saved->second : fs::path();
        const bool moved = !source.empty() && source != target;
        if (moved && !m_everything && IsRegularFile(source))
            m_plan.obsolete.push_back(source);

        if (!unit.IsLoaded() || m_state.broken.count(id))
            return PlanCarry(unit, source, target);
        if (!m_everything && !unit.IsDirty() && !moved && IsRegularFile(target))
            return;
        switch (AnswerForChanged(unit, source))
        {
        case ExternalChangeAnswer::Overwrite:
            return AddStep(SaveStep::Write, unit, {}, target);
        case ExternalChangeAnswer::KeepTheirs:
            m_plan.keptTheirs.push_back(&unit);
            break;
        case ExternalChangeAnswer::Reload:
            m_plan.reload.push_back(&unit);
            break;
        }
        // Their file stays this unit's file, wherever the unit now lives.
        if (moved)
            PlanCarry(unit, source, target);
    }

    // Only the content on disk exists: it moves with the unit, unread.
    void PlanCarry(WorkUnitObject& unit, const fs::path& source, const fs::path& target)
    {
        if (source.empty())
        {
            // A unit brought back by undo after its file went with the unit's deletion.
            if (m_state.removedFiles.count(unit.Id()))
                AddStep(SaveStep::Carry, unit, {}, target);
            return;
        }
        if (source != target && IsRegularFile(source))
            AddStep(SaveStep::Carry, unit, source, target);
    }

    // Overwrite when the unit's file is as it was read (or written) last.
    ExternalChangeAnswer AnswerForChanged(const WorkUnitObject& unit, const fs::path& source)
    {
        auto stamp = m_state.stamps.find(unit.Id());
        if (m_everything || source.empty() || stamp == m_state.stamps.end() ||
            FileIO::IsAsStamped(source, stamp->second))
            return ExternalChangeAnswer::Overwrite;
        if (m_ask)
            return m_ask({&unit, source});
        Refuse(source, "was changed by another program since it was read: nothing was saved, so that "
                       "its changes are not lost");
        return ExternalChangeAnswer::KeepTheirs;
    }

    // The files of deleted units go with the save, unless another program changed them since.
    void PlanDeletedUnits()
    {
        for (const auto& [id, path] : m_state.savedPaths)
        {
            if (m_current.count(id))
                continue;
            m_plan.forgotten.push_back(id);
            if (m_everything || !IsRegularFile(path))
                continue;
            auto stamp = m_state.stamps.find(id);
            const bool changed = stamp != m_state.stamps.end() && !FileIO::IsAsStamped(path, stamp->second);
            if (!m_claims.count(FoldedPath(path)))
            {
                if (!changed)
                    m_plan.obsolete.push_back(path);
            }
            else if (changed)
                Refuse(path, "was changed by another program since it was read, and its work unit was "
                             "deleted: move the file away before saving another work unit in its place");
        }
    }

    void PlanProjectFile()
    {
        m_plan.projectFile = ProjectFilePath(m_project, m_folder);
        const fs::path& old = m_state.projectFile;
        m_plan.writeProjectFile =
            m_everything || m_project.IsDirty() || old != m_plan.projectFile || !IsRegularFile(m_plan.projectFile);
        if (const std::string obstacle = FileIO::ObstacleTo(m_plan.projectFile); !obstacle.empty())
            return Refuse(m_plan.projectFile, obstacle);
        if (!m_plan.writeProjectFile || m_everything || old.empty())
            return;
        if (old != m_plan.projectFile)
            m_plan.obsolete.push_back(old);
        if (!m_state.projectStamp.known || FileIO::IsAsStamped(old, m_state.projectStamp))
            return;
        if (m_ask && m_ask({nullptr, old}) == ExternalChangeAnswer::Overwrite)
            return;
        Refuse(old, "was changed by another program since it was read: nothing was saved; open the "
                    "project again to see its changes");
    }

    Project& m_project;
    fs::path m_folder;
    const StorageState& m_state;
    bool m_everything;
    const ExternalChangeHandler& m_ask;
    std::map<std::wstring, GUID> m_committed;
    std::map<std::wstring, std::string> m_claims;
    std::set<GUID, GUIDLess> m_current;
    SavePlan m_plan;
};
} // namespace

std::wstring FoldedPath(const fs::path& path)
{
    // Letter case as the file systems that ignore it see it: beyond ASCII too.
    static const std::locale folding = []
    {
        try
        {
            return std::locale("C.UTF-8");
        }
        catch (const std::runtime_error&)
        {
            return std::locale::classic();
        }
    }();
    std::wstring text = Utf8::ToWide(path.lexically_normal().string());
    std::use_facet<std::ctype<wchar_t>>(folding).tolower(text.data(), text.data() + text.size());
    return text;
}

SavePlan PlanSave(Project& project, const fs::path& folder, const StorageState& state, bool everything,
                  const ExternalChangeHandler& onExternalChange)
{
    return Planner(project, folder, state, everything, onExternalChange).Run();
}
} // namespace sn
