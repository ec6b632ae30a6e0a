// The line edit that stands for a tree control's label editor, over a bare control whose parent
// accepts every new name.

#include "host/PETreeCtrl.h"
#include "sonarium/qt/QtWindowSystemDriver.h"
#include "sonarium/qt/TreeViewWidget.h"

#include <QLineEdit>
#include <QTest>

#include <gtest/gtest.h>

namespace
{
class AcceptingParent : public CWnd
{
public:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        const UINT code = message == WM_NOTIFY ? reinterpret_cast<NMHDR*>(lParam)->code : 0;
        if (code == TVN_ENDLABELEDITW)
            return ++endings, TRUE;
        // A parent may limit the name's length as the editor opens, as the explorer does.
        if (code == TVN_BEGINLABELEDITW && limit)
            if (CEdit* edit = static_cast<CTreeCtrl*>(FromHandle(reinterpret_cast<NMHDR*>(lParam)->hwndFrom))
                                  ->GetEditControl())
                edit->SetLimitText(limit);
        return CWnd::WindowProc(message, wParam, lParam);
    }
    int endings = 0;
    UINT limit = 0;
};

class LabelEditor : public testing::Test
{
protected:
    void SetUp() override
    {
        parent.Create(L"Parent", L"", WS_VISIBLE, CRect(0, 0, 300, 300), nullptr, 0);
        tree.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 300, 300), &parent, 1);
        alpha = tree.InsertItem(L"Alpha", 0, 0);
        beta = tree.InsertItem(L"Beta", 0, 0);
        view = std::make_unique<sn::qt::TreeViewWidget>(tree, driver);
        view->resize(300, 200);
        view->show();
        QCoreApplication::processEvents();
    }

    void TearDown() override
    {
        view.reset();
        tree.DestroyWindow();
        parent.DestroyWindow();
        WindowSystem::Get().Reset();
    }

    QLineEdit* Edit(HTREEITEM item)
    {
        tree.EditLabel(item);
        driver.Pump();
        return view->LabelEditor();
    }

    sn::qt::QtWindowSystemDriver driver;
    AcceptingParent parent;
    PETreeCtrl tree;
    HTREEITEM alpha = nullptr;
    HTREEITEM beta = nullptr;
    std::unique_ptr<sn::qt::TreeViewWidget> view;
};
} // namespace

TEST_F(LabelEditor, EnterSavesEscapeCancelsAndTheEditorSitsOnTheRow)
{
    QLineEdit* editor = Edit(beta);
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(editor->text(), QStringLiteral("Beta"));
    CRect label;
    tree.GetItemRect(beta, &label, TRUE);
    EXPECT_TRUE(editor->geometry().contains(QPoint(label.left + 2, (label.top + label.bottom) / 2)));

    QTest::keyClicks(editor, QStringLiteral("Gamma"));
    EXPECT_EQ(tree.GetEditControl()->GetWindowText(), L"Gamma") << "typing is mirrored into the control's editor";
    QTest::keyClick(editor, Qt::Key_Escape);
    EXPECT_EQ(view->LabelEditor(), nullptr);
    EXPECT_EQ(tree.GetEditControl(), nullptr);
    EXPECT_EQ(tree.GetItemText(beta), L"Beta");

    editor = Edit(beta);
    ASSERT_NE(editor, nullptr);
    editor->selectAll();
    QTest::keyClicks(editor, QStringLiteral("Gamma"));
    QTest::keyClick(editor, Qt::Key_Return);
    EXPECT_EQ(view->LabelEditor(), nullptr);
    EXPECT_EQ(tree.GetItemText(beta), L"Gamma");
    EXPECT_EQ(tree.GetItemText(alpha), L"Alpha");
}

TEST_F(LabelEditor, FocusLeavingTheEditorKeepsWhatWasTyped)
{
    QLineEdit* editor = Edit(alpha);
    ASSERT_NE(editor, nullptr);
    editor->setFocus();
    editor->selectAll();
    QTest::keyClicks(editor, QStringLiteral("Omega"));
    QLineEdit elsewhere;
    elsewhere.show();
    elsewhere.activateWindow();
    elsewhere.setFocus(Qt::MouseFocusReason);
    QCoreApplication::processEvents();
    EXPECT_EQ(tree.GetEditControl(), nullptr);
    EXPECT_EQ(view->LabelEditor(), nullptr);
    EXPECT_EQ(tree.GetItemText(alpha), L"Omega");
    EXPECT_EQ(parent.endings, 1);
}

TEST_F(LabelEditor, TheLineEditKeepsTheControlsLimitAndAnEditorOpenedAgainStartsAfresh)
{
    parent.limit = 6;
    QLineEdit* first = Edit(alpha);
    ASSERT_NE(first, nullptr);
    QTest::keyClicks(first, QStringLiteral("Gamma-Delta"));
    EXPECT_EQ(first->text(), QStringLiteral("Gamma-")) << "no more than the limit can be typed";
    EXPECT_EQ(tree.GetEditControl()->GetWindowText(), L"Gamma-");

    // The control's editor ends and another opens on the same row before the view catches up,
    // as when a refused name brings the editor back.
    tree.EndEditLabelNow(TRUE);
    tree.EditLabel(alpha);
    driver.Pump();
    QLineEdit* second = view->LabelEditor();
    ASSERT_NE(second, nullptr);
    EXPECT_NE(second, first);
    EXPECT_EQ(second->text(), QStringLiteral("Alpha"));
    EXPECT_EQ(second->selectedText(), QStringLiteral("Alpha")) << "the whole name is selected";
}
