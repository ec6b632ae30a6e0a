#pragma once
// The user's preferences that the explorer and the event naming follow, stored in the host's
// per-user store as soon as the dialog is accepted.

#include <QDialog>

#include <vector>

class IUserPreferences;
class QCheckBox;

namespace sn::qt
{
class PreferencesDialog : public QDialog
{
    Q_OBJECT

public:
    PreferencesDialog(IUserPreferences& store, QWidget* parent = nullptr);

    void accept() override;

private:
    struct Choice
    {
        const wchar_t* key;
        bool defaultValue;
        QCheckBox* box;
    };

    IUserPreferences& m_store;
    std::vector<Choice> m_choices;
};
} // namespace sn::qt
