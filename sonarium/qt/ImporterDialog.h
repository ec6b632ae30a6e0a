#pragma once
// The audio-file importer's window: the files chosen with what each one is and becomes, the
// destination, sound effects or voices and their language. What a file becomes follows the
// choices as they change.

#include "sonarium/ui/dialogs/DialogService.h"

#include <QDialog>

class QComboBox;
class QLabel;
class QPushButton;
class QRadioButton;
class QTableWidget;

namespace sn::qt
{
class ImporterDialog : public QDialog
{
    Q_OBJECT

public:
    ImporterDialog(const ImporterRequest& request, QWidget* parent);

    ImporterAnswer Answer() const;
    QTableWidget* Files() const { return m_files; }
    QRadioButton* VoiceChoice() const { return m_voice; }
    QComboBox* LanguageChoice() const { return m_language; }
    QPushButton* ImportButton() const { return m_import; }

private:
    void Describe();

    const ImporterRequest& m_request;
    QTableWidget* m_files = nullptr;
    QRadioButton* m_sfx = nullptr;
    QRadioButton* m_voice = nullptr;
    QComboBox* m_language = nullptr;
    QPushButton* m_import = nullptr;
};
} // namespace sn::qt
