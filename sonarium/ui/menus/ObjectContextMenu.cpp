#include "host/ObjectContextMenu.h"

#include "host/HostMessages.h"
#include "host/OrbObjNotify.h"
#include "host/Guid.h"
#include "host/StringHelp.h"
#include "host/Utf8.h"
#include "platform/Edit.h"
#include "platform/Shell.h"
#include "platform/Wnd.h"
#include "sonarium/core/storage/WorkUnitFile.h"

#include <algorithm>
#include <filesystem>

const ObjectContextMenu::MenuItem ObjectContextMenu::k_separator{CStdStr<wchar_t>(), false, false, 0, 0, ROString(),
                                                                 nullptr};

namespace
{
// Whether the owner takes a clipboard command now: the owner answers the host's "can" message.
bool OwnerAllows(CWnd* owner, UINT canMessage)
{
    return owner && owner->SendMessage(canMessage) == HostMessages::Allowed;
}

// The objects' identities as text, one braced GUID per line.
std::wstring GuidsText(const std::vector<IOrbObject*>& objects)
{
    std::wstring text;
    for (IOrbObject* object : objects)
        if (const GUID* guid = object ? object->GetGUID() : nullptr)
            text += (text.empty() ? L"" : L"\n") + Utf8::ToWide(GuidText::ToString(*guid));
    return text;
}

// The folders of the files of the work units that hold the objects, each once, in the objects'
// order (only the first when that is all the caller needs to know); a work unit never saved has
// no folder yet.
std::vector<std::wstring> ContainingFolders(const std::vector<IOrbObject*>& objects, bool firstOnly = false)
{
    std::vector<std::wstring> folders;
    for (IOrbObject* object : objects)
    {
        const sn::ProjectObject* projectObject = sn::AsProjectObject(object);
        const sn::WorkUnitObject* unit = projectObject ? projectObject->OwningWorkUnit() : nullptr;
        if (!unit)
            continue;
        const std::filesystem::path file = sn::DescribeWorkUnitFile(*unit).path;
        if (file.empty())
            continue;
        std::error_code error;
        const std::filesystem::path absolute = std::filesystem::absolute(file.parent_path(), error);
        const std::wstring folder = Utf8::ToWide((error ? file.parent_path() : absolute).lexically_normal().string());
        if (std::find(folders.begin(), folders.end(), folder) == folders.end())
            folders.push_back(folder);
        if (firstOnly)
            break;
    }
    return folders;
}

void AppendHostEntries(CMenu& menu, CWnd* owner, const std::vector<IOrbObject*>& objects, unsigned long options)
{
    using O = ObjectContextMenu;
    auto append = [&](unsigned long option, uint32_t id, const wchar_t* text, bool enabled)
    {
        if (options & option)
            menu.AppendMenu(MF_STRING | (enabled ? 0u : MF_GRAYED), id, StringHelp::Localize(text).c_str());
    };
    if (menu.GetMenuItemCount() > 0 && (options & (O::Option_Inspect | O::Option_Cut | O::Option_Copy | O::Option_Paste)))
        menu.AppendMenu(MF_SEPARATOR);
    append(O::Option_Inspect, O::Command_Inspect, L"Inspect", !objects.empty());
    append(O::Option_Cut, O::Command_Cut, L"Cut\tCtrl+X", OwnerAllows(owner, HostMessages::CanCut));
    append(O::Option_Copy, O::Command_Copy, L"Copy\tCtrl+C", OwnerAllows(owner, HostMessages::CanCopy));
    append(O::Option_Paste, O::Command_Paste, L"Paste\tCtrl+V", OwnerAllows(owner, HostMessages::CanPaste));
    if (menu.GetMenuItemCount() > 0 && (options & (O::Option_CopyGuid | O::Option_OpenContainingFolder)))
        menu.AppendMenu(MF_SEPARATOR);
    append(O::Option_CopyGuid, O::Command_CopyGuid, L"Copy GUID",
           std::any_of(objects.begin(), objects.end(), [](IOrbObject* object) { return object && object->GetGUID(); }));
    append(O::Option_OpenContainingFolder, O::Command_OpenContainingFolder, L"Open Containing Folder",
           !ContainingFolders(objects, true).empty());
}

void RunHostEntry(uint32_t id, CWnd* owner, const std::vector<IOrbObject*>& objects)
{
    using O = ObjectContextMenu;
    switch (id)
    {
    case O::Command_Inspect:
        OrbObjNotify::FireInspectNotification(objects, 0, 0, true, NotifyHelper::InspectTab_Default, false, false,
                                              true, owner ? owner->GetSafeHwnd() : nullptr);
        break;
    case O::Command_Cut:
        owner->SendMessage(WM_CUT);
        break;
    case O::Command_Copy:
        owner->SendMessage(WM_COPY);
        break;
    case O::Command_Paste:
        owner->SendMessage(WM_PASTE);
        break;
    case O::Command_CopyGuid:
        TextClipboard::Set(GuidsText(objects));
        break;
    case O::Command_OpenContainingFolder:
        for (const std::wstring& folder : ContainingFolders(objects))
            Shell::OpenFolder(folder);
        break;
    default:
        break;
    }
}
} // namespace

uint32_t ObjectContextMenu::DoMenu(CWnd* owner, const std::vector<IOrbObject*>& objects, unsigned long options,
                                   const std::vector<MenuItem>& items, const std::vector<RadioCheck>& radios)
{
    CxCMenu menu;
    menu.CreatePopupMenu();
    for (const MenuItem& item : items)
    {
        if (item.kind == 0)
        {
            menu.AppendMenu(MF_SEPARATOR);
            continue;
        }
        UINT flags = item.enabled ? MF_STRING : (MF_STRING | MF_GRAYED);
        if (item.checked)
            flags |= MF_CHECKED;
        if (item.submenu)
            // The submenu stays its caller's: the entry only points at it.
            menu.AppendMenu(flags | MF_POPUP, reinterpret_cast<UINT_PTR>(item.submenu->GetSafeHmenu()),
                            item.text.c_str());
        else
            menu.AppendMenu(flags, item.id, item.text.c_str());
    }
    for (const RadioCheck& radio : radios)
        menu.CheckMenuRadioItem(radio.first, radio.last, radio.check, MF_BYCOMMAND);
    AppendHostEntries(menu, owner, objects, options);

    const UINT_PTR chosen = menu.TrackPopupMenu(TPM_RETURNCMD | TPM_RIGHTBUTTON, 0, 0, owner);
    // The submenus belong to the caller: take them out before this menu is destroyed.
    for (int position = static_cast<int>(menu.GetMenuItemCount()) - 1; position >= 0; --position)
        if (menu.GetSubMenu(position))
            menu.RemoveMenu(static_cast<UINT>(position), MF_BYPOSITION);

    const auto id = static_cast<uint32_t>(chosen);
    if (id >= Command_Inspect && id <= Command_OpenContainingFolder)
    {
        RunHostEntry(id, owner, objects);
        return id;
    }
    return id;
}
