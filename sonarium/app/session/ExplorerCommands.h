#pragma once
// The explorer's structure commands as the host's menus and the script driver reach them on a
// view: each runs the handler the view's context menu runs for its entry.

#include "explorer/DlgProjectExplorer.h"

#include <string>
#include <vector>

namespace sn
{
struct ExplorerCommand
{
    const wchar_t* name; // the script's word: "expand-descendants"
    const wchar_t* text; // the menu's entry: "Expand Descendants"
    void (*run)(DlgProjectExplorer& view);
};

// In menu order.
const std::vector<ExplorerCommand>& ExplorerCommands();
const ExplorerCommand* FindExplorerCommand(const std::wstring& name);
} // namespace sn
