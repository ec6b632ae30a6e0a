#include "sonarium/qt/ImporterDialog.h"

#include "sonarium/qt/QtText.h"
#include "sonarium/qt/ToolTable.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace sn::qt
{
ImporterDialog::ImporterDialog(const ImporterRequest& request, QWidget* parent) : QDialog(parent), m_request(request)
{
    setWindowTitle(tr("Import Audio Files"));
    resize(860, 380);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(tr("Import into: %1").arg(ToQt(request.destination)), this));
    if (!request.problem.empty())
    {
        auto* problem = new QLabel(ToQt(request.problem), this);
        problem->setWordWrap(true);
        problem->setStyleSheet(QStringLiteral("color: #c0392b;"));
        layout->addWidget(problem);
    }

    m_files = NewToolTable({tr("File"), tr("Audio"), tr("Becomes")}, 1, this);
    layout->addWidget(m_files, 1);

    auto* kind = new QHBoxLayout;
    m_sfx = new QRadioButton(tr("Sound effects"), this);
    m_voice = new QRadioButton(tr("Voices, in"), this);
    m_language = new QComboBox(this);
    for (const std::wstring& language : request.languages)
        m_language->addItem(ToQt(language));
    m_language->setCurrentText(ToQt(request.language));
    (request.voice ? m_voice : m_sfx)->setChecked(true);
    kind->addWidget(m_sfx);
    kind->addWidget(m_voice);
    kind->addWidget(m_language);
    kind->addStretch(1);
    layout->addLayout(kind);

    auto* buttons = new QDialogButtonBox(this);
    m_import = buttons->addButton(tr("Import"), QDialogButtonBox::AcceptRole);
    buttons->addButton(QDialogButtonBox::Cancel);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_sfx, &QRadioButton::toggled, this, [this] { Describe(); });
    connect(m_language, &QComboBox::currentTextChanged, this, [this] { Describe(); });
    Describe();
}

void ImporterDialog::Describe()
{
    m_language->setEnabled(m_voice->isChecked() && m_language->count() > 0);
    const ImporterAnswer choices = Answer();
    const std::vector<ImporterRow> rows =
        m_request.describe ? m_request.describe(choices.voice, choices.language) : std::vector<ImporterRow>{};
    m_files->setRowCount(static_cast<int>(rows.size()));
    bool anyUsable = false;
    for (size_t i = 0; i < rows.size(); ++i)
    {
        const ImporterRow& row = rows[i];
        const int r = static_cast<int>(i);
        QTableWidgetItem* file = ToolCell(QFileInfo(ToQt(row.file)).fileName(), !row.usable);
        file->setToolTip(ToQt(row.file));
        m_files->setItem(r, 0, file);
        m_files->setItem(r, 1, ToolCell(ToQt(row.details)));
        // What is wrong with a file is said beside it: the last column says only that it stays out.
        m_files->setItem(r, 2, ToolCell(row.usable ? ToQt(row.becomes) : tr("left out"), !row.usable));
        anyUsable = anyUsable || row.usable;
    }
    m_import->setEnabled(anyUsable && m_request.problem.empty());
}

ImporterAnswer ImporterDialog::Answer() const
{
    ImporterAnswer answer;
    answer.ok = result() == QDialog::Accepted;
    answer.voice = m_voice->isChecked();
    answer.language = FromQt(m_language->currentText());
    return answer;
}
} // namespace sn::qt
