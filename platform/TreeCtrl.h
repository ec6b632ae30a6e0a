#pragma once
// A tree-view control: items in a hierarchy, expand and collapse, a viewport of rows with
// hit-testing, and an in-place label editor. It reports to its parent with the tree-view
// notifications (WM_NOTIFY) and answers the TVM_ messages.
//
// Handles carry a slot and a generation, so a handle of a deleted item never names a new one.
// A rebuild made while drawing is off may keep unchanged subtrees whole: see KeepsRetiredItems.
//
// Each item counts the rows its subtree shows, so finding a row, or the row of an item, costs
// the depth of the tree and the siblings passed on the way, not the number of rows.

#include "platform/Edit.h"
#include "platform/TreeViewTypes.h"
#include "platform/Wnd.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

class CTreeCtrl : public CWnd
{
public:
    static constexpr int DefaultItemHeight = 18;
    static constexpr int DefaultIndent = 19;
    static constexpr int IconSize = 16;
    // Space between the icon and the label, and around the label's text.
    static constexpr int LabelGap = 3;
    static constexpr int LabelPadding = 3;

    CTreeCtrl();
    ~CTreeCtrl() override;

    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);

    // Items. A null text makes the item ask QueryItemText each time it is shown.
    HTREEITEM InsertItem(LPCWSTR text, int image, LPARAM data, HTREEITEM parent = TVI_ROOT,
                         HTREEITEM after = TVI_LAST);
    // TVI_ROOT deletes every item.
    BOOL DeleteItem(HTREEITEM item);
    BOOL DeleteAllItems() { return DeleteItem(TVI_ROOT); }
    bool ItemExists(HTREEITEM item) const { return Find(item) != nullptr; }
    UINT GetCount() const
    {
        SettleRetired();
        return m_count;
    }

    HTREEITEM GetNextItem(HTREEITEM item, UINT code) const;
    HTREEITEM GetRootItem() const { return GetNextItem(nullptr, TVGN_ROOT); }
    HTREEITEM GetChildItem(HTREEITEM item) const { return GetNextItem(item, TVGN_CHILD); }
    HTREEITEM GetNextSiblingItem(HTREEITEM item) const { return GetNextItem(item, TVGN_NEXT); }
    HTREEITEM GetPrevSiblingItem(HTREEITEM item) const { return GetNextItem(item, TVGN_PREVIOUS); }
    HTREEITEM GetParentItem(HTREEITEM item) const { return GetNextItem(item, TVGN_PARENT); }
    HTREEITEM GetFirstVisibleItem() const { return GetNextItem(nullptr, TVGN_FIRSTVISIBLE); }
    HTREEITEM GetNextVisibleItem(HTREEITEM item) const { return GetNextItem(item, TVGN_NEXTVISIBLE); }
    HTREEITEM GetPrevVisibleItem(HTREEITEM item) const { return GetNextItem(item, TVGN_PREVIOUSVISIBLE); }
    HTREEITEM GetLastVisibleItem() const { return GetNextItem(nullptr, TVGN_LASTVISIBLE); }

    // Child items, or the promise of them (the expand button of a lazily filled item).
    BOOL ItemHasChildren(HTREEITEM item) const;
    void SetItemHasChildren(HTREEITEM item, bool hasChildren);
    std::wstring GetItemText(HTREEITEM item) const;
    BOOL SetItemText(HTREEITEM item, LPCWSTR text);
    int GetItemImage(HTREEITEM item) const;
    BOOL SetItemImage(HTREEITEM item, int image);
    LPARAM GetItemData(HTREEITEM item) const;
    BOOL SetItemData(HTREEITEM item, LPARAM data);
    UINT GetItemState(HTREEITEM item, UINT mask) const;
    virtual BOOL SetItemState(HTREEITEM item, UINT state, UINT mask);
    // 0 for a top-level item.
    int GetItemDepth(HTREEITEM item) const;
    bool IsAncestor(HTREEITEM ancestor, HTREEITEM item) const;

    // Marks the target of a drag (TVIS_DROPHILITED); null clears it.
    BOOL SelectDropTarget(HTREEITEM item);
    HTREEITEM GetDropHilightItem() const { return Find(m_dropTarget) ? m_dropTarget : nullptr; }

    // TVE_EXPAND, TVE_COLLAPSE (with TVE_COLLAPSERESET) or TVE_TOGGLE; asks the parent first.
    BOOL Expand(HTREEITEM item, UINT code);

    // Viewport: rows are the items whose ancestors are all expanded, in display order.
    int GetItemHeight() const { return m_itemHeight; }
    void SetItemHeight(int height);
    int GetIndent() const { return m_indent; }
    void SetIndent(int indent);
    // Rows that fit entirely in the client area (at least one).
    UINT GetVisibleCount() const;
    int GetRowCount() const;
    HTREEITEM GetRowItem(int row) const;
    // -1 when an ancestor is collapsed.
    int GetItemRow(HTREEITEM item) const;
    int GetScrollRow() const { return m_scrollRow; }
    // Changes whenever the rows may have changed.
    uint64_t RowsVersion() const { return m_rowsVersion; }
    // Scrolls so that the row is at the top, as far as the rows allow.
    void ScrollToRow(int row);
    void ScrollRows(int delta) { ScrollToRow(m_scrollRow + delta); }
    // Horizontal scrolling, in pixels, for rows wider than the client area: the offset of the
    // client's left edge into the rows, kept between 0 and the rows' width beyond the client.
    int GetScrollX() const;
    void ScrollToX(int x);
    // The width the rows in view need: the right end of the widest label among them.
    int GetRowsWidth() const;
    BOOL SelectSetFirstVisible(HTREEITEM item);
    // Expands the ancestors and scrolls as little as needed.
    BOOL EnsureVisible(HTREEITEM item);
    // The row's rectangle in client coordinates, or only its label's; false when not a row.
    BOOL GetItemRect(HTREEITEM item, LPRECT rect, BOOL textOnly) const;
    HTREEITEM HitTest(CPoint point, UINT* flags = nullptr) const;
    HTREEITEM HitTest(TVHITTESTINFO* info) const;
    // Pixel width of a label's text; painters install their font's measure.
    void SetTextMeasure(std::function<int(std::wstring const&)> measure);
    int MeasureText(std::wstring const& text) const;
    // Width of the state image in front of the icon; 0 when the control shows none.
    void SetStateIconWidth(int width);

    COLORREF GetBkColor() const { return m_bkColor; }
    COLORREF GetTextColor() const { return m_textColor; }
    bool IsRedrawEnabled() const { return m_redraw; }
    // How many times drawing was turned off: each rebuild of the rows under a redraw lock counts one.
    uint64_t RedrawSuspensionCount() const { return m_redrawSuspensions; }

    // In-place label editing.
    CEdit* EditLabel(HTREEITEM item);
    CEdit* GetEditControl() const { return m_edit.get(); }
    HTREEITEM GetEditItem() const { return m_editItem; }
    // Ends the edit as Enter (save) or Escape (cancel) would.
    BOOL EndEditLabelNow(BOOL cancel);

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

protected:
    // TVM_SELECTITEM with TVGN_CARET: the item becomes the focused and only selected one.
    virtual BOOL SelectCaret(HTREEITEM item);
    // The text of an item inserted without one.
    virtual std::wstring QueryItemText(HTREEITEM item) const { return {}; }
    // Before an item expands or collapses by any means; derived controls fill or prune here.
    virtual void OnItemExpanding(HTREEITEM item, bool expand) {}
    // For each item about to be deleted, children first.
    virtual void OnItemDeleting(HTREEITEM item) {}
    // The viewport or the items changed: what a painter shows must be redrawn.
    void Repaint();
    // Sends a notification to the parent, filling the header.
    LRESULT NotifyParent(NMHDR& header, UINT code);

    // Rebuilds that keep what did not change. In a control that answers true, deleting every
    // item while drawing is off retires the top-level items instead, with their subtrees, in
    // time proportional to their number. Retired items are invisible to every query; a derived
    // control may take a retired subtree back whole with AdoptRetired while it rebuilds (inside
    // a BuildScope); whatever stays retired is deleted, as DeleteItem would, when drawing resumes
    // or at the first query from outside a BuildScope.
    virtual bool KeepsRetiredItems() const { return false; }
    // The top-level items are about to be retired: note the items that must not be taken back.
    virtual void OnRetiring() {}
    // The item changed since it was built: neither it nor its ancestors will be taken back.
    void NoteItemChanged(HTREEITEM item);
    // Moves the retired item, with its subtree and handles, under parent after `after`, if it
    // holds data and nothing in its subtree changed since it was built.
    bool AdoptRetired(HTREEITEM item, LPARAM data, HTREEITEM parent, HTREEITEM after);
    bool HasRetiredItems() const { return m_retiredRoots != 0; }
    // Whether the handle names an item, retired or not.
    bool HandleLives(HTREEITEM item) const;
    // Deletes the retired items now, unless a rebuild is under way.
    void SettleRetired() const;
    // Items inserted and set while a scope lives are being built: their changes are not noted,
    // and retired items are kept.
    class BuildScope
    {
    public:
        explicit BuildScope(CTreeCtrl& tree) : m_tree(tree) { ++m_tree.m_building; }
        ~BuildScope() { --m_tree.m_building; }
        BuildScope(BuildScope const&) = delete;
        BuildScope& operator=(BuildScope const&) = delete;

    private:
        CTreeCtrl& m_tree;
    };

private:
    friend class TreeLabelEdit;
    struct Item;
    static constexpr uint32_t NoIndex = 0xFFFFFFFF;

    Item* Find(HTREEITEM item) const;
    Item* Lookup(HTREEITEM item) const;
    bool IsRetired(uint32_t index) const;
    void Touch(uint32_t index);
    // The indices of the parent and of the sibling to insert after (NoIndex: first) that an
    // insertion at (parent, after) means; false when either handle names no item of the place.
    bool Placement(HTREEITEM parent, HTREEITEM after, uint32_t& parentIndex, uint32_t& afterIndex) const;
    void Link(uint32_t index, uint32_t parent, uint32_t after);
    void RetireRoots();
    void FreeRetired();
    // Children first: the order in which a subtree is deleted.
    std::vector<uint32_t> PostOrder(uint32_t index) const;
    bool HasOwnText(HTREEITEM item) const;
    Item& At(uint32_t index) const;
    HTREEITEM HandleOf(uint32_t index) const;
    uint32_t Allocate();
    void Unlink(uint32_t index);
    void Release(uint32_t index);
    void DeleteChildren(uint32_t index);
    void RowsChanged();
    // The scroll position follows the rows lazily, as the first query after a change sees them.
    void SettleRows() const;
    void ClampScroll();
    bool IsExpanded(uint32_t index) const;
    // Sets or clears TVIS_EXPANDED and the counts that depend on it.
    void SetExpandedBit(uint32_t index, bool expanded);
    // The item below parent gained (or lost) delta rows: the expanded ancestors count them.
    void AddShownRows(uint32_t parent, int64_t delta);
    // The item on the next or the previous row (NoIndex past the ends); index must be a row.
    uint32_t NextShown(uint32_t index) const;
    uint32_t PrevShown(uint32_t index) const;
    uint32_t RowIndex(int row) const;
    int LabelLeft(int depth) const;
    void FinishEdit(bool save);
    LRESULT OnTreeMessage(UINT message, WPARAM wParam, LPARAM lParam, bool& handled);

    mutable std::vector<Item> m_items;
    std::vector<uint32_t> m_freeSlots;
    // The texts of items inserted with one, by slot.
    std::unordered_map<uint32_t, std::wstring> m_texts;
    uint32_t m_firstRoot = NoIndex;
    uint32_t m_lastRoot = NoIndex;
    UINT m_count = 0;

    // Rows shown: the roots' counts summed.
    uint32_t m_shownRows = 0;
    mutable bool m_rowsDirty = false;
    // The last row found and its item: walking the rows one by one costs a step each.
    mutable uint32_t m_cursorIndex = NoIndex;
    mutable int m_cursorRow = -1;
    uint64_t m_rowsVersion = 0;
    int m_scrollRow = 0;
    int m_scrollX = 0;
    mutable int m_rowsWidth = -1; // -1: to be measured again
    mutable int m_rowsWidthRow = 0;   // the first row and the count of rows it was measured over
    mutable int m_rowsWidthCount = 0;
    int m_itemHeight = DefaultItemHeight;
    int m_indent = DefaultIndent;
    int m_stateIconWidth = 0;
    std::function<int(std::wstring const&)> m_measure;

    COLORREF m_bkColor = CLR_NONE;
    COLORREF m_textColor = CLR_NONE;
    bool m_redraw = true;
    uint64_t m_redrawSuspensions = 0;
    bool m_repaintPending = false;

    HTREEITEM m_dropTarget = nullptr;
    std::unique_ptr<CEdit> m_edit;
    // An editor ended from inside its own message handling lives until the next edit.
    std::unique_ptr<CEdit> m_retiredEdit;
    HTREEITEM m_editItem = nullptr;
    bool m_endingEdit = false;

    // Retired top-level items, chained as roots are.
    uint32_t m_retiredFirst = NoIndex;
    uint32_t m_retiredLast = NoIndex;
    uint32_t m_retiredRoots = 0;
    int m_building = 0;
    bool m_freeingRetired = false;
    // Items changed since they were built, for the next retirement; too many means all.
    std::vector<uint32_t> m_changed;
    bool m_changedAll = false;
    // Retired items that may not be taken back: the changed ones, their ancestors, and those that
    // gave up a child.
    std::unordered_set<uint32_t> m_blocked;
    bool m_blockedAll = false;
};

// Holds a tree's drawing while it lives, as WM_SETREDRAW does, and gives back the state it
// found: the changes made meanwhile are painted once, when drawing resumes.
class RedrawSuspension
{
public:
    explicit RedrawSuspension(CTreeCtrl& tree) : m_tree(tree), m_wasOn(tree.IsRedrawEnabled())
    {
        if (m_wasOn)
            m_tree.SendMessage(WM_SETREDRAW, FALSE, 0);
    }
    ~RedrawSuspension()
    {
        if (m_wasOn)
            m_tree.SendMessage(WM_SETREDRAW, TRUE, 0);
    }
    RedrawSuspension(RedrawSuspension const&) = delete;
    RedrawSuspension& operator=(RedrawSuspension const&) = delete;

private:
    CTreeCtrl& m_tree;
    bool m_wasOn;
};
