#include "sonarium/qt/PreferencesDialog.h"

#include "host/UserPreferences.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QVBoxLayout>

namespace sn::qt
{
namespace
{
constexpr const wchar_t* k_section = L"Preferences";
} // namespace

PreferencesDialog::PreferencesDialog(IUserPreferences& store, QWidget* parent)
    : QDialog(parent), m_store(store)
{
    setWindowTitle(tr("Preferences"));
    auto* layout = new QVBoxLayout(this);
    auto addGroup =
        [&](QString const& title, std::initializer_list<std::tuple<const wchar_t*, bool, QString>> entries)
    {
        auto* group = new QGroupBox(title, this);
        auto* inner = new QVBoxLayout(group);
        for (auto const& [key, defaultValue, text] : entries)
        {
            auto* box = new QCheckBox(text, group);
            box->setChecked(m_store.GetIntValue(k_section, key, defaultValue ? 1 : 0) != 0);
            inner->addWidget(box);
            m_choices.push_back({key, defaultValue, box});
        }
        layout->addWidget(group);
    };
    // The defaults are the ones the host's readers assume when a key is absent.
    addGroup(tr("Explorer"), {{L"InspectOnSingleClick", true, tr("Inspect on single click")}});
    addGroup(tr("Event naming"),
             {{L"UseActionNameForEvent", true, tr("Name new events after their action")},
              {L"EventActionNamePrefix", false, tr("Prefix event names with the action's name")},
              {L"ModifyEventNameCase", false, tr("Change the case of event names")},
              {L"EventNameCaseAllLower", false, tr("Event names in lower case")}});
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
}

void PreferencesDialog::accept()
{
    for (Choice const& choice : m_choices)
    {
        const long long value = choice.box->isChecked() ? 1 : 0;
        if (m_store.GetIntValue(k_section, choice.key, choice.defaultValue ? 1 : 0) != value)
            m_store.SetIntValue(k_section, choice.key, value);
    }
    QDialog::accept();
}
} // namespace sn::qt
