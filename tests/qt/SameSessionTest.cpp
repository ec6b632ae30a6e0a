// What a user does with the mouse and keyboard in the desktop window, written as a script and run
// headless, ends in the same trees, the same selection and the same notifications.

#include "TestPaths.h"

#include "sonarium/app/script/ScriptRunner.h"
#include "sonarium/app/session/AppSession.h"
#include "sonarium/app/session/TreeText.h"
#include "sonarium/qt/MainWindow.h"
#include "sonarium/qt/PaneWidget.h"
#include "sonarium/qt/QtText.h"
#include "sonarium/qt/QtWindowSystemDriver.h"
#include "sonarium/qt/TreeViewWidget.h"

#include <QTest>

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

namespace
{
struct Outcome
{
    std::vector<std::wstring> audio;
    std::vector<std::wstring> events;
    std::vector<std::wstring> selection;
    std::vector<std::wstring> notifications;
};

Outcome OutcomeOf(sn::AppSession& session)
{
    return {sn::TreeLines(session.Panes()[0].view->GetTreeCtrl()),
            sn::TreeLines(session.Panes()[1].view->GetTreeCtrl()),
            sn::SelectionLines(session.Panes()[0].view->GetTreeCtrl()), session.Recorder().Lines()};
}

std::filesystem::path Preferences(char const* name)
{
    return PrivateTestFile(name);
}

class DesktopUser
{
public:
    explicit DesktopUser(sn::qt::PaneWidget& pane) : m_pane(pane) {}

    QWidget* Viewport() { return m_pane.TreeView()->viewport(); }

    PETreeRow Row(std::wstring const& text, int depth)
    {
        std::vector<PETreeRow> rows;
        m_pane.View()->GetTreeCtrl().GetVisibleRows(rows);
        for (PETreeRow const& row : rows)
            if (row.text == text && row.depth == depth)
                return row;
        ADD_FAILURE() << "no row " << sn::qt::ToQt(text).toStdString();
        return {};
    }

    static QPoint Centre(RECT const& rect)
    {
        return QPoint((rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2);
    }

    void Toggle(std::wstring const& text, int depth)
    {
        QTest::mouseClick(Viewport(), Qt::LeftButton, {}, Centre(Row(text, depth).button));
    }
    void Click(std::wstring const& text, int depth, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::mouseClick(Viewport(), Qt::LeftButton, modifiers, Centre(Row(text, depth).label));
    }
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(m_pane.TreeView(), key, modifiers);
    }

private:
    sn::qt::PaneWidget& m_pane;
};
} // namespace

TEST(SameSession, TheDesktopSessionWrittenAsAScriptEndsTheSame)
{
    Outcome desktop;
    {
        const auto preferences = Preferences("-desktop.json");
        sn::AppSession session{sn::HostOptions{preferences}};
        std::vector<std::wstring> messages;
        ASSERT_TRUE(session.OpenProject(SONARIUM_SAMPLES_DIR "/Demo", messages));
        sn::qt::QtWindowSystemDriver driver;
        {
            sn::qt::MainWindow window(session, driver);
            window.resize(1200, 800);
            window.show();
            QCoreApplication::processEvents();
            session.Recorder().Clear();
            DesktopUser user(*window.PaneWidgets().front());
            user.Toggle(L"Characters", 1);
            user.Toggle(L"Player", 2);
            user.Click(L"Player", 3);
            user.Key(Qt::Key_Down, Qt::ShiftModifier);
            user.Click(L"World", 1, Qt::ControlModifier);
            user.Key(Qt::Key_Right);
            user.Key(Qt::Key_Down);
            user.Key(Qt::Key_Down, Qt::ShiftModifier);
            driver.Pump();
            desktop = OutcomeOf(session);
        }
        std::filesystem::remove(preferences);
    }

    Outcome scripted;
    {
        const auto preferences = Preferences("-script.json");
        sn::AppSession session{sn::HostOptions{preferences}};
        std::vector<std::wstring> messages;
        ASSERT_TRUE(session.OpenProject(SONARIUM_SAMPLES_DIR "/Demo", messages));
        for (sn::PaneDefinition const& definition : sn::DefaultPanes())
            session.OpenPane(definition, CRect(0, 0, 300, 600));
        session.Recorder().Clear();
        std::wostringstream out;
        sn::ScriptRunner runner(session, out);
        std::istringstream script(R"(toggle "AudioObjects/Characters"
toggle "AudioObjects/Characters/Player"
click "AudioObjects/Characters/Player/Player"
key Down shift
click "AudioObjects/World" ctrl
key Right
key Down
key Down shift
)");
        std::string error;
        ASSERT_TRUE(runner.Run(script, "session", error)) << error;
        scripted = OutcomeOf(session);
        session.CloseAllPanes();
        std::filesystem::remove(preferences);
    }

    EXPECT_EQ(desktop.audio, scripted.audio);
    EXPECT_EQ(desktop.events, scripted.events);
    EXPECT_EQ(desktop.selection, scripted.selection);
    EXPECT_EQ(desktop.notifications, scripted.notifications);
    EXPECT_GT(desktop.selection.size(), 1u) << "the session selected several rows";
    EXPECT_FALSE(desktop.notifications.empty()) << "the host heard the selections";
}
