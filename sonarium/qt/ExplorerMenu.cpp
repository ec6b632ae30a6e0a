#include "sonarium/qt/ExplorerMenu.h"

#include "sonarium/app/session/AppSession.h"
#include "explorer/menu/MenuCommandIds.h"
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

// The marks of the selection's state on the current platform, as the context menu shows them;
// changing inclusion waits for playback to stop.
void MarkInclusion(QMenu& inclusion, AppSession& session)
{
    Pane* pane = session.ActivePane();
    std::vector<IOrbObject*> selected;
    if (pane)
        pane->view->GetSelectedObjects(selected);
    const unsigned included = selected.empty() ? 0 : pane->view->IsIncluded();
    const unsigned linked = selected.empty() ? 0 : pane->view->IsInclusionLinked();
    const bool playing = session.GetHost().IsInPlayback();
    for (QAction* action : inclusion.actions())
    {
        const unsigned id = action->data().toUInt();
        const bool changesInclusion = id == MenuCommandIds::IncludeSelection || id == MenuCommandIds::ExcludeSelection;
        action->setEnabled(!selected.empty() && !(changesInclusion && playing));
        action->setChecked(id == included || id == linked);
    }
}

unsigned InclusionId(const std::wstring& name)
{
    return name == L"include"   ? MenuCommandIds::IncludeSelection
           : name == L"exclude" ? MenuCommandIds::ExcludeSelection
           : name == L"link"    ? MenuCommandIds::LinkInclusion
           : name == L"unlink"  ? MenuCommandIds::UnlinkInclusion
                                : 0;
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
        if (InclusionId(name))
        {
            if (!inclusion)
            {
                menu->addSeparator();
                inclusion = menu->addMenu(QObject::tr("Inclusion"));
                QObject::connect(inclusion, &QMenu::aboutToShow, owner,
                                 [inclusion, &session] { MarkInclusion(*inclusion, session); });
            }
            into = inclusion;
        }
        if (name == L"expand-descendants" || name == L"load-unload")
            menu->addSeparator();
        QAction* action = into->addAction(ToQt(command.text));
        action->setShortcut(ShortcutOf(name));
        if (const unsigned id = InclusionId(name))
        {
            action->setCheckable(true);
            action->setData(id);
        }
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
