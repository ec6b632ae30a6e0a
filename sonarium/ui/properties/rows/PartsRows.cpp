// What an object is made of beyond its place in the tree: its plug-in, a sound's sources, an
// event's actions, a track's clips, and its other stored properties (preset values among them),
// as "print object" tells them.

#include "host/Utf8.h"
#include "sonarium/ui/properties/PropertyRowSource.h"
#include "sonarium/ui/properties/ObjectFacts.h"

#include <map>

namespace sn
{
namespace
{
void Rows(ProjectObject const& object, PropertyRowSink& rows)
{
    Project const* project = object.GetProject();
    if (!project)
        return;
    std::map<std::wstring, int> counts;
    for (ObjectFact const& fact : ObjectFacts(*project, object))
    {
        if (fact.word == L"property")
        {
            // Notes have an editable row of their own.
            if (fact.label != L"Notes")
                rows.Add("property:" + Utf8::FromWide(fact.label), fact.label, fact.text);
        }
        else if (fact.word == L"plug-in")
            rows.Add("plug-in", fact.label, fact.text);
        else if (fact.word == L"source" || fact.word == L"action" || fact.word == L"part")
            rows.Add(Utf8::FromWide(fact.word) + ":" + std::to_string(++counts[fact.word]), fact.label, fact.text);
    }
}

[[maybe_unused]] const bool k_registered = RegisterPropertyRowSource({250, &Rows, nullptr});
} // namespace
} // namespace sn
