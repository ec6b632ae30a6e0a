#include "sonarium/qt/DesktopRun.h"

#include "sonarium/qt/DesktopShell.h"
#include "sonarium/qt/MainWindow.h"
#include "sonarium/qt/QtDialogService.h"
#include "sonarium/qt/QtDrags.h"
#include "sonarium/qt/QtMenuPresenter.h"
#include "sonarium/qt/QtWindowSystemDriver.h"

#include <QApplication>
#include <QDir>
#include <QPixmap>

namespace sn::qt
{
namespace
{
constexpr int k_width = 1200;
constexpr int k_height = 800;

// Everything the desktop installs into the portable layers, for the life of one run.
struct DesktopBindings
{
    explicit DesktopBindings(QWidget* window)
        : menus(window), dialogs(window), scoped(&dialogs), drags(window), scopedDrags(&drags)
    {
    }

    QtMenuPresenter menus;
    QtDialogService dialogs;
    ScopedDialogService scoped;
    QtDragDriver drags;
    ScopedDragDriver scopedDrags;
    DesktopShell shell;
};
} // namespace

bool HasDisplay()
{
    if (qEnvironmentVariable("QT_QPA_PLATFORM") == QLatin1String("offscreen"))
        return false;
    return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

int RunDesktop(AppSession& session, std::filesystem::path const& project, std::filesystem::path const& fallback,
               int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("sonarium"));
    QtWindowSystemDriver driver;
    MainWindow window(session, driver);
    DesktopBindings bindings(&window);
    window.RestoreWindowState();
    window.show();
    // Shown first, so that the user sees the project coming.
    QMetaObject::invokeMethod(
        &window, [&] { window.OpenStartProject(project, fallback); }, Qt::QueuedConnection);
    return QApplication::exec();
}

bool RenderOffscreen(AppSession& session, int argc, char** argv, Screenshot& shot, std::string& error)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QtWindowSystemDriver driver;
    MainWindow window(session, driver);
    DesktopBindings bindings(&window);
    window.resize(k_width, k_height);
    window.show();
    // Let layout, the explorer's deferred work and the first paint happen.
    for (int round = 0; round < 3; ++round)
    {
        QApplication::processEvents();
        driver.Pump();
    }
    const QPixmap picture = window.grab();
    shot.path = std::filesystem::path(
        QDir::temp()
            .filePath(QStringLiteral("sonarium-window-%1.png").arg(QApplication::applicationPid()))
            .toStdString());
    shot.width = picture.width();
    shot.height = picture.height();
    if (!picture.save(QString::fromStdString(shot.path.string()), "PNG"))
    {
        error = "cannot write " + shot.path.string();
        return false;
    }
    window.close();
    return true;
}
} // namespace sn::qt
