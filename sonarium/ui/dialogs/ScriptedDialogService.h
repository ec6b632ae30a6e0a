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
//   any of them: -> UNANSWERED (<reason>), Cancel

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
using DialogAnswer = std::variant<MessageBoxAnswer, NewWorkUnitAnswer, UnloadDirtyAnswer, FileAnswer>;

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

    MessageBoxAnswer ShowMessageBox(const MessageBoxRequest& request) override;
    NewWorkUnitAnswer ShowNewWorkUnit(const NewWorkUnitRequest& request) override;
    UnloadDirtyAnswer ShowUnloadDirty(const UnloadDirtyRequest& request) override;
    FileAnswer ShowFileDialog(const FileRequest& request) override;

    const std::vector<DialogRecord>& Records() const { return m_records; }
    size_t UnansweredCount() const;
    // Answers queued but not yet taken by a dialog.
    size_t PendingAnswers() const { return m_answers.size(); }
    // Every record line, each ended by a newline.
    std::wstring Transcript() const;
    // Forgets the records and the queued answers.
    void Clear();

private:
    // Takes the next answer when it is of the wanted kind; otherwise records the dialog as
    // unanswered, says why, and answers nothing.
    template <typename Answer>
    std::optional<Answer> Take(const DialogRecord& record, const std::wstring& request);
    void Record(DialogRecord record, const std::wstring& request, const std::wstring& answer);
    void RecordUnanswered(DialogRecord record, const std::wstring& request, const std::wstring& reason);

    std::deque<DialogAnswer> m_answers;
    std::vector<DialogRecord> m_records;
};
} // namespace sn
