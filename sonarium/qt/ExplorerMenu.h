#pragma once
// The main window's Objects menu: the explorer's structure commands on the active pane's
// selection, as its context menu offers them.

class QMenuBar;
class QWidget;

namespace sn
{
class AppSession;
}

namespace sn::qt
{
class QtWindowSystemDriver;

void AddObjectsMenu(QMenuBar& bar, AppSession& session, QtWindowSystemDriver& driver, QWidget* owner);
// The host's keys for the explorer's create commands, acting on the focused pane.
void AddCreateCommandKeys(QWidget& window, AppSession& session, QtWindowSystemDriver& driver);
} // namespace sn::qt
