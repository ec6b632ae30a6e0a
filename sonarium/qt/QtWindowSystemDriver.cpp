#include "sonarium/qt/QtWindowSystemDriver.h"

#include <QGuiApplication>
#include <QStyleHints>

#include <algorithm>

namespace sn::qt
{
QtWindowSystemDriver::QtWindowSystemDriver()
{
    WindowSystem& system = WindowSystem::Get();
    // The desktop's double-click time, so that a slow second click is slow by the user's measure.
    if (qGuiApp)
        system.SetDoubleClickTime(static_cast<UINT>(QGuiApplication::styleHints()->mouseDoubleClickInterval()));
    m_origin = system.Now();
    m_clock.start();
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &QtWindowSystemDriver::FireTimers);
    m_previous = system.GetDriver();
    system.SetDriver(this);
    OnNextTimerChanged(system.NextTimerDue());
    if (system.PendingMessages() > 0)
        OnWorkQueued();
}

QtWindowSystemDriver::~QtWindowSystemDriver()
{
    OnWaitCursor(false);
    WindowSystem::Get().SetDriver(m_previous);
}

DWORD QtWindowSystemDriver::Now() const
{
    return m_origin + static_cast<DWORD>(m_clock.elapsed());
}

void QtWindowSystemDriver::OnWorkQueued()
{
    if (m_runQueued)
        return;
    m_runQueued = true;
    QMetaObject::invokeMethod(this, &QtWindowSystemDriver::RunQueued, Qt::QueuedConnection);
}

void QtWindowSystemDriver::OnNextTimerChanged(std::optional<DWORD> due)
{
    if (!due)
    {
        m_timer.stop();
        return;
    }
    // Due times are on a wrapping 32-bit clock: a deadline already passed reads as far ahead.
    const auto wait = static_cast<int32_t>(*due - Now());
    m_timer.start(std::max(0, wait));
}

void QtWindowSystemDriver::OnWindowInvalidated(HWND hwnd)
{
    auto found = m_views.find(hwnd);
    if (found != m_views.end() && found->second)
        found->second->update();
}

void QtWindowSystemDriver::OnWaitCursor(bool shown)
{
    if (shown == m_waitCursor || !qGuiApp)
        return;
    m_waitCursor = shown;
    if (shown)
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QGuiApplication::restoreOverrideCursor();
}

void QtWindowSystemDriver::ShowWindowIn(HWND hwnd, QWidget* widget)
{
    if (widget)
        m_views[hwnd] = widget;
    else
        m_views.erase(hwnd);
}

void QtWindowSystemDriver::Pump()
{
    WindowSystem::Get().RunUntilIdle();
    Q_EMIT Pumped();
}

void QtWindowSystemDriver::RunQueued()
{
    m_runQueued = false;
    Pump();
}

void QtWindowSystemDriver::FireTimers()
{
    WindowSystem& system = WindowSystem::Get();
    system.FireDueTimers();
    // A timer that came due while others ran waits for the next turn of the loop.
    OnNextTimerChanged(system.NextTimerDue());
    Q_EMIT Pumped();
}
} // namespace sn::qt
