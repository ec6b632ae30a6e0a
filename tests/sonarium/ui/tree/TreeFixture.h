#pragma once
// A project tree control in a parent window that records what the control tells it.

#include "HostFixture.h"

#include "host/PETreeCtrl.h"
#include "host/ProjectManager.h"
#include "host/TreeNodeWithObject.h"

#include <map>
#include <memory>
#include <vector>

struct TreeNotification
{
    UINT code = 0;
    HTREEITEM oldItem = nullptr;
    HTREEITEM newItem = nullptr;
    int batchDepth = 0;
    std::wstring text;
    bool hasText = false;
    bool inspectionDeferred = false;
};

class RecordingParent : public CWnd
{
public:
    std::vector<TreeNotification> notes;
    // What the parent answers, per notification code (0 when absent).
    std::map<UINT, LRESULT> answers;
    PETreeCtrl* tree = nullptr;
    std::vector<CPoint> contextMenus;

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message == WM_CONTEXTMENU)
            contextMenus.emplace_back(static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam)));
        return CWnd::WindowProc(message, wParam, lParam);
    }

    // Text put in the label editor when it asks to begin, unless empty.
    std::wstring fillEditor;

    std::vector<UINT> Codes() const
    {
        std::vector<UINT> codes;
        for (auto const& note : notes)
            codes.push_back(note.code);
        return codes;
    }
    size_t Count(UINT code) const
    {
        size_t n = 0;
        for (auto const& note : notes)
            n += note.code == code;
        return n;
    }

protected:
    BOOL OnNotify(WPARAM, LPARAM lParam, LRESULT* result) override
    {
        auto* header = reinterpret_cast<NMHDR*>(lParam);
        TreeNotification note;
        note.code = header->code;
        note.batchDepth = tree ? tree->SelectionBatchDepth() : 0;
        note.inspectionDeferred = tree && tree->IsInspectionDeferred();
        if (header->code == TVN_SELCHANGEDW)
        {
            auto* info = reinterpret_cast<NMTREEVIEWW*>(lParam);
            note.oldItem = info->itemOld.hItem;
            note.newItem = info->itemNew.hItem;
            // Keep the nodes' marks as the explorer view does.
            if (PMTreeNode* node = tree ? tree->GetNodeFromItem(note.oldItem) : nullptr)
                node->IsSelected(false);
            if (PMTreeNode* node = tree ? tree->GetNodeFromItem(note.newItem) : nullptr)
                node->IsSelected(true);
        }
        else if (header->code == TVN_BEGINLABELEDITW || header->code == TVN_ENDLABELEDITW)
        {
            auto* info = reinterpret_cast<NMTVDISPINFOW*>(lParam);
            note.newItem = info->item.hItem;
            note.hasText = info->item.pszText != nullptr;
            if (info->item.pszText)
                note.text = info->item.pszText;
            // A parent may put the full name in the editor, as the explorer does.
            if (header->code == TVN_BEGINLABELEDITW && !fillEditor.empty() && tree && tree->GetEditControl())
                tree->GetEditControl()->SetWindowText(fillEditor.c_str());
        }
        notes.push_back(note);
        auto answer = answers.find(header->code);
        *result = answer == answers.end() ? 0 : answer->second;
        return TRUE;
    }
};

class TreeTest : public HostTest
{
protected:
    static constexpr int Width = 400;
    static constexpr int Rows = 10;

    void SetUp() override
    {
        HostTest::SetUp();
        m_parent.Create(L"Parent", L"", WS_VISIBLE, CRect(0, 0, Width, 400), nullptr, 0);
        m_tree.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, Width, Rows * CTreeCtrl::DefaultItemHeight),
                      &m_parent, 2011);
        m_parent.tree = &m_tree;
    }

    void TearDown() override
    {
        m_tree.DestroyWindow();
        m_parent.DestroyWindow();
        m_roots.clear();
        HostTest::TearDown();
    }

    // Inserts the top work unit of a category as a root.
    HTREEITEM InsertRoot(OrbObjectCategories::Category category)
    {
        CSmartPtr<IOrbWorkUnit> unit;
        EXPECT_TRUE(ProjectManager::m_pInstance->GetTopWorkUnit(category, unit));
        m_roots.emplace_back(NodeFactory::CreateNode(nullptr, unit.Get()));
        return m_tree.InsertItem(m_roots.back().get(), TVI_ROOT, TVI_LAST);
    }

    HTREEITEM Item(const std::wstring& path)
    {
        return m_tree.GetItemWithGUID(*At(path)->GetGUID(), TVI_ROOT);
    }

    CPoint LabelOf(HTREEITEM item)
    {
        RECT label{};
        EXPECT_TRUE(m_tree.GetItemRect(item, &label, TRUE));
        return CPoint(label.left + 2, (label.top + label.bottom) / 2);
    }
    CPoint ButtonOf(HTREEITEM item)
    {
        PETreeRow row = m_tree.GetRow(item);
        return CPoint((row.button.left + row.button.right) / 2, (row.row.top + row.row.bottom) / 2);
    }
    CPoint IconOf(HTREEITEM item)
    {
        PETreeRow row = m_tree.GetRow(item);
        return CPoint(row.icon.left + 1, (row.row.top + row.row.bottom) / 2);
    }
    std::vector<std::wstring> RowTexts()
    {
        std::vector<std::wstring> texts;
        for (int row = 0; row < m_tree.GetRowCount(); ++row)
            texts.push_back(
                std::wstring(m_tree.GetRowItem(row) ? m_tree.GetItemText(m_tree.GetRowItem(row)) : L"?"));
        return texts;
    }

    RecordingParent m_parent;
    PETreeCtrl m_tree;
    std::vector<std::unique_ptr<PMTreeNode>> m_roots;
};
