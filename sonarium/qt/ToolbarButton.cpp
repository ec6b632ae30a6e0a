#include "sonarium/qt/ToolbarButton.h"

#include "host/ButtonWithTooltip.h"
#include "sonarium/ui/menus/MenuShortcuts.h"
#include "platform/TreeViewTypes.h"
#include "sonarium/qt/QtCanvas.h"
#include "sonarium/qt/QtText.h"
#include "sonarium/qt/QtWindowSystemDriver.h"
#include "sonarium/qt/TreeInput.h"

#include <QApplication>
#include <QPainter>

namespace sn::qt
{
ToolbarButton::ToolbarButton(CButtonWithTooltip& button, QtWindowSystemDriver& driver, QWidget* parent)
    : QToolButton(parent), m_button(button.GetSafeHwnd()), m_driver(driver)
{
    setAutoRaise(true);
    setFocusPolicy(Qt::NoFocus);
    CRect rect;
    button.GetClientRect(&rect);
    setFixedSize(rect.Width() + 4, rect.Height() + 4);
    connect(this, &QToolButton::clicked, this, &ToolbarButton::OnClicked);
    Sync();
}

CButtonWithTooltip* ToolbarButton::Button() const
{
    return dynamic_cast<CButtonWithTooltip*>(CWnd::FromHandle(m_button));
}

bool ToolbarButton::Sync()
{
    CButtonWithTooltip* button = Button();
    if (!button)
    {
        setEnabled(false);
        return false;
    }
    setEnabled(button->IsWindowEnabled() != FALSE);
    setToolTip(button->ShowsToolTip() ? ToQt(ShownToolTip(std::wstring(button->GetToolTipText().c_str()))) : QString());
    update();
    return true;
}

void ToolbarButton::OnClicked()
{
    if (CButtonWithTooltip* button = Button())
    {
        // Shift makes a new parent instead of a child: the view asks the window system.
        SyncModifierKeys(QApplication::keyboardModifiers());
        button->Click();
        m_driver.Pump();
    }
}

void ToolbarButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    CButtonWithTooltip* button = Button();
    CWnd* toolbar = button ? button->GetParent() : nullptr;
    if (toolbar)
    {
        // The toolbar draws the face and the icon itself, centred in the rectangle given.
        QtCanvas canvas(painter);
        NMCUSTOMDRAW draw{};
        draw.hdr.hwndFrom = m_button;
        draw.hdr.idFrom = static_cast<UINT_PTR>(button->GetDlgCtrlID());
        draw.hdr.code = NM_CUSTOMDRAW;
        draw.dwDrawStage = CDDS_PREPAINT;
        draw.hdc = canvas.Hdc();
        draw.rc = RECT{0, 0, width(), height()};
        toolbar->SendMessage(WM_NOTIFY, draw.hdr.idFrom, reinterpret_cast<LPARAM>(&draw));
    }
    if (isEnabled() && (underMouse() || isDown()))
    {
        QColor frame = ThemeColor("Explorer_SelectionBackground");
        painter.setPen(frame.darker(isDown() ? 140 : 115));
        frame.setAlpha(isDown() ? 160 : 90);
        painter.setBrush(frame);
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);
    }
}
} // namespace sn::qt
