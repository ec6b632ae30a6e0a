#pragma once
// Shows the host's popup menus as QMenus at the pointer and answers the chosen command.

#include "platform/Menu.h"

class QMenu;
class QWidget;

namespace sn::qt
{
class QtMenuPresenter : public IMenuPresenter
{
public:
    // Becomes the menu system's presenter for its lifetime.
    explicit QtMenuPresenter(QWidget* parent);
    ~QtMenuPresenter() override;
    QtMenuPresenter(QtMenuPresenter const&) = delete;
    QtMenuPresenter& operator=(QtMenuPresenter const&) = delete;

    UINT_PTR TrackPopupMenu(HMENU menu, POINT screen, HWND owner) override;

    // Fills a QMenu with the items of a host menu; each action's data is its command id.
    static void Fill(QMenu& target, HMENU menu);

private:
    QWidget* m_parent;
    IMenuPresenter* m_previous;
};
} // namespace sn::qt
