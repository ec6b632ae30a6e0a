#pragma once
// The playlist of a music playlist container: what it plays, as sequences of items. Each
// sequence plays its items in order or picks them at random; each item names a segment of the
// container. Sequences and items are parts of the container (they have no rows of their own),
// kept with it in its work unit. Every change is one undoable step and raises, when it is made and
// when it is undone, the music channel's "SequenceAdded"/"SequenceRemoved" or
// "SequenceItemAdded"/"SequenceItemRemoved" about the container.

#include "sonarium/core/model/ProjectObject.h"

#include <string>
#include <vector>

namespace sn::playlist
{
enum class Mode
{
    InOrder,
    Random,
};

bool IsPlaylistContainer(const ProjectObject* object);
bool IsSequence(const ProjectObject* object);
bool IsItem(const ProjectObject* object);

std::vector<ProjectObject*> Sequences(const ProjectObject* container);
Mode ModeOf(const ProjectObject* sequence);
const wchar_t* ModeName(Mode mode); // "in order", "random"
// The segment an item plays, or null when it is gone from the container.
ProjectObject* SegmentOf(const ProjectObject* item);

// Null when the container is none, the name is invalid or the change was refused.
ProjectObject* AddSequence(ProjectObject* container, const CStdStr<wchar_t>& name, Mode mode);
// The segment must be one of the sequence's container's.
ProjectObject* AddItem(ProjectObject* sequence, ProjectObject* segment);
// Removes a sequence (with its items) or an item.
bool Remove(ProjectObject* sequenceOrItem);
} // namespace sn::playlist
