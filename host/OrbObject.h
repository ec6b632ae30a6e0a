#pragma once
// A project object as the host exposes it: reference-counted, identified by GUID.

#include "host/Guid.h"
#include "host/OrbObjectType.h"
#include "host/ROString.h"
#include "host/StdStr.h"

namespace OrbObjectCategories
{
enum Category : int;
}

// Key of a per-platform property, such as the inclusion of an object on a platform.
struct PropertyKey
{
    GUID platform;
    ROString name;
};

class IOrbObject
{
public:
    virtual void AddRef() const = 0;
    virtual void Release() const = 0;
    virtual unsigned int GetObjectFlags() const = 0;
    virtual OrbObjectType GetObjectType() const = 0;
    virtual GUID const* GetGUID() const = 0;
    // The owning object (for a source, its sound), with a new reference the caller releases.
    virtual IOrbObject* GetParentObject() const = 0;

    virtual bool IsPropertyLinked(const PropertyKey& key) const = 0;
    virtual void SetPropertyLinked(const PropertyKey& key, bool link) = 0;
    virtual bool IsIncludedOnPlatform(const GUID& platform, int reserved) const = 0;
    virtual bool IsLoaded() const = 0;
    // The object that stands for this one in the tree, or null; not reference-counted.
    virtual IOrbObject* GetOwnerObject() const = 0;
    virtual CStdStr<wchar_t> GetName() const = 0;
    // Renames the object to name, made to follow the host's naming rules.
    virtual bool SetName(const CStdStr<wchar_t>& name) = 0;
    // Bracket a change of the object: the notifications of that kind of change are held until
    // the outermost end, and then raised once. Kind 2 is the name.
    virtual void BeginChangeNotification(int kind) = 0;
    virtual void EndChangeNotification(int kind) = 0;

protected:
    virtual ~IOrbObject() = default;
};

class IOrbWorkUnit : public virtual IOrbObject
{
public:
    virtual bool HasWorkUnitCategory() const = 0;
    virtual OrbObjectCategories::Category GetWorkUnitCategory() const = 0;
    virtual bool IsDirty() const = 0;
    // Whether new work units may be made under this one now.
    virtual bool IsReadyForNewWorkUnits() const = 0;
};

namespace priv
{
// The object with this GUID with a new reference, or null.
IOrbObject* LookupOrbObject(GUID const& id);
void ReleaseObject(IOrbObject* object);
// A new object of that type, outside the project until it is placed, with a reference the caller
// releases; id GUID_NULL gives it a new identity. Null for a type the host cannot make so.
IOrbObject* CreateOrbObject(OrbObjectType type, unsigned long reserved, GUID const& id, unsigned long flags);
} // namespace priv

// Access to project objects by identity, for code that works with the data store.
class IDataManager
{
public:
    static IDataManager* Get();
    // The object with a new reference, or null.
    virtual IOrbObject* GetObjectByGUID(GUID const& id) const = 0;

protected:
    virtual ~IDataManager() = default;
};
