#pragma once

namespace EditingManager
{
// True while the host plays back: only some edits are allowed then.
bool IsInPlayback();
} // namespace EditingManager
