// The main window's menus and the host commands they send.

#include "host/HostMessages.h"
#include "sonarium/core/host/Theme.h"
#include "sonarium/qt/DesktopSettings.h"
#include "sonarium/qt/ExplorerMenu.h"
#include "sonarium/qt/MainWindow.h"
#include "sonarium/qt/PaneWidget.h"
#include "sonarium/qt/PreferencesDialog.h"
#include "sonarium/qt/QtText.h"
#include "sonarium/qt/QtWindowSystemDriver.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QFileDialog>
#include <QMenuBar>
#include <QSettings>

namespace sn::qt
{
namespace
{
constexpr int k_recentCount = 8;

const QString k_recentKey = QStringLiteral("RecentProjects");
const QString k_themeKey = QStringLiteral("DarkTheme");
} // namespace

void MainWindow::BuildMenus()
{
    QMenu* project = menuBar()->addMenu(tr("&Project"));
    project->addAction(tr("&Open Folder..."), QKeySequence::Open, this, &MainWindow::ChooseProjectFolder);
    m_recentMenu = project->addMenu(tr("Open &Recent"));
    connect(m_recentMenu, &QMenu::aboutToShow, this, &MainWindow::FillRecentMenu);
    project->addAction(tr("&Save"), QKeySequence::Save, this, &MainWindow::SaveProject);
    project->addAction(tr("&Close"), this, &MainWindow::CloseProject);
    project->addSeparator();
    project->addAction(tr("&Preferences..."), QKeySequence::Preferences, this, &MainWindow::ShowPreferences);
    project->addSeparator();
    project->addAction(tr("E&xit"), QKeySequence::Quit, this, &QWidget::close);

    QMenu* edit = menuBar()->addMenu(tr("&Edit"));
    connect(edit, &QMenu::aboutToShow, this, &MainWindow::UpdateEditMenu);
    m_undo = edit->addAction(tr("&Undo"), QKeySequence::Undo, this,
                             [this]
                             {
                                 m_session.GetHost().Undo().Undo();
                                 m_driver.Pump();
                             });
    m_redo = edit->addAction(tr("&Redo"), QKeySequence::Redo, this,
                             [this]
                             {
                                 m_session.GetHost().Undo().Redo();
                                 m_driver.Pump();
                             });
    edit->addSeparator();
    m_cut = edit->addAction(tr("Cu&t"), QKeySequence::Cut, this, [this] { SendToActiveView(WM_CUT); });
    m_copy = edit->addAction(tr("&Copy"), QKeySequence::Copy, this, [this] { SendToActiveView(WM_COPY); });
    m_paste =
        edit->addAction(tr("&Paste"), QKeySequence::Paste, this, [this] { SendToActiveView(WM_PASTE); });
    m_delete = edit->addAction(tr("&Delete"), QKeySequence::Delete, this,
                               [this] { SendToActiveView(HostMessages::DeleteObject); });
    m_rename = edit->addAction(tr("Re&name"), QKeySequence(Qt::Key_F2), this,
                               [this] { SendToActiveView(HostMessages::RenameObject); });

    AddObjectsMenu(*menuBar(), m_session, m_driver, this);

    QMenu* view = menuBar()->addMenu(tr("&View"));
    view->addAction(tr("New Explorer &Pane..."), this, &MainWindow::ChooseNewPane);
    view->addSeparator();
    auto* themes = new QActionGroup(this);
    QAction* light = view->addAction(tr("&Light Theme"), this, [this] { ApplyTheme(false); });
    QAction* dark = view->addAction(tr("&Dark Theme"), this, [this] { ApplyTheme(true); });
    for (QAction* action : {light, dark})
    {
        action->setCheckable(true);
        themes->addAction(action);
    }
    const bool darkChosen = DesktopSettings().value(k_themeKey, false).toBool();
    (darkChosen ? dark : light)->setChecked(true);
    ApplyTheme(darkChosen);
    UpdateEditMenu();
}

LRESULT MainWindow::SendToActiveView(UINT message)
{
    Pane* pane = m_session.ActivePane();
    if (!pane)
        return 0;
    const LRESULT result = pane->view->SendMessage(message, 0, 0);
    m_driver.Pump();
    return result;
}

void MainWindow::UpdateEditMenu()
{
    UndoManager& undo = m_session.GetHost().Undo();
    m_undo->setEnabled(undo.CanUndo());
    m_redo->setEnabled(undo.CanRedo());
    Pane* pane = m_session.ActivePane();
    // Only questions here: asking must not change anything, so nothing is pumped.
    auto allowed = [pane](UINT question)
    { return pane && pane->view->SendMessage(question, 0, 0) == HostMessages::Allowed; };
    m_cut->setEnabled(allowed(HostMessages::CanCut));
    m_copy->setEnabled(allowed(HostMessages::CanCopy));
    m_paste->setEnabled(allowed(HostMessages::CanPaste));
    m_delete->setEnabled(pane != nullptr);
    m_rename->setEnabled(pane != nullptr);
}

void MainWindow::FillRecentMenu()
{
    m_recentMenu->clear();
    const QStringList recent = DesktopSettings().value(k_recentKey).toStringList();
    for (QString const& path : recent)
        m_recentMenu->addAction(path, this,
                                [this, path] { OpenProject(std::filesystem::path(FromQt(path))); });
    m_recentMenu->setEnabled(!recent.isEmpty());
}

void MainWindow::RememberRecent(std::filesystem::path const& path)
{
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(path, error);
    const QString entry = ToQt((error ? path : absolute).lexically_normal().wstring());
    QSettings settings = DesktopSettings();
    QStringList recent = settings.value(k_recentKey).toStringList();
    recent.removeAll(entry);
    recent.prepend(entry);
    while (recent.size() > k_recentCount)
        recent.removeLast();
    settings.setValue(k_recentKey, recent);
}

void MainWindow::ChooseProjectFolder()
{
    const QString folder = QFileDialog::getExistingDirectory(this, tr("Open Project Folder"));
    if (!folder.isEmpty())
        OpenProject(std::filesystem::path(FromQt(folder)));
}

void MainWindow::ApplyTheme(bool dark)
{
    sn::theme::Load(dark ? sn::theme::Scheme::Dark : sn::theme::Scheme::Light);
    DesktopSettings().setValue(k_themeKey, dark);
    QPalette palette = QApplication::palette();
    const QColor window = ThemeColor("Window_Background");
    const QColor text = ThemeColor("Explorer_NormalText");
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::Button, window);
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::ButtonText, text);
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::Base, ThemeColor("Explorer_BackgroundColor"));
    palette.setColor(QPalette::AlternateBase, window);
    palette.setColor(QPalette::Highlight, ThemeColor("Explorer_SelectionBackground"));
    palette.setColor(QPalette::HighlightedText, ThemeColor("Explorer_SelectionText"));
    setPalette(palette);
    for (PaneWidget* pane : m_panes)
        pane->update();
    update();
}

void MainWindow::ShowPreferences()
{
    PreferencesDialog dialog(m_session.GetHost().Preferences(), this);
    dialog.exec();
    m_driver.Pump();
}
} // namespace sn::qt
