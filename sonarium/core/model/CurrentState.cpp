#include "sonarium/core/model/CurrentState.h"

#include "sonarium/core/model/ProjectObject.h"

#include <unordered_map>

namespace sn
{
const ROString propCurrentPlatform("CurrentPlatform");
const ROString propCurrentLanguage("CurrentLanguageID");
const ROString propLockUIUpdate("LockUIUpdate");

GUID CurrentPlatform()
{
    return GlobalPropMgr::m_pInstance ? (*GlobalPropMgr::m_pInstance)[propCurrentPlatform].GetGUID() : GUID_NULL;
}

namespace
{
uint32_t g_shownStateGeneration = 1;
// Enough for any user's edits between two refreshes; a bulk change goes past it.
constexpr size_t k_inclusionChangesKept = 4096;

std::unordered_map<const ProjectObject*, uint32_t>& InclusionChanges()
{
    static std::unordered_map<const ProjectObject*, uint32_t> changes;
    return changes;
}
} // namespace

uint32_t ShownStateGeneration()
{
    return g_shownStateGeneration;
}

void ShownStateChanged()
{
    // Zero stays the count no node has read at.
    if (++g_shownStateGeneration == 0)
        g_shownStateGeneration = 1;
}

void InclusionChanged(const ProjectObject* object)
{
    auto& changes = InclusionChanges();
    if (changes.size() >= k_inclusionChangesKept)
    {
        changes.clear();
        ShownStateChanged();
        return;
    }
    changes[object] = ProjectObject::ChangeClock();
}

uint32_t InclusionChangedAt(const ProjectObject* object)
{
    auto& changes = InclusionChanges();
    if (changes.empty())
        return 0;
    const auto found = changes.find(object);
    return found == changes.end() ? 0 : found->second;
}

unsigned long CurrentLanguage()
{
    return GlobalPropMgr::m_pInstance
               ? static_cast<unsigned long>((*GlobalPropMgr::m_pInstance)[propCurrentLanguage].GetInt())
               : 0;
}
} // namespace sn
