#include "sonarium/core/model/ObjectKinds.h"

#include "host/Utf8.h"
#include "sonarium/core/model/Project.h"
#include "sonarium/core/model/ProjectEdit.h"

#include <cstdio>
#include <cwchar>
#include <filesystem>
#include <unistd.h>

namespace sn
{
namespace
{
constexpr const char* kScope = "Scope";
} // namespace

EventObject::EventObject(Project* project, GUID const& id, CStdStr<wchar_t> name)
    : ProjectObject(project, id, PMTreeNode::Event, OrbObjectType_Event, std::move(name))
{
}

EventActionObject::EventActionObject(Project* project, GUID const& id, CStdStr<wchar_t> name)
    : ProjectObject(project, id, PMTreeNode::EventAction, OrbObjectType_EventAction, std::move(name))
{
}

bool EventActionObject::SetReferenceProperty(const ROString& name, IOrbObject* value)
{
    const ProjectObject* target = AsProjectObject(value);
    if (value && !target)
        return false;
    ProjectEdit::SetProperty(this, name.c_str(), target ? Utf8::ToWide(GuidText::ToString(target->Id())) : L"");
    return true;
}

bool EventActionObject::SetVariantProperty(const ROString& name, const OrbPropertyValue& value)
{
    std::wstring text;
    if (const bool* flag = std::get_if<bool>(&value))
        // The scope reads as what it means; other flags as true and false.
        text = std::string(name.c_str()) == kScope ? (*flag ? L"Global" : L"GameObject") : (*flag ? L"true" : L"false");
    else if (const long long* number = std::get_if<long long>(&value))
        text = std::to_wstring(*number);
    else
        text = std::get<std::wstring>(value);
    ProjectEdit::SetProperty(this, name.c_str(), text);
    return true;
}

SoundObject::SoundObject(Project* project, GUID const& id, NodeType type, CStdStr<wchar_t> name)
    : ProjectObject(project, id, type, OrbObjectType_Sound, std::move(name))
{
}

std::string SoundObject::ActiveSourceKey(unsigned long language)
{
    return language == AudioSourcesHelpers::LanguageIndependent ? "ActiveSource"
                                                                 : "ActiveSource." + std::to_string(language);
}

unsigned long SoundObject::LanguageOf(const ProjectObject& source)
{
    const std::wstring text = source.GetProperty("Language");
    if (text.empty())
        return AudioSourcesHelpers::LanguageIndependent;
    wchar_t* end = nullptr;
    const unsigned long language = std::wcstoul(text.c_str(), &end, 10);
    return end && *end == 0 ? language : AudioSourcesHelpers::LanguageIndependent;
}

bool SoundObject::GetActiveSource(unsigned long language, GUID const& platform, CSmartPtr<IOrbObject>& source) const
{
    source = nullptr;
    const std::optional<GUID> active = GuidText::FromString(Utf8::FromWide(GetProperty(ActiveSourceKey(language))));
    const ProjectObject* first = nullptr;
    for (const CSmartPtr<ProjectObject>& child : Children())
    {
        if (child->GetObjectType() != OrbObjectType_AudioSource || LanguageOf(*child) != language ||
            (platform != GUID_NULL && !child->IsIncludedOnPlatform(platform, 0)))
            continue;
        if (active && child->Id() == *active)
        {
            source = child.Get();
            return true;
        }
        if (!first)
            first = child.Get();
    }
    source = const_cast<ProjectObject*>(first);
    return first != nullptr;
}

std::optional<uint32_t> PluginHolder::GetPluginID(const ProjectObject& object)
{
    const std::wstring text = object.GetProperty("PluginID");
    wchar_t* end = nullptr;
    const unsigned long long id = std::wcstoull(text.c_str(), &end, 0);
    if (text.empty() || !end || *end != 0 || id > 0xFFFFFFFFull)
        return std::nullopt;
    return static_cast<uint32_t>(id);
}

void PluginHolder::SetPlugin(ProjectObject& object, uint32_t classId, const CStdStr<wchar_t>& name)
{
    ProjectEdit::SetProperty(&object, "PluginID", IdText(classId));
    ProjectEdit::SetProperty(&object, "PluginName", name);
}

std::wstring PluginHolder::IdText(uint32_t classId)
{
    wchar_t text[16];
    std::swprintf(text, 16, L"0x%08X", classId);
    return text;
}

PluginObject::PluginObject(Project* project, GUID const& id, NodeType type, OrbObjectType objectType,
                           CStdStr<wchar_t> name)
    : ProjectObject(project, id, type, objectType, std::move(name))
{
}

void PluginObject::SetPlugin(uint32_t classId, const CStdStr<wchar_t>& name)
{
    PluginHolder::SetPlugin(*this, classId, name);
}

uint32_t PluginObject::GetPluginID() const
{
    return PluginHolder::GetPluginID(*this).value_or(0);
}

EffectPluginObject::EffectPluginObject(Project* project, GUID const& id, NodeType type, CStdStr<wchar_t> name)
    : PluginObject(project, id, type,
                   type == PMTreeNode::MixerPlugin ? OrbObjectType_MixerPlugin : OrbObjectType_Effect,
                   std::move(name))
{
}

AudioDeviceObject::AudioDeviceObject(Project* project, GUID const& id, CStdStr<wchar_t> name)
    : PluginObject(project, id, PMTreeNode::AudioDevice, OrbObjectType_AudioDevice, std::move(name))
{
}

bool WorkUnitObject::IsReadyForNewWorkUnits() const
{
    // New work units go into a category's root or a physical folder of an open project, whose
    // folder, once it has one, must take the new files at the next save.
    if (!IsInProject() || (GetNodeType() != PMTreeNode::PhysicalFolder && !IsTopWorkUnit()) || !IsLoaded())
        return false;
    const std::filesystem::path& folder = GetProject()->GetFolder();
    return folder.empty() || ::access(folder.c_str(), W_OK) == 0;
}
} // namespace sn
