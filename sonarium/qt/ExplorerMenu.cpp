#include "sonarium/qt/ExplorerMenu.h"

#include "sonarium/app/session/AppSession.h"
#include "explorer/menu/MenuCommandIds.h"
#include "sonarium/app/session/ExplorerCommands.h"
#include "sonarium/qt/QtText.h"
#include "sonarium/qt/QtWindowSystemDriver.h"

#include <QMenuBar>
#include <QShortcut>

namespace sn::qt
{
namespace
{
// The host command behind an entry, whose key the host's bindings hold; Delete is the Edit
// menu's.
const char* HostCommandOf(const std::wstring& name)
{
    if (name == L"expand-descendants")
        return "ViewProject ExplorerExpandDescendants";
    if (name == L"collapse-descendants")
        return "ViewProject ExplorerCollapseDescendants";
    if (name == L"batch-rename")
        return "ShowBatchRename";
    if (name == L"import-audio")
        return "ShowAudioFilesImporter";
    return nullptr;
}

QKeySequence KeyOf(AppSession& session, const ROString& command)
{
    return QKeySequence::fromString(ToQt(session.GetHost().Keys().KeyOf(command)), QKeySequence::PortableText);
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
        if (const char* hostCommand = HostCommandOf(name))
            action->setShortcut(KeyOf(session, ROString(hostCommand)));
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

void AddCreateCommandKeys(QWidget& window, AppSession& session, QtWindowSystemDriver& driver)
{
    Commands& commands = session.GetHost().CommandRegistry();
    for (const auto& [name, key] : session.GetHost().Keys().All())
    {
        // The entries of the Objects menu take their own keys.
        const ROString command(name);
        if (!commands.HasCommand(command) || name.find("Create") == std::string::npos)
            continue;
        auto* shortcut = new QShortcut(KeyOf(session, command), &window);
        QObject::connect(shortcut, &QShortcut::activated, &window,
                         [&commands, &driver, command]
                         {
                             commands.ExecuteCommand(command, 0, 0, 0, 0, 0);
                             driver.Pump();
                         });
    }
}
} // namespace sn::qt
