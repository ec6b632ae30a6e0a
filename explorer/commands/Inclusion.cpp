// Inclusion of the selection on the host's current platform, and its link across platforms.

#include "explorer/DlgProjectExplorer.h"

#include "explorer/menu/MenuCommandIds.h"
#include "host/EditingManager.h"
#include "host/ProjectManager.h"
#include "host/Undo.h"
#include "module/ExplorerNames.h"

using namespace PENames;

namespace
{
GUID CurrentPlatform()
{
    return ProjectManager::m_pInstance ? ProjectManager::m_pInstance->GetCurrentPlatform() : GUID_NULL;
}

// The state shared by every object, or 0 when they differ; the first object is read first. The
// menus ask only about a selection; an empty one has no state to show.
template <class Query>
unsigned int SharedState(const std::vector<IOrbObject*>& objects, Query query, unsigned int yes, unsigned int no)
{
    if (objects.empty())
        return 0;
    const bool first = query(objects.front());
    for (IOrbObject* object : objects)
        if (query(object) != first)
            return 0;
    return first ? yes : no;
}
} // namespace

unsigned int DlgProjectExplorer::IsIncluded()
{
    std::vector<IOrbObject*> objects;
    GetSelectedObjects(objects);
    const GUID platform = CurrentPlatform();
    return SharedState(
        objects, [&](IOrbObject* object) { return object->IsIncludedOnPlatform(platform, 0); },
        MenuCommandIds::IncludeSelection, MenuCommandIds::ExcludeSelection);
}

unsigned int DlgProjectExplorer::IsInclusionLinked()
{
    const PropertyKey key{CurrentPlatform(), rosInclusion};
    std::vector<IOrbObject*> objects;
    GetSelectedObjects(objects);
    return SharedState(
        objects, [&](IOrbObject* object) { return object->IsPropertyLinked(key); },
        MenuCommandIds::LinkInclusion, MenuCommandIds::UnlinkInclusion);
}

void DlgProjectExplorer::CheckSelectedNode(bool include)
{
    std::vector<PMTreeNode*> nodes;
    GetSelectedNodeList(nodes);
    if (EditingManager::IsInPlayback())
        return;
    ScopedGlobalPropRaise lock(rosLockUIUpdate);
    // One undo step for the whole selection, named after its first change.
    AutoComplexUndo undo(nullptr, false);
    undo.Open(new ComplexUndoWithFirstEventName);
    for (PMTreeNode* node : nodes)
        SetNodeInclusion(node, include);
}

void DlgProjectExplorer::SetNodeInclusion(PMTreeNode* node, bool include)
{
    if (!node)
        return;
    ScopedGlobalPropRaise lock(rosLockUIUpdate);
    node->SetIncluded(include, false);
}

void DlgProjectExplorer::LinkInclusionInSelectedNode(bool link)
{
    // Linking changes no object's inclusion, so it is allowed during playback.
    ScopedGlobalPropRaise lock(rosLockUIUpdate);
    AutoComplexUndo undo(nullptr, false);
    undo.Open(new ComplexUndoWithFirstEventName);
    std::vector<IOrbObject*> objects;
    GetSelectedObjects(objects);
    const PropertyKey key{CurrentPlatform(), rosInclusion};
    for (IOrbObject* object : objects)
        object->SetPropertyLinked(key, link);
}

void DlgProjectExplorer::OnCheckSelection()
{
    CheckSelectedNode(true);
}

void DlgProjectExplorer::OnUncheckSelection()
{
    CheckSelectedNode(false);
}

void DlgProjectExplorer::OnLinkInclusion()
{
    LinkInclusionInSelectedNode(true);
}

void DlgProjectExplorer::OnUnLinkInclusion()
{
    LinkInclusionInSelectedNode(false);
}
