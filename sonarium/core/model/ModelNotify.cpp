#include "sonarium/core/model/ModelNotify.h"

#include "sonarium/core/model/CurrentState.h"
#include "sonarium/core/model/ProjectObject.h"

#include <map>

namespace sn::notify
{
const ROString chObject("SonariumObject");
const ROString chProject("Project");
const ROString chWorkUnit("WorkUnit");
const ROString chClipboard("Clipboard");
const ROString chInspector("Inspector");
const ROString chSourceControl("SourceControl");
const ROString chHost("Host");
const ROString chEditingManager("EditingManager");
const ROString chConversion("Conversion");

const ROString evCreated("Created");
const ROString evLoaded("Loaded");
const ROString evChildAdded("ChildAdded");
const ROString evChildRemoved("ChildRemoved");
const ROString evPreDestroy("PreDestroy");
const ROString evNameChanged("NameChanged");
const ROString evInclusionChanged("InclusionChanged");
const ROString evColorChanged("ColorChanged");
const ROString evSourceFileChanged("SourceFileChanged");
const ROString evActiveSourceChanged("ActiveSourceChanged");
const ROString evObjectSubTypeChanged("ObjectSubTypeChanged");
const ROString evPreClose("Pre_Close");
const ROString evPostClose("Post_Close");
const ROString evDirtyChanged("DirtyChanged");
const ROString evReferenceBeingRemoved("ReferenceBeingRemoved");
const ROString evInspect("Inspect");
const ROString evSourceControlIconsRefreshAll("SourceControlIconsRefreshAll");
const ROString evEditRefused("EditRefused");
const ROString evSourceControlAborted("SourceControlAborted");
const ROString evPlaybackStarted("PlaybackStarted");
const ROString evPlaybackStopped("PlaybackStopped");
const ROString evCapabilitiesChanged("CapabilitiesChanged");
const ROString evCacheChanged("CacheChanged");
const ROString evLanguageInclusionChanged("LanguageInclusionChanged");
const ROString evConversionSettingsChanged("ConversionSettingsChanged");
const ROString evOverrideConversionChanged("OverrideConversionChanged");
const ROString evConversionUsageChanged("ConversionUsageChanged");

namespace
{
struct Held
{
    int depth = 0;
    bool pending = false;
};

// Few objects are ever held at once, and never for long.
std::map<std::pair<const IOrbObject*, int>, Held>& HeldChanges()
{
    static std::map<std::pair<const IOrbObject*, int>, Held> held;
    return held;
}

int KindOf(ROString const& event)
{
    return event == evNameChanged ? ChangeName : 0;
}
} // namespace

void HoldChanges(IOrbObject* object, int kind)
{
    if (object)
        ++HeldChanges()[{object, kind}].depth;
}

void ReleaseChanges(IOrbObject* object, int kind)
{
    auto& held = HeldChanges();
    auto it = held.find({object, kind});
    if (it == held.end() || --it->second.depth > 0)
        return;
    const bool pending = it->second.pending;
    held.erase(it);
    if (pending && kind == ChangeName)
        Object(evNameChanged, object);
}

void Object(ROString const& event, IOrbObject* object)
{
    About(chObject, event, object);
}

void About(ROString const& channel, ROString const& event, IOrbObject* object)
{
    // An inclusion reaches every row below the object, which no change stamp of theirs records.
    if (event == evInclusionChanged || event == evLanguageInclusionChanged)
    {
        if (const auto* changed = dynamic_cast<const ProjectObject*>(object))
            InclusionChanged(changed);
        else
            ShownStateChanged();
    }
    if (!INotifyMgr::m_pInstance)
        return;
    if (auto& held = HeldChanges(); !held.empty())
        if (auto it = held.find({object, KindOf(event)}); it != held.end())
        {
            it->second.pending = true;
            return;
        }
    OrbObjNotify::OrbObjectNotifyParam param(event, object);
    INotifyMgr::m_pInstance->Notify(channel, param);
}

void Project(ROString const& event)
{
    if (!INotifyMgr::m_pInstance)
        return;
    NotifyData data(event);
    INotifyMgr::m_pInstance->Notify(chProject, data);
}

void WorkUnit(ROString const& event, IOrbObject* unit)
{
    About(chWorkUnit, event, unit);
}

void Music(ROString const& event, IOrbObject* object)
{
    About(MusicNotify::rosInteractiveMusic, event, object);
}

void SourceControl(ROString const& event)
{
    if (!INotifyMgr::m_pInstance)
        return;
    NotifyData data(event);
    INotifyMgr::m_pInstance->Notify(chSourceControl, data);
}

void EditRefused(std::wstring const& message)
{
    if (!INotifyMgr::m_pInstance)
        return;
    EditRefusedParam data(message);
    INotifyMgr::m_pInstance->Notify(chHost, data);
}

void EditingManager(ROString const& event)
{
    if (!INotifyMgr::m_pInstance)
        return;
    NotifyData data(event);
    INotifyMgr::m_pInstance->Notify(chEditingManager, data);
}
} // namespace sn::notify

namespace MusicNotify
{
const ROString rosInteractiveMusic("InteractiveMusic");
const ROString rosTrackTypeChanged("TrackTypeChanged");
const ROString rosSequenceAdded("SequenceAdded");
const ROString rosSequenceRemoved("SequenceRemoved");
const ROString rosSequenceItemAdded("SequenceItemAdded");
const ROString rosSequenceItemRemoved("SequenceItemRemoved");
} // namespace MusicNotify
