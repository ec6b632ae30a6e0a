#include "sonarium/qt/PaneWidget.h"

#include "host/ButtonWithTooltip.h"
#include "sonarium/qt/FindBar.h"
#include "sonarium/qt/QtCanvas.h"
#include "sonarium/qt/QtText.h"
#include "sonarium/qt/QtWindowSystemDriver.h"
#include "sonarium/qt/ToolbarButton.h"
#include "sonarium/qt/TreeViewWidget.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QShortcut>
#include <QToolButton>
#include <QVBoxLayout>

namespace sn::qt
{
namespace
{
ObjectToolbar* FindToolbar(CWnd& view)
{
    for (CWnd* child : view.GetChildren())
        if (auto* toolbar = dynamic_cast<ObjectToolbar*>(child))
            return toolbar;
    return nullptr;
}
} // namespace

PaneWidget::PaneWidget(Pane const& pane, AppSession& session, QtWindowSystemDriver& driver, QWidget* parent)
    : QWidget(parent), m_view(pane.view), m_find(std::make_unique<PaneFind>(session, pane.view, pane.categories))
{
    setObjectName(ToQt(pane.name));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);

    m_heading = new QWidget(this);
    m_heading->setObjectName(QStringLiteral("paneHeading"));
    auto* heading = new QHBoxLayout(m_heading);
    heading->setContentsMargins(0, 0, 4, 0);
    auto* title = new QLabel(ToQt(pane.name), this);
    title->setContentsMargins(6, 4, 6, 0);
    QFont bold = title->font();
    bold.setBold(true);
    title->setFont(bold);
    heading->addWidget(title, 1);
    auto* close = new QToolButton(this);
    close->setObjectName(QStringLiteral("closePane"));
    close->setText(QStringLiteral("\u00D7"));
    close->setToolTip(tr("Close Pane"));
    close->setAutoRaise(true);
    // Tab goes from tree to tree, never to the button that would close one.
    close->setFocusPolicy(Qt::NoFocus);
    connect(close, &QToolButton::clicked, this, [this] { Q_EMIT CloseRequested(this); });
    heading->addWidget(close);
    layout->addWidget(m_heading);

    auto* bar = new QHBoxLayout;
    bar->setContentsMargins(4, 0, 4, 0);
    bar->setSpacing(1);
    if (ObjectToolbar* toolbar = FindToolbar(*m_view))
        for (CButtonWithTooltip* button : toolbar->Buttons())
        {
            auto* widget = new ToolbarButton(*button, driver, this);
            bar->addWidget(widget);
            m_buttons.push_back(widget);
        }
    bar->addStretch(1);
    layout->addLayout(bar);

    m_tree = new TreeViewWidget(m_view->GetTreeCtrl(), driver, this);
    m_findBar = new FindBar(*m_find, *m_tree, driver, this);
    layout->addWidget(m_findBar);
    layout->addWidget(m_tree, 1);
    // While it shows results, the list takes two fifths of the pane.
    connect(m_findBar, &FindBar::ResultsShown, this, [layout, this](bool shown)
            { layout->setStretchFactor(m_findBar, shown ? 2 : 0), layout->setStretchFactor(m_tree, shown ? 3 : 1); });
    // Ctrl+F goes to the field of the pane that holds the keyboard.
    auto* find = new QShortcut(QKeySequence::Find, this, nullptr, nullptr, Qt::WidgetWithChildrenShortcut);
    connect(find, &QShortcut::activated, m_findBar, &FindBar::FocusField);
    connect(&driver, &QtWindowSystemDriver::Pumped, this, &PaneWidget::SyncButtons);
}

PaneWidget::~PaneWidget()
{
    // The bar reads the find state: it goes first.
    delete m_findBar;
}

void PaneWidget::SyncButtons()
{
    for (ToolbarButton* button : m_buttons)
        button->Sync();
}

void PaneWidget::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    m_view->MoveWindow(0, 0, width(), height());
    m_tree->FitControlToViewport();
    m_tree->SyncFromTree();
}

bool PaneWidget::HasFocusedTree() const
{
    QWidget* focus = QApplication::focusWidget();
    return focus && (focus == m_tree || m_tree->isAncestorOf(focus));
}

void PaneWidget::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    QtCanvas canvas(painter);
    // The view paints its own background in the loaded theme (and picks up a new theme there).
    if (!m_view->SendMessage(WM_ERASEBKGND, reinterpret_cast<WPARAM>(canvas.Hdc()), 0))
        painter.fillRect(rect(), ThemeColor("Window_Background"));
    if (HasFocusedTree())
    {
        // A bar under the heading of the pane the keys go to.
        const QRect heading = m_heading->geometry();
        painter.fillRect(QRect(heading.left(), heading.bottom() - 1, heading.width(), 3),
                         ThemeColor("Pane_FocusAccent"));
    }
}
} // namespace sn::qt
