#include "sonarium/app/session/CreateCommands.h"

#include "explorer/DlgProjectExplorer.h"
#include "explorer/commands/PEHelper.h"
#include "host/Utf8.h"

namespace sn
{
namespace
{
// Node types are small numbers; those without a create command have no name.
constexpr int k_lastNodeType = 63;
} // namespace

void RegisterCreateCommands(Commands& commands, std::function<DlgProjectExplorer*()> focusedView)
{
    for (int value = 0; value <= k_lastNodeType; ++value)
    {
        const auto type = static_cast<PMTreeNode::NodeType>(value);
        if (PEHelper::ConvertNodeTypeToStringId(type).IsEmpty())
            continue;
        for (const bool parent : {false, true})
        {
            const CStdStr<wchar_t> id = PEHelper::GenerateCommandIdFromName(
                PEHelper::GenerateCommandNameFromNodeType(type, parent), L"Project Explorer");
            commands.Register(ROString(Utf8::FromWide(id)),
                              [focusedView, type, parent](uintptr_t, uintptr_t, uintptr_t, uintptr_t, uintptr_t)
                              {
                                  DlgProjectExplorer* view = focusedView();
                                  if (!view)
                                      return false;
                                  return parent ? view->AddParentToItem(type, nullptr)
                                                : view->AddChildToItem(type, true, nullptr);
                              });
        }
    }
}
} // namespace sn
