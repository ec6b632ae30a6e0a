#pragma once
// The host's Edit menu over the active pane: whether each command can be done now and, when
// not, why; and running a command, which either reaches the pane's view as the host's command
// message or says why nothing was done. The desktop menu and scripts both use it, so that no
// command is ever a silent no-op.

#include <string>

namespace sn
{
class AppSession;

enum class EditCommand
{
    Undo,
    Redo,
    Cut,
    Copy,
    Paste,
    Delete,
    Rename,
};

struct EditAvailability
{
    bool enabled = false;
    // When not enabled: what stands in the way, as a sentence ("Nothing is selected in Audio").
    std::wstring why;
};

class EditMenu
{
public:
    explicit EditMenu(AppSession& session) : m_session(session) {}

    // Asks the view only questions: nothing changes.
    EditAvailability Availability(EditCommand command) const;
    // Runs the command; empty when it was done, else the status text that says why not
    // ("Cannot delete: nothing is selected in Audio").
    std::wstring Run(EditCommand command);

    // "Undo", "Cut"... and back; false for an unknown name.
    static wchar_t const* Name(EditCommand command);
    static bool Parse(std::wstring const& name, EditCommand& command);

private:
    AppSession& m_session;
};
} // namespace sn
