#include "sonarium/core/import/AudioImport.h"

#include "host/GlobalProp.h"
#include "host/ProjectManager.h"
#include "host/StringHelp.h"
#include "host/Undo.h"
#include "host/Utf8.h"
#include "sonarium/core/model/CurrentState.h"
#include "sonarium/core/model/NodeRules.h"
#include "sonarium/core/model/Project.h"
#include "sonarium/core/model/ProjectEdit.h"

#include <fstream>
#include <iterator>
#include <map>
#include <set>

namespace sn::audio
{
namespace
{
namespace fs = std::filesystem;

std::wstring Text(const wchar_t* english)
{
    return StringHelp::Localize(english).c_str();
}

bool SameBytes(const fs::path& a, const fs::path& b)
{
    std::error_code error;
    if (fs::file_size(a, error) != fs::file_size(b, error) || error)
        return false;
    std::ifstream left(a, std::ios::binary), right(b, std::ios::binary);
    return std::equal(std::istreambuf_iterator<char>(left), {}, std::istreambuf_iterator<char>(right));
}

// The sound of that name and kind that destination already holds, or null.
ProjectObject* ExistingSound(const ProjectObject* destination, const std::wstring& name, PMTreeNode::NodeType type)
{
    for (const CSmartPtr<ProjectObject>& child : destination->Children())
        if (child->GetNodeType() == type && child->GetName().CompareNoCase(name.c_str()) == 0)
            return child.Get();
    return nullptr;
}

std::wstring LanguageName(const Project& project, unsigned long language)
{
    for (const Language& candidate : project.Languages())
        if (candidate.id == language)
            return candidate.name;
    return std::to_wstring(language);
}

// A copy of one file in the originals folder: a file already there with the same bytes is used
// as it is; another one with the same name is kept, and the copy takes a numbered name.
struct Copy
{
    fs::path target;
    bool madeByUs = false;
};

bool CopyInto(const fs::path& source, const fs::path& folder, Copy& copy, std::wstring& problem)
{
    std::error_code error;
    fs::create_directories(folder, error);
    if (error)
    {
        problem = Text(L"cannot make the folder ") + Utf8::ToWide(folder.string()) + L": " +
                  Utf8::ToWide(error.message());
        return false;
    }
    const fs::path stem = source.stem();
    const fs::path extension = source.extension();
    for (int n = 0;; ++n)
    {
        copy.target = folder / (n == 0 ? source.filename() : fs::path(stem.string() + "_" + std::to_string(n) +
                                                                       extension.string()));
        if (!fs::exists(copy.target, error))
            break;
        if (SameBytes(source, copy.target))
            return true;
    }
    if (!fs::copy_file(source, copy.target, error))
    {
        problem = Text(L"cannot copy it into ") + Utf8::ToWide(folder.string()) + L": " + Utf8::ToWide(error.message());
        return false;
    }
    copy.madeByUs = true;
    return true;
}
} // namespace

std::wstring ImportItem::Becomes() const
{
    if (!Usable())
        return Text(L"left out: ") + info.problem;
    if (!newSound)
        return Text(L"new source of \"") + soundName + L"\"";
    return Text(L"new ") + rules::NodeTypeName(soundType) + L" \"" + soundName + L"\"";
}

AudioImport::AudioImport(ProjectObject* destination, const std::vector<std::wstring>& files)
    : m_destination(destination)
{
    const Project* project = destination && destination->IsInProject() ? destination->GetProject() : nullptr;
    if (!project)
        m_problem = Text(L"There is no object to import into.");
    else if (project->GetFolder().empty())
        m_problem = Text(L"The project has not been saved to a folder yet: save it first, so that the imported "
                         L"files have a place in it.");
    else if (destination->GetObjectType() != OrbObjectType_Sound &&
             !ProjectEdit::CanHold(destination, PMTreeNode::SoundSFX) &&
             !ProjectEdit::CanHold(destination, PMTreeNode::SoundVoice))
        m_problem = L"\"" + std::wstring(destination->GetName()) + Text(L"\" cannot hold sounds.");
    for (const std::wstring& text : files)
    {
        ImportItem item;
        item.text = text;
        if (PathFromText(text, item.file, item.info.problem))
            item.info = ReadAudioFileInfo(item.file);
        m_files.push_back(std::move(item));
    }
}

std::vector<ImportItem> AudioImport::Plan(const ImportChoices& choices) const
{
    std::vector<ImportItem> items = m_files;
    const ProjectObject* destination = m_destination.Get();
    const bool intoSound = destination && destination->GetObjectType() == OrbObjectType_Sound;
    std::set<CStdStr<wchar_t>, NoCaseStringComp> names;
    for (ImportItem& item : items)
    {
        if (!item.Usable() || !m_problem.empty())
        {
            if (item.info.problem.empty())
                item.info.problem = m_problem;
            item.info.ok = false;
            continue;
        }
        if (intoSound)
        {
            item.soundType = destination->GetNodeType();
            item.soundName = destination->GetName();
            item.newSound = false;
            continue;
        }
        item.soundType = choices.voice ? PMTreeNode::SoundVoice : PMTreeNode::SoundSFX;
        item.soundName = Utf8::ToWide(item.file.stem().string());
        std::wstring why;
        if (!ProjectEdit::CanHold(destination, item.soundType))
            why = L"\"" + std::wstring(destination->GetName()) + Text(L"\" cannot hold a ") +
                  rules::NodeTypeName(item.soundType);
        else if (!names.insert(item.soundName).second)
            why = Text(L"another file of this import makes a sound of the same name");
        else if (ProjectObject* existing = ExistingSound(destination, item.soundName, item.soundType))
            item.newSound = false, item.soundName = existing->GetName();
        else if (!ProjectEdit::IsValidName(nullptr, item.soundType, destination, item.soundName, &why))
            why = Text(L"the file's name is no name for a sound: ") + why;
        if (!why.empty())
            item.info.ok = false, item.info.problem = why;
    }
    return items;
}

ImportResult AudioImport::Run(const ImportChoices& choices,
                              const std::function<bool(size_t, const std::wstring&)>& progress) const
{
    ImportResult result;
    std::vector<ImportItem> items = Plan(choices);
    ProjectObject* destination = m_destination.Get();
    if (!m_problem.empty() || !destination)
        return result;
    const Project& project = *destination->GetProject();
    const fs::path folder = project.GetFolder() / kOriginalsFolder /
                            (choices.voice ? fs::path("Voices") / Utf8::FromWide(LanguageName(project, choices.language))
                                           : fs::path("SFX"));

    // First the files, which may take long and may be cancelled; then the objects, at once.
    std::vector<std::pair<const ImportItem*, Copy>> copies;
    size_t done = 0;
    for (const ImportItem& item : items)
    {
        if (!item.Usable())
            continue;
        if (progress && !progress(done++, item.text))
        {
            result.cancelled = true;
            break;
        }
        Copy copy;
        std::wstring problem;
        if (CopyInto(item.file, folder, copy, problem))
            copies.emplace_back(&item, copy);
        else
            result.problems.push_back(item.text + L": " + problem);
    }
    if (result.cancelled)
    {
        std::error_code error;
        for (const auto& [item, copy] : copies)
            if (copy.madeByUs)
                fs::remove(copy.target, error);
        return result;
    }

    ScopedGlobalPropRaise lock(propLockUIUpdate);
    AutoComplexUndo step(L"Import Audio Files", false);
    for (const auto& [item, copy] : copies)
    {
        ProjectObject* sound = item->newSound ? ProjectEdit::Create(destination, item->soundType, item->soundName)
                               : destination->GetObjectType() == OrbObjectType_Sound
                                   ? destination
                                   : ExistingSound(destination, item->soundName, item->soundType);
        const std::wstring fileName = Utf8::ToWide(copy.target.filename().string());
        ProjectObject* source = sound ? ProjectEdit::Create(sound, PMTreeNode::AudioSource,
                                                            ProjectEdit::UniqueChildName(sound, fileName))
                                      : nullptr;
        if (!source)
        {
            result.problems.push_back(item->text + Text(L": the sound could not be made"));
            continue;
        }
        ProjectEdit::SetSourceFile(source, Utf8::ToWide(fs::relative(copy.target, project.GetFolder()).generic_string()));
        if (sound->GetNodeType() == PMTreeNode::SoundVoice)
            ProjectEdit::SetProperty(source, "Language", std::to_wstring(choices.language));
        ProjectEdit::SetActiveSource(sound, source);
        ++result.imported;
    }
    return result;
}
} // namespace sn::audio
