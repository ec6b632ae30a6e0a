#pragma once
// How far the opening of a project has come: "work units read of all" in the status bar at
// once, and a progress dialog with Cancel once the opening has taken longer than a delay.

#include <QElapsedTimer>
#include <QPointer>
#include <QString>

class QMainWindow;
class QProgressDialog;

namespace sn::qt
{
class OpenProgressReporter
{
public:
    OpenProgressReporter(QMainWindow& window, QString name, int dialogDelayMs);
    ~OpenProgressReporter();
    OpenProgressReporter(OpenProgressReporter const&) = delete;
    OpenProgressReporter& operator=(OpenProgressReporter const&) = delete;

    // The storage's progress callback: false once the user cancelled.
    bool operator()(size_t read, size_t total);
    bool Cancelled() const { return m_cancelled; }
    size_t Total() const { return m_total; }

private:
    QMainWindow& m_window;
    QString m_name;
    int m_delayMs;
    QElapsedTimer m_clock;
    QPointer<QProgressDialog> m_dialog;
    size_t m_total = 0;
    bool m_cancelled = false;
};
} // namespace sn::qt
