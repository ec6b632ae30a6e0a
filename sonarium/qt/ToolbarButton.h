#pragma once
// One creation button of an explorer view's object toolbar: it shows what the portable button
// holds (its face and icon as the toolbar custom-draws them, its tooltip, enabled or not) and a
// click is the portable button's click.

#include "platform/WinTypes.h"

#include <QToolButton>

class CButtonWithTooltip;

namespace sn::qt
{
class QtWindowSystemDriver;

class ToolbarButton : public QToolButton
{
    Q_OBJECT

public:
    ToolbarButton(CButtonWithTooltip& button, QtWindowSystemDriver& driver, QWidget* parent = nullptr);

    // Copies the enabled state and tooltip; false once the portable button is gone.
    bool Sync();
    HWND Handle() const { return m_button; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    CButtonWithTooltip* Button() const;
    void OnClicked();

    HWND m_button;
    QtWindowSystemDriver& m_driver;
};
} // namespace sn::qt
