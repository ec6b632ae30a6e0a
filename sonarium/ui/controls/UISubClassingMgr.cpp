#include "host/UISubClassingMgr.h"

#include "host/Theme.h"
#include "platform/Canvas.h"
#include "platform/TreeViewTypes.h"
#include "platform/Wnd.h"

#include <cmath>
#include <set>

namespace
{
struct State
{
    float scale = 1.0f;
    std::set<HWND> controls;
};

State& Mgr()
{
    static State state;
    return state;
}
} // namespace

int UISubClassingMgr::ScaleToDpi(int value)
{
    return static_cast<int>(std::lround(static_cast<double>(value) * Mgr().scale));
}

float UISubClassingMgr::GetDpiScale()
{
    return Mgr().scale;
}

bool UISubClassingMgr::SetDpiScale(float scale)
{
    if (!std::isfinite(scale) || scale < 0.5f || scale > 8.0f)
        return false;
    Mgr().scale = scale;
    return true;
}

void UISubClassingMgr::SubClassControl(HWND control)
{
    if (!IsWindow(control))
        return;
    // Handles are never reused, so dead ones can only be pruned, never mistaken for new ones.
    std::erase_if(Mgr().controls, [](HWND hwnd) { return !IsWindow(hwnd); });
    Mgr().controls.insert(control);
}

bool UISubClassingMgr::IsSubClassed(HWND control)
{
    return IsWindow(control) && Mgr().controls.count(control) != 0;
}

bool UISubClassingMgr::OnNotify(WPARAM wParam, NMHDR* header, LRESULT* result)
{
    if (!header || header->code != NM_CUSTOMDRAW || !IsSubClassed(header->hwndFrom))
        return false;
    const auto* draw = reinterpret_cast<const NMCUSTOMDRAW*>(header);
    if (draw->dwDrawStage != CDDS_PREPAINT)
        return false;
    if (ICanvas* canvas = HdcToCanvas(draw->hdc))
        canvas->FillRect(draw->rc, sn::theme::Color("Window_Background"));
    if (result)
        *result = CDRF_SKIPDEFAULT;
    return true;
}
