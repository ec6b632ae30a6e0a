#include "sonarium/core/rename/BatchRename.h"

#include "host/GlobalProp.h"
#include "host/OrbObjectHelpers.h"
#include "host/StringHelp.h"
#include "host/Undo.h"
#include "sonarium/core/model/CurrentState.h"
#include "sonarium/core/model/ProjectEdit.h"

#include <map>

namespace sn::rename
{
namespace
{
std::wstring ReplaceAll(std::wstring text, const std::wstring& find, const std::wstring& replace)
{
    if (find.empty())
        return text;
    for (size_t at = text.find(find); at != std::wstring::npos; at = text.find(find, at + replace.size()))
        text.replace(at, find.size(), replace);
    return text;
}

std::wstring Padded(long long number, int digits)
{
    std::wstring text = std::to_wstring(number < 0 ? -number : number);
    if (digits > 0 && text.size() < static_cast<size_t>(digits))
        text.insert(0, static_cast<size_t>(digits) - text.size(), L'0');
    return number < 0 ? L"-" + text : text;
}
} // namespace

std::wstring NewName(const std::wstring& name, const BatchRenameRule& rule, size_t index)
{
    std::wstring result = rule.prefix + ReplaceAll(name, rule.find, rule.replace) + rule.suffix;
    if (rule.numbering)
        result += Padded(static_cast<long long>(rule.start) + static_cast<long long>(index), rule.digits);
    return result;
}

std::vector<BatchRenameRow> Preview(const std::vector<ProjectObject*>& objects, const BatchRenameRule& rule)
{
    std::vector<BatchRenameRow> rows;
    // Two objects of one parent may not end up with the same name through the batch.
    std::map<std::pair<const ProjectObject*, CStdStr<wchar_t>>, size_t> taken;
    for (size_t i = 0; i < objects.size(); ++i)
    {
        const ProjectObject* object = objects[i];
        BatchRenameRow row;
        row.oldName = object->GetName();
        row.newName = NewName(row.oldName, rule, i);
        std::wstring why;
        if (row.newName == row.oldName)
            ; // nothing to change
        else if (!OrbObjectHelpers::CanRename(object))
            row.problem = StringHelp::Localize(L"This object cannot be renamed.");
        else if (!ProjectEdit::IsValidName(object, object->GetNodeType(), object->Parent(), row.newName, &why))
            row.problem = why;
        else if (CStdStr<wchar_t> lower = CStdStr<wchar_t>(row.newName).MakeLower();
                 !taken.emplace(std::make_pair(object->Parent(), lower), i).second)
            row.problem = StringHelp::Localize(L"Another object of the batch gets this name in the same place.");
        rows.push_back(std::move(row));
    }
    return rows;
}

size_t Apply(const std::vector<ProjectObject*>& objects, const BatchRenameRule& rule)
{
    const std::vector<BatchRenameRow> rows = Preview(objects, rule);
    ScopedGlobalPropRaise lock(propLockUIUpdate);
    AutoComplexUndo step(L"Batch Rename", false);
    size_t renamed = 0;
    for (size_t i = 0; i < objects.size(); ++i)
        if (rows[i].problem.empty() && rows[i].newName != rows[i].oldName &&
            ProjectEdit::Rename(objects[i], rows[i].newName))
            ++renamed;
    return renamed;
}
} // namespace sn::rename
