#pragma once
// Splitting a script line into words: blanks separate, double quotes group ("Default Work
// Unit"), a backslash in quotes escapes the next character, "#" starts a comment.

#include <optional>
#include <string>
#include <vector>

namespace sn
{
// Nothing when a quote is not closed.
std::optional<std::vector<std::wstring>> SplitScriptLine(std::wstring const& line);
// MK_ bits from the words "ctrl", "shift" and "alt"; the other words stay in `words`.
unsigned TakeModifiers(std::vector<std::wstring>& words);
} // namespace sn
