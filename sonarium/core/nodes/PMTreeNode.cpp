// The node tree's own bookkeeping: children read on demand, expanded and selected marks.

#include "host/PMTreeNode.h"

#include "host/OrbObject.h"
#include "host/SmartPtr.h"

#include "sonarium/core/model/NodeRules.h"

#include <optional>
#include <vector>

namespace
{
const PMTreeNode::KindRules kNoRules;
using GuidSet = PMTreeNode::GuidSet;

// The GUIDs of the objects between node and the object of id, from the top down; nothing when
// the object does not lie below node.
std::optional<std::vector<GUID>> PathBelow(PMTreeNode const& node, GUID const& id)
{
    std::vector<GUID> chain;
    CSmartPtr<IOrbObject> at;
    at.Attach(priv::LookupOrbObject(id));
    while (at)
    {
        CSmartPtr<IOrbObject> parent;
        parent.Attach(at->GetParentObject());
        if (!parent)
            break;
        if (*parent->GetGUID() == node.ID())
            return std::vector<GUID>(chain.rbegin(), chain.rend());
        chain.push_back(*parent->GetGUID());
        at = parent;
    }
    return std::nullopt;
}

PMTreeNode* ChildWithID(PMTreeNode& node, GUID const& id)
{
    for (PMTreeNode* child : node.Children())
        if (child->ID() == id)
            return child;
    return nullptr;
}

// The node of the object of id below node, reached down the path of its parents, opening each
// node on the way when asked; null when the object is not below node or has no node.
PMTreeNode* Descend(PMTreeNode& node, GUID const& id, bool openPath)
{
    const std::optional<std::vector<GUID>> path = PathBelow(node, id);
    if (!path)
        return nullptr;
    PMTreeNode* at = &node;
    for (GUID const& step : *path)
    {
        at = ChildWithID(*at, step);
        if (!at)
            return nullptr;
        if (openPath)
            at->IsExpanded(true);
    }
    return ChildWithID(*at, id);
}
} // namespace

PMTreeNode::PMTreeNode(PMTreeNode* parent, NodeType type) : m_parent(parent), m_rules(&kNoRules), m_type(type)
{
}

PMTreeNode::~PMTreeNode()
{
    DropChildren();
}

bool PMTreeNode::AcceptsParentType(NodeType) const
{
    return false;
}

void PMTreeNode::SetIncluded(bool, bool)
{
}

void PMTreeNode::Refresh(bool, unsigned long)
{
}

void PMTreeNode::RefreshName()
{
}

void PMTreeNode::RefreshPF(GuidSet& pending)
{
    pending.erase(ID());
    for (PMTreeNode* child : m_children)
        child->RefreshPF(pending);
}

void PMTreeNode::ExpandAndSelectNode(GUID const&)
{
}

CStdStr<wchar_t> PMTreeNode::GetDisplayName() const
{
    return CStdStr<wchar_t>();
}

int PMTreeNode::GetIconType() const
{
    return 0;
}

bool PMTreeNode::IsExcludedOnCurrentPlatform() const
{
    return false;
}

bool PMTreeNode::IsExcludedInCurrentLanguage() const
{
    return false;
}

int PMTreeNode::GetOverlayIcon() const
{
    return 0;
}

uint32_t PMTreeNode::GetColor() const
{
    return 0xFFFFFFFF;
}

bool PMTreeNode::HasChildren() const
{
    return !m_children.empty();
}

const std::vector<PMTreeNode*>& PMTreeNode::Children()
{
    if (!m_childrenRead)
    {
        m_childrenRead = true;
        ReadChildren(m_children);
    }
    return m_children;
}

void PMTreeNode::DropChildren()
{
    if (!m_children.empty())
        NoteShownChange();
    for (PMTreeNode* child : m_children)
        delete child;
    m_children.clear();
    m_childrenRead = false;
}

void PMTreeNode::SetExpandedForAllChildren(bool expanded)
{
    IsExpanded(expanded);
    // Expanding reaches every descendant; collapsing only those that were ever read.
    if (expanded)
        Children();
    for (PMTreeNode* child : m_children)
        child->SetExpandedForAllChildren(expanded);
}

void PMTreeNode::GetExpandedAndSelectedChildren(GuidSet& expanded, GuidSet& selected)
{
    for (PMTreeNode* child : m_children)
    {
        if (child->m_expanded)
            expanded.insert(child->ID());
        if (child->m_selected)
            selected.insert(child->ID());
        child->GetExpandedAndSelectedChildren(expanded, selected);
    }
}

void PMTreeNode::ExpandAndSelectChildrenNode(GuidSet const& expanded, GuidSet const& selected)
{
    // Selected objects are revealed: every node on the way down to them opens. Expanded marks go
    // where they are named, reached through collapsed nodes without opening those, so that a
    // node left open inside a closed one is open again when the closed one opens. Each named
    // node is reached down its own path: the cost is the paths', not the tree's.
    for (GUID const& id : selected)
        if (PMTreeNode* node = Descend(*this, id, true))
            node->IsSelected(true);
    for (GUID const& id : expanded)
        if (PMTreeNode* node = Descend(*this, id, false))
            node->IsExpanded(true);
}

bool PMTreeNode::IsAllChildren(std::vector<PMTreeNode*> const& nodes) const
{
    for (const PMTreeNode* node : nodes)
        if (!node || node->m_parent != this)
            return false;
    return true;
}

bool PMTreeNode::CreateChild(NodeType type, CStdStr<wchar_t> const& name, GUID* outGuid)
{
    return DoCreateChild(type, name, outGuid);
}

CStdStr<wchar_t> PMTreeNode::GetNodeTypeName(NodeType type)
{
    return sn::rules::NodeTypeName(type);
}
