#pragma once
// The host's tree control with a multiple selection and one focused item.
//
// Every change of an item's selection is reported to the parent with TVN_SELCHANGEDW: the
// item that lost it as itemOld, the item that gained it as itemNew (one notification carries
// both when the selection moves from one item to another). Changes made by one user gesture
// form a batch: SelectionBatchDepth() is above 0 while it is delivered, and the parent gets
// NotifyBatchSelChangeEnd once after it. User gestures are methods, called by whatever shows
// the control (a painted view, a script) in client coordinates with MK_ modifier bits.

#include "platform/TreeCtrl.h"

#include <cstdint>
#include <string>
#include <unordered_set>
#include <vector>

class MultiSelectionTreeCtrl : public CTreeCtrl
{
public:
    // WM_NOTIFY code sent to the parent when a batch of selection changes ends.
    static constexpr UINT NotifyBatchSelChangeEnd = 3026;

    MultiSelectionTreeCtrl();
    ~MultiSelectionTreeCtrl() override;

    // The selection in display order.
    HTREEITEM GetFirstSelectedItem() const;
    HTREEITEM GetNextSelectedItem(HTREEITEM item) const;
    void GetSelectedList(std::vector<HTREEITEM>& items) const;
    UINT GetSelectedCount() const
    {
        SettleRetired();
        return static_cast<UINT>(m_selected.size());
    }
    HTREEITEM GetFocusedItem() const;
    BOOL IsSelected(HTREEITEM item) const;
    // Adds the item to the selection, with notification, and makes it the focused row and the
    // anchor of Shift ranges.
    void SelectItem(HTREEITEM item);
    void DeselectItem(HTREEITEM item);
    // Selects every row, or clears the selection, with notifications.
    void SelectAll(bool select);

    // State bits, set silently: TVIS_FOCUSED moves the focus, TVIS_SELECTED joins or leaves the
    // selection without notifying anyone (restoring a state is not a change).
    BOOL SetItemState(HTREEITEM item, UINT state, UINT mask) override;

    int SelectionBatchDepth() const { return m_batchDepth; }
    // While set, the end of a batch must not lead to an inspection: a drag is under way.
    bool IsInspectionDeferred() const { return m_inspectionDeferred || m_dragging; }
    void SetInspectionDeferred(bool deferred) { m_inspectionDeferred = deferred; }
    // Whether an empty selection should also empty the host's transport.
    bool IsTransportClearedOnEmptySelection() const { return m_clearTransportOnEmpty; }
    void SetTransportClearedOnEmptySelection(bool clear) { m_clearTransportOnEmpty = clear; }

    // User gestures.
    void MouseDown(CPoint point, UINT keys);
    void MouseUp(CPoint point, UINT keys);
    void Click(CPoint point, UINT keys);
    // Both clicks of a double click; a second press on an expand button toggles it back.
    void DoubleClick(CPoint point, UINT keys);
    // The second click alone, for a window system that reports the first as a click of its own.
    void SecondClick(CPoint point, UINT keys);
    void RightClick(CPoint point, UINT keys);
    // Besides moving the focus: Backspace goes to the parent, `*` of the numeric keypad
    // (VK_MULTIPLY) expands everything below the focused item, Ctrl+A selects every row.
    void KeyPress(UINT vk, UINT keys);
    // Typing goes to the label editor when one is open.
    void TypeText(std::wstring const& text);
    // A character typed with the tree focused (the label editor takes it when open): the focus
    // and selection move to the next row whose text starts with what was typed in the last
    // k_typeAheadMs; the same letter again moves on to the next row starting with it.
    void TypeChar(wchar_t ch);
    static constexpr DWORD k_typeAheadMs = 1000;
    // Positive: away from the user, scrolling up.
    void Wheel(int delta);
    // The mouse moved far enough with a button held down on an item; ends the gesture.
    bool BeginDrag(CPoint point, bool rightButton);

    // A click on the label of the only selected item, in a tree that already had the focus,
    // opens the label editor once the double-click time has passed without a second click.
    static constexpr UINT_PTR SlowClickEditTimer = 0x5E1C;
    // Whether a slow click is waiting for its editor.
    bool IsLabelEditArmed() const { return m_clickToEdit != nullptr; }

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

protected:
    BOOL SelectCaret(HTREEITEM item) override;
    void OnItemDeleting(HTREEITEM item) override;
    void OnItemExpanding(HTREEITEM item, bool expand) override;
    void OnRetiring() override;

private:
    void SetSelected(HTREEITEM item, bool selected);
    void NotifySelChanged(HTREEITEM oldItem, HTREEITEM newItem, UINT action);
    void ChangeSelection(HTREEITEM item, bool select, UINT action);
    void SelectOnly(HTREEITEM item, UINT action);
    void SelectRange(HTREEITEM anchor, HTREEITEM item, bool keepOthers, UINT action);
    void SetFocusItem(HTREEITEM item);
    void OpenBatch();
    void CloseBatch();
    void EndGesture();
    HTREEITEM NavigationTarget(UINT vk);
    // TreeTypeAhead.cpp
    HTREEITEM TypeAheadTarget(std::wstring const& typed, bool fromNextRow) const;
    void ExpandAllBelow(HTREEITEM item);
    void PlaceCursor(CPoint point);
    // The slow click that edits a label: noted on the press, armed on the release over the same
    // label, dropped by any other gesture.
    void NoteClickToEdit(HTREEITEM item, UINT flags, UINT keys, bool hadFocus);
    void ArmClickToEdit(CPoint point);
    void CancelClickToEdit();
    void OnClickToEditTimer();
    std::vector<HTREEITEM> const& Ordered() const;
    // The items of the rows from and to, both included.
    std::vector<HTREEITEM> RowItems(int from, int to) const;
    // Finding one item's row costs the siblings passed on the way up; from this many rows per
    // selected item on, one walk down the rows orders the selection instead.
    static constexpr size_t k_rowsPerSelectedToWalk = 32;
    // Where an item stands in the selection's order.
    using OrderKey = std::pair<int, uintptr_t>;
    OrderKey KeyOf(HTREEITEM item) const;

    std::unordered_set<HTREEITEM> m_selected;
    mutable std::vector<HTREEITEM> m_ordered;
    mutable bool m_orderDirty = true;
    mutable uint64_t m_orderRowsVersion = 0;
    // Where GetNextSelectedItem stands in m_ordered.
    mutable size_t m_orderCursor = 0;
    HTREEITEM m_focused = nullptr;
    HTREEITEM m_anchor = nullptr;
    // A plain press on an item of a multiple selection keeps it for a drag; the release
    // then selects that item alone.
    HTREEITEM m_pendingSingle = nullptr;
    HTREEITEM m_clickToEdit = nullptr;
    bool m_clickToEditArmed = false;
    int m_batchDepth = 0;
    int m_batchChanges = 0;
    bool m_gestureOpen = false;
    bool m_inspectionDeferred = false;
    bool m_dragging = false;
    bool m_clearTransportOnEmpty = true;
    std::wstring m_typeAhead;
    DWORD m_typeAheadAt = 0;
};
