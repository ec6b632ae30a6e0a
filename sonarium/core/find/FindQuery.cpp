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

FindResults FindResults::Run(const NameIndex& index, const FindQuery& query,
                             const std::vector<const ProjectObject*>& scope)
{
    FindResults results;
    results.m_generation = index.Generation();
    if (query.IsEmpty())
        return results;
    std::vector<std::pair<uint64_t, uint64_t>> ranges;
    for (const ProjectObject* top : scope)
        if (auto range = index.LabelRange(top); range.first < range.second)
            ranges.push_back(range);
    const bool scoped = !scope.empty();
    auto keep = [&](uint32_t slot)
    {
        const NameIndex::Entry& entry = index.At(slot);
        if (!query.anyType && !query.types.test(entry.type))
            return;
        if (scoped && std::none_of(ranges.begin(), ranges.end(), [&](const auto& r)
                                   { return entry.label >= r.first && entry.label < r.second; }))
            return;
        if (query.words.size() > 1)
        {
            const std::string_view name = index.NameOf(entry);
            for (size_t i = 1; i < query.words.size(); ++i)
                if (name.find(query.words[i]) == std::string_view::npos)
                    return;
        }
        results.m_matches.push_back({entry.label, entry.object});
    };
    if (!query.words.empty())
        index.ForEachContaining(query.words.front(), keep);
    else
        for (uint32_t slot = 0; slot < index.SlotCount(); ++slot)
            if (index.At(slot).object)
                keep(slot);
    return results;
}

ProjectObject* FindResults::At(size_t index)
{
    if (index >= m_matches.size())
        return nullptr;
    if (index >= m_ordered)
    {
        // Put the next batch in order: twice what was asked so far, so scrolling sorts rarely.
        const size_t upTo = std::min(m_matches.size(), std::max({index + 1, m_ordered * 2, size_t(256)}));
        auto byLabel = [](const Match& a, const Match& b) { return a.label < b.label; };
        const auto first = m_matches.begin() + static_cast<std::ptrdiff_t>(m_ordered);
        const auto middle = m_matches.begin() + static_cast<std::ptrdiff_t>(upTo);
        if (upTo < m_matches.size())
            std::nth_element(first, middle, m_matches.end(), byLabel);
        std::sort(first, middle, byLabel);
        m_ordered = upTo;
    }
    return m_matches[index].object;
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
