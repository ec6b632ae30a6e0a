// Loading and unloading the selected work units, after the user's confirmation and, for an
// unload, the offer to save what is not saved yet.

#include "explorer/DlgProjectExplorer.h"

#include "host/HostMessages.h"
#include "host/HostWindows.h"
#include "host/MessageBox.h"
#include "host/ProjectLoadProgress.h"
#include "host/ProjectManager.h"
#include "host/ServiceProvider.h"
#include "host/StringHelp.h"
#include "host/UnloadDirtyWorkUnitsDlg.h"
#include "host/WorkUnitHelpers.h"
#include "module/ExplorerNames.h"

using namespace PENames;

namespace
{
// OK and Cancel, the question icon, and the host's "Don't ask me again".
constexpr UINT kConfirmStyle = 0x1000021;
constexpr UINT kErrorStyle = MB_ICONERROR;

// The project manager's work behind the host's progress dialog, open for this call only.
template <class Work>
void WithProgress(ProjectManager& projects, Work work)
{
    CDlgLoadProjectProgress progress;
    progress.SetProjectPath(projects.GetProjectPath());
    work(&progress);
}

// The main window refreshes the views that show what the loaded work units hold.
void TellMainWindowLoaded()
{
    auto* mainWindow = sn::g_serviceProviderInstance
                           ? sn::g_serviceProviderInstance->Get<sn::IMainWindowService>(sn::ServiceId_MainWindow)
                           : nullptr;
    if (!mainWindow || !mainWindow->IsEnabled())
        return;
    if (CWnd* main = SonariumGetMainWnd())
    {
        HostMessages::MainWindowRefreshRecord record{-1, HostMessages::RefreshReasonWorkUnitsLoaded, -1};
        main->SendMessage(HostMessages::MainWindowCommand, HostMessages::MainWindowRefreshViews,
                          reinterpret_cast<LPARAM>(&record));
    }
}
} // namespace

void DlgProjectExplorer::OnEnableWorkUnit()
{
    std::vector<IOrbObject*> objects;
    GetSelectedObjects(objects);
    std::vector<OrbObjectSmartPtr> toLoad;
    std::vector<OrbObjectSmartPtr> toUnload;
    for (IOrbObject* object : objects)
    {
        if (!object || object->GetObjectType() != OrbObjectType_WorkUnit ||
            !WorkUnitHelpers::CanUnloadWorkUnit(dynamic_cast<IOrbWorkUnit*>(object)))
            continue;
        (object->IsLoaded() ? toUnload : toLoad).emplace_back(object);
    }
    ProjectManager* projects = ProjectManager::m_pInstance;
    if ((toLoad.empty() && toUnload.empty()) || !projects)
        return;

    wchar_t dontAskAgainKey[] = L"LoadUnloadWorkUnits";
    CXMessageBoxDefs::CXMSGBOXPARAMS params{};
    params.pszDontAskAgainKey = dontAskAgainKey;
    const CStdStr<wchar_t> text = StringHelp::Localize(
        L"Loading/unloading Work Units cannot be undone. The clipboard contents and Undo history will be cleared.");
    const CStdStr<wchar_t> caption = StringHelp::Localize(L"Load/Unload Work Units?");
    if (CXMessageBoxEx(GetSafeHwnd(), text.c_str(), caption.c_str(), kConfirmStyle, &params) != IDOK)
        return;

    // Loading wins: an unload waits for a selection of loaded work units only.
    if (!toLoad.empty())
    {
        ScopedGlobalPropRaise lock(rosLockUIUpdate);
        WithProgress(*projects,
                     [&](IProjectLoadProgress* progress)
                     {
                         projects->UserLoadWorkUnits(toLoad, progress);
                         TellMainWindowLoaded();
                     });
        return;
    }

    ScopedGlobalPropRaise lock(rosLockUIUpdate);
    std::vector<IOrbObject*> units(toUnload.begin(), toUnload.end());
    std::set<IOrbObject*> dirty;
    WorkUnitHelpers::GetDirtyWorkUnitsUnder(units, dirty);
    if (!dirty.empty())
    {
        std::vector<CStdStr<wchar_t>> paths;
        for (IOrbObject* unit : dirty)
        {
            CStdStr<wchar_t> path;
            if (WorkUnitHelpers::GetWorkUnitFilePath(unit, path, true))
                paths.push_back(path);
        }
        switch (UnloadDirtyWorkUnitsDlg::Show(paths))
        {
        case UnloadDirtyWorkUnitsDlg::Decision_Save:
        {
            std::map<CStdStr<wchar_t>, ProjectManager::ProjectManagerResult> results;
            const std::set<CStdStr<wchar_t>, sn::NoCaseStringComp> names;
            if (projects->SaveProject(results, names) != ProjectManager::Result_OK)
            {
                const CStdStr<wchar_t> error =
                    StringHelp::Localize(L"There was an error while saving the project. The \"Unload Work "
                                         L"Unit(s)\" operation has been canceled.");
                const CStdStr<wchar_t> errorCaption = StringHelp::Localize(L"Project Save Error");
                CXMessageBoxEx(GetSafeHwnd(), error.c_str(), errorCaption.c_str(), kErrorStyle, nullptr);
                toUnload.clear();
            }
            break;
        }
        case UnloadDirtyWorkUnitsDlg::Decision_Cancel:
            toUnload.clear();
            break;
        default:
            break; // unload without saving
        }
    }
    if (!toUnload.empty())
        WithProgress(*projects,
                     [&](IProjectLoadProgress* progress) { projects->UserUnloadWorkUnits(toUnload, progress); });
}
