#pragma once
// The one crossing between the host's wide strings, colours and geometry and Qt's.

#include "platform/WinTypes.h"

#include <QColor>
#include <QPointF>
#include <QRect>
#include <QString>

#include <string>

namespace sn::qt
{
QString ToQt(std::wstring const& text);
std::wstring FromQt(QString const& text);
QColor ToQColor(COLORREF colour);
// The colour of the loaded theme by name.
QColor ThemeColor(char const* name);
// Points and rectangles in the same client coordinates on both sides.
CPoint ToPoint(QPointF const& point);
QRect ToQRect(RECT const& rect);
} // namespace sn::qt
