#pragma once
// The one set of naming rules of the reference host, applied to names typed by the user, made by
// the host and read from project files alike:
//
// - a name has 1 to 260 characters and does not begin or end with a blank;
// - no name holds a control character (tabs and line breaks included); fixing replaces each by a
//   blank;
// - the names of work units and physical folders become file and folder names: they hold none of
//   \ / : * ? " < > | (fixing replaces each by "_"), do not end with a period, and are none of
//   the names that file systems keep for devices (CON, PRN, AUX, NUL, COM1 to COM9, LPT1 to LPT9,
//   in any case, with or without an extension);
// - among the objects of the hierarchy under one parent no two names are equal when compared
//   without regard to ASCII case (the parts of an object, such as a sound's sources or an event's
//   actions, may share names); a name made unique gets " 1", " 2"... after it.

#include "host/ObjectName.h"
#include "sonarium/core/model/ProjectObject.h"

#include <string>

namespace sn::naming
{
using Result = ObjectName::NameValidationResult;

// Whether names of objects of that type are file or folder names.
bool IsFileName(OrbObjectType type);

// The first rule that name breaks under parent (self: the object being named, or null for a new
// one), or NameValid. Without checkSiblings the names of other objects are not looked at.
Result Check(OrbObjectType type, const std::wstring& name, const ProjectObject* parent, const ProjectObject* self,
             bool checkSiblings = true);
// Replaces the characters that no name of the type may hold.
void FixCharacters(OrbObjectType type, std::wstring& name);
// Makes name follow every rule: characters fixed, blanks and final periods trimmed, a reserved
// name given "_", an empty one the type's name, the length cut, and a number added when a
// sibling has it. True when the name changed.
bool MakeValid(OrbObjectType type, std::wstring& name, const ProjectObject* parent, const ProjectObject* self);
// name, or name with the first free " N" after it, within the length limit.
std::wstring MakeUnique(const std::wstring& name, const ProjectObject* parent, const ProjectObject* self);

// What is wrong, in a sentence for the user.
std::wstring Describe(Result result, OrbObjectType type, const std::wstring& name);
} // namespace sn::naming
