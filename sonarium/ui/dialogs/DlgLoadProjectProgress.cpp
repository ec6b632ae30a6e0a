// The host's progress dialog for loading and unloading work units, shown through the dialog
// service.

#include "host/ProjectLoadProgress.h"

#include "host/StringHelp.h"
#include "sonarium/ui/dialogs/DialogService.h"

CDlgLoadProjectProgress::CDlgLoadProjectProgress() = default;

CDlgLoadProjectProgress::~CDlgLoadProjectProgress()
{
    End();
}

void CDlgLoadProjectProgress::Begin(const CStdStr<wchar_t>& operation, size_t steps)
{
    End();
    m_problems.clear();
    m_done = 0;
    m_cancelled = false;
    sn::IDialogService* service = sn::CurrentDialogService();
    if (!service)
        return;
    sn::ProgressRequest request;
    request.caption = operation;
    request.text = m_projectPath;
    request.steps = steps;
    service->BeginProgress(request);
    m_open = true;
}

bool CDlgLoadProjectProgress::Step(const CStdStr<wchar_t>& item)
{
    if (m_open && !m_cancelled)
        if (sn::IDialogService* service = sn::CurrentDialogService())
            m_cancelled = !service->StepProgress(m_done, item);
    ++m_done;
    return !m_cancelled;
}

void CDlgLoadProjectProgress::Problem(const CStdStr<wchar_t>& text)
{
    m_problems.push_back(text);
}

void CDlgLoadProjectProgress::End()
{
    if (!m_open)
        return;
    m_open = false;
    if (sn::IDialogService* service = sn::CurrentDialogService())
        service->EndProgress(std::vector<std::wstring>(m_problems.begin(), m_problems.end()));
}
