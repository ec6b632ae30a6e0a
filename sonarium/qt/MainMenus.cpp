// The main window's menus and the host commands they send.

#include "host/HostMessages.h"
#include "sonarium/qt/ApplicationTheme.h"
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
#include <QShortcut>
#include <QStatusBar>

namespace sn::qt
{
namespace
{
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
    auto addEdit = [&](EditCommand command, QString const& text, QKeySequence const& keys)
    {
        QAction* action = edit->addAction(text);
        // The menu shows the keys; the window's shortcut takes them, also while the entry is
        // disabled, so that a key that cannot act says why instead of doing nothing.
        action->setShortcut(keys);
        action->setShortcutContext(Qt::WidgetShortcut);
        connect(action, &QAction::triggered, this, [this, command] { RunEdit(command); });
        auto* shortcut = new QShortcut(keys, this);
        connect(shortcut, &QShortcut::activated, this, [this, command] { RunEdit(command); });
        m_editActions[command] = action;
    };
    addEdit(EditCommand::Undo, tr("&Undo"), QKeySequence::Undo);
    addEdit(EditCommand::Redo, tr("&Redo"), QKeySequence::Redo);
    edit->addSeparator();
    addEdit(EditCommand::Cut, tr("Cu&t"), QKeySequence::Cut);
    addEdit(EditCommand::Copy, tr("&Copy"), QKeySequence::Copy);
    addEdit(EditCommand::Paste, tr("&Paste"), QKeySequence::Paste);
    addEdit(EditCommand::Delete, tr("&Delete"), QKeySequence::Delete);
    addEdit(EditCommand::Rename, tr("Re&name"), QKeySequence(Qt::Key_F2));

    AddObjectsMenu(*menuBar(), m_session, m_driver, this);
    AddCreateCommandKeys(*this, m_session, m_driver);

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

void MainWindow::RunEdit(EditCommand command)
{
    const std::wstring status = EditMenu(m_session).Run(command);
    m_driver.Pump();
    if (!status.empty())
        statusBar()->showMessage(ToQt(status), 8000);
}

void MainWindow::UpdateEditMenu()
{
    // Only questions here: asking must not change anything, so nothing is pumped.
    const EditMenu menu(m_session);
    for (auto const& [command, action] : m_editActions)
    {
        const EditAvailability availability = menu.Availability(command);
        action->setEnabled(availability.enabled);
        action->setStatusTip(ToQt(availability.why));
    }
}

void MainWindow::FillRecentMenu()
{
    m_recentMenu->clear();
    const QStringList recent = RecentProjects();
    for (QString const& path : recent)
        m_recentMenu->addAction(path, this,
                                [this, path] { OpenProject(std::filesystem::path(FromQt(path))); });
    m_recentMenu->setEnabled(!recent.isEmpty());
}

void MainWindow::ChooseProjectFolder()
{
    // Qt's own dialog, so that it wears the application's theme.
    const QString folder = QFileDialog::getExistingDirectory(
        this, tr("Open Project Folder"), QString(), QFileDialog::ShowDirsOnly | QFileDialog::DontUseNativeDialog);
    if (!folder.isEmpty())
        OpenProject(std::filesystem::path(FromQt(folder)));
}

void MainWindow::ApplyTheme(bool dark)
{
    ApplyApplicationTheme(dark);
    DesktopSettings().setValue(k_themeKey, dark);
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
