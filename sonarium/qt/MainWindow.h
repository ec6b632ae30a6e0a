#pragma once
// The application's main window: the explorer panes side by side, the transport, property
// inspector and event viewer beside them, platform and language selectors, and the Project,
// Edit and View menus.

#include "sonarium/app/session/AppSession.h"

#include <QMainWindow>

#include <filesystem>
#include <vector>

class QAction;
class QComboBox;
class QLabel;
class QMenu;
class QSplitter;

namespace sn::qt
{
class PaneWidget;
class QtWindowSystemDriver;
class SidePanels;

class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    MainWindow(AppSession& session, QtWindowSystemDriver& driver);
    ~MainWindow() override;

    // Opens the project folder or file, after offering to save the open one; false when it
    // stays closed (the reasons are shown).
    bool OpenProject(std::filesystem::path const& path);
    std::vector<PaneWidget*> const& PaneWidgets() const { return m_panes; }
    SidePanels* Panels() const { return m_panels; }

    // Whether the open project has changes not yet saved.
    static bool HasUnsavedChanges(AppSession& session);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    // MainWindow.cpp: panes, project, selectors.
    void BuildPanes();
    void AddPaneWidget(Pane const& pane, int index);
    // The widgets go; the panes' views stay with the session.
    void DropPaneWidgets();
    // The widgets go, then each view ends as the host ends it.
    void ClearPanes();
    void ChooseNewPane();
    void ClosePane(PaneWidget* widget);
    void FillSelectors();
    void OnPlatformChosen(int index);
    void OnLanguageChosen(int index);
    // False when the user cancelled.
    bool OfferToSave();
    bool SaveProject();
    void CloseProject();
    void RefreshFromRecorder();
    static void OnRecorderChanged(void* context);

    // MainMenus.cpp: menus and the commands they send.
    void BuildMenus();
    void UpdateEditMenu();
    // Sends a host command message to the active pane's view; 0 without one.
    LRESULT SendToActiveView(UINT message);
    void FillRecentMenu();
    void RememberRecent(std::filesystem::path const& path);
    void ChooseProjectFolder();
    void ApplyTheme(bool dark);
    void ShowPreferences();

    // MainWindowReports.cpp: what the host tells the user outside its own dialogs.
    void WatchHostReports();
    void ShowPreferenceProblem(std::wstring const& problem);
    // A project another instance holds: said in the title and the status bar for as long as it is open.
    void ShowReadOnly();

    AppSession& m_session;
    QtWindowSystemDriver& m_driver;
    QSplitter* m_splitter = nullptr;
    SidePanels* m_panels = nullptr;
    std::vector<PaneWidget*> m_panes;
    QComboBox* m_platforms = nullptr;
    QComboBox* m_languages = nullptr;
    QMenu* m_recentMenu = nullptr;
    QAction* m_undo = nullptr;
    QAction* m_redo = nullptr;
    QAction* m_cut = nullptr;
    QAction* m_copy = nullptr;
    QAction* m_paste = nullptr;
    QAction* m_delete = nullptr;
    QAction* m_rename = nullptr;
    QLabel* m_readOnly = nullptr;
    bool m_closing = false;
    bool m_refreshQueued = false;
    bool m_fillingSelectors = false;
};
} // namespace sn::qt
