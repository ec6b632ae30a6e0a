#pragma once
// Files dropped from the file system: reading a CF_HDROP list, checking that the files may be
// imported, and the host's audio-file importer with the languages it imports into.

#include "host/StdStr.h"
#include "platform/WinTypes.h"

#include <vector>

class CWnd;
class IOrbObject;
class ConsoleImportationProgress;

namespace DragDropHelpers
{
// The files of a dropped list, a folder standing for the audio files in it and its subfolders;
// false when no file could be read from it.
bool GetDropFilesArray(HDROP drop, std::vector<CStdStr<wchar_t>>& files);
// True when every file is an audio file libsndfile reads, or a standard MIDI file.
bool ValidateDropFiles(const std::vector<CStdStr<wchar_t>>& files);
} // namespace DragDropHelpers

namespace ImportFile
{
enum ImportOperation
{
    ImportOperation_CreateNew = 0,      // new sounds under the target
    ImportOperation_ReplaceSources = 1, // new sources of the target's existing sounds of the same name
    ImportOperation_AskUser = 4,        // the importer dialog lets the user choose
};
} // namespace ImportFile

// The language of sound effects, which have no language.
constexpr DWORD k_sfxLanguageId = 0x17705D3E;

namespace AudioFilesImporter
{
// Imports at once, one sound per file named from the file, as one undo step; a voice import when
// languageId is a language of the project. Files that cannot be imported are named in a message
// and nothing is imported. True when files were imported.
bool ImportFiles(DWORD languageId, const std::vector<CStdStr<wchar_t>>& files, ImportFile::ImportOperation operation,
                 IOrbObject* parent, bool, double, unsigned int, bool, bool, bool, ConsoleImportationProgress*);
} // namespace AudioFilesImporter

class AudioFilesImporterDlg
{
public:
    // Opens the importer on the files, with the target and language chosen.
    static void Show(CWnd* parent, IOrbObject* target, DWORD languageId, const std::vector<CStdStr<wchar_t>>& files,
                     ImportFile::ImportOperation operation);
};

namespace AudioFileLanguages
{
CStdStr<wchar_t> GetLanguageName(DWORD languageId);
// The language voices are created in, and the one the host currently plays.
DWORD GetReferenceLanguageId();
DWORD GetCurrentLanguageId();
} // namespace AudioFileLanguages

// The wait cursor, shown while it lives.
class CXAutoWaitCursor
{
public:
    CXAutoWaitCursor();
    ~CXAutoWaitCursor();
    CXAutoWaitCursor(const CXAutoWaitCursor&) = delete;
    CXAutoWaitCursor& operator=(const CXAutoWaitCursor&) = delete;
};
