// Creation requests from the toolbar and the context menu. The host's command of that
// name runs when the host knows it; direct creation follows with the creation commands.

#include "explorer/DlgProjectExplorer.h"

#include "explorer/commands/PEHelper.h"
#include "host/ServiceProvider.h"
#include "host/Utf8.h"
#include "platform/WindowSystem.h"

void DlgProjectExplorer::AddNode(PMTreeNode::NodeType type, bool parent)
{
    const CStdStr<wchar_t> name = PEHelper::GenerateCommandNameFromNodeType(type, parent);
    const ROString id(Utf8::FromWide(PEHelper::GenerateCommandIdFromName(name, L"Project Explorer")));
    auto* commands = sn::g_serviceProviderInstance
                         ? sn::g_serviceProviderInstance->Get<sn::CommandService>(sn::ServiceId_Commands)
                         : nullptr;
    if (commands && commands->HasCommand(id))
        commands->ExecuteCommand(id, 0, 0, 0, 0, 0);
    // Direct creation of children and parents comes with the creation commands.
}

void DlgProjectExplorer::OnButtonClicked(PMTreeNode::NodeType type)
{
    AddNode(type, GetKeyState(VK_SHIFT) < 0);
}
