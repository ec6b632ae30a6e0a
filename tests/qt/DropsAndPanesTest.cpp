// Drags that Qt delivers reach the drop target registered on a pane's tree in the host's terms,
// and panes are added and closed from the main window as a user does.

#include "TestPaths.h"

#include "platform/Ole.h"
#include "DiskFixture.h"
#include "sonarium/app/session/AppSession.h"
#include "sonarium/app/session/TreePoints.h"
#include "sonarium/core/host/ProjectBuilder.h"
#include "sonarium/core/import/AudioWriter.h"
#include "sonarium/qt/DesktopSettings.h"
#include "sonarium/qt/MainWindow.h"
#include "sonarium/qt/NewPaneDialog.h"
#include "sonarium/qt/PaneWidget.h"
#include "sonarium/qt/QtDrags.h"
#include "sonarium/qt/QtWindowSystemDriver.h"
#include "sonarium/qt/TreeViewWidget.h"

#include <QCheckBox>
#include <QGuiApplication>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QTest>
#include <QToolButton>
#include <QUrl>

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace
{
// Stands in for the explorer's own drop target, recording what the drag loop delivers.
class RecordingTarget : public COleDropTarget
{
public:
    DROPEFFECT OnDragEnter(CWnd*, COleDataObject* data, DWORD keyState, CPoint point) override
    {
        entered.push_back({keyState, point});
        return Answer(data);
    }
    DROPEFFECT OnDragOver(CWnd*, COleDataObject* data, DWORD, CPoint) override { return Answer(data); }
    DROPEFFECT OnDropEx(CWnd*, COleDataObject* data, DROPEFFECT dropDefault, DROPEFFECT, CPoint) override
    {
        HGLOBAL memory = data->GetGlobalData(CF_HDROP);
        auto drop = static_cast<HDROP>(GlobalLock(memory));
        for (UINT i = 0, count = DragQueryFileW(drop, 0xFFFFFFFF, nullptr, 0); i < count; ++i)
        {
            std::wstring name(DragQueryFileW(drop, i, nullptr, 0), L'\0');
            DragQueryFileW(drop, i, name.data(), static_cast<UINT>(name.size() + 1));
            dropped.push_back(name);
        }
        GlobalUnlock(memory);
        GlobalFree(memory);
        return dropDefault;
    }
    void OnDragLeave(CWnd*) override { ++leaves; }

    DROPEFFECT Answer(COleDataObject* data) const
    {
        return data->IsDataAvailable(CF_HDROP) ? DROPEFFECT_COPY : DROPEFFECT_NONE;
    }

    std::vector<std::pair<DWORD, CPoint>> entered;
    std::vector<std::wstring> dropped;
    int leaves = 0;
};

class SessionFixture : public testing::Test
{
protected:
    void SetUp() override
    {
        std::vector<std::wstring> messages;
        ASSERT_TRUE(session.OpenProject(SONARIUM_SAMPLES_DIR "/Demo", messages));
    }
    void TearDown() override
    {
        session.CloseAllPanes();
        std::filesystem::remove(preferences);
    }

    std::filesystem::path preferences = PrivateTestFile(".json");
    sn::AppSession session{sn::HostOptions{preferences}};
    sn::qt::QtWindowSystemDriver driver;
};

using QtDrops = SessionFixture;
using QtPanes = SessionFixture;
} // namespace

TEST_F(QtDrops, FilesFromAFileManagerArriveAsAFileListWithTheKeysHeld)
{
    sn::Pane& pane = session.OpenPane(sn::DefaultPanes().front(), CRect(0, 0, 300, 600));
    sn::qt::PaneWidget widget(pane, session, driver);
    widget.resize(360, 500);
    widget.show();
    QWidget* viewport = widget.TreeView()->viewport();
    RecordingTarget target;
    target.Register(&pane.view->GetTreeCtrl());

    QMimeData files;
    files.setUrls({QUrl::fromLocalFile(QStringLiteral("/sounds/Rain Loop.wav")),
                   QUrl(QStringLiteral("https://example.org/remote.wav")),
                   QUrl::fromLocalFile(QStringLiteral("/sounds/Thunder.wav"))});
    const QPoint point(30, 25);
    QDragEnterEvent enter(point, Qt::CopyAction | Qt::MoveAction, &files, Qt::LeftButton,
                          Qt::ControlModifier);
    QCoreApplication::sendEvent(viewport, &enter);
    EXPECT_TRUE(enter.isAccepted());
    EXPECT_EQ(enter.dropAction(), Qt::CopyAction);
    ASSERT_EQ(target.entered.size(), 1u);
    EXPECT_EQ(target.entered[0].first, DWORD(MK_CONTROL | MK_LBUTTON));
    EXPECT_EQ(target.entered[0].second, CPoint(30, 25)) << "the tree's client point is the viewport's";

    QDropEvent drop(point, Qt::CopyAction | Qt::MoveAction, &files, Qt::LeftButton, Qt::ControlModifier);
    QCoreApplication::sendEvent(viewport, &drop);
    EXPECT_TRUE(drop.isAccepted());
    EXPECT_EQ(target.dropped, (std::vector<std::wstring>{L"/sounds/Rain Loop.wav", L"/sounds/Thunder.wav"}))
        << "only local files are offered";
    EXPECT_EQ(target.leaves, 0) << "a drop ends the visit without a leave";

    // Data with no local file is not offered at all; a refused drop is not accepted.
    QMimeData text;
    text.setText(QStringLiteral("Rain Loop"));
    QDragEnterEvent refused(point, Qt::CopyAction, &text, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(viewport, &refused);
    EXPECT_FALSE(refused.isAccepted());
    EXPECT_EQ(target.entered.size(), 1u);
}

TEST_F(QtDrops, LeavingEndsTheVisitAndTheNextEnterStartsAnother)
{
    sn::Pane& pane = session.OpenPane(sn::DefaultPanes().front(), CRect(0, 0, 300, 600));
    sn::qt::PaneWidget widget(pane, session, driver);
    widget.resize(360, 500);
    widget.show();
    RecordingTarget target;
    target.Register(&pane.view->GetTreeCtrl());
    QMimeData files;
    files.setUrls({QUrl::fromLocalFile(QStringLiteral("/sounds/Wind.wav"))});
    QWidget* viewport = widget.TreeView()->viewport();
    for (int visit = 0; visit < 2; ++visit)
    {
        QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &files, Qt::LeftButton, Qt::ShiftModifier);
        QCoreApplication::sendEvent(viewport, &enter);
        QDragLeaveEvent leave;
        QCoreApplication::sendEvent(viewport, &leave);
    }
    EXPECT_EQ(target.entered.size(), 2u);
    EXPECT_EQ(target.leaves, 2);
    EXPECT_EQ(target.entered[1].first, DWORD(MK_SHIFT | MK_LBUTTON));
    EXPECT_TRUE(target.dropped.empty());
}

// Files from a file manager dropped on a pane's own tree, in a copy of the sample project (an
// import writes next to the project).
TEST(QtFileDrops, WavFilesDroppedWithCtrlBecomeSoundsAndCtrlWithAltIsRefused)
{
    namespace fs = std::filesystem;
    // A private copy of the sample (without another test's lock file), the dropped files beside it.
    disk::TempFolder files;
    disk::SampleCopy project;
    const fs::path& dir = files.Path();
    for (const char* name : {"Gravel_A.wav", "Gravel_B.wav"})
    {
        std::string error;
        ASSERT_TRUE(sn::audio::WriteWav(dir / name, sn::audio::Synthesize(L"Footstep", 8000), 16, error)) << error;
    }
    {
        sn::AppSession session{sn::HostOptions{dir / "preferences.json"}};
        sn::qt::QtWindowSystemDriver driver;
        std::vector<std::wstring> messages;
        ASSERT_TRUE(session.OpenProject(project.Path(), messages));
        sn::Pane& pane = session.OpenPane(sn::DefaultPanes().front(), CRect(0, 0, 300, 600));
        sn::qt::PaneWidget widget(pane, session, driver);
        widget.resize(360, 500);
        widget.show();
        PETreeCtrl& tree = pane.view->GetTreeCtrl();
        sn::ProjectObject* world = sn::FindByPath(*session.GetProject(), L"AudioObjects/World");
        sn::ProjectObject* ambience = sn::FindByPath(*session.GetProject(), L"AudioObjects/World/Ambience");
        ASSERT_TRUE(world && ambience);
        tree.Expand(tree.GetItemWithGUID(world->Id(), TVI_ROOT), TVE_EXPAND);
        driver.Pump();
        const size_t before = ambience->Children().size();
        HTREEITEM row = tree.GetItemWithGUID(ambience->Id(), TVI_ROOT);
        ASSERT_NE(row, nullptr);
        const CPoint label = sn::LabelPoint(tree, row);
        const QPoint point(label.x, label.y);
        QMimeData files;
        files.setUrls({QUrl::fromLocalFile(QString::fromStdString((dir / "Gravel_A.wav").string())),
                       QUrl::fromLocalFile(QString::fromStdString((dir / "Gravel_B.wav").string()))});
        QWidget* viewport = widget.TreeView()->viewport();

        QDragEnterEvent refused(point, Qt::CopyAction | Qt::MoveAction, &files, Qt::LeftButton,
                                Qt::ControlModifier | Qt::AltModifier);
        QCoreApplication::sendEvent(viewport, &refused);
        EXPECT_EQ(refused.dropAction(), Qt::IgnoreAction);
        QDragLeaveEvent leave;
        QCoreApplication::sendEvent(viewport, &leave);

        QDragEnterEvent enter(point, Qt::CopyAction | Qt::MoveAction, &files, Qt::LeftButton, Qt::ControlModifier);
        QCoreApplication::sendEvent(viewport, &enter);
        EXPECT_EQ(enter.dropAction(), Qt::CopyAction);
        QDropEvent drop(point, Qt::CopyAction | Qt::MoveAction, &files, Qt::LeftButton, Qt::ControlModifier);
        QCoreApplication::sendEvent(viewport, &drop);
        EXPECT_TRUE(drop.isAccepted());
        driver.Pump();
        ASSERT_EQ(ambience->Children().size(), before + 2);
        EXPECT_EQ(ambience->Children()[before]->GetName(), L"Gravel_A");
        EXPECT_EQ(ambience->Children()[before + 1]->GetName(), L"Gravel_B");
        EXPECT_FALSE(WindowSystem::Get().IsWaitCursorShown());
        EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr) << "the wait cursor went with the import";
        session.CloseAllPanes();
    }
}

TEST(QtDragEffects, EffectsAndQtActionsConvertBothWays)
{
    using namespace sn::qt;
    EXPECT_EQ(ToDropEffects(ToDropActions(DROPEFFECT_COPY | DROPEFFECT_LINK)),
              DROPEFFECT_COPY | DROPEFFECT_LINK);
    EXPECT_EQ(ToDropAction(DROPEFFECT_MOVE | DROPEFFECT_LINK), Qt::MoveAction);
    EXPECT_EQ(ToDropAction(DROPEFFECT_NONE), Qt::IgnoreAction);
}

TEST(QtNewPane, ATitleOfItsOwnAndACategoryAreNeeded)
{
    sn::qt::NewPaneDialog dialog({L"Audio", L"Events"});
    EXPECT_EQ(dialog.TitleEdit()->text(), QStringLiteral("Explorer 3"));
    auto* ok = dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
    EXPECT_FALSE(ok->isEnabled()) << "no category is ticked";
    dialog.CategoryBoxes().front()->setChecked(true);
    dialog.CategoryBoxes().back()->setChecked(true);
    EXPECT_TRUE(ok->isEnabled());
    dialog.TitleEdit()->setText(QStringLiteral(" Audio "));
    EXPECT_FALSE(ok->isEnabled()) << "the title is taken";
    dialog.TitleEdit()->setText(QStringLiteral(" Mixing "));
    const sn::PaneDefinition definition = dialog.Definition();
    EXPECT_EQ(definition.name, L"Mixing");
    EXPECT_EQ(definition.categories.size(), 2u);
}

TEST_F(QtPanes, AClosedPaneEndsItsViewAndTheOthersLiveOn)
{
    sn::qt::MainWindow window(session, driver);
    window.resize(1200, 800);
    window.show();
    ASSERT_EQ(window.PaneWidgets().size(), 2u);
    sn::qt::PaneWidget* events = window.PaneWidgets().back();
    auto* close = events->findChild<QToolButton*>(QStringLiteral("closePane"));
    ASSERT_NE(close, nullptr);
    QTest::mouseClick(close, Qt::LeftButton);
    QCoreApplication::processEvents();
    ASSERT_EQ(window.PaneWidgets().size(), 1u);
    ASSERT_EQ(session.Panes().size(), 1u);
    EXPECT_EQ(session.Panes().front().name, L"Audio");
    EXPECT_EQ(window.PaneWidgets().front()->View(), session.Panes().front().view);

    // Reopening the project keeps the panes the user arranged.
    ASSERT_TRUE(window.OpenProject(SONARIUM_SAMPLES_DIR "/Demo"));
    ASSERT_EQ(session.Panes().size(), 1u);
    EXPECT_EQ(window.PaneWidgets().size(), 1u);
    EXPECT_EQ(window.PaneWidgets().front()->View(), session.Panes().front().view);
}

TEST_F(QtPanes, TheNextRunOpensThePanesTheUserLeft)
{
    sn::qt::SavePaneLayout(
        {{L"Mixing", {OrbObjectCategories::Busses}, {}, nullptr},
         {L"", {OrbObjectCategories::Events}, {}, nullptr},
         {L"Mixing", {OrbObjectCategories::Events}, {}, nullptr},
         {L"Logic", {OrbObjectCategories::Switches, OrbObjectCategories::States}, {}, nullptr}});
    {
        sn::qt::MainWindow window(session, driver);
        ASSERT_EQ(session.Panes().size(), 2u) << "an untitled pane and a repeated title are left out";
        EXPECT_EQ(session.Panes()[0].name, L"Mixing");
        EXPECT_EQ(session.Panes()[1].categories,
                  (std::set{OrbObjectCategories::Switches, OrbObjectCategories::States}));
    }

    // With nothing readable saved, the default pair opens.
    sn::qt::SavePaneLayout({});
    session.CloseAllPanes();
    sn::qt::MainWindow window(session, driver);
    ASSERT_EQ(session.Panes().size(), 2u);
    EXPECT_EQ(session.Panes()[0].name, sn::DefaultPanes()[0].name);
}
