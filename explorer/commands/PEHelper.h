#pragma once
// Display names of the creatable node types, the names and identifiers of the host's
// create commands, and small predicates over nodes that menus and toolbars ask.

#include "host/PMTreeNode.h"
#include "host/StdStr.h"

#include <vector>

class IOrbObject;

namespace PEHelper
{
CStdStr<wchar_t> ConvertNodeTypeToStringId(PMTreeNode::NodeType type);
CStdStr<wchar_t> GenerateCommandNameFromNodeType(PMTreeNode::NodeType type, bool parent);
// Erases the blanks of name (left empty afterwards) and prefixes "View" and the scope.
CStdStr<wchar_t> GenerateCommandIdFromName(CStdStr<wchar_t> name, const wchar_t* scope);
bool DoAllNodesHaveCapability(const std::vector<PMTreeNode*>& nodes, PMTreeNode::CapabilityTypes capability);
bool CanAllNodesHaveParent(const std::vector<PMTreeNode*>& nodes, PMTreeNode::NodeType parentType);
} // namespace PEHelper

// Erases every U+0020 blank; returns how many there were.
int RemoveSpaces(CStdStr<wchar_t>& s);
// Appends a TAB and the create command's identifier when the host knows that command.
void AppendCreateCommandShortcut(PMTreeNode::NodeType type, CStdStr<wchar_t>& label, bool parent);
// The object a tree node stands for (not reference-counted), or null.
IOrbObject* NodeObject(PMTreeNode* node);
bool CanDeleteNode(PMTreeNode* node);
bool CanRenameNode(PMTreeNode* node);
bool CanEditDuringPlayback(PMTreeNode* node);
