// Script lines about the context menu and what its host entries reach: the last menu shown, the
// text clipboard, the folders the host was asked to show in the file manager, and the keys bound
// to the host's commands that the menus show.

#include "sonarium/app/script/ScriptRunner.h"

#include "host/Utf8.h"
#include "platform/Edit.h"
#include "platform/Shell.h"
#include "sonarium/app/script/ScriptWords.h"

namespace sn
{
void ScriptRunner::AddContextMenuCommands()
{
    KeyBindings& keys = m_session.GetHost().Keys();
    AddSubcommands(
        L"host",
        {
            {L"key-binding",
             [&keys](Words const& words, std::wstring& error)
             {
                 if (!WordCount(words, 4, 4, L"host key-binding COMMAND KEY|none", error))
                     return false;
                 if (words[2].empty())
                     return Fail(error, L"no command named");
                 if (words[3] != L"none" && !IsKeyName(words[3]))
                     return Fail(error, L"not a key: \"" + words[3] + L"\" (e.g. Ctrl+Shift+N, F2, Delete)");
                 keys.Bind(ROString(Utf8::FromWide(words[2])), words[3] == L"none" ? std::wstring() : words[3]);
                 return true;
             }},
        });
    AddSubcommands(
        L"print",
        {
            {L"last-menu",
             [this](Words const& words, std::wstring& error)
             {
                 if (!WordCount(words, 2, 2, L"print last-menu", error))
                     return false;
                 // The menus before it are forgotten, as "print menus" forgets what it printed.
                 std::vector<std::wstring> const& lines = m_menus.Transcript();
                 size_t start = lines.size();
                 while (start > 0 && lines[start - 1] != L"menu")
                     --start;
                 m_out << L"last menu\n";
                 if (start == 0)
                     m_out << L"  (none shown)\n";
                 for (size_t i = start; i < lines.size(); ++i)
                     m_out << lines[i] << L"\n";
                 m_menus.Clear();
                 return true;
             }},
            {L"system-clipboard",
             [this](Words const& words, std::wstring& error)
             {
                 if (!WordCount(words, 2, 2, L"print system-clipboard", error))
                     return false;
                 const std::wstring text = TextClipboard::Get();
                 m_out << L"system clipboard\n";
                 if (text.empty())
                     m_out << L"  (empty)\n";
                 for (size_t start = 0; start < text.size();)
                 {
                     const size_t end = std::min(text.find(L'\n', start), text.size());
                     m_out << L"  " << text.substr(start, end - start) << L"\n";
                     start = end + 1;
                 }
                 return true;
             }},
            {L"opened-folders",
             [this](Words const& words, std::wstring& error)
             {
                 if (!WordCount(words, 2, 2, L"print opened-folders", error))
                     return false;
                 m_out << L"opened folders\n";
                 for (std::wstring const& folder : Shell::OpenedFolders())
                     m_out << L"  " << folder << L"\n";
                 Shell::ClearOpenedFolders();
                 return true;
             }},
            {L"key-bindings",
             [this, &keys](Words const& words, std::wstring& error)
             {
                 if (!WordCount(words, 2, 2, L"print key-bindings", error))
                     return false;
                 m_out << L"key bindings\n";
                 for (const auto& [command, key] : keys.All())
                     m_out << L"  " << Utf8::ToWide(command) << L": " << key << L"\n";
                 return true;
             }},
        });
}
} // namespace sn
