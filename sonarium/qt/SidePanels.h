#pragma once
// The host's own panes beside the explorer: the transport (play and stop, the object it holds),
// the property inspector and the event viewer. Their width is the user's: what they show never
// widens them (long texts are elided, whole in their tooltips).

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
class PropertiesWidget;
class QtWindowSystemDriver;

class WaveformWidget;

class SidePanels : public QWidget
{
    Q_OBJECT

public:
    SidePanels(AppSession& session, QtWindowSystemDriver& driver, QWidget* parent = nullptr);

    void Refresh();
    PropertiesWidget* Inspector() const { return m_inspector; }
    QListWidget* EventViewer() const { return m_eventViewer; }
    QLabel* TransportObject() const { return m_transportObject; }
    WaveformWidget* Waveform() const { return m_waveform; }
    // The transport's object as recorded, before eliding.
    QString TransportText() const { return m_transportText; }

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void SetPlayback(bool playing);
    void ElideTransport();

    AppSession& m_session;
    QtWindowSystemDriver& m_driver;
    QLabel* m_transportObject = nullptr;
    QString m_transportText;
    QPushButton* m_play = nullptr;
    QPushButton* m_stop = nullptr;
    PropertiesWidget* m_inspector = nullptr;
    QListWidget* m_eventViewer = nullptr;
    WaveformWidget* m_waveform = nullptr;
};
} // namespace sn::qt
