#pragma once
// The host's own panes beside the explorer: the transport (play and stop, the object it holds),
// the property inspector and the event viewer, each showing what the recorder last received.

#include <QWidget>

class QLabel;
class QListWidget;
class QPushButton;

namespace sn
{
class AppSession;
}

namespace sn::qt
{
class QtWindowSystemDriver;

class WaveformWidget;

class SidePanels : public QWidget
{
    Q_OBJECT

public:
    SidePanels(AppSession& session, QtWindowSystemDriver& driver, QWidget* parent = nullptr);

    void Refresh();
    QListWidget* Inspector() const { return m_inspector; }
    QListWidget* EventViewer() const { return m_eventViewer; }
    QLabel* TransportObject() const { return m_transportObject; }
    WaveformWidget* Waveform() const { return m_waveform; }

private:
    void SetPlayback(bool playing);

    AppSession& m_session;
    QtWindowSystemDriver& m_driver;
    QLabel* m_transportObject = nullptr;
    QPushButton* m_play = nullptr;
    QPushButton* m_stop = nullptr;
    QListWidget* m_inspector = nullptr;
    QListWidget* m_eventViewer = nullptr;
    WaveformWidget* m_waveform = nullptr;
};
} // namespace sn::qt
