#pragma once
// Notifications about project objects, and the request to inspect objects.

#include "host/NotifyMgr.h"
#include "platform/WinTypes.h"

#include <vector>

class IOrbObject;

namespace NotifyHelper
{
enum InspectTab : int
{
    InspectTab_Default = 0,
};
}

namespace OrbObjNotify
{
class OrbObjectNotifyParam : public NotifyData
{
public:
    OrbObjectNotifyParam() = default;
    OrbObjectNotifyParam(ROString e, IOrbObject* o) : NotifyData(e), object(o) {}

    IOrbObject* object = nullptr; // not owned
};

class OrbPlayInPrimaryTransportParam : public OrbObjectNotifyParam
{
public:
    OrbPlayInPrimaryTransportParam(ROString e, IOrbObject* o, bool start) : OrbObjectNotifyParam(e, o), bStart(start) {}

    bool bStart = false;
};

class MultiObjectNotificationParam : public OrbObjectNotifyParam
{
public:
    MultiObjectNotificationParam(ROString e, std::vector<IOrbObject*> list) : objects(std::move(list)) { event = e; }

    std::vector<IOrbObject*> objects;
};

// Asks the host to show objects in its property inspector.
void FireInspectNotification(IOrbObject* object, int first, int second, bool force, NotifyHelper::InspectTab tab,
                             bool pin, bool fromDoubleClick, bool bringToFront, HWND source);
void FireInspectNotification(std::vector<IOrbObject*> const& objects, int first, int second, bool force,
                             NotifyHelper::InspectTab tab, bool pin, bool fromDoubleClick, bool bringToFront,
                             HWND source);
} // namespace OrbObjNotify

// The host's interactive-music channel and its events.
namespace MusicNotify
{
extern const ROString rosInteractiveMusic;
extern const ROString rosTrackTypeChanged;
extern const ROString rosSequenceAdded;
extern const ROString rosSequenceRemoved;
extern const ROString rosSequenceItemAdded;
extern const ROString rosSequenceItemRemoved;
} // namespace MusicNotify
