#pragma once
// Splitting a script line into words: blanks separate, double quotes group ("Default Work
// Unit"), a backslash in quotes escapes the next character, "#" starts a comment.

#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace sn
{
// Nothing when a quote is not closed.
std::optional<std::vector<std::wstring>> SplitScriptLine(std::wstring const& line);
// MK_ bits from the words "ctrl", "shift" and "alt"; the other words stay in `words`.
unsigned TakeModifiers(std::vector<std::wstring>& words);

// Sets the error and answers false, so that a command can `return Fail(error, "...")`.
bool Fail(std::wstring& error, std::wstring text);
// True when the line has at least `least` words and no more than `most`; otherwise says which
// word is missing (with the usage) or which word is one too many.
bool WordCount(std::vector<std::wstring> const& words, size_t least, size_t most, wchar_t const* usage,
               std::wstring& error);
// A printout: its title line, then its lines indented by two spaces.
void Indented(std::wostream& out, std::wstring const& title, std::vector<std::wstring> const& lines);
} // namespace sn
