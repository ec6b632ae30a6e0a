#pragma once
// The explorer's create commands as commands of the host, under the names the explorer gives
// them: the host's keys run them, and the explorer hands its own creations to them. Each creates
// in the explorer pane that has the focus, as that pane's menu or toolbar would.

#include "sonarium/core/services/Services.h"

#include <functional>

class DlgProjectExplorer;

namespace sn
{
void RegisterCreateCommands(Commands& commands, std::function<DlgProjectExplorer*()> focusedView);
} // namespace sn
