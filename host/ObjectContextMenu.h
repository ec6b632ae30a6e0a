#pragma once
// The host's context menu for project objects: a view hands it its own entries and the objects
// they act on; the host adds its standard object entries, shows the menu and returns the chosen
// command identifier (0 when dismissed). A host entry runs its own action before DoMenu returns
// and comes back as an identifier the view does not know.

#include "host/CxCMenu.h"
#include "host/ROString.h"
#include "host/StdStr.h"

#include <cstdint>
#include <vector>

class CWnd;
class IOrbObject;

class ObjectContextMenu
{
public:
    struct MenuItem
    {
        CStdStr<wchar_t> text;        // shortcut column after a tab
        bool enabled = true;
        bool checked = false;
        uint32_t id = 0;              // 0 for an entry that only opens a submenu
        uint32_t kind = 1;            // 1: an entry; 0: a separator
        ROString command;             // a host command run instead of returning id; empty: none
        CxCMenu* submenu = nullptr;   // borrowed: the caller keeps it alive until DoMenu returns
    };

    // A radio mark on check among the entries first..last.
    struct RadioCheck
    {
        uint32_t first = 0;
        uint32_t last = 0;
        uint32_t check = 0;
    };

    static const MenuItem k_separator;

    // Bits of options: which standard entries the host adds after the caller's.
    enum Option : unsigned long
    {
        Option_Inspect = 0x1,
        Option_Cut = 0x4,
        Option_Copy = 0x8,
        Option_Paste = 0x10,
        Option_CopyGuid = 0x20,
        Option_OpenContainingFolder = 0x40,
    };

    // Identifiers of the host's own entries, far below any view's.
    enum HostCommand : uint32_t
    {
        Command_Inspect = 0x7F01,
        Command_Cut,
        Command_Copy,
        Command_Paste,
        Command_CopyGuid,
        Command_OpenContainingFolder,
    };

    static uint32_t DoMenu(CWnd* owner, const std::vector<IOrbObject*>& objects, unsigned long options,
                           const std::vector<MenuItem>& items, const std::vector<RadioCheck>& radios);
};
