#include "sonarium/app/session/ExplorerCommands.h"

#include "host/HostMessages.h"

namespace sn
{
const std::vector<ExplorerCommand>& ExplorerCommands()
{
    using View = DlgProjectExplorer;
    static const std::vector<ExplorerCommand> commands = {
        {L"delete", L"Delete", [](View& view) { view.SendMessage(HostMessages::DeleteObject, 0, 0); }},
        {L"batch-rename", L"Batch Rename...", [](View& view) { view.OnBatchRename(); }},
        {L"import-audio", L"Import Audio Files...", [](View& view) { view.OnAudioFileImporter(); }},
        {L"import-soundbank-definition", L"Import SoundBank Definition...",
         [](View& view) { view.OnImportSoundbankDefinition(); }},
        {L"load-unload", L"Load or Unload Work Units", [](View& view) { view.OnEnableWorkUnit(); }},
        {L"include", L"Include Selection", [](View& view) { view.OnCheckSelection(); }},
        {L"exclude", L"Exclude Selection", [](View& view) { view.OnUncheckSelection(); }},
        {L"link", L"Link Inclusion", [](View& view) { view.OnLinkInclusion(); }},
        {L"unlink", L"Unlink Inclusion", [](View& view) { view.OnUnLinkInclusion(); }},
        {L"expand-descendants", L"Expand Descendants", [](View& view) { view.OnExpandDescendants(); }},
        {L"collapse-descendants", L"Collapse Descendants", [](View& view) { view.OnCollapseDescendants(); }},
    };
    return commands;
}

const ExplorerCommand* FindExplorerCommand(const std::wstring& name)
{
    for (const ExplorerCommand& command : ExplorerCommands())
        if (name == command.name)
            return &command;
    return nullptr;
}
} // namespace sn
