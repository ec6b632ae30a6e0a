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
#include <optional>
#include <type_traits>

namespace sn::storage
{
namespace
{
constexpr int kVersion = 1;
// An object at the deepest place the editor allows, with its inclusion's platforms, still reads.
static_assert(2 * EditGuard::kMaxDepth + 8 <= kMaxJsonDepth);

std::string Quoted(std::string_view text)
{
    return "\"" + std::string(text) + "\"";
}

// nlohmann's message without its "[json.exception...] parse error at line x, column y: " prefix.
std::string ParseMessage(const std::string& what)
{
    const size_t column = what.find("column ");
    const size_t colon = what.find(": ", column == std::string::npos ? 0 : column);
    return colon == std::string::npos ? what : what.substr(colon + 2);
}

void Require(bool ok, std::string_view key, const char* kind)
{
    if (!ok)
        throw FormatError("key " + Quoted(key) + " must be " + kind);
}

// The checks below read the same over a parsed document and over a tape.
template <class J>
using ValueOf = std::conditional_t<std::is_same_v<J, Json>, const Json&, JsonValue>;

const Json* FindMember(const Json& object, const char* key)
{
    auto it = object.find(key);
    return it == object.end() ? nullptr : &*it;
}

std::optional<JsonValue> FindMember(const JsonValue& object, const char* key)
{
    return object.Find(key);
}

std::string_view TextOf(const Json& value)
{
    return value.get_ref<const std::string&>();
}

std::string_view TextOf(const JsonValue& value)
{
    return value.Text();
}

long long IntegerOf(const Json& value)
{
    return value.get<long long>();
}

long long IntegerOf(const JsonValue& value)
{
    return value.IntegerValue();
}

template <class J>
ValueOf<J> MemberOf(const J& object, const char* key)
{
    if (!object.is_object())
        throw FormatError(std::string("expected an object holding ") + Quoted(key));
    const auto found = FindMember(object, key);
    if (!found)
        throw FormatError("missing key " + Quoted(key));
    return *found;
}

template <class V>
std::string_view StringOf(const V& value, const char* key)
{
    Require(value.is_string(), key, "a string");
    return TextOf(value);
}

GUID GuidOf(std::string_view text, const char* key)
{
    const std::optional<GUID> id = GuidText::FromString(text);
    if (!id)
        throw FormatError("malformed GUID " + Quoted(text) + " in " + Quoted(key));
    return *id;
}

template <class J>
std::string_view StringMemberOf(const J& object, const char* key)
{
    return StringOf(MemberOf(object, key), key);
}

template <class J>
GUID GuidMemberOf(const J& object, const char* key)
{
    return GuidOf(StringMemberOf(object, key), key);
}

// The members an object's item may have, found in one pass over its members.
struct ItemMembers
{
    std::optional<JsonValue> type, id, name, color, flags, inclusion, properties, children;

    explicit ItemMembers(const JsonValue& item)
    {
        if (!item.is_object())
            throw FormatError(std::string("expected an object holding ") + Quoted("type"));
        item.ForEachMember(
            [&](std::string_view key, const JsonValue& value)
            {
                if (std::optional<JsonValue>* member = Named(key))
                    *member = value;
            });
    }

    std::optional<JsonValue>* Named(std::string_view key)
    {
        using namespace std::string_view_literals;
        for (auto [text, member] : {std::pair{"type"sv, &type}, {"id"sv, &id}, {"name"sv, &name}, {"color"sv, &color},
                                    {"flags"sv, &flags}, {"inclusion"sv, &inclusion}, {"properties"sv, &properties},
                                    {"children"sv, &children}})
            if (key == text)
                return member;
        return nullptr;
    }

    static JsonValue Required(const std::optional<JsonValue>& member, const char* key)
    {
        if (!member)
            throw FormatError("missing key " + Quoted(key));
        return *member;
    }
};

template <class J>
ValueOf<J> ArrayMemberOf(const J& object, const char* key)
{
    ValueOf<J> value = MemberOf(object, key);
    Require(value.is_array(), key, "an array");
    return value;
}

template <class J>
void CheckHeaderOf(const J& document, const char* format)
{
    if (!document.is_object())
        throw FormatError("the file does not hold a JSON object");
    const std::string_view found = StringMemberOf(document, "format");
    if (found != format)
        throw FormatError("format " + Quoted(found) + " is not " + Quoted(format));
    ValueOf<J> version = MemberOf(document, "version");
    if (!version.is_number_integer())
        throw FormatError("key \"version\" must be an integer");
    if (IntegerOf(version) < 1 || IntegerOf(version) > kVersion)
        throw FormatError("unsupported version " + version.dump());
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

void ReadInclusion(const JsonValue& inclusion, ProjectObject& object)
{
    if (!inclusion.is_object())
        throw FormatError("key \"inclusion\" must be an object");
    const JsonValue linked = Member(inclusion, "linked");
    const JsonValue included = Member(inclusion, "included");
    Require(linked.is_boolean(), "linked", "true or false");
    object.RawSetInclusionLinked(linked.Boolean());
    Require(included.is_boolean(), "included", "true or false");
    object.m_includedEverywhere = included.Boolean();
    const std::optional<JsonValue> platforms = inclusion.Find("platforms");
    if (!platforms)
        return;
    Require(platforms->is_object(), "platforms", "an object");
    ProjectObject::PlatformInclusion includedOn;
    platforms->ForEachMember(
        [&](std::string_view text, const JsonValue& value)
        {
            const std::optional<GUID> platform = GuidText::FromString(text);
            if (!platform)
                throw FormatError("malformed GUID " + Quoted(text) + " in \"platforms\"");
            Require(value.is_boolean(), text, "true or false");
            includedOn[*platform] = value.Boolean();
        });
    object.RawSetIncludedOn(std::move(includedOn));
}

std::string Describe(const ProjectObject& object)
{
    return Quoted(object.NameUtf8()) + " " + IdText(object);
}

void ReadOptional(const ItemMembers& item, ProjectObject& object, std::vector<std::string>& fixed)
{
    if (item.color)
    {
        const JsonValue color = *item.color;
        Require(color.is_number_integer(), "color", "an integer");
        const bool inRange = color.is_number_unsigned() ? color.UnsignedValue() < ProjectObject::kColorCount
                                                        : color.IntegerValue() >= -1;
        if (inRange)
            object.RawSetColor(static_cast<int>(color.IntegerValue()));
        else
            fixed.push_back("colour " + color.dump() + " of " + Describe(object) + " is not one of the palette's (-1 to " +
                            std::to_string(ProjectObject::kColorCount - 1) + "): set to -1, the parent's colour");
    }
    if (item.flags)
    {
        const JsonValue flags = *item.flags;
        Require(flags.is_number_unsigned(), "flags", "a non-negative integer");
        if (flags.UnsignedValue() <= std::numeric_limits<unsigned int>::max())
            object.RawSetFlags(static_cast<unsigned int>(flags.UnsignedValue()));
        else
            fixed.push_back("flags " + flags.dump() + " of " + Describe(object) + " do not fit in 32 bits: set to 0");
    }
    if (item.inclusion)
        ReadInclusion(*item.inclusion, object);
    if (const std::optional<JsonValue>& properties = item.properties)
    {
        Require(properties->is_object(), "properties", "an object");
        properties->ForEachMember(
            [&](std::string_view key, const JsonValue& value)
            {
                Require(value.is_string(), key, "a string");
                object.RawSetProperty(std::string(key), Utf8::ToWide(value.Text()));
            });
    }
}

// what names the value in the message, made only when there is something to say.
template <class What>
std::wstring CheckedNameOf(std::string_view name, PMTreeNode::NodeType type, const ProjectObject* parent,
                           const What& what, std::vector<std::string>& fixed)
{
    CStdStr<wchar_t> wide(Utf8::ToWide(name)); // the type the check takes, so that it is not copied
    std::wstring why;
    if (ProjectEdit::IsValidName(nullptr, type, parent, wide, &why))
        return wide;
    naming::MakeValid(rules::ObjectTypeOf(type), wide, parent, nullptr);
    fixed.push_back("the name of " + what() + " was refused (" + Utf8::FromWide(why) + "): renamed " +
                    Quoted(Utf8::FromWide(wide)));
    return wide;
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

void ParseTape(std::string& bytes, JsonTape& tape)
{
    if (tape.Parse(bytes, kMaxJsonDepth))
        return;
    // Parse says what is wrong; a file it reads but the tape does not (a key given twice) is read
    // as Parse reads it, from its own writing of it.
    bytes = Parse(bytes).dump();
    if (!tape.Parse(bytes, kMaxJsonDepth))
        throw FormatError("the file could not be read");
}

std::string MakeValidUtf8(std::string& bytes)
{
    // Files are nearly always valid: checked in one pass before anything is converted.
    if (Utf8::IsValid(bytes))
        return {};
    // Not valid: the first byte that is not part of a character reads as U+FFFD, so the
    // conversion differs there.
    std::string valid = Utf8::FromWide(Utf8::ToWide(bytes));
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
    return MemberOf(object, key);
}

std::string StringMember(const Json& object, const char* key)
{
    return std::string(StringMemberOf(object, key));
}

GUID GuidMember(const Json& object, const char* key)
{
    return GuidMemberOf(object, key);
}

const Json& ArrayMember(const Json& object, const char* key)
{
    return ArrayMemberOf(object, key);
}

void CheckHeader(const Json& document, const char* format)
{
    CheckHeaderOf(document, format);
}

JsonValue Member(const JsonValue& object, const char* key)
{
    return MemberOf(object, key);
}

std::string_view StringMember(const JsonValue& object, const char* key)
{
    return StringMemberOf(object, key);
}

GUID GuidMember(const JsonValue& object, const char* key)
{
    return GuidMemberOf(object, key);
}

JsonValue ArrayMember(const JsonValue& object, const char* key)
{
    return ArrayMemberOf(object, key);
}

void CheckHeader(const JsonValue& document, const char* format)
{
    CheckHeaderOf(document, format);
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
    return CheckedNameOf(name, type, parent, [&] { return what; }, fixed);
}

void ReadChildren(const JsonValue& items, ProjectObject* parent, GuidSet& ids, std::vector<std::string>& fixed)
{
    Project* project = parent->GetProject();
    for (const JsonValue value : items)
    {
        const ItemMembers item(value);
        const std::string_view key = StringOf(ItemMembers::Required(item.type, "type"), "type");
        PMTreeNode::NodeType type = PMTreeNode::None;
        if (!rules::ParseNodeType(key, type))
            throw FormatError("unknown type key " + Quoted(key));
        const GUID id = GuidOf(StringOf(ItemMembers::Required(item.id, "id"), "id"), "id");
        const std::string_view name = StringOf(ItemMembers::Required(item.name, "name"), "name");
        if (!ProjectEdit::CanHold(parent, type) || type == PMTreeNode::WorkUnit ||
            type == PMTreeNode::PhysicalFolder)
            throw FormatError(Quoted(key) + " " + GuidText::ToString(id) + " cannot be held by " +
                              Quoted(rules::NodeTypeKey(parent->GetNodeType())) + " " + IdText(*parent));
        // The rest of the project is checked as the objects are indexed.
        if (ids.Find(id))
            throw FormatError("duplicate GUID " + GuidText::ToString(id));
        ids.Insert({id, true});

        ProjectObject* object = NewProjectObject(
            project, type, CheckedNameOf(name, type, parent, [&] { return GuidText::ToString(id); }, fixed), id);
        parent->RawInsertChild(parent->Children().size(), object);
        ReadOptional(item, *object, fixed);
        if (const std::optional<JsonValue>& children = item.children)
        {
            Require(children->is_array(), "children", "an array");
            ReadChildren(*children, object, ids, fixed);
        }
    }
}
} // namespace sn::storage
