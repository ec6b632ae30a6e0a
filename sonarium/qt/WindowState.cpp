// What the main window keeps between runs and across projects: its place on the screen, the
// user's splitter sizes, the platform chosen in each project and the project opened last.

#include "sonarium/core/model/CurrentState.h"
#include "sonarium/qt/DesktopSettings.h"
#include "sonarium/qt/MainWindow.h"
#include "sonarium/qt/PaneWidget.h"
#include "sonarium/qt/QtText.h"
#include "sonarium/qt/SidePanels.h"

#include <QSplitter>

#include <numeric>

namespace sn::qt
{
namespace
{
const QString k_geometryKey = QStringLiteral("Window/Geometry");
const QString k_splitterKey = QStringLiteral("Window/Splitter");
constexpr int k_width = 1200;
constexpr int k_height = 800;
constexpr int k_paneWidth = 360;
constexpr int k_panelsWidth = 380;
} // namespace

void MainWindow::RestoreWindowState()
{
    QSettings settings = DesktopSettings();
    if (!restoreGeometry(settings.value(k_geometryKey).toByteArray()))
        resize(k_width, k_height);
    QList<int> sizes;
    for (QVariant const& size : settings.value(k_splitterKey).toList())
        if (size.toInt() >= 0)
            sizes << size.toInt();
    if (!sizes.isEmpty())
    {
        m_splitterSizes = sizes;
        LayOutSplitter();
    }
}

void MainWindow::SaveWindowState()
{
    RememberSplitter();
    QSettings settings = DesktopSettings();
    settings.setValue(k_geometryKey, saveGeometry());
    QVariantList sizes;
    for (int size : m_splitterSizes)
        sizes << size;
    settings.setValue(k_splitterKey, sizes);
}

void MainWindow::RememberSplitter()
{
    const QList<int> sizes = m_splitter->sizes();
    // Before the window is first laid out every size is 0: nothing the user chose.
    if (std::accumulate(sizes.begin(), sizes.end(), 0) > 0)
        m_splitterSizes = sizes;
}

void MainWindow::LayOutSplitter()
{
    const int count = m_splitter->count();
    if (count == 0)
        return;
    QList<int> sizes = m_splitterSizes;
    if (sizes.size() != count)
    {
        // Another number of panes: the side panels keep their width, the panes share the rest.
        const int panels = sizes.isEmpty() ? k_panelsWidth : sizes.back();
        int panesWidth = (count - 1) * k_paneWidth;
        if (sizes.size() > 1)
            panesWidth = std::accumulate(sizes.begin(), sizes.end() - 1, 0);
        sizes.clear();
        for (int i = 0; i + 1 < count; ++i)
            sizes << std::max(1, panesWidth / (count - 1));
        sizes << panels;
    }
    m_splitter->setSizes(sizes);
}

void MainWindow::RestorePlatform()
{
    Project* project = m_session.GetProject();
    if (!project)
        return;
    const GUID platform = LastPlatform(project->GetFolder());
    for (Platform const& known : project->Platforms())
        if (known.id == platform)
            m_session.GetHost().SetPlatform(platform);
}

void MainWindow::UpdateTitle()
{
    Project* project = m_session.GetProject();
    const QString name = project ? ToQt(std::wstring(project->GetName().c_str())) : QString();
    setWindowTitle(name.isEmpty()                         ? tr("Sonarium")
                   : m_session.ReadOnlyReason().empty() ? tr("%1 - Sonarium").arg(name)
                                                          : tr("%1 [read-only] - Sonarium").arg(name));
}

void MainWindow::OpenStartProject(std::filesystem::path const& given, std::filesystem::path const& fallback)
{
    if (!given.empty())
    {
        OpenProject(given);
        return;
    }
    std::error_code error;
    const std::filesystem::path last = LastProject();
    if (!last.empty() && std::filesystem::exists(last, error) && OpenProject(last))
        return;
    OpenProject(fallback);
}
} // namespace sn::qt
