#pragma once
// One run of the application without its toolkit: the reference host, the open project, the
// main window that answers the host's questions, the explorer panes and what the host's own
// panes received. The desktop window and the script driver both drive one of these.

#include "explorer/DlgProjectExplorer.h"
#include "sonarium/app/session/HostRecorder.h"
#include "sonarium/app/session/HostReports.h"
#include "sonarium/core/host/Host.h"

#include <filesystem>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace sn
{
struct PaneDefinition
{
    std::wstring name;
    std::set<OrbObjectCategories::Category> categories;
    RECT rect{}; // where the pane was, when it is reopened
};

// The panes a new main window holds: audio objects and busses, then events and banks.
std::vector<PaneDefinition> DefaultPanes();

// The host's main window: panes are its children; it says which view may drive the transport.
class AppMainWindow : public CWnd
{
public:
    // Only visible views drive the transport; a closed one never does.
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

    // Called when a view asks the main window to refresh its views (work units were loaded).
    void (*m_onRefreshViews)(void* context) = nullptr;
    void* m_refreshContext = nullptr;
};

struct Pane
{
    std::wstring name;
    std::set<OrbObjectCategories::Category> categories;
    RECT rect{};
    DlgProjectExplorer* view = nullptr; // owned by its window: deleted when destroyed
};

class AppSession
{
public:
    explicit AppSession(HostOptions options = {});
    ~AppSession();
    AppSession(AppSession const&) = delete;
    AppSession& operator=(AppSession const&) = delete;

    Host& GetHost() { return *m_host; }
    AppMainWindow& MainWindow() { return m_main; }
    HostRecorder& Recorder() { return *m_recorder; }
    HostReports& Reports() { return *m_reports; }

    // Opens a project folder or file; problems found on the way (unreadable work units...) go to
    // `messages`, one per line. False when the project could not be opened at all.
    bool OpenProject(std::filesystem::path const& path, std::vector<std::wstring>& messages);
    bool SaveProject(std::vector<std::wstring>& messages);
    void CloseProject();
    Project* GetProject() const { return m_host->GetProject(); }
    // Why the open project cannot be saved (another instance has it open); empty when it can.
    std::string const& ReadOnlyReason() const { return m_readOnly; }

    // A new explorer view over the categories, loaded and laid out in the rectangle.
    Pane& OpenPane(PaneDefinition const& definition, RECT const& rect);
    // The same, side by side with the panes already open, as a new window lays them out.
    Pane& OpenPane(PaneDefinition const& definition);
    // The view protocol's end first, so that its expand and scroll state are saved.
    void ClosePane(size_t index);
    // Closes the pane of the view; false when no pane holds it.
    bool ClosePaneOf(DlgProjectExplorer const* view);
    void CloseAllPanes();
    std::vector<Pane>& Panes() { return m_panes; }
    Pane* FindPane(std::wstring const& name);
    // The pane whose view holds the keyboard focus, else the first one.
    Pane* ActivePane();

    // Runs posted messages and due timers until nothing is left.
    void Pump();
    // The objects selected in the active pane: the host's selection, which its tools act on.
    std::vector<IOrbObject*> HostSelection();

private:
    std::vector<PaneDefinition> ClosePanesKeepingLayout();
    void ReopenPanes(std::vector<PaneDefinition> const& definitions);

    std::unique_ptr<Host> m_host;
    AppMainWindow m_main;
    std::unique_ptr<HostRecorder> m_recorder;
    std::unique_ptr<HostReports> m_reports;
    std::vector<Pane> m_panes;
    std::string m_readOnly;
};
} // namespace sn
