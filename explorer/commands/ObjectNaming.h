#pragma once
// The names the explorer proposes for new objects: "New <type>", plug-in children, events named
// after their action and target, and the case the user wants event names in.

#include "host/EventHelpers.h"
#include "host/PMTreeNode.h"
#include "host/StdStr.h"

#include <cstdint>

// Generated names are cut to this length before the host makes them valid.
constexpr size_t kMaxGeneratedNameLength = 260;

// The name of a new object of that type under parent; for a work unit or physical folder the
// user's, from the new-work-unit dialog. False when the user cancelled or no name could be had.
bool MakeNewObjectName(PMTreeNode::NodeType type, PMTreeNode* parent, CStdStr<wchar_t>& name);
// "New <plug-in>", or the plug-in's name for an audio device (object type 68). False when the
// plug-in is unknown.
bool MakePluginChildName(uint32_t pluginId, CStdStr<wchar_t>& name, OrbObjectType objectType);
CStdStr<wchar_t> MakeEventChildName(OrbEventActionEnum::OrbEventActionType action,
                                    OrbEventActionEnum::OrbEventActionScope scope);
CStdStr<wchar_t> MakeEventName(bool defaultName, IOrbEventAction* action, const CStdStr<wchar_t>& objectName);
// Lower or upper case, when the user's preferences ask for it.
void ApplyEventNameCase(CStdStr<wchar_t>& name);
