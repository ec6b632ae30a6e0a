#pragma once
// The names of every object of the hierarchy, lower-cased, kept current as objects join, leave,
// move and are renamed, so that a find over millions of objects reads a few flat arrays instead
// of walking the tree.
//
// Layout: the names sit one after another in one arena, each ended by a zero byte, so that a
// substring search runs over the whole arena at once, a hit never spans two names, and the
// record of a hit is the count of zero bytes before it (room left after a name and forgotten
// names hold a filler byte that no name is searched for). A record
// per name (in arena order) says which object it belongs to; an entry per object (a slot kept in
// the object) holds its node type and an order label. Labels grow in tree order (preorder, roots
// in category order): a new object takes a label between its neighbours', and when none is left
// the smallest enclosing subtree with room enough is spread out again. A rename writes the new
// name over the old one when it fits and appends it otherwise; the room of a name that leaves is
// taken again when the same object enters right after (a move). The arena is compacted once
// forgotten bytes outweigh live ones.

#include "host/PMTreeNode.h"

#include <array>
#include <bit>
#include <cstring>
#include <cstdint>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif
#include <string>
#include <string_view>
#include <vector>

namespace sn
{
class Project;
class ProjectObject;

class NameIndex
{
public:
    static constexpr uint32_t kNoSlot = UINT32_MAX;
    // Fills the arena where no live name is.
    static constexpr char kFiller = '\x01';

    struct Entry
    {
        uint32_t record;  // the record of the current name
        uint16_t length;  // of the name, in bytes
        uint16_t type;    // PMTreeNode::NodeType
        ProjectObject* object; // null: a free slot
    };

    explicit NameIndex(Project& project);
    NameIndex(const NameIndex&) = delete;
    NameIndex& operator=(const NameIndex&) = delete;

    // The project tells: an object has just entered the hierarchy (its parent and the siblings
    // before it already have), is about to leave it, or has a new name.
    void Enter(ProjectObject* object);
    void Leave(ProjectObject* object);
    void Renamed(ProjectObject* object);

    // Whether objects of the type are found (the members of the hierarchy: what the tree shows).
    static bool IsFound(const ProjectObject* object);
    // Lower-cases a UTF-8 name the way the index does.
    static std::string Lower(std::string_view utf8);
    static void Lower(std::string_view utf8, std::string& out);

    size_t Size() const { return m_size; }
    // Changes with every change of the index: results taken before are stale.
    uint64_t Generation() const { return m_generation; }
    // What the index holds in memory, reserved space included.
    size_t MemoryBytes() const;

    const Entry& At(uint32_t slot) const { return m_entries[slot]; }
    // Grows in tree order. Apart from the entries, so that a search that needs no more than
    // where an object is in the order reads only this.
    uint64_t LabelAt(uint32_t slot) const { return m_labels[slot]; }
    uint32_t SlotCount() const { return static_cast<uint32_t>(m_entries.size()); }
    std::string_view NameOf(const Entry& entry) const { return NameAt(OffsetOf(entry), entry); }
    // Where the entry's name is in the arena, until the index changes.
    uint32_t OffsetOf(const Entry& entry) const { return m_records[entry.record].offset; }
    std::string_view NameAt(uint32_t offset, const Entry& entry) const { return {m_arena.data() + offset, entry.length}; }
    // Brings what a search reads of a slot and its name at offset into the cache.
    void Prefetch(uint32_t slot, uint32_t offset) const
    {
        __builtin_prefetch(&m_labels[slot]);
        __builtin_prefetch(&m_entries[slot]);
        __builtin_prefetch(m_arena.data() + offset);
    }
    // Labels of the object's subtree: [first, end).
    std::pair<uint64_t, uint64_t> LabelRange(const ProjectObject* object) const;

    // Calls visit(slot, offset of its name) once for every object whose name contains word
    // (lower-cased, not empty), in arena order.
    template <class Visit>
    void ForEachContaining(std::string_view word, Visit&& visit) const;

private:
    struct Record
    {
        uint32_t offset;
        uint32_t slot; // kNoSlot: a forgotten name
    };

    uint32_t SlotOf(const ProjectObject* object) const;
    bool Indexed(const ProjectObject* object) const { return SlotOf(object) != kNoSlot; }
    uint32_t NewSlot();
    // Gives the slot the object's current name: over the record `over` when it has room, in a
    // new record at the end otherwise (`over` is then forgotten if it was the slot's).
    void Store(uint32_t slot, const ProjectObject* object, uint32_t over);
    size_t RoomOf(uint32_t record) const;
    void Forget(uint32_t record, size_t length);
    void Compact();
    size_t FindHit(size_t record, size_t offset) const;
#if defined(__SSE2__)
    // Bit i set: the byte at from + i is c.
    static uint64_t Equal64(const char* from, char c)
    {
        const __m128i with = _mm_set1_epi8(c);
        uint64_t bits = 0;
        for (int part = 0; part < 4; ++part)
        {
            const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from + 16 * part));
            bits |= uint64_t(uint32_t(_mm_movemask_epi8(_mm_cmpeq_epi8(bytes, with)))) << (16 * part);
        }
        return bits;
    }
#endif

    // Tree walks over what is indexed.
    size_t PositionOf(const ProjectObject* object) const;
    const ProjectObject* Previous(const ProjectObject* object) const;
    const ProjectObject* NextAfterSubtree(const ProjectObject* object) const;
    uint64_t LabelOf(const ProjectObject* object, uint64_t none) const;
    void Spread(const ProjectObject* around);
    size_t CountSubtree(const ProjectObject* object) const;
    void LabelSubtree(const ProjectObject* object, uint64_t& next, uint64_t step);

    template <class T>
    static void Grow(std::vector<T>& items, size_t more);

    Project& m_project;
    std::string m_arena;
    std::vector<Record> m_records;
    std::vector<Entry> m_entries;
    std::vector<uint64_t> m_labels; // by slot
    std::vector<uint32_t> m_free;
    size_t m_size = 0;
    size_t m_liveBytes = 0; // names and their ends, of live records
    std::string m_lowered;  // the name being stored
    // The record of the object that left last: it enters again at once when it was moved.
    const ProjectObject* m_leftObject = nullptr;
    uint32_t m_leftRecord = kNoSlot;
    uint64_t m_generation;
    // Where the last children entered sit in their parents: objects enter in tree order, so
    // the next one is usually right after.
    struct Position
    {
        const ProjectObject* parent = nullptr;
        size_t index = 0;
    };
    mutable std::array<Position, 64> m_positions{};
};

template <class Visit>
void NameIndex::ForEachContaining(std::string_view word, Visit&& visit) const
{
    const char* const arena = m_arena.data();
    const size_t size = m_arena.size();
    const size_t last = word.size() - 1;
    // A hit counts only inside a live name, which a word without zero or filler bytes can only
    // be in.
    const bool plain = word.find('\0') == std::string_view::npos && word.find(kFiller) == std::string_view::npos;
    auto hit = [&](size_t record, size_t at)
    {
        const Record& r = m_records[record];
        if (r.slot != kNoSlot && (plain || at + word.size() <= r.offset + m_entries[r.slot].length))
            visit(r.slot, r.offset);
    };
    size_t record = 0; // the record holding the byte at `at`
    size_t at = 0;
#if defined(__SSE2__)
    // 64 bytes at a time: where the first and the last byte of the word are where they should
    // be, checked whole; the zero bytes count the records passed.
    bool inHit = false; // the name at `at` has been found already
    for (; at + 64 + last <= size; at += 64)
    {
        const uint64_t ends = Equal64(arena + at, '\0');
        uint64_t candidates = Equal64(arena + at, word.front()) & Equal64(arena + at + last, word.back());
        if (inHit && candidates)
            candidates = ends ? candidates & ~((uint64_t(2) << std::countr_zero(ends)) - 1) : 0;
        inHit = inHit && !ends;
        while (candidates)
        {
            const int bit = std::countr_zero(candidates);
            if (word.size() > 2 && std::memcmp(arena + at + bit + 1, word.data() + 1, word.size() - 2) != 0)
            {
                candidates &= candidates - 1;
                continue;
            }
            hit(record + static_cast<size_t>(std::popcount(ends & ((uint64_t(1) << bit) - 1))), at + bit);
            const uint64_t later = ends >> bit; // the end of this name, if in this block
            if (!later)
            {
                inHit = true;
                break;
            }
            const int end = bit + std::countr_zero(later);
            candidates = end == 63 ? 0 : candidates & ~((uint64_t(2) << end) - 1);
        }
        record += static_cast<size_t>(std::popcount(ends));
    }
    // The rest below, from the name after the one found last.
    if (inHit)
    {
        if (++record >= m_records.size())
            return;
        at = m_records[record].offset;
    }
#endif
    auto search = [&](size_t from) -> const void*
    {
        return word.size() == 1 ? memchr(arena + from, word.front(), size - from)
                                : memmem(arena + from, size - from, word.data(), word.size());
    };
    for (const void* found = at < size ? search(at) : nullptr; found;)
    {
        const size_t offset = static_cast<size_t>(static_cast<const char*>(found) - arena);
        record = FindHit(record, offset);
        hit(record, offset);
        if (++record == m_records.size())
            break;
        found = search(m_records[record].offset);
    }
}
} // namespace sn
