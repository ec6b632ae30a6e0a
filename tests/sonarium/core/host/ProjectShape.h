#pragma once
// Measures of a whole project for the sample and generator tests: size, depth, kinds present, and
// every parent/child pair that the structure table would refuse.

#include "host/Utf8.h"
#include "sonarium/core/model/NodeRules.h"
#include "sonarium/core/model/Project.h"
#include "sonarium/core/model/ProjectEdit.h"

#include <map>
#include <set>
#include <string>
#include <vector>

namespace shape
{
using NodeType = PMTreeNode::NodeType;

struct Shape
{
    size_t objects = 0;
    size_t depth = 0; // levels, a category's root being the first
    std::set<NodeType> types;
    std::map<OrbObjectCategories::Category, size_t> workUnits;
    std::vector<std::string> refused; // "Parent > Child" pairs the table does not allow
    size_t widest = 0;                // most children of one object
};

inline bool HoldsFiles(const sn::ProjectObject& parent)
{
    return parent.IsTopWorkUnit() || parent.GetNodeType() == PMTreeNode::PhysicalFolder;
}

inline void Visit(const sn::ProjectObject& object, size_t level, Shape& shape)
{
    ++shape.objects;
    shape.depth = std::max(shape.depth, level);
    shape.widest = std::max(shape.widest, object.Children().size());
    if (!object.IsTopWorkUnit())
        shape.types.insert(object.GetNodeType());
    if (object.GetNodeType() == PMTreeNode::WorkUnit && !object.IsTopWorkUnit())
        ++shape.workUnits[object.GetCategory()];
    for (const CSmartPtr<sn::ProjectObject>& child : object.Children())
    {
        const NodeType type = child->GetNodeType();
        const bool file = type == PMTreeNode::WorkUnit || type == PMTreeNode::PhysicalFolder;
        if (file ? !HoldsFiles(object) : !sn::ProjectEdit::CanHold(&object, type))
            shape.refused.push_back(Utf8::FromWide(object.GetName()) + " > " +
                                    Utf8::FromWide(child->GetName()));
        Visit(*child, level + 1, shape);
    }
}

inline Shape Measure(const sn::Project& project)
{
    Shape shape;
    for (const sn::WorkUnitObject* root : project.Roots())
        Visit(*root, 1, shape);
    return shape;
}

// Every kind that can appear below some category's root, asked of the table kind by kind.
inline std::set<NodeType> AllowedTypes()
{
    constexpr int kTypes = 37;
    std::set<NodeType> allowed;
    for (OrbObjectCategories::Category category : sn::rules::AllCategories())
    {
        sn::Project scratch(L"scratch");
        sn::WorkUnitObject* root = scratch.AddRoot(category, sn::NewGuid(), L"root");
        std::vector<NodeType> pending;
        std::set<NodeType> seen;
        for (int type = 1; type < kTypes; ++type)
            if (sn::ProjectEdit::CanHold(root, NodeType(type)) && seen.insert(NodeType(type)).second)
                pending.push_back(NodeType(type));
        while (!pending.empty())
        {
            const NodeType holder = pending.back();
            pending.pop_back();
            root->RawInsertChild(0, sn::NewProjectObject(nullptr, holder, L"probe", GUID_NULL));
            for (int type = 1; type < kTypes; ++type)
                if (sn::ProjectEdit::CanHold(root->Children()[0].Get(), NodeType(type)) &&
                    seen.insert(NodeType(type)).second)
                    pending.push_back(NodeType(type));
            root->RawRemoveChild(0);
        }
        allowed.insert(seen.begin(), seen.end());
    }
    return allowed;
}
} // namespace shape
