#pragma once
// What the project manager reports while it loads or unloads work units, and the host's
// progress dialog that shows it.

#include "host/StdStr.h"

#include <cstddef>
#include <vector>

class IProjectLoadProgress
{
public:
    virtual ~IProjectLoadProgress() = default;
    // The work begins: what is done ("Loading Work Units") and in how many steps.
    virtual void Begin(const CStdStr<wchar_t>& operation, size_t steps) = 0;
    // One step begins: the work unit it reads or drops. False when the user asked to stop.
    virtual bool Step(const CStdStr<wchar_t>& item) = 0;
    // A step went wrong; the text names the file and what is wrong.
    virtual void Problem(const CStdStr<wchar_t>& text) = 0;
    // The work is over: the dialog closes, listing the problems if there were any.
    virtual void End() = 0;
};

class CDlgLoadProjectProgress : public IProjectLoadProgress
{
public:
    CDlgLoadProjectProgress();
    ~CDlgLoadProjectProgress() override;
    CDlgLoadProjectProgress(const CDlgLoadProjectProgress&) = delete;
    CDlgLoadProjectProgress& operator=(const CDlgLoadProjectProgress&) = delete;

    // The project the work is done on, shown in the dialog.
    void SetProjectPath(const CStdStr<wchar_t>& path) { m_projectPath = path; }

    void Begin(const CStdStr<wchar_t>& operation, size_t steps) override;
    bool Step(const CStdStr<wchar_t>& item) override;
    void Problem(const CStdStr<wchar_t>& text) override;
    void End() override;

private:
    CStdStr<wchar_t> m_projectPath;
    std::vector<CStdStr<wchar_t>> m_problems;
    size_t m_done = 0;
    bool m_open = false;
    bool m_cancelled = false;
};
