#pragma once
// The host's services, reached by number through its service provider.

#include "host/OrbObjectType.h"
#include "host/ROString.h"

#include <cstdint>
#include <vector>

class IOrbObject;

namespace sn
{
enum ServiceId : unsigned
{
    ServiceId_ObjectClipboard = 117,
    ServiceId_WorkUnitGate = 119,
    ServiceId_MainWindow = 133,
    ServiceId_Commands = 140,
    ServiceId_EditingCapabilities = 147,
};

class IService
{
public:
    virtual ~IService() = default;
};

// 117: the host's clipboard of project objects.
class IObjectClipboardService : public IService
{
public:
    // Fills objects with owned references the caller releases; false when empty.
    virtual bool GetObjects(std::vector<IOrbObject*>& objects) const = 0;
    virtual uint32_t GetFlags() const = 0;
    // Holds its own references to the objects.
    virtual void SetObjects(const std::vector<IOrbObject*>& objects, uint32_t flags) = 0;
    virtual void Clear() = 0;
};

// 119: tells whether work units may be loaded or unloaded now.
class IWorkUnitGateService : public IService
{
public:
    virtual bool IsBlocked() const = 0;
};

// 133: the main window's state.
class IMainWindowService : public IService
{
public:
    virtual bool IsEnabled() const = 0;
};

// 140: the host's commands, known by identifier.
class CommandService : public IService
{
public:
    virtual bool ExecuteCommand(const ROString& id, uintptr_t a, uintptr_t b, uintptr_t c, uintptr_t d,
                                uintptr_t e) = 0;
    virtual bool HasCommand(const ROString& id) const = 0;
};

// 147: which editing capabilities and object types this edition of the host allows.
class IEditingCapabilityService : public IService
{
public:
    virtual bool IsCapabilityEnabled(unsigned capability) const = 0;
    virtual bool IsObjectTypeAllowed(OrbObjectType type) const = 0;
};

class IServiceProvider
{
public:
    // The service of that number, or null; not reference-counted.
    virtual IService* GetService(unsigned id) const = 0;

    template <class T>
    T* Get(unsigned id) const
    {
        return dynamic_cast<T*>(GetService(id));
    }

protected:
    virtual ~IServiceProvider() = default;
};

extern IServiceProvider* g_serviceProviderInstance; // null outside a running host
} // namespace sn
