// The search field of each pane as a script types in it: the query, the results it shows and
// revealing them in the pane's tree.

#include "sonarium/app/script/ScriptRunner.h"

#include "sonarium/app/script/ScriptWords.h"
#include "sonarium/core/host/ProjectBuilder.h"

namespace sn
{
PaneFind* ScriptRunner::FindOf(Words const& words, size_t index, std::wstring& error)
{
    Pane* pane = PaneNamed(words, index, error);
    if (!pane)
        return nullptr;
    std::unique_ptr<PaneFind>& find = m_finds[pane->name];
    // A pane closed and opened again under its name starts with an empty field.
    if (!find || find->View() != pane->view)
        find = std::make_unique<PaneFind>(m_session, pane->view, pane->categories);
    return find.get();
}

void ScriptRunner::AddFindCommands()
{
    m_commands[L"find"] = [this](Words const& words, std::wstring& error)
    {
        if (!WordCount(words, 2, 3, L"find TEXT [PANE]", error))
            return false;
        PaneFind* find = FindOf(words, 2, error);
        if (!find)
            return false;
        find->SetText(words[1]);
        return true;
    };
    m_commands[L"reveal-found"] = [this](Words const& words, std::wstring& error)
    {
        if (!WordCount(words, 2, 3, L"reveal-found N|all [PANE]", error))
            return false;
        PaneFind* find = FindOf(words, 2, error);
        if (!find)
            return false;
        const size_t count = find->Count();
        std::vector<size_t> rows;
        if (words[1] == L"all")
            for (size_t i = 0; i < count; ++i)
                rows.push_back(i);
        else
        {
            size_t number = 0;
            if (words[1].empty() || words[1].size() > 9 || words[1].find_first_not_of(L"0123456789") != std::wstring::npos ||
                (number = std::stoul(words[1])) == 0)
                return Fail(error, L"not a result number: \"" + words[1] + L"\" (1 for the first, or all)");
            if (number > count)
                return Fail(error, L"there is no result " + words[1] + L": the search found " + std::to_wstring(count));
            rows.push_back(number - 1);
        }
        if (!find->Reveal(rows))
            return Fail(error, L"the search found nothing to reveal");
        return true;
    };
    AddSubcommands(L"print",
                   {{L"found",
                     [this](Words const& words, std::wstring& error)
                     {
                         if (!WordCount(words, 2, 3, L"print found [PANE]", error))
                             return false;
                         PaneFind* find = FindOf(words, 2, error);
                         if (!find)
                             return false;
                         const size_t count = find->Count();
                         std::vector<std::wstring> lines;
                         if (!find->Query().problem.empty())
                             lines.push_back(L"(" + find->Query().problem + L")");
                         for (size_t i = 0; i < count; ++i)
                             lines.push_back(PathOf(*find->ObjectAt(i)));
                         Indented(m_out, L"found " + std::to_wstring(count) + L" \"" + find->Text() + L"\"", lines);
                         return true;
                     }}});
}
} // namespace sn
