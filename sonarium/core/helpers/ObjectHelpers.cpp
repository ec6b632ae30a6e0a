// The host's shared rules about what may be done to an object.

#include "host/OrbObjectHelpers.h"

#include "host/PMTreeNode.h"
#include "host/ProjectManager.h"
#include "sonarium/core/model/ProjectObject.h"

#include <algorithm>
#include <unordered_set>

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

bool CanImportAudio(const IOrbObject* object)
{
    if (!object)
        return false;
    switch (object->GetObjectType())
    {
    case OrbObjectType_WorkUnit:
    case OrbObjectType_Folder:
    case OrbObjectType_ActorMixer:
    case OrbObjectType_Container:
    case OrbObjectType_SwitchContainer:
    case OrbObjectType_BlendContainer:
    case OrbObjectType_Sound:
    case OrbObjectType_MusicSwitchContainer:
    case OrbObjectType_MusicPlaylistContainer:
    case OrbObjectType_MusicSegment:
    case OrbObjectType_MusicTrack:
        return true;
    default:
        return false;
    }
}

void RemoveAllChildObjectsFromList(std::vector<PMTreeNode*>& nodes)
{
    const std::unordered_set<const PMTreeNode*> listed(nodes.begin(), nodes.end());
    auto hasListedAncestor = [&](const PMTreeNode* node)
    {
        for (const PMTreeNode* up = node ? node->Parent() : nullptr; up; up = up->Parent())
            if (listed.count(up))
                return true;
        return false;
    };
    std::erase_if(nodes, hasListedAncestor);
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
