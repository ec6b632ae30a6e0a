#include "sonarium/qt/QtDialogService.h"

#include "host/StringHelp.h"
#include "sonarium/qt/BatchRenameDialog.h"
#include "sonarium/qt/ImporterDialog.h"
#include "sonarium/qt/QtText.h"
#include "sonarium/ui/dialogs/MessageBoxButtons.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QProgressDialog>
#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QStringList>

#include <map>

namespace sn::qt
{
namespace
{
QString Localized(const wchar_t* text)
{
    return ToQt(std::wstring(StringHelp::Localize(text).c_str()));
}

QMessageBox::Icon IconOf(UINT style)
{
    switch (style & 0xF0)
    {
    case MB_ICONERROR:
        return QMessageBox::Critical;
    case MB_ICONQUESTION:
        return QMessageBox::Question;
    case MB_ICONWARNING:
        return QMessageBox::Warning;
    case MB_ICONINFORMATION:
        return QMessageBox::Information;
    default:
        return QMessageBox::NoIcon;
    }
}

QMessageBox::ButtonRole RoleOf(int button)
{
    switch (button)
    {
    case IDOK:
    case IDYES:
    case MessageBoxButtons::IDRETRY:
        return QMessageBox::AcceptRole;
    case IDNO:
        return QMessageBox::NoRole;
    case IDCANCEL:
    case MessageBoxButtons::IDABORT:
        return QMessageBox::RejectRole;
    default:
        return QMessageBox::ActionRole;
    }
}
} // namespace

QString FileFilter(std::wstring const& hostFilter)
{
    const QStringList parts = ToQt(hostFilter).split(QLatin1Char('|'));
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2)
    {
        if (parts[i].isEmpty())
            break;
        QString patterns = parts[i + 1];
        patterns.replace(QLatin1Char(';'), QLatin1Char(' '));
        filters << QStringLiteral("%1 (%2)").arg(parts[i], patterns);
    }
    return filters.join(QStringLiteral(";;"));
}

MessageBoxAnswer QtDialogService::ShowMessageBox(const MessageBoxRequest& request)
{
    QMessageBox box(IconOf(request.style), ToQt(request.caption), ToQt(request.text), QMessageBox::NoButton,
                    m_parent);
    std::map<QAbstractButton*, int> answers;
    const std::vector<int> buttons = MessageBoxButtons::Of(request.style);
    for (size_t i = 0; i < buttons.size(); ++i)
    {
        QPushButton* button = box.addButton(ToQt(MessageBoxButtons::Name(buttons[i])), RoleOf(buttons[i]));
        answers[button] = buttons[i];
        // MB_DEFBUTTON2 and its kin count from the first button in steps of 0x100.
        if (i == ((request.style >> 8) & 0xF))
            box.setDefaultButton(button);
    }
    QCheckBox* dontAsk = nullptr;
    if (!request.dontAskAgainKey.empty())
    {
        dontAsk = new QCheckBox(request.checkBoxText.empty() ? Localized(L"Don't ask me again")
                                                             : ToQt(request.checkBoxText));
        box.setCheckBox(dontAsk);
    }
    box.exec();
    MessageBoxAnswer answer;
    auto chosen = answers.find(box.clickedButton());
    answer.button = chosen != answers.end() ? chosen->second : MessageBoxButtons::Dismissed(request.style);
    answer.dontAskAgain = dontAsk && dontAsk->isChecked();
    return answer;
}

NewWorkUnitAnswer QtDialogService::ShowNewWorkUnit(const NewWorkUnitRequest& request)
{
    QInputDialog dialog(m_parent);
    // The title names what is made (a work unit or a physical folder); the folder it goes in
    // stands above the name, apart from it.
    const QString kind = ToQt(std::wstring(PMTreeNode::GetNodeTypeName(request.type).c_str()));
    dialog.setWindowTitle(Localized(L"New {0}").replace(QStringLiteral("{0}"), kind));
    dialog.setLabelText(request.folder.empty() ? Localized(L"Name:")
                                               : Localized(L"In:") + QLatin1Char(' ') + ToQt(request.folder) +
                                                     QStringLiteral("\n\n") + Localized(L"Name:"));
    dialog.setTextValue(ToQt(request.proposedName));
    NewWorkUnitAnswer answer;
    answer.ok = dialog.exec() == QDialog::Accepted;
    if (answer.ok)
        answer.name = FromQt(dialog.textValue());
    return answer;
}

UnloadDirtyAnswer QtDialogService::ShowUnloadDirty(const UnloadDirtyRequest& request)
{
    QStringList paths;
    for (std::wstring const& path : request.paths)
        paths << ToQt(path);
    QMessageBox box(QMessageBox::Warning, Localized(L"Unsaved Changes"),
                    Localized(L"These work units have unsaved changes:"), QMessageBox::NoButton, m_parent);
    box.setInformativeText(paths.join(QLatin1Char('\n')));
    QPushButton* save = box.addButton(QMessageBox::Save);
    QPushButton* discard = box.addButton(QMessageBox::Discard);
    box.addButton(QMessageBox::Cancel);
    box.setDefaultButton(save);
    box.exec();
    UnloadDirtyAnswer answer;
    if (box.clickedButton() == save)
        answer.decision = UnloadDirtyWorkUnitsDlg::Decision_Save;
    else if (box.clickedButton() == discard)
        answer.decision = UnloadDirtyWorkUnitsDlg::Decision_Discard;
    return answer;
}

ChangedFileAnswer QtDialogService::ShowChangedFile(const ChangedFileRequest& request)
{
    QMessageBox box(QMessageBox::Warning, Localized(L"File Changed on Disk"),
                    Localized(L"Another program changed %1 since it was read.")
                        .arg(ToQt(request.what)),
                    QMessageBox::NoButton, m_parent);
    box.setInformativeText(ToQt(request.path) + QStringLiteral("\n\n") +
                           Localized(L"Overwrite it with the version here, keep theirs (the changes here "
                                     L"stay unsaved), or reload it (the changes here are dropped)?"));
    QPushButton* overwrite = box.addButton(Localized(L"Overwrite"), QMessageBox::DestructiveRole);
    QPushButton* keep = box.addButton(Localized(L"Keep Theirs"), QMessageBox::RejectRole);
    QPushButton* reload = box.addButton(Localized(L"Reload"), QMessageBox::AcceptRole);
    box.setDefaultButton(keep);
    box.setEscapeButton(keep);
    box.exec();
    ChangedFileAnswer answer;
    if (box.clickedButton() == overwrite)
        answer.choice = ChangedFileAnswer::Overwrite;
    else if (box.clickedButton() == reload)
        answer.choice = ChangedFileAnswer::Reload;
    return answer;
}

FileAnswer QtDialogService::ShowFileDialog(const FileRequest& request)
{
    QFileDialog dialog(m_parent, ToQt(request.caption));
    dialog.setNameFilter(FileFilter(request.filter));
    dialog.setDefaultSuffix(ToQt(request.defaultExtension));
    if (!request.proposedName.empty())
        dialog.selectFile(ToQt(request.proposedName));
    switch (request.operation)
    {
    case CxFileDialog::FileDialogOperation_Save:
        dialog.setAcceptMode(QFileDialog::AcceptSave);
        dialog.setFileMode(QFileDialog::AnyFile);
        break;
    case CxFileDialog::FileDialogOperation_SelectFolder:
        dialog.setFileMode(QFileDialog::Directory);
        dialog.setOption(QFileDialog::ShowDirsOnly);
        break;
    default:
        dialog.setFileMode((request.flags & CFileDialog::Flag_AllowMultiSelect) ? QFileDialog::ExistingFiles
                                                                                : QFileDialog::ExistingFile);
        break;
    }
    FileAnswer answer;
    answer.ok = dialog.exec() == QDialog::Accepted;
    if (answer.ok)
        for (QString const& path : dialog.selectedFiles())
            answer.paths.push_back(FromQt(path));
    answer.ok = answer.ok && !answer.paths.empty();
    return answer;
}

QtDialogService::QtDialogService(QWidget* parent) : m_parent(parent)
{
}

QtDialogService::~QtDialogService() = default;

ImporterAnswer QtDialogService::ShowImporter(const ImporterRequest& request)
{
    ImporterDialog dialog(request, m_parent);
    dialog.exec();
    return dialog.Answer();
}

BatchRenameAnswer QtDialogService::ShowBatchRename(const BatchRenameRequest& request)
{
    BatchRenameDialog dialog(request, m_parent);
    BatchRenameAnswer answer;
    answer.ok = dialog.exec() == QDialog::Accepted;
    answer.rule = dialog.Rule();
    return answer;
}

void QtDialogService::BeginProgress(const ProgressRequest& request)
{
    m_progressCaption = ToQt(request.caption);
    m_progress = std::make_unique<QProgressDialog>(ToQt(request.text), Localized(L"Cancel"), 0,
                                                   static_cast<int>(request.steps), m_parent);
    m_progress->setWindowTitle(m_progressCaption);
    m_progress->setWindowModality(Qt::WindowModal);
    // A short operation finishes before the dialog would show.
    m_progress->setMinimumDuration(500);
    m_progress->setValue(0);
}

bool QtDialogService::StepProgress(size_t done, const std::wstring& item)
{
    if (!m_progress)
        return true;
    m_progress->setLabelText(ToQt(item));
    m_progress->setValue(static_cast<int>(done));
    // Cancel must be pressable while the work goes on.
    QCoreApplication::processEvents();
    return !m_progress->wasCanceled();
}

void QtDialogService::EndProgress(const std::vector<std::wstring>& problems)
{
    if (m_progress)
    {
        m_progress->setValue(m_progress->maximum());
        m_progress.reset();
    }
    if (problems.empty())
        return;
    QStringList lines;
    for (const std::wstring& problem : problems)
        lines << ToQt(problem);
    QMessageBox box(QMessageBox::Warning, m_progressCaption, Localized(L"Some steps could not be done:"),
                    QMessageBox::Ok, m_parent);
    box.setInformativeText(lines.join(QLatin1Char('\n')));
    box.exec();
}
} // namespace sn::qt
