// The host's shared rules about what may be done to an object.

#include "host/OrbObjectHelpers.h"

#include "host/ProjectManager.h"

namespace
{
// The top work unit of a category is the category itself to the user: it stays.
bool IsTopWorkUnit(const IOrbObject* object)
{
    ProjectManager* projects = ProjectManager::m_pInstance;
    CSmartPtr<IOrbWorkUnit> top;
    return projects && projects->GetTopWorkUnit(const_cast<IOrbObject*>(object), top) && top &&
           static_cast<const IOrbObject*>(top.Get()) == object;
}
} // namespace

namespace OrbObjectHelpers
{
bool CanDelete(const IOrbObject* object)
{
    return object && object->GetObjectType() != OrbObjectType_Platform && !IsTopWorkUnit(object);
}

bool CanRename(const IOrbObject* object)
{
    return object && object->GetObjectType() != OrbObjectType_Platform && !IsTopWorkUnit(object);
}
} // namespace OrbObjectHelpers
