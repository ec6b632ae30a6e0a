// Files dropped from the file system: reading the dropped list, checking the files, importing
// them at once or through the importer, and the languages imports go into.

#include "host/DragDropHelpers.h"

#include "host/MessageBox.h"
#include "host/OrbObjectCategories.h"
#include "host/ProjectManager.h"
#include "host/StringHelp.h"
#include "platform/Ole.h"
#include "platform/WindowSystem.h"
#include "sonarium/core/import/AudioFile.h"
#include "sonarium/core/import/AudioImport.h"
#include "sonarium/core/model/CurrentState.h"
#include "sonarium/core/model/Project.h"
#include "sonarium/ui/dialogs/AudioFilesImporterDlg.h"
#include "sonarium/ui/helpers/DropFileCheck.h"

#include <algorithm>
#include <chrono>
#include <cwctype>
#include <fstream>

namespace
{
bool IsMidiName(const std::wstring& name)
{
    if (name.size() < 4)
        return false;
    std::wstring tail = name.substr(name.size() - 4);
    for (wchar_t& c : tail)
        c = static_cast<wchar_t>(std::towlower(c));
    return tail == L".mid";
}

// A standard MIDI file starts with its header chunk.
bool IsMidiFile(const std::filesystem::path& path)
{
    std::ifstream in(path, std::ios::binary);
    char magic[4] = {};
    return in.read(magic, 4) && std::string(magic, 4) == "MThd";
}

// A file's own problem, folders aside.
std::wstring FileProblem(const std::filesystem::path& path)
{
    if (!IsMidiName(path.wstring()))
        return sn::audio::ReadAudioFileInfo(path).problem;
    std::error_code failure;
    if (!std::filesystem::is_regular_file(path, failure))
        return StringHelp::Localize(L"there is no file by this name").c_str();
    return IsMidiFile(path) ? std::wstring()
                            : StringHelp::Localize(L"the file is named .mid but is not a standard MIDI file").c_str();
}

// The last dropped folder's files (sorted) and when they were listed.
struct FolderListing
{
    std::filesystem::path folder;
    std::vector<std::wstring> files;
    std::chrono::steady_clock::time_point read;

    bool IsFresh() const { return std::chrono::steady_clock::now() - read < std::chrono::seconds(1); }
};

FolderListing& LastListing()
{
    static FolderListing s_listing;
    return s_listing;
}

// The files a dropped folder brings, by path: the audio and MIDI files in it and in its
// subfolders, as a user who drops a folder of sounds means; hidden files, and others that cannot
// be imported, are left out. The last folder's answer is kept for a second, since a drag asks at
// every move of the pointer, and a folder may change between two drags.
const std::vector<std::wstring>& FilesInFolder(const std::filesystem::path& folder)
{
    FolderListing& listing = LastListing();
    if (folder == listing.folder && listing.IsFresh())
        return listing.files;
    listing.folder = folder;
    listing.read = std::chrono::steady_clock::now();
    std::vector<std::wstring>& files = listing.files;
    files.clear();
    std::error_code failure;
    for (std::filesystem::recursive_directory_iterator it(
             folder, std::filesystem::directory_options::skip_permission_denied, failure), end;
         !failure && it != end; it.increment(failure))
    {
        const std::filesystem::path& path = it->path();
        if (path.filename().wstring().starts_with(L"."))
        {
            if (it->is_directory(failure))
                it.disable_recursion_pending();
            continue;
        }
        if (it->is_regular_file(failure) && FileProblem(path).empty())
            files.push_back(path.wstring());
    }
    std::sort(files.begin(), files.end());
    return files;
}

// Files a folder just listed were read then: each file of a dropped folder is read once per
// drag, not once to list it and again to check it.
bool IsImportable(const std::wstring& path)
{
    const FolderListing& listing = LastListing();
    if (listing.IsFresh() && std::binary_search(listing.files.begin(), listing.files.end(), path))
        return true;
    return sn::DropFileProblem(path).empty();
}

// The project of the running host, found through its audio objects.
const sn::Project* CurrentProject()
{
    ProjectManager* projects = ProjectManager::m_pInstance;
    CSmartPtr<IOrbWorkUnit> top;
    if (!projects || !projects->GetTopWorkUnit(OrbObjectCategories::AudioObjects, top) || !top)
        return nullptr;
    const sn::ProjectObject* model = sn::AsProjectObject(top.Get());
    return model ? model->GetProject() : nullptr;
}

// Where files dropped on no object go: the audio objects' top work unit.
CSmartPtr<IOrbObject> DefaultDestination()
{
    CSmartPtr<IOrbWorkUnit> top;
    CSmartPtr<IOrbObject> destination;
    if (ProjectManager::m_pInstance &&
        ProjectManager::m_pInstance->GetTopWorkUnit(OrbObjectCategories::AudioObjects, top) && top)
        destination = CSmartPtr<IOrbObject>(top.Get());
    return destination;
}

std::vector<std::wstring> Paths(const std::vector<CStdStr<wchar_t>>& files)
{
    std::vector<std::wstring> paths;
    for (const CStdStr<wchar_t>& file : files)
        paths.emplace_back(file.c_str());
    return paths;
}

void Report(const std::wstring& text)
{
    CXMessageBox(text.c_str(), MB_OK | MB_ICONEXCLAMATION, StringHelp::Localize(L"Files Import").c_str());
}
} // namespace

std::wstring sn::DropFileProblem(const std::filesystem::path& path)
{
    std::error_code failure;
    if (!std::filesystem::is_directory(path, failure))
        return FileProblem(path);
    return FilesInFolder(path).empty()
               ? StringHelp::Localize(L"the folder holds no audio file that can be read").c_str()
               : std::wstring();
}

bool DragDropHelpers::GetDropFilesArray(HDROP drop, std::vector<CStdStr<wchar_t>>& files)
{
    const UINT count = ::DragQueryFileW(drop, 0xFFFFFFFF, nullptr, 0);
    for (UINT i = 0; i < count; ++i)
    {
        std::wstring name(::DragQueryFileW(drop, i, nullptr, 0), L'\0');
        if (name.empty())
            continue;
        std::vector<wchar_t> buffer(name.size() + 1);
        ::DragQueryFileW(drop, i, buffer.data(), static_cast<UINT>(buffer.size()));
        // A folder stands for the sounds in it; one with none stays itself, so that the drop is
        // refused with the reason rather than taken for the other files alone.
        std::error_code failure;
        const std::vector<std::wstring>* inside =
            std::filesystem::is_directory(buffer.data(), failure) ? &FilesInFolder(buffer.data()) : nullptr;
        if (inside && !inside->empty())
            files.insert(files.end(), inside->begin(), inside->end());
        else
            files.emplace_back(buffer.data());
    }
    return !files.empty();
}

bool DragDropHelpers::ValidateDropFiles(const std::vector<CStdStr<wchar_t>>& files)
{
    // A drag asks again at every move of the pointer: the last answer is kept for the same files.
    static std::vector<std::wstring> s_lastFiles;
    static bool s_lastAnswer = false;
    const std::vector<std::wstring> paths = Paths(files);
    if (!paths.empty() && paths == s_lastFiles)
        return s_lastAnswer;
    bool ok = !paths.empty();
    for (const std::wstring& path : paths)
        ok = ok && IsImportable(path);
    s_lastFiles = paths;
    s_lastAnswer = ok;
    return ok;
}

bool AudioFilesImporter::ImportFiles(DWORD languageId, const std::vector<CStdStr<wchar_t>>& files,
                                     ImportFile::ImportOperation, IOrbObject* parent, bool, double, unsigned int, bool,
                                     bool, bool, ConsoleImportationProgress*)
{
    CSmartPtr<IOrbObject> destination = parent ? CSmartPtr<IOrbObject>(parent) : DefaultDestination();
    sn::ProjectObject* model = sn::AsProjectObject(destination.Get());
    if (!model)
        return false;
    const sn::audio::AudioImport import(model, Paths(files));
    if (!import.Problem().empty())
    {
        Report(import.Problem());
        return false;
    }
    const sn::audio::ImportChoices choices{languageId != k_sfxLanguageId, languageId};
    // All or nothing: a file that cannot be imported is named and nothing is imported.
    std::wstring problems;
    for (const sn::audio::ImportItem& item : import.Plan(choices))
        if (!item.Usable())
            problems += L"\n" + item.text + L": " + item.info.problem;
    if (!problems.empty())
    {
        Report(std::wstring(StringHelp::Localize(L"These files cannot be imported:").c_str()) + problems);
        return false;
    }
    sn::audio::ImportResult result;
    {
        CXAutoWaitCursor wait;
        result = import.Run(choices, [](size_t, const std::wstring&) { return true; });
    }
    if (!result.problems.empty())
    {
        std::wstring text = StringHelp::Localize(L"The import failed:").c_str();
        for (const std::wstring& problem : result.problems)
            text += L"\n" + problem;
        Report(text);
    }
    return result.imported > 0;
}

void AudioFilesImporterDlg::Show(CWnd*, IOrbObject* target, DWORD, const std::vector<CStdStr<wchar_t>>& files,
                                 ImportFile::ImportOperation)
{
    CSmartPtr<IOrbObject> destination = target ? CSmartPtr<IOrbObject>(target) : DefaultDestination();
    if (sn::ProjectObject* model = sn::AsProjectObject(destination.Get()))
        sn::AudioFilesImporterDlg::Run(model, Paths(files));
}

CStdStr<wchar_t> AudioFileLanguages::GetLanguageName(DWORD languageId)
{
    if (const sn::Project* project = CurrentProject())
        for (const sn::Language& language : project->Languages())
            if (language.id == languageId)
                return language.name;
    return CStdStr<wchar_t>();
}

DWORD AudioFileLanguages::GetReferenceLanguageId()
{
    const sn::Project* project = CurrentProject();
    return project ? project->GetReferenceLanguage() : 0;
}

DWORD AudioFileLanguages::GetCurrentLanguageId()
{
    return sn::CurrentLanguage();
}

CXAutoWaitCursor::CXAutoWaitCursor()
{
    WindowSystem::Get().BeginWaitCursor();
}

CXAutoWaitCursor::~CXAutoWaitCursor()
{
    WindowSystem::Get().EndWaitCursor();
}
