#pragma once
// The one table of the project's structure: for each kind of node, the object type it stands
// for, the node kinds it may hold and be inserted under, and what the user may do with it.
// Work units and folders hold what their category allows, so the table is per category.

#include "host/OrbObjectCategories.h"
#include "host/OrbObjectType.h"
#include "host/PMTreeNode.h"

#include <set>

namespace sn::rules
{
using NodeType = PMTreeNode::NodeType;
using Category = OrbObjectCategories::Category;

using NodeRule = PMTreeNode::KindRules;

// The rule of a node kind in a category; a top work unit (a category's root) has its own.
const NodeRule& RuleFor(NodeType type, Category category, bool topWorkUnit);

OrbObjectType ObjectTypeOf(NodeType type);
// The usual node kind of an object type (a work unit, a random container, a sound effect).
NodeType NodeTypeOf(OrbObjectType type);
// The category that holds objects of a node kind outside work units and folders.
Category HomeCategory(NodeType type);

// Display name of a node kind, and of a category's root.
const wchar_t* NodeTypeName(NodeType type);
const wchar_t* CategoryName(Category category);
// A short key for files and fixtures ("ActorMixer", "SoundSFX"); Parse* return false for
// unknown keys.
const char* NodeTypeKey(NodeType type);
bool ParseNodeType(std::string_view key, NodeType& type);
const char* CategoryKey(Category category);
bool ParseCategory(const std::string& key, Category& category);

// Categories in display order.
const std::vector<Category>& AllCategories();
} // namespace sn::rules
