#include "sonarium/ui/dialogs/MessageBoxButtons.h"

#include <algorithm>
#include <array>
#include <cwctype>
#include <utility>

namespace sn::MessageBoxButtons
{
namespace
{
constexpr std::array<std::pair<int, const wchar_t*>, 7> kNames{{
    {IDOK, L"OK"},
    {IDCANCEL, L"Cancel"},
    {IDABORT, L"Abort"},
    {IDRETRY, L"Retry"},
    {IDIGNORE, L"Ignore"},
    {IDYES, L"Yes"},
    {IDNO, L"No"},
}};

bool EqualsNoCase(std::wstring_view a, std::wstring_view b)
{
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(),
                                              [](wchar_t x, wchar_t y) {
                                                  return std::towlower(static_cast<wint_t>(x)) ==
                                                         std::towlower(static_cast<wint_t>(y));
                                              });
}
} // namespace

std::vector<int> Of(UINT style)
{
    switch (style & MB_TYPEMASK)
    {
    case MB_OK:
        return {IDOK};
    case MB_OKCANCEL:
        return {IDOK, IDCANCEL};
    case MB_ABORTRETRYIGNORE:
        return {IDABORT, IDRETRY, IDIGNORE};
    case MB_YESNOCANCEL:
        return {IDYES, IDNO, IDCANCEL};
    case MB_YESNO:
        return {IDYES, IDNO};
    case MB_RETRYCANCEL:
        return {IDRETRY, IDCANCEL};
    default:
        // Unknown button sets show OK alone, as the system's boxes do.
        return {IDOK};
    }
}

bool Offers(UINT style, int button)
{
    const std::vector<int> buttons = Of(style);
    return std::find(buttons.begin(), buttons.end(), button) != buttons.end();
}

int Dismissed(UINT style)
{
    if (Offers(style, IDCANCEL))
        return IDCANCEL;
    if (Offers(style, IDNO))
        return IDNO;
    return Of(style).front();
}

std::wstring Name(int button)
{
    for (const auto& [id, name] : kNames)
        if (id == button)
            return name;
    return L"#" + std::to_wstring(button);
}

int Parse(std::wstring_view name)
{
    for (const auto& [id, text] : kNames)
        if (EqualsNoCase(name, text))
            return id;
    return 0;
}
} // namespace sn::MessageBoxButtons
