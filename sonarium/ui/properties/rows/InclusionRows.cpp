// Whether the object is included on each platform of the project, and whether its inclusion is
// one value for every platform (linked) or one per platform.

#include "host/Utf8.h"
#include "sonarium/core/model/Project.h"
#include "sonarium/ui/properties/PropertyRowSource.h"

namespace sn
{
namespace
{
void Rows(ProjectObject const& object, PropertyRowSink& rows)
{
    Project const* project = object.GetProject();
    if (!project || object.IsTopWorkUnit())
        return;
    for (Platform const& platform : project->Platforms())
    {
        const std::wstring name = platform.name.c_str();
        rows.Add("included:" + Utf8::FromWide(name), L"Included on " + name,
                 object.IsIncludedOnPlatform(platform.id, 0) ? L"Yes" : L"No");
    }
    rows.Add("inclusion-linked", L"Inclusion Linked", object.IsInclusionLinked() ? L"Yes" : L"No");
}

[[maybe_unused]] const bool k_registered = RegisterPropertyRowSource({400, &Rows, nullptr});
} // namespace
} // namespace sn
