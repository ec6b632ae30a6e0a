#include "sonarium/core/presets/PresetFile.h"

#include "host/Utf8.h"
#include "sonarium/core/model/NodeRules.h"
#include "sonarium/core/naming/NamingRules.h"
#include "sonarium/core/presets/PresetObject.h"
#include "sonarium/core/storage/FileIO.h"
#include "sonarium/core/storage/StorageJson.h"

namespace sn
{
namespace
{
namespace fs = std::filesystem;
using storage::FormatError;
using storage::Json;

CSmartPtr<ProjectObject> ReadPreset(Project& project, const Json& item)
{
    const std::string key = storage::StringMember(item, "type");
    PMTreeNode::NodeType type = PMTreeNode::None;
    if (!rules::ParseNodeType(key, type))
        throw FormatError("unknown type key \"" + key + "\"");
    const GUID id = storage::GuidMember(item, "id");
    for (const CSmartPtr<ProjectObject>& other : project.Presets())
        if (other->Id() == id)
            throw FormatError("duplicate GUID " + GuidText::ToString(id));
    std::wstring name = Utf8::ToWide(storage::StringMember(item, "name"));
    naming::MakeValid(rules::ObjectTypeOf(type), name, nullptr, nullptr);
    CSmartPtr<ProjectObject> preset(new PresetObject(&project, id, type, name));
    if (item.contains("properties"))
    {
        const Json& properties = item["properties"];
        if (!properties.is_object())
            throw FormatError("key \"properties\" must be an object");
        for (const auto& [name, value] : properties.items())
        {
            if (!value.is_string())
                throw FormatError("property \"" + name + "\" must be a string");
            preset->RawSetProperty(name, Utf8::ToWide(value.get<std::string>()));
        }
    }
    return preset;
}
} // namespace

void ReadPresets(Project& project, const fs::path& folder, StorageProblems& problems)
{
    const fs::path path = folder / kPresetsFileName;
    std::error_code ec;
    if (!fs::exists(path, ec))
        return;
    Json document;
    try
    {
        std::string bytes, error;
        if (!FileIO::ReadFile(path, bytes, error))
            throw FormatError(error);
        document = storage::Parse(bytes);
        storage::CheckHeader(document, "sonarium-presets");
        storage::ArrayMember(document, "presets");
    }
    catch (const std::exception& error)
    {
        problems.push_back({path, error.what()});
        return;
    }
    size_t index = 0;
    for (const Json& item : document["presets"])
    {
        ++index;
        try
        {
            project.Presets().push_back(ReadPreset(project, item));
        }
        catch (const std::exception& error)
        {
            problems.push_back({path, "preset " + std::to_string(index) + ": " + error.what()});
        }
    }
}

bool WritePresets(const Project& project, const fs::path& folder, StorageProblems& problems)
{
    const fs::path path = folder / kPresetsFileName;
    std::error_code ec;
    if (project.Presets().empty() && !fs::exists(path, ec))
        return true;
    Json document = storage::Header("sonarium-presets");
    Json presets = Json::array();
    for (const CSmartPtr<ProjectObject>& preset : project.Presets())
    {
        Json item = Json::object();
        item["type"] = rules::NodeTypeKey(preset->GetNodeType());
        item["id"] = GuidText::ToString(preset->Id());
        item["name"] = preset->NameUtf8();
        Json properties = Json::object();
        for (const auto& [key, value] : preset->Properties())
            properties[key] = Utf8::FromWide(value);
        item["properties"] = std::move(properties);
        presets.push_back(std::move(item));
    }
    document["presets"] = std::move(presets);
    const std::string bytes = storage::Dump(document);
    std::string current, error;
    if (FileIO::ReadFile(path, current, error) && current == bytes)
        return true;
    if (FileIO::WriteAtomically(path, bytes, error))
        return true;
    problems.push_back({path, error});
    return false;
}
} // namespace sn
