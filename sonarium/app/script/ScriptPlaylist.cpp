// Script lines about the playlists of music playlist containers: their sequences and items.

#include "sonarium/app/script/ScriptRunner.h"

#include "sonarium/app/script/ScriptWords.h"
#include "sonarium/app/session/HostRecorder.h"
#include "sonarium/core/music/Playlist.h"

namespace sn
{
void ScriptRunner::AddPlaylistCommands()
{
    AddSubcommands(
        L"host",
        {
            {L"playlist-sequence",
             [this](Words const& words, std::wstring& error)
             {
                 if (!WordCount(words, 5, 5, L"host playlist-sequence CONTAINER NAME in-order|random", error))
                     return false;
                 ProjectObject* container =
                     ObjectAt(words[2], &playlist::IsPlaylistContainer, L"a music playlist container", error);
                 if (!container)
                     return false;
                 if (words[4] != L"in-order" && words[4] != L"random")
                     return Fail(error, L"\"" + words[4] + L"\" is neither in-order nor random");
                 return playlist::AddSequence(container, words[3].c_str(),
                                              words[4] == L"random" ? playlist::Mode::Random : playlist::Mode::InOrder) ||
                        Fail(error, L"the host refused the sequence \"" + words[3] + L"\"");
             }},
            {L"playlist-item",
             [this](Words const& words, std::wstring& error)
             {
                 if (!WordCount(words, 4, 4, L"host playlist-item SEQUENCE SEGMENT", error))
                     return false;
                 ProjectObject* sequence = ObjectAt(words[2], error);
                 if (!sequence)
                     return false;
                 if (!playlist::IsSequence(sequence))
                     return Fail(error, L"\"" + words[2] + L"\" is not a sequence of a playlist");
                 ProjectObject* segment = nullptr;
                 for (const CSmartPtr<ProjectObject>& child : sequence->Parent()->Children())
                     if (child->GetObjectType() == OrbObjectType_MusicSegment && words[3] == child->GetName().c_str())
                         segment = child.Get();
                 if (!segment)
                     return Fail(error, L"the container has no segment named \"" + words[3] + L"\"");
                 return playlist::AddItem(sequence, segment) || Fail(error, L"the host refused the item");
             }},
            {L"playlist-remove",
             [this](Words const& words, std::wstring& error)
             {
                 if (!WordCount(words, 3, 3, L"host playlist-remove SEQUENCE|ITEM", error))
                     return false;
                 ProjectObject* object = ObjectAt(words[2], error);
                 return object && (playlist::Remove(object) ||
                                   Fail(error, L"\"" + words[2] + L"\" is neither a sequence nor an item of a playlist"));
             }},
        });
    AddSubcommands(
        L"print",
        {
            {L"playlist",
             [this](Words const& words, std::wstring& error)
             {
                 if (!WordCount(words, 3, 3, L"print playlist CONTAINER", error))
                     return false;
                 ProjectObject* container =
                     ObjectAt(words[2], &playlist::IsPlaylistContainer, L"a music playlist container", error);
                 if (!container)
                     return false;
                 m_out << L"playlist " << ObjectPath(container) << L"\n";
                 for (ProjectObject* sequence : playlist::Sequences(container))
                 {
                     m_out << L"  " << sequence->GetName().c_str() << L" (" << playlist::ModeName(playlist::ModeOf(sequence))
                           << L")\n";
                     for (const CSmartPtr<ProjectObject>& item : sequence->Children())
                         m_out << L"    "
                               << (playlist::SegmentOf(item.Get()) ? std::wstring(item->GetName().c_str())
                                                                   : item->GetName() + L" (segment missing)")
                               << L"\n";
                 }
                 return true;
             }},
        });
}
} // namespace sn
