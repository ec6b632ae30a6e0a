#include "sonarium/ui/inspector/InspectorRowSource.h"

#include <algorithm>

namespace sn
{
namespace
{
std::vector<InspectorRowSource>& Registry()
{
    static std::vector<InspectorRowSource> sources;
    return sources;
}
} // namespace

bool RegisterInspectorRowSource(InspectorRowSource source)
{
    std::vector<InspectorRowSource>& sources = Registry();
    auto at =
        std::upper_bound(sources.begin(), sources.end(), source.order,
                         [](int order, InspectorRowSource const& other) { return order < other.order; });
    sources.insert(at, std::move(source));
    return true;
}

std::vector<InspectorRowSource> const& InspectorRowSources()
{
    return Registry();
}
} // namespace sn
