#pragma once
// Which languages a voice is built for. A voice is recorded per language and, by default, is
// part of every language's build; a line not recorded (or not wanted) in one language is
// excluded from it. The exclusions are kept with the voice in its work unit ("ExcludedLanguages",
// language numbers), and a change is one undoable step that raises
// "SonariumObject"/"LanguageInclusionChanged" on the voice.

#include "sonarium/core/model/ProjectObject.h"

#include <set>

namespace sn::voices
{
bool IsVoice(const ProjectObject* object);
std::set<unsigned long> ExcludedLanguages(const ProjectObject* voice);
bool IsIncludedInLanguage(const ProjectObject* voice, unsigned long language);
// False for an object that is not a voice, a language the project does not have, or a change
// refused; including what is included already succeeds without a step.
bool SetIncludedInLanguage(ProjectObject* voice, unsigned long language, bool included);
} // namespace sn::voices
