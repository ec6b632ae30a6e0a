// Keyboard habits of native tree controls beyond moving the focus: finding a row by typing the
// start of its text, and expanding a whole branch at once.

#include "host/MultiSelectionTreeCtrl.h"

#include "platform/WindowSystem.h"

#include <algorithm>
#include <cwctype>

namespace
{
bool StartsWithIgnoringCase(std::wstring const& text, std::wstring const& prefix)
{
    return text.size() >= prefix.size() &&
           std::equal(prefix.begin(), prefix.end(), text.begin(),
                      [](wchar_t a, wchar_t b) { return std::towlower(a) == std::towlower(b); });
}

// "aaa": the user presses one letter again and again to step through the rows it starts.
bool OneLetterRepeated(std::wstring const& typed)
{
    return typed.size() > 1 &&
           std::all_of(typed.begin(), typed.end(),
                       [&](wchar_t c) { return std::towlower(c) == std::towlower(typed.front()); });
}
} // namespace

HTREEITEM MultiSelectionTreeCtrl::TypeAheadTarget(std::wstring const& typed, bool fromNextRow) const
{
    const int rows = GetRowCount();
    HTREEITEM focus = GetFocusedItem();
    const int focusRow = focus ? GetItemRow(focus) : -1;
    const int start = focusRow < 0 ? 0 : (focusRow + (fromNextRow ? 1 : 0)) % std::max(rows, 1);
    for (int i = 0; i < rows; ++i)
    {
        HTREEITEM item = GetRowItem((start + i) % rows);
        if (StartsWithIgnoringCase(GetItemText(item), typed))
            return item;
    }
    return nullptr;
}

void MultiSelectionTreeCtrl::TypeChar(wchar_t ch)
{
    if (!m_hWnd)
        return;
    if (CEdit* edit = GetEditControl())
    {
        edit->TypeText(std::wstring(1, ch));
        return;
    }
    if (!std::iswprint(ch))
        return;
    const DWORD now = WindowSystem::Get().Now();
    if (now - m_typeAheadAt > k_typeAheadMs)
        m_typeAhead.clear();
    m_typeAheadAt = now;
    // A blank starts no search, but belongs to one under way ("Default Work Unit").
    if (ch == L' ' && m_typeAhead.empty())
        return;
    m_typeAhead += ch;
    const bool stepping = m_typeAhead.size() == 1 || OneLetterRepeated(m_typeAhead);
    HTREEITEM target = TypeAheadTarget(stepping ? m_typeAhead.substr(0, 1) : m_typeAhead, stepping);
    if (!target)
        return;
    OpenBatch();
    SetFocusItem(target);
    SelectOnly(target, TVC_BYKEYBOARD);
    m_anchor = target;
    EnsureVisible(target);
    CloseBatch();
}

void MultiSelectionTreeCtrl::ExpandAllBelow(HTREEITEM item)
{
    RedrawSuspension quiet(*this);
    std::vector<HTREEITEM> pending{item};
    while (!pending.empty())
    {
        HTREEITEM next = pending.back();
        pending.pop_back();
        if (!ItemHasChildren(next) || !Expand(next, TVE_EXPAND))
            continue;
        for (HTREEITEM child = GetChildItem(next); child; child = GetNextSiblingItem(child))
            pending.push_back(child);
    }
}
