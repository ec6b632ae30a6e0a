#include "sonarium/app/session/HostRecorder.h"

#include "host/OrbObjNotify.h"
#include "host/Utf8.h"
#include "sonarium/core/model/ModelNotify.h"
#include "sonarium/core/model/NodeRules.h"
#include "sonarium/core/model/Project.h"
#include "sonarium/core/storage/WorkUnitFile.h"

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

// What the inspector shows of an object: its path, and for a work unit whose file failed to load,
// the file (from the project's folder) and what is wrong with it.
std::wstring InspectorLine(IOrbObject* object)
{
    std::wstring text = ObjectPath(object);
    auto const* unit = dynamic_cast<WorkUnitObject const*>(object);
    if (!unit)
        return text;
    const WorkUnitFile file = DescribeWorkUnitFile(*unit);
    if (file.state != WorkUnitFile::Unreadable)
        return text;
    const std::filesystem::path folder = unit->GetProject() ? unit->GetProject()->GetFolder() : std::filesystem::path();
    return text + L" (unreadable: " + Utf8::ToWide(file.path.lexically_proximate(folder).generic_string()) + L": " +
           Utf8::ToWide(file.problem) + L")";
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
    if (!model)
        return L"?";
    std::wstring path;
    for (ProjectObject const* at = model; at; at = at->Parent())
    {
        const std::wstring part = at->Parent() ? std::wstring(at->GetName().c_str())
                                               : Utf8::ToWide(rules::CategoryKey(at->GetCategory()));
        path = path.empty() ? part : part + L"/" + path;
    }
    return path;
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
    m_eventViewer = PathsOf(param->objects);
    Add(L"event viewer: " + Joined(m_eventViewer));
}

void HostRecorder::OnTransport(CNotifyItemBase* item)
{
    if (!item || !item->pData || item->pData->event != k_transportPrimaryDisable)
        return;
    m_transport.clear();
    Add(L"transport: disabled");
}

void HostRecorder::OnObject(CNotifyItemBase* item)
{
    auto* param = item ? dynamic_cast<OrbObjNotify::OrbPlayInPrimaryTransportParam*>(item->pData) : nullptr;
    if (!param || param->event != k_playInPrimaryTransport)
        return;
    m_transport = ObjectPath(param->object);
    Add(L"transport: " + m_transport);
}

void HostRecorder::OnInspector(CNotifyItemBase* item)
{
    auto* param = item ? dynamic_cast<notify::InspectParam*>(item->pData) : nullptr;
    if (!param)
        return;
    m_inspected.clear();
    for (IOrbObject* object : param->objects)
        m_inspected.push_back(InspectorLine(object));
    Add(std::wstring(L"inspector") + (param->fromDoubleClick ? L" (double click)" : L"") + L": " +
        Joined(m_inspected));
}
} // namespace sn
