#include "sonarium/app/script/ScriptRunner.h"

#include "host/Utf8.h"
#include "platform/WindowSystem.h"
#include "sonarium/app/script/ScriptWords.h"
#include "sonarium/app/session/FolderSnapshot.h"
#include "sonarium/core/host/ProjectBuilder.h"
#include "sonarium/core/model/NodeRules.h"

#include <charconv>

namespace sn
{
ScriptRunner::ScriptRunner(AppSession& session, std::wostream& out)
    : m_session(session), m_out(out), m_installDialogs(&m_dialogs)
{
    AddCommands();
}

ScriptRunner::~ScriptRunner() = default;

bool ScriptRunner::Run(std::istream& script, std::string const& name, std::string& error)
{
    error.clear();
    int number = 0;
    for (std::string raw; std::getline(script, raw);)
    {
        ++number;
        std::wstring why;
        const std::wstring line = Utf8::ToWide(raw);
        // Bytes that are not text would otherwise reach a command as replacement characters.
        if (Utf8::FromWide(line) != raw)
            why = L"the line is not valid UTF-8";
        if (!why.empty() || !RunLine(line, why))
        {
            error += (error.empty() ? "" : "\n") + name + ":" + std::to_string(number) + ": " + Utf8::FromWide(why);
            if (!m_keepGoing)
                return false;
        }
    }
    // An answer nobody asked for means the script expected something that did not happen.
    if (m_dialogs.PendingAnswers() > 0 || m_menus.PendingChoices() > 0)
    {
        error += (error.empty() ? "" : "\n") + name + ":" + std::to_string(number) + ": the script ended with " +
                std::to_string(m_dialogs.PendingAnswers()) + " dialog answer(s) and " +
                std::to_string(m_menus.PendingChoices()) + " menu choice(s) that nothing asked for";
    }
    return error.empty();
}

bool ScriptRunner::RunLine(std::wstring const& line, std::wstring& error)
{
    std::optional<Words> split = SplitScriptLine(line);
    if (!split)
        return Fail(error, L"a quote is not closed");
    Words& words = *split;
    if (words.empty())
        return true;
    auto command = m_commands.find(words[0]);
    if (command == m_commands.end())
        return Fail(error, L"unknown command \"" + words[0] + L"\"");
    const size_t unanswered = m_dialogs.UnansweredCount();
    if (!command->second(words, error))
        return false;
    m_session.Pump();
    if (std::wstring failure = m_menus.TakeFailure(); !failure.empty())
        return Fail(error, failure);
    if (m_dialogs.UnansweredCount() > unanswered)
        return Fail(error, L"a dialog was shown with no answer queued: " + m_dialogs.Records().back().text);
    return true;
}

Pane* ScriptRunner::CurrentPane(std::wstring& error)
{
    Pane* pane = m_pane.empty() ? (m_session.Panes().empty() ? nullptr : &m_session.Panes().front())
                                : m_session.FindPane(m_pane);
    if (!pane)
        Fail(error, L"no pane is open");
    return pane;
}

PETreeCtrl* ScriptRunner::Tree(std::wstring& error)
{
    Pane* pane = CurrentPane(error);
    return pane ? &pane->view->GetTreeCtrl() : nullptr;
}

Pane* ScriptRunner::PaneNamed(Words const& words, size_t index, std::wstring& error)
{
    if (index >= words.size())
        return CurrentPane(error);
    Pane* pane = m_session.FindPane(words[index]);
    if (!pane)
        Fail(error, L"no pane named \"" + words[index] + L"\"");
    return pane;
}

HTREEITEM ScriptRunner::Row(std::wstring const& path, std::wstring& error)
{
    PETreeCtrl* tree = Tree(error);
    return tree ? Row(*tree, path, error) : nullptr;
}

HTREEITEM ScriptRunner::Row(PETreeCtrl& tree, std::wstring const& path, std::wstring& error)
{
    Project* project = m_session.GetProject();
    ProjectObject* object = project ? FindByPath(*project, path) : nullptr;
    if (!object)
    {
        Fail(error, L"no object at \"" + path + L"\"");
        return nullptr;
    }
    HTREEITEM item = tree.GetItemWithGUID(object->Id(), TVI_ROOT);
    if (!item)
    {
        Fail(error, L"\"" + path + L"\" has no row in the tree (is its parent collapsed?)");
        return nullptr;
    }
    // A user scrolls to a row before clicking it.
    tree.EnsureVisible(item);
    return item;
}

bool ScriptRunner::OpenPane(Words const& words, std::wstring& error)
{
    if (!WordCount(words, 3, SIZE_MAX, L"pane NAME CATEGORY...", error))
        return false;
    if (m_session.FindPane(words[1]))
        return Fail(error, L"a pane named \"" + words[1] + L"\" is already open");
    PaneDefinition definition{words[1], {}};
    for (size_t i = 2; i < words.size(); ++i)
    {
        OrbObjectCategories::Category category;
        if (!rules::ParseCategory(Utf8::FromWide(words[i]), category))
            return Fail(error, L"unknown category \"" + words[i] + L"\"");
        definition.categories.insert(category);
    }
    m_session.OpenPane(definition);
    return true;
}

void ScriptRunner::AddCommands()
{
    m_commands[L"open"] = [this](Words const& words, std::wstring& error)
    {
        if (!WordCount(words, 2, 2, L"open PATH", error))
            return false;
        std::vector<std::wstring> messages;
        const bool opened = m_session.OpenProject(Utf8::FromWide(words[1]), messages);
        for (auto const& message : messages)
            m_out << L"problem: " << message << L"\n";
        if (opened && !m_session.ReadOnlyReason().empty())
            m_out << L"read-only: " << Utf8::ToWide(m_session.ReadOnlyReason()) << L"\n";
        return opened || Fail(error, L"cannot open the project \"" + words[1] + L"\"");
    };
    m_commands[L"save"] = [this](Words const& words, std::wstring& error)
    {
        if (!WordCount(words, 1, 1, L"save", error))
            return false;
        std::vector<std::wstring> messages;
        const bool saved = m_session.SaveProject(messages);
        for (auto const& message : messages)
            m_out << L"problem: " << message << L"\n";
        return saved || Fail(error, L"the project could not be saved");
    };
    m_commands[L"close"] = [this](Words const& words, std::wstring& error)
    {
        if (!WordCount(words, 1, 1, L"close", error))
            return false;
        m_session.CloseProject();
        return true;
    };
    m_commands[L"pane"] = [this](Words const& words, std::wstring& error) { return OpenPane(words, error); };
    m_commands[L"close-pane"] = [this](Words const& words, std::wstring& error)
    {
        if (!WordCount(words, 2, 2, L"close-pane NAME", error))
            return false;
        Pane* pane = PaneNamed(words, 1, error);
        if (!pane)
            return false;
        m_session.ClosePaneOf(pane->view);
        if (m_pane == words[1])
            m_pane.clear();
        return true;
    };
    m_commands[L"use"] = [this](Words const& words, std::wstring& error)
    {
        Pane* pane = WordCount(words, 2, 2, L"use NAME", error) ? PaneNamed(words, 1, error) : nullptr;
        if (!pane)
            return false;
        m_pane = words[1];
        // The user moves to the pane: its tree takes the keyboard focus.
        pane->view->GetTreeCtrl().SetFocus();
        return true;
    };
    for (wchar_t const* gesture : {L"click", L"double-click", L"right-click", L"toggle", L"click-empty"})
        m_commands[gesture] = [this](Words const& words, std::wstring& error)
        { return Gesture(words, error); };
    m_commands[L"drop"] = [this](Words const& words, std::wstring& error) { return DropFiles(words, error); };
    m_commands[L"drag"] = [this](Words const& words, std::wstring& error) { return Drag(words, error); };
    m_commands[L"key"] = [this](Words const& words, std::wstring& error) { return Key(words, error); };
    m_commands[L"type"] = [this](Words const& words, std::wstring& error)
    {
        PETreeCtrl* tree = Tree(error);
        if (!tree || !WordCount(words, 2, 2, L"type TEXT", error))
            return false;
        if (!tree->GetEditControl())
            return Fail(error, L"no label editor is open");
        tree->TypeText(words[1]);
        return true;
    };
    m_commands[L"menu"] = [this](Words const& words, std::wstring& error)
    {
        if (!WordCount(words, 2, 3, L"menu ENTRY[/SUBENTRY...] | menu number N", error))
            return false;
        if (words.size() == 2)
        {
            m_menus.Choose(words[1]);
            return true;
        }
        if (words[1] != L"number" || words[2].empty() || words[2].size() > 9 ||
            words[2].find_first_not_of(L"0123456789") != std::wstring::npos || std::stoul(words[2]) == 0)
            return Fail(error, L"usage: menu ENTRY[/SUBENTRY...] | menu number N (N from 1)");
        m_menus.ChooseNumber(std::stoul(words[2]));
        return true;
    };
    m_commands[L"answer"] = [this](Words const& words, std::wstring& error) { return Answer(words, error); };
    m_commands[L"advance"] = [](Words const& words, std::wstring& error)
    {
        if (!WordCount(words, 2, 2, L"advance MILLISECONDS", error))
            return false;
        // Digits only, and no more than the clock can count.
        const std::string digits(words[1].begin(), words[1].end());
        DWORD milliseconds = 0;
        const auto [end, failure] =
            std::from_chars(digits.data(), digits.data() + digits.size(), milliseconds);
        if (digits.empty() || words[1].find_first_not_of(L"0123456789") != std::wstring::npos ||
            failure != std::errc() || end != digits.data() + digits.size())
            return Fail(error, L"not a number of milliseconds: \"" + words[1] + L"\"");
        WindowSystem::Get().Advance(milliseconds);
        return true;
    };
    m_commands[L"send"] = [this](Words const& words, std::wstring& error) { return Send(words, error); };
    m_commands[L"command"] = [this](Words const& words, std::wstring& error) { return Command(words, error); };
    m_commands[L"host"] = [this](Words const& words, std::wstring& error) { return HostEdit(words, error); };
    m_commands[L"print"] = [this](Words const& words, std::wstring& error) { return Print(words, error); };
    AddPanelCommands();
    AddCheckCommands();
    AddHostStateCommands();
    AddAudioStateCommands();
    AddPlaylistCommands();
    AddCreationCommands();
    AddContextMenuCommands();
    AddFindCommands();
}

void ScriptRunner::AddSubcommands(std::wstring const& command, std::map<std::wstring, Handler> subcommands)
{
    Handler before = m_commands[command];
    m_commands[command] = [before, subcommands](Words const& words, std::wstring& error)
    {
        auto found = words.size() > 1 ? subcommands.find(words[1]) : subcommands.end();
        if (found != subcommands.end())
            return found->second(words, error);
        return before ? before(words, error) : Fail(error, L"unknown command \"" + words[0] + L"\"");
    };
}
} // namespace sn
