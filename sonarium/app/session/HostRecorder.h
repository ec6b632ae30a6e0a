#pragma once
// What the host's own panes receive from the explorer views: the event viewer's list, the
// property inspector's objects and the primary transport. The desktop application shows it;
// scripts print it.

#include "host/NotifyMgr.h"
#include "host/ROString.h"
#include "host/SmartPtr.h"

#include <string>
#include <vector>

#include "host/OrbObject.h"

namespace sn
{
class HostRecorder
{
public:
    HostRecorder();
    ~HostRecorder();
    HostRecorder(HostRecorder const&) = delete;
    HostRecorder& operator=(HostRecorder const&) = delete;

    // One line per notification since the last Clear, e.g. "event viewer: AudioObjects/Default
    // Work Unit/Rain" or "transport: disabled".
    std::vector<std::wstring> const& Lines() const { return m_lines; }
    void Clear() { m_lines.clear(); }
    // A line about something the host did itself, such as its main window refreshing.
    void Note(std::wstring line) { Add(std::move(line)); }

    // What each pane shows now, named as the objects are named now: an object renamed since
    // shows its new path, one that has left the project is gone. Opening or closing a project
    // empties them.
    struct Listed
    {
        std::wstring path;
        int iconType = 0; // an ObjectIcons::IconType
    };
    std::vector<Listed> EventViewer() const;
    // Empty when the transport holds nothing.
    std::wstring TransportObject() const;

    // Called after each change, for the panes that show it.
    void SetListener(void (*listener)(void*), void* context);

private:
    void OnEventViewer(CNotifyItemBase* item);
    void OnTransport(CNotifyItemBase* item);
    void OnObject(CNotifyItemBase* item);
    void OnInspector(CNotifyItemBase* item);
    void OnProject(CNotifyItemBase* item);
    void Add(std::wstring line);

    std::vector<ROString> m_channels;
    std::vector<std::wstring> m_lines;
    std::vector<CSmartPtr<IOrbObject>> m_eventViewer;
    CSmartPtr<IOrbObject> m_transport;
    void (*m_listener)(void*) = nullptr;
    void* m_listenerContext = nullptr;
};

// "Category/Work Unit/.../Name" of a project object: how scripts and recorders name objects.
std::wstring ObjectPath(IOrbObject const* object);
} // namespace sn
