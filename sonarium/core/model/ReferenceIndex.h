#pragma once
// Which objects refer to which: an event action to its target, a SoundBank to what it holds, a
// container to its switch group. A property refers to objects when its value is a GUID, or GUIDs
// separated by ";". The project keeps the index as objects and properties come and go, so that
// finding who refers to an object costs what the answer holds, not the size of the project.

#include "host/Guid.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace sn
{
class ProjectObject;

class ReferenceIndex
{
public:
    struct Referrer
    {
        ProjectObject* object;
        std::string key; // the property that holds the reference
    };

    // The GUIDs a property value names; empty when the value is not a reference.
    static std::vector<GUID> TargetsOf(const std::wstring& value);
    // The value without the references to target.
    static std::wstring Without(const std::wstring& value, GUID const& target);

    void AddObject(ProjectObject* object);
    void RemoveObject(ProjectObject* object);
    void ChangeProperty(ProjectObject* object, const std::string& key, const std::wstring& before,
                        const std::wstring& after);
    // The properties that refer to target now; null when none does.
    const std::vector<Referrer>* ReferrersOf(GUID const& target) const;

private:
    void Add(ProjectObject* object, const std::string& key, const std::wstring& value);
    void Remove(ProjectObject* object, const std::string& key, const std::wstring& value);

    std::unordered_map<GUID, std::vector<Referrer>, GUIDHash> m_referrers;
};
} // namespace sn
