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

namespace
{
// The first results a query keeps in order: more than a list shows at once.
constexpr size_t kFirstResults = 256;
} // namespace

FindResults FindResults::Run(const NameIndex& index, const FindQuery& query,
                             const std::vector<const ProjectObject*>& scope)
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
    results.Search(kFirstResults);
    return results;
}

void FindResults::Search(size_t limit)
{
    m_count = 0;
    m_first.clear();
    if (!m_index || m_query.IsEmpty())
        return;
    const NameIndex& index = *m_index;
    // The first results by label, in a heap whose top is the last of them.
    auto later = [](const Match& a, const Match& b) { return a.label < b.label; };
    m_first.reserve(limit);
    auto keep = [&](uint32_t slot)
    {
        const NameIndex::Entry& entry = index.At(slot);
        if (!m_query.anyType && !m_query.types.test(entry.type))
            return;
        if (m_scoped && std::none_of(m_ranges.begin(), m_ranges.end(), [&](const auto& r)
                                     { return entry.label >= r.first && entry.label < r.second; }))
            return;
        if (m_query.words.size() > 1)
        {
            const std::string_view name = index.NameOf(entry);
            for (size_t i = 1; i < m_query.words.size(); ++i)
                if (name.find(m_query.words[i]) == std::string_view::npos)
                    return;
        }
        ++m_count;
        if (m_first.size() < limit)
        {
            m_first.push_back({entry.label, entry.object});
            std::push_heap(m_first.begin(), m_first.end(), later);
        }
        else if (entry.label < m_first.front().label)
        {
            std::pop_heap(m_first.begin(), m_first.end(), later);
            m_first.back() = {entry.label, entry.object};
            std::push_heap(m_first.begin(), m_first.end(), later);
        }
    };
    if (!m_query.words.empty())
        index.ForEachContaining(m_query.words.front(), keep);
    else
        for (uint32_t slot = 0; slot < index.SlotCount(); ++slot)
            if (index.At(slot).object)
                keep(slot);
    std::sort_heap(m_first.begin(), m_first.end(), later);
}

ProjectObject* FindResults::At(size_t index)
{
    if (index >= m_count)
        return nullptr;
    if (index >= m_first.size())
        Search(std::max(index + 1, m_first.size() * 2));
    return index < m_first.size() ? m_first[index].object : nullptr;
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
