#include "sonarium/ui/icons/IconNames.h"

#include <array>
#include <utility>

namespace sn
{
namespace
{
using Entry = std::pair<ObjectIcons::IconType, char const*>;

constexpr std::array k_names = {
    Entry{ObjectIcons::IconType_Project, "Project"},
    Entry{ObjectIcons::IconType_WorkUnit, "WorkUnit"},
    Entry{ObjectIcons::IconType_SequenceContainer, "SequenceContainer"},
    Entry{ObjectIcons::IconType_Folder, "Folder"},
    Entry{ObjectIcons::IconType_ActorMixer, "ActorMixer"},
    Entry{ObjectIcons::IconType_RandomContainer, "RandomContainer"},
    Entry{ObjectIcons::IconType_SwitchContainer, "SwitchContainer"},
    Entry{ObjectIcons::IconType_BlendContainer, "BlendContainer"},
    Entry{ObjectIcons::IconType_SoundVoice, "SoundVoice"},
    Entry{ObjectIcons::IconType_SoundSFX, "SoundSFX"},
    Entry{ObjectIcons::IconType_AudioSource, "AudioSource"},
    Entry{ObjectIcons::IconType_Event, "Event"},
    Entry{ObjectIcons::IconType_EventAction, "EventAction"},
    Entry{ObjectIcons::IconType_Bus, "Bus"},
    Entry{ObjectIcons::IconType_AuxBus, "AuxBus"},
    Entry{ObjectIcons::IconType_SoundBank, "SoundBank"},
    Entry{ObjectIcons::IconType_SwitchGroup, "SwitchGroup"},
    Entry{ObjectIcons::IconType_Switch, "Switch"},
    Entry{ObjectIcons::IconType_StateGroup, "StateGroup"},
    Entry{ObjectIcons::IconType_State, "State"},
    Entry{ObjectIcons::IconType_GameParameter, "GameParameter"},
    Entry{ObjectIcons::IconType_Trigger, "Trigger"},
    Entry{ObjectIcons::IconType_Effect, "Effect"},
    Entry{ObjectIcons::IconType_MixerPlugin, "MixerPlugin"},
    Entry{ObjectIcons::IconType_AudioDevice, "AudioDevice"},
    Entry{ObjectIcons::IconType_SourcePlugin, "SourcePlugin"},
    Entry{ObjectIcons::IconType_MusicSwitchContainer, "MusicSwitchContainer"},
    Entry{ObjectIcons::IconType_MusicPlaylistContainer, "MusicPlaylistContainer"},
    Entry{ObjectIcons::IconType_MusicSegment, "MusicSegment"},
    Entry{ObjectIcons::IconType_MusicTrack, "MusicTrack"},
    Entry{ObjectIcons::IconType_MusicPlaylistItem, "MusicPlaylistItem"},
    Entry{ObjectIcons::IconType_MusicClip, "MusicClip"},
    Entry{ObjectIcons::IconType_AuditionSession, "AuditionSession"},
    Entry{ObjectIcons::IconType_MixingSession, "MixingSession"},
    Entry{ObjectIcons::IconType_ControlSurfaceSession, "ControlSurfaceSession"},
    Entry{ObjectIcons::IconType_Query, "Query"},
    Entry{ObjectIcons::IconType_Platform, "Platform"},
    Entry{ObjectIcons::IconType_PhysicalFolder, "PhysicalFolder"},
    Entry{ObjectIcons::IconType_CategoryRoot, "CategoryRoot"},
    Entry{ObjectIcons::IconType_WorkUnitUnreadable, "WorkUnitUnreadable"},
    Entry{ObjectIcons::IconType_OverlayModified, "OverlayModified"},
    Entry{ObjectIcons::IconType_OverlayAdded, "OverlayAdded"},
    Entry{ObjectIcons::IconType_OverlayUnversioned, "OverlayUnversioned"},
};
static_assert(k_names.size() == ObjectIcons::k_allIconTypes.size(), "every icon type has a name");
} // namespace

char const* IconTypeName(ObjectIcons::IconType type)
{
    for (auto const& [t, name] : k_names)
        if (t == type)
            return name;
    return nullptr;
}

std::optional<ObjectIcons::IconType> IconTypeFromName(std::string_view name)
{
    for (auto const& [t, n] : k_names)
        if (name == n)
            return t;
    return std::nullopt;
}
} // namespace sn
