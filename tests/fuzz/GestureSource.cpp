#include "GestureSource.h"

#include "host/TreeNodeWithObject.h"
#include "sonarium/app/session/HostRecorder.h"

namespace fuzz
{
namespace
{
// Texts a user may type as a name: plain, with blanks and accents, and the kinds the host refuses.
const std::vector<std::wstring> k_names = {
    L"Footstep", L"Rain Loop", L"Ambience_02", L"Café", L"Échos", L"a/b", L"bad*name", L"", L" lead",
    L"dup", L"dup", std::wstring(300, L'x'), L"名前", L"Z"};
const std::vector<std::wstring> k_keys = {
    L"Up", L"Down", L"Left", L"Right", L"Home", L"End", L"PageUp", L"PageDown", L"Delete", L"Enter",
    L"Escape", L"Space", L"Add", L"Subtract", L"F2", L"F5", L"Apps", L"Backspace", L"A", L"S", L"7"};
const std::vector<std::wstring> k_toolbarTypes = {
    L"Sound SFX", L"Random Container", L"Sequence Container", L"Switch Container", L"Blend Container",
    L"Actor-Mixer", L"Folder", L"Event", L"Bus", L"Aux Bus", L"Work Unit", L"Sound Bank", L"Switch Group",
    L"State Group", L"Game Parameter"};
const std::vector<std::wstring> k_hostTypes = {L"SoundSFX", L"RandomContainer", L"Folder", L"ActorMixer",
                                               L"Event", L"Bus", L"WorkUnit"};
const std::vector<std::wstring> k_commands = {
    L"delete", L"batch-rename", L"import-audio", L"load-unload", L"include", L"exclude", L"link", L"unlink",
    L"expand-descendants", L"collapse-descendants"};
} // namespace

std::wstring Quote(std::wstring const& word)
{
    if (!word.empty() && word.find_first_of(L" \t\"\\#") == std::wstring::npos)
        return word;
    std::wstring quoted = L"\"";
    for (wchar_t c : word)
    {
        if (c == L'"' || c == L'\\')
            quoted += L'\\';
        quoted += c;
    }
    return quoted + L"\"";
}

GestureSource::GestureSource(sn::AppSession& session, uint64_t seed, DropFiles files, std::filesystem::path project)
    : m_session(session), m_random(seed), m_files(std::move(files)), m_project(std::move(project))
{
}

bool GestureSource::Chance(int percent)
{
    return std::uniform_int_distribution<int>(0, 99)(m_random) < percent;
}

std::wstring GestureSource::Pick(std::vector<std::wstring> const& words)
{
    return words[std::uniform_int_distribution<size_t>(0, words.size() - 1)(m_random)];
}

std::wstring GestureSource::Row()
{
    sn::Pane* pane = m_pane.empty() ? (m_session.Panes().empty() ? nullptr : &m_session.Panes().front())
                                    : m_session.FindPane(m_pane);
    if (!pane)
        return L"AudioObjects";
    PETreeCtrl& tree = pane->view->GetTreeCtrl();
    const int rows = tree.GetRowCount();
    if (rows == 0)
        return L"AudioObjects";
    const int row = std::uniform_int_distribution<int>(0, rows - 1)(m_random);
    auto* node = dynamic_cast<TreeNodeWithObject*>(tree.GetNodeFromItem(tree.GetRowItem(row)));
    return node ? Quote(sn::ObjectPath(node->GetObject())) : L"AudioObjects";
}

std::wstring GestureSource::Mods(bool alt)
{
    std::wstring mods;
    if (Chance(20))
        mods += L" ctrl";
    if (Chance(15))
        mods += L" shift";
    if (alt && Chance(10))
        mods += L" alt";
    return mods;
}

std::wstring GestureSource::Name()
{
    return Quote(Pick(k_names));
}

std::wstring GestureSource::PaneName()
{
    std::vector<std::wstring> names;
    for (sn::Pane const& pane : m_session.Panes())
        names.push_back(pane.name);
    return names.empty() ? L"Audio" : Quote(Pick(names));
}

std::wstring GestureSource::File()
{
    auto const& list = Chance(70) || m_files.bad.empty() ? m_files.audio : m_files.bad;
    const auto& file = list[std::uniform_int_distribution<size_t>(0, list.size() - 1)(m_random)];
    return Quote(file.wstring());
}

std::vector<std::wstring> GestureSource::Next()
{
    const int kind = std::uniform_int_distribution<int>(0, 99)(m_random);
    if (kind < 62)
        return Gesture();
    if (kind < 84)
        return HostAction();
    return Command();
}

std::vector<std::wstring> GestureSource::Settle()
{
    std::vector<std::wstring> lines;
    for (; m_locks > 0; --m_locks)
        lines.push_back(L"host unlock");
    for (sn::Pane& pane : m_session.Panes())
        if (pane.view->GetTreeCtrl().GetEditItem())
            lines.insert(lines.end(), {L"use " + Quote(pane.name), L"key Escape"});
    return lines;
}

std::vector<std::wstring> GestureSource::Gesture()
{
    const bool editing = [&]
    {
        for (sn::Pane& pane : m_session.Panes())
            if (pane.view->GetTreeCtrl().GetEditItem())
                return true;
        return false;
    }();
    if (editing && Chance(60))
    {
        if (Chance(50))
            return {L"type " + Name()};
        return {L"key " + Pick({L"Enter", L"Escape", L"Backspace", L"Left", L"Home", L"Delete"})};
    }
    switch (std::uniform_int_distribution<int>(0, 15)(m_random))
    {
    case 0:
    case 1:
    case 2: return {L"click " + Row() + Mods()};
    case 3: return {L"double-click " + Row()};
    case 4:
        if (Chance(70))
            // Any enabled entry of the menu that opens, by its number: every entry is reachable
            // whatever the selection makes of the menu.
            return {L"menu number " + std::to_wstring(std::uniform_int_distribution<int>(1, 90)(m_random)),
                    L"right-click " + Row()};
        return {L"right-click " + Row()};
    case 5:
    case 6: return {L"toggle " + Row()};
    case 7: return {L"click-empty" + Mods()};
    case 8:
    case 9: return {L"key " + Pick(k_keys) + Mods()};
    case 10:
        return {L"toolbar " + Quote(Pick(k_toolbarTypes)) + (Chance(20) ? L" shift" : L"")};
    case 11:
    {
        const std::wstring target = Chance(85) ? Row() : std::wstring(L"below");
        if (Chance(15))
            return {L"menu " + Pick({L"\"Move Here\"", L"\"Copy Here\"", L"\"Link Here\"", L"Cancel"}),
                    L"drag " + Row() + L" " + target + L" right"};
        return {L"drag " + Row() + L" " + target + Mods()};
    }
    case 12:
    {
        std::wstring line = L"drop " + (Chance(85) ? Row() : std::wstring(L"below")) + L" " + File();
        if (Chance(40))
            line += L" " + File();
        const std::wstring mods = Mods(true);
        if (mods.empty())
            return {Chance(80) ? L"answer importer import" : L"answer importer cancel", line};
        return {line + mods};
    }
    case 13: return {L"send " + Pick({L"cut", L"copy", L"paste", L"delete", L"rename"})};
    case 14: return {L"edit " + Pick({L"undo", L"redo", L"cut", L"copy", L"paste", L"delete", L"rename"})};
    default: return {L"answer message " + Pick({L"Yes", L"No", L"OK", L"Cancel"})};
    }
}

std::vector<std::wstring> GestureSource::HostAction()
{
    sn::Project* project = m_session.GetProject();
    switch (std::uniform_int_distribution<int>(0, 13)(m_random))
    {
    case 0:
        if (m_locks < 3)
            return ++m_locks, std::vector<std::wstring>{L"host lock"};
        [[fallthrough]];
    case 1:
        if (m_locks > 0)
            return --m_locks, std::vector<std::wstring>{L"host unlock"};
        return {L"host play"};
    case 2: return {Chance(50) ? L"host play" : L"host stop"};
    case 3:
        if (project && !project->Platforms().empty())
        {
            const auto& platforms = project->Platforms();
            return {L"host platform " +
                    Quote(platforms[std::uniform_int_distribution<size_t>(0, platforms.size() - 1)(m_random)]
                              .name.c_str())};
        }
        return {L"host stop"};
    case 4:
        if (project && !project->Languages().empty())
        {
            const auto& languages = project->Languages();
            return {L"host language " +
                    Quote(languages[std::uniform_int_distribution<size_t>(0, languages.size() - 1)(m_random)]
                              .name.c_str())};
        }
        return {L"host stop"};
    case 5:
    case 6: return {L"host undo"};
    case 7: return {L"host redo"};
    case 8: return {L"host create " + Row() + L" " + Pick(k_hostTypes) + L" " + Name()};
    case 9: return {L"host rename " + Row() + L" " + Name()};
    case 10: return {L"host delete " + Row()};
    case 11: return {L"advance " + Pick({L"50", L"200", L"500", L"1000"})};
    case 12:
        // Saving, and now and then reading the project again from what was saved.
        if (Chance(80) || m_locks > 0)
            return {L"save"};
        return {L"open " + Quote(m_project.wstring()), L"check snapshot"};
    default:
        if (Chance(60))
        {
            m_pane = Chance(50) ? std::wstring() : PaneName();
            return {m_pane.empty() ? L"use Audio" : L"use " + m_pane};
        }
        if (m_extraPanes < 2 && Chance(50))
        {
            const std::wstring name = L"Pane" + std::to_wstring(++m_extraPanes);
            return {L"pane " + name + L" " + Pick({L"AudioObjects", L"Events", L"Busses", L"SoundBanks"}) + L" " +
                    Pick({L"Switches", L"States", L"Music", L"GameParameters"})};
        }
        if (m_extraPanes > 0)
        {
            const std::wstring name = L"Pane" + std::to_wstring(m_extraPanes--);
            if (m_pane == name)
                m_pane.clear();
            return {L"close-pane " + name};
        }
        return {L"advance 200"};
    }
}

std::vector<std::wstring> GestureSource::Command()
{
    const std::wstring command = Pick(k_commands);
    std::vector<std::wstring> lines;
    if (command == L"delete" || command == L"load-unload")
        lines.push_back(L"answer message " + Pick({L"Yes", L"No"}));
    if (command == L"load-unload")
        lines.push_back(L"answer unload " + Pick({L"save", L"discard", L"cancel"}));
    if (command == L"batch-rename")
        lines.push_back(Chance(30) ? L"answer batch-rename cancel"
                                   : L"answer batch-rename " + Pick({L"o", L"e", L"Rain"}) + L" " +
                                         Pick({L"0", L"\"\"", L"X"}) + L" suffix _v number 1 3");
    if (command == L"import-audio")
    {
        if (Chance(70))
            lines.insert(lines.end(), {L"answer file " + File(), L"answer importer import"});
        else
            lines.push_back(L"answer file-cancel");
    }
    lines.push_back(L"command " + command);
    return lines;
}
} // namespace fuzz
