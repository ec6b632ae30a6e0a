#pragma once
// Sounds and their sources: a source is an audio file or a source plug-in, in a language (or in
// none, for sound effects); a sound plays one active source per language.

#include "host/Guid.h"
#include "host/OrbObject.h"
#include "host/SmartPtr.h"

#include <cstdint>

namespace AudioSourcesHelpers
{
// The language of sound effects, which have none.
constexpr unsigned long LanguageIndependent = 0x17705D3E;

// A new source of that source plug-in under sound, in the language, made the sound's active
// source for it; null when the plug-in is not a source plug-in or sound is not a sound.
CSmartPtr<IOrbObject> CreateSourcePlugin(uint32_t classId, IOrbObject* sound, unsigned long language);
} // namespace AudioSourcesHelpers

class IOrbSound : public virtual IOrbObject
{
public:
    // The source the sound plays in a language on a platform: its active source for the language
    // when that one is included on the platform, else its first such source. False and null when
    // it has none.
    virtual bool GetActiveSource(unsigned long language, GUID const& platform, CSmartPtr<IOrbObject>& source) const = 0;

protected:
    ~IOrbSound() override = default;
};
