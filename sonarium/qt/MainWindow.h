#pragma once
// The application's main window: the explorer panes side by side, the transport, property
// inspector and event viewer beside them, platform and language selectors, and the Project,
// Edit and View menus.

#include "sonarium/app/session/AppSession.h"
#include "sonarium/app/session/EditMenu.h"

#include <QMainWindow>

#include <filesystem>
#include <map>
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
    // stays closed (the reasons are shown). Its progress shows in the status bar, and in a
    // dialog with Cancel once it has taken longer than the progress delay.
    bool OpenProject(std::filesystem::path const& path);
    // At start: the project given, else the one opened last, else the fallback.
    void OpenStartProject(std::filesystem::path const& given, std::filesystem::path const& fallback);
    void SetProgressDialogDelay(int milliseconds) { m_progressDelayMs = milliseconds; }

    // WindowState.cpp: the window's place and splitter sizes, kept between runs.
    void RestoreWindowState();
    void SaveWindowState();
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
    // Runs an Edit menu command on the active pane, or says in the status bar why it cannot.
    void RunEdit(EditCommand command);
    void FillRecentMenu();
    void ChooseProjectFolder();
    void ApplyTheme(bool dark);
    void ShowPreferences();

    // MainWindowReports.cpp: what the host tells the user outside its own dialogs.
    void WatchHostReports();
    void ShowPreferenceProblem(std::wstring const& problem);
    // A project another instance holds: said in the title and by a label in the status bar for as long as
    // it is open (the label's tooltip gives the holder).
    void ShowReadOnly();
    // WindowState.cpp
    // Gives the splitter the user's sizes for the widgets it holds now.
    void LayOutSplitter();
    void RememberSplitter();
    // The platform chosen last in the open project, when it still has it.
    void RestorePlatform();
    // The open project's name, marked when it is read-only.
    void UpdateTitle();

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
    std::map<EditCommand, QAction*> m_editActions;
    // The user's splitter sizes: the panes', then the side panels'.
    QList<int> m_splitterSizes;
    int m_progressDelayMs = 500;
    bool m_refreshQueued = false;
    bool m_fillingSelectors = false;
};
} // namespace sn::qt
