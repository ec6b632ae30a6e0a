#pragma once
// Subscriber lists that stay consistent while they are being called. A subscriber may add
// or remove subscribers, or start a nested call, from inside a call: removed ones leave a
// tombstone so that indices held by running calls stay valid, and the tombstones are
// compacted when the outermost call ends.

#include <algorithm>
#include <cstddef>
#include <optional>
#include <vector>

namespace sn
{
template <typename Delegate> using SubscriberSlots = std::vector<std::optional<Delegate>>;

// Adds the delegate unless it is already subscribed; returns whether it was added.
template <typename Delegate> bool AddSubscriber(SubscriberSlots<Delegate>& slots, Delegate const& subscriber)
{
    if (std::find(slots.begin(), slots.end(), std::optional<Delegate>(subscriber)) != slots.end())
        return false;
    slots.emplace_back(subscriber);
    return true;
}

// Removes the delegate; while a call runs it only leaves a tombstone.
template <typename Delegate>
bool RemoveSubscriber(SubscriberSlots<Delegate>& slots, int depth, Delegate const& subscriber)
{
    auto it = std::find(slots.begin(), slots.end(), std::optional<Delegate>(subscriber));
    if (it == slots.end())
        return false;
    if (depth > 0)
        it->reset();
    else
        slots.erase(it);
    return true;
}

template <typename Delegate> size_t CountSubscribers(SubscriberSlots<Delegate> const& slots)
{
    return static_cast<size_t>(
        std::count_if(slots.begin(), slots.end(), [](auto const& s) { return s.has_value(); }));
}

// Calls every subscriber present when the call starts and still present when its turn comes.
// Subscribers added meanwhile wait for the next call.
template <typename Delegate, typename Arg>
void CallSubscribers(SubscriberSlots<Delegate>& slots, int& depth, Arg&& arg)
{
    struct DepthGuard
    {
        SubscriberSlots<Delegate>& slots;
        int& depth;
        explicit DepthGuard(SubscriberSlots<Delegate>& s, int& d) : slots(s), depth(d) { ++depth; }
        ~DepthGuard()
        {
            if (--depth == 0)
                std::erase_if(slots, [](auto const& s) { return !s.has_value(); });
        }
    } guard(slots, depth);

    const size_t count = slots.size();
    for (size_t i = 0; i < count; ++i)
    {
        if (!slots[i])
            continue;
        // A copy: the subscriber may grow the list and move its slots.
        const Delegate subscriber = *slots[i];
        subscriber(arg);
    }
}
} // namespace sn
