#include "sonarium/qt/TreeInput.h"

#include "platform/WinConstants.h"
#include "platform/WindowSystem.h"

namespace sn::qt
{
std::optional<UINT> VirtualKey(int qtKey, Qt::KeyboardModifiers modifiers)
{
    if ((qtKey >= Qt::Key_A && qtKey <= Qt::Key_Z) || (qtKey >= Qt::Key_0 && qtKey <= Qt::Key_9))
        return static_cast<UINT>(qtKey); // the ASCII capitals and digits, as virtual keys are
    switch (qtKey)
    {
    case Qt::Key_Up:
        return VK_UP;
    case Qt::Key_Down:
        return VK_DOWN;
    case Qt::Key_Left:
        return VK_LEFT;
    case Qt::Key_Right:
        return VK_RIGHT;
    case Qt::Key_Home:
        return VK_HOME;
    case Qt::Key_End:
        return VK_END;
    case Qt::Key_PageUp:
        return VK_PRIOR;
    case Qt::Key_PageDown:
        return VK_NEXT;
    case Qt::Key_Delete:
        return VK_DELETE;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return VK_RETURN;
    case Qt::Key_Escape:
        return VK_ESCAPE;
    case Qt::Key_Space:
        return VK_SPACE;
    case Qt::Key_Plus:
        return VK_ADD;
    case Qt::Key_Minus:
        return VK_SUBTRACT;
    case Qt::Key_Asterisk:
        if (modifiers & Qt::KeypadModifier)
            return VK_MULTIPLY;
        return std::nullopt;
    case Qt::Key_F2:
        return VK_F2;
    case Qt::Key_F5:
        return VK_F5;
    case Qt::Key_F10:
        return VK_F10;
    case Qt::Key_Menu:
        return VK_APPS;
    case Qt::Key_Backspace:
        return VK_BACK;
    case Qt::Key_Tab:
        return VK_TAB;
    case Qt::Key_Insert:
        return VK_INSERT;
    default:
        return std::nullopt;
    }
}

UINT MouseKeys(Qt::KeyboardModifiers modifiers, Qt::MouseButtons buttons)
{
    UINT keys = 0;
    if (modifiers & Qt::ShiftModifier)
        keys |= MK_SHIFT;
    if (modifiers & Qt::ControlModifier)
        keys |= MK_CONTROL;
    if (modifiers & Qt::AltModifier)
        keys |= MK_ALT;
    if (buttons & Qt::LeftButton)
        keys |= MK_LBUTTON;
    if (buttons & Qt::RightButton)
        keys |= MK_RBUTTON;
    return keys;
}

void SyncModifierKeys(Qt::KeyboardModifiers modifiers)
{
    WindowSystem& system = WindowSystem::Get();
    system.SetKeyDown(VK_SHIFT, (modifiers & Qt::ShiftModifier) != 0);
    system.SetKeyDown(VK_CONTROL, (modifiers & Qt::ControlModifier) != 0);
    system.SetKeyDown(VK_MENU, (modifiers & Qt::AltModifier) != 0);
}
} // namespace sn::qt
