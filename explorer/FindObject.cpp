// Revealing objects: expand the node model down to them, select them, refill the tree
// in one batch and scroll the last one into view.

#include "explorer/DlgProjectExplorer.h"

#include "host/ProjectManager.h"

#include <unordered_map>

namespace
{
// Objects without a tree node of their own are shown through their owner.
bool IsRevealedThroughParent(OrbObjectType type)
{
    return type == OrbObjectType_AudioSource || type == OrbObjectType_EventAction ||
           type == OrbObjectType_MusicClip;
}
} // namespace

void DlgProjectExplorer::FindOrbObject(IOrbObject* object)
{
    if (!object)
        return;
    m_tree.SelectAll(false);

    GUID guid = *object->GetGUID();
    if (IsRevealedThroughParent(object->GetObjectType()))
    {
        CSmartPtr<IOrbObject> parent;
        parent.Attach(object->GetParentObject());
        if (parent)
            guid = *parent->GetGUID();
    }
    else if (IOrbObject* owner = object->GetOwnerObject())
    {
        guid = *owner->GetGUID();
    }

    // Callers pass objects of work units shown in this view.
    PMTreeNode* topNode = GetTopWorkUnitNode(object);

    BeginUpdate();
    if (topNode)
        topNode->ExpandAndSelectNode(guid);
    FillTreeView();
    EndUpdate();

    if (HTREEITEM item = m_tree.GetItemWithGUID(guid, TVI_ROOT))
        m_tree.EnsureVisible(item);
}

void DlgProjectExplorer::FindOrbObject(std::vector<IOrbObject*>& objects)
{
    m_tree.SelectAll(false);
    BeginUpdate();

    GUID last = GUID_NULL;
    std::unordered_map<PMTreeNode*, std::set<GUID, GUIDLess>> revealByTopNode;
    for (IOrbObject* object : objects)
    {
        const GUID guid = *object->GetGUID();
        last = guid;
        PMTreeNode* topNode = GetTopWorkUnitNode(object);
        if (!topNode)
            continue;
        if (object->GetObjectType() == OrbObjectType_WorkUnit)
            topNode->ExpandAndSelectNode(guid);
        else
            revealByTopNode[topNode].insert(guid);
    }

    for (auto& [topNode, guids] : revealByTopNode)
    {
        std::set<GUID, GUIDLess> parents;
        for (GUID const& guid : guids)
        {
            CSmartPtr<IOrbObject> object;
            object.Attach(priv::LookupOrbObject(guid));
            if (!object)
                continue;
            CSmartPtr<IOrbObject> parent;
            parent.Attach(object->GetParentObject());
            if (parent)
                parents.insert(*parent->GetGUID());
        }
        topNode->IsExpanded(true);
        topNode->ExpandAndSelectChildrenNode(parents, guids);
    }

    FillTreeView();
    EndUpdate();

    if (!objects.empty())
        if (HTREEITEM item = m_tree.GetItemWithGUID(last, TVI_ROOT))
            m_tree.EnsureVisible(item);
}
