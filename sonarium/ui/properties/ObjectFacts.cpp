#include "sonarium/ui/properties/ObjectFacts.h"

#include "host/AudioSourcesHelpers.h"
#include "host/Utf8.h"
#include "sonarium/core/host/ProjectBuilder.h"
#include "sonarium/core/import/SourceAudio.h"
#include "sonarium/core/model/CurrentState.h"
#include "sonarium/core/model/NodeRules.h"
#include "sonarium/core/model/ObjectKinds.h"
#include "sonarium/core/model/ReferenceIndex.h"

#include <set>

namespace sn
{
namespace
{
// Properties shown in lines of their own rather than as plain properties.
const std::set<std::string>& ShownApart()
{
    static const std::set<std::string> keys{"PluginID", "PluginName", "ActionType", "Scope",
                                            "Target",   "File",       "Language"};
    return keys;
}

bool IsActiveSourceKey(const std::string& key)
{
    return key.starts_with("ActiveSource");
}

// A property that refers to objects shows their paths ("@AudioObjects/..."), one missing from
// the project its GUID; any other shows its text.
std::wstring ValueText(const Project& project, const std::wstring& value)
{
    const std::vector<GUID> targets = ReferenceIndex::TargetsOf(value);
    if (targets.empty())
        return value;
    std::wstring text;
    for (const GUID& id : targets)
    {
        const ProjectObject* named = project.Find(id);
        text += (text.empty() ? L"@" : L", @") +
                (named ? PathOf(*named) : L"(missing " + Utf8::ToWide(GuidText::ToString(id)) + L")");
    }
    return text;
}

std::wstring PluginText(const ProjectObject& object)
{
    const std::optional<uint32_t> id = PluginHolder::GetPluginID(object);
    return object.GetProperty("PluginName") + L" (" + (id ? PluginHolder::IdText(*id) : L"?") + L")";
}

std::wstring SourceLine(const ProjectObject& sound, const ProjectObject& source)
{
    std::wstring line = L"\"" + source.GetName() + L"\": ";
    line += source.GetProperty("PluginID").empty()
                ? L"file " + (source.GetProperty("File").empty() ? L"-" : source.GetProperty("File"))
                : L"plug-in " + PluginText(source);
    const unsigned long language = SoundObject::LanguageOf(source);
    line += language == AudioSourcesHelpers::LanguageIndependent ? L", no language"
                                                                  : L", language " + std::to_wstring(language);
    const std::wstring active = sound.GetProperty(SoundObject::ActiveSourceKey(language));
    if (!active.empty() && GuidText::FromString(Utf8::FromWide(active)) == source.Id())
        line += L", active";
    // What the file holds, or what is wrong with it.
    if (source.GetProperty("PluginID").empty())
        line += L": " + audio::ReadAudioFileInfo(audio::SourceFilePath(source)).Describe();
    return line;
}

std::wstring ActionLine(const Project& project, const ProjectObject& action)
{
    const std::wstring type = action.GetProperty("ActionType");
    const std::wstring scope = action.GetProperty("Scope");
    const std::wstring target = action.GetProperty("Target");
    return L"\"" + action.GetName() + L"\": type " + (type.empty() ? L"-" : type) + L", scope " +
           (scope == L"Global" ? L"global" : scope == L"GameObject" ? L"game object" : L"-") + L", target " +
           (target.empty() ? L"none" : ValueText(project, target));
}

// A part that is neither a source nor an action (a music track's clip): its kind, name and
// properties.
std::wstring PartLine(const Project& project, const ProjectObject& part)
{
    std::wstring line = std::wstring(rules::NodeTypeName(part.GetNodeType())) + L" \"" + part.GetName() + L"\"";
    for (const auto& [key, value] : part.Properties())
        line += L", " + Utf8::ToWide(key) + L" = " + ValueText(project, value);
    return line;
}

// Where an object excluded on a platform gets it from: itself, or the nearest excluded ancestor.
std::wstring PlatformLine(const ProjectObject& object, const Platform& platform)
{
    std::wstring state = L"included";
    if (!object.GetIncluded(platform.id))
        state = L"excluded";
    else if (!object.IsIncludedOnPlatform(platform.id, 0))
        for (const ProjectObject* up = object.Parent(); up; up = up->Parent())
            if (!up->GetIncluded(platform.id))
            {
                state = L"excluded (through \"" + std::wstring(up->GetName()) + L"\")";
                break;
            }
    return std::wstring(platform.name) + L": " + state;
}

std::wstring InclusionLine(const Project& project, const ProjectObject& object)
{
    auto state = [&](GUID const& platform) {
        if (!object.GetIncluded(platform))
            return std::wstring(L"excluded");
        return object.IsIncludedOnPlatform(platform, 0) ? std::wstring(L"included")
                                                        : std::wstring(L"included (a parent is excluded)");
    };
    if (object.IsInclusionLinked())
        return L"linked: " + state(CurrentPlatform());
    std::wstring line = L"unlinked:";
    for (size_t i = 0; i < project.Platforms().size(); ++i)
        line += (i ? L", " : L" ") + project.Platforms()[i].name + L" " + state(project.Platforms()[i].id);
    return line;
}
} // namespace

std::vector<ObjectFact> ObjectFacts(const Project& project, const ProjectObject& object)
{
    std::vector<ObjectFact> facts;
    auto add = [&](const wchar_t* word, const wchar_t* label, std::wstring text)
    { facts.push_back({word, label, std::move(text)}); };
    add(L"type", L"Type", rules::NodeTypeName(object.GetNodeType()));
    add(L"name", L"Name", object.GetName().c_str());
    if (!object.GetProperty("PluginID").empty() && object.GetObjectType() != OrbObjectType_AudioSource)
        add(L"plug-in", L"Plug-in", PluginText(object));
    // The parts of an object show as their owner shows them.
    if (object.GetObjectType() == OrbObjectType_AudioSource && object.Parent())
        add(L"source", L"Source", SourceLine(*object.Parent(), object));
    for (const CSmartPtr<ProjectObject>& child : object.Children())
        if (child->GetObjectType() == OrbObjectType_AudioSource)
            add(L"source", L"Source", SourceLine(object, *child));
    if (object.GetObjectType() == OrbObjectType_EventAction)
        add(L"action", L"Action", ActionLine(project, object));
    for (const CSmartPtr<ProjectObject>& child : object.Children())
        if (child->GetObjectType() == OrbObjectType_EventAction)
            add(L"action", L"Action", ActionLine(project, *child));
    for (const CSmartPtr<ProjectObject>& child : object.Children())
        if (!ProjectObject::IsHierarchyMember(child->GetObjectType()) &&
            child->GetObjectType() != OrbObjectType_AudioSource && child->GetObjectType() != OrbObjectType_EventAction)
            add(L"part", L"Part", PartLine(project, *child));
    for (const auto& [key, value] : object.Properties())
        if (!ShownApart().count(key) && !IsActiveSourceKey(key))
            facts.push_back({L"property", Utf8::ToWide(key), ValueText(project, value)});
    add(L"inclusion", L"Inclusion", InclusionLine(project, object));
    for (const Platform& platform : project.Platforms())
        add(L"platform", L"Platform", PlatformLine(object, platform));
    return facts;
}

std::vector<std::wstring> ObjectLines(const Project& project, const ProjectObject& object)
{
    std::vector<std::wstring> lines;
    for (const ObjectFact& fact : ObjectFacts(project, object))
        lines.push_back(fact.word + L" " + (fact.word == L"property" ? fact.label + L" = " : L"") + fact.text);
    return lines;
}
} // namespace sn
