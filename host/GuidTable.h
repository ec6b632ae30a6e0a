#pragma once
// A hash table keyed by GUID, stored flat: one array of entries, linear probing, no per-entry
// allocation. Large projects index every object by GUID, so the few bytes a node-based map
// spends per entry add up to most of an object's own size.
//
// Traits tell how an entry gives its key and how an empty slot looks:
//     static GUID const& Key(Entry const&);
//     static bool IsEmpty(Entry const&);    // a value-initialised Entry must be empty

#include "host/Guid.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

template <typename Entry, typename Traits> class GuidTable
{
public:
    size_t Size() const { return m_size; }
    bool Empty() const { return m_size == 0; }
    // Whether the next insert of a new key makes the table grow.
    bool IsFull() const { return (m_size + 1) * kMaxLoadDen > m_slots.size() * kMaxLoadNum; }

    Entry* Find(GUID const& id) { return const_cast<Entry*>(static_cast<const GuidTable&>(*this).Find(id)); }
    const Entry* Find(GUID const& id) const
    {
        if (m_slots.empty())
            return nullptr;
        for (size_t slot = Home(id);; slot = Next(slot))
        {
            const Entry& entry = m_slots[slot];
            if (Traits::IsEmpty(entry))
                return nullptr;
            if (Traits::Key(entry) == id)
                return &entry;
        }
    }

    // Adds the entry, or replaces the one with the same key: one probe run finds either.
    void Insert(Entry entry)
    {
        if (!m_slots.empty())
            for (size_t slot = Home(Traits::Key(entry));; slot = Next(slot))
            {
                Entry& held = m_slots[slot];
                if (Traits::IsEmpty(held))
                {
                    if (IsFull())
                        break;
                    held = std::move(entry);
                    ++m_size;
                    return;
                }
                if (Traits::Key(held) == Traits::Key(entry))
                {
                    held = std::move(entry);
                    return;
                }
            }
        Rehash(std::max<size_t>(kMinCapacity, m_slots.size() * 2));
        Place(std::move(entry));
        ++m_size;
    }

    bool Erase(GUID const& id)
    {
        Entry* found = Find(id);
        if (!found)
            return false;
        // Backward shift: entries after the hole that may live there move up, so that probing
        // never needs markers for erased entries.
        size_t hole = static_cast<size_t>(found - m_slots.data());
        for (size_t slot = Next(hole); !Traits::IsEmpty(m_slots[slot]); slot = Next(slot))
        {
            const size_t home = Home(Traits::Key(m_slots[slot]));
            if (Distance(home, slot) >= Distance(hole, slot))
            {
                m_slots[hole] = std::move(m_slots[slot]);
                hole = slot;
            }
        }
        m_slots[hole] = Entry{};
        --m_size;
        return true;
    }

    // Drops every entry the predicate selects. Afterwards there is room for at least as many
    // new entries as were kept, so purging whenever the table is full stays cheap overall.
    template <typename Predicate> void EraseIf(Predicate drop)
    {
        size_t kept = 0;
        for (Entry& entry : m_slots)
        {
            if (Traits::IsEmpty(entry))
                continue;
            if (drop(static_cast<const Entry&>(entry)))
                entry = Entry{};
            else
                ++kept;
        }
        m_size = kept;
        size_t capacity = std::max(kMinCapacity, m_slots.size());
        while (2 * kept * kMaxLoadDen > capacity * kMaxLoadNum)
            capacity *= 2;
        Rehash(capacity);
    }

    // Empties the table but keeps its room, for a table about to be filled as much again.
    void Reset()
    {
        std::fill(m_slots.begin(), m_slots.end(), Entry{});
        m_size = 0;
    }

    void Clear()
    {
        std::vector<Entry>().swap(m_slots);
        m_size = 0;
    }

    template <typename Visit> void ForEach(Visit visit) const
    {
        for (const Entry& entry : m_slots)
            if (!Traits::IsEmpty(entry))
                visit(entry);
    }

private:
    static constexpr size_t kMinCapacity = 16;
    // Up to 7/8 full: GUIDs are random, so probe runs stay short even then.
    static constexpr size_t kMaxLoadNum = 7;
    static constexpr size_t kMaxLoadDen = 8;

    size_t Home(GUID const& id) const
    {
        // The top bits of a multiplicative mix, so that every bit of the hash counts.
        const uint64_t mixed = static_cast<uint64_t>(GUIDHash{}(id)) * 0x9E3779B97F4A7C15ull;
        return static_cast<size_t>(mixed >> (64 - std::countr_zero(m_slots.size())));
    }
    size_t Next(size_t slot) const { return (slot + 1) & (m_slots.size() - 1); }
    size_t Distance(size_t from, size_t to) const { return (to - from) & (m_slots.size() - 1); }

    void Place(Entry entry)
    {
        size_t slot = Home(Traits::Key(entry));
        while (!Traits::IsEmpty(m_slots[slot]))
            slot = Next(slot);
        m_slots[slot] = std::move(entry);
    }

    void Rehash(size_t capacity)
    {
        std::vector<Entry> old(capacity);
        old.swap(m_slots);
        for (Entry& entry : old)
            if (!Traits::IsEmpty(entry))
                Place(std::move(entry));
    }

    std::vector<Entry> m_slots; // a power of two long, or empty
    size_t m_size = 0;
};
