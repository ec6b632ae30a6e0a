// What the host tells the user outside its own dialogs, in the window: problems with the
// preferences file (once each, in the status bar and a message box naming the file) and a project
// opened read-only because another instance has it open.

#include "sonarium/qt/MainWindow.h"

#include "host/Utf8.h"
#include "sonarium/qt/DesktopRun.h"
#include "sonarium/qt/QtText.h"
#include "sonarium/qt/QtWindowSystemDriver.h"

#include <QLabel>
#include <QMessageBox>
#include <QPointer>
#include <QStatusBar>
#include <QTimer>

#include <iostream>

namespace sn::qt
{
void MainWindow::WatchHostReports()
{
    QPointer<MainWindow> window(this);
    m_session.Reports().SetPreferenceListener(
        [window](std::wstring const& problem)
        {
            // Also for whoever started the program from a terminal, and after the window is gone.
            std::cerr << "sonarium: preferences: " << Utf8::FromWide(problem) << "\n";
            if (window)
                window->ShowPreferenceProblem(problem);
        });
    connect(&m_driver, &QtWindowSystemDriver::Pumped, this, [this] { m_session.Reports().ReportPreferenceProblems(); });
    // Problems found when the preferences were read wait for the window to show.
    QTimer::singleShot(0, this, [this] { m_session.Reports().ReportPreferenceProblems(); });
    ShowReadOnly();
}

void MainWindow::ShowPreferenceProblem(std::wstring const& problem)
{
    statusBar()->showMessage(tr("Preferences: %1").arg(ToQt(problem)));
    // Rendered offscreen, nobody could close a box.
    if (!HasDisplay())
        return;
    auto show = [this, text = ToQt(problem)]
    { QMessageBox::warning(this, tr("Preferences"), tr("There is a problem with your preferences:\n\n%1").arg(text)); };
    if (m_closing)
        show();
    else
        QTimer::singleShot(0, this, show);
}

void MainWindow::ShowReadOnly()
{
    const std::string& reason = m_session.ReadOnlyReason();
    UpdateTitle();
    if (reason.empty())
    {
        if (m_readOnly)
            m_readOnly->hide();
        return;
    }
    if (!m_readOnly)
    {
        m_readOnly = new QLabel(tr("Read-only: open in another instance"), this);
        statusBar()->addPermanentWidget(m_readOnly);
    }
    m_readOnly->setToolTip(ToQt(Utf8::ToWide(reason)));
    m_readOnly->show();
}
} // namespace sn::qt
