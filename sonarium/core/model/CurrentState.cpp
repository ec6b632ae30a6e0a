#include "sonarium/core/model/CurrentState.h"

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
}

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

unsigned long CurrentLanguage()
{
    return GlobalPropMgr::m_pInstance
               ? static_cast<unsigned long>((*GlobalPropMgr::m_pInstance)[propCurrentLanguage].GetInt())
               : 0;
}
} // namespace sn
