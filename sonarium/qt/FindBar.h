#pragma once
// The search field at the top of an explorer pane and the list of what it finds below it: each
// result with its icon, its name with the matched parts marked and the path of its parents.
// Results are fetched as the list scrolls; Enter or a click reveals them in the pane's tree.

#include "sonarium/app/session/PaneFind.h"

#include <QWidget>

class QLabel;
class QLineEdit;
class QListView;

namespace sn::qt
{
class FindResultsModel;
class QtWindowSystemDriver;
class TreeViewWidget;

class FindBar : public QWidget
{
    Q_OBJECT

public:
    FindBar(PaneFind& find, TreeViewWidget& tree, QtWindowSystemDriver& driver, QWidget* parent = nullptr);

    // Ctrl+F: the field takes the keyboard, its text selected for typing over.
    void FocusField();
    // Whether the results list is showing (the field holds a query).
    bool IsShowingResults() const;

Q_SIGNALS:
    void ResultsShown(bool shown);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void OnTextChanged(QString const& text);
    // The project changed: the results follow.
    void OnPumped();
    void ShowCount();
    void RevealSelected();
    void Reveal(std::vector<size_t> const& rows);
    // Escape: the field is emptied and the tree takes the keyboard back.
    void Dismiss();

    PaneFind& m_find;
    TreeViewWidget& m_tree;
    QtWindowSystemDriver& m_driver;
    QLineEdit* m_field;
    QLabel* m_count;
    QListView* m_list;
    FindResultsModel* m_model;
};
} // namespace sn::qt
