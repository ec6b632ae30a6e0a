#pragma once
// What the host is currently set to, read from its global properties.

#include "host/GlobalProp.h"

namespace sn
{
extern const ROString propCurrentPlatform; // "CurrentPlatform": a GUID
extern const ROString propCurrentLanguage; // "CurrentLanguageID": an integer
extern const ROString propLockUIUpdate;    // "LockUIUpdate": a signed integer

GUID CurrentPlatform();
unsigned long CurrentLanguage();
} // namespace sn
