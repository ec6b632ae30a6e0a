// Script commands for the host's own panels: the Edit menu as the user finds it, and the
// property inspector.

#include "sonarium/app/script/ScriptRunner.h"

#include "host/Utf8.h"
#include "sonarium/app/script/ScriptWords.h"
#include "sonarium/app/session/EditMenu.h"

namespace sn
{
void ScriptRunner::AddPanelCommands()
{
    m_commands[L"edit"] = [this](Words const& words, std::wstring& error)
    {
        EditCommand command;
        if (!WordCount(words, 2, 2, L"edit undo|redo|cut|copy|paste|delete|rename", error))
            return false;
        if (!EditMenu::Parse(words[1], command))
            return Fail(error, L"unknown Edit menu command \"" + words[1] +
                                   L"\" (undo, redo, cut, copy, paste, delete or rename)");
        // What the status bar would say when the command cannot be done.
        if (std::wstring status = EditMenu(m_session).Run(command); !status.empty())
            m_out << L"status: " << status << L"\n";
        return true;
    };
    m_commands[L"inspector"] = [this](Words const& words, std::wstring& error)
    {
        if (!WordCount(words, 4, 4, L"inspector set PROPERTY VALUE", error))
            return false;
        if (words[1] != L"set")
            return Fail(error, L"unknown inspector command \"" + words[1] + L"\" (set)");
        std::wstring why;
        return m_session.Inspector().Edit(Utf8::FromWide(words[2]), words[3], why) ||
               Fail(error, L"the inspector cannot set " + words[2] + L": " + why);
    };
}

bool ScriptRunner::PrintPanel(std::wstring const& what)
{
    std::vector<std::wstring> lines;
    if (what == L"inspector")
        lines = m_session.Inspector().Lines();
    else if (what == L"edit-menu")
    {
        EditMenu menu(m_session);
        for (EditCommand command : {EditCommand::Undo, EditCommand::Redo, EditCommand::Cut, EditCommand::Copy,
                                    EditCommand::Paste, EditCommand::Delete, EditCommand::Rename})
        {
            const EditAvailability availability = menu.Availability(command);
            lines.push_back(std::wstring(EditMenu::Name(command)) + L": " +
                            (availability.enabled ? L"enabled" : L"disabled (" + availability.why + L")"));
        }
    }
    else
        return false;
    m_out << what << L"\n";
    for (std::wstring const& line : lines)
        m_out << L"  " << line << L"\n";
    return true;
}
} // namespace sn
