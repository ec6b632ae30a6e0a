#include "sonarium/app/session/EditMenu.h"

#include "explorer/commands/PEHelper.h"
#include "host/HostMessages.h"
#include "host/TreeNodeWithObject.h"
#include "sonarium/app/session/AppSession.h"

#include <algorithm>
#include <array>

namespace sn
{
namespace
{
struct CommandInfo
{
    EditCommand command;
    wchar_t const* name;
    wchar_t const* verb;
};

constexpr std::array<CommandInfo, 7> k_commands = {{
    {EditCommand::Undo, L"Undo", L"undo"},
    {EditCommand::Redo, L"Redo", L"redo"},
    {EditCommand::Cut, L"Cut", L"cut"},
    {EditCommand::Copy, L"Copy", L"copy"},
    {EditCommand::Paste, L"Paste", L"paste"},
    {EditCommand::Delete, L"Delete", L"delete"},
    {EditCommand::Rename, L"Rename", L"rename"},
}};

CommandInfo const& Info(EditCommand command)
{
    return *std::find_if(k_commands.begin(), k_commands.end(),
                         [command](CommandInfo const& info) { return info.command == command; });
}

std::wstring NameOf(PMTreeNode* node)
{
    auto* withObject = dynamic_cast<TreeNodeWithObject*>(node);
    IOrbObject* object = withObject ? withObject->GetObject() : nullptr;
    return object ? std::wstring(object->GetName().c_str()) : std::wstring(L"the selection");
}

EditAvailability Yes()
{
    return {true, {}};
}

EditAvailability No(std::wstring why)
{
    return {false, std::move(why)};
}

// Delete and Rename, answered from the view's selection by the host's own rules.
EditAvailability ForSelection(EditCommand command, Pane& pane)
{
    std::vector<PMTreeNode*> nodes;
    pane.view->GetSelectedNodeList(nodes);
    if (nodes.empty())
        return No(L"nothing is selected in " + pane.name);
    if (command == EditCommand::Rename)
    {
        if (nodes.size() > 1)
            return No(L"only one object can be renamed at a time, and " + std::to_wstring(nodes.size()) +
                      L" are selected");
        return CanRenameNode(nodes.front()) ? Yes()
                                            : No(L"\"" + NameOf(nodes.front()) + L"\" cannot be renamed");
    }
    if (std::any_of(nodes.begin(), nodes.end(), [](PMTreeNode* node) { return CanDeleteNode(node); }))
        return Yes();
    return No(nodes.size() == 1
                  ? L"\"" + NameOf(nodes.front()) + L"\" cannot be deleted"
                  : L"none of the " + std::to_wstring(nodes.size()) + L" selected objects can be deleted");
}
} // namespace

wchar_t const* EditMenu::Name(EditCommand command)
{
    return Info(command).name;
}

bool EditMenu::Parse(std::wstring const& name, EditCommand& command)
{
    for (CommandInfo const& info : k_commands)
        if (name == info.verb || name == info.name)
            return command = info.command, true;
    return false;
}

EditAvailability EditMenu::Availability(EditCommand command) const
{
    UndoManager& undo = m_session.GetHost().Undo();
    if (command == EditCommand::Undo)
        return undo.CanUndo() ? Yes() : No(L"there is nothing to undo");
    if (command == EditCommand::Redo)
        return undo.CanRedo() ? Yes() : No(L"there is nothing to redo");
    Pane* pane = m_session.ActivePane();
    if (!pane)
        return No(L"no explorer pane is open");
    if (command == EditCommand::Delete || command == EditCommand::Rename)
        return ForSelection(command, *pane);
    const UINT question = command == EditCommand::Cut    ? HostMessages::CanCut
                          : command == EditCommand::Copy ? HostMessages::CanCopy
                                                         : HostMessages::CanPaste;
    if (pane->view->SendMessage(question, 0, 0) == HostMessages::Allowed)
        return Yes();
    std::vector<PMTreeNode*> nodes;
    pane->view->GetSelectedNodeList(nodes);
    if (command == EditCommand::Paste)
        return No(L"the clipboard holds nothing that can be pasted on the selection in " + pane->name);
    if (nodes.empty())
        return No(L"nothing is selected in " + pane->name);
    return No(std::wstring(L"the selection in ") + pane->name + L" cannot be " +
              (command == EditCommand::Cut ? L"cut" : L"copied"));
}

std::wstring EditMenu::Run(EditCommand command)
{
    const EditAvailability availability = Availability(command);
    if (!availability.enabled)
        return std::wstring(L"Cannot ") + Info(command).verb + L": " + availability.why;
    UndoManager& undo = m_session.GetHost().Undo();
    switch (command)
    {
    case EditCommand::Undo:
        undo.Undo();
        break;
    case EditCommand::Redo:
        undo.Redo();
        break;
    default:
    {
        static const std::array<UINT, 5> k_messages = {WM_CUT, WM_COPY, WM_PASTE, HostMessages::DeleteObject,
                                                       HostMessages::RenameObject};
        const auto index = static_cast<size_t>(command) - static_cast<size_t>(EditCommand::Cut);
        m_session.ActivePane()->view->SendMessage(k_messages[index], 0, 0);
        break;
    }
    }
    m_session.Pump();
    return {};
}
} // namespace sn
