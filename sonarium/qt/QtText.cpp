#include "sonarium/qt/QtText.h"

#include "host/Theme.h"

namespace sn::qt
{
QString ToQt(std::wstring const& text)
{
    return QString::fromStdWString(text);
}

std::wstring FromQt(QString const& text)
{
    return text.toStdWString();
}

QColor ToQColor(COLORREF colour)
{
    return QColor(GetRValue(colour), GetGValue(colour), GetBValue(colour));
}

QColor ThemeColor(char const* name)
{
    return ToQColor(sn::theme::Color(name).ToCOLORREF());
}

CPoint ToPoint(QPointF const& point)
{
    return CPoint(static_cast<LONG>(point.x()), static_cast<LONG>(point.y()));
}

QRect ToQRect(RECT const& rect)
{
    return QRect(rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top);
}
} // namespace sn::qt
