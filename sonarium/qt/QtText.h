#pragma once
// The one crossing between the host's wide strings and colours and Qt's.

#include "platform/WinTypes.h"

#include <QColor>
#include <QString>

#include <string>

namespace sn::qt
{
QString ToQt(std::wstring const& text);
std::wstring FromQt(QString const& text);
QColor ToQColor(COLORREF colour);
// The colour of the loaded theme by name.
QColor ThemeColor(char const* name);
} // namespace sn::qt
