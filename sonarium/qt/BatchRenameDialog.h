#pragma once
// The batch-rename window: find and replace, prefix, suffix and numbering, with every new name
// shown (and checked) as the rule is typed.

#include "sonarium/ui/dialogs/DialogService.h"

#include <QDialog>

class QCheckBox;
class QLineEdit;
class QPushButton;
class QSpinBox;
class QTableWidget;

namespace sn::qt
{
class BatchRenameDialog : public QDialog
{
    Q_OBJECT

public:
    BatchRenameDialog(const BatchRenameRequest& request, QWidget* parent);

    rename::BatchRenameRule Rule() const;
    QLineEdit* Find() const { return m_find; }
    QLineEdit* Replace() const { return m_replace; }
    QLineEdit* Prefix() const { return m_prefix; }
    QLineEdit* Suffix() const { return m_suffix; }
    QCheckBox* Numbering() const { return m_numbering; }
    QTableWidget* Preview() const { return m_preview; }
    QPushButton* RenameButton() const { return m_rename; }

private:
    void UpdatePreview();

    const BatchRenameRequest& m_request;
    QLineEdit* m_find = nullptr;
    QLineEdit* m_replace = nullptr;
    QLineEdit* m_prefix = nullptr;
    QLineEdit* m_suffix = nullptr;
    QCheckBox* m_numbering = nullptr;
    QSpinBox* m_start = nullptr;
    QSpinBox* m_digits = nullptr;
    QTableWidget* m_preview = nullptr;
    QPushButton* m_rename = nullptr;
};
} // namespace sn::qt
