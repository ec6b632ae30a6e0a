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
// language switch. A node that read
// its state at another count reads it again at its next refresh, whatever that refresh's flags:
// the explorer is told only through rows that exist, and may keep fewer flags than were raised
// while a label is edited.
uint32_t ShownStateGeneration();
void ShownStateChanged();

class ProjectObject;
// An inclusion reaches every row below its object, which no change stamp of theirs records: the
// object is remembered with the change clock, and a node of it that read its subtree before then
// reads the whole subtree's state again. Past a few thousand objects remembered, the count above
// is advanced instead, and they are forgotten.
void InclusionChanged(const ProjectObject* object);
// The change clock at the object's last inclusion change remembered; 0 for none.
uint32_t InclusionChangedAt(const ProjectObject* object);
} // namespace sn
