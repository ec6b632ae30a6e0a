// The node tree's own bookkeeping: children read on demand, expanded and selected marks.

#include "host/PMTreeNode.h"

#include "sonarium/core/model/NodeRules.h"

namespace
{
const PMTreeNode::KindRules kNoRules;
}

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
    for (PMTreeNode* child : m_children)
        delete child;
    m_children.clear();
    m_childrenRead = false;
}

void PMTreeNode::SetExpandedForAllChildren(bool expanded)
{
    m_expanded = expanded;
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
    for (PMTreeNode* child : Children())
    {
        if (expanded.count(child->ID()))
            child->m_expanded = true;
        if (selected.count(child->ID()))
            child->m_selected = true;
        // Only expanded nodes are read further: the sets name paths, not the whole project.
        if (child->m_expanded)
            child->ExpandAndSelectChildrenNode(expanded, selected);
    }
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
