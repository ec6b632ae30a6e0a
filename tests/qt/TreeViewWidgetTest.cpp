// An explorer pane on screen against a session of the sample project: what the user does to the
// widgets reaches the tree control as its gestures, and what the control holds is what is shown.

#include "TestPaths.h"

#include "explorer/commands/PEHelper.h"
#include "host/Utf8.h"
#include "sonarium/app/session/AppSession.h"
#include "sonarium/app/session/TreeText.h"
#include "sonarium/core/host/ProjectBuilder.h"
#include "sonarium/core/model/ProjectEdit.h"
#include "sonarium/qt/PaneWidget.h"
#include "sonarium/qt/QtText.h"
#include "sonarium/qt/QtWindowSystemDriver.h"
#include "sonarium/qt/ToolbarButton.h"
#include "sonarium/qt/TreeRowPainter.h"
#include "sonarium/qt/TreeViewWidget.h"

#include <QDeadlineTimer>
#include <QLineEdit>
#include <QScrollBar>
#include <QHelpEvent>
#include <QTest>
#include <QToolTip>

#include <gtest/gtest.h>

#include <filesystem>

namespace
{
class PaneFixture : public testing::Test
{
protected:
    void SetUp() override
    {
        std::vector<std::wstring> messages;
        ASSERT_TRUE(session.OpenProject(SONARIUM_SAMPLES_DIR "/Demo", messages));
        sn::Pane& pane = session.OpenPane(sn::DefaultPanes().front(), CRect(0, 0, 300, 600));
        widget = std::make_unique<sn::qt::PaneWidget>(pane, session, driver);
        widget->resize(360, 500);
        widget->show();
        QCoreApplication::processEvents();
    }

    void TearDown() override
    {
        widget.reset();
        session.CloseAllPanes();
        std::filesystem::remove(preferences);
    }

    PETreeCtrl& Tree() { return widget->View()->GetTreeCtrl(); }
    sn::qt::TreeViewWidget& View() { return *widget->TreeView(); }

    PETreeRow Row(std::wstring const& text, int depth = -1)
    {
        std::vector<PETreeRow> rows;
        Tree().GetVisibleRows(rows);
        for (PETreeRow const& row : rows)
            if (row.text == text && (depth < 0 || row.depth == depth))
                return row;
        ADD_FAILURE() << "no row " << sn::qt::ToQt(text).toStdString();
        return {};
    }

    static QPoint Centre(RECT const& rect)
    {
        return QPoint((rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2);
    }

    void Click(std::wstring const& text, Qt::KeyboardModifiers modifiers = {}, int depth = -1)
    {
        QTest::mouseClick(View().viewport(), Qt::LeftButton, modifiers, Centre(Row(text, depth).label));
    }

    // Opens Characters and its Player work unit, and selects the actor-mixer inside.
    void SelectPlayerMixer()
    {
        QTest::mouseClick(View().viewport(), Qt::LeftButton, {}, Centre(Row(L"Characters").button));
        QTest::mouseClick(View().viewport(), Qt::LeftButton, {}, Centre(Row(L"Player", 2).button));
        Click(L"Player", {}, 3);
    }

    std::filesystem::path preferences = PrivateTestFile(".json");
    sn::AppSession session{sn::HostOptions{preferences}};
    sn::qt::QtWindowSystemDriver driver;
    std::unique_ptr<sn::qt::PaneWidget> widget;
};
} // namespace

TEST_F(PaneFixture, ClicksAndKeysSelectAndTheSelectionIsPainted)
{
    Click(L"Characters");
    EXPECT_EQ(sn::SelectionLines(Tree()), (std::vector<std::wstring>{L"* AudioObjects/Characters"}));
    Click(L"Interface", Qt::ControlModifier);
    EXPECT_EQ(sn::SelectionLines(Tree()),
              (std::vector<std::wstring>{L"  AudioObjects/Characters", L"* AudioObjects/Interface"}));

    QTest::keyClick(&View(), Qt::Key_Up);
    EXPECT_EQ(sn::SelectionLines(Tree()), (std::vector<std::wstring>{L"* AudioObjects/World"}));

    // The window system holds Shift exactly while the keyboard does, also after a Shift+key.
    QTest::keyPress(&View(), Qt::Key_Shift, Qt::ShiftModifier);
    EXPECT_LT(GetKeyState(VK_SHIFT), 0);
    QTest::keyClick(&View(), Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyRelease(&View(), Qt::Key_Shift, Qt::ShiftModifier);
    EXPECT_GE(GetKeyState(VK_SHIFT), 0) << "released Shift is not left held";
    QTest::keyClick(&View(), Qt::Key_Up);

    const QImage picture = View().viewport()->grab().toImage();
    const PETreeRow world = Row(L"World");
    const PETreeRow busses = Row(L"Busses");
    const QColor selection = sn::qt::ThemeColor("Explorer_SelectionBackground");
    // Just inside the label's right edge lies padding, never text.
    EXPECT_EQ(picture.pixelColor(world.label.right - 2, world.label.top + 2), selection);
    EXPECT_NE(picture.pixelColor(busses.label.right - 2, busses.label.top + 2), selection);
    // Every row shows its icon from the art.
    const QRect icon(world.icon.left, world.icon.top, world.icon.right - world.icon.left,
                     world.icon.bottom - world.icon.top);
    const QColor background = picture.pixelColor(picture.width() - 2, picture.height() - 2);
    bool iconDrawn = false;
    for (int y = icon.top(); y <= icon.bottom(); ++y)
        for (int x = icon.left(); x <= icon.right(); ++x)
            iconDrawn = iconDrawn || picture.pixelColor(x, y) != background;
    EXPECT_TRUE(iconDrawn);
}

TEST_F(PaneFixture, ExpandButtonsWheelAndScrollBarMoveTheControlsViewport)
{
    QTest::mouseClick(View().viewport(), Qt::LeftButton, {}, Centre(Row(L"Characters").button));
    EXPECT_TRUE(Row(L"Characters").expanded);
    QTest::mouseClick(View().viewport(), Qt::LeftButton, {}, Centre(Row(L"Player", 2).button));

    // The control's window follows the viewport, so a short pane has rows to scroll.
    widget->resize(360, 120);
    QCoreApplication::processEvents();
    CRect client;
    Tree().GetClientRect(&client);
    EXPECT_EQ(client.Height(), View().viewport()->height());
    const int hidden = Tree().GetRowCount() - static_cast<int>(Tree().GetVisibleCount());
    ASSERT_GT(hidden, 0);
    EXPECT_EQ(View().verticalScrollBar()->maximum(), hidden);

    QWheelEvent down(QPointF(20, 20), View().viewport()->mapToGlobal(QPointF(20, 20)), QPoint(),
                     QPoint(0, -120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(View().viewport(), &down);
    EXPECT_GT(Tree().GetScrollRow(), 0);
    EXPECT_EQ(View().verticalScrollBar()->value(), Tree().GetScrollRow());

    View().verticalScrollBar()->setValue(0);
    EXPECT_EQ(Tree().GetScrollRow(), 0);
}

TEST_F(PaneFixture, ToolbarButtonsMirrorTheViewsButtonsAndClickThem)
{
    ASSERT_FALSE(widget->Buttons().empty());
    for (sn::qt::ToolbarButton* button : widget->Buttons())
        EXPECT_FALSE(button->isEnabled()) << "nothing is selected yet";

    SelectPlayerMixer();
    // The view follows the selection with its toolbar once the selection is inspected.
    Click(L"Enemies");
    Click(L"Player", {}, 3);
    QDeadlineTimer limit(5000);
    auto anyEnabled = [&]
    {
        for (sn::qt::ToolbarButton* button : widget->Buttons())
            if (button->isEnabled())
                return true;
        return false;
    };
    while (!anyEnabled() && !limit.hasExpired())
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    sn::qt::ToolbarButton* enabled = nullptr;
    for (sn::qt::ToolbarButton* button : widget->Buttons())
    {
        auto* source = CWnd::FromHandle(button->Handle());
        ASSERT_NE(source, nullptr);
        EXPECT_EQ(button->isEnabled(), source->IsWindowEnabled() != FALSE);
        if (button->isEnabled() && !enabled)
            enabled = button;
    }
    ASSERT_NE(enabled, nullptr);
    EXPECT_FALSE(enabled->toolTip().isEmpty());

    // The view runs the host's creation command for the button's type: here, a recording one.
    const auto type = static_cast<PMTreeNode::NodeType>(CWnd::FromHandle(enabled->Handle())->GetDlgCtrlID());
    const ROString command(Utf8::FromWide(PEHelper::GenerateCommandIdFromName(
        PEHelper::GenerateCommandNameFromNodeType(type, false), L"Project Explorer")));
    int runs = 0;
    session.GetHost().CommandRegistry().Register(command, [&runs](auto...) { return ++runs, true; });
    enabled->click();
    EXPECT_EQ(runs, 1);
    for (sn::qt::ToolbarButton* button : widget->Buttons())
        if (!button->isEnabled())
        {
            QTest::mouseClick(button, Qt::LeftButton);
            break;
        }
    EXPECT_EQ(runs, 1) << "a disabled button is not clicked";
}

TEST_F(PaneFixture, TheFocusedSelectionSpansTheRowAndALongNameIsElidedWithItsTooltip)
{
    Click(L"World");
    ASSERT_TRUE(View().hasFocus());
    const PETreeRow world = Row(L"World");
    const int y = (world.row.top + world.row.bottom) / 2;
    const int farRight = View().viewport()->width() - 3;
    const QColor focused = sn::qt::ThemeColor("Explorer_SelectionBackground");
    const QColor unfocused = sn::qt::ThemeColor("Explorer_InactiveSelectionBackground");
    ASSERT_NE(focused, unfocused);
    EXPECT_EQ(View().viewport()->grab().toImage().pixelColor(farRight, y), focused) << "the whole row";
    View().clearFocus();
    QCoreApplication::processEvents();
    EXPECT_EQ(View().viewport()->grab().toImage().pixelColor(farRight, y), unfocused)
        << "a pane without the keyboard shows its selection quieter";

    // A name longer than the pane is wide is cut short, and shows whole where the mouse rests.
    const std::wstring longName = L"World of weather and wind and everything else that howls at night";
    sn::ProjectObject* renamed = sn::FindByPath(*session.GetProject(), L"AudioObjects/World");
    ASSERT_TRUE(sn::ProjectEdit::Rename(renamed, longName.c_str()));
    driver.Pump();
    widget->resize(220, 500);
    QCoreApplication::processEvents();
    const PETreeRow cut = Row(longName);
    EXPECT_TRUE(sn::qt::IsLabelElided(cut));
    EXPECT_FALSE(sn::qt::IsLabelElided(Row(L"Interface")));
    const QPoint at((cut.label.left + cut.row.right) / 2, (cut.row.top + cut.row.bottom) / 2);
    QHelpEvent help(QEvent::ToolTip, at, View().viewport()->mapToGlobal(at));
    QCoreApplication::sendEvent(View().viewport(), &help);
    EXPECT_EQ(QToolTip::text(), sn::qt::ToQt(longName));
    QToolTip::hideText();
}

TEST_F(PaneFixture, TypedLettersFindRowsAndTheKeypadStarOpensABranch)
{
    Click(L"Characters");
    QTest::keyClicks(&View(), QStringLiteral("int"));
    EXPECT_EQ(sn::SelectionLines(Tree()), (std::vector<std::wstring>{L"* AudioObjects/Interface"}));
    QTest::keyClick(&View(), Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(Tree().GetSelectedCount(), static_cast<UINT>(Tree().GetRowCount()));

    // `*` typed on the main keyboard is only a character.
    Click(L"Characters");
    QTest::keyClick(&View(), Qt::Key_Asterisk);
    EXPECT_FALSE(Row(L"Characters").expanded);
    QTest::keyClick(&View(), Qt::Key_Asterisk, Qt::KeypadModifier);
    EXPECT_TRUE(Row(L"Characters").expanded);
    EXPECT_TRUE(Row(L"Player", 2).expanded) << "everything below the focused row";
}
