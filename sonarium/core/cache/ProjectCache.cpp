#include "sonarium/core/cache/ProjectCache.h"

#include "host/Utf8.h"
#include "sonarium/core/cache/AudioConverter.h"
#include "sonarium/core/import/SourceAudio.h"
#include "sonarium/core/model/ModelNotify.h"
#include "sonarium/core/storage/ProjectStorage.h"

#include <sndfile.h>

#include <algorithm>

namespace sn::cache
{
namespace fs = std::filesystem;

namespace
{
void Sources(ProjectObject* object, std::vector<ProjectObject*>& into)
{
    if (object->GetObjectType() == OrbObjectType_AudioSource)
        into.push_back(object);
    for (const CSmartPtr<ProjectObject>& child : object->Children())
        Sources(child.Get(), into);
}

// Every file the cache holds for the source, whatever format it was converted to.
void RemoveCached(const fs::path& folder, const std::string& stem)
{
    std::error_code ec;
    for (const char* extension : {".wav", ".ogg"})
        fs::remove(folder / (stem + extension), ec);
}

std::wstring FormatOf(const fs::path& file)
{
    SF_INFO info{};
    SNDFILE* sound = sf_open(file.c_str(), SFM_READ, &info);
    if (!sound)
        return L"unreadable: " + Utf8::ToWide(sf_strerror(nullptr));
    sf_close(sound);
    const int sub = info.format & SF_FORMAT_SUBMASK;
    const wchar_t* format = sub == SF_FORMAT_VORBIS ? L"Vorbis" : sub == SF_FORMAT_IMA_ADPCM ? L"ADPCM" : L"PCM";
    return std::wstring(format) + L" " + std::to_wstring(info.samplerate) + L", " + std::to_wstring(info.channels) +
           (info.channels == 1 ? L" channel" : L" channels");
}
} // namespace

fs::path Folder(const Project& project)
{
    return project.GetFolder() / ".cache";
}

fs::path OriginalOf(const ProjectObject* source)
{
    const Project* project = source ? source->GetProject() : nullptr;
    if (!project)
        return {};
    // A source names its file from the project's folder; one without a file is looked for by its
    // own name among the originals.
    if (!source->GetProperty("File").empty())
        return audio::SourceFilePath(*source);
    return project->GetFolder() / kOriginalsFolder / fs::path(source->GetName().c_str());
}

FillResult Fill(ProjectObject* object)
{
    FillResult result;
    const Project* project = object ? object->GetProject() : nullptr;
    if (!project || project->GetFolder().empty())
        return result;
    std::vector<ProjectObject*> sources;
    Sources(object, sources);
    const fs::path folder = Folder(*project);
    bool changed = false;
    for (ProjectObject* source : sources)
    {
        const conversion::Effective applied = conversion::EffectiveOf(source);
        const std::string stem = GuidText::ToString(source->Id());
        if (!applied.converted)
        {
            // A sound that plays its originals keeps nothing in the cache.
            changed |= fs::exists(folder / (stem + ".wav")) || fs::exists(folder / (stem + ".ogg"));
            RemoveCached(folder, stem);
            ++result.skipped;
            continue;
        }
        const char* extension = ConvertedExtension(applied.settings.format);
        std::string why;
        const fs::path original = OriginalOf(source);
        if (!ConvertAudioFile(original, folder / (stem + extension), applied.settings, why))
        {
            result.failures.push_back(Utf8::ToWide(original.lexically_relative(project->GetFolder()).string()) +
                                      L": " + Utf8::ToWide(why));
            continue;
        }
        // A conversion to the other container leaves no older file behind.
        std::error_code ec;
        fs::remove(folder / (stem + (std::string(extension) == ".wav" ? ".ogg" : ".wav")), ec);
        ++result.converted;
        changed = true;
    }
    if (changed)
        notify::Project(notify::evCacheChanged);
    return result;
}

bool Clear(const Project& project)
{
    const fs::path folder = Folder(project);
    std::error_code ec;
    if (!fs::is_directory(folder, ec) || fs::is_empty(folder, ec))
        return false;
    fs::remove_all(folder, ec);
    notify::Project(notify::evCacheChanged);
    return true;
}

std::vector<Entry> Entries(const Project& project)
{
    std::vector<Entry> entries;
    std::error_code ec;
    for (const fs::directory_entry& file : fs::directory_iterator(Folder(project), ec))
    {
        if (!file.is_regular_file())
            continue;
        const std::optional<GUID> id = GuidText::FromString(file.path().stem().string());
        entries.push_back({id ? project.Find(*id) : nullptr, file.path(), FormatOf(file.path())});
    }
    std::sort(entries.begin(), entries.end(), [](const Entry& a, const Entry& b) { return a.file < b.file; });
    return entries;
}
} // namespace sn::cache
