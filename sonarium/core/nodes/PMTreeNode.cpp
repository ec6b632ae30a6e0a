// The node tree's own bookkeeping: children read on demand, expanded and selected marks.

#include "host/PMTreeNode.h"

#include "host/OrbObject.h"
#include "host/SmartPtr.h"

#include "sonarium/core/model/NodeRules.h"

namespace
{
const PMTreeNode::KindRules kNoRules;
using GuidSet = PMTreeNode::GuidSet;

// The GUIDs of the objects between node and each object of ids that lies below it.
GuidSet PathsBelow(PMTreeNode const& node, GuidSet const& ids)
{
    GuidSet paths;
    std::vector<GUID> chain;
    for (GUID const& id : ids)
    {
        chain.clear();
        CSmartPtr<IOrbObject> at;
        at.Attach(priv::LookupOrbObject(id));
        while (at)
        {
            CSmartPtr<IOrbObject> parent;
            parent.Attach(at->GetParentObject());
            if (!parent)
                break;
            if (*parent->GetGUID() == node.ID())
            {
                paths.insert(chain.begin(), chain.end());
                break;
            }
            chain.push_back(*parent->GetGUID());
            at = parent;
        }
    }
    return paths;
}

struct Marks
{
    GuidSet const& expanded;
    GuidSet const& selected;
    GuidSet const& open; // on the way to a selected node
    GuidSet reach;       // on the way to an expanded one
};

// found counts the nodes of expanded that were marked.
void MarkChildren(PMTreeNode& node, Marks const& marks, size_t& found)
{
    for (PMTreeNode* child : node.Children())
    {
        const GUID& id = child->ID();
        if (marks.expanded.count(id))
        {
            child->IsExpanded(true);
            ++found;
        }
        if (marks.open.count(id))
            child->IsExpanded(true);
        if (marks.selected.count(id))
            child->IsSelected(true);
        // Only the paths named are read: the sets name paths, not the whole project.
        if (child->IsExpanded() || marks.reach.count(id))
            MarkChildren(*child, marks, found);
    }
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
    // node left open inside a closed one is open again when the closed one opens. Most named
    // nodes lie below open ones: paths are looked up only for those the open ones did not reach.
    const GuidSet open = PathsBelow(*this, selected);
    size_t found = 0;
    MarkChildren(*this, {expanded, selected, open, {}}, found);
    if (found == expanded.size())
        return;
    if (GuidSet reach = PathsBelow(*this, expanded); !reach.empty())
        MarkChildren(*this, {expanded, selected, open, std::move(reach)}, found);
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
