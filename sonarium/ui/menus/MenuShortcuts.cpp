#include "sonarium/ui/menus/MenuShortcuts.h"

#include "sonarium/core/host/Host.h"

namespace sn
{
std::wstring ShownShortcut(const std::wstring& entryText)
{
    const size_t tab = entryText.find(L'\t');
    if (tab == std::wstring::npos)
        return {};
    const std::wstring column = entryText.substr(tab + 1);
    Host* host = Host::Get();
    return host ? host->Keys().ShortcutColumn(column, &host->CommandRegistry()) : column;
}

std::wstring WithShownShortcut(const std::wstring& entryText)
{
    const std::wstring label = entryText.substr(0, entryText.find(L'\t'));
    const std::wstring shortcut = ShownShortcut(entryText);
    return shortcut.empty() ? label : label + L"\t" + shortcut;
}

std::wstring ShownToolTip(const std::wstring& tipText)
{
    const std::wstring label = tipText.substr(0, tipText.find(L'\t'));
    const std::wstring shortcut = ShownShortcut(tipText);
    return shortcut.empty() ? label : label + L" (" + shortcut + L")";
}
} // namespace sn
