#include "sonarium/qt/ApplicationTheme.h"

#include "sonarium/core/host/Theme.h"
#include "sonarium/qt/QtText.h"

#include <QApplication>
#include <QStyle>
#include <QStyleFactory>
#include <QToolTip>

namespace sn::qt
{
QPalette ThemePalette()
{
    const QColor window = ThemeColor("Window_Background");
    const QColor text = ThemeColor("Window_Text");
    const QColor disabled = ThemeColor("Window_DisabledText");
    const QColor border = ThemeColor("Window_Border");
    const QColor control = ThemeColor("Control_Background");
    QPalette palette;
    for (QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
    {
        const bool off = group == QPalette::Disabled;
        palette.setColor(group, QPalette::Window, window);
        palette.setColor(group, QPalette::WindowText, off ? disabled : text);
        palette.setColor(group, QPalette::Base, ThemeColor("Explorer_BackgroundColor"));
        palette.setColor(group, QPalette::AlternateBase, control);
        palette.setColor(group, QPalette::Text, off ? disabled : ThemeColor("Explorer_NormalText"));
        palette.setColor(group, QPalette::PlaceholderText, disabled);
        palette.setColor(group, QPalette::Button, control);
        palette.setColor(group, QPalette::ButtonText, off ? disabled : text);
        palette.setColor(group, QPalette::BrightText, ThemeColor("Explorer_SelectionText"));
        palette.setColor(group, QPalette::ToolTipBase, ThemeColor("Tooltip_Background"));
        palette.setColor(group, QPalette::ToolTipText, text);
        palette.setColor(group, QPalette::Link, ThemeColor("Link"));
        palette.setColor(group, QPalette::LinkVisited, ThemeColor("Link"));
        // Frames and bevels of the style.
        palette.setColor(group, QPalette::Light, control.lighter(115));
        palette.setColor(group, QPalette::Midlight, control);
        palette.setColor(group, QPalette::Mid, border);
        palette.setColor(group, QPalette::Dark, border.darker(130));
        palette.setColor(group, QPalette::Shadow, border.darker(200));
        palette.setColor(group, QPalette::Highlight,
                         group == QPalette::Inactive ? ThemeColor("Explorer_InactiveSelectionBackground")
                                                     : ThemeColor("Explorer_SelectionBackground"));
        palette.setColor(group, QPalette::HighlightedText,
                         group == QPalette::Inactive ? ThemeColor("Explorer_InactiveSelectionText")
                                                     : ThemeColor("Explorer_SelectionText"));
    }
    return palette;
}

void ApplyApplicationTheme(bool dark)
{
    sn::theme::Load(dark ? sn::theme::Scheme::Dark : sn::theme::Scheme::Light);
    // One style that follows the palette everywhere, and Qt's own dialogs, which wear it too.
    if (QApplication::style()->name().compare(QLatin1String("fusion"), Qt::CaseInsensitive) != 0)
        QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    const QPalette palette = ThemePalette();
    QApplication::setPalette(palette);
    QToolTip::setPalette(palette);
}
} // namespace sn::qt
