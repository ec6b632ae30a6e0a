#include "sonarium/core/rename/BatchRename.h"

#include "host/GlobalProp.h"
#include "host/OrbObjectHelpers.h"
#include "host/StringHelp.h"
#include "host/Undo.h"
#include "sonarium/core/model/CurrentState.h"
#include "sonarium/core/model/ProjectEdit.h"

#include <algorithm>
#include <map>
#include <set>
#include <unordered_map>

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
// The objects of one place may not end up sharing a name: each object that would (with the names
// the others have after the batch) keeps its own. An object that keeps its name may clash in turn
// with one renamed to it, so this runs until nothing changes.
void RefuseSharedNames(const std::vector<ProjectObject*>& objects, std::vector<BatchRenameRow>& rows)
{
    std::unordered_map<const ProjectObject*, size_t> rowOf;
    std::set<const ProjectObject*> parents;
    for (size_t i = 0; i < objects.size(); ++i)
    {
        rowOf.emplace(objects[i], i);
        parents.insert(objects[i]->Parent());
    }
    auto renamed = [&](size_t i) { return rows[i].problem.empty() && rows[i].newName != rows[i].oldName; };
    for (bool changed = true; changed;)
    {
        changed = false;
        for (const ProjectObject* parent : parents)
        {
            if (!parent)
                continue;
            std::map<CStdStr<wchar_t>, int> uses;
            auto finalName = [&](const ProjectObject* child)
            {
                auto row = rowOf.find(child);
                return CStdStr<wchar_t>(row != rowOf.end() && renamed(row->second) ? rows[row->second].newName
                                                                                  : std::wstring(child->GetName()))
                    .MakeLower();
            };
            for (const CSmartPtr<ProjectObject>& child : parent->Children())
                ++uses[finalName(child.Get())];
            for (const CSmartPtr<ProjectObject>& child : parent->Children())
            {
                auto row = rowOf.find(child.Get());
                if (row != rowOf.end() && renamed(row->second) && uses[finalName(child.Get())] > 1)
                {
                    rows[row->second].problem =
                        StringHelp::Localize(L"Another object in the same place would have this name.");
                    changed = true;
                }
            }
        }
    }
}
} // namespace

void SortInHierarchyOrder(std::vector<ProjectObject*>& objects)
{
    // Each object's path of positions from its root: comparing paths compares places in the tree.
    auto pathOf = [](const ProjectObject* object)
    {
        std::vector<size_t> path;
        for (; object->Parent(); object = object->Parent())
            path.push_back(object->Parent()->IndexOf(object));
        path.push_back(static_cast<size_t>(object->GetCategory()));
        return std::vector<size_t>(path.rbegin(), path.rend());
    };
    std::vector<std::pair<std::vector<size_t>, ProjectObject*>> keyed;
    for (ProjectObject* object : objects)
        keyed.emplace_back(pathOf(object), object);
    std::stable_sort(keyed.begin(), keyed.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    for (size_t i = 0; i < objects.size(); ++i)
        objects[i] = keyed[i].second;
}

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
        rows.push_back(std::move(row));
    }
    RefuseSharedNames(objects, rows);
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
