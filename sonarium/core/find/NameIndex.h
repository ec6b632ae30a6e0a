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
// forgotten bytes outweigh live ones. Each record also keeps the letters of its name as bits, so
// that a search reads four bytes of most names rather than the names.

#include "host/PMTreeNode.h"
#include "host/SmartPtr.h"

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
    std::string_view NameOf(const Entry& entry) const { return {m_arena.data() + m_records[entry.record].offset, entry.length}; }
    // Labels of the object's subtree: [first, end).
    std::pair<uint64_t, uint64_t> LabelRange(const ProjectObject* object) const;

    // The letters a name holds, as bits: a name can only hold a word whose bits it has all of,
    // and one that has the bit of a letter holds the letter. Digits share a bit by pairs; blanks,
    // punctuation and the bytes of other letters share the last one.
    static uint32_t LettersOf(std::string_view lowered);
    static uint32_t LetterOf(char c)
    {
        if (IsLetterBit(c))
            return uint32_t(1) << (c - 'a');
        return c >= '0' && c <= '9' ? uint32_t(1) << (26 + (c - '0') / 2) : uint32_t(1) << 31;
    }
    static bool IsLetterBit(char c) { return c >= 'a' && c <= 'z'; }

    // Records are the names in arena order; a record whose name was forgotten has no slot and no
    // letters. Results taken at one generation are kept as records.
    uint32_t RecordCount() const { return static_cast<uint32_t>(m_records.size()); }
    uint32_t SlotOfRecord(uint32_t record) const { return m_records[record].slot; }
    uint32_t LettersAt(uint32_t record) const { return m_letters[record]; }
    // Whether the record's name holds word (lower-cased, not empty, without zero or filler
    // bytes). Given followers, adds to it the letters that come after each place the word is at.
    bool Holds(uint32_t record, std::string_view word, uint32_t* followers = nullptr) const;
    // Brings what a search reads of a record into the cache.
    void Prefetch(uint32_t record, bool letters = true) const
    {
        if (letters)
            __builtin_prefetch(&m_letters[record]);
        __builtin_prefetch(&m_records[record]);
        __builtin_prefetch(m_arena.data() + m_records[record].offset);
    }

    void PrefetchRecord(uint32_t record) const { __builtin_prefetch(&m_records[record]); }
    void PrefetchLabel(uint32_t slot) const { __builtin_prefetch(&m_labels[slot]); }
    // Calls visit(record) for every record whose letters include all of need (not 0), in arena
    // order.
    template <class Visit>
    void ForEachWithLetters(uint32_t need, Visit&& visit) const;
    // Calls visit(slot) for the indexed objects of top's subtree in tree order while it returns
    // true; false when it stopped.
    template <class Visit>
    bool ForEachInTreeOrder(const ProjectObject* top, Visit&& visit) const;
    // The roots that are indexed, in tree order.
    std::vector<const ProjectObject*> Roots() const;
    // Whether every object indexed is inside the subtrees of scope.
    bool Covers(const std::vector<const ProjectObject*>& scope) const;

private:
    struct Record
    {
        uint32_t offset;
        uint32_t slot; // kNoSlot: a forgotten name
    };

    uint32_t SlotOf(const ProjectObject* object) const;
    static const std::vector<CSmartPtr<ProjectObject>>& ChildrenOf(const ProjectObject* object);
    bool Indexed(const ProjectObject* object) const { return SlotOf(object) != kNoSlot; }
    uint32_t NewSlot();
    // Gives the slot the object's current name: over the record `over` when it has room, in a
    // new record at the end otherwise (`over` is then forgotten if it was the slot's).
    void Store(uint32_t slot, const ProjectObject* object, uint32_t over);
    size_t RoomOf(uint32_t record) const;
    void Forget(uint32_t record, size_t length);
    void Compact();
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
    std::vector<uint32_t> m_letters; // by record
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
void NameIndex::ForEachWithLetters(uint32_t need, Visit&& visit) const
{
    const uint32_t* const letters = m_letters.data();
    const size_t count = m_letters.size();
    size_t record = 0;
#if defined(__SSE2__)
    // 16 records at a time: most hold few of a word's letters, and those that do are found by
    // their bits.
    const __m128i with = _mm_set1_epi32(static_cast<int>(need));
    for (; record + 16 <= count; record += 16)
    {
        uint32_t bits = 0;
        for (int part = 0; part < 4; ++part)
        {
            const __m128i held = _mm_and_si128(_mm_loadu_si128(reinterpret_cast<const __m128i*>(letters + record + 4 * part)), with);
            bits |= static_cast<uint32_t>(_mm_movemask_ps(_mm_castsi128_ps(_mm_cmpeq_epi32(held, with)))) << (4 * part);
        }
        for (; bits; bits &= bits - 1)
            visit(static_cast<uint32_t>(record + static_cast<size_t>(std::countr_zero(bits))));
    }
#endif
    for (; record < count; ++record)
        if ((letters[record] & need) == need)
            visit(static_cast<uint32_t>(record));
}

template <class Visit>
bool NameIndex::ForEachInTreeOrder(const ProjectObject* top, Visit&& visit) const
{
    const uint32_t slot = SlotOf(top);
    if (slot == kNoSlot)
        return true;
    if (!visit(slot))
        return false;
    for (const CSmartPtr<ProjectObject>& child : ChildrenOf(top))
        if (!ForEachInTreeOrder(child.Get(), visit))
            return false;
    return true;
}
inline bool NameIndex::Holds(uint32_t record, std::string_view word, uint32_t* followers) const
{
    // The room of a record ends at its zero byte; what follows the name in it is filler, which
    // no word holds, so a hit anywhere in the room is in the name.
    const char* const arena = m_arena.data();
    const size_t first = m_records[record].offset;
    const size_t end = (record + 1 < m_records.size() ? m_records[record + 1].offset : m_arena.size()) - 1;
    if (end - first < word.size())
        return false;
    const size_t lastStart = end - word.size(); // where the last hit could begin
    const size_t last = word.size() - 1;
    // A place where the whole word is; with followers, every place is looked at.
    bool found = false;
    auto whole = [&](size_t at)
    {
        for (size_t i = 1; i < last; ++i)
            if (arena[at + i] != word[i])
                return false;
        found = true;
        if (!followers)
            return true;
        *followers |= LetterOf(arena[at + word.size()]);
        return false;
    };
    size_t at = first;
#if defined(__SSE2__)
    // 16 places at a time, where the first and the last byte of the word are.
    const __m128i front = _mm_set1_epi8(word.front()), back = _mm_set1_epi8(word.back());
    for (; at <= lastStart && at + last + 16 <= m_arena.size(); at += 16)
    {
        const __m128i a = _mm_cmpeq_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(arena + at)), front);
        const __m128i b = _mm_cmpeq_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(arena + at + last)), back);
        uint32_t bits = static_cast<uint32_t>(_mm_movemask_epi8(_mm_and_si128(a, b)));
        if (lastStart - at < 15)
            bits &= (uint32_t(2) << (lastStart - at)) - 1;
        for (; bits; bits &= bits - 1)
            if (whole(at + static_cast<size_t>(std::countr_zero(bits))))
                return true;
    }
#endif
    for (; at <= lastStart; ++at)
        if (arena[at] == word.front() && arena[at + last] == word.back() && whole(at))
            return true;
    return found;
}

} // namespace sn
