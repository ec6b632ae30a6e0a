#include "explorer/commands/CreationGuards.h"

#include "host/GlobalProp.h"
#include "host/Undo.h"
#include "module/ExplorerNames.h"

namespace
{
CProp* LockProperty()
{
    CProp* globals = GlobalPropMgr::m_pInstance;
    return globals ? &globals->Prop(PENames::rosLockUIUpdate, 3, 1) : nullptr;
}
} // namespace

UILockRaise::UILockRaise()
{
    if (CProp* lock = LockProperty())
    {
        *lock = lock->GetInt() + 1;
        m_raised = true;
    }
}

void UILockRaise::Lower()
{
    if (!m_raised)
        return;
    m_raised = false;
    if (CProp* lock = LockProperty())
        *lock = lock->GetInt() - 1;
}

UndoManagerGroup::UndoManagerGroup(bool open, const wchar_t* name) : m_name(name)
{
    if (open && IUndoMgr::m_instance)
    {
        IUndoMgr::m_instance->BeginGroup(false);
        m_open = true;
    }
}

UndoManagerGroup::~UndoManagerGroup()
{
    if (m_open && IUndoMgr::m_instance)
        IUndoMgr::m_instance->EndGroup(m_name.c_str(), false);
}

bool IsCreationAllowedInPlayback(PMTreeNode::NodeType type)
{
    constexpr unsigned long long kAllowed = 0x1104010018ULL; // bits 3, 4, 16, 26, 32, 36
    return type >= 0 && type <= 36 && ((kAllowed >> type) & 1) != 0;
}
