#include "sonarium/qt/BatchRenameDialog.h"

#include "sonarium/qt/QtText.h"
#include "sonarium/qt/ToolTable.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTableWidget>
#include <QVBoxLayout>

namespace sn::qt
{
BatchRenameDialog::BatchRenameDialog(const BatchRenameRequest& request, QWidget* parent)
    : QDialog(parent), m_request(request)
{
    setWindowTitle(tr("Batch Rename"));
    resize(640, 480);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(tr("Rename %n object(s):", nullptr, static_cast<int>(request.objects.size())), this));

    auto* form = new QFormLayout;
    m_find = new QLineEdit(this);
    m_replace = new QLineEdit(this);
    m_prefix = new QLineEdit(this);
    m_suffix = new QLineEdit(this);
    form->addRow(tr("Find:"), m_find);
    form->addRow(tr("Replace with:"), m_replace);
    form->addRow(tr("Prefix:"), m_prefix);
    form->addRow(tr("Suffix:"), m_suffix);
    auto* numbers = new QHBoxLayout;
    m_numbering = new QCheckBox(tr("Number from"), this);
    m_start = new QSpinBox(this);
    m_start->setRange(0, 99999);
    m_start->setValue(1);
    m_digits = new QSpinBox(this);
    m_digits->setRange(1, 9);
    m_digits->setValue(2);
    numbers->addWidget(m_numbering);
    numbers->addWidget(m_start);
    numbers->addWidget(new QLabel(tr("with digits:"), this));
    numbers->addWidget(m_digits);
    numbers->addStretch(1);
    form->addRow(QString(), numbers);
    layout->addLayout(form);

    m_preview = NewToolTable({tr("Name"), tr("New name"), tr("Note")}, 2, this);
    layout->addWidget(m_preview, 1);

    auto* buttons = new QDialogButtonBox(this);
    m_rename = buttons->addButton(tr("Rename"), QDialogButtonBox::AcceptRole);
    buttons->addButton(QDialogButtonBox::Cancel);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    for (QLineEdit* edit : {m_find, m_replace, m_prefix, m_suffix})
        connect(edit, &QLineEdit::textChanged, this, [this] { UpdatePreview(); });
    connect(m_numbering, &QCheckBox::toggled, this, [this] { UpdatePreview(); });
    connect(m_start, &QSpinBox::valueChanged, this, [this] { UpdatePreview(); });
    connect(m_digits, &QSpinBox::valueChanged, this, [this] { UpdatePreview(); });
    UpdatePreview();
}

rename::BatchRenameRule BatchRenameDialog::Rule() const
{
    rename::BatchRenameRule rule;
    rule.find = FromQt(m_find->text());
    rule.replace = FromQt(m_replace->text());
    rule.prefix = FromQt(m_prefix->text());
    rule.suffix = FromQt(m_suffix->text());
    rule.numbering = m_numbering->isChecked();
    rule.start = m_start->value();
    rule.digits = m_digits->value();
    return rule;
}

void BatchRenameDialog::UpdatePreview()
{
    m_start->setEnabled(m_numbering->isChecked());
    m_digits->setEnabled(m_numbering->isChecked());
    const std::vector<rename::BatchRenameRow> rows =
        m_request.preview ? m_request.preview(Rule()) : std::vector<rename::BatchRenameRow>{};
    m_preview->setRowCount(static_cast<int>(rows.size()));
    bool anyChange = false;
    for (size_t i = 0; i < rows.size(); ++i)
    {
        const rename::BatchRenameRow& row = rows[i];
        const int r = static_cast<int>(i);
        m_preview->setItem(r, 0, ToolCell(ToQt(row.oldName)));
        m_preview->setItem(r, 1, ToolCell(ToQt(row.newName), !row.problem.empty()));
        m_preview->setItem(r, 2, ToolCell(ToQt(row.problem), true));
        anyChange = anyChange || (row.problem.empty() && row.newName != row.oldName);
    }
    m_rename->setEnabled(anyChange);
}
} // namespace sn::qt
