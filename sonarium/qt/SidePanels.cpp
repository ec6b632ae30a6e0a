#include "sonarium/qt/SidePanels.h"

#include "sonarium/app/session/AppSession.h"
#include "sonarium/qt/QtText.h"
#include "sonarium/qt/QtWindowSystemDriver.h"
#include "sonarium/qt/WaveformWidget.h"
#include "sonarium/core/host/ProjectBuilder.h"

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
QListWidget* AddList(QVBoxLayout& layout, QString const& title, QWidget* parent)
{
    auto* group = new QGroupBox(title, parent);
    auto* inner = new QVBoxLayout(group);
    inner->setContentsMargins(4, 4, 4, 4);
    auto* list = new QListWidget(group);
    list->setObjectName(title);
    inner->addWidget(list);
    layout.addWidget(group, 1);
    return list;
}

void Fill(QListWidget& list, std::vector<std::wstring> const& lines)
{
    list.clear();
    for (std::wstring const& line : lines)
        list.addItem(ToQt(line));
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
    row->addWidget(m_play);
    row->addWidget(m_stop);
    row->addWidget(m_transportObject, 1);
    layout->addWidget(transport);
    connect(m_play, &QPushButton::clicked, this, [this] { SetPlayback(true); });
    connect(m_stop, &QPushButton::clicked, this, [this] { SetPlayback(false); });

    m_inspector = AddList(*layout, tr("Property Inspector"), this);
    // The audio of the inspected sound, under its properties.
    m_waveform = new WaveformWidget(this);
    layout->addWidget(m_waveform);
    m_eventViewer = AddList(*layout, tr("Event Viewer"), this);
    Refresh();
}

void SidePanels::SetPlayback(bool playing)
{
    m_session.GetHost().SetPlayback(playing);
    m_driver.Pump();
    Refresh();
}

void SidePanels::Refresh()
{
    HostRecorder& recorder = m_session.Recorder();
    const std::wstring& object = recorder.TransportObject();
    m_transportObject->setText(object.empty() ? tr("(nothing loaded)") : ToQt(object));
    const bool playing = m_session.GetHost().IsInPlayback();
    m_play->setEnabled(!playing && !object.empty());
    m_stop->setEnabled(playing);
    Fill(*m_inspector, recorder.Inspected());
    Project* project = m_session.GetProject();
    ProjectObject* inspected =
        project && !recorder.Inspected().empty() ? FindByPath(*project, recorder.Inspected().front()) : nullptr;
    m_waveform->ShowObject(inspected && audio::PlayedSource(inspected) ? inspected : nullptr);
    m_waveform->setVisible(m_waveform->Audio().source != nullptr);
    Fill(*m_eventViewer, recorder.EventViewer());
}
} // namespace sn::qt
