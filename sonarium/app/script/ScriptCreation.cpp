// Script lines about creating objects: clicking the toolbar's buttons (with Shift for a new
// parent), printing the toolbar, the user's preferences that name new events, and an object's
// stored state.

#include "sonarium/app/script/ScriptRunner.h"

#include "host/ButtonWithTooltip.h"
#include "host/HostMessages.h"
#include "platform/HeldKeys.h"
#include "sonarium/app/script/ScriptWords.h"
#include "sonarium/ui/properties/ObjectFacts.h"
#include "sonarium/core/host/ProjectBuilder.h"
#include "sonarium/ui/dialogs/ScriptedDialogService.h"
#include "sonarium/ui/menus/MenuShortcuts.h"

#include <array>

namespace sn
{
namespace
{
constexpr const wchar_t* kPreferencesSection = L"Preferences";
constexpr std::array<const wchar_t*, 5> kPreferences = {L"UseActionNameForEvent", L"EventActionNamePrefix",
                                                        L"ModifyEventNameCase", L"EventNameCaseAllLower",
                                                        L"InspectOnSingleClick"};

CButtonWithTooltip* ButtonOfType(DlgProjectExplorer& view, std::wstring const& typeName)
{
    for (CButtonWithTooltip* button : view.GetObjectToolbar().Buttons())
        if (PMTreeNode::GetNodeTypeName(static_cast<PMTreeNode::NodeType>(button->GetDlgCtrlID())) == typeName)
            return button;
    return nullptr;
}

// The Shift key pressed or released while the tree has the focus: the host forwards it to the view.
void ForwardShift(DlgProjectExplorer& view, UINT message)
{
    MSG msg{};
    msg.message = message;
    msg.wParam = VK_SHIFT;
    view.SendMessage(HostMessages::ForwardedKey, reinterpret_cast<WPARAM>(&msg), 0);
}
} // namespace

void ScriptRunner::AddCreationCommands()
{
    m_commands[L"toolbar"] = [this](Words const& words, std::wstring& error) { return ClickToolbar(words, error); };
}

bool ScriptRunner::ClickToolbar(Words const& given, std::wstring& error)
{
    Words words = given;
    const unsigned keys = TakeModifiers(words);
    if (!WordCount(words, 2, 2, L"toolbar TYPE [shift]", error))
        return false;
    if (keys & ~MK_SHIFT)
        return Fail(error, L"only \"shift\" may follow a toolbar button");
    Pane* pane = CurrentPane(error);
    if (!pane)
        return false;
    CButtonWithTooltip* button = ButtonOfType(*pane->view, words[1]);
    if (!button)
        return Fail(error, L"the pane " + pane->name + L" has no \"" + words[1] + L"\" button");
    const UINT id = static_cast<UINT>(button->GetDlgCtrlID());
    bool clicked = false;
    {
        HeldKeys held(HeldKeys::Modifiers(keys));
        if (keys & MK_SHIFT)
            ForwardShift(*pane->view, WM_KEYDOWN);
        clicked = button->Click();
    }
    // The creation may have closed the pane (a project closed...): find it again.
    if (keys & MK_SHIFT)
        if (Pane* still = CurrentPane(error); still && ButtonOfType(*still->view, words[1]))
            ForwardShift(*still->view, WM_KEYUP);
    if (!clicked)
        return Fail(error, L"the \"" + words[1] + L"\" button (" + std::to_wstring(id) + L") is disabled");
    return true;
}

bool ScriptRunner::PrintToolbar(Words const& words, std::wstring& error)
{
    Pane* pane = PaneNamed(words, 2, error);
    if (!pane)
        return false;
    std::vector<std::wstring> lines;
    for (CButtonWithTooltip* button : pane->view->GetObjectToolbar().Buttons())
        lines.push_back(PMTreeNode::GetNodeTypeName(static_cast<PMTreeNode::NodeType>(button->GetDlgCtrlID())) +
                        L": " + (button->IsWindowEnabled() ? L"enabled" : L"disabled") + L", " +
                        QuotedText(ShownToolTip(std::wstring(button->GetToolTipText().c_str()))));
    Indented(m_out, L"toolbar", lines);
    return true;
}

bool ScriptRunner::PrintObject(Words const& words, std::wstring& error)
{
    if (!WordCount(words, 3, 3, L"print object PATH", error))
        return false;
    Project* project = m_session.GetProject();
    ProjectObject* object = project ? FindByPath(*project, words[2]) : nullptr;
    if (!object)
        return Fail(error, L"no object at \"" + words[2] + L"\"");
    Indented(m_out, L"object " + words[2], ObjectLines(*project, *object));
    return true;
}

bool ScriptRunner::SetPreference(Words const& words, std::wstring& error)
{
    if (!WordCount(words, 4, 4, L"host preference NAME on|off", error))
        return false;
    if (std::find(kPreferences.begin(), kPreferences.end(), words[2]) == kPreferences.end())
    {
        std::wstring known;
        for (const wchar_t* name : kPreferences)
            known += (known.empty() ? L"" : L", ") + std::wstring(name);
        return Fail(error, L"unknown preference \"" + words[2] + L"\" (" + known + L")");
    }
    if (words[3] != L"on" && words[3] != L"off")
        return Fail(error, L"a preference is \"on\" or \"off\", not \"" + words[3] + L"\"");
    m_session.GetHost().Preferences().SetIntValue(kPreferencesSection, words[2].c_str(), words[3] == L"on" ? 1 : 0);
    return true;
}
} // namespace sn
