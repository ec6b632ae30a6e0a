// The Qt tests share one application object, always offscreen. Each test process keeps the
// settings its windows save (theme, recent projects, panes) in a folder of its own, since ctest
// runs tests side by side, and removes it at the end.
#include <QApplication>
#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QTemporaryDir config(QDir::tempPath() + QStringLiteral("/sonarium-qt-config-XXXXXX"));
    qputenv("XDG_CONFIG_HOME", config.path().toLocal8Bit());
    QApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
