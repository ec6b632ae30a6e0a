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

unsigned long CurrentLanguage()
{
    return GlobalPropMgr::m_pInstance
               ? static_cast<unsigned long>((*GlobalPropMgr::m_pInstance)[propCurrentLanguage].GetInt())
               : 0;
}
} // namespace sn
