#include "sonarium/core/model/EditGuard.h"

#include "host/Utf8.h"
#include "sonarium/core/model/ModelNotify.h"

#include <utility>
#include <vector>

namespace sn::EditGuard
{
namespace
{
bool Refuse(std::wstring* why, std::wstring reason)
{
    if (why)
        *why = std::move(reason);
    return false;
}

size_t DepthOf(const ProjectObject* object)
{
    size_t depth = 0;
    for (const ProjectObject* up = object->Parent(); up; up = up->Parent())
        ++depth;
    return depth;
}

bool Report(bool allowed, const std::wstring& why)
{
    if (!allowed)
        notify::EditRefused(why);
    return allowed;
}
} // namespace

bool CanChangeInside(const ProjectObject* object, std::wstring* why)
{
    const WorkUnitObject* unit = object ? object->OwningWorkUnit() : nullptr;
    if (!unit || unit->IsLoaded())
        return true;
    const std::wstring name = L"The work unit \"" + std::wstring(unit->GetName()) + L"\"";
    if (!unit->LoadProblem().empty())
        return Refuse(why, name + L" could not be read from its file (" + Utf8::ToWide(unit->LoadProblem()) +
                               L"): repair the file and load the work unit before changing what it holds.");
    return Refuse(why, name + L" is not loaded: load it before changing what it holds.");
}

bool CanNestUnder(const ProjectObject* parent, size_t height, std::wstring* why)
{
    if (!parent || DepthOf(parent) + height <= kMaxDepth)
        return true;
    return Refuse(why, L"Objects cannot nest deeper than " + std::to_wstring(kMaxDepth) +
                           L" levels: the change would put one deeper.");
}

bool AllowsInsert(const ProjectObject* parent, size_t height)
{
    std::wstring why;
    return Report(CanChangeInside(parent, &why) && CanNestUnder(parent, height, &why), why);
}

bool AllowsChange(const ProjectObject* object)
{
    std::wstring why;
    return Report(CanChangeInside(object, &why), why);
}

size_t HeightOf(const ProjectObject* object)
{
    // Breadth first, level by level: a deep subtree must not cost a deep stack.
    size_t height = 0;
    std::vector<const ProjectObject*> level{object}, next;
    while (!level.empty())
    {
        ++height;
        next.clear();
        for (const ProjectObject* item : level)
            for (const CSmartPtr<ProjectObject>& child : item->Children())
                next.push_back(child.Get());
        std::swap(level, next);
    }
    return object ? height : 0;
}
} // namespace sn::EditGuard
