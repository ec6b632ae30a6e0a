#pragma once
// The host's naming rules for project objects: which names are allowed, how a proposed name is
// made legal and unique, and the message that tells the user what is wrong with a typed name.

#include "host/OrbObjectType.h"
#include "host/StdStr.h"

class IOrbObject;

namespace ObjectName
{
// Names are limited to this many characters, wherever they come from.
constexpr int MaxNameLength = 260;

// Each way a name can be wrong; 0 is a valid name.
enum NameValidationResult : int
{
    NameValid = 0,
    NameEmpty = 1,            // nothing but blanks
    NameTooLong = 2,          // more than MaxNameLength characters
    NameControlCharacter = 3, // a tab, a line break or another control character
    NameFileCharacter = 4,    // a character that a file or folder name cannot hold
    NameBadEnding = 5,        // begins or ends with a blank, or (a file or folder name) ends with a period
    NameReserved = 6,         // a name that the file systems keep for devices ("CON", "NUL"...)
    NameTaken = 7,            // another object under the same parent has it, whatever its case
};

// Makes name legal and unique under parent (self: the object being named, or null for a new one):
// characters replaced, blanks trimmed, length cut, a number added. True when name changed.
// Names do not depend on a language; the language argument is taken for the object's sources.
bool MakeObjectNameValid(OrbObjectType type, CStdStr<wchar_t>& name, const IOrbObject* parent,
                         const IOrbObject* self, unsigned long language);
// Replaces in place the characters that no name of that type may hold.
void AutoFixNameCharacters(OrbObjectType type, CStdStr<wchar_t>& name);
NameValidationResult ValidateObjectName(OrbObjectType type, const CStdStr<wchar_t>& name, IOrbObject* parent,
                                        IOrbObject* self, bool checkSiblings);
// Tells the user what is wrong with name. With retry, the box offers OK and Cancel and the answer
// says whether the user wants to try another name; otherwise it answers false.
bool DisplayInvalidNameErrorMessage(NameValidationResult result, OrbObjectType type, const CStdStr<wchar_t>& name,
                                    bool retry);
} // namespace ObjectName
