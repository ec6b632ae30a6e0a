// Script lines about what the project says of its audio: the languages a voice is built for,
// conversion settings and the project's cache of converted files.

#include "sonarium/app/script/ScriptRunner.h"

#include "host/Utf8.h"
#include "sonarium/app/script/ScriptWords.h"
#include "sonarium/app/session/HostRecorder.h"
#include "sonarium/core/audio/Conversion.h"
#include "sonarium/core/audio/VoiceLanguages.h"
#include "sonarium/core/cache/ProjectCache.h"
#include "sonarium/core/host/ProjectBuilder.h"
#include "sonarium/core/model/ProjectEdit.h"

namespace sn
{
namespace
{
Language const* LanguageNamed(Project const& project, std::wstring const& name)
{
    for (Language const& language : project.Languages())
        if (name == language.name.c_str())
            return &language;
    return nullptr;
}

std::optional<bool> YesNo(std::wstring const& word)
{
    if (word == L"yes")
        return true;
    if (word == L"no")
        return false;
    return std::nullopt;
}

std::wstring UseText(bool converted)
{
    return converted ? L"converted" : L"original files";
}
} // namespace

ProjectObject* ScriptRunner::ObjectAt(std::wstring const& path, std::wstring& error)
{
    Project* project = m_session.GetProject();
    ProjectObject* object = project ? FindByPath(*project, path) : nullptr;
    if (!object)
        Fail(error, L"no object at \"" + path + L"\"");
    return object;
}

ProjectObject* ScriptRunner::ObjectAt(std::wstring const& path, bool (*is)(ProjectObject const*), wchar_t const* kind,
                                      std::wstring& error)
{
    ProjectObject* object = ObjectAt(path, error);
    if (object && !is(object))
    {
        Fail(error, L"\"" + path + L"\" is not " + kind);
        return nullptr;
    }
    return object;
}

void ScriptRunner::AddAudioStateCommands()
{
    // "host conversion-override" and "host conversion-use": OBJECT yes|no.
    const auto conversionSwitch = [this](const wchar_t* usage, bool (*set)(ProjectObject*, bool)) -> Handler
    {
        return [this, usage, set](Words const& words, std::wstring& error)
        {
            if (!WordCount(words, 4, 4, usage, error))
                return false;
            ProjectObject* object = ObjectAt(words[2], error);
            const std::optional<bool> yes = YesNo(words[3]);
            if (!object)
                return false;
            if (!yes)
                return Fail(error, L"\"" + words[3] + L"\" is neither yes nor no");
            return set(object, *yes) || Fail(error, L"\"" + words[2] + L"\" has no conversion settings");
        };
    };
    AddSubcommands(
        L"host",
        {
            {L"voice-language",
             [this](Words const& words, std::wstring& error)
             {
                 if (!WordCount(words, 5, 5, L"host voice-language VOICE LANGUAGE include|exclude", error))
                     return false;
                 ProjectObject* voice = ObjectAt(words[2], &voices::IsVoice, L"a voice", error);
                 if (!voice)
                     return false;
                 Language const* language = LanguageNamed(*voice->GetProject(), words[3]);
                 if (!language)
                     return Fail(error, L"the project has no language named \"" + words[3] + L"\"");
                 if (words[4] != L"include" && words[4] != L"exclude")
                     return Fail(error, L"\"" + words[4] + L"\" is neither include nor exclude");
                 return voices::SetIncludedInLanguage(voice, language->id, words[4] == L"include") ||
                        Fail(error, L"the host refused the change");
             }},
            {L"conversion",
             [this](Words const& words, std::wstring& error)
             {
                 if (!WordCount(words, 5, 5, L"host conversion OBJECT PCM|ADPCM|Vorbis RATE|source", error))
                     return false;
                 ProjectObject* object = ObjectAt(words[2], error);
                 if (!object)
                     return false;
                 const std::optional<conversion::Settings> settings = conversion::Parse(words[3] + L" " + words[4]);
                 if (!settings)
                     return Fail(error, L"not conversion settings: \"" + words[3] + L" " + words[4] +
                                            L"\" (PCM, ADPCM or Vorbis, then a rate from 8000 to 192000 or source)");
                 return conversion::SetSettings(object, *settings) ||
                        Fail(error, L"\"" + words[2] + L"\" has no conversion settings");
             }},
            {L"conversion-override", conversionSwitch(L"host conversion-override OBJECT yes|no", conversion::SetOverride)},
            {L"conversion-use", conversionSwitch(L"host conversion-use OBJECT yes|no", conversion::SetUse)},
            {L"source-file",
             [this](Words const& words, std::wstring& error)
             {
                 if (!WordCount(words, 4, 4, L"host source-file SOURCE FILE", error))
                     return false;
                 ProjectObject* source = ObjectAt(words[2], error);
                 if (!source)
                     return false;
                 if (source->GetObjectType() != OrbObjectType_AudioSource)
                     return Fail(error, L"\"" + words[2] + L"\" is not an audio source");
                 // A file named from the script's folder is kept by its full path.
                 const std::filesystem::path file = std::filesystem::absolute(std::filesystem::path(words[3]));
                 return ProjectEdit::SetSourceFile(source, file.wstring()) ||
                        Fail(error, L"the host refused the change");
             }},
            {L"convert",
             [this](Words const& words, std::wstring& error)
             {
                 if (!WordCount(words, 3, 3, L"host convert OBJECT", error))
                     return false;
                 ProjectObject* object = ObjectAt(words[2], error);
                 if (!object)
                     return false;
                 const cache::FillResult result = cache::Fill(object);
                 m_out << L"convert " << ObjectPath(object) << L"\n  converted: " << result.converted
                       << L"\n  originals played: " << result.skipped << L"\n";
                 for (const std::wstring& failure : result.failures)
                     m_out << L"  failed: " << failure << L"\n";
                 return true;
             }},
            {L"clear-cache",
             [this](Words const& words, std::wstring& error)
             {
                 if (!WordCount(words, 2, 2, L"host clear-cache", error))
                     return false;
                 if (!m_session.GetProject())
                     return Fail(error, L"no project is open");
                 cache::Clear(*m_session.GetProject());
                 return true;
             }},
        });
    AddSubcommands(
        L"print",
        {
            {L"languages",
             [this](Words const& words, std::wstring& error)
             {
                 if (!WordCount(words, 3, 3, L"print languages VOICE", error))
                     return false;
                 ProjectObject* voice = ObjectAt(words[2], &voices::IsVoice, L"a voice", error);
                 if (!voice)
                     return false;
                 m_out << L"languages " << ObjectPath(voice) << L"\n";
                 for (Language const& language : voice->GetProject()->Languages())
                     m_out << L"  " << language.name.c_str()
                           << (voices::IsIncludedInLanguage(voice, language.id) ? L": included" : L": excluded")
                           << L"\n";
                 return true;
             }},
            {L"conversion",
             [this](Words const& words, std::wstring& error)
             {
                 if (!WordCount(words, 3, 3, L"print conversion OBJECT", error))
                     return false;
                 ProjectObject* object = ObjectAt(words[2], error);
                 if (!object)
                     return false;
                 if (!conversion::HasConversion(object))
                     return Fail(error, L"\"" + words[2] + L"\" has no conversion settings");
                 const conversion::Effective effective = conversion::EffectiveOf(object);
                 m_out << L"conversion " << ObjectPath(object) << L"\n  override: "
                       << (conversion::Overrides(object) ? L"yes" : L"no") << L"\n  own: "
                       << conversion::Text(conversion::OwnSettings(object)) << L", "
                       << UseText(conversion::OwnUse(object)) << L"\n  applied: "
                       << conversion::Text(effective.settings) << L", " << UseText(effective.converted) << L" ("
                       << (effective.from ? L"from " + ObjectPath(effective.from) : std::wstring(L"project defaults"))
                       << L")\n";
                 return true;
             }},
            {L"cache",
             [this](Words const& words, std::wstring& error)
             {
                 if (!WordCount(words, 2, 2, L"print cache", error))
                     return false;
                 if (!m_session.GetProject())
                     return Fail(error, L"no project is open");
                 m_out << L"cache\n";
                 for (const cache::Entry& entry : cache::Entries(*m_session.GetProject()))
                     m_out << L"  " << (entry.source ? ObjectPath(entry.source) : std::wstring(L"(source gone)"))
                           << L": " << Utf8::ToWide(entry.file.extension().string()) << L" "
                           << entry.format << L"\n";
                 return true;
             }},
        });
}
} // namespace sn
