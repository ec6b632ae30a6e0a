#include "sonarium/ui/dialogs/ScriptedDialogService.h"

#include "sonarium/ui/dialogs/MessageBoxButtons.h"

#include <algorithm>
#include <cstdio>

namespace sn
{
std::wstring QuotedText(const std::wstring& text)
{
    std::wstring out = L"\"";
    for (wchar_t c : text)
    {
        switch (c)
        {
        case L'"':
            out += L"\\\"";
            break;
        case L'\\':
            out += L"\\\\";
            break;
        case L'\r':
            out += L"\\r";
            break;
        case L'\n':
            out += L"\\n";
            break;
        case L'\t':
            out += L"\\t";
            break;
        default:
            out += c;
        }
    }
    return out + L"\"";
}

namespace
{
std::wstring QuoteList(const std::vector<std::wstring>& items)
{
    std::wstring out = L"[";
    for (size_t i = 0; i < items.size(); ++i)
        out += (i ? L", " : L"") + QuotedText(items[i]);
    return out + L"]";
}

std::wstring Hex(unsigned long value, int digits)
{
    wchar_t buffer[24];
    std::swprintf(buffer, std::size(buffer), L"0x%0*lX", digits, value);
    return buffer;
}

const wchar_t* KindName(size_t kind)
{
    switch (static_cast<DialogKind>(kind))
    {
    case DialogKind::MessageBox:
        return L"message";
    case DialogKind::NewWorkUnit:
        return L"new-work-unit";
    case DialogKind::UnloadDirty:
        return L"unload-dirty";
    case DialogKind::File:
        return L"file";
    case DialogKind::ChangedFile:
        return L"changed-file";
    case DialogKind::Importer:
        return L"importer";
    case DialogKind::BatchRename:
        return L"batch-rename";
    case DialogKind::Progress:
        return L"progress";
    }
    return L"?";
}

const wchar_t* OperationName(CxFileDialog::FileDialogOperation operation)
{
    switch (operation)
    {
    case CxFileDialog::FileDialogOperation_Save:
        return L"save";
    case CxFileDialog::FileDialogOperation_Open:
        return L"open";
    case CxFileDialog::FileDialogOperation_SelectFolder:
        return L"select-folder";
    }
    return L"?";
}

DialogRecord MakeRecord(DialogKind kind, const std::wstring& caption = {}, const std::wstring& text = {},
                        UINT style = 0)
{
    DialogRecord record;
    record.kind = kind;
    record.caption = caption;
    record.text = text;
    record.style = style;
    return record;
}

std::wstring DecisionName(UnloadDirtyWorkUnitsDlg::Decision decision)
{
    switch (decision)
    {
    case UnloadDirtyWorkUnitsDlg::Decision_Save:
        return L"Save";
    case UnloadDirtyWorkUnitsDlg::Decision_Cancel:
        return L"Cancel";
    case UnloadDirtyWorkUnitsDlg::Decision_Discard:
        return L"Discard";
    }
    return L"#" + std::to_wstring(static_cast<int>(decision));
}

std::wstring RuleText(const rename::BatchRenameRule& rule)
{
    std::wstring text = L"find=" + QuotedText(rule.find) + L" replace=" + QuotedText(rule.replace) + L" prefix=" +
                        QuotedText(rule.prefix) + L" suffix=" + QuotedText(rule.suffix);
    if (rule.numbering)
        text += L" number=" + std::to_wstring(rule.start) + L" digits=" + std::to_wstring(rule.digits);
    return text;
}
} // namespace

void ScriptedDialogService::AnswerImporter(bool voice, std::wstring language)
{
    Queue(ImporterAnswer{true, voice, std::move(language)});
}

void ScriptedDialogService::CancelImporter()
{
    Queue(ImporterAnswer{});
}

void ScriptedDialogService::AnswerBatchRename(rename::BatchRenameRule rule)
{
    Queue(BatchRenameAnswer{true, std::move(rule)});
}

void ScriptedDialogService::CancelBatchRename()
{
    Queue(BatchRenameAnswer{});
}

void ScriptedDialogService::CancelProgressAt(size_t steps)
{
    Queue(ProgressAnswer{steps});
}

ImporterAnswer ScriptedDialogService::ShowImporter(const ImporterRequest& request)
{
    std::wstring line = L"importer destination=" + QuotedText(request.destination);
    if (!request.problem.empty())
        line += L" problem=" + QuotedText(request.problem);
    const DialogRecord record = MakeRecord(DialogKind::Importer, L"Import Audio Files", request.problem);
    const std::optional<ImporterAnswer> taken = Take<ImporterAnswer>(record, line);
    if (!taken)
        return ImporterAnswer{};
    const ImporterAnswer answer = *taken;
    const auto& languages = request.languages;
    if (answer.ok && answer.voice && std::find(languages.begin(), languages.end(), answer.language) == languages.end())
    {
        RecordUnanswered(record, line, L"the project has no language " + QuotedText(answer.language));
        return ImporterAnswer{};
    }
    std::wstring result = !answer.ok     ? L"Cancel"
                          : answer.voice ? L"Import voice " + QuotedText(answer.language)
                                         : L"Import sfx";
    // The files as the dialog showed them for the choices made.
    if (request.describe)
        for (const ImporterRow& row : request.describe(answer.voice, answer.language))
            result += L"\n  " + QuotedText(row.file) + L" " + row.details + (row.usable ? L" -> " + row.becomes : L"");
    Record(record, line, result);
    return answer;
}

BatchRenameAnswer ScriptedDialogService::ShowBatchRename(const BatchRenameRequest& request)
{
    const std::wstring line = L"batch-rename objects=" + std::to_wstring(request.objects.size());
    const DialogRecord record = MakeRecord(DialogKind::BatchRename, L"Batch Rename");
    const std::optional<BatchRenameAnswer> taken = Take<BatchRenameAnswer>(record, line);
    if (!taken)
        return BatchRenameAnswer{};
    const BatchRenameAnswer answer = *taken;
    std::wstring result = answer.ok ? L"Rename " + RuleText(answer.rule) : L"Cancel";
    if (answer.ok && request.preview)
        for (const rename::BatchRenameRow& row : request.preview(answer.rule))
            result += L"\n  " + QuotedText(row.oldName) + L" -> " + QuotedText(row.newName) +
                      (row.problem.empty() ? L"" : L" (kept: " + row.problem + L")");
    Record(record, line, result);
    return answer;
}

void ScriptedDialogService::BeginProgress(const ProgressRequest& request)
{
    if (m_progress)
        EndProgress({});
    m_progress = OpenProgress{request, std::nullopt, 0, false};
    if (!m_answers.empty())
        if (const auto* cancel = std::get_if<ProgressAnswer>(&m_answers.front()))
        {
            m_progress->cancelAt = cancel->cancelAt;
            m_answers.pop_front();
        }
}

bool ScriptedDialogService::StepProgress(size_t done, const std::wstring&)
{
    if (!m_progress)
        return true;
    m_progress->done = done;
    if (m_progress->cancelAt && done >= *m_progress->cancelAt)
        m_progress->cancelled = true;
    return !m_progress->cancelled;
}

void ScriptedDialogService::EndProgress(const std::vector<std::wstring>& problems)
{
    if (!m_progress)
        return;
    const OpenProgress progress = *m_progress;
    m_progress.reset();
    const std::wstring line = L"progress caption=" + QuotedText(progress.request.caption) + L" steps=" +
                              std::to_wstring(progress.request.steps);
    std::wstring result = progress.cancelled ? L"cancelled after " + std::to_wstring(progress.done) : L"done";
    for (const std::wstring& problem : problems)
        result += L"\n  problem: " + problem;
    Record(MakeRecord(DialogKind::Progress, progress.request.caption, progress.request.text), line, result);
}

void ScriptedDialogService::AnswerMessageBox(int button, bool dontAskAgain)
{
    Queue(MessageBoxAnswer{button, dontAskAgain});
}

void ScriptedDialogService::AnswerNewWorkUnit(std::wstring name)
{
    Queue(NewWorkUnitAnswer{true, std::move(name)});
}

void ScriptedDialogService::CancelNewWorkUnit()
{
    Queue(NewWorkUnitAnswer{false, {}});
}

void ScriptedDialogService::AnswerUnloadDirty(UnloadDirtyWorkUnitsDlg::Decision decision)
{
    Queue(UnloadDirtyAnswer{decision});
}

void ScriptedDialogService::AnswerFile(std::vector<std::wstring> paths)
{
    Queue(FileAnswer{true, std::move(paths)});
}

void ScriptedDialogService::CancelFile()
{
    Queue(FileAnswer{false, {}});
}

void ScriptedDialogService::AnswerChangedFile(ChangedFileAnswer::Choice choice)
{
    Queue(ChangedFileAnswer{choice});
}

template <typename Answer>
std::optional<Answer> ScriptedDialogService::Take(const DialogRecord& record, const std::wstring& request)
{
    if (m_answers.empty())
    {
        RecordUnanswered(record, request, L"no answer queued");
        return std::nullopt;
    }
    const auto* queued = std::get_if<Answer>(&m_answers.front());
    if (!queued)
    {
        RecordUnanswered(record, request,
                         L"the next answer is for a " + std::wstring(KindName(m_answers.front().index())) +
                             L" dialog");
        return std::nullopt;
    }
    Answer answer = *queued;
    m_answers.pop_front();
    return answer;
}

MessageBoxAnswer ScriptedDialogService::ShowMessageBox(const MessageBoxRequest& request)
{
    std::wstring line = L"message caption=" + QuotedText(request.caption) + L" text=" + QuotedText(request.text) +
                        L" style=" + Hex(request.style, 8);
    if (!request.dontAskAgainKey.empty())
        line += L" dont-ask-again=" + QuotedText(request.dontAskAgainKey);
    const DialogRecord record =
        MakeRecord(DialogKind::MessageBox, request.caption, request.text, request.style);

    const std::optional<MessageBoxAnswer> taken = Take<MessageBoxAnswer>(record, line);
    if (!taken)
        return MessageBoxAnswer{MessageBoxButtons::Dismissed(request.style), false};
    const MessageBoxAnswer answer = *taken;
    std::wstring reason;
    if (!MessageBoxButtons::Offers(request.style, answer.button))
        reason = MessageBoxButtons::Name(answer.button) + L" is not a button of this box";
    else if (answer.dontAskAgain && request.dontAskAgainKey.empty())
        reason = L"the box has no \"Don't ask me again\" to tick";
    if (!reason.empty())
    {
        RecordUnanswered(record, line, reason);
        return MessageBoxAnswer{MessageBoxButtons::Dismissed(request.style), false};
    }
    Record(record, line, MessageBoxButtons::Name(answer.button) + (answer.dontAskAgain ? L" ticked" : L""));
    return answer;
}

NewWorkUnitAnswer ScriptedDialogService::ShowNewWorkUnit(const NewWorkUnitRequest& request)
{
    const std::wstring line = L"new-work-unit type=" + std::to_wstring(static_cast<int>(request.type)) +
                              L" " + QuotedText(PMTreeNode::GetNodeTypeName(request.type)) + L" folder=" +
                              QuotedText(request.folder) + L" name=" + QuotedText(request.proposedName);
    const DialogRecord record = MakeRecord(DialogKind::NewWorkUnit);

    const std::optional<NewWorkUnitAnswer> taken = Take<NewWorkUnitAnswer>(record, line);
    if (!taken)
        return NewWorkUnitAnswer{};
    const NewWorkUnitAnswer answer = *taken;
    Record(record, line, answer.ok ? L"OK name=" + QuotedText(answer.name) : L"Cancel");
    return answer;
}

UnloadDirtyAnswer ScriptedDialogService::ShowUnloadDirty(const UnloadDirtyRequest& request)
{
    const std::wstring line = L"unload-dirty paths=" + QuoteList(request.paths);
    const DialogRecord record = MakeRecord(DialogKind::UnloadDirty);

    const std::optional<UnloadDirtyAnswer> taken = Take<UnloadDirtyAnswer>(record, line);
    if (!taken)
        return UnloadDirtyAnswer{};
    const UnloadDirtyAnswer answer = *taken;
    Record(record, line, DecisionName(answer.decision));
    return answer;
}

FileAnswer ScriptedDialogService::ShowFileDialog(const FileRequest& request)
{
    const std::wstring line = L"file " + std::wstring(OperationName(request.operation)) + L" caption=" +
                              QuotedText(request.caption) + L" filter=" + QuotedText(request.filter) + L" extension=" +
                              QuotedText(request.defaultExtension) + L" name=" + QuotedText(request.proposedName) +
                              L" flags=" + Hex(request.flags, 1);
    const DialogRecord record = MakeRecord(DialogKind::File, request.caption);

    const std::optional<FileAnswer> taken = Take<FileAnswer>(record, line);
    if (!taken)
        return FileAnswer{};
    const FileAnswer answer = *taken;
    const bool anyEmpty = std::any_of(answer.paths.begin(), answer.paths.end(),
                                      [](const std::wstring& p) { return p.empty(); });
    std::wstring reason;
    if (answer.ok && (answer.paths.empty() || anyEmpty))
        reason = L"OK needs a path, and no empty one";
    else if (answer.ok && answer.paths.size() > 1 && !(request.flags & CFileDialog::Flag_AllowMultiSelect))
        reason = L"the dialog takes one path, the answer has " + std::to_wstring(answer.paths.size());
    if (!reason.empty())
    {
        RecordUnanswered(record, line, reason);
        return FileAnswer{};
    }
    Record(record, line, answer.ok ? L"OK paths=" + QuoteList(answer.paths) : L"Cancel");
    return answer;
}

ChangedFileAnswer ScriptedDialogService::ShowChangedFile(const ChangedFileRequest& request)
{
    const std::wstring line = L"changed-file what=" + QuotedText(request.what) + L" path=" + QuotedText(request.path);
    const DialogRecord record = MakeRecord(DialogKind::ChangedFile);
    const std::optional<ChangedFileAnswer> taken = Take<ChangedFileAnswer>(record, line);
    if (!taken)
        return ChangedFileAnswer{};
    static const wchar_t* const k_names[] = {L"Overwrite", L"KeepTheirs", L"Reload"};
    Record(record, line, k_names[taken->choice]);
    return *taken;
}

void ScriptedDialogService::Record(DialogRecord record, const std::wstring& request,
                                   const std::wstring& answer)
{
    record.answered = true;
    record.line = request + L" -> " + answer;
    m_records.push_back(std::move(record));
}

void ScriptedDialogService::RecordUnanswered(DialogRecord record, const std::wstring& request,
                                             const std::wstring& reason)
{
    const std::wstring dismissed = record.kind == DialogKind::MessageBox
                                       ? MessageBoxButtons::Name(MessageBoxButtons::Dismissed(record.style))
                                   : record.kind == DialogKind::ChangedFile ? L"KeepTheirs"
                                                                            : L"Cancel";
    record.answered = false;
    record.line = request + L" -> UNANSWERED (" + reason + L"), " + dismissed;
    m_records.push_back(std::move(record));
}

size_t ScriptedDialogService::UnansweredCount() const
{
    return static_cast<size_t>(
        std::count_if(m_records.begin(), m_records.end(), [](const DialogRecord& r) { return !r.answered; }));
}

std::wstring ScriptedDialogService::Transcript() const
{
    std::wstring out;
    for (const DialogRecord& record : m_records)
        out += record.line + L"\n";
    return out;
}

void ScriptedDialogService::Clear()
{
    m_answers.clear();
    m_records.clear();
}
} // namespace sn
