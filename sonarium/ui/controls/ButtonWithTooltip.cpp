#include "host/ButtonWithTooltip.h"

BOOL CXToolTip::Create(CWnd* control)
{
    m_control = control ? control->GetSafeHwnd() : nullptr;
    return m_control ? TRUE : FALSE;
}

bool CXToolTip::IsCreated() const
{
    return m_control && IsWindow(m_control);
}
