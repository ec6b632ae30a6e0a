#pragma once
// Composition of the tree's context menu: the explorer's entries for a selection, the New Child,
// New Parent and event submenus, and what each dynamic command identifier stands for.

#include "explorer/menu/MenuCommandEntry.h"
#include "host/CxCMenu.h"
#include "host/ObjectContextMenu.h"
#include "host/PMTreeNode.h"

#include <vector>

// Everything one right click makes; the icon bitmaps are freed, then the menus deleted, when it
// goes out of scope, after the chosen command has been dispatched.
class ContextMenuParts
{
public:
    ContextMenuParts() = default;
    ContextMenuParts(const ContextMenuParts&) = delete;
    ContextMenuParts& operator=(const ContextMenuParts&) = delete;
    ~ContextMenuParts();

    // A new popup menu, owned by this object from the moment it exists.
    CxCMenu* NewMenu();

    std::vector<ObjectContextMenu::MenuItem> items;
    std::vector<CxCMenu*> menus;
    std::vector<HBITMAP> bitmaps;
};

// unused is always 0xFFFFFFFF; linked and included are the answers of IsInclusionLinked and
// IsIncluded (a command identifier, or 0 for a mixed selection).
void BuildContextMenuItems(const std::vector<PMTreeNode*>& nodes, ContextMenuParts& parts, MenuCommandMap& commands,
                           uint32_t unused, unsigned linked, unsigned included);
void BuildNewChildMenu(PMTreeNode* node, CxCMenu* childMenu, ContextMenuParts& parts, MenuCommandMap& commands);
void BuildNewParentMenu(const std::vector<PMTreeNode*>& nodes, CxCMenu* parentMenu, ContextMenuParts& parts,
                        MenuCommandMap& commands);
// Gives the last item of menu the icon of type.
void SetMenuItemObjectIcon(CxCMenu* menu, PMTreeNode::NodeType type, std::vector<HBITMAP>& bitmaps);
