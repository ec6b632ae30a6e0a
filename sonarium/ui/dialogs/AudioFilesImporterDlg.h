#pragma once
// The host's audio-file importer: asks for the files, shows what each one is and becomes, lets
// the user choose sound effects or voices (and their language), then imports behind a progress
// dialog with Cancel.

#include "sonarium/core/model/ProjectObject.h"

#include <string>
#include <vector>

namespace sn
{
class AudioFilesImporterDlg
{
public:
    // Imports into destination; with no files given, a file dialog asks for them first.
    // Returns how many files became sounds or sources.
    static size_t Run(ProjectObject* destination, std::vector<std::wstring> files = {});
};
} // namespace sn
