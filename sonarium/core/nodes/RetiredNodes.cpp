#include "sonarium/core/nodes/RetiredNodes.h"

#include "host/PMTreeNode.h"
#include "platform/WindowSystem.h"

#include <vector>

namespace sn::nodes
{
namespace
{
std::vector<PMTreeNode*>& Retired()
{
    static std::vector<PMTreeNode*> retired;
    return retired;
}
} // namespace

void Retire(PMTreeNode* node)
{
    if (Retired().empty())
        WindowSystem::Get().DeferUntilIdle(&FreeRetired);
    Retired().push_back(node);
}

void FreeRetired()
{
    std::vector<PMTreeNode*> retired;
    retired.swap(Retired());
    for (PMTreeNode* node : retired)
        delete node;
}
} // namespace sn::nodes
