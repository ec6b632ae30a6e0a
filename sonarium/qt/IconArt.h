#pragma once
// The object icons drawn from their SVG art, rendered once per size, look and pixel ratio.

#include <QPixmap>

#include <map>
#include <tuple>

namespace sn::qt
{
class IconArt
{
public:
    static IconArt& Get();

    // A pixmap of `size` logical pixels at the pixel ratio; null when the type has no art. A
    // disabled icon is greyed and quieter, in shades that stay legible on the loaded theme's
    // background, as the host draws excluded objects and disabled buttons.
    QPixmap Pixmap(int iconType, bool disabled, int size, qreal pixelRatio);

private:
    IconArt();
    std::map<std::tuple<int, int, int, int>, QPixmap> m_cache;
};
} // namespace sn::qt
