#include "sonarium/core/deletion/Deletion.h"

#include "host/GlobalProp.h"
#include "host/Utf8.h"
#include "host/Undo.h"
#include "sonarium/core/model/CurrentState.h"
#include "sonarium/core/model/Project.h"
#include "sonarium/core/model/ProjectEdit.h"

#include <unordered_set>

namespace sn::deletion
{
namespace
{
using ObjectSet = std::unordered_set<const ProjectObject*>;

bool IsWithin(const ProjectObject* object, const ObjectSet& roots)
{
    for (; object; object = object->Parent())
        if (roots.count(object))
            return true;
    return false;
}

// Calls visit for the object and everything it holds, parts included.
template <class Visit>
void ForEachInSubtree(ProjectObject* object, Visit& visit)
{
    visit(object);
    for (const CSmartPtr<ProjectObject>& child : object->Children())
        ForEachInSubtree(child.Get(), visit);
}
} // namespace

std::vector<Reference> OutsideReferences(const std::vector<ProjectObject*>& objects)
{
    std::vector<Reference> found;
    const ObjectSet roots(objects.begin(), objects.end());
    for (ProjectObject* root : objects)
    {
        Project* project = root ? root->GetProject() : nullptr;
        // Below another root of the list: its subtree is visited once, from that root.
        if (!project || IsWithin(root->Parent(), roots))
            continue;
        auto visit = [&](ProjectObject* target)
        {
            if (const auto* referrers = project->References().ReferrersOf(target->Id()))
                for (const ReferenceIndex::Referrer& referrer : *referrers)
                    if (!IsWithin(referrer.object, roots))
                        found.push_back({referrer.object, referrer.key, target});
        };
        ForEachInSubtree(root, visit);
    }
    return found;
}

std::wstring Describe(const Reference& reference)
{
    auto name = [](const ProjectObject* object)
    {
        // Actions and sources have no row of their own: the user knows them by their owner.
        std::wstring text = object->GetName();
        if (const IOrbObject* owner = object->GetOwnerObject())
            text = std::wstring(owner->GetName()) + L" / " + text;
        return L"\"" + text + L"\"";
    };
    return name(reference.referrer) + L" (" + Utf8::ToWide(reference.key) + L") refers to " + name(reference.target);
}

bool DeleteObjects(const std::vector<ProjectObject*>& objects, const std::vector<Reference>& references)
{
    std::vector<CSmartPtr<ProjectObject>> doomed;
    const ObjectSet roots(objects.begin(), objects.end());
    for (ProjectObject* object : objects)
        if (object && object->IsInProject() && object->Parent() && !IsWithin(object->Parent(), roots))
            doomed.emplace_back(object);
    if (doomed.empty())
        return false;

    ScopedGlobalPropRaise lock(propLockUIUpdate);
    AutoComplexUndo step(L"Delete", false);
    for (const Reference& reference : references)
        ProjectEdit::SetProperty(reference.referrer, reference.key,
                                 ReferenceIndex::Without(reference.referrer->GetProperty(reference.key),
                                                         reference.target->Id()));
    for (const CSmartPtr<ProjectObject>& object : doomed)
        ProjectEdit::Delete(object.Get());
    return true;
}
} // namespace sn::deletion
