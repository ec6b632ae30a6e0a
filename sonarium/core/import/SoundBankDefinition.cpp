#include "sonarium/core/import/SoundBankDefinition.h"

#include "host/GlobalProp.h"
#include "host/ProjectManager.h"
#include "host/StringHelp.h"
#include "host/Undo.h"
#include "host/Utf8.h"
#include "sonarium/core/host/ProjectBuilder.h"
#include "sonarium/core/model/CurrentState.h"
#include "sonarium/core/model/ProjectEdit.h"
#include "sonarium/core/storage/FileIO.h"

#include <algorithm>
#include <map>

namespace sn::banks
{
namespace
{
std::wstring Text(const wchar_t* english)
{
    return StringHelp::Localize(english).c_str();
}


std::wstring Trimmed(std::wstring text)
{
    CStdStr<wchar_t> trimmed(text);
    trimmed.Trim();
    return trimmed;
}

// Every SoundBank of the category, by name, whatever its case.
void CollectBanks(ProjectObject* object, std::map<CStdStr<wchar_t>, ProjectObject*, NoCaseStringComp>& banks)
{
    if (object->GetNodeType() == PMTreeNode::SoundBank)
        banks.emplace(object->GetName(), object);
    for (const CSmartPtr<ProjectObject>& child : object->Children())
        CollectBanks(child.Get(), banks);
}

// Where a new SoundBank goes when the target cannot hold it: the first loaded work unit of the
// SoundBanks category.
ProjectObject* DefaultBankHolder(Project& project, ProjectObject* target)
{
    if (target && target->IsInProject() && ProjectEdit::CanHold(target, PMTreeNode::SoundBank))
        return target;
    for (WorkUnitObject* unit : project.FileWorkUnits())
        if (unit->GetCategory() == OrbObjectCategories::SoundBanks && unit->IsLoaded() &&
            ProjectEdit::CanHold(unit, PMTreeNode::SoundBank))
            return unit;
    return nullptr;
}

// Why an object cannot go into a SoundBank, or empty.
std::wstring NotForBanks(const ProjectObject& object)
{
    switch (object.GetObjectType())
    {
    case OrbObjectType_WorkUnit:
    case OrbObjectType_Folder:
        return Text(L"is a work unit or folder; a SoundBank holds events and objects");
    case OrbObjectType_SoundBank:
        return Text(L"is a SoundBank itself");
    case OrbObjectType_AudioSource:
    case OrbObjectType_EventAction:
    case OrbObjectType_MusicClip:
        return Text(L"is part of another object; name that object instead");
    default:
        return {};
    }
}
} // namespace

std::wstring LineProblem::Text() const
{
    return line > 0 ? banks::Text(L"line ") + std::to_wstring(line) + L": " + what : what;
}

Definition ParseDefinition(const std::string& bytes)
{
    Definition definition;
    if (bytes.find('\0') != std::string::npos)
    {
        definition.fileProblem = Text(L"this is not a text file");
        return definition;
    }
    size_t start = bytes.starts_with("\xEF\xBB\xBF") ? 3 : 0; // a byte order mark
    for (int number = 1; start < bytes.size(); ++number)
    {
        size_t end = bytes.find('\n', start);
        if (end == std::string::npos)
            end = bytes.size();
        std::string raw = bytes.substr(start, end - start);
        start = end + 1;
        if (!raw.empty() && raw.back() == '\r')
            raw.pop_back();
        if (!Utf8::IsValid(raw))
        {
            definition.problems.push_back(LineProblem{number, Text(L"the line is not valid UTF-8 text")});
            continue;
        }
        const std::wstring line = Utf8::ToWide(raw);
        const std::wstring content = Trimmed(line);
        if (content.empty() || content[0] == L'#')
            continue;
        const size_t tab = line.find(L'\t');
        DefinitionLine entry{number, tab == std::wstring::npos ? L"" : Trimmed(line.substr(0, tab)),
                             tab == std::wstring::npos ? L"" : Trimmed(line.substr(tab + 1))};
        if (tab == std::wstring::npos)
            definition.problems.push_back(
                LineProblem{number, Text(L"expected a SoundBank name, a tab, then the path of an object")});
        else if (entry.bank.empty())
            definition.problems.push_back(LineProblem{number, Text(L"the SoundBank's name is missing")});
        else if (entry.path.empty())
            definition.problems.push_back(LineProblem{number, Text(L"the object's path is missing")});
        else
            definition.lines.push_back(std::move(entry));
    }
    return definition;
}

Definition ReadDefinition(const std::filesystem::path& path)
{
    std::string bytes, error;
    if (!FileIO::ReadFile(path, bytes, error))
    {
        Definition unread;
        unread.fileProblem = Utf8::ToWide(error);
        return unread;
    }
    return ParseDefinition(bytes);
}

std::vector<ProjectObject*> Contents(const ProjectObject& bank)
{
    std::vector<ProjectObject*> objects;
    const Project* project = bank.GetProject();
    for (GUID const& id : ReferenceIndex::TargetsOf(bank.GetProperty(kContentsKey)))
        if (ProjectObject* object = project ? project->Find(id) : nullptr)
            objects.push_back(object);
    return objects;
}

DefinitionResult ApplyDefinition(Project& project, const std::vector<DefinitionLine>& lines, ProjectObject* target)
{
    DefinitionResult result;
    std::map<CStdStr<wchar_t>, ProjectObject*, NoCaseStringComp> banks;
    if (WorkUnitObject* root = project.GetRoot(OrbObjectCategories::SoundBanks))
        CollectBanks(root, banks);

    ScopedGlobalPropRaise lock(propLockUIUpdate);
    AutoComplexUndo step(L"Import SoundBank Definition", false);
    for (const DefinitionLine& line : lines)
    {
        ProjectObject* object = FindByPath(project, line.path);
        if (!object)
        {
            result.problems.push_back(LineProblem{line.number, Text(L"no object at \"") + line.path + L"\""});
            continue;
        }
        if (std::wstring why = NotForBanks(*object); !why.empty())
        {
            result.problems.push_back(LineProblem{line.number, L"\"" + line.path + L"\" " + why});
            continue;
        }
        ProjectObject*& bank = banks[line.bank];
        if (!bank)
        {
            ProjectObject* holder = DefaultBankHolder(project, target);
            std::wstring why;
            if (!holder)
                why = Text(L"there is no SoundBanks work unit to create the SoundBank in");
            else if (!ProjectEdit::IsValidName(nullptr, PMTreeNode::SoundBank, holder, line.bank, &why))
                why = L"\"" + line.bank + Text(L"\" is no name for a SoundBank: ") + why;
            else if (!(bank = ProjectEdit::Create(holder, PMTreeNode::SoundBank, line.bank)))
                why = Text(L"the SoundBank could not be created");
            if (!why.empty())
            {
                banks.erase(line.bank);
                result.problems.push_back(LineProblem{line.number, why});
                continue;
            }
            ++result.banksCreated;
        }
        const std::wstring contents = bank->GetProperty(kContentsKey);
        const std::vector<GUID> held = ReferenceIndex::TargetsOf(contents);
        if (std::find(held.begin(), held.end(), object->Id()) != held.end())
        {
            ++result.alreadyThere;
            continue;
        }
        const std::wstring id = Utf8::ToWide(GuidText::ToString(object->Id()));
        ProjectEdit::SetProperty(bank, kContentsKey, contents.empty() ? id : contents + L";" + id);
        ++result.added;
    }
    return result;
}
} // namespace sn::banks
