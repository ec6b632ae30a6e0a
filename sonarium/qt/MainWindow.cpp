#include "sonarium/qt/MainWindow.h"

#include "host/Utf8.h"
#include "sonarium/core/model/CurrentState.h"
#include "sonarium/qt/DesktopSettings.h"
#include "sonarium/qt/PropertiesWidget.h"
#include "sonarium/qt/NewPaneDialog.h"
#include "sonarium/qt/OpenProgressReporter.h"
#include "sonarium/qt/PaneWidget.h"
#include "sonarium/qt/QtText.h"
#include "sonarium/qt/QtWindowSystemDriver.h"
#include "sonarium/qt/SidePanels.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QLabel>
#include <QMessageBox>
#include <QSplitter>
#include <QStatusBar>
#include <QToolBar>

#include <algorithm>

namespace sn::qt
{
namespace
{
QString JoinLines(std::vector<std::wstring> const& lines)
{
    QStringList joined;
    for (std::wstring const& line : lines)
        joined << ToQt(line);
    return joined.join(QLatin1Char('\n'));
}
} // namespace

MainWindow::MainWindow(AppSession& session, QtWindowSystemDriver& driver)
    : m_session(session), m_driver(driver)
{
    setWindowTitle(tr("Sonarium"));
    m_splitter = new QSplitter(Qt::Horizontal, this);
    setCentralWidget(m_splitter);
    m_panels = new SidePanels(m_session, m_driver, m_splitter);
    m_splitter->addWidget(m_panels);

    auto* selectors = addToolBar(tr("Platform and Language"));
    selectors->setObjectName(QStringLiteral("selectors"));
    selectors->setMovable(false);
    selectors->addWidget(new QLabel(tr(" Platform: "), selectors));
    m_platforms = new QComboBox(selectors);
    selectors->addWidget(m_platforms);
    selectors->addWidget(new QLabel(tr("  Language: "), selectors));
    m_languages = new QComboBox(selectors);
    selectors->addWidget(m_languages);
    connect(m_platforms, &QComboBox::currentIndexChanged, this, &MainWindow::OnPlatformChosen);
    connect(m_languages, &QComboBox::currentIndexChanged, this, &MainWindow::OnLanguageChosen);

    // Before anything else hears that the queue ran: the pane the focus moved into brings its
    // toolbar and the inspector to its selection, and the panes then show that.
    connect(&m_driver, &QtWindowSystemDriver::Pumped, this, [this] { m_session.FollowFocus(); });
    connect(m_splitter, &QSplitter::splitterMoved, this, &MainWindow::RememberSplitter);
    connect(m_panels->Inspector(), &PropertiesWidget::Refused, this,
            [this](QString const& why) { statusBar()->showMessage(tr("Not changed: %1").arg(why), 8000); });
    BuildMenus();
    BuildPanes();
    FillSelectors();
    m_session.Recorder().SetListener(&MainWindow::OnRecorderChanged, this);
    connect(&m_driver, &QtWindowSystemDriver::Pumped, this, &MainWindow::UpdateEditMenu);
    UpdateTitle();
    statusBar()->showMessage(m_session.GetProject()
                                 ? ToQt(std::wstring(m_session.GetProject()->GetName().c_str()))
                                 : tr("No project"));
    WatchHostReports();
}

MainWindow::~MainWindow()
{
    m_session.Recorder().SetListener(nullptr, nullptr);
    ClearPanes();
}

bool MainWindow::HasUnsavedChanges(AppSession& session)
{
    Project* project = session.GetProject();
    if (!project)
        return false;
    if (project->IsDirty())
        return true;
    for (WorkUnitObject* unit : project->FileWorkUnits())
        if (unit->IsDirty())
            return true;
    return false;
}

void MainWindow::BuildPanes()
{
    if (m_session.Panes().empty() && m_session.GetProject())
    {
        // The panes the user left last time, or the default pair.
        std::vector<PaneDefinition> definitions = LoadPaneLayout();
        if (definitions.empty())
            definitions = DefaultPanes();
        for (PaneDefinition const& definition : definitions)
            m_session.OpenPane(definition);
    }
    int index = 0;
    for (Pane const& pane : m_session.Panes())
        AddPaneWidget(pane, index++);
    LayOutSplitter();
    m_driver.Pump();
}

void MainWindow::AddPaneWidget(Pane const& pane, int index)
{
    auto* widget = new PaneWidget(pane, m_session, m_driver, m_splitter);
    m_splitter->insertWidget(index, widget);
    m_panes.push_back(widget);
    connect(widget, &PaneWidget::CloseRequested, this, &MainWindow::ClosePane, Qt::QueuedConnection);
}

void MainWindow::DropPaneWidgets()
{
    // The widgets borrow the views, so they go first.
    for (PaneWidget* widget : m_panes)
        delete widget;
    m_panes.clear();
}

void MainWindow::ClearPanes()
{
    DropPaneWidgets();
    m_session.CloseAllPanes();
    m_driver.Pump();
}

void MainWindow::ChooseNewPane()
{
    std::vector<std::wstring> taken;
    for (Pane const& pane : m_session.Panes())
        taken.push_back(pane.name);
    NewPaneDialog dialog(taken, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    RememberSplitter();
    Pane& pane = m_session.OpenPane(dialog.Definition());
    AddPaneWidget(pane, static_cast<int>(m_panes.size()));
    LayOutSplitter();
    SavePaneLayout(m_session.Panes());
    m_driver.Pump();
}

void MainWindow::ClosePane(PaneWidget* widget)
{
    auto found = std::find(m_panes.begin(), m_panes.end(), widget);
    if (found == m_panes.end())
        return;
    DlgProjectExplorer* view = widget->View();
    RememberSplitter();
    m_panes.erase(found);
    delete widget;
    LayOutSplitter();
    // The host ends the view as it ends any closed pane: its expand and scroll state are saved.
    m_session.ClosePaneOf(view);
    SavePaneLayout(m_session.Panes());
    m_driver.Pump();
}

void MainWindow::FillSelectors()
{
    m_fillingSelectors = true;
    m_platforms->clear();
    m_languages->clear();
    if (Project* project = m_session.GetProject())
    {
        CProp& properties = m_session.GetHost().Properties();
        const GUID current = properties[propCurrentPlatform].GetGUID();
        for (size_t i = 0; i < project->Platforms().size(); ++i)
        {
            Platform const& platform = project->Platforms()[i];
            m_platforms->addItem(ToQt(std::wstring(platform.name.c_str())));
            if (platform.id == current)
                m_platforms->setCurrentIndex(static_cast<int>(i));
        }
        const long long language = properties[propCurrentLanguage].GetInt();
        for (size_t i = 0; i < project->Languages().size(); ++i)
        {
            Language const& entry = project->Languages()[i];
            m_languages->addItem(ToQt(std::wstring(entry.name.c_str())));
            if (static_cast<long long>(entry.id) == language)
                m_languages->setCurrentIndex(static_cast<int>(i));
        }
    }
    m_platforms->setEnabled(m_platforms->count() > 1);
    m_languages->setEnabled(m_languages->count() > 1);
    m_fillingSelectors = false;
}

void MainWindow::OnPlatformChosen(int index)
{
    Project* project = m_session.GetProject();
    if (m_fillingSelectors || !project || index < 0 || index >= static_cast<int>(project->Platforms().size()))
        return;
    m_session.GetHost().SetPlatform(project->Platforms()[static_cast<size_t>(index)].id);
    RememberPlatform(project->GetFolder(), project->Platforms()[static_cast<size_t>(index)].id);
    m_driver.Pump();
}

void MainWindow::OnLanguageChosen(int index)
{
    Project* project = m_session.GetProject();
    if (m_fillingSelectors || !project || index < 0 || index >= static_cast<int>(project->Languages().size()))
        return;
    m_session.GetHost().SetLanguage(project->Languages()[static_cast<size_t>(index)].id);
    m_driver.Pump();
}

bool MainWindow::OpenProject(std::filesystem::path const& path)
{
    if (!OfferToSave())
        return false;
    // The session rebuilds its panes around the project opened; the widgets follow after.
    RememberSplitter();
    DropPaneWidgets();
    std::vector<std::wstring> messages;
    OpenProgressReporter progress(*this, ToQt(path.filename().wstring()), m_progressDelayMs);
    const bool opened = m_session.OpenProject(path, messages, std::ref(progress));
    if (!opened && !progress.Cancelled())
        messages.push_back(L"The project " + path.wstring() + L" could not be opened.");
    if (!messages.empty())
        QMessageBox::warning(this, tr("Open Project"), JoinLines(messages));
    if (opened)
    {
        RememberProject(path);
        RestorePlatform();
    }
    BuildPanes();
    FillSelectors();
    RefreshFromRecorder();
    const QString name = ToQt(path.wstring());
    if (opened)
    {
        // Opened read-only, the status says why along with what was read.
        const std::string& readOnly = m_session.ReadOnlyReason();
        statusBar()->showMessage(tr("Opened %1 (%2 work units read)").arg(name).arg(progress.Total()) +
                                 (readOnly.empty() ? QString() : QStringLiteral(": ") + ToQt(Utf8::ToWide(readOnly))));
    }
    else
        statusBar()->showMessage(progress.Cancelled() ? tr("Opening %1 was cancelled").arg(name) : tr("Not opened"));
    ShowReadOnly();
    return opened;
}

bool MainWindow::SaveProject()
{
    std::vector<std::wstring> messages;
    const bool saved = m_session.SaveProject(messages);
    if (!messages.empty())
        QMessageBox::warning(this, tr("Save Project"), JoinLines(messages));
    statusBar()->showMessage(saved ? tr("Saved") : tr("Not saved"));
    return saved;
}

bool MainWindow::OfferToSave()
{
    if (!HasUnsavedChanges(m_session))
        return true;
    const auto answer = QMessageBox::question(
        this, tr("Unsaved Changes"), tr("The project has unsaved changes. Save them?"),
        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save);
    if (answer == QMessageBox::Cancel)
        return false;
    return answer == QMessageBox::Discard || SaveProject();
}

void MainWindow::CloseProject()
{
    if (!OfferToSave())
        return;
    RememberSplitter();
    DropPaneWidgets();
    m_session.CloseProject();
    BuildPanes();
    FillSelectors();
    RefreshFromRecorder();
    statusBar()->showMessage(tr("No project"));
    ShowReadOnly();
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (!OfferToSave())
    {
        event->ignore();
        return;
    }
    SaveWindowState();
    ClearPanes();
    // Closing the panes saved their state: a failing preferences file is told before the window goes.
    m_closing = true;
    m_session.Reports().ReportPreferenceProblems();
    event->accept();
}

void MainWindow::OnRecorderChanged(void* context)
{
    // Notifications arrive in the middle of the explorer's work: the panels follow afterwards.
    auto* window = static_cast<MainWindow*>(context);
    if (window->m_refreshQueued)
        return;
    window->m_refreshQueued = true;
    QMetaObject::invokeMethod(window, &MainWindow::RefreshFromRecorder, Qt::QueuedConnection);
}

void MainWindow::RefreshFromRecorder()
{
    m_refreshQueued = false;
    m_panels->Refresh();
}
} // namespace sn::qt
