#include "sonarium/qt/NewPaneDialog.h"

#include "sonarium/core/model/NodeRules.h"
#include "sonarium/qt/QtText.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace sn::qt
{
namespace
{
constexpr int k_columns = 2;

std::wstring FreeTitle(std::vector<std::wstring> const& taken)
{
    for (int number = static_cast<int>(taken.size()) + 1;; ++number)
    {
        std::wstring title = L"Explorer " + std::to_wstring(number);
        if (std::find(taken.begin(), taken.end(), title) == taken.end())
            return title;
    }
}
} // namespace

NewPaneDialog::NewPaneDialog(std::vector<std::wstring> taken, QWidget* parent)
    : QDialog(parent), m_taken(std::move(taken))
{
    setWindowTitle(tr("New Explorer Pane"));
    auto* layout = new QVBoxLayout(this);
    auto* form = new QFormLayout;
    m_title = new QLineEdit(ToQt(FreeTitle(m_taken)), this);
    form->addRow(tr("&Title:"), m_title);
    layout->addLayout(form);

    auto* group = new QGroupBox(tr("Categories shown"), this);
    auto* grid = new QGridLayout(group);
    const auto& categories = rules::AllCategories();
    for (size_t i = 0; i < categories.size(); ++i)
    {
        auto* box = new QCheckBox(ToQt(rules::CategoryName(categories[i])), group);
        grid->addWidget(box, static_cast<int>(i) / k_columns, static_cast<int>(i) % k_columns);
        connect(box, &QCheckBox::toggled, this, &NewPaneDialog::UpdateOk);
        m_boxes.push_back(box);
    }
    layout->addWidget(group);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    m_ok = buttons->button(QDialogButtonBox::Ok);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_title, &QLineEdit::textChanged, this, &NewPaneDialog::UpdateOk);
    layout->addWidget(buttons);
    UpdateOk();
}

PaneDefinition NewPaneDialog::Definition() const
{
    PaneDefinition definition{FromQt(m_title->text().trimmed()), {}};
    const auto& categories = rules::AllCategories();
    for (size_t i = 0; i < m_boxes.size(); ++i)
        if (m_boxes[i]->isChecked())
            definition.categories.insert(categories[i]);
    return definition;
}

void NewPaneDialog::UpdateOk()
{
    // A pane needs a title of its own and something to show.
    const PaneDefinition definition = Definition();
    const bool titled = !definition.name.empty() &&
                        std::find(m_taken.begin(), m_taken.end(), definition.name) == m_taken.end();
    m_ok->setEnabled(titled && !definition.categories.empty());
}
} // namespace sn::qt
