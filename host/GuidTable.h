#pragma once
// A hash table keyed by GUID, stored flat: one array of entries and one of one-byte tags, linear
// probing, no per-entry allocation. Large projects index every object by GUID, so the few bytes a
// node-based map spends per entry add up to most of an object's own size.
//
// Traits tell how an entry gives its key and how an empty slot looks:
//     static GUID const& Key(Entry const&);
//     static bool IsEmpty(Entry const&);    // a value-initialised Entry must be empty
//     static constexpr int kMaxLoadEighths; // optional: how full the table may get, 7 if not given

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
        const uint64_t mixed = Mixed(id);
        const uint8_t tag = TagOf(mixed);
        for (size_t slot = HomeOf(mixed);; slot = Next(slot))
        {
            if (m_tags[slot] == 0)
                return nullptr;
            if (m_tags[slot] == tag && Traits::Key(m_slots[slot]) == id)
                return &m_slots[slot];
        }
    }

    // Adds the entry, or replaces the one with the same key: one probe run finds either.
    void Insert(Entry entry) { Put<true>(entry); }
    // Adds the entry unless one with the same key is there; false then, and the table is unchanged.
    bool InsertNew(Entry entry) { return Put<false>(entry); }

    bool Erase(GUID const& id)
    {
        Entry* found = Find(id);
        if (!found)
            return false;
        // Backward shift: entries after the hole that may live there move up, so that probing
        // never needs markers for erased entries.
        size_t hole = static_cast<size_t>(found - m_slots.data());
        for (size_t slot = Next(hole); m_tags[slot] != 0; slot = Next(slot))
        {
            const size_t home = HomeOf(Mixed(Traits::Key(m_slots[slot])));
            if (Distance(home, slot) >= Distance(hole, slot))
            {
                m_slots[hole] = std::move(m_slots[slot]);
                m_tags[hole] = m_tags[slot];
                hole = slot;
            }
        }
        m_slots[hole] = Entry{};
        m_tags[hole] = 0;
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
        std::fill(m_tags.begin(), m_tags.end(), uint8_t{0});
        m_size = 0;
    }

    void Clear()
    {
        std::vector<Entry>().swap(m_slots);
        std::vector<uint8_t>().swap(m_tags);
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
    // Up to 7/8 full: GUIDs are random, so probe runs stay short even then. Traits may ask for
    // less (kMaxLoadEighths) when comparing a key costs a visit to memory elsewhere.
    static constexpr size_t kMaxLoadNum = []
    {
        if constexpr (requires { Traits::kMaxLoadEighths; })
            return static_cast<size_t>(Traits::kMaxLoadEighths);
        else
            return size_t{7};
    }();
    static constexpr size_t kMaxLoadDen = 8;

    static uint64_t Mixed(GUID const& id) { return static_cast<uint64_t>(GUIDHash{}(id)) * 0x9E3779B97F4A7C15ull; }
    // The top bits of a multiplicative mix, so that every bit of the hash counts.
    size_t HomeOf(uint64_t mixed) const
    {
        return static_cast<size_t>(mixed >> (64 - std::countr_zero(m_slots.size())));
    }
    // Seven more bits of the mix, with the high bit set: 0 marks an empty slot. Probes compare
    // tags, a byte array that stays in cache, and read an entry's key (which may live in another
    // object) about once per lookup.
    static uint8_t TagOf(uint64_t mixed) { return static_cast<uint8_t>((mixed >> 24) | 0x80); }
    size_t Next(size_t slot) const { return (slot + 1) & (m_slots.size() - 1); }
    size_t Distance(size_t from, size_t to) const { return (to - from) & (m_slots.size() - 1); }

    template <bool Replace> bool Put(Entry& entry)
    {
        const uint64_t mixed = Mixed(Traits::Key(entry));
        const uint8_t tag = TagOf(mixed);
        if (!m_slots.empty())
            for (size_t slot = HomeOf(mixed);; slot = Next(slot))
            {
                Entry& held = m_slots[slot];
                if (m_tags[slot] == 0)
                {
                    if (IsFull())
                        break;
                    held = std::move(entry);
                    m_tags[slot] = tag;
                    ++m_size;
                    return true;
                }
                if (m_tags[slot] == tag && Traits::Key(held) == Traits::Key(entry))
                {
                    if (Replace)
                        held = std::move(entry);
                    return Replace;
                }
            }
        Rehash(std::max<size_t>(kMinCapacity, m_slots.size() * 2));
        Place(std::move(entry));
        ++m_size;
        return true;
    }

    void Place(Entry entry)
    {
        const uint64_t mixed = Mixed(Traits::Key(entry));
        size_t slot = HomeOf(mixed);
        while (m_tags[slot] != 0)
            slot = Next(slot);
        m_slots[slot] = std::move(entry);
        m_tags[slot] = TagOf(mixed);
    }

    void Rehash(size_t capacity)
    {
        std::vector<Entry> old(capacity);
        old.swap(m_slots);
        m_tags.assign(capacity, 0);
        for (Entry& entry : old)
            if (!Traits::IsEmpty(entry))
                Place(std::move(entry));
    }

    std::vector<Entry> m_slots; // a power of two long, or empty
    std::vector<uint8_t> m_tags; // one per slot
    size_t m_size = 0;
};
