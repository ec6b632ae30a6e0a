#pragma once
// A menu entry's shortcut column as the user reads it: the text after the entry's tab names a
// key or one of the host's commands, and a command shows the key the host binds to it.

#include <string>

namespace sn
{
// The shown shortcut of an entry text ("Rename\tF2" gives "F2", "Batch Rename...\tShowBatchRename"
// the key bound to that command); empty when there is none to show.
std::wstring ShownShortcut(const std::wstring& entryText);
// The entry text with its shortcut column resolved, or without the column when nothing shows.
std::wstring WithShownShortcut(const std::wstring& entryText);
// A tooltip that carries a shortcut column the same way, as the user reads it:
// "Create new 'Sound SFX' (Ctrl+Shift+N)".
std::wstring ShownToolTip(const std::wstring& tipText);
} // namespace sn
