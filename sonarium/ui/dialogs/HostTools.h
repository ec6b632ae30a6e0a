#pragma once
// The host's named tools that modules run through the command service (140):
// "ShowBatchRename" over the host's selection, and "ShowAudioFilesImporter" into the one object
// given (a std::vector<IOrbObject*>* as the first argument), or the one selected.

#include "sonarium/core/services/Services.h"

#include <functional>
#include <vector>

namespace sn
{
// selection: the objects the user has selected in the host now.
void RegisterHostTools(Commands& commands, std::function<std::vector<IOrbObject*>()> selection);
} // namespace sn
