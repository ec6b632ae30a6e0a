#include "sonarium/qt/IconArt.h"

#include "sonarium/core/host/Theme.h"
#include "sonarium/ui/icons/IconNames.h"

#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cmath>

static void InitIconResources()
{
    Q_INIT_RESOURCE(icons);
}

namespace sn::qt
{
namespace
{
// Greys the art and squeezes its shades into a band that stands off the theme's background:
// light greys on a dark background, mid greys on a light one, so that a disabled icon stays
// legible, only quieter.
void GreyOut(QImage& image, bool darkBackground)
{
    const int low = darkBackground ? 120 : 55;
    const int high = darkBackground ? 215 : 150;
    for (int y = 0; y < image.height(); ++y)
    {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x)
        {
            const QRgb pixel = qUnpremultiply(line[x]);
            const int grey = low + qGray(pixel) * (high - low) / 255;
            line[x] = qPremultiply(qRgba(grey, grey, grey, qAlpha(pixel) * 7 / 10));
        }
    }
}
} // namespace

IconArt& IconArt::Get()
{
    static IconArt art;
    return art;
}

IconArt::IconArt()
{
    InitIconResources();
}

QPixmap IconArt::Pixmap(int iconType, bool disabled, int size, qreal pixelRatio)
{
    const int ratioKey = static_cast<int>(std::lround(pixelRatio * 100));
    const bool dark = sn::theme::Current() == sn::theme::Scheme::Dark;
    // The disabled look depends on the theme; the normal one does not.
    const auto key = std::make_tuple(iconType, disabled ? (dark ? 2 : 1) : 0, size, ratioKey);
    if (auto found = m_cache.find(key); found != m_cache.end())
        return found->second;

    QPixmap pixmap;
    if (char const* name = IconTypeName(static_cast<ObjectIcons::IconType>(iconType)))
    {
        QSvgRenderer renderer(QStringLiteral(":/icons/%1.svg").arg(QLatin1String(name)));
        if (renderer.isValid())
        {
            const int pixels = static_cast<int>(std::ceil(size * pixelRatio));
            QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
            image.fill(Qt::transparent);
            {
                QPainter painter(&image);
                painter.setRenderHint(QPainter::Antialiasing);
                renderer.render(&painter, QRectF(0, 0, pixels, pixels));
            }
            if (disabled)
                GreyOut(image, dark);
            pixmap = QPixmap::fromImage(image);
            pixmap.setDevicePixelRatio(pixelRatio);
        }
    }
    m_cache.emplace(key, pixmap);
    return pixmap;
}
} // namespace sn::qt
