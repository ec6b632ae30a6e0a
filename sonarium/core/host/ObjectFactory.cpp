// Objects made by modules before they are placed in the project (a new event, say).

#include "host/OrbObject.h"

#include "sonarium/core/host/Host.h"
#include "sonarium/core/model/NodeRules.h"

namespace priv
{
IOrbObject* CreateOrbObject(OrbObjectType type, unsigned long, GUID const& id, unsigned long)
{
    sn::Host* host = sn::Host::Get();
    sn::Project* project = host ? host->GetProject() : nullptr;
    const PMTreeNode::NodeType nodeType = sn::rules::NodeTypeOf(type);
    // Work units are files: they are made in place, through the project's edits.
    if (!project || nodeType == PMTreeNode::None || type == OrbObjectType_WorkUnit ||
        (id != GUID_NULL && project->Find(id)))
        return nullptr;
    sn::ProjectObject* object = sn::NewProjectObject(project, nodeType, L"", id == GUID_NULL ? sn::NewGuid() : id);
    object->AddRef();
    return object;
}
} // namespace priv
