// The host's shared rules about what may be done to an object.

#include "host/OrbObjectHelpers.h"

#include "host/ProjectManager.h"
#include "sonarium/core/model/ProjectObject.h"

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

bool AnyAncestor(const IOrbObject* object, const std::function<bool(const IOrbObject*)>& predicate, bool includeSelf)
{
    const sn::ProjectObject* model = sn::AsProjectObject(object);
    for (const sn::ProjectObject* up = model && !includeSelf ? model->Parent() : model; up; up = up->Parent())
        if (predicate(up))
            return true;
    return false;
}
} // namespace OrbObjectHelpers
