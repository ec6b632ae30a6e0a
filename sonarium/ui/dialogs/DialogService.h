#pragma once
// The one way the host's dialogs reach the user. Every modal dialog of the host is a request
// to the current dialog service: the desktop application installs one that shows real
// dialogs, tests and scripts one that answers from a queue (ScriptedDialogService). With no
// service installed nothing is shown and every dialog answers as if cancelled.

#include "host/FileDialog.h"
#include "host/PMTreeNode.h"
#include "host/UnloadDirtyWorkUnitsDlg.h"
#include "platform/WinTypes.h"
#include "sonarium/core/rename/BatchRename.h"

#include <functional>
#include <string>
#include <vector>

namespace sn
{
enum class DialogKind
{
    MessageBox,
    NewWorkUnit,
    UnloadDirty,
    File,
    ChangedFile,
    Importer,
    BatchRename,
    Progress,
};

struct MessageBoxRequest
{
    HWND owner = nullptr;
    std::wstring caption;
    std::wstring text;
    // MB_ buttons and icon, with the host's own bits as given.
    UINT style = 0;
    // Not empty when the box offers "Don't ask me again": its answer can then be remembered.
    std::wstring dontAskAgainKey;
    std::wstring checkBoxText;
};

struct MessageBoxAnswer
{
    int button = 0;
    // The "Don't ask me again" box was ticked.
    bool dontAskAgain = false;
};

struct NewWorkUnitRequest
{
    PMTreeNode::NodeType type = PMTreeNode::None;
    std::wstring folder;
    std::wstring proposedName;
};

struct NewWorkUnitAnswer
{
    bool ok = false;
    std::wstring name;
};

struct UnloadDirtyRequest
{
    std::vector<std::wstring> paths;
};

struct UnloadDirtyAnswer
{
    UnloadDirtyWorkUnitsDlg::Decision decision = UnloadDirtyWorkUnitsDlg::Decision_Cancel;
};

struct FileRequest
{
    CxFileDialog::FileDialogOperation operation = CxFileDialog::FileDialogOperation_Open;
    std::wstring caption;
    // "Description|*.a;*.b|Other|*.c||"
    std::wstring filter;
    std::wstring defaultExtension;
    std::wstring proposedName;
    // CFileDialog::Flag_ values.
    unsigned long flags = 0;
};

struct FileAnswer
{
    bool ok = false;
    std::vector<std::wstring> paths;
};

// A file another program changed since the project read it, about to be saved over.
struct ChangedFileRequest
{
    std::wstring what; // "the work unit \"Props\"" or "the project file"
    std::wstring path;
};

struct ChangedFileAnswer
{
    enum Choice
    {
        Overwrite,  // save this project's version over it
        KeepTheirs, // leave the file as it is; the changes here stay unsaved
        Reload,     // leave the file, and read the work unit again from it
    };
    // A question closed without choosing keeps the other program's file.
    Choice choice = KeepTheirs;
};

// The audio-file importer: what each chosen file would become, and the user's choices.
struct ImporterRow
{
    std::wstring file;
    std::wstring details; // format, channels, rate and length, or what is wrong with the file
    bool usable = false;
    std::wstring becomes; // "new Sound SFX \"Rain\"", or why the file is left out
};

struct ImporterRequest
{
    std::wstring destination; // the path of the object the files go into
    std::wstring problem;     // why nothing can be imported, or empty
    std::vector<std::wstring> languages;
    bool voice = false;
    std::wstring language;
    // The rows for a choice of sound kind and language; asked again as the user changes them.
    std::function<std::vector<ImporterRow>(bool voice, const std::wstring& language)> describe;
};

struct ImporterAnswer
{
    bool ok = false;
    bool voice = false;
    std::wstring language; // one of the request's languages, for voices
};

struct BatchRenameRequest
{
    std::vector<std::wstring> objects; // the paths of the objects to rename
    // The new names under a rule, checked; asked again as the user edits the rule.
    std::function<std::vector<rename::BatchRenameRow>(const rename::BatchRenameRule&)> preview;
};

struct BatchRenameAnswer
{
    bool ok = false;
    rename::BatchRenameRule rule;
};

// A long operation: a bar that moves step by step, with Cancel.
struct ProgressRequest
{
    std::wstring caption;
    std::wstring text;
    size_t steps = 0;
};

// A script's Cancel: pressed when `cancelAt` steps are done.
struct ProgressAnswer
{
    size_t cancelAt = 0;
};

class IDialogService
{
public:
    virtual ~IDialogService() = default;

    virtual MessageBoxAnswer ShowMessageBox(const MessageBoxRequest& request) = 0;
    virtual NewWorkUnitAnswer ShowNewWorkUnit(const NewWorkUnitRequest& request) = 0;
    virtual UnloadDirtyAnswer ShowUnloadDirty(const UnloadDirtyRequest& request) = 0;
    virtual FileAnswer ShowFileDialog(const FileRequest& request) = 0;
    virtual ChangedFileAnswer ShowChangedFile(const ChangedFileRequest& request) = 0;
    virtual ImporterAnswer ShowImporter(const ImporterRequest& request) = 0;
    virtual BatchRenameAnswer ShowBatchRename(const BatchRenameRequest& request) = 0;
    // A progress dialog stays open from Begin to End; Step says that `done` steps are over and
    // which one begins, and answers false once the user has pressed Cancel. End closes it and
    // shows the problems met on the way, if any.
    virtual void BeginProgress(const ProgressRequest& request) = 0;
    virtual bool StepProgress(size_t done, const std::wstring& item) = 0;
    virtual void EndProgress(const std::vector<std::wstring>& problems) = 0;
};

// The service the host's dialogs use now, or null.
IDialogService* CurrentDialogService();
// Makes service the current one (null uninstalls) and returns the one it replaces. The caller
// keeps ownership.
IDialogService* InstallDialogService(IDialogService* service);

// Installs a service for the guard's lifetime, then puts the previous one back.
class ScopedDialogService
{
public:
    explicit ScopedDialogService(IDialogService* service) : m_previous(InstallDialogService(service)) {}
    ~ScopedDialogService() { InstallDialogService(m_previous); }
    ScopedDialogService(const ScopedDialogService&) = delete;
    ScopedDialogService& operator=(const ScopedDialogService&) = delete;

private:
    IDialogService* m_previous;
};
} // namespace sn
