// The script lines of the explorer's structure commands: running a command on a pane, answering
// the host's importer, batch rename and progress dialogs, and printing one object's state.

#include "sonarium/app/script/ScriptRunner.h"

#include "host/Utf8.h"
#include "sonarium/app/script/ScriptWords.h"
#include "sonarium/app/session/ExplorerCommands.h"
#include "sonarium/core/host/ProjectBuilder.h"
#include "sonarium/core/import/SourceAudio.h"
#include "sonarium/core/model/NodeRules.h"
#include "sonarium/core/model/Project.h"

#include <charconv>

namespace sn
{
namespace
{
std::optional<int> Number(std::wstring const& word)
{
    const std::string digits = Utf8::FromWide(word);
    int value = 0;
    const auto [end, failure] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (digits.empty() || failure != std::errc() || end != digits.data() + digits.size())
        return std::nullopt;
    return value;
}

} // namespace

bool ScriptRunner::Command(Words const& words, std::wstring& error)
{
    if (!WordCount(words, 2, 3, L"command NAME [PANE]", error))
        return false;
    const ExplorerCommand* command = FindExplorerCommand(words[1]);
    if (!command)
    {
        std::wstring names;
        for (ExplorerCommand const& known : ExplorerCommands())
            names += (names.empty() ? L"" : L", ") + std::wstring(known.name);
        return Fail(error, L"unknown command \"" + words[1] + L"\" (" + names + L")");
    }
    Pane* pane = PaneNamed(words, 2, error);
    if (!pane)
        return false;
    // As from a menu of the window the pane has the focus in: the host's selection is the pane's.
    pane->view->SetFocusOnTree();
    command->run(*pane->view);
    return true;
}

bool ScriptRunner::AnswerTool(Words const& words, std::wstring& error)
{
    const std::wstring& kind = words[1];
    const std::wstring what = words.size() > 2 ? words[2] : L"";
    if (kind == L"progress")
    {
        if (!WordCount(words, 4, 4, L"answer progress cancel STEPS", error))
            return false;
        const int steps = Number(words[3]).value_or(-1);
        if (what != L"cancel" || steps < 0)
            return Fail(error, L"usage: answer progress cancel STEPS (the steps done when Cancel is pressed)");
        m_dialogs.CancelProgressAt(static_cast<size_t>(steps));
        return true;
    }
    if (kind == L"importer")
    {
        if (!WordCount(words, 3, 5, L"answer importer cancel | import [sfx | voice LANGUAGE]", error))
            return false;
        if (what == L"cancel" && words.size() == 3)
            return m_dialogs.CancelImporter(), true;
        const std::wstring sound = words.size() > 3 ? words[3] : L"sfx";
        if (what == L"import" && sound == L"sfx" && words.size() <= 4)
            return m_dialogs.AnswerImporter(false), true;
        if (what == L"import" && sound == L"voice" && words.size() == 5)
            return m_dialogs.AnswerImporter(true, words[4]), true;
        return Fail(error, L"usage: answer importer cancel | import [sfx | voice LANGUAGE]");
    }
    // batch-rename
    const wchar_t* usage = L"answer batch-rename cancel | FIND REPLACE [prefix TEXT] [suffix TEXT] [number START [DIGITS]]";
    if (what == L"cancel" && words.size() == 3)
        return m_dialogs.CancelBatchRename(), true;
    if (!WordCount(words, 4, 11, usage, error))
        return false;
    rename::BatchRenameRule rule;
    rule.find = words[2];
    rule.replace = words[3];
    for (size_t i = 4; i < words.size();)
    {
        const std::wstring& option = words[i];
        if ((option == L"prefix" || option == L"suffix") && i + 1 < words.size())
        {
            (option == L"prefix" ? rule.prefix : rule.suffix) = words[i + 1];
            i += 2;
        }
        else if (option == L"number" && i + 1 < words.size() && Number(words[i + 1]))
        {
            rule.numbering = true;
            rule.start = *Number(words[i + 1]);
            i += 2;
            if (i < words.size() && Number(words[i]))
            {
                rule.digits = *Number(words[i]);
                if (rule.digits < 0 || rule.digits > 9)
                    return Fail(error, L"the number's digits go from 0 to 9, not " + words[i]);
                ++i;
            }
        }
        else
            return Fail(error, L"unexpected word \"" + option + L"\"; usage: " + usage);
    }
    m_dialogs.AnswerBatchRename(rule);
    return true;
}

} // namespace sn
