#include "sonarium/core/music/Playlist.h"

#include "host/Undo.h"
#include "host/Utf8.h"
#include "sonarium/core/model/ModelNotify.h"
#include "sonarium/core/model/Project.h"
#include "sonarium/core/model/ProjectEdit.h"
#include "sonarium/core/undo/UndoManager.h"

namespace sn::playlist
{
namespace
{
constexpr const char* kMode = "PlayMode";
constexpr const char* kSegment = "Segment";

// Raises the music event of a change about the container when the change is made (or redone),
// and its opposite when it is undone. Views only schedule a refresh when they hear these.
class MusicEvents : public IUndoCommand
{
public:
    MusicEvents(ProjectObject* container, ROString done, ROString undone)
        : m_container(container), m_done(done), m_undone(undone)
    {
    }
    void Redo() override { notify::Music(m_done, m_container.Get()); }
    void Undo() override { notify::Music(m_undone, m_container.Get()); }

private:
    CSmartPtr<ProjectObject> m_container;
    ROString m_done;
    ROString m_undone;
};

// Makes the change and its events one undo step; nothing is raised or recorded when it fails.
template <class Make>
auto WithEvents(const wchar_t* name, ProjectObject* container, ROString done, ROString undone, Make make)
{
    AutoComplexUndo step(name, false);
    auto result = make();
    if (result)
    {
        auto events = std::make_unique<MusicEvents>(container, done, undone);
        events->Redo();
        if (auto* undo = dynamic_cast<UndoManager*>(IUndoMgr::m_instance))
            undo->Record(std::move(events), name);
    }
    return result;
}

ProjectObject* ContainerOf(const ProjectObject* object)
{
    for (ProjectObject* at = object ? object->Parent() : nullptr; at; at = at->Parent())
        if (IsPlaylistContainer(at))
            return at;
    return nullptr;
}
} // namespace

bool IsPlaylistContainer(const ProjectObject* object)
{
    return object && object->GetObjectType() == OrbObjectType_MusicPlaylistContainer;
}

bool IsSequence(const ProjectObject* object)
{
    return object && object->GetObjectType() == OrbObjectType_MusicPlaylistItem && IsPlaylistContainer(object->Parent());
}

bool IsItem(const ProjectObject* object)
{
    return object && object->GetObjectType() == OrbObjectType_MusicPlaylistItem && IsSequence(object->Parent());
}

std::vector<ProjectObject*> Sequences(const ProjectObject* container)
{
    std::vector<ProjectObject*> sequences;
    if (IsPlaylistContainer(container))
        for (const CSmartPtr<ProjectObject>& child : container->Children())
            if (IsSequence(child.Get()))
                sequences.push_back(child.Get());
    return sequences;
}

Mode ModeOf(const ProjectObject* sequence)
{
    return sequence && sequence->GetProperty(kMode) == L"random" ? Mode::Random : Mode::InOrder;
}

const wchar_t* ModeName(Mode mode)
{
    return mode == Mode::Random ? L"random" : L"in order";
}

ProjectObject* SegmentOf(const ProjectObject* item)
{
    const ProjectObject* container = ContainerOf(item);
    const std::optional<GUID> id = item ? GuidText::FromString(Utf8::FromWide(item->GetProperty(kSegment))) : std::nullopt;
    ProjectObject* segment = container && id && container->GetProject() ? container->GetProject()->Find(*id) : nullptr;
    return segment && segment->Parent() == container ? segment : nullptr;
}

ProjectObject* AddSequence(ProjectObject* container, const CStdStr<wchar_t>& name, Mode mode)
{
    if (!IsPlaylistContainer(container))
        return nullptr;
    return WithEvents(L"New Sequence", container, MusicNotify::rosSequenceAdded, MusicNotify::rosSequenceRemoved,
                     [&]() -> ProjectObject*
                     {
                         ProjectObject* sequence =
                             ProjectEdit::Create(container, PMTreeNode::MusicPlaylistItem, name);
                         if (sequence && mode == Mode::Random && !ProjectEdit::SetProperty(sequence, kMode, L"random"))
                             return nullptr;
                         return sequence;
                     });
}

ProjectObject* AddItem(ProjectObject* sequence, ProjectObject* segment)
{
    ProjectObject* container = IsSequence(sequence) ? sequence->Parent() : nullptr;
    if (!container || !segment || segment->Parent() != container ||
        segment->GetObjectType() != OrbObjectType_MusicSegment)
        return nullptr;
    return WithEvents(L"New Playlist Item", container, MusicNotify::rosSequenceItemAdded,
                     MusicNotify::rosSequenceItemRemoved,
                     [&]() -> ProjectObject*
                     {
                         ProjectObject* item =
                             ProjectEdit::Create(sequence, PMTreeNode::MusicPlaylistItem, segment->GetName());
                         if (item && !ProjectEdit::SetProperty(item, kSegment,
                                                               Utf8::ToWide(GuidText::ToString(segment->Id()))))
                             return nullptr;
                         return item;
                     });
}

bool Remove(ProjectObject* sequenceOrItem)
{
    const bool sequence = IsSequence(sequenceOrItem);
    if (!sequence && !IsItem(sequenceOrItem))
        return false;
    return WithEvents(sequence ? L"Delete Sequence" : L"Delete Playlist Item", ContainerOf(sequenceOrItem),
                     sequence ? MusicNotify::rosSequenceRemoved : MusicNotify::rosSequenceItemRemoved,
                     sequence ? MusicNotify::rosSequenceAdded : MusicNotify::rosSequenceItemAdded,
                     [&] { return ProjectEdit::Delete(sequenceOrItem); });
}
} // namespace sn::playlist
