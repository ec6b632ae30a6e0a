#pragma once
// What the buttons of a message box are, by its MB_ style, and their names in scripts and
// transcripts.

#include "platform/WinConstants.h"

#include <string>
#include <string_view>
#include <vector>

namespace sn::MessageBoxButtons
{
constexpr UINT MB_TYPEMASK = 0x0000000F;
constexpr UINT MB_ABORTRETRYIGNORE = 0x00000002;
constexpr UINT MB_RETRYCANCEL = 0x00000005;
constexpr int IDABORT = 3;
constexpr int IDRETRY = 4;
constexpr int IDIGNORE = 5;

// The answers a box of this style can give, in the order its buttons show.
std::vector<int> Of(UINT style);
bool Offers(UINT style, int button);
// The answer of a box closed without choosing: Cancel, else No, else its first button.
int Dismissed(UINT style);
// "OK", "Cancel", "Abort", "Retry", "Ignore", "Yes", "No"; "#n" for anything else.
std::wstring Name(int button);
// The id of a button name, ignoring case, or 0.
int Parse(std::wstring_view name);
} // namespace sn::MessageBoxButtons
