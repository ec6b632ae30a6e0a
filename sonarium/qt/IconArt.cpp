#include "sonarium/qt/IconArt.h"

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
void GreyOut(QImage& image)
{
    for (int y = 0; y < image.height(); ++y)
    {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x)
        {
            const int grey = qGray(line[x]);
            line[x] = qPremultiply(qRgba(grey, grey, grey, qAlpha(qUnpremultiply(line[x])) * 2 / 5));
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
    const auto key = std::make_tuple(iconType, disabled, size, ratioKey);
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
                GreyOut(image);
            pixmap = QPixmap::fromImage(image);
            pixmap.setDevicePixelRatio(pixelRatio);
        }
    }
    m_cache.emplace(key, pixmap);
    return pixmap;
}
} // namespace sn::qt
