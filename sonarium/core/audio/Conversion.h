#pragma once
// How the sounds of an object are converted for the game: the format and sample rate of the
// converted files, and whether they are converted at all or packaged as the original files are.
// Containers and sounds may carry settings of their own ("override"); the others take those of
// the nearest parent that does, and a project's objects start from PCM at the source's rate.
//
// Each setting is kept with its object in its work unit, and each change is one undoable step
// that raises what views follow: new settings raise "SonariumObject"/"ConversionSettingsChanged",
// a change of override "Conversion"/"OverrideConversionChanged", a change of use
// "Conversion"/"ConversionUsageChanged".

#include "sonarium/core/model/ProjectObject.h"

#include <optional>
#include <string>

namespace sn::conversion
{
enum class Format
{
    PCM,
    ADPCM,
    Vorbis,
};

struct Settings
{
    Format format = Format::PCM;
    unsigned sampleRate = 0; // 0: the source's own rate

    bool operator==(const Settings&) const = default;
};

// "PCM 48000", "Vorbis source"; Parse takes what Text gives (the format's case aside).
std::wstring Text(const Settings& settings);
std::optional<Settings> Parse(const std::wstring& text);
const wchar_t* FormatName(Format format);

// Whether the object's kind has conversion settings at all.
bool HasConversion(const ProjectObject* object);
bool Overrides(const ProjectObject* object);
// The object's own settings (used while it overrides).
Settings OwnSettings(const ProjectObject* object);
bool OwnUse(const ProjectObject* object);

struct Effective
{
    Settings settings;
    bool converted = true;
    // The object whose settings apply, or null for the project's defaults.
    const ProjectObject* from = nullptr;
};
Effective EffectiveOf(const ProjectObject* object);

// False for an object without conversion settings or a change refused.
bool SetOverride(ProjectObject* object, bool override);
bool SetSettings(ProjectObject* object, const Settings& settings);
bool SetUse(ProjectObject* object, bool converted);
} // namespace sn::conversion
