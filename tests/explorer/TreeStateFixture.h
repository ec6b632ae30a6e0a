#pragma once
// Views whose remembered state outlives them: projects with stable GUIDs, a host that can be
// restarted over the same preferences file, and readers of what the views stored there.

#include "ExplorerFixture.h"

#include "host/UserPreferences.h"

#include <cstring>
#include <cwchar>
#include <memory>
#include <optional>
#include <random>

class TreeStateTest : public ExplorerTest
{
protected:
    static constexpr const wchar_t* kSection = L"ProjectExplorer\\<PROJECT>";

    // The same text always gives the same GUIDs, so a reopened project is the same project.
    void OpenStable(const std::wstring& text)
    {
        std::mt19937_64 ids(20240611);
        std::wstring error;
        auto project = sn::ProjectBuilder::Build(L"Test", text, &error, &ids);
        ASSERT_TRUE(project) << Utf8::FromWide(error);
        m_host->SetProject(std::move(project));
    }

    void RestartHost()
    {
        for (DlgProjectExplorer* view : std::vector<DlgProjectExplorer*>(m_views))
            CloseView(view);
        m_host.reset();
        sn::HostOptions options;
        options.preferencesFile = m_dir / "preferences.json";
        m_host = std::make_unique<sn::Host>(options);
        HostRef().SetMainWnd(&m_main);
    }

    // As the host does for a pane of a synchronisation group: the group is known before the load.
    DlgProjectExplorer* OpenViewInGroup(std::set<OrbObjectCategories::Category> categories, UINT_PTR group)
    {
        DlgProjectExplorer* view = OpenView(std::move(categories), false);
        view->OnSyncGroupChanged(group);
        view->OnLoadView();
        WindowSystem::Get().RunUntilIdle();
        return view;
    }

    void ClickButton(DlgProjectExplorer* view, HTREEITEM item)
    {
        view->GetTreeCtrl().EnsureVisible(item);
        const RECT button = view->GetTreeCtrl().GetRow(item).button;
        view->GetTreeCtrl().Click(CPoint((button.left + button.right) / 2, (button.top + button.bottom) / 2),
                                  0);
    }

    // A click on a row's label, scrolled into view first as a user would.
    void ClickRow(DlgProjectExplorer* view, const std::wstring& path, UINT keys = 0)
    {
        HTREEITEM item = ItemOf(view, path);
        ASSERT_TRUE(item) << "no row for " << Utf8::FromWide(path);
        view->GetTreeCtrl().EnsureVisible(item);
        view->GetTreeCtrl().Click(LabelCenter(view, item), keys);
    }

    bool IsExpanded(DlgProjectExplorer* view, HTREEITEM item)
    {
        return item && (view->GetTreeCtrl().GetItemState(item, TVIS_EXPANDED) & TVIS_EXPANDED) != 0;
    }

    HTREEITEM FirstVisible(DlgProjectExplorer* view) { return view->GetTreeCtrl().GetFirstVisibleItem(); }

    bool IsInView(DlgProjectExplorer* view, HTREEITEM item)
    {
        const PETreeCtrl& tree = view->GetTreeCtrl();
        const int row = tree.GetItemRow(item);
        return row >= tree.GetScrollRow() &&
               row < tree.GetScrollRow() + static_cast<int>(tree.GetVisibleCount());
    }

    // The GUID list stored under a key, or nothing when the key is absent.
    std::optional<std::vector<GUID>> StoredGuids(const wchar_t* key)
    {
        unsigned char* data = nullptr;
        size_t size = 0;
        if (!IUserPreferences::Get()->GetBinaryValue(kSection, key, &data, &size))
            return std::nullopt;
        std::unique_ptr<unsigned char[]> owned(data);
        std::vector<GUID> guids(size / sizeof(GUID));
        if (!guids.empty())
            std::memcpy(guids.data(), owned.get(), guids.size() * sizeof(GUID));
        return guids;
    }

    GUID StoredGuid(const wchar_t* key)
    {
        GUID id = GUID_NULL;
        IUserPreferences::Get()->GetGUIDValue(id, kSection, key, GUID_NULL);
        return id;
    }

    GUID IdOf(const std::wstring& path) { return *At(path)->GetGUID(); }
};

// Project text lines: count objects of a kind named prefix00, prefix01 ..., indented.
inline std::wstring NumberedObjects(const std::wstring& prefix, const std::wstring& kind, int count,
                                    int indent)
{
    std::wstring lines;
    for (int i = 0; i < count; ++i)
    {
        wchar_t number[4];
        std::swprintf(number, 4, L"%02d", i);
        lines += std::wstring(static_cast<size_t>(indent), L' ') + prefix + number + L" : " + kind + L"\n";
    }
    return lines;
}
