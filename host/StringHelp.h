#pragma once

#include "host/StdStr.h"

namespace StringHelp
{
// The user-visible text in the user's language (the text itself when untranslated).
CStdStr<wchar_t> Localize(wchar_t const* text);
CStdStr<wchar_t> IntToString(int value);
CStdStr<wchar_t> UIntToString(unsigned int value);
} // namespace StringHelp
