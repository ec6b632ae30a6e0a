#pragma once
// The host's project tree control: a multi-selection tree whose items show PMTreeNode objects.
//
// Items exist only for the expanded part of the node tree. An item's text, icon and look are
// asked of its node; an item is found by its node's GUID in constant time. Expanding an item
// by a gesture marks its node expanded, refreshes the node and inserts the children;
// collapsing drops the child items and keeps the nodes' marks, so that a later insert restores
// which items were expanded and selected.
//
// A rebuild made while drawing is off (delete every item, insert the roots again) takes back
// whole the item subtrees of nodes in which nothing the items show changed since the last
// rebuild: those items, and the handles naming them, stay as they were.

#include "host/MultiSelectionTreeCtrl.h"
#include "host/PMTreeNode.h"
#include "host/GuidTable.h"

#include <string>
#include <unordered_map>
#include <vector>

// What one row of the tree shows, in client coordinates: everything a painter draws.
struct PETreeRow
{
    HTREEITEM item = nullptr;
    int depth = 0;
    RECT row{};
    RECT button{};
    RECT icon{};
    RECT label{};
    std::wstring text;     // the node's display name, decorations included
    int iconType = 0;      // an ObjectIcons::IconType
    bool hasButton = false;
    bool expanded = false;
    bool selected = false;
    bool focused = false;
    bool dropTarget = false;
    bool cut = false;      // marked by a pending cut: drawn faded
    bool excluded = false; // excluded on the current platform: disabled icon, dimmed text
    bool languageExcluded = false; // excluded in the current language: drawn as excluded
    int overlay = 0;       // a source-control overlay over the icon (ObjectIcons::IconType), or 0
    bool editing = false;  // the label editor covers the label
    COLORREF textColor = 0;
    // The object's colour (0x00RRGGBB), or 0xFFFFFFFF for none.
    uint32_t colorTag = 0xFFFFFFFF;
};

class PETreeCtrl : public MultiSelectionTreeCtrl
{
public:
    PETreeCtrl();
    ~PETreeCtrl() override;

    using MultiSelectionTreeCtrl::InsertItem;
    // Inserts the node's item and the items of its expanded subtree.
    HTREEITEM InsertItem(PMTreeNode* node, HTREEITEM parent, HTREEITEM after);
    // Rebuilds the items below the item from its node.
    void RefreshItem(HTREEITEM item);
    PMTreeNode* GetNodeFromItem(HTREEITEM item) const;
    // The item whose node has this GUID, if it lies below start (TVI_ROOT: anywhere).
    HTREEITEM GetItemWithGUID(GUID const& id, HTREEITEM start = TVI_ROOT) const;
    // Expands the ancestors and scrolls; the handle is updated if the item had to be remade.
    BOOL EnsureVisible(HTREEITEM& item);
    bool IsItemValid(HTREEITEM item) const { return ItemExists(item); }
    // Re-read the icons of every item, or of one.
    void SetAllItemImage();
    void UpdateIcon(HTREEITEM item);
    // Drops the cached source-control overlays so that they are asked for again.
    void ClearOverlayIcons();
    int GetOverlayClearCount() const { return m_overlayClears; }

    // The rows in the viewport, top to bottom.
    void GetVisibleRows(std::vector<PETreeRow>& rows) const;
    PETreeRow GetRow(HTREEITEM item) const;

protected:
    std::wstring QueryItemText(HTREEITEM item) const override;
    void OnItemExpanding(HTREEITEM item, bool expand) override;
    void OnItemDeleting(HTREEITEM item) override;
    bool KeepsRetiredItems() const override { return true; }
    void OnRetiring() override;

private:
    HTREEITEM InsertOne(PMTreeNode* node, HTREEITEM parent, HTREEITEM after);
    // The node's retired item subtree, moved under parent, when nothing it shows changed.
    HTREEITEM Adopt(PMTreeNode* node, HTREEITEM parent, HTREEITEM after);
    void InsertChildren(HTREEITEM item, PMTreeNode* node);
    void DeleteChildItems(HTREEITEM item);
    void IndexItem(GUID const& id, HTREEITEM item);

    struct IndexEntry
    {
        GUID id;
        HTREEITEM item = nullptr;
    };
    struct IndexTraits
    {
        static GUID const& Key(const IndexEntry& entry) { return entry.id; }
        static bool IsEmpty(const IndexEntry& entry) { return entry.item == nullptr; }
    };
    GuidTable<IndexEntry, IndexTraits> m_index;
    // The count of node icon changes when every item's icon was last read from its node.
    uint64_t m_iconsReadAt = 0;
    // Overlays asked of the nodes, until ClearOverlayIcons.
    mutable std::unordered_map<HTREEITEM, int> m_overlays;
    int m_overlayClears = 0;
    // On the project's change clock: when the last rebuild began, and the one before it. What
    // changed before the one before began, the last rebuild built again; what changed since may
    // carry the same reading of the clock, so only earlier stamps count as unchanged.
    uint32_t m_rebuiltAt = 0;
    uint32_t m_adoptBefore = 0;
};
