#include "sonarium/core/host/Theme.h"

#include "host/Theme.h"

namespace sn::theme
{
namespace
{
struct State
{
    Scheme scheme = Scheme::Light;
    int loadId = 1;
    std::map<std::string, COLORREF> colors;
};

std::map<std::string, COLORREF> Palette(Scheme scheme)
{
    if (scheme == Scheme::Dark)
        return {{"Explorer_BackgroundColor", RGB(0x2B, 0x2D, 0x30)},
                {"Explorer_NormalText", RGB(0xDD, 0xDF, 0xE2)},
                {"Explorer_SelectionBackground", RGB(0x2F, 0x5D, 0x9E)},
                {"Explorer_SelectionText", RGB(0xFF, 0xFF, 0xFF)},
                {"Explorer_ExcludedText", RGB(0x80, 0x84, 0x8A)},
                {"Explorer_CutText", RGB(0x9A, 0x9D, 0xA2)},
                {"Explorer_InactiveSelectionBackground", RGB(0x40, 0x44, 0x4A)},
                {"Explorer_InactiveSelectionText", RGB(0xDD, 0xDF, 0xE2)},
                {"Window_Background", RGB(0x25, 0x27, 0x2A)},
                {"Window_Text", RGB(0xDD, 0xDF, 0xE2)},
                {"Window_DisabledText", RGB(0x80, 0x84, 0x8A)},
                {"Window_Border", RGB(0x3C, 0x3F, 0x44)},
                {"Control_Background", RGB(0x33, 0x36, 0x3A)},
                {"Tooltip_Background", RGB(0x3C, 0x3F, 0x44)},
                {"Link", RGB(0x6C, 0xA8, 0xF0)},
                {"Pane_FocusAccent", RGB(0x4A, 0x8B, 0xE0)},
                {"Find_MatchBackground", RGB(0x6B, 0x5A, 0x1E)}};
    return {{"Explorer_BackgroundColor", RGB(0xFF, 0xFF, 0xFF)},
            {"Explorer_NormalText", RGB(0x1E, 0x1F, 0x22)},
            {"Explorer_SelectionBackground", RGB(0xC7, 0xDD, 0xF7)},
            {"Explorer_SelectionText", RGB(0x10, 0x10, 0x10)},
            {"Explorer_ExcludedText", RGB(0x9A, 0x9D, 0xA2)},
            {"Explorer_CutText", RGB(0x80, 0x84, 0x8A)},
            {"Explorer_InactiveSelectionBackground", RGB(0xE1, 0xE3, 0xE6)},
            {"Explorer_InactiveSelectionText", RGB(0x1E, 0x1F, 0x22)},
            {"Window_Background", RGB(0xF3, 0xF4, 0xF6)},
            {"Window_Text", RGB(0x1E, 0x1F, 0x22)},
            {"Window_DisabledText", RGB(0x9A, 0x9D, 0xA2)},
            {"Window_Border", RGB(0xC9, 0xCC, 0xD1)},
            {"Control_Background", RGB(0xFF, 0xFF, 0xFF)},
            {"Tooltip_Background", RGB(0xFF, 0xFB, 0xE6)},
            {"Link", RGB(0x1F, 0x5F, 0xBF)},
            {"Pane_FocusAccent", RGB(0x2F, 0x6F, 0xD0)},
            {"Find_MatchBackground", RGB(0xFF, 0xE8, 0x8C)}};
}

State& Theme()
{
    static State state{Scheme::Light, 1, Palette(Scheme::Light)};
    return state;
}
} // namespace

void Load(Scheme scheme)
{
    State& state = Theme();
    state.scheme = scheme;
    state.colors = Palette(scheme);
    ++state.loadId;
}

Scheme Current()
{
    return Theme().scheme;
}

const std::map<std::string, COLORREF>& Colors()
{
    return Theme().colors;
}

COLORREF Color::ToCOLORREF() const
{
    const auto& colors = Theme().colors;
    auto it = colors.find(m_name);
    // An unknown name shows in an unmistakable colour rather than failing.
    return it == colors.end() ? RGB(0xFF, 0x00, 0xFF) : it->second;
}

int GetLoadId()
{
    return Theme().loadId;
}
} // namespace sn::theme
