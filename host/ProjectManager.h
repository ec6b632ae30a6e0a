#pragma once
// The open project as modules see it.

#include "host/OrbObject.h"
#include "host/OrbObjectCategories.h"
#include "host/SmartPtr.h"

class ProjectManager
{
public:
    static ProjectManager* m_pInstance; // null when no host runs

    // The top work unit of a category; false and a null pointer when there is none.
    virtual bool GetTopWorkUnit(OrbObjectCategories::Category category, CSmartPtr<IOrbWorkUnit>& out) const = 0;
    // The top work unit that contains an object.
    virtual bool GetTopWorkUnit(IOrbObject* object, CSmartPtr<IOrbWorkUnit>& out) const = 0;
    // Adds a new object to the work unit that receives new objects of its kind.
    virtual bool AddToDefaultWorkUnit(IOrbObject* object) = 0;
    // The platform the user works on now.
    virtual GUID GetCurrentPlatform() const = 0;

protected:
    virtual ~ProjectManager() = default;
};
