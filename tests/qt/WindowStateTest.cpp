// The main window as a user meets it: its layout kept and restored, the pane the keys go to
// shown as such, the theme on every window, the inspector's edits, and a slow opening that
// shows its progress and can be cancelled.

#include "TestPaths.h"

#include "host/ObjectIcons.h"
#include "sonarium/app/session/AppSession.h"
#include "sonarium/app/session/TreePoints.h"
#include "sonarium/core/host/ProjectBuilder.h"
#include "sonarium/core/host/Theme.h"
#include "sonarium/core/model/CurrentState.h"
#include "sonarium/core/model/ProjectEdit.h"
#include "sonarium/qt/ApplicationTheme.h"
#include "sonarium/qt/DesktopSettings.h"
#include "sonarium/qt/IconArt.h"
#include "sonarium/qt/PropertiesWidget.h"
#include "sonarium/qt/MainWindow.h"
#include "sonarium/qt/PaneWidget.h"
#include "sonarium/qt/QtText.h"
#include "sonarium/qt/QtWindowSystemDriver.h"
#include "sonarium/qt/SidePanels.h"
#include "sonarium/qt/TreeViewWidget.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QMessageBox>
#include <QPainter>
#include <QProgressDialog>
#include <QSplitter>
#include <QStatusBar>
#include <QTableWidget>
#include <QTest>
#include <QTimer>
#include <QToolButton>

#include <gtest/gtest.h>

#include <filesystem>

namespace
{
const std::filesystem::path k_sample = SONARIUM_SAMPLES_DIR "/Demo";

class WindowState : public testing::Test
{
protected:
    void SetUp() override
    {
        DesktopSettings().clear();
        window = NewWindow();
        ASSERT_TRUE(window->OpenProject(k_sample));
    }

    void TearDown() override
    {
        window.reset();
        DesktopSettings().clear();
        std::filesystem::remove(preferences);
    }

    std::unique_ptr<sn::qt::MainWindow> NewWindow()
    {
        auto made = std::make_unique<sn::qt::MainWindow>(session, driver);
        made->RestoreWindowState();
        made->show();
        QCoreApplication::processEvents();
        return made;
    }

    QSplitter* Splitter() { return window->findChild<QSplitter*>(); }

    void Click(size_t pane, std::wstring const& path)
    {
        sn::qt::PaneWidget* widget = window->PaneWidgets()[pane];
        PETreeCtrl& tree = widget->View()->GetTreeCtrl();
        HTREEITEM item = tree.GetItemWithGUID(sn::FindByPath(*session.GetProject(), path)->Id(), TVI_ROOT);
        ASSERT_NE(item, nullptr);
        tree.EnsureVisible(item);
        const CPoint point = sn::LabelPoint(tree, item);
        QTest::mouseClick(widget->TreeView()->viewport(), Qt::LeftButton, {}, QPoint(point.x, point.y));
        QCoreApplication::processEvents();
    }

    static QSettings DesktopSettings() { return sn::qt::DesktopSettings(); }

    std::filesystem::path preferences = PrivateTestFile(".json");
    sn::AppSession session{sn::HostOptions{preferences}};
    sn::qt::QtWindowSystemDriver driver;
    std::unique_ptr<sn::qt::MainWindow> window;
};

// How far apart two colours' brightnesses are, 0 to 255.
int Contrast(QColor const& a, QColor const& b)
{
    return std::abs(qGray(a.rgb()) - qGray(b.rgb()));
}

// The mean contrast against the background of the pixels a disabled icon covers, as it is
// drawn over that background.
int DisabledIconContrast(QColor const& background)
{
    const QPixmap icon = sn::qt::IconArt::Get().Pixmap(ObjectIcons::IconType_SoundSFX, true, 16, 1.0);
    QImage canvas(16, 16, QImage::Format_ARGB32);
    canvas.fill(background);
    {
        QPainter painter(&canvas);
        painter.drawPixmap(0, 0, icon);
    }
    const QImage art = icon.toImage();
    int total = 0;
    int count = 0;
    for (int y = 0; y < 16; ++y)
        for (int x = 0; x < 16; ++x)
            if (art.pixelColor(x, y).alpha() > 0)
            {
                total += Contrast(canvas.pixelColor(x, y), background);
                ++count;
            }
    return count ? total / count : 0;
}
} // namespace

TEST_F(WindowState, TheLayoutNeverJumpsAndComesBackAtTheNextStart)
{
    window->resize(1200, 800);
    QCoreApplication::processEvents();
    Splitter()->setSizes({330, 290, 560});
    QCoreApplication::processEvents();
    const QList<int> chosen = Splitter()->sizes();

    // A long path in the transport leaves the side panels as wide as they were.
    const wchar_t* deep =
        L"AudioObjects/Characters/Player/Player/Footsteps/Footsteps_Gravel/Footstep_Gravel_03";
    window->PaneWidgets()[0]->View()->FindOrbObject(sn::FindByPath(*session.GetProject(), deep));
    driver.Pump();
    Click(0, L"AudioObjects/Characters");
    Click(0, deep);
    ASSERT_EQ(window->Panels()->TransportText().toStdWString(), deep);
    EXPECT_EQ(Splitter()->sizes(), chosen);

    // Opening a project again keeps the user's sizes; so does the next start, with the window's
    // place, the platform chosen and the project opened last.
    ASSERT_TRUE(window->OpenProject(k_sample));
    EXPECT_EQ(Splitter()->sizes(), chosen);
    auto* platforms = window->findChildren<QComboBox*>().front();
    ASSERT_GT(platforms->count(), 1);
    platforms->setCurrentIndex(1);
    const GUID platform = session.GetHost().Properties()[sn::propCurrentPlatform].GetGUID();
    window->resize(1100, 700);
    QCoreApplication::processEvents();
    const QList<int> resized = Splitter()->sizes();
    window->close();
    window.reset();
    session.GetHost().SetPlatform(session.GetProject()->Platforms().front().id);

    EXPECT_EQ(sn::qt::RecentProjects().value(0).toStdWString(),
              std::filesystem::absolute(k_sample).lexically_normal().wstring())
        << "the project opened enters Open Recent";
    window = NewWindow();
    window->OpenStartProject({}, "/nowhere/at/all");
    QCoreApplication::processEvents();
    EXPECT_EQ(window->size(), QSize(1100, 700));
    EXPECT_EQ(Splitter()->sizes(), resized);
    EXPECT_EQ(session.GetHost().Properties()[sn::propCurrentPlatform].GetGUID(), platform);
    EXPECT_EQ(session.GetProject()->GetFolder(), std::filesystem::absolute(k_sample).lexically_normal());
}

TEST_F(WindowState, TheFocusedPaneIsMarkedAndTabNeverLandsOnACloseButton)
{
    for (sn::qt::PaneWidget* pane : window->PaneWidgets())
        EXPECT_EQ(pane->findChild<QToolButton*>(QStringLiteral("closePane"))->focusPolicy(), Qt::NoFocus);
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    window->PaneWidgets()[0]->TreeView()->setFocus(Qt::TabFocusReason);
    EXPECT_TRUE(window->PaneWidgets()[0]->HasFocusedTree());
    EXPECT_FALSE(window->PaneWidgets()[1]->HasFocusedTree());
    for (int press = 0; press < 12; ++press)
    {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(qobject_cast<QToolButton*>(QApplication::focusWidget()), nullptr)
            << "Tab landed on " << QApplication::focusWidget()->objectName().toStdString();
    }
}

TEST_F(WindowState, TheThemeReachesEveryWindowAndDisabledIconsStayLegible)
{
    for (bool dark : {true, false})
    {
        sn::qt::ApplyApplicationTheme(dark);
        const QColor window = sn::qt::ThemeColor("Window_Background");
        QMessageBox box(QMessageBox::Warning, QStringLiteral("Caption"), QStringLiteral("Text"));
        QMenu menu;
        for (QWidget* shown : std::initializer_list<QWidget*>{&box, &menu})
        {
            EXPECT_EQ(shown->palette().color(QPalette::Window), window) << "dark " << dark;
            EXPECT_EQ(shown->palette().color(QPalette::Disabled, QPalette::WindowText),
                      sn::qt::ThemeColor("Window_DisabledText"));
        }
        EXPECT_TRUE(QCoreApplication::testAttribute(Qt::AA_DontUseNativeDialogs))
            << "file dialogs wear it too";
        EXPECT_GE(DisabledIconContrast(sn::qt::ThemeColor("Window_Background")), 60) << "dark " << dark;
    }

    // A category's root has art of its own.
    std::vector<PETreeRow> rows;
    window->PaneWidgets()[0]->View()->GetTreeCtrl().GetVisibleRows(rows);
    ASSERT_FALSE(rows.empty());
    EXPECT_EQ(rows.front().iconType, ObjectIcons::IconType_CategoryRoot);
    EXPECT_FALSE(sn::qt::IconArt::Get().Pixmap(ObjectIcons::IconType_CategoryRoot, false, 16, 1.0).isNull());
}

TEST_F(WindowState, ThePropertyEditsWhatItShowsAndSaysWhyWhenItCannot)
{
    Click(0, L"AudioObjects/Characters");
    Click(0, L"AudioObjects/World");
    sn::qt::PropertiesWidget* inspector = window->Panels()->Inspector();
    EXPECT_TRUE(QTest::qWaitFor([&] { return inspector->Heading()->text() == QStringLiteral("World"); }));
    QTableWidget* table = inspector->Table();
    ASSERT_GT(table->rowCount(), 5);
    EXPECT_EQ(table->item(1, 0)->text(), QStringLiteral("Name"));
    EXPECT_EQ(table->item(1, 1)->text(), QStringLiteral("World"));
    EXPECT_TRUE(table->item(1, 1)->flags() & Qt::ItemIsEditable);
    EXPECT_FALSE(table->item(2, 1)->flags() & Qt::ItemIsEditable) << "the GUID is read only";

    // An edit in the cell reaches the project as an undoable change.
    table->item(1, 1)->setText(QStringLiteral("Overworld"));
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return sn::FindByPath(*session.GetProject(), L"AudioObjects/Overworld") != nullptr; }));
    EXPECT_TRUE(session.GetHost().Undo().CanUndo());
    EXPECT_EQ(inspector->Heading()->text(), QStringLiteral("Overworld"));
    EXPECT_FALSE(inspector->Apply(QStringLiteral("name"), QStringLiteral(" ")));
    EXPECT_EQ(window->statusBar()->currentMessage(), QStringLiteral("Not changed: A name cannot be empty."));
    EXPECT_TRUE(inspector->Apply(QStringLiteral("colour"), QStringLiteral("3")));
    EXPECT_EQ(sn::FindByPath(*session.GetProject(), L"AudioObjects/Overworld")->GetColor(), 3);

    // The event viewer lists its objects with their icons.
    ASSERT_GT(window->Panels()->EventViewer()->count(), 0);
    EXPECT_FALSE(window->Panels()->EventViewer()->item(0)->icon().isNull());
}

TEST_F(WindowState, ASlowOpeningShowsItsProgressAndCanBeCancelled)
{
    sn::Project* open = session.GetProject();
    window->SetProgressDialogDelay(0);
    int shown = 0;
    QTimer cancel;
    QObject::connect(&cancel, &QTimer::timeout,
                     [&]
                     {
                         for (QProgressDialog* dialog : window->findChildren<QProgressDialog*>())
                             if (dialog->isVisible())
                             {
                                 ++shown;
                                 EXPECT_NE(dialog->labelText().indexOf(QStringLiteral("work units read")),
                                           -1);
                                 dialog->cancel();
                             }
                     });
    cancel.start(0);
    EXPECT_FALSE(window->OpenProject(k_sample));
    cancel.stop();
    EXPECT_GT(shown, 0);
    EXPECT_EQ(session.GetProject(), open) << "the open project stays";
    EXPECT_EQ(window->PaneWidgets().size(), 2u);
    EXPECT_TRUE(window->statusBar()->currentMessage().contains(QStringLiteral("was cancelled")));

    // Quick enough, no dialog: the status bar tells how many work units were read.
    window->SetProgressDialogDelay(60000);
    ASSERT_TRUE(window->OpenProject(k_sample));
    EXPECT_TRUE(window->findChildren<QProgressDialog*>().isEmpty());
    EXPECT_TRUE(window->statusBar()->currentMessage().contains(QStringLiteral("work units read")));
}
