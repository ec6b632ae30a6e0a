#pragma once
// Nodes that stand for one project object, and the factory of root nodes.

#include "host/OrbObject.h"
#include "host/PMTreeNode.h"
#include "host/SmartPtr.h"

class TreeNodeWithObject : public PMTreeNode
{
public:
    // Not reference-counted for the caller.
    IOrbObject* GetObject() const { return m_object.Get(); }

    static NodeType GetNodeType(IOrbObject* object);
    static NodeType ConvertObjectType(OrbObjectType type);
    static OrbObjectType ConvertObjectType(NodeType type);

    // Creates an object of the given type under the first node's parent and moves the
    // nodes' objects under it; its GUID goes to outGuid.
    static bool AddParentToNodes(std::vector<PMTreeNode*>& nodes, NodeType type, const CStdStr<wchar_t>& name,
                                 GUID* outGuid);
    // Whether inserting a parent of that type clears the undo history.
    static bool NeedUndoResetWhenAddingParent(NodeType type);

protected:
    TreeNodeWithObject(PMTreeNode* parent, IOrbObject* object, NodeType type);

    CSmartPtr<IOrbObject> m_object;
};

// Lets a node re-read cached visual state (icons, colours) without a tree rebuild.
class IVisualStateRefreshable
{
public:
    virtual void RefreshVisualState() = 0;

protected:
    virtual ~IVisualStateRefreshable() = default;
};

class NodeFactory
{
public:
    // A new node for object under parent (null for a root); the caller owns a root.
    static TreeNodeWithObject* CreateNode(PMTreeNode* parent, IOrbObject* object);
};
