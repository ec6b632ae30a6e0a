#include "sonarium/qt/OpenProgressReporter.h"

#include <QApplication>
#include <QMainWindow>
#include <QProgressDialog>
#include <QStatusBar>

namespace sn::qt
{
OpenProgressReporter::OpenProgressReporter(QMainWindow& window, QString name, int dialogDelayMs)
    : m_window(window), m_name(std::move(name)), m_delayMs(dialogDelayMs)
{
    m_clock.start();
}

OpenProgressReporter::~OpenProgressReporter()
{
    delete m_dialog;
}

bool OpenProgressReporter::operator()(size_t read, size_t total)
{
    m_total = total;
    m_window.statusBar()->showMessage(
        QApplication::translate("OpenProgress", "Opening %1: %2 of %3 work units read")
            .arg(m_name)
            .arg(read)
            .arg(total));
    if (!m_dialog && read < total && m_clock.elapsed() >= m_delayMs)
    {
        m_dialog = new QProgressDialog(QApplication::translate("OpenProgress", "Opening %1...").arg(m_name),
                                       QApplication::translate("OpenProgress", "Cancel"), 0,
                                       static_cast<int>(total), &m_window);
        m_dialog->setWindowTitle(QApplication::translate("OpenProgress", "Open Project"));
        m_dialog->setWindowModality(Qt::WindowModal);
        m_dialog->setMinimumDuration(0);
        m_dialog->setAutoClose(false);
        m_dialog->setAutoReset(false);
        m_dialog->show();
    }
    if (m_dialog)
    {
        m_dialog->setValue(static_cast<int>(read));
        m_dialog->setLabelText(QApplication::translate("OpenProgress", "Opening %1: %2 of %3 work units read")
                                   .arg(m_name)
                                   .arg(read)
                                   .arg(total));
    }
    // The window stays drawn; while the dialog is up (it blocks the window) the user can cancel.
    QApplication::processEvents(m_dialog ? QEventLoop::AllEvents : QEventLoop::ExcludeUserInputEvents);
    if (m_dialog && m_dialog->wasCanceled())
        m_cancelled = true;
    return !m_cancelled;
}
} // namespace sn::qt
