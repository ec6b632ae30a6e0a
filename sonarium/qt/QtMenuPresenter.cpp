#include "sonarium/qt/QtMenuPresenter.h"

#include "host/Theme.h"
#include "platform/Canvas.h"
#include "sonarium/qt/IconArt.h"
#include "sonarium/qt/QtText.h"
#include "sonarium/ui/menus/MenuShortcuts.h"

#include <QAction>
#include <QActionGroup>
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

namespace
{
// Whether the run of entries between separators that holds position has a radio mark: the
// whole run is then one group of radio entries, as the menu draws them.
std::vector<bool> RadioRuns(std::vector<MenuItem> const& items)
{
    std::vector<bool> radio(items.size(), false);
    size_t start = 0;
    for (size_t i = 0; i <= items.size(); ++i)
    {
        if (i < items.size() && !items[i].IsSeparator())
            continue;
        bool marked = false;
        for (size_t j = start; j < i; ++j)
            marked = marked || (items[j].IsChecked() && (items[j].flags & MFT_RADIOCHECK));
        for (size_t j = start; j < i; ++j)
            radio[j] = marked && !items[j].IsPopup();
        start = i + 1;
    }
    return radio;
}
} // namespace

void QtMenuPresenter::Fill(QMenu& target, HMENU menu)
{
    const std::vector<MenuItem>* items = MenuSystem::Items(menu);
    if (!items)
        return;
    const std::vector<bool> radio = RadioRuns(*items);
    QActionGroup* group = nullptr;
    for (size_t i = 0; i < items->size(); ++i)
    {
        MenuItem const& item = (*items)[i];
        if (item.IsSeparator())
        {
            target.addSeparator();
            group = nullptr;
            continue;
        }
        // The shortcut column follows the tab, where QMenu shows it: a key, or the key the host
        // binds to the command named there.
        const QString text = ToQt(WithShownShortcut(item.text));
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
        if (radio[i])
        {
            if (!group)
            {
                group = new QActionGroup(&target);
                group->setExclusive(true);
            }
            action->setCheckable(true);
            action->setChecked(item.IsChecked());
            group->addAction(action);
        }
        else if (item.IsChecked())
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
