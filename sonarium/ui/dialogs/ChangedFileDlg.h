#pragma once
// The question a save asks about a file another program changed since the project read it:
// overwrite it, keep it as it is, or keep it and read the work unit again from it.

#include "sonarium/core/storage/ProjectStorage.h"

namespace sn
{
// Asked through the current dialog service; with none, the other program's file is kept.
ExternalChangeAnswer AskAboutChangedFile(const ExternalChange& change);
} // namespace sn
