#pragma once
// The host's key bindings: which key runs which of its named commands (the explorer's create
// commands, its tools, the expand commands). One table serves every place a key shows or acts:
// menus show a bound command's key in their shortcut column, and the desktop application binds
// the keys to the commands.

#include "host/ROString.h"

#include <map>
#include <string>

namespace sn
{
class CommandService;

class KeyBindings
{
public:
    KeyBindings();

    // Binds key ("Ctrl+Shift+N") to command; an empty key removes the binding.
    void Bind(const ROString& command, std::wstring key);
    // The command's key, or empty.
    std::wstring KeyOf(const ROString& command) const;
    // By command name, in the order of the names' text.
    const std::map<std::string, std::wstring>& All() const { return m_keys; }

    // What a menu shows in its shortcut column for the text after an entry's tab: the key of a
    // bound command, nothing for a command of the host that has no key, else the text itself,
    // which then names a key ("Delete", "F2").
    std::wstring ShortcutColumn(const std::wstring& column, const CommandService* commands) const;

private:
    std::map<std::string, std::wstring> m_keys;
};

// Whether text reads as a key: modifiers and one key joined by "+" ("Ctrl+Shift+N", "F2",
// "Delete", "Ctrl++").
bool IsKeyName(const std::wstring& text);
} // namespace sn
