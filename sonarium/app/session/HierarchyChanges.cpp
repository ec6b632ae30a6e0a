#include "sonarium/app/session/HierarchyChanges.h"

#include "host/Utf8.h"
#include "sonarium/core/host/ProjectBuilder.h"
#include "sonarium/core/model/Project.h"
#include "sonarium/core/model/ProjectObject.h"

#include <filesystem>
#include <functional>

namespace sn
{
namespace
{
void Walk(const Project* project, const std::function<void(const ProjectObject&)>& visit)
{
    if (!project)
        return;
    std::function<void(const ProjectObject&)> down = [&](const ProjectObject& object) {
        visit(object);
        for (const CSmartPtr<ProjectObject>& child : object.Children())
            down(*child);
    };
    for (const ProjectObject* root : project->Roots())
        down(*root);
}

// The files behind the audio sources in and under object, by their names.
void SourceFiles(const ProjectObject& object, std::vector<std::wstring>& files)
{
    if (object.GetObjectType() == OrbObjectType_AudioSource)
        if (const std::wstring file = object.GetProperty("File"); !file.empty())
            files.push_back(std::filesystem::path(file).filename().wstring());
    for (const CSmartPtr<ProjectObject>& child : object.Children())
        SourceFiles(*child, files);
}

std::wstring Joined(const std::vector<std::wstring>& words)
{
    std::wstring text;
    for (const std::wstring& word : words)
        text += (text.empty() ? L"" : L" ") + word;
    return text;
}

// An object that appeared, under a parent that was there before.
std::wstring Appeared(const Project& project, const ProjectObject& object, bool filesDropped)
{
    if (object.GetNodeType() == PMTreeNode::EventAction && object.Parent())
    {
        const std::optional<GUID> id = GuidText::FromString(Utf8::FromWide(object.GetProperty("Target")));
        const ProjectObject* target = id ? project.Find(*id) : nullptr;
        return L"linked " + (target ? PathOf(*target) : std::wstring(L"nothing")) + L" to " +
               PathOf(*object.Parent()) + L" by a \"" + object.GetName().c_str() + L"\" action";
    }
    std::vector<std::wstring> files;
    if (filesDropped)
        SourceFiles(object, files);
    if (!files.empty())
        return L"imported " + Joined(files) + L" as " + PathOf(object);
    return L"created " + PathOf(object);
}
} // namespace

HierarchySnapshot::HierarchySnapshot(const Project* project)
{
    Walk(project, [this](const ProjectObject& object) {
        m_order.push_back(object.Id());
        m_places[object.Id()] = {object.Parent() ? object.Parent()->Id() : GUID_NULL, PathOf(object)};
    });
}

std::vector<std::wstring> HierarchySnapshot::ChangesSince(const Project* project, bool filesDropped) const
{
    std::vector<std::wstring> lines;
    std::unordered_map<GUID, bool> present;
    Walk(project, [&](const ProjectObject& object) {
        present[object.Id()] = true;
        const GUID parent = object.Parent() ? object.Parent()->Id() : GUID_NULL;
        auto before = m_places.find(object.Id());
        if (before == m_places.end())
        {
            // Only the top of a new subtree is told: its children came with it.
            if (m_places.count(parent))
                lines.push_back(Appeared(*project, object, filesDropped));
        }
        else if (before->second.parent != parent)
            lines.push_back(L"moved " + before->second.path + L" to " + PathOf(object));
        else if (before->second.path != PathOf(object) && object.Parent() &&
                 m_places.at(parent).path == PathOf(*object.Parent()))
            lines.push_back(L"renamed " + before->second.path + L" to " + PathOf(object));
    });
    for (const GUID& id : m_order)
    {
        const Place& place = m_places.at(id);
        if (!present.count(id) && (place.parent == GUID_NULL || present.count(place.parent)))
            lines.push_back(L"removed " + place.path);
    }
    return lines;
}
} // namespace sn
