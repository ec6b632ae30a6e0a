// sonarium-make-sample SOURCE [FOLDER]
//
// Writes a sample project from its text SOURCE into FOLDER (SOURCE without its extension, so
// samples/Demo.txt gives samples/Demo), the project taking the folder's name. The text is the
// project builder's, plus lines "unload <path>" naming work units that the saved project keeps
// unloaded. Every audio source without a file gets one of our own making, written into the
// project's Originals folder ("Originals/SFX", or "Originals/Voices/<reference language>" for
// voices). GUIDs come from a fixed seed and the sounds from their names, so the same text always
// gives the same files. The new project is written and checked beside FOLDER and only then takes
// its place.

#include "host/Utf8.h"
#include "sonarium/core/host/ProjectBuilder.h"
#include "sonarium/core/import/AudioImport.h"
#include "sonarium/core/import/AudioWriter.h"
#include "sonarium/core/storage/FileIO.h"
#include "sonarium/core/storage/ProjectStorage.h"

#include <cstdio>
#include <filesystem>
#include <map>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace
{
namespace fs = std::filesystem;

constexpr unsigned long long kSeed = 0x50A1D2024ULL;
const std::wstring kUnload = L"unload ";

struct Source
{
    std::wstring builderText;
    std::map<int, std::wstring> unloads; // line number -> work unit path
};

// Takes the "unload" lines out, leaving blank lines so that the builder's line numbers still match.
Source Split(const std::wstring& text)
{
    Source source;
    std::wistringstream lines(text);
    std::wstring line;
    for (int number = 1; std::getline(lines, line); ++number)
    {
        if (line.starts_with(kUnload))
        {
            std::wstring path = line.substr(kUnload.size());
            while (!path.empty() && (path.back() == L'\r' || path.back() == L' '))
                path.pop_back();
            source.unloads[number] = path;
            line.clear();
        }
        source.builderText += line + L"\n";
    }
    return source;
}

int Fail(const std::string& message)
{
    std::fprintf(stderr, "sonarium-make-sample: %s\n", message.c_str());
    return 1;
}

std::string Describe(const sn::StorageProblems& problems)
{
    std::string text;
    for (const sn::StorageProblem& problem : problems)
        text += "\n  " + Utf8::FromWide(problem.Text());
    return text;
}

// Removes a folder of ours when the tool leaves, whatever the path out.
class ScratchFolder
{
public:
    explicit ScratchFolder(fs::path path) : m_path(std::move(path)) { Remove(); }
    ~ScratchFolder() { Remove(); }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    const fs::path& Path() const { return m_path; }

private:
    void Remove()
    {
        std::error_code ec;
        fs::remove_all(m_path, ec);
    }
    fs::path m_path;
};

constexpr int kSampleRate = 16000;

void CollectSources(sn::ProjectObject* object, std::vector<sn::ProjectObject*>& sources)
{
    if (object->GetObjectType() == OrbObjectType_AudioSource)
        sources.push_back(object);
    for (const CSmartPtr<sn::ProjectObject>& child : object->Children())
        CollectSources(child.Get(), sources);
}

std::wstring LanguageName(const sn::Project& project)
{
    for (const sn::Language& language : project.Languages())
        if (language.id == project.GetReferenceLanguage())
            return language.name;
    return L"Voices";
}

// Gives each source without a file a sound of its own, written below folder.
std::string MakeSourceFiles(sn::Project& project, const fs::path& folder)
{
    std::vector<sn::ProjectObject*> sources;
    for (sn::WorkUnitObject* root : project.Roots())
        CollectSources(root, sources);
    for (sn::ProjectObject* source : sources)
    {
        if (!source->GetProperty("File").empty())
            continue;
        const bool voice = source->Parent() && source->Parent()->GetNodeType() == PMTreeNode::SoundVoice;
        const fs::path relative = fs::path(sn::kOriginalsFolder) /
                                  (voice ? fs::path("Voices") / Utf8::FromWide(LanguageName(project)) : fs::path("SFX")) /
                                  Utf8::FromWide(source->GetName());
        std::error_code ec;
        fs::create_directories((folder / relative).parent_path(), ec);
        std::string error;
        if (ec || !sn::audio::WriteWav(folder / relative,
                                        sn::audio::Synthesize(source->GetName(), kSampleRate), 16, error))
            return "cannot write " + (folder / relative).string() + ": " + (ec ? ec.message() : error);
        source->RawSetProperty("File", Utf8::ToWide(relative.generic_string()));
    }
    return {};
}

// Builds the project and writes it into folder; an empty result means success.
std::string Write(const Source& source, const std::wstring& name, const fs::path& folder)
{
    std::wstring error;
    std::mt19937_64 ids(kSeed);
    std::unique_ptr<sn::Project> project = sn::ProjectBuilder::Build(name, source.builderText, &error, &ids);
    if (!project)
        return Utf8::FromWide(error);
    std::vector<sn::WorkUnitObject*> unloaded;
    for (const auto& [line, path] : source.unloads)
    {
        auto* unit = dynamic_cast<sn::WorkUnitObject*>(sn::FindByPath(*project, path));
        if (!unit || !unit->IsFile())
            return "line " + std::to_string(line) + ": no work unit at \"" + Utf8::FromWide(path) + "\"";
        unloaded.push_back(unit);
    }
    if (std::string error = MakeSourceFiles(*project, folder); !error.empty())
        return error;
    sn::StorageProblems problems;
    // An unloaded unit keeps the file it had: write everything first, then unload and save again.
    if (!sn::SaveProjectAs(*project, folder, problems))
        return "cannot write " + folder.string() + ":" + Describe(problems);
    for (sn::WorkUnitObject* unit : unloaded)
        if (!sn::UnloadWorkUnit(*project, unit))
            return "cannot unload " + Utf8::FromWide(unit->GetName());
    if (!sn::SaveProject(*project, problems))
        return "cannot write " + folder.string() + ":" + Describe(problems);
    return {};
}

// Replaces target by the finished folder, keeping the old one until the new one is in place.
std::string Replace(const fs::path& finished, const fs::path& target)
{
    ScratchFolder old(target.string() + ".old");
    std::error_code ec;
    const bool existed = fs::exists(target, ec);
    if (existed)
        fs::rename(target, old.Path(), ec);
    if (ec)
        return "cannot move " + target.string() + " aside: " + ec.message();
    fs::rename(finished, target, ec);
    if (ec)
    {
        std::error_code back;
        if (existed)
            fs::rename(old.Path(), target, back);
        return "cannot put the new project in place of " + target.string() + ": " + ec.message();
    }
    return {};
}

constexpr char kUsage[] =
    "usage: sonarium-make-sample SOURCE [FOLDER]\n"
    "Writes the sample project described by the text SOURCE into FOLDER (by default SOURCE without\n"
    "its extension), replacing what was there only once the new project opens cleanly.\n"
    "The bundled sample: sonarium-make-sample " SONARIUM_SAMPLES_DIR "/Demo.txt\n";
} // namespace

int main(int argc, char** argv)
{
    const bool help = argc == 2 && (std::string(argv[1]) == "--help" || std::string(argv[1]) == "-h");
    // Without a source nothing is written: a bare run must not rewrite the bundled sample.
    if (help || argc < 2 || argc > 3 || std::string(argv[1]).starts_with("-"))
    {
        std::fputs(kUsage, help ? stdout : stderr);
        return help ? 0 : 2;
    }
    const fs::path sourcePath = argv[1];
    const fs::path target =
        fs::absolute(argc > 2 ? fs::path(argv[2]) : fs::path(sourcePath).replace_extension()).lexically_normal();
    if (!target.has_filename())
        return Fail("the output folder needs a name: " + target.string());
    if (target == fs::absolute(sourcePath).lexically_normal())
        return Fail("the source has no extension to drop: name the output folder");

    std::string bytes, error;
    if (!sn::FileIO::ReadFile(sourcePath, bytes, error))
        return Fail(sourcePath.string() + ": " + error);
    const Source source = Split(Utf8::ToWide(bytes));

    ScratchFolder staging(target.string() + ".new");
    error = Write(source, Utf8::ToWide(target.filename().string()), staging.Path());
    if (!error.empty())
        return Fail(sourcePath.string() + ": " + error);

    // What was written must open as it is, without a single problem.
    sn::OpenResult opened = sn::OpenProject(staging.Path());
    if (!opened.project || !opened.problems.empty())
        return Fail("the written project does not open cleanly:" + Describe(opened.problems));
    const size_t objects = opened.project->ObjectCount();
    const size_t units = opened.project->FileWorkUnits().size();
    opened.project.reset();

    error = Replace(staging.Path(), target);
    if (!error.empty())
        return Fail(error);
    std::printf("wrote %s: %zu objects loaded, %zu work units, %zu unloaded\n", target.string().c_str(),
                objects, units, source.unloads.size());
    return 0;
}
