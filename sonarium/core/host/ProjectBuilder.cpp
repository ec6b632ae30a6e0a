#include "sonarium/core/host/ProjectBuilder.h"

#include "host/Utf8.h"
#include "sonarium/core/model/NodeRules.h"
#include "sonarium/core/model/ProjectEdit.h"

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

bool ParseLine(Project& project, const std::wstring& raw, int number, std::vector<std::pair<size_t, ProjectObject*>>& stack,
               std::wstring* error)
{
    const std::wstring text = Trim(raw);
    if (text.empty() || text[0] == L'#')
        return true;
    const size_t indent = raw.find_first_not_of(L" \t");
    std::wistringstream words(text);
    std::wstring first;
    words >> first;

    if (indent == 0 && first == L"platform")
    {
        std::wstring name = Trim(text.substr(first.size()));
        if (name.empty())
            return Fail(error, number, L"a platform needs a name");
        project.Platforms().push_back(Platform{NewGuid(), name});
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
        const std::wstring name = equals == std::wstring::npos ? rules::CategoryName(category) : Trim(text.substr(equals + 1));
        WorkUnitObject* root = project.AddRoot(category, NewGuid(), name);
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
        return Fail(error, number, L"a " + std::wstring(rules::NodeTypeName(parent->GetNodeType())) +
                                       L" cannot hold a " + rules::NodeTypeName(type));
    if (!ProjectEdit::IsValidName(nullptr, type, parent, name, &why))
        return Fail(error, number, why);
    ProjectObject* object = NewProjectObject(&project, type, name, NewGuid());
    parent->RawInsertChild(parent->Children().size(), object);
    project.Index(object);
    stack.emplace_back(indent, object);
    return true;
}
} // namespace

std::unique_ptr<Project> ProjectBuilder::Build(const std::wstring& name, const std::wstring& text, std::wstring* error)
{
    auto project = std::make_unique<Project>(name);
    std::wistringstream lines(text);
    std::wstring line;
    std::vector<std::pair<size_t, ProjectObject*>> stack;
    for (int number = 1; std::getline(lines, line); ++number)
        if (!ParseLine(*project, line, number, stack, error))
            return nullptr;
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
} // namespace sn
