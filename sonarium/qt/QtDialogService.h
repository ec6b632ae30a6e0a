#pragma once
// The host's dialogs as Qt dialogs, for the desktop run.

#include "sonarium/ui/dialogs/DialogService.h"

#include <QString>

class QWidget;

namespace sn::qt
{
// "Sounds|*.wav;*.ogg|All|*.*||" as a QFileDialog filter: "Sounds (*.wav *.ogg);;All (*.*)".
QString FileFilter(std::wstring const& hostFilter);

class QtDialogService : public IDialogService
{
public:
    explicit QtDialogService(QWidget* parent) : m_parent(parent) {}

    MessageBoxAnswer ShowMessageBox(const MessageBoxRequest& request) override;
    NewWorkUnitAnswer ShowNewWorkUnit(const NewWorkUnitRequest& request) override;
    UnloadDirtyAnswer ShowUnloadDirty(const UnloadDirtyRequest& request) override;
    FileAnswer ShowFileDialog(const FileRequest& request) override;
    ChangedFileAnswer ShowChangedFile(const ChangedFileRequest& request) override;

private:
    QWidget* m_parent;
};
} // namespace sn::qt
