// Script lines for long and generated scripts: `check` stops at the first step after which the
// panes no longer agree with the project, and `on-error continue` lets a run go past lines the
// host refuses, reporting each.

#include "sonarium/app/script/ScriptRunner.h"

#include "sonarium/app/script/ScriptWords.h"
#include "sonarium/app/session/Consistency.h"
#include "sonarium/app/session/FolderSnapshot.h"

namespace sn
{
void ScriptRunner::AddCheckCommands()
{
    m_commands[L"check"] = [this](Words const& words, std::wstring& error)
    {
        if (!WordCount(words, 1, 2, L"check [snapshot|unchanged]", error))
            return false;
        if (words.size() == 2)
            return CheckFiles(words[1], error);
        const std::vector<std::wstring> problems = ConsistencyProblems(m_session, m_heldLocks);
        if (problems.empty())
            return true;
        std::wstring all;
        for (std::wstring const& problem : problems)
            all += (all.empty() ? L"" : L"; ") + problem;
        return Fail(error, L"the session disagrees with the project: " + all);
    };
    m_commands[L"on-error"] = [this](Words const& words, std::wstring& error)
    {
        if (!WordCount(words, 2, 2, L"on-error stop|continue", error))
            return false;
        if (words[1] != L"stop" && words[1] != L"continue")
            return Fail(error, L"on-error takes stop or continue, not \"" + words[1] + L"\"");
        m_keepGoing = words[1] == L"continue";
        return true;
    };
}

bool ScriptRunner::CheckFiles(std::wstring const& what, std::wstring& error)
{
    Project* project = m_session.GetProject();
    if (!project)
        return Fail(error, L"no project is open");
    if (what == L"snapshot")
    {
        m_snapshot = std::make_unique<FolderSnapshot>(project->GetFolder());
        return true;
    }
    if (what != L"unchanged")
        return Fail(error, L"check takes snapshot or unchanged, not \"" + what + L"\"");
    if (!m_snapshot)
        return Fail(error, L"no snapshot was taken (check snapshot)");
    std::wstring all;
    for (std::wstring const& line : FolderSnapshot(project->GetFolder()).Differences(*m_snapshot))
        all += (all.empty() ? L"" : L"; ") + line;
    return all.empty() || Fail(error, L"the project's files differ from the snapshot: " + all);
}
} // namespace sn
