#include "sonarium/core/import/SourceAudio.h"

#include "host/StringHelp.h"
#include "host/Utf8.h"
#include "sonarium/core/model/Project.h"

namespace sn::audio
{
ProjectObject* PlayedSource(ProjectObject* object)
{
    if (!object)
        return nullptr;
    if (object->GetObjectType() == OrbObjectType_AudioSource)
        return object;
    if (object->GetObjectType() != OrbObjectType_Sound)
        return nullptr;
    const std::optional<GUID> active = GuidText::FromString(Utf8::FromWide(object->GetProperty("ActiveSource")));
    ProjectObject* first = nullptr;
    for (const CSmartPtr<ProjectObject>& child : object->Children())
    {
        if (child->GetObjectType() != OrbObjectType_AudioSource)
            continue;
        if (active && child->Id() == *active)
            return child.Get();
        if (!first)
            first = child.Get();
    }
    return first;
}

std::filesystem::path SourceFilePath(const ProjectObject& source)
{
    const std::filesystem::path file = Utf8::FromWide(source.GetProperty("File"));
    if (file.empty() || file.is_absolute() || !source.GetProject())
        return file;
    return source.GetProject()->GetFolder() / file;
}

SourceAudio QuerySourceAudio(ProjectObject* object, size_t buckets)
{
    SourceAudio audio;
    audio.source = PlayedSource(object);
    if (!audio.source)
    {
        audio.info.problem = StringHelp::Localize(L"no audio source").c_str();
        return audio;
    }
    audio.file = SourceFilePath(*audio.source);
    if (audio.file.empty())
    {
        audio.info.problem = StringHelp::Localize(L"the source names no file").c_str();
        return audio;
    }
    audio.info = ReadAudioFileInfo(audio.file);
    if (audio.info.ok && buckets > 0)
        audio.peaks = ReadPeaks(audio.file, buckets);
    return audio;
}
} // namespace sn::audio
