#pragma once
// An explorer pane on screen: the view's object toolbar as tool buttons, the search field and
// its results, the tree below. The portable view is kept the size of the widget.

#include "sonarium/app/session/AppSession.h"
#include "sonarium/app/session/PaneFind.h"

#include <QWidget>

#include <memory>
#include <vector>

namespace sn::qt
{
class FindBar;
class QtWindowSystemDriver;
class ToolbarButton;
class TreeViewWidget;

class PaneWidget : public QWidget
{
    Q_OBJECT

public:
    PaneWidget(Pane const& pane, AppSession& session, QtWindowSystemDriver& driver, QWidget* parent = nullptr);
    ~PaneWidget() override;

    DlgProjectExplorer* View() const { return m_view; }
    TreeViewWidget* TreeView() const { return m_tree; }
    std::vector<ToolbarButton*> const& Buttons() const { return m_buttons; }
    // The pane holds the keyboard focus: its heading is marked.
    bool HasFocusedTree() const;

Q_SIGNALS:
    // The user asked to close the pane with the button on its title.
    void CloseRequested(PaneWidget* pane);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void SyncButtons();

    DlgProjectExplorer* m_view;
    QWidget* m_heading = nullptr;
    TreeViewWidget* m_tree = nullptr;
    std::vector<ToolbarButton*> m_buttons;
    std::unique_ptr<PaneFind> m_find;
    FindBar* m_findBar = nullptr;
};
} // namespace sn::qt
