#include "sonarium/app/script/ScriptedMenus.h"

#include "sonarium/ui/menus/MenuShortcuts.h"

#include <sstream>
#include <utility>

namespace sn
{
std::wstring MenuEntryText(std::wstring const& text)
{
    std::wstring shown;
    for (size_t i = 0; i < text.size() && text[i] != L'\t'; ++i)
    {
        if (text[i] == L'&' && i + 1 < text.size() && text[i + 1] != L'&')
            continue;
        shown += text[i];
    }
    return shown;
}

ScriptedMenus::ScriptedMenus() : m_previous(MenuSystem::GetPresenter())
{
    MenuSystem::SetPresenter(this);
}

ScriptedMenus::~ScriptedMenus()
{
    MenuSystem::SetPresenter(m_previous);
}

std::wstring ScriptedMenus::TakeFailure()
{
    return std::exchange(m_failure, std::wstring());
}

namespace
{
// One line per entry, a submenu's entries indented below it: the text, the shortcut column in
// brackets, and the entry's state.
void Describe(std::vector<MenuItem> const& items, std::wstring const& indent, std::vector<std::wstring>& out)
{
    for (MenuItem const& item : items)
    {
        if (item.IsSeparator())
        {
            out.push_back(indent + L"-");
            continue;
        }
        std::wstring line = indent + MenuEntryText(item.text);
        if (const std::wstring shortcut = ShownShortcut(item.text); !shortcut.empty())
            line += L"  [" + shortcut + L"]";
        if (item.IsPopup())
            line += L" >";
        if (!item.IsEnabled())
            line += L" (disabled)";
        if (item.IsChecked())
            line += (item.flags & MFT_RADIOCHECK) ? L" (radio)" : L" (checked)";
        out.push_back(line);
        if (item.IsPopup())
            if (const std::vector<MenuItem>* sub = MenuSystem::Items(item.submenu))
                Describe(*sub, indent + L"  ", out);
    }
}
// Appends the path of every enabled entry that runs a command, in menu order.
void CollectLeaves(std::vector<MenuItem> const& items, std::wstring const& prefix, std::vector<std::wstring>& out)
{
    for (MenuItem const& item : items)
    {
        if (item.IsSeparator() || !item.IsEnabled())
            continue;
        const std::wstring path = prefix + MenuEntryText(item.text);
        if (!item.IsPopup())
            out.push_back(path);
        else if (const std::vector<MenuItem>* sub = MenuSystem::Items(item.submenu))
            CollectLeaves(*sub, path + L"/", out);
    }
}
} // namespace

UINT_PTR ScriptedMenus::TrackPopupMenu(HMENU menu, POINT, HWND)
{
    const std::vector<MenuItem>* items = MenuSystem::Items(menu);
    if (!items)
        return 0;
    m_transcript.push_back(L"menu");
    Describe(*items, L"  ", m_transcript);
    if (m_choices.empty())
    {
        m_transcript.push_back(L"  -> dismissed");
        return 0;
    }
    const Choice choice = m_choices.front();
    m_choices.pop_front();
    std::wstring path = choice.path;
    if (choice.number != 0)
    {
        std::vector<std::wstring> leaves;
        CollectLeaves(*items, L"", leaves);
        if (leaves.empty())
        {
            m_transcript.push_back(L"  -> dismissed (no enabled entry)");
            return 0;
        }
        // Around again past the last, so that a number picked at random always names an entry.
        path = leaves[(choice.number - 1) % leaves.size()];
    }
    auto dismiss = [this](std::wstring failure) -> UINT_PTR
    {
        m_failure = std::move(failure);
        m_transcript.push_back(L"  -> dismissed (" + m_failure + L")");
        return 0;
    };
    std::wistringstream parts(path);
    const std::vector<MenuItem>* level = items;
    for (std::wstring part; std::getline(parts, part, L'/');)
    {
        const MenuItem* found = nullptr;
        if (level)
            for (MenuItem const& item : *level)
                if (!item.IsSeparator() && MenuEntryText(item.text) == part)
                {
                    found = &item;
                    break;
                }
        if (!found || !found->IsEnabled())
            return dismiss(L"no " + std::wstring(found ? L"enabled " : L"") + L"menu entry \"" + path +
                           L"\"");
        if (!found->IsPopup())
        {
            if (!parts.eof())
                return dismiss(L"menu entry \"" + part + L"\" has no submenu (choosing \"" + path + L"\")");
            m_transcript.push_back(L"  -> " + path);
            return found->id;
        }
        level = MenuSystem::Items(found->submenu);
    }
    return dismiss(L"menu entry \"" + path + L"\" opens a submenu");
}
} // namespace sn
