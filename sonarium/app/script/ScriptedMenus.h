#pragma once
// Popup menus in a headless run: each menu shown is recorded, and answered with the entry the
// script chose beforehand ("menu New Child/Sound SFX"), or dismissed when none was chosen.

#include "platform/Menu.h"

#include <deque>
#include <string>
#include <vector>

namespace sn
{
class ScriptedMenus : public IMenuPresenter
{
public:
    ScriptedMenus();
    ~ScriptedMenus() override;
    ScriptedMenus(ScriptedMenus const&) = delete;
    ScriptedMenus& operator=(ScriptedMenus const&) = delete;

    // The entry to choose in the next menu shown: texts separated by "/", without the "&"
    // marks and the shortcut column.
    void Choose(std::wstring path) { m_choices.push_back({std::move(path), 0}); }
    // The Nth enabled entry of the next menu that runs a command (not a submenu), counted from 1
    // in menu order through the submenus and around again past the last.
    void ChooseNumber(size_t number) { m_choices.push_back({{}, number}); }
    size_t PendingChoices() const { return m_choices.size(); }
    // What happened to each menu: its entries, then what was chosen; failures say why.
    std::vector<std::wstring> const& Transcript() const { return m_transcript; }
    // A chosen entry that was missing or disabled.
    std::wstring TakeFailure();
    void Clear() { m_transcript.clear(); }

    UINT_PTR TrackPopupMenu(HMENU menu, POINT screen, HWND owner) override;

private:
    IMenuPresenter* m_previous;
    struct Choice
    {
        std::wstring path;
        size_t number = 0; // 0: the entry named by path
    };
    std::deque<Choice> m_choices;
    std::vector<std::wstring> m_transcript;
    std::wstring m_failure;
};

// A menu entry's text as a user reads it: "&Delete\tDel" is "Delete".
std::wstring MenuEntryText(std::wstring const& text);
} // namespace sn
