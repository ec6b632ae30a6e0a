// The main window's menus and side panels over a session of the sample project: the Edit menu
// follows undo and the views' answers, the panels follow what the explorer sent, and the
// preferences dialog stores what the user changed.

#include "TestPaths.h"

#include "host/UserPreferences.h"
#include "sonarium/app/session/AppSession.h"
#include "sonarium/app/session/TreePoints.h"
#include "sonarium/core/host/ProjectBuilder.h"
#include "sonarium/core/model/ProjectEdit.h"
#include "sonarium/qt/PropertiesWidget.h"
#include "sonarium/qt/MainWindow.h"
#include "sonarium/qt/PaneWidget.h"
#include "sonarium/qt/PreferencesDialog.h"
#include "sonarium/qt/QtWindowSystemDriver.h"
#include "sonarium/qt/SidePanels.h"
#include "sonarium/qt/TreeViewWidget.h"

#include <QAction>
#include <QCheckBox>
#include <QDeadlineTimer>
#include <QLabel>
#include <QListWidget>
#include <QMenuBar>
#include <QPushButton>
#include <QStatusBar>
#include <QTest>
#include <QToolButton>

#include <gtest/gtest.h>

#include <filesystem>

namespace
{
class WindowFixture : public testing::Test
{
protected:
    void SetUp() override
    {
        std::vector<std::wstring> messages;
        ASSERT_TRUE(session.OpenProject(SONARIUM_SAMPLES_DIR "/Demo", messages));
        window = std::make_unique<sn::qt::MainWindow>(session, driver);
        window->resize(1200, 800);
        window->show();
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }

    void TearDown() override
    {
        window.reset();
        std::filesystem::remove(preferences);
    }

    // The Edit menu's entries by their text, brought up to date as opening the menu does.
    std::map<QString, QAction*> EditMenu()
    {
        for (QAction* top : window->menuBar()->actions())
            if (top->text() == QStringLiteral("&Edit"))
            {
                Q_EMIT top->menu()->aboutToShow();
                std::map<QString, QAction*> entries;
                for (QAction* action : top->menu()->actions())
                    entries[action->text()] = action;
                return entries;
            }
        ADD_FAILURE() << "no Edit menu";
        return {};
    }

    std::filesystem::path preferences = PrivateTestFile(".json");
    sn::AppSession session{sn::HostOptions{preferences}};
    sn::qt::QtWindowSystemDriver driver;
    std::unique_ptr<sn::qt::MainWindow> window;
};

using MainWindowMenus = WindowFixture;
using MainWindowPanels = WindowFixture;
} // namespace

TEST_F(MainWindowMenus, EditFollowsUndoAndWhatTheFocusedViewAllows)
{
    auto edit = EditMenu();
    EXPECT_FALSE(edit[QStringLiteral("&Undo")]->isEnabled());
    EXPECT_FALSE(edit[QStringLiteral("&Redo")]->isEnabled());
    for (const char* text : {"Cu&t", "&Copy", "&Paste"})
        EXPECT_FALSE(edit[QString::fromLatin1(text)]->isEnabled()) << text << ": the view does not allow it";
    // Nothing selected: nothing to delete or rename, and the keys say so instead of doing nothing.
    EXPECT_FALSE(edit[QStringLiteral("&Delete")]->isEnabled());
    EXPECT_FALSE(edit[QStringLiteral("Re&name")]->isEnabled());
    EXPECT_EQ(edit[QStringLiteral("&Delete")]->statusTip(), QStringLiteral("nothing is selected in Audio"));
    QTest::keyClick(window.get(), Qt::Key_F2);
    EXPECT_EQ(window->statusBar()->currentMessage(), QStringLiteral("Cannot rename: nothing is selected in Audio"));

    PETreeCtrl& tree = window->PaneWidgets().front()->View()->GetTreeCtrl();
    auto select = [&](wchar_t const* path, UINT keys)
    {
        sn::ProjectObject* object = sn::FindByPath(*session.GetProject(), path);
        ASSERT_NE(object, nullptr);
        HTREEITEM item = tree.GetItemWithGUID(object->Id(), TVI_ROOT);
        ASSERT_NE(item, nullptr);
        tree.Click(sn::LabelPoint(tree, item), keys);
        driver.Pump();
    };
    select(L"AudioObjects/World", 0);
    edit = EditMenu();
    EXPECT_TRUE(edit[QStringLiteral("&Delete")]->isEnabled());
    EXPECT_TRUE(edit[QStringLiteral("Re&name")]->isEnabled());
    select(L"AudioObjects/Interface", MK_CONTROL);
    edit = EditMenu();
    EXPECT_TRUE(edit[QStringLiteral("&Delete")]->isEnabled());
    EXPECT_FALSE(edit[QStringLiteral("Re&name")]->isEnabled()) << "one object is renamed at a time";
    // A category's root can be neither.
    select(L"AudioObjects", 0);
    edit = EditMenu();
    EXPECT_FALSE(edit[QStringLiteral("&Delete")]->isEnabled());
    EXPECT_FALSE(edit[QStringLiteral("Re&name")]->isEnabled());

    sn::ProjectObject* world = sn::FindByPath(*session.GetProject(), L"AudioObjects/World");
    ASSERT_TRUE(sn::ProjectEdit::Rename(world, L"Overworld"));
    driver.Pump();
    edit = EditMenu();
    ASSERT_TRUE(edit[QStringLiteral("&Undo")]->isEnabled());
    edit[QStringLiteral("&Undo")]->trigger();
    EXPECT_EQ(world->GetName(), L"World");
    edit = EditMenu();
    EXPECT_FALSE(edit[QStringLiteral("&Undo")]->isEnabled());
    ASSERT_TRUE(edit[QStringLiteral("&Redo")]->isEnabled());
    edit[QStringLiteral("&Redo")]->trigger();
    EXPECT_EQ(world->GetName(), L"Overworld");
    EXPECT_TRUE(sn::qt::MainWindow::HasUnsavedChanges(session));

    // With every pane closed there is no view to send a command to.
    while (!window->PaneWidgets().empty())
    {
        QTest::mouseClick(window->PaneWidgets().front()->findChild<QToolButton*>(QStringLiteral("closePane")),
                          Qt::LeftButton);
        QCoreApplication::processEvents();
    }
    EXPECT_TRUE(session.Panes().empty());
    edit = EditMenu();
    EXPECT_FALSE(edit[QStringLiteral("&Delete")]->isEnabled());
    EXPECT_FALSE(edit[QStringLiteral("Re&name")]->isEnabled());
}

TEST_F(MainWindowPanels, PanelsShowWhatTheExplorerSentAndPlayDrivesTheHost)
{
    sn::qt::PaneWidget* audio = window->PaneWidgets().front();
    auto click = [&](std::wstring const& text)
    {
        std::vector<PETreeRow> rows;
        audio->View()->GetTreeCtrl().GetVisibleRows(rows);
        const auto row =
            std::find_if(rows.begin(), rows.end(), [&](PETreeRow const& r) { return r.text == text; });
        ASSERT_NE(row, rows.end());
        QTest::mouseClick(audio->TreeView()->viewport(), Qt::LeftButton, {},
                          QPoint(row->label.left + 4, (row->row.top + row->row.bottom) / 2));
    };
    // The first selection of a new view is never inspected: the second click is.
    click(L"Characters");
    click(L"World");
    driver.Pump();
    QCoreApplication::processEvents();

    sn::qt::SidePanels* panels = window->Panels();
    ASSERT_EQ(panels->EventViewer()->count(), 1);
    EXPECT_EQ(panels->EventViewer()->item(0)->text(), QStringLiteral("AudioObjects/World"));
    // The inspection is posted at the end of the click; let it arrive.
    QDeadlineTimer limit(5000);
    while (panels->Inspector()->Heading()->text() != QStringLiteral("World") && !limit.hasExpired())
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    EXPECT_EQ(panels->Inspector()->Heading()->text(), QStringLiteral("World"));
    EXPECT_EQ(panels->TransportText(), QStringLiteral("AudioObjects/World"));

    auto button = [panels](QString const& text) -> QPushButton*
    {
        for (QPushButton* candidate : panels->findChildren<QPushButton*>())
            if (candidate->text() == text)
                return candidate;
        return nullptr;
    };
    ASSERT_NE(button(QStringLiteral("Play")), nullptr);
    button(QStringLiteral("Play"))->click();
    EXPECT_TRUE(session.GetHost().IsInPlayback());
    button(QStringLiteral("Stop"))->click();
    EXPECT_FALSE(session.GetHost().IsInPlayback());
}

TEST_F(MainWindowPanels, PreferencesKeepDefaultsUnwrittenAndStoreWhatChanged)
{
    IUserPreferences& store = session.GetHost().Preferences();
    {
        sn::qt::PreferencesDialog dialog(store);
        const QList<QCheckBox*> boxes = dialog.findChildren<QCheckBox*>();
        ASSERT_FALSE(boxes.isEmpty());
        EXPECT_TRUE(boxes.front()->isChecked()) << "inspect on single click is on by default";
        dialog.accept();
    }
    EXPECT_EQ(store.GetIntValue(L"Preferences", L"InspectOnSingleClick", 7), 7)
        << "nothing changed, nothing written";

    sn::qt::PreferencesDialog dialog(store);
    dialog.findChildren<QCheckBox*>().front()->setChecked(false);
    dialog.accept();
    EXPECT_EQ(store.GetIntValue(L"Preferences", L"InspectOnSingleClick", 7), 0);
    sn::qt::PreferencesDialog again(store);
    EXPECT_FALSE(again.findChildren<QCheckBox*>().front()->isChecked()) << "the stored choice is shown";
}
