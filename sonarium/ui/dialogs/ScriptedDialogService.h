#pragma once
// The dialog service of tests and headless runs. Answers are queued in the order the dialogs
// are expected; each dialog takes the next answer, which must be of its kind and valid for it.
// Every request is recorded as one line of text. A dialog that finds no fitting answer is
// recorded as unanswered (the line says why) and answered as if the user had cancelled it:
// the caller goes on, and the script or test sees the fault in the record.
//
// Record lines, one per dialog, strings quoted with \" \\ \r \n \t escaped:
//   message caption="..." text="..." style=0x00000021 [dont-ask-again="Key"] -> OK [ticked]
//   new-work-unit type=3 "Work Unit" folder="..." name="..." -> OK name="..." | -> Cancel
//   unload-dirty paths=["...", "..."] -> Save | Cancel | Discard
//   file open|save|select-folder caption="..." filter="..." extension="..." name="..." flags=0x6
//        -> OK paths=["..."] | -> Cancel
//   changed-file what="..." path="..." -> Overwrite | KeepTheirs | Reload
//   importer destination="..." -> Import sfx | Import voice "Language" | Cancel
//     "file" details -> what it becomes            (one line per file, for the answer's choices)
//   batch-rename objects=N -> Rename find="..." replace="..." prefix="..." suffix="..." [number=S digits=D] | Cancel
//     "old name" -> "new name" [(kept: why)]        (one line per object)
//   progress caption="..." steps=N -> done | cancelled after K
//     problem: ...                                (one line per problem)
//   any of them: -> UNANSWERED (<reason>), Cancel (a changed file: KeepTheirs)
// A progress dialog asks for no answer: it takes a queued progress answer (its Cancel) only when
// that is the next one.

#include "sonarium/ui/dialogs/DialogService.h"

#include <deque>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace sn
{
// Text in double quotes with \" \\ \r \n \t escaped, as the record lines show strings.
std::wstring QuotedText(const std::wstring& text);

// One scripted answer; the alternative's index is its DialogKind.
using DialogAnswer = std::variant<MessageBoxAnswer, NewWorkUnitAnswer, UnloadDirtyAnswer, FileAnswer, ChangedFileAnswer,
                                  ImporterAnswer, BatchRenameAnswer, ProgressAnswer>;

struct DialogRecord
{
    DialogKind kind = DialogKind::MessageBox;
    // The caption of a message box or file dialog; empty for the others.
    std::wstring caption;
    // The message of a message box; empty for the others.
    std::wstring text;
    UINT style = 0;
    bool answered = false;
    // The whole line, as printed.
    std::wstring line;
};

class ScriptedDialogService : public IDialogService
{
public:
    void Queue(DialogAnswer answer) { m_answers.push_back(std::move(answer)); }
    void AnswerMessageBox(int button, bool dontAskAgain = false);
    void AnswerNewWorkUnit(std::wstring name);
    void CancelNewWorkUnit();
    void AnswerUnloadDirty(UnloadDirtyWorkUnitsDlg::Decision decision);
    void AnswerFile(std::vector<std::wstring> paths);
    void CancelFile();
    void AnswerChangedFile(ChangedFileAnswer::Choice choice);
    void AnswerImporter(bool voice, std::wstring language = {});
    void CancelImporter();
    void AnswerBatchRename(rename::BatchRenameRule rule);
    void CancelBatchRename();
    // The next progress dialog is cancelled once `steps` steps are done.
    void CancelProgressAt(size_t steps);

    MessageBoxAnswer ShowMessageBox(const MessageBoxRequest& request) override;
    NewWorkUnitAnswer ShowNewWorkUnit(const NewWorkUnitRequest& request) override;
    UnloadDirtyAnswer ShowUnloadDirty(const UnloadDirtyRequest& request) override;
    FileAnswer ShowFileDialog(const FileRequest& request) override;
    ChangedFileAnswer ShowChangedFile(const ChangedFileRequest& request) override;
    ImporterAnswer ShowImporter(const ImporterRequest& request) override;
    BatchRenameAnswer ShowBatchRename(const BatchRenameRequest& request) override;
    void BeginProgress(const ProgressRequest& request) override;
    bool StepProgress(size_t done, const std::wstring& item) override;
    void EndProgress(const std::vector<std::wstring>& problems) override;

    const std::vector<DialogRecord>& Records() const { return m_records; }
    size_t UnansweredCount() const;
    // Answers queued but not yet taken by a dialog.
    size_t PendingAnswers() const { return m_answers.size(); }
    // Every record line, each ended by a newline.
    std::wstring Transcript() const;
    // Forgets the records and the queued answers.
    void Clear();
    // Forgets the records only: the answers queued are still waiting for their dialogs.
    void ClearRecords() { m_records.clear(); }

private:
    // Takes the next answer when it is of the wanted kind; otherwise records the dialog as
    // unanswered, says why, and answers nothing.
    template <typename Answer>
    std::optional<Answer> Take(const DialogRecord& record, const std::wstring& request);
    void Record(DialogRecord record, const std::wstring& request, const std::wstring& answer);
    void RecordUnanswered(DialogRecord record, const std::wstring& request, const std::wstring& reason);

    struct OpenProgress
    {
        ProgressRequest request;
        std::optional<size_t> cancelAt;
        size_t done = 0;
        bool cancelled = false;
    };

    std::deque<DialogAnswer> m_answers;
    std::vector<DialogRecord> m_records;
    std::optional<OpenProgress> m_progress;
};
} // namespace sn
