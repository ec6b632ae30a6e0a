#include "sonarium/app/session/AppSession.h"

#include "host/HostMessages.h"
#include "host/MessageBox.h"
#include "host/Utf8.h"
#include "platform/WindowSystem.h"
#include "sonarium/app/session/CreateCommands.h"
#include "sonarium/core/storage/ProjectStorage.h"
#include "sonarium/ui/dialogs/ChangedFileDlg.h"
#include "sonarium/ui/dialogs/HostTools.h"

namespace sn
{
namespace
{

void Describe(StorageProblems const& problems, std::vector<std::wstring>& messages)
{
    for (StorageProblem const& problem : problems)
        messages.emplace_back(problem.Text().c_str());
}
} // namespace

std::vector<PaneDefinition> DefaultPanes()
{
    return {
        {L"Audio", {OrbObjectCategories::AudioObjects, OrbObjectCategories::Busses}},
        {L"Events", {OrbObjectCategories::Events, OrbObjectCategories::SoundBanks}},
    };
}

LRESULT AppMainWindow::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == HostMessages::MayDriveTransport)
    {
        const HWND asking = reinterpret_cast<HWND>(wParam);
        CWnd* view = CWnd::FromHandle(asking);
        return view && asking == m_transportView && IsChild(view) && view->IsWindowVisible() ? 1 : 0;
    }
    if (message == HostMessages::MainWindowCommand && wParam == HostMessages::MainWindowRefreshViews)
    {
        const auto* record = reinterpret_cast<const HostMessages::MainWindowRefreshRecord*>(lParam);
        if (record && m_onRefreshViews)
            m_onRefreshViews(m_refreshContext);
        return 0;
    }
    return CWnd::WindowProc(message, wParam, lParam);
}

AppSession::AppSession(HostOptions options) : m_host(std::make_unique<Host>(std::move(options)))
{
    m_main.Create(L"SonariumMain", L"Sonarium", WS_VISIBLE, CRect(0, 0, 1200, 800), nullptr, 0);
    m_host->SetMainWnd(&m_main);
    m_recorder = std::make_unique<HostRecorder>();
    m_reports = std::make_unique<HostReports>(m_host->Preferences());
    m_main.m_refreshContext = this;
    m_main.m_onRefreshViews = [](void* context)
    { static_cast<AppSession*>(context)->Recorder().Note(L"main window: views refreshed (work units loaded)"); };
    RegisterHostTools(m_host->CommandRegistry(), [this] { return HostSelection(); });
    // The explorer's expand commands by the names its menu shows for them.
    m_host->CommandRegistry().Register(ROString("ViewProject ExplorerExpandDescendants"),
                                       [this](uintptr_t, uintptr_t, uintptr_t, uintptr_t, uintptr_t)
                                       {
                                           Pane* pane = ActivePane();
                                           return pane && (pane->view->Expand(true, true), true);
                                       });
    m_host->CommandRegistry().Register(ROString("ViewProject ExplorerCollapseDescendants"),
                                       [this](uintptr_t, uintptr_t, uintptr_t, uintptr_t, uintptr_t)
                                       {
                                           Pane* pane = ActivePane();
                                           return pane && (pane->view->Expand(false, true), true);
                                       });
    RegisterCreateCommands(m_host->CommandRegistry(),
                           [this]
                           {
                               Pane* pane = ActivePane();
                               return pane ? pane->view : nullptr;
                           });
    m_inspector = std::make_unique<PropertiesModel>();
    WindowSystem::Get().SetFocusHook([this](HWND focus) { OnFocusChanged(focus); });
    // A change that must write a read-only file asks the user, through the dialog service.
    m_host->Files().SetQuestion(
        [](std::filesystem::path const& file)
        {
            const std::wstring text = L"The file \"" + Utf8::ToWide(file.generic_string()) +
                                      L"\" is read-only: it may be kept so by source control until it is "
                                      L"taken for editing.\n\nMake it writable and make the change?";
            return CXMessageBox(text.c_str(), MB_YESNO | MB_ICONQUESTION, L"Read-Only File") == IDYES;
        });
}

AppSession::~AppSession()
{
    WindowSystem::Get().SetFocusHook(nullptr);
    CloseAllPanes();
    // Closing the panes saved their state: a preference file that fails says so now.
    m_reports->ReportPreferenceProblems();
    m_reports.reset();
    m_inspector.reset();
    m_recorder.reset();
    m_host->SetMainWnd(nullptr);
    m_main.DestroyWindow();
    m_host.reset();
}

bool AppSession::OpenProject(std::filesystem::path const& path, std::vector<std::wstring>& messages,
                             OpenProgress const& progress)
{
    OpenResult opened = sn::OpenProject(path, OpenOptions{.lock = true, .progress = progress});
    Describe(opened.problems, messages);
    if (!opened.project)
        return false;
    m_readOnly = opened.readOnly;
    // Views are built over one project: the panes are rebuilt around the new one, saving and
    // restoring their state as a closed and reopened pane does.
    const std::vector<PaneDefinition> panes = ClosePanesKeepingLayout();
    m_host->SetProject(std::move(opened.project));
    ReopenPanes(panes);
    Pump();
    return true;
}

bool AppSession::SaveProject(std::vector<std::wstring>& messages)
{
    Project* project = GetProject();
    if (!project)
    {
        messages.push_back(L"no project is open");
        return false;
    }
    StorageProblems problems;
    bool reloaded = false;
    SaveOptions options;
    options.onExternalChange = [&reloaded](ExternalChange const& change)
    {
        const ExternalChangeAnswer answer = AskAboutChangedFile(change);
        reloaded = reloaded || answer == ExternalChangeAnswer::Reload;
        return answer;
    };
    const bool saved = sn::SaveProject(*project, problems, options);
    // Steps done before a unit was read again would act on objects it no longer holds.
    if (reloaded)
    {
        m_host->Clipboard().Clear();
        m_host->Undo().Clear();
    }
    Describe(problems, messages);
    // Saving changes files: their overlays follow.
    if (!m_host->ReadSourceControlStatus() && !m_host->SourceControl().Problem().empty())
        messages.push_back(Utf8::ToWide(m_host->SourceControl().Problem()));
    Pump();
    return saved;
}

void AppSession::CloseProject()
{
    const std::vector<PaneDefinition> panes = ClosePanesKeepingLayout();
    m_host->CloseProject();
    m_readOnly.clear();
    ReopenPanes(panes);
    Pump();
}

std::vector<PaneDefinition> AppSession::ClosePanesKeepingLayout()
{
    std::vector<PaneDefinition> definitions;
    for (Pane const& pane : m_panes)
        definitions.push_back({pane.name, pane.categories, pane.rect});
    CloseAllPanes();
    return definitions;
}

void AppSession::ReopenPanes(std::vector<PaneDefinition> const& definitions)
{
    for (PaneDefinition const& definition : definitions)
        OpenPane(definition, definition.rect);
}

Pane& AppSession::OpenPane(PaneDefinition const& definition, RECT const& rect)
{
    auto* view = new DlgProjectExplorer(definition.categories, &m_main);
    view->Create(DlgProjectExplorer::IDD, &m_main);
    view->MoveWindow(&rect);
    m_panes.push_back({definition.name, definition.categories, rect, view});
    KeepTransportView();
    view->OnLoadView();
    Pump();
    return m_panes.back();
}

Pane& AppSession::OpenPane(PaneDefinition const& definition)
{
    // Panes start in slots of a fixed width, until a window gives them their real size.
    constexpr LONG k_width = 300;
    constexpr LONG k_gap = 20;
    constexpr LONG k_height = 600;
    const LONG left = static_cast<LONG>(m_panes.size()) * (k_width + k_gap);
    return OpenPane(definition, CRect(left, 0, left + k_width, k_height));
}

bool AppSession::ClosePaneOf(DlgProjectExplorer const* view)
{
    for (size_t i = 0; i < m_panes.size(); ++i)
        if (m_panes[i].view == view)
        {
            ClosePane(i);
            return true;
        }
    return false;
}

void AppSession::ClosePane(size_t index)
{
    if (index >= m_panes.size())
        return;
    DlgProjectExplorer* view = m_panes[index].view;
    m_panes.erase(m_panes.begin() + static_cast<std::ptrdiff_t>(index));
    view->OnDeleteView();
    view->DestroyWindow();
    KeepTransportView();
}

void AppSession::CloseAllPanes()
{
    while (!m_panes.empty())
        ClosePane(m_panes.size() - 1);
}

Pane* AppSession::FindPane(std::wstring const& name)
{
    for (Pane& pane : m_panes)
        if (pane.name == name)
            return &pane;
    return nullptr;
}

std::vector<IOrbObject*> AppSession::HostSelection()
{
    std::vector<IOrbObject*> objects;
    if (Pane* pane = ActivePane())
        pane->view->GetSelectedObjects(objects);
    return objects;
}

void AppSession::Pump()
{
    WindowSystem::Get().RunUntilIdle();
    FollowFocus();
    WindowSystem::Get().RunUntilIdle();
    m_reports->ReportPreferenceProblems();
}
} // namespace sn
