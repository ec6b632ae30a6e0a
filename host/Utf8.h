#pragma once
// The one place where the host's wide strings meet UTF-8 (file system, JSON, Qt, terminal).

#include <string>
#include <string_view>

namespace Utf8
{
std::string FromWide(std::wstring_view text);
// Malformed sequences become U+FFFD rather than failing: names from disk must still show.
std::wstring ToWide(std::string_view text);
// Whether ToWide would read every byte as part of a character, with nothing replaced.
bool IsValid(std::string_view text);
} // namespace Utf8
