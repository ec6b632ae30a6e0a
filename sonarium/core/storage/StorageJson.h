#pragma once
// The JSON form of project files: reading with messages that say what is wrong and where, and
// writing with a fixed key order so that an unchanged project saves to identical bytes.

#include "host/GuidTable.h"
#include "sonarium/core/model/ProjectObject.h"
#include "sonarium/core/storage/JsonTape.h"

#include <nlohmann/json.hpp>

#include <stdexcept>
#include <string>
#include <vector>

namespace sn::storage
{
using Json = nlohmann::ordered_json;
using JsonValue = JsonTape::Value;

// Malformed content; what() is the reason shown to the user.
class FormatError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

// Throws FormatError ("line 4, column 9: syntax error ...").
Json Parse(const std::string& bytes);
// Reads bytes into tape; what it cannot read is said as Parse says it (the general parser's
// message, or its reading of the file when it reads more than the tape).
void ParseTape(std::string& bytes, JsonTape& tape);
// Replaces what is not UTF-8 in bytes by U+FFFD; says where ("line 4: ...") when it did.
std::string MakeValidUtf8(std::string& bytes);
// Two-space indentation and a final newline.
std::string Dump(const Json& document);

// Members of a JSON object, checked; each throws FormatError naming the key.
const Json& Member(const Json& object, const char* key);
std::string StringMember(const Json& object, const char* key);
GUID GuidMember(const Json& object, const char* key);
const Json& ArrayMember(const Json& object, const char* key);
// Requires "format" to be format and "version" one this host reads.
void CheckHeader(const Json& document, const char* format);
// The same checks over a tape, with the same messages.
JsonValue Member(const JsonValue& object, const char* key);
std::string_view StringMember(const JsonValue& object, const char* key);
GUID GuidMember(const JsonValue& object, const char* key);
JsonValue ArrayMember(const JsonValue& object, const char* key);
void CheckHeader(const JsonValue& document, const char* format);
Json Header(const char* format);

// An object below a work unit, with its subtree.
Json ObjectToJson(const ProjectObject& object);

// The GUIDs read from one file so far.
struct GuidSeen
{
    GUID id = {};
    bool seen = false;
    struct Traits
    {
        static const GUID& Key(const GuidSeen& entry) { return entry.id; }
        static bool IsEmpty(const GuidSeen& entry) { return !entry.seen; }
    };
};
using GuidSet = GuidTable<GuidSeen, GuidSeen::Traits>;

// Builds the objects of items under parent (already in its category, not yet indexed). ids
// collects the GUIDs read; a GUID already in ids is an error (the caller checks those the
// project holds when it indexes them). Values the
// editor could not have made (a name it refuses, a colour or flags out of range) are set right,
// and fixed says what was changed.
void ReadChildren(const JsonValue& items, ProjectObject* parent, GuidSet& ids, std::vector<std::string>& fixed);
// A name read from a file, as the editor would have accepted it; fixed says what was changed.
std::wstring CheckedName(const std::string& name, PMTreeNode::NodeType type, const ProjectObject* parent,
                         const std::string& what, std::vector<std::string>& fixed);
} // namespace sn::storage
