#pragma once
// The services the host offers by number, and the provider that hands them out.

#include "host/ServiceProvider.h"
#include "host/SmartPtr.h"
#include "host/OrbObject.h"

#include <functional>
#include <map>
#include <set>
#include <vector>

namespace sn
{
// 117: holds references to the objects cut or copied, with a flags word. Whenever objects
// leave it, "Clipboard"/"ReferenceBeingRemoved" is raised while they are still held.
class ObjectClipboard : public IObjectClipboardService
{
public:
    ~ObjectClipboard() override;
    bool GetObjects(std::vector<IOrbObject*>& objects) const override;
    uint32_t GetFlags() const override { return m_flags; }
    void SetObjects(const std::vector<IOrbObject*>& objects, uint32_t flags) override;
    void Clear() override;
    size_t Count() const { return m_objects.size(); }

private:
    void Release();

    std::vector<CSmartPtr<IOrbObject>> m_objects;
    uint32_t m_flags = 0;
};

// 119: blocks loading and unloading of work units while set (during a save, say).
class WorkUnitGate : public IWorkUnitGateService
{
public:
    bool IsBlocked() const override { return m_blocked; }
    void SetBlocked(bool blocked) { m_blocked = blocked; }

private:
    bool m_blocked = false;
};

// 133: whether the main window takes input (false while a modal dialog runs).
class MainWindowState : public IMainWindowService
{
public:
    bool IsEnabled() const override { return m_enabled; }
    void SetEnabled(bool enabled) { m_enabled = enabled; }

private:
    bool m_enabled = true;
};

// 140: commands registered by name; executing one records the call.
class Commands : public CommandService
{
public:
    using Handler = std::function<bool(uintptr_t, uintptr_t, uintptr_t, uintptr_t, uintptr_t)>;

    void Register(const ROString& id, Handler handler) { m_handlers[id] = std::move(handler); }
    void Unregister(const ROString& id) { m_handlers.erase(id); }
    bool ExecuteCommand(const ROString& id, uintptr_t a, uintptr_t b, uintptr_t c, uintptr_t d,
                        uintptr_t e) override;
    bool HasCommand(const ROString& id) const override { return m_handlers.count(id) != 0; }
    // Every command executed, in order, for whoever watches the host.
    const std::vector<ROString>& Executed() const { return m_executed; }

private:
    std::map<ROString, Handler> m_handlers;
    std::vector<ROString> m_executed;
};

// 147: the capabilities and object types this edition allows; all by default. A change raises
// "EditingManager"/"CapabilitiesChanged".
class EditingCapabilities : public IEditingCapabilityService
{
public:
    bool IsCapabilityEnabled(unsigned capability) const override { return !m_disabled.count(capability); }
    bool IsObjectTypeAllowed(OrbObjectType type) const override { return !m_forbidden.count(type); }
    void SetCapabilityEnabled(unsigned capability, bool enabled);
    void SetObjectTypeAllowed(OrbObjectType type, bool allowed);
    const std::set<unsigned>& DisabledCapabilities() const { return m_disabled; }
    const std::set<OrbObjectType>& ForbiddenTypes() const { return m_forbidden; }

private:
    std::set<unsigned> m_disabled;
    std::set<OrbObjectType> m_forbidden;
};

class ServiceProvider : public IServiceProvider
{
public:
    IService* GetService(unsigned id) const override;
    // Adds or replaces (null removes) the service of a number; not owned.
    void SetService(unsigned id, IService* service);

private:
    std::map<unsigned, IService*> m_services;
};
} // namespace sn
