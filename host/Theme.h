#pragma once
// The host's theme: named colours and icon bitmaps that follow the loaded theme.

#include "platform/WinTypes.h"

#include <string>

namespace sn::theme
{
// A named theme colour, resolved against the loaded theme each time it is used.
class Color
{
public:
    explicit Color(char const* name) : m_name(name) {}
    COLORREF ToCOLORREF() const;
    operator COLORREF() const { return ToCOLORREF(); }
    std::string const& Name() const { return m_name; }

private:
    std::string m_name;
};

// Changes every time the host loads a theme.
int GetLoadId();

// An icon of the theme: which icon, at what size, and whether drawn disabled.
struct Bitmap
{
    int iconId = 0;
    int size = 15;
    bool disabled = false;
};
} // namespace sn::theme
