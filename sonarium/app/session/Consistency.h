#pragma once
// Whether what the session shows still agrees with the project: each explorer pane's rows against
// a fresh reading of the project, the refreshes a view still owes, the UI lock and the undo
// groups. The reliability tools run it after every step; scripts run it with `check`.

#include "sonarium/app/session/AppSession.h"

#include <string>
#include <vector>

namespace sn
{
// One line per disagreement, empty when all agree. `expectedLocks` is how many raises of
// "LockUIUpdate" the caller itself holds: any other raise left up is a fault. While the lock is
// up, a label editor is open or about to reopen, a view may rightly show an older state; its rows
// are not compared then.
std::vector<std::wstring> ConsistencyProblems(AppSession& session, int expectedLocks);
} // namespace sn
