#include "sonarium/qt/QtMenuPresenter.h"

#include "host/Theme.h"
#include "platform/Canvas.h"
#include "sonarium/qt/IconArt.h"
#include "sonarium/qt/QtText.h"

#include <QAction>
#include <QCursor>
#include <QMenu>

namespace sn::qt
{
QtMenuPresenter::QtMenuPresenter(QWidget* parent) : m_parent(parent), m_previous(MenuSystem::GetPresenter())
{
    MenuSystem::SetPresenter(this);
}

QtMenuPresenter::~QtMenuPresenter()
{
    MenuSystem::SetPresenter(m_previous);
}

void QtMenuPresenter::Fill(QMenu& target, HMENU menu)
{
    const std::vector<MenuItem>* items = MenuSystem::Items(menu);
    if (!items)
        return;
    for (MenuItem const& item : *items)
    {
        if (item.IsSeparator())
        {
            target.addSeparator();
            continue;
        }
        // Host texts carry their shortcut after a tab, which QMenu shows in the shortcut column.
        const QString text = ToQt(item.text);
        if (item.IsPopup())
        {
            QMenu* submenu = target.addMenu(text);
            submenu->setEnabled(item.IsEnabled());
            Fill(*submenu, item.submenu);
            continue;
        }
        QAction* action = target.addAction(text);
        action->setData(QVariant::fromValue(static_cast<qulonglong>(item.id)));
        action->setEnabled(item.IsEnabled());
        // An entry's picture is the object icon behind its bitmap handle.
        if (const auto* icon = static_cast<const sn::theme::Bitmap*>(BitmapImage(item.bitmap)))
            action->setIcon(QIcon(IconArt::Get().Pixmap(icon->iconId, icon->disabled, 16, target.devicePixelRatioF())));
        if (item.IsChecked())
        {
            action->setCheckable(true);
            action->setChecked(true);
        }
    }
}

UINT_PTR QtMenuPresenter::TrackPopupMenu(HMENU menu, POINT, HWND)
{
    // The host's screen coordinates are its own layout's; the menu opens where the pointer is.
    QMenu popup(m_parent);
    Fill(popup, menu);
    QAction* chosen = popup.exec(QCursor::pos());
    return chosen ? static_cast<UINT_PTR>(chosen->data().toULongLong()) : 0;
}
} // namespace sn::qt
