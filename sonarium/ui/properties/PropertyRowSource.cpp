#include "sonarium/ui/properties/PropertyRowSource.h"

#include <algorithm>

namespace sn
{
namespace
{
std::vector<PropertyRowSource>& Registry()
{
    static std::vector<PropertyRowSource> sources;
    return sources;
}
} // namespace

bool RegisterPropertyRowSource(PropertyRowSource source)
{
    std::vector<PropertyRowSource>& sources = Registry();
    auto at =
        std::upper_bound(sources.begin(), sources.end(), source.order,
                         [](int order, PropertyRowSource const& other) { return order < other.order; });
    sources.insert(at, std::move(source));
    return true;
}

std::vector<PropertyRowSource> const& PropertyRowSources()
{
    return Registry();
}
} // namespace sn
