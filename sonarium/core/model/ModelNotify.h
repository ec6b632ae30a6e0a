#pragma once
// The channels and events the host raises when its project changes, and the calls that
// raise them (nothing happens while no notification manager runs).

#include "host/OrbObjNotify.h"
#include "host/ROString.h"

#include <string>

namespace sn::notify
{
extern const ROString chObject;    // "SonariumObject"
extern const ROString chProject;   // "Project"
extern const ROString chWorkUnit;  // "WorkUnit"
extern const ROString chClipboard; // "Clipboard"
extern const ROString chInspector; // "Inspector": objects to show in the property inspector
extern const ROString chSourceControl; // "SourceControl"
extern const ROString chHost;          // "Host": what the host's window tells the user
extern const ROString chEditingManager; // "EditingManager": playback and what editing allows
extern const ROString chConversion;     // "Conversion"

extern const ROString evCreated;
extern const ROString evLoaded;
extern const ROString evChildAdded;
extern const ROString evChildRemoved;
extern const ROString evPreDestroy;
extern const ROString evNameChanged;
extern const ROString evInclusionChanged;
extern const ROString evColorChanged;
extern const ROString evSourceFileChanged;
extern const ROString evActiveSourceChanged;
extern const ROString evObjectSubTypeChanged;
extern const ROString evPreClose;
extern const ROString evPostClose;
extern const ROString evDirtyChanged;
extern const ROString evReferenceBeingRemoved;
extern const ROString evInspect;
extern const ROString evSourceControlIconsRefreshAll;
extern const ROString evEditRefused;
extern const ROString evSourceControlAborted;
extern const ROString evPlaybackStarted;
extern const ROString evPlaybackStopped;
extern const ROString evCapabilitiesChanged;
extern const ROString evCacheChanged;
extern const ROString evLanguageInclusionChanged;
extern const ROString evConversionSettingsChanged;
extern const ROString evOverrideConversionChanged;
extern const ROString evConversionUsageChanged;

// What "Inspector"/"Inspect" carries: the objects, and whether a double click (or Enter) asked.
class InspectParam : public OrbObjNotify::MultiObjectNotificationParam
{
public:
    InspectParam(std::vector<IOrbObject*> list, bool fromDoubleClick)
        : MultiObjectNotificationParam(evInspect, std::move(list)), fromDoubleClick(fromDoubleClick)
    {
    }

    bool fromDoubleClick = false;
};

// What "Host"/"EditRefused" carries: why a change was not made, ready to show.
class EditRefusedParam : public NotifyData
{
public:
    explicit EditRefusedParam(std::wstring text) : NotifyData(evEditRefused), message(std::move(text)) {}

    std::wstring message;
};

void Object(ROString const& event, IOrbObject* object);
// An event about one object on any channel.
void About(ROString const& channel, ROString const& event, IOrbObject* object);
// The kinds of change whose notifications an object can hold (IOrbObject::BeginChangeNotification).
enum ChangeKind : int
{
    ChangeName = 2, // "NameChanged"
};
// Holds the object's notifications of a kind of change until the matching release, which
// raises one when any was held. Holds nest.
void HoldChanges(IOrbObject* object, int kind);
void ReleaseChanges(IOrbObject* object, int kind);
void Project(ROString const& event);
void WorkUnit(ROString const& event, IOrbObject* unit);
// On MusicNotify::rosInteractiveMusic.
void Music(ROString const& event, IOrbObject* object);
void SourceControl(ROString const& event);
void EditRefused(std::wstring const& message);
void EditingManager(ROString const& event);
} // namespace sn::notify
