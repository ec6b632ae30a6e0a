#include "sonarium/app/script/ScriptWords.h"

#include "platform/WinConstants.h"

#include <algorithm>
#include <utility>

namespace sn
{
std::optional<std::vector<std::wstring>> SplitScriptLine(std::wstring const& line)
{
    std::vector<std::wstring> words;
    std::wstring word;
    bool inWord = false;
    bool quoted = false;
    for (size_t i = 0; i < line.size(); ++i)
    {
        const wchar_t c = line[i];
        if (quoted)
        {
            if (c == L'\\' && i + 1 < line.size())
                word += line[++i];
            else if (c == L'"')
                quoted = false;
            else
                word += c;
            continue;
        }
        if (c == L'#' && !inWord)
            break;
        if (c == L' ' || c == L'\t' || c == L'\r')
        {
            if (inWord)
                words.push_back(std::exchange(word, std::wstring()));
            inWord = false;
            continue;
        }
        inWord = true;
        if (c == L'"')
            quoted = true;
        else
            word += c;
    }
    if (quoted)
        return std::nullopt;
    if (inWord)
        words.push_back(word);
    return words;
}

unsigned TakeModifiers(std::vector<std::wstring>& words)
{
    unsigned keys = 0;
    auto isModifier = [&keys](std::wstring const& word)
    {
        if (word == L"ctrl")
            keys |= MK_CONTROL;
        else if (word == L"shift")
            keys |= MK_SHIFT;
        else if (word == L"alt")
            keys |= MK_ALT;
        else
            return false;
        return true;
    };
    words.erase(std::remove_if(words.begin() + (words.empty() ? 0 : 1), words.end(), isModifier),
                words.end());
    return keys;
}

bool Fail(std::wstring& error, std::wstring text)
{
    error = std::move(text);
    return false;
}

bool WordCount(std::vector<std::wstring> const& words, size_t least, size_t most, wchar_t const* usage,
               std::wstring& error)
{
    if (words.size() < least)
        return Fail(error, L"usage: " + std::wstring(usage));
    if (words.size() > most)
        return Fail(error, L"unexpected word \"" + words[most] + L"\" (usage: " + usage + L")");
    return true;
}
void Indented(std::wostream& out, std::wstring const& title, std::vector<std::wstring> const& lines)
{
    out << title << L"\n";
    for (auto const& line : lines)
        out << L"  " << line << L"\n";
}
} // namespace sn
