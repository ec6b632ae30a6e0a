#include "sonarium/core/find/NameIndex.h"

#include "host/Utf8.h"
#include "sonarium/core/model/Project.h"

#include <algorithm>
#include <cwctype>

namespace sn
{
namespace
{
// Labels given to objects appended at the end (or with room enough) are this far apart, so that
// billions of appends fit and an insertion between two of them has room for a few dozen more.
constexpr uint64_t kStep = uint64_t(1) << 32;
// A subtree is spread again only when its objects end up at least this far apart.
constexpr uint64_t kSpreadGap = uint64_t(1) << 16;
constexpr uint64_t kLast = UINT64_MAX;

size_t PositionHash(const ProjectObject* parent)
{
    return (reinterpret_cast<uintptr_t>(parent) >> 4) % 64;
}
} // namespace

NameIndex::NameIndex(Project& project) : m_project(project)
{
    // Every index counts from a number of its own, so that results taken from a project closed
    // since are never taken for current ones of a project that follows it, wherever it lives.
    static uint64_t indexes = 0;
    m_generation = ++indexes << 40;
}

bool NameIndex::IsFound(const ProjectObject* object)
{
    return ProjectObject::IsHierarchyMember(object->GetObjectType());
}

std::string NameIndex::Lower(std::string_view utf8)
{
    std::string lower;
    Lower(utf8, lower);
    return lower;
}

void NameIndex::Lower(std::string_view utf8, std::string& out)
{
    out.assign(utf8);
    bool ascii = true;
    for (char& c : out)
    {
        if (static_cast<unsigned char>(c) >= 0x80)
            ascii = false;
        else if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    }
    if (ascii)
        return;
    std::wstring wide = Utf8::ToWide(utf8);
    for (wchar_t& c : wide)
        c = static_cast<wchar_t>(std::towlower(static_cast<wint_t>(c)));
    out = Utf8::FromWide(wide);
}

template <class T>
void NameIndex::Grow(std::vector<T>& items, size_t more)
{
    // An eighth more at a time rather than double: reserved space counts against the budget.
    if (items.size() + more > items.capacity())
        items.reserve(std::max(items.size() + more, items.capacity() + items.capacity() / 8 + 64));
}

size_t NameIndex::MemoryBytes() const
{
    return m_arena.capacity() + m_records.capacity() * sizeof(Record) + m_letters.capacity() * sizeof(uint32_t) + m_entries.capacity() * sizeof(Entry) +
           m_labels.capacity() * sizeof(uint64_t) + m_free.capacity() * sizeof(uint32_t) + m_lowered.capacity() + sizeof(*this);
}

uint32_t NameIndex::SlotOf(const ProjectObject* object) const
{
    const uint32_t slot = object->NameSlot();
    return slot < m_entries.size() && m_entries[slot].object == object ? slot : kNoSlot;
}

const std::vector<CSmartPtr<ProjectObject>>& NameIndex::ChildrenOf(const ProjectObject* object)
{
    return object->Children();
}

uint32_t NameIndex::LettersOf(std::string_view lowered)
{
    uint32_t bits = 0;
    for (char c : lowered)
        bits |= LetterOf(c);
    return bits;
}

std::vector<const ProjectObject*> NameIndex::Roots() const
{
    std::vector<const ProjectObject*> roots;
    for (const auto& root : m_project.RootList())
        if (Indexed(root.Get()))
            roots.push_back(root.Get());
    return roots;
}

bool NameIndex::Covers(const std::vector<const ProjectObject*>& scope) const
{
    for (const auto& root : m_project.RootList())
        if (Indexed(root.Get()) && std::find(scope.begin(), scope.end(), root.Get()) == scope.end())
            return false;
    return true;
}

uint32_t NameIndex::NewSlot()
{
    if (!m_free.empty())
    {
        const uint32_t slot = m_free.back();
        m_free.pop_back();
        return slot;
    }
    Grow(m_entries, 1);
    Grow(m_labels, 1);
    m_entries.push_back({});
    m_labels.push_back(0);
    return static_cast<uint32_t>(m_entries.size() - 1);
}

size_t NameIndex::RoomOf(uint32_t record) const
{
    const size_t end = record + 1 < m_records.size() ? m_records[record + 1].offset : m_arena.size();
    return end - m_records[record].offset;
}

void NameIndex::Store(uint32_t slot, const ProjectObject* object, uint32_t over)
{
    // Names are limited far below what a half-word holds; a longer one is cut, not lost.
    std::string& name = m_lowered;
    Lower(object->NameUtf8(), name);
    if (name.size() > UINT16_MAX)
        name.resize(UINT16_MAX);
    if (name.find('\0') != std::string::npos)
        name.erase(std::remove(name.begin(), name.end(), '\0'), name.end());
    Entry& entry = m_entries[slot];
    const bool holds = over != kNoSlot && m_records[over].slot == slot;
    const size_t before = holds ? entry.length : 0; // the name there, filler after it
    if (over != kNoSlot && name.size() < RoomOf(over))
    {
        char* at = m_arena.data() + m_records[over].offset;
        std::memcpy(at, name.data(), name.size());
        if (before > name.size())
            std::memset(at + name.size(), kFiller, before - name.size());
        m_records[over].slot = slot;
        m_letters[over] = LettersOf(name);
        m_liveBytes = m_liveBytes - (holds ? before + 1 : 0) + name.size() + 1;
        entry.record = over;
        entry.length = static_cast<uint16_t>(name.size());
        return;
    }
    Grow(m_records, 1);
    Grow(m_letters, 1);
    if (m_arena.size() + name.size() + 1 > m_arena.capacity())
        m_arena.reserve(std::max(m_arena.size() + name.size() + 1, m_arena.capacity() + m_arena.capacity() / 8 + 256));
    m_records.push_back({static_cast<uint32_t>(m_arena.size()), slot});
    m_letters.push_back(LettersOf(name));
    m_arena.append(name);
    m_arena.push_back('\0');
    m_liveBytes += name.size() + 1;
    entry.record = static_cast<uint32_t>(m_records.size() - 1);
    entry.length = static_cast<uint16_t>(name.size());
    if (holds)
        Forget(over, before);
}

void NameIndex::Forget(uint32_t record, size_t length)
{
    // The zero that ends it stays: a hit's record is still the count of zeros before it.
    m_records[record].slot = kNoSlot;
    m_letters[record] = 0;
    std::memset(m_arena.data() + m_records[record].offset, kFiller, length);
    m_liveBytes -= length + 1;
    const size_t dead = m_arena.size() - m_liveBytes;
    if (dead > 4096 && dead > m_liveBytes)
        Compact();
}

void NameIndex::Compact()
{
    std::string arena;
    arena.reserve(m_liveBytes + m_liveBytes / 8);
    std::vector<Record> records;
    records.reserve(m_size + m_size / 8);
    std::vector<uint32_t> letters;
    letters.reserve(m_size + m_size / 8);
    for (size_t at = 0; at < m_records.size(); ++at)
    {
        const Record& record = m_records[at];
        if (record.slot == kNoSlot)
            continue;
        Entry& entry = m_entries[record.slot];
        entry.record = static_cast<uint32_t>(records.size());
        records.push_back({static_cast<uint32_t>(arena.size()), record.slot});
        letters.push_back(m_letters[at]);
        arena.append(m_arena, record.offset, entry.length);
        arena.push_back('\0');
    }
    m_arena.swap(arena);
    m_records.swap(records);
    m_letters.swap(letters);
    m_leftObject = nullptr;
    m_leftRecord = kNoSlot;
}

void NameIndex::Enter(ProjectObject* object)
{
    if (!IsFound(object) || Indexed(object) || (object->Parent() && !Indexed(object->Parent())))
        return;
    const uint32_t slot = NewSlot();
    Entry& entry = m_entries[slot];
    entry = {0, 0, static_cast<uint16_t>(object->GetNodeType()), object};
    object->SetNameSlot(slot);
    // Moved: back into the room its name had.
    const bool moved = object == m_leftObject && m_leftRecord < m_records.size() && m_records[m_leftRecord].slot == kNoSlot;
    Store(slot, object, moved ? m_leftRecord : kNoSlot);
    m_leftObject = nullptr;
    ++m_size;
    ++m_generation;

    const uint64_t before = LabelOf(Previous(object), 0);
    const uint64_t after = LabelOf(NextAfterSubtree(object), kLast);
    if (after > before && after - before >= 2)
        m_labels[slot] = before + std::min((after - before) / 2, kStep);
    else
        Spread(object);
}

void NameIndex::Leave(ProjectObject* object)
{
    const uint32_t slot = SlotOf(object);
    if (slot == kNoSlot)
        return;
    const uint32_t record = m_entries[slot].record;
    const size_t length = m_entries[slot].length;
    m_entries[slot] = {};
    object->SetNameSlot(kNoSlot);
    Grow(m_free, 1);
    m_free.push_back(slot);
    --m_size;
    ++m_generation;
    m_leftObject = object;
    m_leftRecord = record;
    Forget(record, length);
}

void NameIndex::Renamed(ProjectObject* object)
{
    const uint32_t slot = SlotOf(object);
    if (slot == kNoSlot)
        return;
    Store(slot, object, m_entries[slot].record);
    ++m_generation;
}

std::pair<uint64_t, uint64_t> NameIndex::LabelRange(const ProjectObject* object) const
{
    if (!Indexed(object))
        return {0, 0};
    return {LabelOf(object, 0), LabelOf(NextAfterSubtree(object), kLast)};
}

uint64_t NameIndex::LabelOf(const ProjectObject* object, uint64_t none) const
{
    return object ? m_labels[SlotOf(object)] : none;
}

size_t NameIndex::PositionOf(const ProjectObject* object) const
{
    const ProjectObject* parent = object->Parent();
    if (!parent)
    {
        const auto& roots = m_project.RootList();
        for (size_t i = 0; i < roots.size(); ++i)
            if (roots[i].Get() == object)
                return i;
        return roots.size();
    }
    const auto& siblings = parent->Children();
    Position& known = m_positions[PositionHash(parent)];
    if (known.parent == parent)
        for (size_t i : {known.index + 1, known.index})
            if (i < siblings.size() && siblings[i].Get() == object)
                return known.index = i;
    // Objects are mostly added at the end: look from there.
    size_t i = siblings.size();
    while (i > 0 && siblings[i - 1].Get() != object)
        --i;
    if (i == 0)
        return siblings.size();
    known = {parent, i - 1};
    return i - 1;
}

const ProjectObject* NameIndex::Previous(const ProjectObject* object) const
{
    const ProjectObject* parent = object->Parent();
    const size_t at = PositionOf(object);
    auto lastIn = [this](const ProjectObject* from)
    {
        for (bool deeper = true; deeper;)
        {
            deeper = false;
            const auto& children = from->Children();
            for (size_t i = children.size(); i > 0; --i)
                if (Indexed(children[i - 1].Get()))
                {
                    from = children[i - 1].Get();
                    deeper = true;
                    break;
                }
        }
        return from;
    };
    if (!parent)
    {
        const auto& roots = m_project.RootList();
        for (size_t i = at; i > 0; --i)
            if (Indexed(roots[i - 1].Get()))
                return lastIn(roots[i - 1].Get());
        return nullptr;
    }
    const auto& siblings = parent->Children();
    for (size_t i = at; i > 0; --i)
        if (Indexed(siblings[i - 1].Get()))
            return lastIn(siblings[i - 1].Get());
    return parent;
}

const ProjectObject* NameIndex::NextAfterSubtree(const ProjectObject* object) const
{
    // Objects waiting to enter come after those that have (a unit's children enter one by one
    // once all are read): the first one that has not entered ends the search at its level.
    for (const ProjectObject* at = object; at; at = at->Parent())
    {
        const size_t position = PositionOf(at);
        if (!at->Parent())
        {
            const auto& roots = m_project.RootList();
            for (size_t i = position + 1; i < roots.size(); ++i)
                if (Indexed(roots[i].Get()))
                    return roots[i].Get();
            return nullptr;
        }
        const auto& siblings = at->Parent()->Children();
        for (size_t i = position + 1; i < siblings.size(); ++i)
        {
            const ProjectObject* sibling = siblings[i].Get();
            if (Indexed(sibling))
                return sibling;
            if (IsFound(sibling))
                break;
        }
    }
    return nullptr;
}

size_t NameIndex::CountSubtree(const ProjectObject* object) const
{
    size_t count = 1;
    for (const CSmartPtr<ProjectObject>& child : object->Children())
        if (Indexed(child.Get()))
            count += CountSubtree(child.Get());
    return count;
}

void NameIndex::LabelSubtree(const ProjectObject* object, uint64_t& next, uint64_t step)
{
    m_labels[SlotOf(object)] = next;
    next += step;
    for (const CSmartPtr<ProjectObject>& child : object->Children())
        if (Indexed(child.Get()))
            LabelSubtree(child.Get(), next, step);
}

void NameIndex::Spread(const ProjectObject* around)
{
    // The smallest enclosing subtree whose label range leaves room between its objects.
    for (const ProjectObject* top = around->Parent(); top; top = top->Parent())
    {
        const uint64_t first = LabelOf(top, 0);
        const uint64_t end = LabelOf(NextAfterSubtree(top), kLast);
        const size_t count = CountSubtree(top);
        const uint64_t step = (end - first) / (count + 1);
        if (step >= kSpreadGap)
        {
            uint64_t next = first;
            LabelSubtree(top, next, step);
            return;
        }
    }
    // The whole project, over the whole range.
    size_t count = 0;
    for (const auto& root : m_project.RootList())
        if (Indexed(root.Get()))
            count += CountSubtree(root.Get());
    const uint64_t step = std::min<uint64_t>(kLast / (count + 1), kStep);
    uint64_t next = step;
    for (const auto& root : m_project.RootList())
        if (Indexed(root.Get()))
            LabelSubtree(root.Get(), next, step);
}
} // namespace sn
