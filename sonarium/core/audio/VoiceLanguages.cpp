#include "sonarium/core/audio/VoiceLanguages.h"

#include "sonarium/core/model/ModelNotify.h"
#include "sonarium/core/model/Project.h"
#include "sonarium/core/model/ProjectEdit.h"

#include <algorithm>
#include <cwctype>
#include <sstream>

namespace sn::voices
{
namespace
{
constexpr const char* kKey = "ExcludedLanguages";
} // namespace

bool IsVoice(const ProjectObject* object)
{
    return object && object->GetNodeType() == PMTreeNode::SoundVoice;
}

std::set<unsigned long> ExcludedLanguages(const ProjectObject* voice)
{
    std::set<unsigned long> languages;
    if (!IsVoice(voice))
        return languages;
    // Numbers separated by commas; anything else in the value is not a language and is skipped.
    std::wistringstream items(voice->GetProperty(kKey));
    for (std::wstring item; std::getline(items, item, L',');)
    {
        item.erase(std::remove_if(item.begin(), item.end(), [](wchar_t c) { return std::iswspace(c); }), item.end());
        if (!item.empty() && item.size() < 10 && std::all_of(item.begin(), item.end(), [](wchar_t c) { return std::iswdigit(c); }))
            languages.insert(std::stoul(item));
    }
    return languages;
}

bool IsIncludedInLanguage(const ProjectObject* voice, unsigned long language)
{
    return !IsVoice(voice) || !ExcludedLanguages(voice).count(language);
}

bool SetIncludedInLanguage(ProjectObject* voice, unsigned long language, bool included)
{
    if (!IsVoice(voice) || !voice->GetProject())
        return false;
    const auto& languages = voice->GetProject()->Languages();
    if (std::none_of(languages.begin(), languages.end(), [&](const Language& l) { return l.id == language; }))
        return false;
    std::set<unsigned long> excluded = ExcludedLanguages(voice);
    if (included)
        excluded.erase(language);
    else
        excluded.insert(language);
    std::wstring value;
    for (unsigned long id : excluded)
        value += (value.empty() ? L"" : L",") + std::to_wstring(id);
    return ProjectEdit::SetProperty(voice, kKey, value, &notify::evLanguageInclusionChanged);
}
} // namespace sn::voices
