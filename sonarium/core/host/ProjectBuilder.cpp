#include "sonarium/core/host/ProjectBuilder.h"

#include "host/Utf8.h"
#include "sonarium/core/model/NodeRules.h"
#include "sonarium/core/model/ProjectEdit.h"
#include "sonarium/core/presets/PresetObject.h"

#include <sstream>
#include <vector>

namespace sn
{
namespace
{
std::wstring Trim(const std::wstring& text)
{
    const size_t first = text.find_first_not_of(L" \t");
    if (first == std::wstring::npos)
        return L"";
    const size_t last = text.find_last_not_of(L" \t\r");
    return text.substr(first, last - first + 1);
}

bool Fail(std::wstring* error, int line, const std::wstring& what)
{
    if (error)
        *error = L"line " + std::to_wstring(line) + L": " + what;
    return false;
}

// A property whose value names an object that may come later in the text.
struct Reference
{
    ProjectObject* object;
    std::string key;
    std::wstring path;
    int line;
};

struct Parser
{
    Project& project;
    std::mt19937_64* ids;
    std::wstring* error;
    std::vector<std::pair<size_t, ProjectObject*>> stack;
    std::vector<Reference> references;

    GUID NextId() { return ids ? NewGuid(*ids) : NewGuid(); }
};

bool ApplyAttribute(Parser& parser, ProjectObject* object, const std::wstring& attribute, int number)
{
    const size_t equals = attribute.find(L'=');
    if (equals == std::wstring::npos || equals == 0)
        return Fail(parser.error, number,
                    L"expected \"key=value\" after \"|\", found \"" + attribute + L"\"");
    const std::wstring key = Trim(attribute.substr(0, equals));
    const std::wstring value = Trim(attribute.substr(equals + 1));
    if (value.empty())
        return Fail(parser.error, number, L"attribute \"" + key + L"\" has no value");
    if (key == L"color")
    {
        if (value.find_first_not_of(L"0123456789") != std::wstring::npos || value.size() > 9)
            return Fail(parser.error, number, L"a colour is a number from 0, not \"" + value + L"\"");
        object->RawSetColor(std::stoi(value));
        return true;
    }
    if (key == L"exclude")
    {
        for (const Platform& platform : parser.project.Platforms())
            if (platform.name == value)
            {
                object->RawSetInclusionLinked(false);
                object->RawSetIncluded(platform.id, false);
                return true;
            }
        return Fail(parser.error, number, L"no platform \"" + value + L"\" declared above");
    }
    if (value[0] == L'@')
        parser.references.push_back({object, Utf8::FromWide(key), value.substr(1), number});
    else
        object->RawSetProperty(Utf8::FromWide(key), value);
    return true;
}

bool ResolveReferences(Parser& parser)
{
    for (const Reference& reference : parser.references)
    {
        const ProjectObject* target = FindByPath(parser.project, reference.path);
        if (!target)
            return Fail(parser.error, reference.line, L"no object at \"" + reference.path + L"\"");
        reference.object->RawSetProperty(reference.key, Utf8::ToWide(GuidText::ToString(target->Id())));
    }
    return true;
}

// "preset Kind Name | key=value ...": a preset of the project for objects of that kind.
bool ParsePreset(Parser& parser, std::wistream& words, const std::vector<std::wstring>& attributes, int number)
{
    std::wstring kind;
    words >> kind;
    std::wstring name;
    std::getline(words, name);
    name = Trim(name);
    PMTreeNode::NodeType type;
    if (!rules::ParseNodeType(Utf8::FromWide(kind), type))
        return Fail(parser.error, number, L"unknown kind \"" + kind + L"\"");
    std::wstring why;
    if (!ProjectEdit::IsValidName(nullptr, type, nullptr, name, &why))
        return Fail(parser.error, number, why);
    auto* preset = new PresetObject(&parser.project, parser.NextId(), type, name);
    parser.project.Presets().emplace_back(preset);
    for (const std::wstring& attribute : attributes)
        if (!ApplyAttribute(parser, preset, attribute, number))
            return false;
    return true;
}

bool ParseLine(Parser& parser, const std::wstring& raw, int number)
{
    Project& project = parser.project;
    std::wstring* error = parser.error;
    auto& stack = parser.stack;
    std::vector<std::wstring> attributes;
    std::wistringstream fields(raw);
    std::wstring declaration;
    std::getline(fields, declaration, L'|');
    for (std::wstring attribute; std::getline(fields, attribute, L'|');)
        attributes.push_back(Trim(attribute));
    const std::wstring text = Trim(declaration);
    if (text.empty() || text[0] == L'#')
        return true;
    const size_t indent = declaration.find_first_not_of(L" \t");
    std::wistringstream words(text);
    std::wstring first;
    words >> first;
    if (indent == 0 && first == L"preset")
        return ParsePreset(parser, words, attributes, number);
    if (!attributes.empty() && indent == 0)
        return Fail(error, number, L"only objects and presets take attributes");

    if (indent == 0 && first == L"platform")
    {
        std::wstring name = Trim(text.substr(first.size()));
        if (name.empty())
            return Fail(error, number, L"a platform needs a name");
        project.Platforms().push_back(Platform{parser.NextId(), name});
        return true;
    }
    if (indent == 0 && first == L"language")
    {
        unsigned long id = 0;
        std::wstring name, flag;
        if (!(words >> id >> name))
            return Fail(error, number, L"expected: language <id> <name> [reference]");
        words >> flag;
        project.Languages().push_back(Language{id, name});
        if (flag == L"reference")
            project.SetReferenceLanguage(id);
        return true;
    }
    if (indent == 0)
    {
        const size_t equals = text.find(L'=');
        const std::wstring key = Trim(text.substr(0, equals));
        rules::Category category;
        if (!rules::ParseCategory(Utf8::FromWide(key), category))
            return Fail(error, number, L"unknown category \"" + key + L"\"");
        const std::wstring name =
            equals == std::wstring::npos ? rules::CategoryName(category) : Trim(text.substr(equals + 1));
        WorkUnitObject* root = project.AddRoot(category, parser.NextId(), name);
        if (!root)
            return Fail(error, number, L"category \"" + key + L"\" appears twice");
        stack.assign(1, {0, root});
        return true;
    }
    const size_t colon = text.rfind(L':');
    if (colon == std::wstring::npos)
        return Fail(error, number, L"expected \"Name : Kind\"");
    const std::wstring name = Trim(text.substr(0, colon));
    const std::wstring kind = Trim(text.substr(colon + 1));
    PMTreeNode::NodeType type;
    if (!rules::ParseNodeType(Utf8::FromWide(kind), type))
        return Fail(error, number, L"unknown kind \"" + kind + L"\"");
    while (!stack.empty() && stack.back().first >= indent)
        stack.pop_back();
    if (stack.empty())
        return Fail(error, number, L"an object must come under a category");
    ProjectObject* parent = stack.back().second;
    std::wstring why;
    if (!ProjectEdit::CanHold(parent, type))
        return Fail(error, number,
                    L"a " + std::wstring(rules::NodeTypeName(parent->GetNodeType())) + L" cannot hold a " +
                        rules::NodeTypeName(type));
    if (!ProjectEdit::IsValidName(nullptr, type, parent, name, &why))
        return Fail(error, number, why);
    ProjectObject* object = NewProjectObject(&project, type, name, parser.NextId());
    parent->RawInsertChild(parent->Children().size(), object);
    project.Index(object);
    stack.emplace_back(indent, object);
    for (const std::wstring& attribute : attributes)
        if (!ApplyAttribute(parser, object, attribute, number))
            return false;
    return true;
}
} // namespace

std::unique_ptr<Project> ProjectBuilder::Build(const std::wstring& name, const std::wstring& text,
                                               std::wstring* error, std::mt19937_64* ids)
{
    auto project = std::make_unique<Project>(name);
    Parser parser{*project, ids, error, {}, {}};
    std::wistringstream lines(text);
    std::wstring line;
    for (int number = 1; std::getline(lines, line); ++number)
        if (!ParseLine(parser, line, number))
            return nullptr;
    if (!ResolveReferences(parser))
        return nullptr;
    // Drawn last, so that the objects' GUIDs stay what they were before projects had one.
    if (ids)
        project->SetId(NewGuid(*ids));
    return project;
}

ProjectObject* FindByPath(const Project& project, const std::wstring& path)
{
    std::vector<std::wstring> parts;
    std::wistringstream stream(path);
    for (std::wstring part; std::getline(stream, part, L'/');)
        parts.push_back(part);
    rules::Category category;
    if (parts.empty() || !rules::ParseCategory(Utf8::FromWide(parts[0]), category))
        return nullptr;
    ProjectObject* object = project.GetRoot(category);
    for (size_t i = 1; object && i < parts.size(); ++i)
    {
        ProjectObject* next = nullptr;
        for (const CSmartPtr<ProjectObject>& child : object->Children())
            if (child->GetName() == parts[i])
                next = child.Get();
        object = next;
    }
    return object;
}

std::wstring PathOf(const ProjectObject& object)
{
    std::wstring path;
    for (const ProjectObject* at = &object; at; at = at->Parent())
    {
        const std::wstring part = at->Parent() ? std::wstring(at->GetName().c_str())
                                               : Utf8::ToWide(rules::CategoryKey(at->GetCategory()));
        path = path.empty() ? part : part + L"/" + path;
    }
    return path;
}
} // namespace sn
