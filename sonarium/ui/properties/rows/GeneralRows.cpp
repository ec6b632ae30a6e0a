// The rows every object has: what it is, its name (editable where the host lets it be renamed)
// and its GUID.

#include "host/Guid.h"
#include "host/OrbObjectHelpers.h"
#include "host/Utf8.h"
#include "sonarium/core/model/NodeRules.h"
#include "sonarium/core/model/ProjectEdit.h"
#include "sonarium/ui/properties/PropertyRowSource.h"

namespace sn
{
namespace
{
bool MayRename(ProjectObject const& object)
{
    rules::NodeRule const& rule =
        rules::RuleFor(object.GetNodeType(), object.GetCategory(), object.IsTopWorkUnit());
    return rule.capabilities.test(PMTreeNode::CanRename) && OrbObjectHelpers::CanRename(&object);
}

void Rows(ProjectObject const& object, PropertyRowSink& rows)
{
    const std::wstring type =
        object.IsTopWorkUnit()
            ? std::wstring(L"Category Root (") + rules::CategoryName(object.GetCategory()) + L")"
            : std::wstring(rules::NodeTypeName(object.GetNodeType()));
    rows.Add("type", L"Type", type);
    rows.Add("name", L"Name", object.GetName().c_str(),
             MayRename(object) ? PropertyEdit::Text : PropertyEdit::None, true);
    rows.Add("guid", L"GUID", Utf8::ToWide(GuidText::ToString(object.Id())));
}

bool Edit(std::string const& key, std::vector<ProjectObject*> const& objects, std::wstring const& value,
          std::wstring& why)
{
    if (key != "name" || objects.size() != 1)
        return false;
    ProjectObject* object = objects.front();
    const CStdStr<wchar_t> name(value.c_str());
    if (!ProjectEdit::IsValidName(object, object->GetNodeType(), object->Parent(), name, &why))
    {
        if (why.empty())
            why = L"the host refused the name \"" + value + L"\"";
        return false;
    }
    return ProjectEdit::Rename(object, name) ||
           (why = L"the host refused the name \"" + value + L"\"", false);
}

[[maybe_unused]] const bool k_registered = RegisterPropertyRowSource({100, &Rows, &Edit});
} // namespace
} // namespace sn
