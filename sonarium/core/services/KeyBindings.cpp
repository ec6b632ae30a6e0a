#include "sonarium/core/services/KeyBindings.h"

#include "host/ServiceProvider.h"
#include "host/Utf8.h"

#include <array>
#include <cwctype>

namespace sn
{
namespace
{
struct DefaultBinding
{
    const char* command;
    const wchar_t* key;
};

// Keys for what users make most often, and for the tools they repeat.
constexpr std::array<DefaultBinding, 15> k_defaults{{
    {"ViewProject ExplorerCreateChildWorkUnit", L"Ctrl+Shift+U"},
    {"ViewProject ExplorerCreateChildFolder", L"Ctrl+Shift+D"},
    {"ViewProject ExplorerCreateChildActor-Mixer", L"Ctrl+Shift+A"},
    {"ViewProject ExplorerCreateChildRandomContainer", L"Ctrl+Shift+C"},
    {"ViewProject ExplorerCreateChildSoundSFX", L"Ctrl+Shift+N"},
    {"ViewProject ExplorerCreateChildSoundVoice", L"Ctrl+Shift+V"},
    {"ViewProject ExplorerCreateChildBus", L"Ctrl+Shift+B"},
    {"ViewProject ExplorerCreateChildEvent", L"Ctrl+Shift+E"},
    {"ViewProject ExplorerCreateParentFolder", L"Ctrl+Alt+D"},
    {"ViewProject ExplorerCreateParentActor-Mixer", L"Ctrl+Alt+A"},
    {"ViewProject ExplorerCreateParentRandomContainer", L"Ctrl+Alt+C"},
    {"ViewProject ExplorerExpandDescendants", L"Ctrl++"},
    {"ViewProject ExplorerCollapseDescendants", L"Ctrl+-"},
    {"ShowBatchRename", L"Ctrl+Shift+R"},
    {"ShowAudioFilesImporter", L"Ctrl+Shift+I"},
}};

bool IsModifier(const std::wstring& word)
{
    return word == L"Ctrl" || word == L"Shift" || word == L"Alt" || word == L"Meta";
}

bool IsKey(const std::wstring& word)
{
    static constexpr std::array<const wchar_t*, 16> named{
        L"Delete", L"Del", L"Insert", L"Home",  L"End",    L"PgUp", L"PgDown", L"Space",
        L"Tab",    L"Esc", L"Enter",  L"Return", L"Backspace", L"Left", L"Right", L"Up"};
    if (word.empty())
        return false;
    if (word.size() == 1)
        return !std::iswspace(word[0]);
    if (word == L"Down")
        return true;
    for (const wchar_t* name : named)
        if (word == name)
            return true;
    // Function keys F1 to F24.
    return word.size() <= 3 && word[0] == L'F' && std::iswdigit(word[1]) && (word.size() == 2 || std::iswdigit(word[2]));
}
} // namespace

KeyBindings::KeyBindings()
{
    for (const DefaultBinding& binding : k_defaults)
        m_keys[binding.command] = binding.key;
}

void KeyBindings::Bind(const ROString& command, std::wstring key)
{
    if (key.empty())
        m_keys.erase(command.c_str());
    else
        m_keys[command.c_str()] = std::move(key);
}

std::wstring KeyBindings::KeyOf(const ROString& command) const
{
    auto it = m_keys.find(command.c_str());
    return it == m_keys.end() ? std::wstring() : it->second;
}

std::wstring KeyBindings::ShortcutColumn(const std::wstring& column, const CommandService* commands) const
{
    if (column.empty())
        return column;
    const ROString command(Utf8::FromWide(column));
    if (std::wstring key = KeyOf(command); !key.empty())
        return key;
    if (commands && commands->HasCommand(command))
        return {};
    return column;
}

bool IsKeyName(const std::wstring& text)
{
    if (text.empty())
        return false;
    // The last "+" joins the key, unless the key is "+" itself ("Ctrl++").
    size_t split = text.rfind(L'+');
    if (split != std::wstring::npos && split + 1 == text.size() && split > 0 && text[split - 1] == L'+')
        --split;
    const std::wstring key = split == std::wstring::npos ? text : text.substr(split + 1);
    if (!IsKey(key) || split == 0)
        return false;
    for (size_t start = 0; split != std::wstring::npos && start < split;)
    {
        const size_t end = text.find(L'+', start);
        if (end == std::wstring::npos || end > split || !IsModifier(text.substr(start, end - start)))
            return false;
        start = end + 1;
    }
    return true;
}
} // namespace sn
