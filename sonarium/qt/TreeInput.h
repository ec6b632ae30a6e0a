#pragma once
// Qt input in the host's terms: virtual-key codes, MK_ bits, and the window system's record of
// which modifier keys are held (the explorer asks GetKeyState while handling a gesture).

#include "platform/WinTypes.h"

#include <Qt>

#include <optional>

namespace sn::qt
{
// The virtual key of a Qt key, or nothing for keys the tree does not handle. `*` is the keypad's
// VK_MULTIPLY only when typed on the keypad; elsewhere it is a character like any other.
std::optional<UINT> VirtualKey(int qtKey, Qt::KeyboardModifiers modifiers = {});
// MK_SHIFT, MK_CONTROL and MK_ALT of the modifiers, with the mouse buttons held.
UINT MouseKeys(Qt::KeyboardModifiers modifiers, Qt::MouseButtons buttons = Qt::NoButton);
// Makes the window system's Shift, Ctrl and Alt state match the modifiers.
void SyncModifierKeys(Qt::KeyboardModifiers modifiers);
} // namespace sn::qt
