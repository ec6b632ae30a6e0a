#include "sonarium/app/session/HostRecorder.h"

#include "host/ObjectIcons.h"
#include "host/OrbObjNotify.h"
#include "host/Utf8.h"
#include "sonarium/core/host/ProjectBuilder.h"
#include "sonarium/core/model/ModelNotify.h"
#include "sonarium/core/model/NodeRules.h"
#include "sonarium/core/model/Project.h"

namespace sn
{
namespace
{
// The channels and events the host's panes listen to, as the explorer names them.
const ROString k_eventViewer("EventViewer");
const ROString k_objectsList("ObjectsList");
const ROString k_transport("Transport");
const ROString k_transportPrimaryDisable("TransportPrimaryDisable");
const ROString k_playInPrimaryTransport("PlayInPrimaryTransport");

std::vector<std::wstring> PathsOf(std::vector<IOrbObject*> const& objects)
{
    std::vector<std::wstring> paths;
    for (IOrbObject* object : objects)
        paths.push_back(ObjectPath(object));
    return paths;
}

std::wstring Joined(std::vector<std::wstring> const& parts)
{
    std::wstring text;
    for (auto const& part : parts)
        text += (text.empty() ? L"" : L", ") + part;
    return text.empty() ? L"(nothing)" : text;
}
} // namespace

std::wstring ObjectPath(IOrbObject const* object)
{
    auto const* model = dynamic_cast<ProjectObject const*>(object);
    return model ? PathOf(*model) : L"?";
}

HostRecorder::HostRecorder()
{
    INotifyMgr* notify = INotifyMgr::m_pInstance;
    if (!notify)
        return;
    notify->Register(k_eventViewer, NotifyDelegate(this, &HostRecorder::OnEventViewer));
    notify->Register(k_transport, NotifyDelegate(this, &HostRecorder::OnTransport));
    notify->Register(notify::chObject, NotifyDelegate(this, &HostRecorder::OnObject));
    notify->Register(notify::chInspector, NotifyDelegate(this, &HostRecorder::OnInspector));
    notify->Register(notify::chProject, NotifyDelegate(this, &HostRecorder::OnProject));
}

HostRecorder::~HostRecorder()
{
    INotifyMgr* notify = INotifyMgr::m_pInstance;
    if (!notify)
        return;
    notify->UnRegister(k_eventViewer, NotifyDelegate(this, &HostRecorder::OnEventViewer));
    notify->UnRegister(k_transport, NotifyDelegate(this, &HostRecorder::OnTransport));
    notify->UnRegister(notify::chObject, NotifyDelegate(this, &HostRecorder::OnObject));
    notify->UnRegister(notify::chInspector, NotifyDelegate(this, &HostRecorder::OnInspector));
    notify->UnRegister(notify::chProject, NotifyDelegate(this, &HostRecorder::OnProject));
}

void HostRecorder::SetListener(void (*listener)(void*), void* context)
{
    m_listener = listener;
    m_listenerContext = context;
}

void HostRecorder::Add(std::wstring line)
{
    m_lines.push_back(std::move(line));
    if (m_listener)
        m_listener(m_listenerContext);
}

void HostRecorder::OnEventViewer(CNotifyItemBase* item)
{
    auto* param = item ? dynamic_cast<OrbObjNotify::MultiObjectNotificationParam*>(item->pData) : nullptr;
    if (!param || param->event != k_objectsList)
        return;
    m_eventViewer.assign(param->objects.begin(), param->objects.end());
    Add(L"event viewer: " + Joined(PathsOf(param->objects)));
}

void HostRecorder::OnTransport(CNotifyItemBase* item)
{
    if (!item || !item->pData || item->pData->event != k_transportPrimaryDisable)
        return;
    m_transport = nullptr;
    Add(L"transport: disabled");
}

void HostRecorder::OnObject(CNotifyItemBase* item)
{
    auto* param = item ? dynamic_cast<OrbObjNotify::OrbPlayInPrimaryTransportParam*>(item->pData) : nullptr;
    if (!param || param->event != k_playInPrimaryTransport)
    {
        // A rename or removal changes how what the panes hold reads.
        if (m_listener && (m_transport || !m_eventViewer.empty()))
            m_listener(m_listenerContext);
        return;
    }
    m_transport = param->object;
    Add(L"transport: " + ObjectPath(param->object));
}

namespace
{
bool StillThere(IOrbObject const* object)
{
    auto const* model = dynamic_cast<ProjectObject const*>(object);
    return model && model->IsInProject();
}
} // namespace

std::vector<HostRecorder::Listed> HostRecorder::EventViewer() const
{
    std::vector<Listed> listed;
    for (CSmartPtr<IOrbObject> const& object : m_eventViewer)
        if (StillThere(object))
        {
            auto const* model = dynamic_cast<ProjectObject const*>(object.Get());
            listed.push_back({ObjectPath(object), ObjectIcons::IconTypeOfNode(model->GetNodeType())});
        }
    return listed;
}

std::wstring HostRecorder::TransportObject() const
{
    return StillThere(m_transport) ? ObjectPath(m_transport) : std::wstring();
}

void HostRecorder::OnProject(CNotifyItemBase* item)
{
    if (!item || !item->pData)
        return;
    ROString const& event = item->pData->event;
    if (event != notify::evPreClose && event != notify::evLoaded && event != notify::evCreated)
        return;
    // What the panes showed belongs to the project going away, or to none of the new one.
    m_eventViewer.clear();
    m_transport = nullptr;
    if (m_listener)
        m_listener(m_listenerContext);
}

void HostRecorder::OnInspector(CNotifyItemBase* item)
{
    auto* param = item ? dynamic_cast<notify::InspectParam*>(item->pData) : nullptr;
    if (!param)
        return;
    Add(std::wstring(L"inspector") + (param->fromDoubleClick ? L" (double click)" : L"") + L": " +
        Joined(PathsOf(param->objects)));
}
} // namespace sn
