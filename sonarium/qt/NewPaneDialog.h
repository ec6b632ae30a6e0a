#pragma once
// Asks for another explorer pane: its title and the categories it shows.

#include "sonarium/app/session/AppSession.h"

#include <QDialog>

#include <vector>

class QCheckBox;
class QLineEdit;
class QPushButton;

namespace sn::qt
{
class NewPaneDialog : public QDialog
{
    Q_OBJECT

public:
    // `taken`: the titles of the open panes, which a new one may not repeat.
    NewPaneDialog(std::vector<std::wstring> taken, QWidget* parent = nullptr);

    PaneDefinition Definition() const;
    QLineEdit* TitleEdit() const { return m_title; }
    // One box per category, in the order the categories are listed.
    std::vector<QCheckBox*> const& CategoryBoxes() const { return m_boxes; }

private:
    void UpdateOk();

    std::vector<std::wstring> m_taken;
    QLineEdit* m_title = nullptr;
    std::vector<QCheckBox*> m_boxes;
    QPushButton* m_ok = nullptr;
};
} // namespace sn::qt
