#include "sonarium/core/storage/StorageState.h"

#include <mutex>
#include <unordered_map>

namespace sn
{
namespace
{
// A root of the project, held so that a state outliving its project is recognised: the project's
// destructor detaches every object it indexed.
struct Entry
{
    CSmartPtr<WorkUnitObject> anchor;
    StorageState state;
};

std::unordered_map<const Project*, Entry>& Registry()
{
    static std::unordered_map<const Project*, Entry> registry;
    return registry;
}

std::mutex& RegistryMutex()
{
    static std::mutex mutex;
    return mutex;
}

bool IsCurrent(const Project* project, const Entry& entry)
{
    return entry.anchor && entry.anchor->GetProject() == project;
}

// Keeps the entry of keep, so that references to its state stay valid.
void DropStale(const Project* keep)
{
    auto& registry = Registry();
    for (auto it = registry.begin(); it != registry.end();)
        it = it->first == keep || IsCurrent(it->first, it->second) ? std::next(it) : registry.erase(it);
}

WorkUnitObject* AnchorOf(const Project& project)
{
    const std::vector<WorkUnitObject*> roots = project.Roots();
    return roots.empty() ? nullptr : roots.front();
}

StorageState& StateOf(const Project& project, bool reset)
{
    std::lock_guard<std::mutex> lock(RegistryMutex());
    DropStale(&project);
    Entry& entry = Registry()[&project];
    // Without a root there is nothing to anchor to, and no work unit to remember either.
    if (reset || !IsCurrent(&project, entry))
        entry = Entry{AnchorOf(project), StorageState{}};
    return entry.state;
}
} // namespace

StorageState& StorageStateOf(const Project& project)
{
    return StateOf(project, false);
}

StorageState& ResetStorageState(const Project& project)
{
    return StateOf(project, true);
}

void ForgetStorageState(const Project& project)
{
    std::lock_guard<std::mutex> lock(RegistryMutex());
    Registry().erase(&project);
    DropStale(nullptr);
}

bool IsWorkUnitBroken(const Project& project, const WorkUnitObject* unit)
{
    return unit && StorageStateOf(project).broken.count(unit->Id()) != 0;
}
} // namespace sn
