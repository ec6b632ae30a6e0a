#include "sonarium/core/model/ReferenceIndex.h"

#include "host/Utf8.h"
#include "sonarium/core/model/ProjectObject.h"

#include <algorithm>
#include <optional>

namespace sn
{
namespace
{
constexpr wchar_t kSeparator = L';';

// Calls found(piece) for each ";"-separated piece of value.
template <class Found>
void ForEachPiece(const std::wstring& value, Found found)
{
    size_t start = 0;
    while (start <= value.size())
    {
        size_t end = value.find(kSeparator, start);
        if (end == std::wstring::npos)
            end = value.size();
        found(value.substr(start, end - start));
        start = end + 1;
    }
}

std::optional<GUID> GuidOf(const std::wstring& piece)
{
    // A GUID's text is 36 characters, 38 with its braces: anything else is ordinary text.
    if (piece.size() != 36 && piece.size() != 38)
        return std::nullopt;
    return GuidText::FromString(Utf8::FromWide(piece));
}
} // namespace

std::vector<GUID> ReferenceIndex::TargetsOf(const std::wstring& value)
{
    std::vector<GUID> targets;
    bool all = !value.empty();
    ForEachPiece(value,
                 [&](const std::wstring& piece)
                 {
                     if (std::optional<GUID> id = GuidOf(piece))
                         targets.push_back(*id);
                     else
                         all = false;
                 });
    if (!all)
        targets.clear();
    return targets;
}

std::wstring ReferenceIndex::Without(const std::wstring& value, GUID const& target)
{
    std::wstring kept;
    ForEachPiece(value,
                 [&](const std::wstring& piece)
                 {
                     if (GuidOf(piece) == target)
                         return;
                     kept += (kept.empty() ? L"" : std::wstring(1, kSeparator)) + piece;
                 });
    return kept;
}

void ReferenceIndex::AddObject(ProjectObject* object)
{
    for (const auto& [key, value] : object->Properties())
        Add(object, key, value);
}

void ReferenceIndex::RemoveObject(ProjectObject* object)
{
    for (const auto& [key, value] : object->Properties())
        Remove(object, key, value);
}

void ReferenceIndex::ChangeProperty(ProjectObject* object, const std::string& key, const std::wstring& before,
                                    const std::wstring& after)
{
    Remove(object, key, before);
    Add(object, key, after);
}

const std::vector<ReferenceIndex::Referrer>* ReferenceIndex::ReferrersOf(GUID const& target) const
{
    auto found = m_referrers.find(target);
    return found == m_referrers.end() ? nullptr : &found->second;
}

void ReferenceIndex::Add(ProjectObject* object, const std::string& key, const std::wstring& value)
{
    for (GUID const& target : TargetsOf(value))
        m_referrers[target].push_back({object, key});
}

void ReferenceIndex::Remove(ProjectObject* object, const std::string& key, const std::wstring& value)
{
    for (GUID const& target : TargetsOf(value))
    {
        auto found = m_referrers.find(target);
        if (found == m_referrers.end())
            continue;
        std::vector<Referrer>& referrers = found->second;
        // One entry per mention: a value naming the same object twice was added twice.
        auto entry = std::find_if(referrers.begin(), referrers.end(), [&](const Referrer& r)
                                  { return r.object == object && r.key == key; });
        if (entry != referrers.end())
            referrers.erase(entry);
        if (referrers.empty())
            m_referrers.erase(found);
    }
}
} // namespace sn
