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
} // namespace

FindResults FindResults::Run(const NameIndex& index, const FindQuery& query,
                             const std::vector<const ProjectObject*>& scope, const FindResults* previous)
{
    FindResults results;
    results.m_index = &index;
    results.m_query = query;
    results.m_generation = index.Generation();
    results.m_scoped = !scope.empty();
    auto& ranges = results.m_ranges;
    for (const ProjectObject* top : scope)
        if (auto range = index.LabelRange(top); range.first < range.second)
            ranges.push_back(range);
    // Roots next to each other in the order make one range.
    std::sort(ranges.begin(), ranges.end());
    size_t kept = 0;
    for (size_t i = 0; i < ranges.size(); ++i)
        if (kept > 0 && ranges[i].first <= ranges[kept - 1].second)
            ranges[kept - 1].second = std::max(ranges[kept - 1].second, ranges[i].second);
        else
            ranges[kept++] = ranges[i];
    ranges.resize(kept);
    if (query.IsEmpty())
        return results;

    if (previous && previous->m_index == &index && previous->m_generation == index.Generation() &&
        previous->m_scoped == results.m_scoped && previous->m_ranges == ranges && query.Narrows(previous->m_query))
    {
        // Typing on: only what was found can still be. Found ones may lie far apart: their
        // entries and names are asked for a little ahead.
        const std::vector<Match>& found = previous->m_matches;
        results.m_matches.reserve(found.size());
        constexpr size_t kAhead = 16;
        for (size_t i = 0; i < found.size(); ++i)
        {
            if (i + kAhead < found.size())
                index.Prefetch(found[i + kAhead].slot, found[i + kAhead].offset);
            results.Keep(found[i].slot, found[i].offset, 0, false);
        }
    }
    else if (!query.words.empty())
    {
        // Room for the most there can be: pages never written are never given memory, and
        // growing by copying costs a full search as much again when a short word finds many.
        results.m_matches.reserve(index.Size());
        index.ForEachContaining(query.words.front(),
                                [&](uint32_t slot, uint32_t offset) { results.Keep(slot, offset, 1, true); });
    }
    else
        for (uint32_t slot = 0; slot < index.SlotCount(); ++slot)
            if (const NameIndex::Entry& entry = index.At(slot); entry.object)
                results.Keep(slot, index.OffsetOf(entry), 0, true);
    results.Order(kFirstResults);
    return results;
}

bool FindResults::InScope(uint64_t label) const
{
    return !m_scoped || std::any_of(m_ranges.begin(), m_ranges.end(),
                                    [&](const auto& r) { return label >= r.first && label < r.second; });
}

void FindResults::Keep(uint32_t slot, uint32_t offset, size_t firstWord, bool checkScope)
{
    const uint64_t label = m_index->LabelAt(slot);
    if (checkScope && !InScope(label))
        return;
    if (!m_query.anyType || firstWord < m_query.words.size())
    {
        const NameIndex::Entry& entry = m_index->At(slot);
        if (!m_query.anyType && !m_query.types.test(entry.type))
            return;
        const std::string_view name = m_index->NameAt(offset, entry);
        for (size_t i = firstWord; i < m_query.words.size(); ++i)
            if (name.find(m_query.words[i]) == std::string_view::npos)
                return;
    }
    m_matches.push_back({label, slot, offset});
}

void FindResults::Order(size_t limit)
{
    auto earlier = [](const Match& a, const Match& b) { return a.label < b.label; };
    if (limit * 4 >= m_matches.size())
    {
        m_first = m_matches;
        std::sort(m_first.begin(), m_first.end(), earlier);
        return;
    }
    // The first ones by label, in a heap whose top is the last of them.
    m_first.clear();
    m_first.reserve(limit);
    for (const Match& match : m_matches)
        if (m_first.size() < limit)
        {
            m_first.push_back(match);
            std::push_heap(m_first.begin(), m_first.end(), earlier);
        }
        else if (match.label < m_first.front().label)
        {
            std::pop_heap(m_first.begin(), m_first.end(), earlier);
            m_first.back() = match;
            std::push_heap(m_first.begin(), m_first.end(), earlier);
        }
    std::sort_heap(m_first.begin(), m_first.end(), earlier);
}

ProjectObject* FindResults::At(size_t index)
{
    if (index >= m_matches.size())
        return nullptr;
    if (index >= m_first.size())
        Order(m_matches.size());
    return m_index->At(m_first[index].slot).object;
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
