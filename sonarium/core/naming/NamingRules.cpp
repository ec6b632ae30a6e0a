#include "sonarium/core/naming/NamingRules.h"

#include "host/Utf8.h"
#include "sonarium/core/model/NodeRules.h"

#include <algorithm>
#include <array>

namespace sn::naming
{
namespace
{
constexpr size_t kMaxLength = ObjectName::MaxNameLength;
constexpr std::wstring_view kFileCharacters = L"\\/:*?\"<>|";

bool IsControl(wchar_t c)
{
    return c < 0x20 || (c >= 0x7F && c <= 0x9F) || c == 0x2028 || c == 0x2029;
}

char AsciiLower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// ASCII letters compared without case, everything else as it is: the host's rule for names.
bool SameName(const std::string& a, const std::string& b)
{
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(),
                                              [](char x, char y) { return AsciiLower(x) == AsciiLower(y); });
}

bool IsReservedFileName(const std::wstring& name)
{
    static const std::array<std::wstring_view, 4> kDevices = {L"con", L"prn", L"aux", L"nul"};
    std::wstring base = name.substr(0, name.find(L'.'));
    while (!base.empty() && base.back() == L' ')
        base.pop_back();
    for (wchar_t& c : base)
        c = c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c - L'A' + L'a') : c;
    if (std::find(kDevices.begin(), kDevices.end(), base) != kDevices.end())
        return true;
    return base.size() == 4 && (base.starts_with(L"com") || base.starts_with(L"lpt")) && base[3] >= L'1' &&
           base[3] <= L'9';
}

bool IsTaken(const std::string& utf8, const ProjectObject* parent, const ProjectObject* self)
{
    if (!parent)
        return false;
    for (const CSmartPtr<ProjectObject>& sibling : parent->Children())
        if (sibling.Get() != self && ProjectObject::IsHierarchyMember(sibling->GetObjectType()) &&
            SameName(sibling->NameUtf8(), utf8))
            return true;
    return false;
}

// Whether Trimmed would change name, asked without copying it: names are checked by the million
// when a large project opens.
bool NeedsTrimming(const std::wstring& name, bool fileName)
{
    using Text = CStdStr<wchar_t>;
    return !name.empty() && (Text::IsBlank(name.front()) || Text::IsBlank(name.back()) || (fileName && name.back() == L'.'));
}

std::wstring Trimmed(std::wstring name, bool fileName)
{
    CStdStr<wchar_t> text(std::move(name));
    text.Trim();
    // A final period would vanish from a file name on some systems.
    while (fileName && !text.empty() && text.back() == L'.')
    {
        text.pop_back();
        text.TrimRight();
    }
    return text;
}
} // namespace

bool IsFileName(OrbObjectType type)
{
    return type == OrbObjectType_WorkUnit;
}

Result Check(OrbObjectType type, const std::wstring& name, const ProjectObject* parent, const ProjectObject* self,
             bool checkSiblings)
{
    const bool fileName = IsFileName(type);
    if (std::all_of(name.begin(), name.end(), CStdStr<wchar_t>::IsBlank))
        return ObjectName::NameEmpty;
    if (name.size() > kMaxLength)
        return ObjectName::NameTooLong;
    if (std::any_of(name.begin(), name.end(), IsControl))
        return ObjectName::NameControlCharacter;
    if (fileName && name.find_first_of(kFileCharacters) != std::wstring::npos)
        return ObjectName::NameFileCharacter;
    if (NeedsTrimming(name, fileName))
        return ObjectName::NameBadEnding;
    if (fileName && IsReservedFileName(name))
        return ObjectName::NameReserved;
    if (checkSiblings && ProjectObject::IsHierarchyMember(type) && IsTaken(Utf8::FromWide(name), parent, self))
        return ObjectName::NameTaken;
    return ObjectName::NameValid;
}

void FixCharacters(OrbObjectType type, std::wstring& name)
{
    const bool fileName = IsFileName(type);
    for (wchar_t& c : name)
    {
        if (IsControl(c))
            c = L' ';
        else if (fileName && kFileCharacters.find(c) != std::wstring_view::npos)
            c = L'_';
    }
}

std::wstring MakeUnique(const std::wstring& name, const ProjectObject* parent, const ProjectObject* self)
{
    if (!IsTaken(Utf8::FromWide(name), parent, self))
        return name;
    for (unsigned long n = 1;; ++n)
    {
        const std::wstring suffix = L" " + std::to_wstring(n);
        std::wstring candidate = name.substr(0, kMaxLength - suffix.size()) + suffix;
        if (!IsTaken(Utf8::FromWide(candidate), parent, self))
            return candidate;
    }
}

bool MakeValid(OrbObjectType type, std::wstring& name, const ProjectObject* parent, const ProjectObject* self)
{
    const bool fileName = IsFileName(type);
    std::wstring fixed = name;
    FixCharacters(type, fixed);
    fixed = Trimmed(std::move(fixed), fileName);
    if (fixed.empty())
        fixed = rules::NodeTypeName(rules::NodeTypeOf(type));
    if (fixed.empty())
        fixed = L"Object";
    if (fileName && IsReservedFileName(fixed))
        fixed += L"_";
    if (fixed.size() > kMaxLength)
        fixed = Trimmed(fixed.substr(0, kMaxLength), fileName);
    if (ProjectObject::IsHierarchyMember(type))
        fixed = MakeUnique(fixed, parent, self);
    if (fixed == name)
        return false;
    name = std::move(fixed);
    return true;
}

std::wstring Describe(Result result, OrbObjectType type, const std::wstring& name)
{
    const std::wstring shown = name.size() > 60 ? name.substr(0, 60) + L"..." : name;
    switch (result)
    {
    case ObjectName::NameValid:
        return {};
    case ObjectName::NameEmpty:
        return L"A name cannot be empty.";
    case ObjectName::NameTooLong:
        return L"The name has " + std::to_wstring(name.size()) + L" characters; a name has " +
               std::to_wstring(kMaxLength) + L" at most.";
    case ObjectName::NameControlCharacter:
        return L"A name cannot hold a tab, a line break or another control character.";
    case ObjectName::NameFileCharacter:
        return L"The name of a work unit or physical folder is a file or folder name: it cannot hold any of "
               L"\\ / : * ? \" < > |.";
    case ObjectName::NameBadEnding:
        return IsFileName(type) ? L"The name of a work unit or physical folder cannot begin or end with a blank, "
                                  L"or end with a period."
                                : L"A name cannot begin or end with a blank.";
    case ObjectName::NameReserved:
        return L"\"" + shown + L"\" is kept by file systems for a device: a work unit or physical folder cannot "
                               L"be named so.";
    case ObjectName::NameTaken:
        return L"Another object here is already named \"" + shown +
               L"\" (names are compared without regard to case).";
    }
    return L"The name \"" + shown + L"\" cannot be used.";
}
} // namespace sn::naming
