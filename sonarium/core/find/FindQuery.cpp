#include "sonarium/core/find/FindQuery.h"

#include "host/Utf8.h"
#include "sonarium/core/model/NodeRules.h"
#include "sonarium/core/model/ProjectObject.h"

#include <algorithm>
#include <cwctype>

namespace sn
{
namespace
{
constexpr std::wstring_view kTypePrefix = L"type:";

bool IsBlank(wchar_t c)
{
    return c == L' ' || c == L'\t' || c == L'\n' || c == L'\r';
}

std::wstring LowerWide(std::wstring_view text)
{
    std::wstring lower(text);
    for (wchar_t& c : lower)
        c = static_cast<wchar_t>(std::towlower(static_cast<wint_t>(c)));
    return lower;
}

// Whether the kind's display name begins with the words of name: compared without case,
// blanks and hyphens, and ending where a word of the display name ends.
bool KindNameBeginsWith(std::wstring_view display, std::wstring_view name)
{
    auto skipped = [](wchar_t c) { return c == L' ' || c == L'-' || c == L'_'; };
    size_t d = 0;
    for (wchar_t c : name)
    {
        if (skipped(c))
            continue;
        while (d < display.size() && skipped(display[d]))
            ++d;
        if (d == display.size() || std::towlower(static_cast<wint_t>(display[d])) != std::towlower(static_cast<wint_t>(c)))
            return false;
        ++d;
    }
    return d > 0 && (d == display.size() || skipped(display[d]));
}
} // namespace

FindQuery FindQuery::Parse(std::wstring_view text)
{
    FindQuery query;
    for (size_t at = 0; at < text.size();)
    {
        while (at < text.size() && IsBlank(text[at]))
            ++at;
        size_t end = at;
        while (end < text.size() && !IsBlank(text[end]))
            ++end;
        const std::wstring_view word = text.substr(at, end - at);
        at = end;
        if (word.empty())
            continue;
        if (word.size() > kTypePrefix.size() && LowerWide(word.substr(0, kTypePrefix.size())) == kTypePrefix)
        {
            const std::wstring_view name = word.substr(kTypePrefix.size());
            bool known = false;
            for (int type = 1; type < PMTreeNode::NodeTypeCount; ++type)
                if (KindNameBeginsWith(rules::NodeTypeName(static_cast<PMTreeNode::NodeType>(type)), name))
                {
                    query.types.set(static_cast<size_t>(type));
                    known = true;
                }
            query.anyType = false;
            if (!known)
                query.problem = L"no kind of object is named \"" + std::wstring(name) + L"\"";
            continue;
        }
        query.words.push_back(NameIndex::Lower(Utf8::FromWide(word)));
        query.typing = end == text.size() ? query.words.back() : std::string();
    }
    // The longest word is the rarest: the index is searched for it, the others checked after.
    std::stable_sort(query.words.begin(), query.words.end(),
                     [](const std::string& a, const std::string& b) { return a.size() > b.size(); });
    return query;
}

bool FindQuery::Narrows(const FindQuery& wider) const
{
    // An empty query finds nothing, not everything.
    if (wider.IsEmpty())
        return false;
    if (!wider.anyType && (anyType || (types & ~wider.types).any()))
        return false;
    return std::all_of(wider.words.begin(), wider.words.end(),
                       [&](const std::string& old)
                       {
                           return std::any_of(words.begin(), words.end(), [&](const std::string& word)
                                              { return word.find(old) != std::string::npos; });
                       });
}

namespace
{
// The first results a query puts in order: more than a list shows at once.
constexpr size_t kFirstResults = 256;
// They are found by walking the tree when at least one object in this many is a result, and the
// walk is given up after visiting this many objects (the results may all lie at the end).
constexpr size_t kWalkDensity = 16;
constexpr size_t kWalkBudget = 8192;
// How far ahead of a result what it reads is asked for.
constexpr size_t kAhead = 32;
} // namespace

inline bool FindResults::InScope(uint32_t record) const
{
    if (!m_scoped)
        return true;
    const uint64_t label = m_index->LabelAt(m_index->SlotOfRecord(record));
    return std::any_of(m_ranges.begin(), m_ranges.end(), [&](const auto& r) { return label >= r.first && label < r.second; });
}

inline bool FindResults::Matches(uint32_t record, uint32_t* followers) const
{
    const NameIndex& index = *m_index;
    if (m_need && (index.LettersAt(record) & m_need) != m_need)
        return false;
    if (!m_query.anyType || !m_plain)
    {
        const uint32_t slot = index.SlotOfRecord(record);
        if (slot == NameIndex::kNoSlot)
            return false;
        const NameIndex::Entry& entry = index.At(slot);
        if (!m_query.anyType && !m_query.types.test(entry.type))
            return false;
        if (!m_plain)
        {
            const std::string_view name = index.NameOf(entry);
            return std::all_of(m_query.words.begin(), m_query.words.end(),
                               [&](const std::string& word) { return name.find(word) != std::string_view::npos; });
        }
    }
    for (size_t i = 0; i < m_checked.size(); ++i)
        if (!index.Holds(record, m_checked[i], i == m_typingAt ? followers : nullptr))
            return false;
    return true;
}

FindResults FindResults::Run(const NameIndex& index, const FindQuery& query,
                             const std::vector<const ProjectObject*>& scope, FindResults* previous)
{
    FindResults results;
    results.m_index = &index;
    results.m_query = query;
    results.m_generation = index.Generation();
    results.m_scoped = !scope.empty() && !index.Covers(scope);
    // The subtrees of the scope in tree order; one inside another is walked with it, and
    // subtrees next to each other in the order make one range.
    std::vector<std::pair<std::pair<uint64_t, uint64_t>, const ProjectObject*>> tops;
    for (const ProjectObject* top : scope.empty() ? index.Roots() : scope)
        if (auto range = index.LabelRange(top); range.first < range.second)
            tops.emplace_back(range, top);
    std::sort(tops.begin(), tops.end());
    auto& ranges = results.m_ranges;
    for (const auto& [range, top] : tops)
    {
        if (ranges.empty() || range.first >= ranges.back().second)
            results.m_tops.push_back(top);
        if (!ranges.empty() && range.first <= ranges.back().second)
            ranges.back().second = std::max(ranges.back().second, range.second);
        else
            ranges.push_back(range);
    }
    for (const std::string& word : query.words)
    {
        results.m_letters |= NameIndex::LettersOf(word);
        results.m_need = results.m_letters;
        if (word.find('\0') != std::string::npos || word.find(NameIndex::kFiller) != std::string::npos)
            results.m_plain = false;
        if (word.size() > 1 || !NameIndex::IsLetterBit(word.front()))
            results.m_checked.push_back(word);
    }
    if (query.IsEmpty())
        return results;

    // The memory of the results before is taken again: a short word finds many, and fresh
    // pages cost as much as the search.
    std::vector<uint32_t>& matches = results.m_matches;
    std::vector<uint32_t>& followers = results.m_followers;
    const bool narrows = previous && previous->m_index == &index && previous->m_generation == index.Generation() &&
                         previous->m_scoped == results.m_scoped && previous->m_ranges == ranges &&
                         query.Narrows(previous->m_query);
    // The word being typed, as it grows by a byte: only a name where what came after the word
    // the key before holds the byte can hold it now.
    uint32_t after = 0;
    if (narrows && previous->m_followed && query.typing.size() == previous->m_query.typing.size() + 1 &&
        query.typing.starts_with(previous->m_query.typing))
        after = NameIndex::LettersOf(query.typing.substr(query.typing.size() - 1));
    results.m_typingAt = static_cast<size_t>(std::find(results.m_checked.begin(), results.m_checked.end(), query.typing) -
                                             results.m_checked.begin());
    results.m_followed = results.m_plain && !query.typing.empty() && results.m_typingAt < results.m_checked.size();
    uint32_t* const follow = results.m_followed ? &results.m_scratch : nullptr;
    const uint32_t previousLetters = previous ? previous->m_letters : 0;
    if (previous)
    {
        matches = std::move(previous->m_matches);
        followers = std::move(previous->m_followers);
        *previous = {};
    }
    if (narrows)
    {
        // Typing on: only what was found can still be, and first what the letters after the word
        // allow, which reads no name.
        if (after)
        {
            size_t kept = 0;
            for (size_t i = 0; i < matches.size(); ++i)
                if (followers[i] & after)
                    matches[kept++] = matches[i];
            matches.resize(kept);
        }
        followers.resize(follow ? matches.size() : 0);
        // Their letters are read only for letters neither found before nor in a word read.
        uint32_t read = previousLetters;
        for (const std::string& word : results.m_checked)
            read |= NameIndex::LettersOf(word);
        results.m_need = results.m_letters & ~read;
        // Found ones may lie far apart: what the check reads of them is asked for ahead.
        size_t kept = 0;
        for (size_t i = 0; i < matches.size(); ++i)
        {
            if (i + kAhead < matches.size())
                index.Prefetch(matches[i + kAhead], results.m_need != 0);
            results.m_scratch = 0;
            if (results.Matches(matches[i], follow))
            {
                matches[kept] = matches[i];
                if (follow)
                    followers[kept] = results.m_scratch;
                ++kept;
            }
        }
        matches.resize(kept);
        followers.resize(follow ? kept : 0);
        results.m_need = results.m_letters;
    }
    else
    {
        // Room for the most there can be: pages never written are never given memory, and
        // growing by copying costs a full search as much again.
        matches.clear();
        matches.reserve(index.Size());
        followers.clear();
        if (follow)
            followers.reserve(index.Size());
        index.ForEachWithLetters(results.m_letters,
                                 [&](uint32_t record)
                                 {
                                     results.m_scratch = 0;
                                     if (!results.Matches(record, follow) || !results.InScope(record))
                                         return;
                                     matches.push_back(record);
                                     if (follow)
                                         followers.push_back(results.m_scratch);
                                 });
    }
    results.Order(kFirstResults);
    return results;
}

void FindResults::Order(size_t limit)
{
    m_first.clear();
    if (limit < m_matches.size() && m_matches.size() * kWalkDensity >= m_index->Size() && OrderByWalking(limit))
        return;
    OrderByLabels(limit);
}

bool FindResults::OrderByWalking(size_t limit)
{
    size_t visited = 0;
    for (const ProjectObject* top : m_tops)
    {
        const bool walked = m_index->ForEachInTreeOrder(top,
                                                        [&](uint32_t slot)
                                                        {
                                                            if (Matches(m_index->At(slot).record, nullptr))
                                                                m_first.push_back(slot);
                                                            return m_first.size() < limit && ++visited < kWalkBudget;
                                                        });
        if (!walked)
            break;
    }
    if (m_first.size() == limit)
        return true;
    m_first.clear();
    return false;
}

void FindResults::OrderByLabels(size_t limit)
{
    struct Placed
    {
        uint64_t label;
        uint32_t slot;
    };
    auto earlier = [](const Placed& a, const Placed& b) { return a.label < b.label; };
    auto placed = [&](uint32_t record)
    {
        const uint32_t slot = m_index->SlotOfRecord(record);
        return Placed{m_index->LabelAt(slot), slot};
    };
    // The labels of results far apart are asked for ahead, in two steps: the record, then the
    // label of its slot.
    auto ahead = [&](size_t i)
    {
        if (i + 2 * kAhead < m_matches.size())
            m_index->PrefetchRecord(m_matches[i + 2 * kAhead]);
        if (i + kAhead < m_matches.size())
            m_index->PrefetchLabel(m_index->SlotOfRecord(m_matches[i + kAhead]));
        return m_matches[i];
    };
    std::vector<Placed> first;
    if (limit * 4 >= m_matches.size())
    {
        first.reserve(m_matches.size());
        for (size_t i = 0; i < m_matches.size(); ++i)
            first.push_back(placed(ahead(i)));
        std::sort(first.begin(), first.end(), earlier);
    }
    else
    {
        // The first ones by label, in a heap whose top is the last of them.
        first.reserve(limit);
        for (size_t i = 0; i < m_matches.size(); ++i)
            if (const Placed match = placed(ahead(i)); first.size() < limit)
            {
                first.push_back(match);
                std::push_heap(first.begin(), first.end(), earlier);
            }
            else if (match.label < first.front().label)
            {
                std::pop_heap(first.begin(), first.end(), earlier);
                first.back() = match;
                std::push_heap(first.begin(), first.end(), earlier);
            }
        std::sort_heap(first.begin(), first.end(), earlier);
    }
    m_first.clear();
    m_first.reserve(first.size());
    for (const Placed& match : first)
        m_first.push_back(match.slot);
}

ProjectObject* FindResults::At(size_t index)
{
    if (index >= m_matches.size())
        return nullptr;
    if (index >= m_first.size())
        OrderByLabels(m_matches.size());
    return m_index->At(m_first[index]).object;
}

std::vector<std::pair<size_t, size_t>> MatchedParts(std::wstring_view name, const FindQuery& query)
{
    const std::wstring lower = LowerWide(name);
    std::vector<std::pair<size_t, size_t>> parts;
    for (const std::string& word : query.words)
    {
        const std::wstring wide = Utf8::ToWide(word);
        for (size_t at = lower.find(wide); at != std::wstring::npos && !wide.empty(); at = lower.find(wide, at + 1))
            parts.emplace_back(at, at + wide.size());
    }
    std::sort(parts.begin(), parts.end());
    std::vector<std::pair<size_t, size_t>> merged;
    for (const auto& part : parts)
        if (!merged.empty() && part.first <= merged.back().second)
            merged.back().second = std::max(merged.back().second, part.second);
        else
            merged.push_back(part);
    return merged;
}
} // namespace sn
