#include "sonarium/core/audio/Conversion.h"

#include "sonarium/core/model/ModelNotify.h"
#include "sonarium/core/model/NodeRules.h"
#include "sonarium/core/model/ProjectEdit.h"

#include <array>
#include <cwctype>
#include <sstream>

namespace sn::conversion
{
namespace
{
constexpr const char* kOverride = "ConversionOverride";
constexpr const char* kSettings = "Conversion";
constexpr const char* kUse = "ConversionUse";

constexpr std::array<std::pair<Format, const wchar_t*>, 3> kFormats{{
    {Format::PCM, L"PCM"},
    {Format::ADPCM, L"ADPCM"},
    {Format::Vorbis, L"Vorbis"},
}};

std::wstring Lower(std::wstring text)
{
    for (wchar_t& c : text)
        c = static_cast<wchar_t>(std::towlower(static_cast<wint_t>(c)));
    return text;
}
} // namespace

const wchar_t* FormatName(Format format)
{
    for (const auto& [f, name] : kFormats)
        if (f == format)
            return name;
    return L"PCM";
}

std::wstring Text(const Settings& settings)
{
    return std::wstring(FormatName(settings.format)) + L" " +
           (settings.sampleRate ? std::to_wstring(settings.sampleRate) : std::wstring(L"source"));
}

std::optional<Settings> Parse(const std::wstring& text)
{
    std::wistringstream words(text);
    std::wstring format, rate, extra;
    if (!(words >> format >> rate) || (words >> extra))
        return std::nullopt;
    Settings settings;
    bool known = false;
    for (const auto& [f, name] : kFormats)
        if (Lower(format) == Lower(name))
        {
            settings.format = f;
            known = true;
        }
    if (!known)
        return std::nullopt;
    if (rate == L"source")
        return settings;
    // Rates a converter meets in practice, and no more digits than that.
    if (rate.size() > 6 || rate.find_first_not_of(L"0123456789") != std::wstring::npos)
        return std::nullopt;
    settings.sampleRate = static_cast<unsigned>(std::stoul(rate));
    if (settings.sampleRate < 8000 || settings.sampleRate > 192000)
        return std::nullopt;
    return settings;
}

bool HasConversion(const ProjectObject* object)
{
    return object && rules::RuleFor(object->GetNodeType(), object->GetCategory(), object->IsTopWorkUnit())
                         .capabilities.test(PMTreeNode::CanConvert);
}

bool Overrides(const ProjectObject* object)
{
    return HasConversion(object) && object->GetProperty(kOverride) == L"yes";
}

Settings OwnSettings(const ProjectObject* object)
{
    // A value that does not read (edited by hand, say) counts as the defaults.
    return object ? Parse(object->GetProperty(kSettings)).value_or(Settings{}) : Settings{};
}

bool OwnUse(const ProjectObject* object)
{
    return !object || object->GetProperty(kUse) != L"no";
}

Effective EffectiveOf(const ProjectObject* object)
{
    for (const ProjectObject* at = object; at; at = at->Parent())
        if (Overrides(at))
            return {OwnSettings(at), OwnUse(at), at};
    return {};
}

bool SetOverride(ProjectObject* object, bool override)
{
    return HasConversion(object) && ProjectEdit::SetProperty(object, kOverride, override ? L"yes" : L"",
                                                             &notify::evOverrideConversionChanged,
                                                             &notify::chConversion);
}

bool SetSettings(ProjectObject* object, const Settings& settings)
{
    return HasConversion(object) &&
           ProjectEdit::SetProperty(object, kSettings, settings == Settings{} ? std::wstring() : Text(settings),
                                    &notify::evConversionSettingsChanged);
}

bool SetUse(ProjectObject* object, bool converted)
{
    return HasConversion(object) && ProjectEdit::SetProperty(object, kUse, converted ? L"" : L"no",
                                                             &notify::evConversionUsageChanged,
                                                             &notify::chConversion);
}
} // namespace sn::conversion
