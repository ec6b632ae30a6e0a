#include "sonarium/core/storage/StorageJson.h"

#include "host/Utf8.h"
#include "sonarium/core/model/EditGuard.h"
#include "sonarium/core/model/NodeRules.h"
#include "sonarium/core/model/Project.h"
#include "sonarium/core/model/ProjectEdit.h"
#include "sonarium/core/naming/NamingRules.h"
#include "sonarium/core/storage/JsonDepth.h"

#include <algorithm>
#include <limits>

namespace sn::storage
{
namespace
{
constexpr int kVersion = 1;
// An object at the deepest place the editor allows, with its inclusion's platforms, still reads.
static_assert(2 * EditGuard::kMaxDepth + 8 <= kMaxJsonDepth);

std::string Quoted(const std::string& text)
{
    return "\"" + text + "\"";
}

// nlohmann's message without its "[json.exception...] parse error at line x, column y: " prefix.
std::string ParseMessage(const std::string& what)
{
    const size_t column = what.find("column ");
    const size_t colon = what.find(": ", column == std::string::npos ? 0 : column);
    return colon == std::string::npos ? what : what.substr(colon + 2);
}

const Json& Typed(const Json& value, const char* key, bool ok, const char* kind)
{
    if (!ok)
        throw FormatError("key " + Quoted(key) + " must be " + kind);
    return value;
}

std::string IdText(const ProjectObject& object)
{
    return GuidText::ToString(object.Id());
}

Json InclusionToJson(const ProjectObject& object)
{
    Json inclusion = Json::object();
    inclusion["linked"] = object.IsInclusionLinked();
    inclusion["included"] = object.m_includedEverywhere;
    Json platforms = Json::object();
    for (const auto& [platform, included] : object.IncludedOn())
        platforms[GuidText::ToString(platform)] = included;
    inclusion["platforms"] = std::move(platforms);
    return inclusion;
}

void ReadInclusion(const Json& inclusion, ProjectObject& object)
{
    if (!inclusion.is_object())
        throw FormatError("key \"inclusion\" must be an object");
    const Json& linked = Member(inclusion, "linked");
    const Json& included = Member(inclusion, "included");
    object.RawSetInclusionLinked(Typed(linked, "linked", linked.is_boolean(), "true or false").get<bool>());
    object.m_includedEverywhere =
        Typed(included, "included", included.is_boolean(), "true or false").get<bool>();
    if (!inclusion.contains("platforms"))
        return;
    const Json& platforms =
        Typed(inclusion["platforms"], "platforms", inclusion["platforms"].is_object(), "an object");
    ProjectObject::PlatformInclusion includedOn;
    for (const auto& [text, value] : platforms.items())
    {
        const std::optional<GUID> platform = GuidText::FromString(text);
        if (!platform)
            throw FormatError("malformed GUID " + Quoted(text) + " in \"platforms\"");
        includedOn[*platform] = Typed(value, text.c_str(), value.is_boolean(), "true or false").get<bool>();
    }
    object.RawSetIncludedOn(std::move(includedOn));
}

std::string Describe(const ProjectObject& object)
{
    return Quoted(object.NameUtf8()) + " " + IdText(object);
}

void ReadOptional(const Json& item, ProjectObject& object, std::vector<std::string>& fixed)
{
    if (item.contains("color"))
    {
        const Json& color = item["color"];
        Typed(color, "color", color.is_number_integer(), "an integer");
        const bool inRange = color.is_number_unsigned() ? color.get<unsigned long long>() < ProjectObject::kColorCount
                                                        : color.get<long long>() >= -1;
        if (inRange)
            object.RawSetColor(color.get<int>());
        else
            fixed.push_back("colour " + color.dump() + " of " + Describe(object) + " is not one of the palette's (-1 to " +
                            std::to_string(ProjectObject::kColorCount - 1) + "): set to -1, the parent's colour");
    }
    if (item.contains("flags"))
    {
        const Json& flags = item["flags"];
        Typed(flags, "flags", flags.is_number_unsigned(), "a non-negative integer");
        if (flags.get<unsigned long long>() <= std::numeric_limits<unsigned int>::max())
            object.RawSetFlags(flags.get<unsigned int>());
        else
            fixed.push_back("flags " + flags.dump() + " of " + Describe(object) + " do not fit in 32 bits: set to 0");
    }
    if (item.contains("inclusion"))
        ReadInclusion(item["inclusion"], object);
    if (item.contains("properties"))
    {
        const Json& properties =
            Typed(item["properties"], "properties", item["properties"].is_object(), "an object");
        for (const auto& [key, value] : properties.items())
            object.RawSetProperty(
                key,
                Utf8::ToWide(
                    Typed(value, key.c_str(), value.is_string(), "a string").get_ref<const std::string&>()));
    }
}
} // namespace

Json Parse(const std::string& bytes)
{
    // What the parser would only call an unexpected end or a bad byte order mark.
    const size_t first = bytes.find_first_not_of(" \t\r\n");
    if (first == std::string::npos)
        throw FormatError("the file is empty");
    auto at = [&](size_t offset)
    {
        const auto [line, column] = LineAndColumn(bytes, offset);
        return "line " + std::to_string(line) + ", column " + std::to_string(column) + ": ";
    };
    if (bytes[first] != '{' && bytes[first] != '[')
        throw FormatError(at(first) + "the file does not hold JSON text");
    if (const size_t nul = bytes.find('\0'); nul != std::string::npos)
        throw FormatError(at(nul) + "a NUL byte, which no text file holds");
    if (std::string problem = DepthProblem(bytes); !problem.empty())
        throw FormatError(problem);
    try
    {
        return Json::parse(bytes);
    }
    catch (const Json::parse_error& error)
    {
        throw FormatError(at(error.byte > 0 ? error.byte - 1 : 0) + ParseMessage(error.what()));
    }
}

std::string MakeValidUtf8(std::string& bytes)
{
    // Files are nearly always valid: checked in one pass before anything is converted.
    if (Utf8::IsValid(bytes))
        return {};
    std::string valid = Utf8::FromWide(Utf8::ToWide(bytes));
    if (valid == bytes)
        return {};
    const size_t first = static_cast<size_t>(
        std::mismatch(bytes.begin(), bytes.end(), valid.begin(), valid.end()).first - bytes.begin());
    const auto [line, column] = LineAndColumn(bytes, first);
    bytes = std::move(valid);
    return "line " + std::to_string(line) + ": bytes that are not UTF-8 are read as U+FFFD";
}

std::string Dump(const Json& document)
{
    return document.dump(2) + "\n";
}

const Json& Member(const Json& object, const char* key)
{
    if (!object.is_object())
        throw FormatError(std::string("expected an object holding ") + Quoted(key));
    auto it = object.find(key);
    if (it == object.end())
        throw FormatError("missing key " + Quoted(key));
    return *it;
}

std::string StringMember(const Json& object, const char* key)
{
    const Json& value = Member(object, key);
    return Typed(value, key, value.is_string(), "a string").get<std::string>();
}

GUID GuidMember(const Json& object, const char* key)
{
    const std::string text = StringMember(object, key);
    const std::optional<GUID> id = GuidText::FromString(text);
    if (!id)
        throw FormatError("malformed GUID " + Quoted(text) + " in " + Quoted(key));
    return *id;
}

const Json& ArrayMember(const Json& object, const char* key)
{
    const Json& value = Member(object, key);
    return Typed(value, key, value.is_array(), "an array");
}

void CheckHeader(const Json& document, const char* format)
{
    if (!document.is_object())
        throw FormatError("the file does not hold a JSON object");
    const std::string found = StringMember(document, "format");
    if (found != format)
        throw FormatError("format " + Quoted(found) + " is not " + Quoted(format));
    const Json& version = Member(document, "version");
    if (!version.is_number_integer())
        throw FormatError("key \"version\" must be an integer");
    if (version.get<long long>() < 1 || version.get<long long>() > kVersion)
        throw FormatError("unsupported version " + version.dump());
}

Json Header(const char* format)
{
    Json document = Json::object();
    document["format"] = format;
    document["version"] = kVersion;
    return document;
}

Json ObjectToJson(const ProjectObject& object)
{
    Json item = Json::object();
    item["type"] = rules::NodeTypeKey(object.GetNodeType());
    item["id"] = IdText(object);
    item["name"] = object.NameUtf8();
    if (object.GetColor() != -1)
        item["color"] = object.GetColor();
    if (object.GetObjectFlags() != 0)
        item["flags"] = object.GetObjectFlags();
    // The usual case stays out of the file; values kept for an unlinked state do not.
    if (!object.IsInclusionLinked() || !object.m_includedEverywhere || !object.IncludedOn().empty())
        item["inclusion"] = InclusionToJson(object);
    if (!object.Properties().empty())
    {
        Json properties = Json::object();
        for (const auto& [key, value] : object.Properties())
            properties[key] = Utf8::FromWide(value);
        item["properties"] = std::move(properties);
    }
    if (!object.Children().empty())
    {
        Json children = Json::array();
        for (const CSmartPtr<ProjectObject>& child : object.Children())
            children.push_back(ObjectToJson(*child));
        item["children"] = std::move(children);
    }
    return item;
}

std::wstring CheckedName(const std::string& name, PMTreeNode::NodeType type, const ProjectObject* parent,
                         const std::string& what, std::vector<std::string>& fixed)
{
    std::wstring wide = Utf8::ToWide(name);
    std::wstring why;
    if (ProjectEdit::IsValidName(nullptr, type, parent, wide, &why))
        return wide;
    naming::MakeValid(rules::ObjectTypeOf(type), wide, parent, nullptr);
    fixed.push_back("the name of " + what + " was refused (" + Utf8::FromWide(why) + "): renamed " +
                    Quoted(Utf8::FromWide(wide)));
    return wide;
}

void ReadChildren(const Json& items, ProjectObject* parent, std::set<GUID, GUIDLess>& ids,
                  std::vector<std::string>& fixed)
{
    for (const Json& item : items)
    {
        const std::string key = StringMember(item, "type");
        PMTreeNode::NodeType type = PMTreeNode::None;
        if (!rules::ParseNodeType(key, type))
            throw FormatError("unknown type key " + Quoted(key));
        const GUID id = GuidMember(item, "id");
        const std::string name = StringMember(item, "name");
        if (!ProjectEdit::CanHold(parent, type) || type == PMTreeNode::WorkUnit ||
            type == PMTreeNode::PhysicalFolder)
            throw FormatError(Quoted(key) + " " + GuidText::ToString(id) + " cannot be held by " +
                              Quoted(rules::NodeTypeKey(parent->GetNodeType())) + " " + IdText(*parent));
        if (!ids.insert(id).second || (parent->GetProject() && parent->GetProject()->Find(id)))
            throw FormatError("duplicate GUID " + GuidText::ToString(id));

        ProjectObject* object = NewProjectObject(parent->GetProject(), type,
                                                 CheckedName(name, type, parent, GuidText::ToString(id), fixed), id);
        parent->RawInsertChild(parent->Children().size(), object);
        ReadOptional(item, *object, fixed);
        if (item.contains("children"))
            ReadChildren(ArrayMember(item, "children"), object, ids, fixed);
    }
}
} // namespace sn::storage
