#pragma once
// Explorer views in a running reference host: a main window that answers the host's
// questions, panes that hold the views, and the dialog service answering from a script.

#include "HostFixture.h"

#include "explorer/DlgProjectExplorer.h"
#include "host/HostMessages.h"
#include "host/OrbObjectCategories.h"
#include "host/Utf8.h"
#include "platform/WindowSystem.h"
#include "sonarium/core/model/CurrentState.h"
#include "sonarium/core/model/ModelNotify.h"
#include "sonarium/ui/dialogs/ScriptedDialogService.h"

#include <set>
#include <sstream>
#include <string>
#include <vector>

// The host's main window: it lets every view drive the transport unless told otherwise, and
// remembers what views asked it to refresh.
class TestMainWindow : public CWnd
{
public:
    bool allowTransport = true;
    std::vector<HostMessages::MainWindowRefreshRecord> refreshes;

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message == HostMessages::MayDriveTransport)
            return allowTransport ? 1 : 0;
        if (message == HostMessages::MainWindowCommand && wParam == HostMessages::MainWindowRefreshViews)
            refreshes.push_back(*reinterpret_cast<const HostMessages::MainWindowRefreshRecord*>(lParam));
        return CWnd::WindowProc(message, wParam, lParam);
    }
};

// A view whose tree opens the label editor on any item, as renaming does for a name the host
// lets change; it remembers the items whose editor was asked for.
class EditableView : public DlgProjectExplorer
{
public:
    using DlgProjectExplorer::DlgProjectExplorer;

    std::vector<HTREEITEM> edited;

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        auto* header = reinterpret_cast<NMHDR*>(lParam);
        if (message == WM_NOTIFY && header && header->code == TVN_BEGINLABELEDITW)
        {
            edited.push_back(reinterpret_cast<NMTVDISPINFOW*>(header)->item.hItem);
            return 0;
        }
        return DlgProjectExplorer::WindowProc(message, wParam, lParam);
    }
};

// What the host's other panes heard from the views: one line per notification, the channel,
// the event and the names of the objects carried ("EventViewer/ObjectsList Rain,Thunder"),
// and for an inspection whether a double click asked for it.
class HostEars
{
public:
    HostEars()
    {
        for (const char* channel : {"EventViewer", "Transport", "SonariumObject", "Inspector"})
        {
            m_channels.emplace_back(channel);
            INotifyMgr::m_pInstance->Register(m_channels.back(), NotifyDelegate(this, &HostEars::OnNotify));
        }
    }
    ~HostEars()
    {
        if (INotifyMgr::m_pInstance)
            for (const ROString& channel : m_channels)
                INotifyMgr::m_pInstance->UnRegister(channel, NotifyDelegate(this, &HostEars::OnNotify));
    }
    HostEars(const HostEars&) = delete;
    HostEars& operator=(const HostEars&) = delete;

    // What was heard since the last call.
    std::vector<std::string> Take() { return std::exchange(m_heard, {}); }

private:
    void OnNotify(CNotifyItemBase* item)
    {
        const std::string event = item->pData->event.c_str();
        // Of the object channel only what a view asks of the transport.
        if (std::string(item->channel.c_str()) == "SonariumObject" && event != "PlayInPrimaryTransport")
            return;
        std::ostringstream line;
        line << item->channel.c_str() << "/" << event;
        std::vector<IOrbObject*> objects;
        auto* one = dynamic_cast<OrbObjNotify::OrbObjectNotifyParam*>(item->pData);
        if (auto* many = dynamic_cast<OrbObjNotify::MultiObjectNotificationParam*>(item->pData))
            objects = many->objects;
        else if (one && one->object)
            objects.push_back(one->object);
        for (size_t i = 0; i < objects.size(); ++i)
            line << (i ? "," : " ") << (objects[i] ? Utf8::FromWide(objects[i]->GetName().c_str()) : "?");
        auto* inspect = dynamic_cast<sn::notify::InspectParam*>(item->pData);
        if (inspect && inspect->fromDoubleClick)
            line << " (double click)";
        m_heard.push_back(line.str());
    }

    std::vector<ROString> m_channels;
    std::vector<std::string> m_heard;
};

// Raises "LockUIUpdate" by one for its lifetime, as the host's long operations do.
class UILock
{
public:
    UILock() { Prop() = Prop().GetInt() + 1; }
    ~UILock() { Prop() = Prop().GetInt() - 1; }
    UILock(const UILock&) = delete;
    UILock& operator=(const UILock&) = delete;

private:
    static CProp& Prop() { return GlobalPropMgr::m_pInstance->Prop(sn::propLockUIUpdate, 3, 1); }
};

class ExplorerTest : public HostTest
{
protected:
    void SetUp() override
    {
        HostTest::SetUp();
        m_main.Create(L"Main", L"Sonarium", WS_VISIBLE, CRect(0, 0, 800, 600), nullptr, 0);
        HostRef().SetMainWnd(&m_main);
    }

    void TearDown() override
    {
        for (DlgProjectExplorer* view : std::vector<DlgProjectExplorer*>(m_views))
            CloseView(view);
        // A dialog the test did not expect is a fault, not a silent cancel.
        EXPECT_EQ(0u, m_dialogs.UnansweredCount()) << Utf8::FromWide(m_dialogs.Transcript());
        EXPECT_EQ(0u, m_dialogs.PendingAnswers()) << "an answer was queued for a dialog never shown";
        HostRef().SetMainWnd(nullptr);
        m_main.DestroyWindow();
        HostTest::TearDown();
    }

    // Builds a view as the host does: constructor, window, then the view protocol's load.
    template <class View = DlgProjectExplorer>
    View* OpenView(std::set<OrbObjectCategories::Category> categories, bool load = true)
    {
        auto* view = new View(categories, &m_main);
        view->Create(DlgProjectExplorer::IDD, &m_main);
        view->MoveWindow(0, 0, 300, 20 + 20 * CTreeCtrl::DefaultItemHeight);
        if (load)
            view->OnLoadView();
        WindowSystem::Get().RunUntilIdle();
        m_views.push_back(view);
        return view;
    }

    // As the host removes a view: the view protocol first, then the window (which deletes it).
    void CloseView(DlgProjectExplorer* view)
    {
        view->OnDeleteView();
        view->DestroyWindow();
        m_views.erase(std::remove(m_views.begin(), m_views.end(), view), m_views.end());
    }

    // The item of the object at a path, or null when the view does not show it.
    HTREEITEM ItemOf(DlgProjectExplorer* view, const std::wstring& path)
    {
        return view->GetTreeCtrl().GetItemWithGUID(*At(path)->GetGUID(), TVI_ROOT);
    }

    // Expands the rows down to the object at a path and returns its item.
    HTREEITEM Reveal(DlgProjectExplorer* view, const std::wstring& path)
    {
        for (size_t end = path.find(L'/');; end = path.find(L'/', end + 1))
        {
            HTREEITEM item = ItemOf(view, path.substr(0, end));
            if (!item || end == std::wstring::npos)
                return item;
            view->GetTreeCtrl().Expand(item, TVE_EXPAND);
        }
    }

    // A press and release on an item's label, with MK_ modifiers.
    void ClickOn(DlgProjectExplorer* view, const std::wstring& path, UINT keys = 0)
    {
        view->GetTreeCtrl().Click(LabelCenter(view, Reveal(view, path)), keys);
    }

    // A click on the first row, then Ctrl+clicks on the others, as a user picks several rows.
    void SelectRows(DlgProjectExplorer* view, std::initializer_list<std::wstring> paths)
    {
        UINT keys = 0;
        for (const std::wstring& path : paths)
        {
            ClickOn(view, path, keys);
            keys = MK_CONTROL;
        }
        WindowSystem::Get().RunUntilIdle();
    }

    CPoint LabelCenter(DlgProjectExplorer* view, HTREEITEM item)
    {
        CRect label;
        EXPECT_TRUE(view->GetTreeCtrl().GetItemRect(item, &label, TRUE));
        return CPoint((label.left + label.right) / 2, (label.top + label.bottom) / 2);
    }

    // The rows' texts with two spaces per level, as a reader sees the tree.
    std::vector<std::wstring> Rows(DlgProjectExplorer* view)
    {
        PETreeCtrl& tree = view->GetTreeCtrl();
        std::vector<std::wstring> rows;
        for (int row = 0; row < tree.GetRowCount(); ++row)
        {
            HTREEITEM item = tree.GetRowItem(row);
            rows.push_back(std::wstring(2 * tree.GetItemDepth(item), L' ') + tree.GetItemText(item));
        }
        return rows;
    }

    TestMainWindow m_main;
    std::vector<DlgProjectExplorer*> m_views;
    sn::ScriptedDialogService m_dialogs;
    sn::ScopedDialogService m_installDialogs{&m_dialogs};
};
