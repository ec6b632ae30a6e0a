#include "sonarium/app/session/HostReports.h"

#include "host/MessageBox.h"
#include "host/StringHelp.h"
#include "sonarium/core/model/ModelNotify.h"
#include "sonarium/core/prefs/PreferencesStore.h"

namespace sn
{
namespace
{
constexpr UINT kShowRefusals = WM_USER + 1;
} // namespace

HostReports::HostReports(PreferencesStore& preferences) : m_preferences(preferences)
{
    Create(L"SonariumHostReports", L"", 0, CRect(0, 0, 0, 0), nullptr, 0);
    if (INotifyMgr::m_pInstance)
        INotifyMgr::m_pInstance->Register(notify::chHost, NotifyDelegate(this, &HostReports::OnHost));
}

HostReports::~HostReports()
{
    if (INotifyMgr::m_pInstance)
        INotifyMgr::m_pInstance->UnRegister(notify::chHost, NotifyDelegate(this, &HostReports::OnHost));
    DestroyWindow();
}

void HostReports::ReportPreferenceProblems()
{
    const std::vector<std::wstring>& problems = m_preferences.Problems();
    if (!m_preferenceListener)
        return;
    for (; m_preferenceProblemsTold < problems.size(); ++m_preferenceProblemsTold)
        m_preferenceListener(problems[m_preferenceProblemsTold]);
}

void HostReports::OnHost(CNotifyItemBase* item)
{
    auto* refused = item ? dynamic_cast<notify::EditRefusedParam*>(item->pData) : nullptr;
    if (!refused)
        return;
    // The refusal comes from inside the command that asked: the box waits until it is over.
    if (m_refusals.empty())
        PostMessage(kShowRefusals);
    // One gesture on many objects meets the same refusal for each: it is said once.
    if (m_refusals.empty() || m_refusals.back() != refused->message)
        m_refusals.push_back(refused->message);
}

std::vector<std::wstring> HostReports::TakeRefusals()
{
    std::vector<std::wstring> refusals;
    refusals.swap(m_refusals);
    return refusals;
}

void HostReports::ShowRefusals()
{
    for (std::wstring const& text : TakeRefusals())
        CXMessageBox(text.c_str(), MB_OK | MB_ICONWARNING, StringHelp::Localize(kRefusalCaption));
}

LRESULT HostReports::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == kShowRefusals)
    {
        ShowRefusals();
        return 0;
    }
    return CWnd::WindowProc(message, wParam, lParam);
}
} // namespace sn
