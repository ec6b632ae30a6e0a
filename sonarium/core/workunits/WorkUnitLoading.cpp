// Saving, loading and unloading work units as the user asks for it: through storage, behind a
// progress report, with the views' updates held back until the end.

#include "host/GlobalProp.h"
#include "host/ProjectLoadProgress.h"
#include "host/StringHelp.h"
#include "host/Utf8.h"
#include "host/WorkUnitHelpers.h"
#include "sonarium/core/host/Host.h"
#include "sonarium/core/host/ProjectManagerImpl.h"
#include "sonarium/core/model/CurrentState.h"
#include "sonarium/core/model/ModelNotify.h"
#include "sonarium/core/storage/ProjectStorage.h"

namespace sn
{
namespace
{
// Blocks other loads and unloads while one runs or the project is written.
class GateBlock
{
public:
    explicit GateBlock(WorkUnitGate& gate) : m_gate(gate), m_was(gate.IsBlocked()) { m_gate.SetBlocked(true); }
    ~GateBlock() { m_gate.SetBlocked(m_was); }
    GateBlock(const GateBlock&) = delete;
    GateBlock& operator=(const GateBlock&) = delete;

private:
    WorkUnitGate& m_gate;
    bool m_was;
};

void Report(IProjectLoadProgress* progress, const StorageProblems& problems)
{
    if (progress)
        for (const StorageProblem& problem : problems)
            progress->Problem(problem.Text());
}

// Unloads a unit, forgetting its unsaved changes; refused when its file is not on disk, since
// nothing could load the unit back.
bool Unload(Project& project, WorkUnitObject* unit, IProjectLoadProgress* progress)
{
    CStdStr<wchar_t> path;
    if (unit->IsLoaded() && !WorkUnitHelpers::GetWorkUnitFilePath(static_cast<ProjectObject*>(unit), path, true))
    {
        if (progress)
            progress->Problem(unit->GetName() +
                              StringHelp::Localize(L": its file was never saved, so it stays loaded."));
        return false;
    }
    if (unit->IsDirty())
    {
        unit->RawSetDirty(false);
        notify::WorkUnit(notify::evDirtyChanged, static_cast<ProjectObject*>(unit));
    }
    return UnloadWorkUnit(project, unit);
}
} // namespace

ProjectManager::ProjectManagerResult ProjectManagerImpl::SaveProject(
    std::map<CStdStr<wchar_t>, ProjectManagerResult>& results, const std::set<CStdStr<wchar_t>, NoCaseStringComp>&)
{
    // Storage writes every file that changed at once, the named work units among them.
    Project* project = m_host.GetProject();
    if (!project)
        return Result_Failed;
    GateBlock gate(m_host.Gate());
    StorageProblems problems;
    const bool saved = sn::SaveProject(*project, problems);
    for (const StorageProblem& problem : problems)
        results[Utf8::ToWide(problem.path.string())] = Result_Failed;
    return saved ? Result_OK : Result_Failed;
}

PersistResult::PersistResult ProjectManagerImpl::UserLoadWorkUnits(const std::vector<OrbObjectSmartPtr>& units,
                                                                   IProjectLoadProgress* progress)
{
    return Persist(units, progress, true);
}

PersistResult::PersistResult ProjectManagerImpl::UserUnloadWorkUnits(const std::vector<OrbObjectSmartPtr>& units,
                                                                     IProjectLoadProgress* progress)
{
    return Persist(units, progress, false);
}

PersistResult::PersistResult ProjectManagerImpl::Persist(const std::vector<OrbObjectSmartPtr>& units,
                                                         IProjectLoadProgress* progress, bool load)
{
    Project* project = m_host.GetProject();
    if (!project)
        return PersistResult::Failed;
    ScopedGlobalPropRaise lock(propLockUIUpdate);
    GateBlock gate(m_host.Gate());
    if (progress)
        progress->Begin(StringHelp::Localize(load ? L"Loading Work Units" : L"Unloading Work Units"), units.size());
    bool changed = false;
    bool failed = false;
    bool cancelled = false;
    for (const OrbObjectSmartPtr& object : units)
    {
        auto* unit = dynamic_cast<WorkUnitObject*>(AsProjectObject(object.Get()));
        if (!unit || unit->GetProject() != project)
        {
            failed = true;
            continue;
        }
        if (progress && !progress->Step(unit->GetName()))
        {
            cancelled = true;
            break;
        }
        const bool wasLoaded = unit->IsLoaded();
        if (load)
        {
            StorageProblems problems;
            failed = !LoadWorkUnit(*project, unit, problems) || failed;
            Report(progress, problems);
        }
        else
            failed = !Unload(*project, unit, progress) || failed;
        changed = changed || unit->IsLoaded() != wasLoaded;
    }
    // Undo steps and clipboard entries may name objects that left memory or came back as others.
    if (changed)
    {
        m_host.Undo().Clear();
        m_host.Clipboard().Clear();
    }
    if (progress)
        progress->End();
    return cancelled ? PersistResult::Cancelled : failed ? PersistResult::Failed : PersistResult::Success;
}
} // namespace sn
