#pragma once
// Every change of the project goes through these operations: each checks its input, makes
// the change, records it for undo, marks what must be saved and raises the notifications a
// view needs to follow.

#include "sonarium/core/model/ProjectObject.h"

#include <cstddef>
#include <initializer_list>
#include <string>

namespace sn::ProjectEdit
{
using NodeType = PMTreeNode::NodeType;
constexpr size_t AtEnd = static_cast<size_t>(-1);

// Whether name may be given to an object of that kind under parent (object: the one being
// renamed, or null for a new one). why receives the reason when not.
bool IsValidName(const ProjectObject* object, NodeType type, const ProjectObject* parent,
                 const CStdStr<wchar_t>& name, std::wstring* why = nullptr);
// Whether parent may hold a child of that kind.
bool CanHold(const ProjectObject* parent, NodeType type);

// Null when the parent cannot hold the kind or the name is invalid.
ProjectObject* Create(ProjectObject* parent, NodeType type, const CStdStr<wchar_t>& name, size_t index = AtEnd,
                      GUID const* id = nullptr);
// Puts an object that is not in the hierarchy yet under parent.
bool Adopt(ProjectObject* object, ProjectObject* parent, size_t index = AtEnd);
bool Rename(ProjectObject* object, const CStdStr<wchar_t>& name);
bool Delete(ProjectObject* object);
// Moves under a new parent (or within the same one); refuses a move into the object's own subtree.
bool Move(ProjectObject* object, ProjectObject* parent, size_t index = AtEnd);
// Moves as Move does; a name a child of the new parent already has is numbered as a copy's is,
// the rename being part of the same undo step.
bool MoveUnderFreeName(ProjectObject* object, ProjectObject* parent, size_t index = AtEnd);
// A deep copy with new GUIDs; a name taken by a sibling gets a number.
ProjectObject* Copy(ProjectObject* source, ProjectObject* parent, size_t index = AtEnd);
void SetIncluded(ProjectObject* object, GUID const& platform, bool included);
void SetInclusionLinked(ProjectObject* object, bool linked);
void SetColor(ProjectObject* object, int color);
// Sets a free-form property; raises event about the object when one is given, on the object
// channel or the one given. False when the change was refused.
bool SetProperty(ProjectObject* object, const std::string& key, const std::wstring& value,
                 ROString const* event = nullptr, ROString const* channel = nullptr);
// The file behind a sound's source: "SourceFileChanged" on the source.
bool SetSourceFile(ProjectObject* source, const std::wstring& file);
// Which of its sources a sound plays in the source's language: "ActiveSourceChanged" on the sound.
bool SetActiveSource(ProjectObject* sound, ProjectObject* source);
// How a music track plays its clips: "TrackTypeChanged" on the music channel.
bool SetTrackType(ProjectObject* track, const std::wstring& type);

// Asked before every change with the objects whose files the change writes (the work units that
// hold them, or the project file for what no work unit holds), and whether the project file is
// written too; a gate that answers false stops the change before anything is made.
class IChangeGate
{
public:
    virtual bool MayChange(std::initializer_list<const ProjectObject*> holders, bool projectFile) = 0;

protected:
    ~IChangeGate() = default;
};
// The gate of the running host; null lets every change through.
void SetChangeGate(IChangeGate* gate);

// A name not yet used by parent's children, based on name ("Sound" -> "Sound 1"...).
CStdStr<wchar_t> UniqueChildName(const ProjectObject* parent, const CStdStr<wchar_t>& name);
// Marks the file holding object as changed (the project file for top-level structure).
void MarkDirty(ProjectObject* object);
} // namespace sn::ProjectEdit
