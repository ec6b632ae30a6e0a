#include "sonarium/qt/SidePanels.h"

#include "sonarium/app/session/AppSession.h"
#include "sonarium/qt/IconArt.h"
#include "sonarium/qt/PropertiesWidget.h"
#include "sonarium/qt/QtText.h"
#include "sonarium/qt/QtWindowSystemDriver.h"
#include "sonarium/qt/WaveformWidget.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace sn::qt
{
namespace
{
constexpr int k_iconSize = 16;

QGroupBox* AddGroup(QVBoxLayout& layout, QString const& title, QWidget* content, QWidget* parent)
{
    auto* group = new QGroupBox(title, parent);
    auto* inner = new QVBoxLayout(group);
    inner->setContentsMargins(4, 4, 4, 4);
    content->setParent(group);
    inner->addWidget(content);
    layout.addWidget(group, 1);
    return group;
}
} // namespace

SidePanels::SidePanels(AppSession& session, QtWindowSystemDriver& driver, QWidget* parent)
    : QWidget(parent), m_session(session), m_driver(driver)
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);

    auto* transport = new QGroupBox(tr("Transport"), this);
    auto* row = new QHBoxLayout(transport);
    m_play = new QPushButton(tr("Play"), transport);
    m_stop = new QPushButton(tr("Stop"), transport);
    m_transportObject = new QLabel(transport);
    m_transportObject->setTextInteractionFlags(Qt::TextSelectableByMouse);
    // A long path is elided: it must not widen the panel.
    m_transportObject->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    row->addWidget(m_play);
    row->addWidget(m_stop);
    row->addWidget(m_transportObject, 1);
    layout->addWidget(transport);
    connect(m_play, &QPushButton::clicked, this, [this] { SetPlayback(true); });
    connect(m_stop, &QPushButton::clicked, this, [this] { SetPlayback(false); });

    m_inspector = new PropertiesWidget(m_session.Inspector(), m_driver, this);
    AddGroup(*layout, tr("Property Inspector"), m_inspector, this)->setObjectName(QStringLiteral("inspector"));
    // The audio of the inspected sound, under its properties.
    m_waveform = new WaveformWidget(this);
    layout->addWidget(m_waveform);
    m_eventViewer = new QListWidget(this);
    m_eventViewer->setObjectName(tr("Event Viewer"));
    m_eventViewer->setIconSize(QSize(k_iconSize, k_iconSize));
    m_eventViewer->setTextElideMode(Qt::ElideMiddle);
    AddGroup(*layout, tr("Event Viewer"), m_eventViewer, this);
    Refresh();
}

void SidePanels::SetPlayback(bool playing)
{
    m_session.GetHost().SetPlayback(playing);
    m_driver.Pump();
    Refresh();
}

void SidePanels::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    ElideTransport();
}

void SidePanels::ElideTransport()
{
    const QString text = m_transportText.isEmpty() ? tr("(nothing loaded)") : m_transportText;
    const int room = std::max(0, m_transportObject->width());
    m_transportObject->setText(m_transportObject->fontMetrics().elidedText(text, Qt::ElideMiddle, room));
    m_transportObject->setToolTip(text);
}

void SidePanels::Refresh()
{
    HostRecorder& recorder = m_session.Recorder();
    m_transportText = ToQt(recorder.TransportObject());
    ElideTransport();
    const bool playing = m_session.GetHost().IsInPlayback();
    m_play->setEnabled(!playing && !m_transportText.isEmpty());
    m_stop->setEnabled(playing);
    m_play->setToolTip(m_transportText.isEmpty() ? tr("Select one object to play it") : tr("Play the object"));
    m_inspector->Refresh();
    const std::vector<ProjectObject*> shown = m_session.Inspector().Objects();
    ProjectObject* inspected = shown.size() == 1 ? shown.front() : nullptr;
    m_waveform->ShowObject(inspected && audio::PlayedSource(inspected) ? inspected : nullptr);
    m_waveform->setVisible(m_waveform->Audio().source != nullptr);
    m_eventViewer->clear();
    for (HostRecorder::Listed const& object : recorder.EventViewer())
    {
        auto* item = new QListWidgetItem(ToQt(object.path), m_eventViewer);
        item->setToolTip(item->text());
        item->setIcon(QIcon(IconArt::Get().Pixmap(object.iconType, false, k_iconSize, devicePixelRatioF())));
    }
}
} // namespace sn::qt
