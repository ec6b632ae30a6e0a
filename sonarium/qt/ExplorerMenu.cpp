#include "sonarium/qt/ExplorerMenu.h"

#include "sonarium/app/session/AppSession.h"
#include "sonarium/app/session/ExplorerCommands.h"
#include "sonarium/qt/QtText.h"
#include "sonarium/qt/QtWindowSystemDriver.h"

#include <QMenuBar>

namespace sn::qt
{
namespace
{
// Keys for the commands a user repeats often; Delete is the Edit menu's.
QKeySequence ShortcutOf(const std::wstring& name)
{
    if (name == L"expand-descendants")
        return QKeySequence(Qt::CTRL | Qt::Key_Plus);
    if (name == L"collapse-descendants")
        return QKeySequence(Qt::CTRL | Qt::Key_Minus);
    if (name == L"batch-rename")
        return QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_R);
    if (name == L"import-audio")
        return QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_I);
    return {};
}
} // namespace

void AddObjectsMenu(QMenuBar& bar, AppSession& session, QtWindowSystemDriver& driver, QWidget* owner)
{
    QMenu* menu = bar.addMenu(QObject::tr("&Objects"));
    QMenu* inclusion = nullptr;
    for (const ExplorerCommand& command : ExplorerCommands())
    {
        const std::wstring name = command.name;
        if (name == L"delete")
            continue; // in the Edit menu
        QMenu* into = menu;
        if (name == L"include" || name == L"exclude" || name == L"link" || name == L"unlink")
        {
            if (!inclusion)
            {
                menu->addSeparator();
                inclusion = menu->addMenu(QObject::tr("Inclusion"));
            }
            into = inclusion;
        }
        if (name == L"expand-descendants" || name == L"load-unload")
            menu->addSeparator();
        QAction* action = into->addAction(ToQt(command.text));
        action->setShortcut(ShortcutOf(name));
        QObject::connect(action, &QAction::triggered, owner,
                         [&session, &driver, run = command.run]
                         {
                             if (Pane* pane = session.ActivePane())
                                 run(*pane->view);
                             driver.Pump();
                         });
    }
}
} // namespace sn::qt
