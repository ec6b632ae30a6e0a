#pragma once
// Holds the views' lock ("LockUIUpdate") around one host operation that announces itself in
// several notifications (a delete, a move, the replay of an undo step of several changes), so
// that every view rebuilds once, when the operation ends. Inside an operation that holds the lock
// already it adds nothing: the views rebuild when that one ends.

#include "host/GlobalProp.h"
#include "sonarium/core/model/CurrentState.h"

#include <optional>

namespace sn
{
class ScopedViewsLock
{
public:
    explicit ScopedViewsLock(bool wanted = true)
    {
        CProp* globals = GlobalPropMgr::m_pInstance;
        if (wanted && globals && globals->Prop(propLockUIUpdate, 3, 1).GetInt() <= 0)
            m_raise.emplace(propLockUIUpdate);
    }
    ScopedViewsLock(const ScopedViewsLock&) = delete;
    ScopedViewsLock& operator=(const ScopedViewsLock&) = delete;

private:
    std::optional<ScopedGlobalPropRaise> m_raise;
};
} // namespace sn
