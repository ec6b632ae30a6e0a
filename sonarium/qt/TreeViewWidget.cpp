#include "sonarium/qt/TreeViewWidget.h"

#include "host/HostMessages.h"
#include "sonarium/qt/QtText.h"
#include "sonarium/qt/QtWindowSystemDriver.h"
#include "sonarium/qt/TreeInput.h"
#include "sonarium/qt/TreeRowPainter.h"

#include <QApplication>
#include <QFontMetrics>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QHelpEvent>
#include <QScrollBar>
#include <QToolTip>

namespace sn::qt
{
TreeViewWidget::TreeViewWidget(PETreeCtrl& tree, QtWindowSystemDriver& driver, QWidget* parent)
    : QAbstractScrollArea(parent), m_tree(tree), m_driver(driver), m_dropSite(tree)
{
    setFocusPolicy(Qt::StrongFocus);
    setFrameShape(QFrame::NoFrame);
    // Rows wider than the pane scroll sideways.
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    viewport()->setMouseTracking(false);
    viewport()->setAcceptDrops(true);
    const QFont labelFont = font();
    const QFontMetrics metrics(labelFont);
    m_tree.SetTextMeasure([metrics](std::wstring const& text)
                          { return metrics.horizontalAdvance(ToQt(text)); });
    m_tree.SetItemHeight(std::max(CTreeCtrl::DefaultItemHeight, metrics.height() + 4));
    m_driver.ShowWindowIn(m_tree.GetSafeHwnd(), viewport());
    connect(&m_driver, &QtWindowSystemDriver::Pumped, this, &TreeViewWidget::SyncFromTree);
}

TreeViewWidget::~TreeViewWidget()
{
    m_driver.ShowWindowIn(m_tree.GetSafeHwnd(), nullptr);
    if (m_tree.GetSafeHwnd())
        m_tree.SetTextMeasure(nullptr);
}

template <class Gesture> void TreeViewWidget::Act(Gesture&& gesture)
{
    gesture();
    m_driver.Pump();
    viewport()->update();
}

void TreeViewWidget::SyncFromTree()
{
    if (!m_tree.GetSafeHwnd())
        return;
    const int visible = static_cast<int>(m_tree.GetVisibleCount());
    QScrollBar* bar = verticalScrollBar();
    m_syncingScroll = true;
    bar->setRange(0, std::max(0, m_tree.GetRowCount() - visible));
    bar->setPageStep(visible);
    bar->setSingleStep(1);
    bar->setValue(m_tree.GetScrollRow());
    QScrollBar* across = horizontalScrollBar();
    across->setRange(0, std::max(0, m_tree.GetRowsWidth() - viewport()->width()));
    across->setPageStep(std::max(1, viewport()->width()));
    across->setSingleStep(std::max(1, m_tree.GetIndent()));
    across->setValue(m_tree.GetScrollX());
    m_syncingScroll = false;
    SyncEditor();
    viewport()->update();
}

void TreeViewWidget::paintEvent(QPaintEvent*)
{
    QPainter painter(viewport());
    const TreePalette palette = TreePalette::FromTheme(m_tree);
    painter.fillRect(viewport()->rect(), palette.background);
    std::vector<PETreeRow> rows;
    m_tree.GetVisibleRows(rows);
    PaintRows(painter, rows, palette, hasFocus());
}

void TreeViewWidget::resizeEvent(QResizeEvent* event)
{
    QAbstractScrollArea::resizeEvent(event);
    FitControlToViewport();
    SyncFromTree();
}

void TreeViewWidget::FitControlToViewport()
{
    CWnd* parent = m_tree.GetParent();
    if (!m_tree.GetSafeHwnd() || !parent)
        return;
    CRect placed;
    m_tree.GetWindowRect(&placed);
    parent->ScreenToClient(&placed);
    m_tree.MoveWindow(placed.left, placed.top, viewport()->width(), viewport()->height());
}

void TreeViewWidget::scrollContentsBy(int dx, int dy)
{
    if (m_syncingScroll)
        return;
    const int row = verticalScrollBar()->value();
    const int x = horizontalScrollBar()->value();
    Act(
        [&]
        {
            if (dy)
                m_tree.ScrollToRow(row);
            if (dx)
                m_tree.ScrollToX(x);
        });
}

void TreeViewWidget::dragEnterEvent(QDragEnterEvent* event)
{
    dragMoveEvent(event);
}

void TreeViewWidget::dragMoveEvent(QDragMoveEvent* event)
{
    m_dropSite.Move(*event);
    viewport()->update();
}

void TreeViewWidget::dragLeaveEvent(QDragLeaveEvent*)
{
    m_dropSite.Leave();
    viewport()->update();
}

void TreeViewWidget::dropEvent(QDropEvent* event)
{
    m_dropSite.Drop(*event);
    // What the drop posted (an import, a refresh) runs once the drag is over, as the host does.
    QMetaObject::invokeMethod(
        this, [this] { Act([] {}); }, Qt::QueuedConnection);
}

void TreeViewWidget::mousePressEvent(QMouseEvent* event)
{
    setFocus(Qt::MouseFocusReason);
    m_pressPoint = event->position().toPoint();
    m_pressButton = event->button();
    m_dragStarted = false;
    m_skipRelease = false;
    if (event->button() == Qt::LeftButton)
        Act([&] { m_tree.MouseDown(ToPoint(event->position()), MouseKeys(event->modifiers())); });
}

void TreeViewWidget::mouseMoveEvent(QMouseEvent* event)
{
    if (m_dragStarted || m_pressButton == Qt::NoButton || !(event->buttons() & m_pressButton))
        return;
    if ((event->position().toPoint() - m_pressPoint).manhattanLength() < QApplication::startDragDistance())
        return;
    m_dragStarted = true;
    const bool right = m_pressButton == Qt::RightButton;
    Act([&] { m_tree.BeginDrag(ToPoint(m_pressPoint), right); });
}

void TreeViewWidget::mouseReleaseEvent(QMouseEvent* event)
{
    const Qt::MouseButton pressed = m_pressButton;
    m_pressButton = Qt::NoButton;
    if (m_skipRelease || m_dragStarted || event->button() != pressed)
        return;
    const UINT keys = MouseKeys(event->modifiers());
    if (event->button() == Qt::LeftButton)
        Act([&] { m_tree.MouseUp(ToPoint(event->position()), keys); });
    else if (event->button() == Qt::RightButton)
        Act([&] { m_tree.RightClick(ToPoint(event->position()), keys); });
}

void TreeViewWidget::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    // Qt reports the second press as the double click: the gesture includes its own click.
    m_skipRelease = true;
    Act([&] { m_tree.SecondClick(ToPoint(event->position()), MouseKeys(event->modifiers())); });
}

void TreeViewWidget::wheelEvent(QWheelEvent* event)
{
    const int delta = event->angleDelta().y();
    if (delta != 0)
        Act([&] { m_tree.Wheel(delta); });
    // A touchpad swipe moves by the pixels it reports; a sideways wheel a level of indentation
    // per notch.
    const int across = event->pixelDelta().isNull() ? event->angleDelta().x() * m_tree.GetIndent() / 120
                                                    : event->pixelDelta().x();
    if (across != 0)
        Act([&] { m_tree.ScrollToX(m_tree.GetScrollX() - across); });
    event->accept();
}

void TreeViewWidget::keyPressEvent(QKeyEvent* event)
{
    FollowModifierKey(event, true);
    const std::optional<UINT> vk = VirtualKey(event->key(), event->modifiers());
    // What the key types, as the window system turns a key press into characters; Ctrl and Alt
    // make commands, not text, and the keypad's `*` expands.
    const bool typing = !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) &&
                        !event->text().isEmpty() && event->text().front().isPrint() && vk != UINT(VK_MULTIPLY);
    if (!vk && !typing)
    {
        QAbstractScrollArea::keyPressEvent(event);
        return;
    }
    Act(
        [&]
        {
            if (vk)
                m_tree.KeyPress(*vk, MouseKeys(event->modifiers()));
            if (typing && m_tree.GetSafeHwnd())
                for (QChar ch : event->text())
                    m_tree.TypeChar(static_cast<wchar_t>(ch.unicode()));
        });
}

void TreeViewWidget::keyReleaseEvent(QKeyEvent* event)
{
    FollowModifierKey(event, false);
    QAbstractScrollArea::keyReleaseEvent(event);
}

void TreeViewWidget::FollowModifierKey(QKeyEvent* event, bool pressed)
{
    // Some platforms still report a modifier among the modifiers of its own release.
    Qt::KeyboardModifiers modifiers = event->modifiers();
    for (auto [key, modifier] : {std::pair{Qt::Key_Shift, Qt::ShiftModifier},
                                 {Qt::Key_Control, Qt::ControlModifier},
                                 {Qt::Key_Alt, Qt::AltModifier}})
        if (event->key() == key)
            modifiers.setFlag(modifier, pressed);
    SyncModifierKeys(modifiers);
    CWnd* view = m_tree.GetParent();
    if (event->key() != Qt::Key_Shift || event->isAutoRepeat() || !view)
        return;
    MSG message{};
    message.message = pressed ? WM_KEYDOWN : WM_KEYUP;
    message.wParam = VK_SHIFT;
    Act([&] { view->SendMessage(HostMessages::ForwardedKey, reinterpret_cast<WPARAM>(&message), 0); });
}

void TreeViewWidget::focusInEvent(QFocusEvent* event)
{
    QAbstractScrollArea::focusInEvent(event);
    // A press takes the focus first; what the host does about the new focus must wait for the
    // press itself, which runs the queue.
    if (m_tree.GetSafeHwnd() && CWnd::GetFocus() != &m_tree)
    {
        if (event->reason() == Qt::MouseFocusReason)
            m_tree.SetFocus();
        else
            Act([&] { m_tree.SetFocus(); });
    }
    // The selection's colour and the pane's heading show where the keyboard is.
    viewport()->update();
    if (parentWidget())
        parentWidget()->update();
}

void TreeViewWidget::focusOutEvent(QFocusEvent* event)
{
    QAbstractScrollArea::focusOutEvent(event);
    viewport()->update();
    if (parentWidget())
        parentWidget()->update();
}

bool TreeViewWidget::viewportEvent(QEvent* event)
{
    if (event->type() != QEvent::ToolTip || !m_tree.GetSafeHwnd())
        return QAbstractScrollArea::viewportEvent(event);
    auto* help = static_cast<QHelpEvent*>(event);
    std::vector<PETreeRow> rows;
    m_tree.GetVisibleRows(rows);
    for (PETreeRow const& row : rows)
        if (ToQRect(row.row).contains(help->pos()) && IsLabelElided(row))
        {
            QToolTip::showText(help->globalPos(), ToQt(row.text), viewport(), ToQRect(row.row));
            return true;
        }
    QToolTip::hideText();
    event->ignore();
    return true;
}

void TreeViewWidget::SyncEditor()
{
    CEdit* edit = m_tree.GetEditControl();
    const HTREEITEM item = m_tree.GetEditItem();
    CRect label;
    if (!edit || !edit->GetSafeHwnd() || !m_tree.GetItemRect(item, &label, TRUE))
    {
        CloseEditor();
        return;
    }
    // An editor opened again (after a refused name) is a new one, with the name as it was.
    if (m_editor && m_editorFor != edit->GetSafeHwnd())
        CloseEditor();
    if (!m_editor)
    {
        m_editorFor = edit->GetSafeHwnd();
        m_editor = new QLineEdit(viewport());
        m_editor->setFrame(true);
        m_editor->installEventFilter(this);
        connect(m_editor, &QLineEdit::textEdited, this,
                [this](QString const& text)
                {
                    if (CEdit* open = m_tree.GetEditControl())
                        open->SetWindowText(FromQt(text).c_str());
                });
        m_editor->setMaxLength(static_cast<int>(edit->GetLimitText()));
        m_editor->setText(ToQt(edit->GetWindowText()));
        m_editor->selectAll();
        m_editor->show();
        m_editor->setFocus(Qt::OtherFocusReason);
    }
    const int width = std::max(label.Width() + 40, 120);
    m_editor->setGeometry(label.left, label.top - 1, std::min(width, viewport()->width() - label.left),
                          label.Height() + 2);
}

void TreeViewWidget::CloseEditor()
{
    if (!m_editor)
        return;
    QLineEdit* editor = m_editor;
    m_editor = nullptr;
    const bool hadFocus = editor->hasFocus();
    editor->removeEventFilter(this);
    editor->hide();
    editor->deleteLater();
    if (hadFocus)
        setFocus(Qt::OtherFocusReason);
}

void TreeViewWidget::ForwardEditorKey(UINT vk)
{
    Act(
        [&]
        {
            if (CEdit* edit = m_tree.GetEditControl())
                edit->SendMessage(WM_KEYDOWN, vk, 0);
        });
}

bool TreeViewWidget::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_editor)
        return QAbstractScrollArea::eventFilter(watched, event);
    if (event->type() == QEvent::KeyPress)
    {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Escape)
        {
            ForwardEditorKey(key == Qt::Key_Escape ? VK_ESCAPE : VK_RETURN);
            return true;
        }
    }
    else if (event->type() == QEvent::FocusOut && m_tree.GetEditControl() &&
             static_cast<QFocusEvent*>(event)->reason() != Qt::PopupFocusReason)
    {
        // Focus leaving the editor ends the edit and keeps the name, as on the control itself.
        Act(
            [&]
            {
                if (CWnd::GetFocus() == m_tree.GetEditControl())
                    m_tree.SetFocus();
                else
                    m_tree.EndEditLabelNow(FALSE);
            });
    }
    return false;
}
} // namespace sn::qt
