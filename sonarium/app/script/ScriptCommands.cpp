// The script commands that act: gestures on the tree, keys, dialog answers, host messages and
// host actions, and the printouts.

#include "sonarium/app/script/ScriptRunner.h"

#include "host/HostMessages.h"
#include "host/Utf8.h"
#include "platform/HeldKeys.h"
#include "platform/WindowSystem.h"
#include "sonarium/app/script/ScriptWords.h"
#include "sonarium/app/session/TreePoints.h"
#include "sonarium/app/session/TreeText.h"
#include "sonarium/core/host/ProjectBuilder.h"
#include "sonarium/core/model/CurrentState.h"
#include "sonarium/core/model/NodeRules.h"
#include "sonarium/core/model/ProjectEdit.h"
#include "sonarium/ui/dialogs/MessageBoxButtons.h"

#include <cwctype>
#include <map>
#include <sstream>

namespace sn
{
namespace
{
std::optional<UINT> KeyCode(std::wstring const& name)
{
    static const std::map<std::wstring, UINT> k_keys = {
        {L"Up", VK_UP},         {L"Down", VK_DOWN},         {L"Left", VK_LEFT},     {L"Right", VK_RIGHT},
        {L"Home", VK_HOME},     {L"End", VK_END},           {L"PageUp", VK_PRIOR},  {L"PageDown", VK_NEXT},
        {L"Delete", VK_DELETE}, {L"Enter", VK_RETURN},      {L"Escape", VK_ESCAPE}, {L"Space", VK_SPACE},
        {L"Add", VK_ADD},       {L"Subtract", VK_SUBTRACT}, {L"F2", VK_F2},         {L"F5", VK_F5}, {L"F10", VK_F10}, {L"Apps", VK_APPS},
        {L"Shift", VK_SHIFT},   {L"Backspace", VK_BACK},    {L"Tab", VK_TAB},       {L"Multiply", VK_MULTIPLY},
    };
    if (auto found = k_keys.find(name); found != k_keys.end())
        return found->second;
    if (name.size() == 1 && ((name[0] >= L'A' && name[0] <= L'Z') || (name[0] >= L'0' && name[0] <= L'9')))
        return static_cast<UINT>(name[0]);
    return std::nullopt;
}

// False, naming the first word too many, when a line of a known kind has more words than it takes.
bool TooManyWords(std::vector<std::wstring> const& words, std::map<std::wstring, size_t> const& mostWords,
                  std::wstring const& kind, std::wstring& error)
{
    auto most = mostWords.find(kind);
    if (most == mostWords.end() || words.size() <= most->second)
        return true;
    return Fail(error, L"unexpected word \"" + words[most->second] + L"\"");
}


// Why the host would not create an object of that kind and name under parent, when it did not say.
std::wstring WhyNotCreated(ProjectObject const* parent, PMTreeNode::NodeType type, std::wstring const& name)
{
    std::wstring why;
    if (!ProjectEdit::CanHold(parent, type))
        return L"a " + Utf8::ToWide(rules::NodeTypeKey(type)) + L" cannot go under \"" +
               std::wstring(parent->GetName()) + L"\" (a " + Utf8::ToWide(rules::NodeTypeKey(parent->GetNodeType())) +
               L")";
    if (!ProjectEdit::IsValidName(nullptr, type, parent, name, &why))
        return why;
    return L"the host refused to create it there";
}

std::vector<std::wstring> LinesOf(std::wstring const& text)
{
    std::vector<std::wstring> lines;
    std::wistringstream stream(text);
    for (std::wstring line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}
} // namespace

bool ScriptRunner::Gesture(Words const& given, std::wstring& error)
{
    Words words = given;
    const unsigned keys = TakeModifiers(words);
    PETreeCtrl* tree = Tree(error);
    if (!tree)
        return false;
    const bool onRow = words[0] != L"click-empty";
    const size_t count = onRow ? 2 : 1;
    const std::wstring usage = words[0] + (onRow ? L" ROW" : L"") + L" [ctrl] [shift] [alt]";
    if (!WordCount(words, count, count, usage.c_str(), error))
        return false;
    if (!onRow)
    {
        std::optional<CPoint> below = BelowLastRow(*tree);
        if (!below)
            return Fail(error, L"there is no empty space below the last row");
        tree->Click(*below, keys);
        return true;
    }
    HTREEITEM item = Row(*tree, words[1], error);
    if (!item)
        return false;
    const CPoint label = LabelPoint(*tree, item);
    if (words[0] == L"click")
        tree->Click(label, keys);
    else if (words[0] == L"double-click")
        tree->DoubleClick(label, keys);
    else if (words[0] == L"right-click")
        tree->RightClick(label, keys);
    else if (words[0] == L"toggle")
    {
        std::optional<CPoint> button = ButtonPoint(*tree, item);
        if (!button)
            return Fail(error, L"\"" + words[1] + L"\" has no expand button");
        tree->Click(*button, keys);
    }
    else
        return Fail(error, L"unknown gesture \"" + words[0] + L"\"");
    return true;
}

bool ScriptRunner::Key(Words const& given, std::wstring& error)
{
    Words words = given;
    const unsigned keys = TakeModifiers(words);
    PETreeCtrl* tree = Tree(error);
    if (!tree)
        return false;
    if (!WordCount(words, 2, 2, L"key NAME [ctrl] [shift] [alt]", error))
        return false;
    std::optional<UINT> vk = KeyCode(words[1]);
    // A single character also types itself, as a keyboard does without Ctrl or Alt.
    const bool typing = words[1].size() == 1 && std::iswprint(words[1][0]) && !(keys & (MK_CONTROL | MK_ALT));
    if (!vk && !typing)
        return Fail(error, L"unknown key \"" + words[1] + L"\"");
    if (vk)
        tree->KeyPress(*vk, keys);
    if (typing)
        tree->TypeChar(static_cast<wchar_t>(std::towlower(words[1][0])));
    return true;
}

bool ScriptRunner::Answer(Words const& words, std::wstring& error)
{
    const std::wstring kind = words.size() > 1 ? words[1] : L"";
    if (kind == L"importer" || kind == L"batch-rename" || kind == L"progress")
        return AnswerTool(words, error);
    static const std::map<std::wstring, size_t> k_mostWords = {
        {L"message", 4}, {L"name", 3}, {L"name-cancel", 2}, {L"unload", 3}, {L"file-cancel", 2}, {L"changed", 3},
    };
    if (!TooManyWords(words, k_mostWords, kind, error))
        return false;
    if (kind == L"message" && words.size() >= 3)
    {
        const int button = MessageBoxButtons::Parse(words[2]);
        if (button == 0)
            return Fail(error, L"unknown button \"" + words[2] + L"\"");
        if (words.size() > 3 && words[3] != L"ticked")
            return Fail(error,
                        L"unexpected word \"" + words[3] + L"\": only \"ticked\" may follow the button");
        m_dialogs.AnswerMessageBox(button, words.size() > 3 && words[3] == L"ticked");
        return true;
    }
    if (kind == L"name" && words.size() >= 3)
        m_dialogs.AnswerNewWorkUnit(words[2]);
    else if (kind == L"name-cancel")
        m_dialogs.CancelNewWorkUnit();
    else if (kind == L"unload" && words.size() >= 3)
    {
        static const std::map<std::wstring, UnloadDirtyWorkUnitsDlg::Decision> k_decisions = {
            {L"save", UnloadDirtyWorkUnitsDlg::Decision_Save},
            {L"cancel", UnloadDirtyWorkUnitsDlg::Decision_Cancel},
            {L"discard", UnloadDirtyWorkUnitsDlg::Decision_Discard},
        };
        auto decision = k_decisions.find(words[2]);
        if (decision == k_decisions.end())
            return Fail(error, L"unknown decision \"" + words[2] + L"\" (save, cancel or discard)");
        m_dialogs.AnswerUnloadDirty(decision->second);
    }
    else if (kind == L"file" && words.size() >= 3)
        m_dialogs.AnswerFile(Words(words.begin() + 2, words.end()));
    else if (kind == L"file-cancel")
        m_dialogs.CancelFile();
    else if (kind == L"changed" && words.size() >= 3)
    {
        static const std::map<std::wstring, ChangedFileAnswer::Choice> k_choices = {
            {L"overwrite", ChangedFileAnswer::Overwrite},
            {L"keep", ChangedFileAnswer::KeepTheirs},
            {L"reload", ChangedFileAnswer::Reload},
        };
        auto choice = k_choices.find(words[2]);
        if (choice == k_choices.end())
            return Fail(error, L"unknown choice \"" + words[2] + L"\" (overwrite, keep or reload)");
        m_dialogs.AnswerChangedFile(choice->second);
    }
    else
        return Fail(error,
                    L"usage: answer message BUTTON [ticked] | name TEXT | name-cancel | unload DECISION | "
                    L"file PATH... | file-cancel | changed overwrite|keep|reload | importer ... | batch-rename ... | "
                    L"progress cancel STEPS");
    return true;
}

bool ScriptRunner::Send(Words const& given, std::wstring& error)
{
    Words words = given;
    const unsigned keys = TakeModifiers(words);
    if (!WordCount(words, 2, 3, L"send MESSAGE [PANE] [ctrl] [shift] [alt]", error))
        return false;
    Pane* pane = PaneNamed(words, 2, error);
    if (!pane)
        return false;
    static const std::map<std::wstring, UINT> k_messages = {
        {L"cut", WM_CUT},
        {L"copy", WM_COPY},
        {L"paste", WM_PASTE},
        {L"delete", HostMessages::DeleteObject},
        {L"rename", HostMessages::RenameObject},
        {L"can-cut", HostMessages::CanCut},
        {L"can-copy", HostMessages::CanCopy},
        {L"can-paste", HostMessages::CanPaste},
    };
    const std::wstring name = words.size() > 1 ? words[1] : L"";
    if (name.rfind(L"key:", 0) == 0)
    {
        // The host forwards a key message it saw first, with the modifiers held.
        std::optional<UINT> vk = KeyCode(name.substr(4));
        if (!vk)
            return Fail(error, L"unknown key \"" + name.substr(4) + L"\"");
        HeldKeys held(HeldKeys::Modifiers(keys));
        MSG msg{};
        msg.message = WM_KEYDOWN;
        msg.wParam = *vk;
        pane->view->SendMessage(HostMessages::ForwardedKey, reinterpret_cast<WPARAM>(&msg), 0);
        return true;
    }
    auto message = k_messages.find(name);
    if (message == k_messages.end())
        return Fail(error,
                    L"usage: send cut|copy|paste|delete|rename|can-cut|can-copy|can-paste|key:NAME [PANE]");
    const LRESULT result = pane->view->SendMessage(message->second, 0, 0);
    if (name.rfind(L"can-", 0) == 0)
        m_out << name << L": "
              << (result == 1   ? L"allowed"
                  : result == 2 ? L"not allowed"
                                : L"no answer")
              << L"\n";
    return true;
}

bool ScriptRunner::HostEdit(Words const& words, std::wstring& error)
{
    Host& host = m_session.GetHost();
    Project* project = m_session.GetProject();
    const std::wstring action = words.size() > 1 ? words[1] : L"";
    static const std::map<std::wstring, size_t> k_mostWords = {
        {L"rename", 4}, {L"delete", 3}, {L"create", 5}, {L"platform", 3}, {L"language", 3}, {L"play", 2},
        {L"stop", 2},   {L"undo", 2},   {L"redo", 2},   {L"lock", 2},     {L"unlock", 2},   {L"preference", 4},
    };
    if (!TooManyWords(words, k_mostWords, action, error))
        return false;
    // What the host said when it refused, else what the script can tell.
    auto refused = [&](std::wstring const& otherwise)
    {
        const std::vector<std::wstring> refusals = m_session.Reports().TakeRefusals();
        return Fail(error, refusals.empty() ? otherwise : refusals.front());
    };
    auto object = [&](size_t index) -> ProjectObject*
    {
        ProjectObject* found = project && index < words.size() ? FindByPath(*project, words[index]) : nullptr;
        if (!found)
            Fail(error, L"no object at \"" + (index < words.size() ? words[index] : L"") + L"\"");
        return found;
    };
    if (action == L"rename" && words.size() >= 4)
    {
        ProjectObject* target = object(2);
        if (!target || ProjectEdit::Rename(target, words[3].c_str()))
            return target != nullptr;
        std::wstring why = L"the host refused it";
        ProjectEdit::IsValidName(target, target->GetNodeType(), target->Parent(), words[3], &why);
        return refused(L"the host refused the name \"" + words[3] + L"\": " + why);
    }
    if (action == L"delete" && words.size() >= 3)
    {
        ProjectObject* target = object(2);
        if (!target || ProjectEdit::Delete(target))
            return target != nullptr;
        return refused(L"the host refused to delete it");
    }
    if (action == L"create" && words.size() >= 5)
    {
        ProjectObject* parent = object(2);
        PMTreeNode::NodeType type;
        if (!parent)
            return false;
        if (!rules::ParseNodeType(Utf8::FromWide(words[3]), type))
            return Fail(error, L"unknown object type \"" + words[3] + L"\"");
        return ProjectEdit::Create(parent, type, words[4].c_str()) || refused(WhyNotCreated(parent, type, words[4]));
    }
    if ((action == L"platform" || action == L"language") && words.size() >= 3 && project)
    {
        if (action == L"platform")
            for (Platform const& platform : project->Platforms())
                if (words[2] == platform.name.c_str())
                    return host.SetPlatform(platform.id), true;
        if (action == L"language")
            for (Language const& language : project->Languages())
                if (words[2] == language.name.c_str())
                    return host.SetLanguage(language.id), true;
        return Fail(error, L"the project has no " + action + L" named \"" + words[2] + L"\"");
    }
    if (action == L"preference")
        return SetPreference(words, error);
    if (action == L"play" || action == L"stop")
        return host.SetPlayback(action == L"play"), true;
    if (action == L"undo")
        return host.Undo().Undo() || Fail(error, L"there is nothing to undo");
    if (action == L"redo")
        return host.Undo().Redo() || Fail(error, L"there is nothing to redo");
    if (action == L"lock" || action == L"unlock")
    {
        CProp& lock = host.Properties().Prop(propLockUIUpdate, 3, 1);
        if (action == L"unlock" && lock.GetInt() <= 0)
            return Fail(error, L"the UI is not locked");
        lock = lock.GetInt() + (action == L"lock" ? 1 : -1);
        m_heldLocks += action == L"lock" ? 1 : -1;
        return true;
    }
    return Fail(error,
                L"usage: host rename PATH NAME | delete PATH | create PARENT TYPE NAME | platform NAME | "
                L"language NAME | play | stop | undo | redo | lock | unlock | preference NAME on|off");
}

bool ScriptRunner::Print(Words const& words, std::wstring& error)
{
    const std::wstring what = words.size() > 1 ? words[1] : L"";
    static const std::map<std::wstring, size_t> k_mostWords = {
        {L"tree", 3},  {L"selection", 3}, {L"notifications", 2}, {L"dialogs", 2},
        {L"menus", 2}, {L"drops", 2},     {L"inspector", 2},     {L"edit-menu", 2},
        {L"toolbar", 3}, {L"object", 3}, {L"clipboard", 2},
    };
    if (!TooManyWords(words, k_mostWords, what, error))
        return false;
    if (PrintPanel(what))
        return true;
    if (what == L"tree" || what == L"selection")
    {
        Pane* pane = PaneNamed(words, 2, error);
        if (!pane)
            return false;
        PETreeCtrl& tree = pane->view->GetTreeCtrl();
        Indented(m_out, what + L" " + pane->name, what == L"tree" ? TreeLines(tree) : SelectionLines(tree));
        return true;
    }
    if (what == L"toolbar")
        return PrintToolbar(words, error);
    if (what == L"clipboard")
        return PrintClipboard();
    if (what == L"object")
        return PrintObject(words, error);
    if (what == L"notifications")
    {
        Indented(m_out, L"notifications", m_session.Recorder().Lines());
        m_session.Recorder().Clear();
        return true;
    }
    if (what == L"dialogs")
    {
        // Answers still queued stay queued: an unused one is still an error at the end. Paths in
        // the project's folder read the same wherever the project was copied.
        CStdStr<wchar_t> transcript = m_dialogs.Transcript();
        if (Project* project = m_session.GetProject(); project && !project->GetFolder().empty())
            transcript.Replace(Utf8::ToWide(project->GetFolder().string()).c_str(), L"<project>");
        Indented(m_out, L"dialogs", LinesOf(transcript));
        m_dialogs.ClearRecords();
        return true;
    }
    if (what == L"drops")
    {
        Indented(m_out, L"drops", m_drops);
        m_drops.clear();
        return true;
    }
    if (what == L"menus")
    {
        Indented(m_out, L"menus", m_menus.Transcript());
        m_menus.Clear();
        return true;
    }
    return Fail(error,
                L"usage: print tree [PANE] | selection [PANE] | notifications | dialogs | menus | drops | "
                L"toolbar [PANE] | object PATH | inspector | edit-menu | clipboard");
}
} // namespace sn
