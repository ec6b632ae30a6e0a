#pragma once
// What the host is currently set to, read from its global properties.

#include "host/GlobalProp.h"

#include <cstdint>

namespace sn
{
extern const ROString propCurrentPlatform; // "CurrentPlatform": a GUID
extern const ROString propCurrentLanguage; // "CurrentLanguageID": an integer
extern const ROString propLockUIUpdate;    // "LockUIUpdate": a signed integer

GUID CurrentPlatform();
unsigned long CurrentLanguage();

// Counts the changes to what rows show that no object's change stamp records: a platform or
// language switch, and an inclusion, which reaches every row below the object. A node that read
// its state at another count reads it again at its next refresh, whatever that refresh's flags:
// the explorer is told only through rows that exist, and may keep fewer flags than were raised
// while a label is edited.
uint32_t ShownStateGeneration();
void ShownStateChanged();
} // namespace sn
