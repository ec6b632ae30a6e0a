#pragma once
// One run of the application without its toolkit: the reference host, the open project, the
// main window that answers the host's questions, the explorer panes and what the host's own
// panes received. The desktop window and the script driver both drive one of these.

#include "explorer/DlgProjectExplorer.h"
#include "sonarium/app/session/HostRecorder.h"
#include "sonarium/app/session/HostReports.h"
#include "sonarium/core/host/Host.h"
#include "sonarium/core/storage/ProjectStorage.h"
#include "sonarium/ui/properties/PropertiesModel.h"

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
    // Only the view that last had the focus drives the transport, and only while visible.
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

    // Called when a view asks the main window to refresh its views (work units were loaded).
    void (*m_onRefreshViews)(void* context) = nullptr;
    void* m_refreshContext = nullptr;
    void SetTransportView(HWND view) { m_transportView = view; }
    HWND TransportView() const { return m_transportView; }

private:
    HWND m_transportView = nullptr;
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
    // The host's property inspector.
    PropertiesModel& Inspector() { return *m_inspector; }

    // Opens a project folder or file; problems found on the way (unreadable work units...) go to
    // `messages`, one per line. False when the project could not be opened at all.
    // `progress` hears how many work units are read of all, and may cancel (the open project
    // then stays as it was).
    bool OpenProject(std::filesystem::path const& path, std::vector<std::wstring>& messages,
                     OpenProgress const& progress = {});
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
    // The pane whose view last had the keyboard focus (the first one until the user focuses
    // one): it drives the transport and receives the Edit menu's commands.
    Pane* ActivePane();

    // Runs posted messages until nothing is left, then FollowFocus.
    void Pump();
    // The objects selected in the active pane: the host's selection, which its tools act on.
    std::vector<IOrbObject*> HostSelection();
    // Once the work of a gesture has run: when the focus moved into another pane, its toolbar
    // follows its selection and the inspector shows that selection (with inspection on single
    // click), unless the gesture already had it inspected.
    void FollowFocus();

private:
    // SessionFocus.cpp
    void OnFocusChanged(HWND focus);
    // The transport stays with a pane that is open, the first one when its own has gone.
    void KeepTransportView();

    std::vector<PaneDefinition> ClosePanesKeepingLayout();
    void ReopenPanes(std::vector<PaneDefinition> const& definitions);

    std::unique_ptr<Host> m_host;
    AppMainWindow m_main;
    std::unique_ptr<HostRecorder> m_recorder;
    std::unique_ptr<HostReports> m_reports;
    std::unique_ptr<PropertiesModel> m_inspector;
    std::vector<Pane> m_panes;
    std::string m_readOnly;
    bool m_followPending = false;
};
} // namespace sn
