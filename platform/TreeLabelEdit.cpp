// The tree's in-place label editor: an edit control over the label that ends with Enter
// (save), Escape (cancel) or the loss of the keyboard focus (save).

#include "platform/TreeCtrl.h"

#include "platform/WindowSystem.h"

class TreeLabelEdit : public CEdit
{
public:
    explicit TreeLabelEdit(CTreeCtrl& tree) : m_tree(tree) {}

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message == WM_KEYDOWN && (wParam == VK_RETURN || wParam == VK_ESCAPE))
        {
            m_tree.FinishEdit(wParam == VK_RETURN);
            return 0;
        }
        const LRESULT result = CEdit::WindowProc(message, wParam, lParam);
        if (message == WM_KILLFOCUS)
            m_tree.FinishEdit(true);
        return result;
    }

private:
    CTreeCtrl& m_tree;
};

CEdit* CTreeCtrl::EditLabel(HTREEITEM item)
{
    // An editor opened from the end notification would replace the one still closing.
    if (m_endingEdit)
        return nullptr;
    if (m_edit)
        FinishEdit(true);
    m_retiredEdit.reset();
    RECT label;
    if (!m_hWnd || !GetItemRect(item, &label, TRUE))
        return nullptr;

    // The editor exists while the parent is asked, so that the parent can fill it.
    std::wstring text = GetItemText(item);
    auto edit = std::make_unique<TreeLabelEdit>(*this);
    if (!edit->Create(WS_CHILD, label, this, 1))
        return nullptr;
    edit->SetWindowText(text.c_str());
    m_edit = std::move(edit);
    m_editItem = item;

    NMTVDISPINFOW info{};
    info.item.mask = TVIF_HANDLE | TVIF_TEXT | TVIF_PARAM | TVIF_STATE;
    info.item.hItem = item;
    info.item.pszText = text.data();
    info.item.cchTextMax = static_cast<int>(text.size());
    info.item.state = GetItemState(item, 0xFFFF);
    info.item.lParam = GetItemData(item);
    if (NotifyParent(info.hdr, TVN_BEGINLABELEDITW) != 0 || !m_edit || m_editItem != item)
    {
        if (m_edit)
            m_edit->DestroyWindow();
        m_edit.reset();
        m_editItem = nullptr;
        return nullptr;
    }
    // Selected after the parent had its say, since it may have put other text in the editor:
    // what the user types replaces the whole name.
    m_edit->SetSel(0, -1);
    m_edit->ShowWindow(SW_SHOW);
    m_edit->SetFocus();
    return m_edit.get();
}

BOOL CTreeCtrl::EndEditLabelNow(BOOL cancel)
{
    if (!m_edit)
        return FALSE;
    FinishEdit(!cancel);
    return TRUE;
}

void CTreeCtrl::FinishEdit(bool save)
{
    if (!m_edit || m_endingEdit)
        return;
    m_endingEdit = true;
    const HTREEITEM item = m_editItem;
    std::wstring text = m_edit->GetWindowText();

    // The editor is still there while the parent handles the end, as the parent may ask.
    NMTVDISPINFOW info{};
    info.item.mask = TVIF_HANDLE | TVIF_TEXT | TVIF_PARAM;
    info.item.hItem = item;
    info.item.pszText = save ? text.data() : nullptr;
    info.item.cchTextMax = static_cast<int>(text.size());
    info.item.lParam = GetItemData(item);
    const LRESULT accepted = NotifyParent(info.hdr, TVN_ENDLABELEDITW);
    if (save && accepted && HasOwnText(item))
        SetItemText(item, text.c_str());

    const bool hadFocus = m_edit->GetSafeHwnd() && ::GetFocus() == m_edit->GetSafeHwnd();
    if (hadFocus && m_hWnd)
        SetFocus();
    if (m_edit->GetSafeHwnd())
        m_edit->DestroyWindow();
    m_retiredEdit = std::move(m_edit);
    m_editItem = nullptr;
    m_endingEdit = false;
    Repaint();
}
