#pragma once
// Runs the window system inside Qt's event loop: the clock is monotonic, posted messages are
// delivered by a queued call soon after they are posted, the earliest timer by a single-shot
// QTimer, and a window that asks to be repainted updates the widget that shows it.

#include "platform/WindowSystem.h"

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <unordered_map>

namespace sn::qt
{
class QtWindowSystemDriver : public QObject, public IWindowSystemDriver
{
    Q_OBJECT

public:
    // Becomes the window system's driver for its lifetime.
    QtWindowSystemDriver();
    ~QtWindowSystemDriver() override;
    QtWindowSystemDriver(QtWindowSystemDriver const&) = delete;
    QtWindowSystemDriver& operator=(QtWindowSystemDriver const&) = delete;

    DWORD Now() const override;
    void OnWorkQueued() override;
    void OnNextTimerChanged(std::optional<DWORD> due) override;
    void OnWindowInvalidated(HWND hwnd) override;
    // The application's override cursor: the wait cursor over every window while the host works.
    void OnWaitCursor(bool shown) override;

    // The widget repainted when the window is invalidated; null forgets the window.
    void ShowWindowIn(HWND hwnd, QWidget* widget);
    // Delivers queued messages now, as after a user gesture.
    void Pump();

Q_SIGNALS:
    // Messages or timers ran: whatever mirrors the portable windows may have changed.
    void Pumped();

private:
    void RunQueued();
    void FireTimers();

    QElapsedTimer m_clock;
    QTimer m_timer;
    bool m_runQueued = false;
    bool m_waitCursor = false; // this driver pushed the wait cursor and has not taken it back
    std::unordered_map<HWND, QPointer<QWidget>> m_views;
    IWindowSystemDriver* m_previous = nullptr;
    // The manual clock's reading when this driver took over, so time never runs backwards.
    DWORD m_origin = 0;
};
} // namespace sn::qt
