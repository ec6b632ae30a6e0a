#pragma once
// The host's dialogs as Qt dialogs, for the desktop run.

#include "sonarium/ui/dialogs/DialogService.h"

#include <QString>

#include <memory>

class QProgressDialog;
class QWidget;

namespace sn::qt
{
// "Sounds|*.wav;*.ogg|All|*.*||" as a QFileDialog filter: "Sounds (*.wav *.ogg);;All (*.*)".
QString FileFilter(std::wstring const& hostFilter);

class QtDialogService : public IDialogService
{
public:
    explicit QtDialogService(QWidget* parent);

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

    ~QtDialogService() override;

private:
    QWidget* m_parent;
    std::unique_ptr<QProgressDialog> m_progress;
    QString m_progressCaption;
};
} // namespace sn::qt
