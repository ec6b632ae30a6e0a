#include "sonarium/core/services/Services.h"

#include "sonarium/core/model/ModelNotify.h"

namespace sn
{
IServiceProvider* g_serviceProviderInstance = nullptr;

ObjectClipboard::~ObjectClipboard()
{
    Release();
}

bool ObjectClipboard::GetObjects(std::vector<IOrbObject*>& objects) const
{
    for (const CSmartPtr<IOrbObject>& object : m_objects)
    {
        object->AddRef();
        objects.push_back(object.Get());
    }
    return !m_objects.empty();
}

void ObjectClipboard::SetObjects(const std::vector<IOrbObject*>& objects, uint32_t flags)
{
    Release();
    for (IOrbObject* object : objects)
        if (object)
            m_objects.emplace_back(object);
    m_flags = flags;
}

void ObjectClipboard::Clear()
{
    Release();
}

void ObjectClipboard::Release()
{
    if (m_objects.empty())
        return;
    // Views clear their cut marks from the objects still held when they hear this.
    if (INotifyMgr::m_pInstance)
    {
        NotifyData data(notify::evReferenceBeingRemoved);
        INotifyMgr::m_pInstance->Notify(notify::chClipboard, data);
    }
    m_objects.clear();
    m_flags = 0;
}

bool Commands::ExecuteCommand(const ROString& id, uintptr_t a, uintptr_t b, uintptr_t c, uintptr_t d, uintptr_t e)
{
    auto it = m_handlers.find(id);
    if (it == m_handlers.end())
        return false;
    m_executed.push_back(id);
    // Copied: a command may unregister itself.
    Handler handler = it->second;
    return handler(a, b, c, d, e);
}

void EditingCapabilities::SetCapabilityEnabled(unsigned capability, bool enabled)
{
    if (enabled ? m_disabled.erase(capability) != 0 : m_disabled.insert(capability).second)
        notify::EditingManager(notify::evCapabilitiesChanged);
}

void EditingCapabilities::SetObjectTypeAllowed(OrbObjectType type, bool allowed)
{
    if (allowed ? m_forbidden.erase(type) != 0 : m_forbidden.insert(type).second)
        notify::EditingManager(notify::evCapabilitiesChanged);
}

IService* ServiceProvider::GetService(unsigned id) const
{
    auto it = m_services.find(id);
    return it == m_services.end() ? nullptr : it->second;
}

void ServiceProvider::SetService(unsigned id, IService* service)
{
    if (service)
        m_services[id] = service;
    else
        m_services.erase(id);
}
} // namespace sn
