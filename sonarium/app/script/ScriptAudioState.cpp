// Script lines about what the project says of its audio: the languages a voice is built for,
// conversion settings, music playlists and the project's cache of converted files.

#include "sonarium/app/script/ScriptRunner.h"

#include "host/Utf8.h"
#include "sonarium/app/script/ScriptWords.h"
#include "sonarium/app/session/HostRecorder.h"
#include "sonarium/core/audio/VoiceLanguages.h"
#include "sonarium/core/host/ProjectBuilder.h"

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
} // namespace

ProjectObject* ScriptRunner::ObjectAt(std::wstring const& path, std::wstring& error)
{
    Project* project = m_session.GetProject();
    ProjectObject* object = project ? FindByPath(*project, path) : nullptr;
    if (!object)
        Fail(error, L"no object at \"" + path + L"\"");
    return object;
}

void ScriptRunner::AddAudioStateCommands()
{
    AddSubcommands(
        L"host",
        {
            {L"voice-language",
             [this](Words const& words, std::wstring& error)
             {
                 if (!WordCount(words, 5, 5, L"host voice-language VOICE LANGUAGE include|exclude", error))
                     return false;
                 ProjectObject* voice = ObjectAt(words[2], error);
                 if (!voice)
                     return false;
                 if (!voices::IsVoice(voice))
                     return Fail(error, L"\"" + words[2] + L"\" is not a voice");
                 Language const* language = LanguageNamed(*voice->GetProject(), words[3]);
                 if (!language)
                     return Fail(error, L"the project has no language named \"" + words[3] + L"\"");
                 if (words[4] != L"include" && words[4] != L"exclude")
                     return Fail(error, L"\"" + words[4] + L"\" is neither include nor exclude");
                 return voices::SetIncludedInLanguage(voice, language->id, words[4] == L"include") ||
                        Fail(error, L"the host refused the change");
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
                 ProjectObject* voice = ObjectAt(words[2], error);
                 if (!voice)
                     return false;
                 if (!voices::IsVoice(voice))
                     return Fail(error, L"\"" + words[2] + L"\" is not a voice");
                 m_out << L"languages " << ObjectPath(voice) << L"\n";
                 for (Language const& language : voice->GetProject()->Languages())
                     m_out << L"  " << language.name.c_str()
                           << (voices::IsIncludedInLanguage(voice, language.id) ? L": included" : L": excluded")
                           << L"\n";
                 return true;
             }},
        });
}
} // namespace sn
