#include "sonarium/qt/QtCanvas.h"

#include "host/Theme.h"
#include "sonarium/qt/IconArt.h"
#include "sonarium/qt/QtText.h"

#include <QPainter>

#include <cmath>

namespace sn::qt
{
void QtCanvas::DrawImage(const void* image, const RectF& dest, const RECT& source)
{
    const auto* bitmap = static_cast<sn::theme::Bitmap const*>(image);
    if (!bitmap)
        return;
    const QRectF target(dest.x, dest.y, dest.width, dest.height);
    const int size = static_cast<int>(std::ceil(std::max(dest.width, dest.height)));
    const QPixmap pixmap = IconArt::Get().Pixmap(bitmap->iconId, bitmap->disabled, size,
                                                 m_painter.device()->devicePixelRatioF());
    if (!pixmap.isNull())
        m_painter.drawPixmap(target, pixmap, QRectF(QPointF(0, 0), pixmap.size()));
}

void QtCanvas::FillRect(const RECT& rect, COLORREF colour)
{
    m_painter.fillRect(ToQRect(rect), ToQColor(colour));
}

void QtCanvas::DrawText(const std::wstring& text, const RECT& rect, COLORREF colour)
{
    m_painter.save();
    m_painter.setPen(ToQColor(colour));
    m_painter.drawText(ToQRect(rect), Qt::AlignLeft | Qt::AlignVCenter, ToQt(text));
    m_painter.restore();
}
} // namespace sn::qt
