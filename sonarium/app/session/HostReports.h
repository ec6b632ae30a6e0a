#pragma once
// What the host has to tell the user besides the dialogs of the commands themselves: a change it
// refused (shown in a message box once the gesture that asked for it is over), and the problems
// of the preferences file (told once each to whoever shows them: the window's status bar and a
// message box, or standard error in a script run).

#include "host/NotifyMgr.h"
#include "platform/Wnd.h"

#include <functional>
#include <string>
#include <vector>

namespace sn
{
class PreferencesStore;

class HostReports : public CWnd
{
public:
    explicit HostReports(PreferencesStore& preferences);
    ~HostReports() override;
    HostReports(HostReports const&) = delete;
    HostReports& operator=(HostReports const&) = delete;

    using Listener = std::function<void(std::wstring const&)>;
    // Receives each preference problem once; problems found before are told at the next report.
    void SetPreferenceListener(Listener listener) { m_preferenceListener = std::move(listener); }
    // Tells the listener the preference problems it has not been told yet.
    void ReportPreferenceProblems();

    // The refusals not shown yet, which are then not shown: a script line that asked for the change
    // fails with them instead.
    std::vector<std::wstring> TakeRefusals();

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

    static constexpr const wchar_t* kRefusalCaption = L"Change Not Made";

private:
    void OnHost(CNotifyItemBase* item);
    void ShowRefusals();

    PreferencesStore& m_preferences;
    Listener m_preferenceListener;
    size_t m_preferenceProblemsTold = 0;
    std::vector<std::wstring> m_refusals;
};
} // namespace sn
