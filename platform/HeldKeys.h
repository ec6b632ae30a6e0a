#pragma once
// Keys held down for the length of a gesture: the window system reports them held (GetKeyState)
// while the guard lives, and what was held before comes back after.

#include "platform/WindowSystem.h"

#include <utility>
#include <vector>

class HeldKeys
{
public:
    explicit HeldKeys(std::vector<int> const& keys)
    {
        for (int vk : keys)
        {
            m_saved.emplace_back(vk, WindowSystem::Get().IsKeyDown(vk));
            WindowSystem::Get().SetKeyDown(vk, true);
        }
    }
    HeldKeys(HeldKeys const&) = delete;
    HeldKeys& operator=(HeldKeys const&) = delete;
    ~HeldKeys()
    {
        for (auto it = m_saved.rbegin(); it != m_saved.rend(); ++it)
            WindowSystem::Get().SetKeyDown(it->first, it->second);
    }

    // The virtual keys of the MK_SHIFT, MK_CONTROL and MK_ALT bits.
    static std::vector<int> Modifiers(UINT keys)
    {
        std::vector<int> held;
        if (keys & MK_SHIFT)
            held.push_back(VK_SHIFT);
        if (keys & MK_CONTROL)
            held.push_back(VK_CONTROL);
        if (keys & MK_ALT)
            held.push_back(VK_MENU);
        return held;
    }

private:
    std::vector<std::pair<int, bool>> m_saved;
};
