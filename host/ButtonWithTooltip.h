#pragma once
// Controls with a tooltip: the text the desktop shows while the pointer rests on the control,
// enabled or not.

#include "host/StdStr.h"
#include "platform/Button.h"

class CXToolTip
{
public:
    // Attaches the tooltip to the control's window; FALSE when the control has none.
    BOOL Create(CWnd* control);
    // Attached to a window that still exists.
    bool IsCreated() const;
    void SetText(const CStdStr<wchar_t>& text) { m_text = text; }
    const CStdStr<wchar_t>& GetText() const { return m_text; }

private:
    HWND m_control = nullptr;
    CStdStr<wchar_t> m_text;
};

template <class TCtrl> class CtrlWithTooltip : public TCtrl
{
public:
    // Call once the control's window exists.
    BOOL CreateToolTip() { return m_toolTip.Create(this); }
    void SetToolTipText(const CStdStr<wchar_t>& text) { m_toolTip.SetText(text); }
    CStdStr<wchar_t> GetToolTipText() const { return m_toolTip.GetText(); }
    // Whether resting the pointer on the control shows a tooltip.
    bool ShowsToolTip() const { return m_toolTip.IsCreated() && !m_toolTip.GetText().empty(); }

protected:
    CXToolTip m_toolTip;
};

class CButtonWithTooltip : public CtrlWithTooltip<CButton>
{
};
