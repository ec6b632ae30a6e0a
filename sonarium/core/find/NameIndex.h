#pragma once
// The names of every object of the hierarchy, lower-cased, kept current as objects join, leave,
// move and are renamed, so that a find over millions of objects reads a few flat arrays instead
// of walking the tree.
//
// Layout: the names sit one after another in one arena, each ended by a zero byte, so that a
// substring search runs over the whole arena at once and a hit never spans two names. A record
// per name (in arena order) says which object it belongs to; an entry per object (a slot kept in
// the object) holds its node type and an order label. Labels grow in tree order (preorder, roots
// in category order): a new object takes a label between its neighbours', and when none is left
// the smallest enclosing subtree with room enough is spread out again. A rename appends the new
// name and forgets the old one; the arena is compacted once forgotten names outweigh live ones.

#include "host/PMTreeNode.h"

#include <array>
#include <cstring>
#include <cstdint>
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

    struct Entry
    {
        uint32_t record;  // the record of the current name
        uint16_t length;  // of the name, in bytes
        uint16_t type;    // PMTreeNode::NodeType
        uint64_t label;   // grows in tree order
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

    size_t Size() const { return m_size; }
    // Changes with every change of the index: results taken before are stale.
    uint64_t Generation() const { return m_generation; }
    // What the index holds in memory, reserved space included.
    size_t MemoryBytes() const;

    const Entry& At(uint32_t slot) const { return m_entries[slot]; }
    uint32_t SlotCount() const { return static_cast<uint32_t>(m_entries.size()); }
    std::string_view NameOf(const Entry& entry) const
    {
        return {m_arena.data() + m_records[entry.record].offset, entry.length};
    }
    // Labels of the object's subtree: [first, end).
    std::pair<uint64_t, uint64_t> LabelRange(const ProjectObject* object) const;

    // Calls visit(slot) once for every object whose name contains word (lower-cased, not empty),
    // in arena order.
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
    void Store(uint32_t slot, const ProjectObject* object);
    void Forget(uint32_t record);
    void Compact();
    size_t FindHit(size_t record, size_t offset) const;

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
    std::vector<uint32_t> m_free;
    size_t m_size = 0;
    size_t m_deadBytes = 0;
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
    size_t record = 0;
    for (const void* at = memmem(arena, size, word.data(), word.size()); at;)
    {
        record = FindHit(record, static_cast<size_t>(static_cast<const char*>(at) - arena));
        const Record& hit = m_records[record];
        if (hit.slot != kNoSlot)
            visit(hit.slot);
        if (++record == m_records.size())
            break;
        const size_t next = m_records[record].offset;
        at = memmem(arena + next, size - next, word.data(), word.size());
    }
}
} // namespace sn
