#pragma once
// The host's object clipboard and object drags, as the views use them.

#include "host/OrbObjectType.h"
#include "platform/Ole.h"

#include <set>
#include <vector>

class IOrbObject;

namespace ClipboardHelpers
{
// Whether the objects on the object clipboard may be pasted onto these targets.
bool CanPasteObjects(std::vector<IOrbObject*>& targets);
} // namespace ClipboardHelpers
