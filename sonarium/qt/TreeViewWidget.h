#pragma once
// A pane's project tree on screen: paints the tree control's visible rows, keeps the control's
// window the size of the viewport, and turns mouse, wheel and keys into the control's gestures.
// While the control's label editor is open, a line edit over the row stands for it.

#include "host/PETreeCtrl.h"
#include "sonarium/qt/QtDrags.h"

#include <QAbstractScrollArea>
#include <QLineEdit>
#include <QPointer>

namespace sn::qt
{
class QtWindowSystemDriver;

class TreeViewWidget : public QAbstractScrollArea
{
    Q_OBJECT

public:
    TreeViewWidget(PETreeCtrl& tree, QtWindowSystemDriver& driver, QWidget* parent = nullptr);
    ~TreeViewWidget() override;

    // Brings the scroll bar and the label editor in line with the control.
    void SyncFromTree();
    QLineEdit* LabelEditor() const { return m_editor; }
    // Gives the control's window the viewport's size, so its rows are the rows shown.
    void FitControlToViewport();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    // A label elided for want of room shows whole in its tooltip.
    bool viewportEvent(QEvent* event) override;

private:
    // Runs a gesture on the control, then what it posted, then mirrors the result.
    template <class Gesture> void Act(Gesture&& gesture);
    void SyncEditor();
    void CloseEditor();
    void ForwardEditorKey(UINT vk);
    // Keeps the window system's Shift, Ctrl and Alt as the keyboard has them, and forwards
    // Shift to the view as the host forwards the keys it sees first.
    void FollowModifierKey(QKeyEvent* event, bool pressed);

    PETreeCtrl& m_tree;
    QtWindowSystemDriver& m_driver;
    QPointer<QLineEdit> m_editor;
    HWND m_editorFor = nullptr; // the control's editor that m_editor stands for
    DropSite m_dropSite;
    QPoint m_pressPoint;
    Qt::MouseButton m_pressButton = Qt::NoButton;
    bool m_dragStarted = false;
    bool m_skipRelease = false;
    bool m_syncingScroll = false;
};
} // namespace sn::qt
