#include "sonarium/qt/WaveformWidget.h"

#include "sonarium/qt/QtText.h"

#include <QPainter>

#include <algorithm>

namespace sn::qt
{
WaveformWidget::WaveformWidget(QWidget* parent) : QWidget(parent)
{
    setMinimumHeight(64);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void WaveformWidget::ShowObject(ProjectObject* object)
{
    m_object = object;
    Read();
    update();
}

void WaveformWidget::resizeEvent(QResizeEvent*)
{
    // One peak per pixel column: a wider widget reads the file again at its new width.
    if (m_object && m_audio.info.ok && m_audio.peaks.size() != static_cast<size_t>(std::max(1, width())))
        Read();
}

void WaveformWidget::Read()
{
    m_audio = m_object ? audio::QuerySourceAudio(m_object.Get(), static_cast<size_t>(std::max(1, width())))
                       : audio::SourceAudio{};
}

void WaveformWidget::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QRect area = rect();
    painter.fillRect(area, palette().color(QPalette::Base));
    if (!m_object)
        return;
    // A mid blue that reads on the light and the dark theme alike.
    const QColor ink(0x2f, 0x7f, 0xd0);
    const double middle = area.height() / 2.0;
    painter.setPen(QPen(palette().color(QPalette::Mid), 1));
    painter.drawLine(QPointF(0, middle), QPointF(area.width(), middle));
    painter.setPen(QPen(ink, 1));
    const auto& peaks = m_audio.peaks;
    for (size_t x = 0; x < peaks.size(); ++x)
    {
        // Each column spans its stretch's lowest to highest sample; silence still shows a dot.
        const double top = middle - peaks[x].high * (middle - 2);
        const double bottom = middle - peaks[x].low * (middle - 2);
        const double px = static_cast<double>(x) * area.width() / static_cast<double>(peaks.size());
        painter.drawLine(QPointF(px, top), QPointF(px, std::max(bottom, top + 1)));
    }
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(area.adjusted(4, 2, -4, -2), Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap,
                     ToQt(m_audio.info.Describe()));
}
} // namespace sn::qt
