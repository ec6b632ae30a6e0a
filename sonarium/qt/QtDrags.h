#pragma once
// Drag and drop between the window system and Qt. A tree that starts a drag runs it as a QDrag
// (so it may end over any pane); a tree view receiving a Qt drag feeds the window system's drag
// loop, so the drop target registered on the tree sees files from a file manager as a CF_HDROP
// list and objects dragged from a pane as the dragging tree's data source, with MK_ key state.

#include "platform/Ole.h"
#include "sonarium/app/session/Drops.h"

#include <QPointer>

#include <memory>
#include <optional>

class QDragMoveEvent;
class QDropEvent;
class QMimeData;
class QWidget;

namespace sn::qt
{
// The mime type of a drag of project objects inside the application.
extern const char* const k_objectDragMime;

Qt::DropActions ToDropActions(DROPEFFECT effects);
DROPEFFECT ToDropEffects(Qt::DropActions actions);
// The action a drop performed, from the effect the target answered (copy before move before link).
Qt::DropAction ToDropAction(DROPEFFECT effect);

// Runs the drags a tree starts as Qt drags started from a widget of the application.
class QtDragDriver : public IDragDriver
{
public:
    explicit QtDragDriver(QWidget* dragSource) : m_dragSource(dragSource) {}

    DROPEFFECT RunDrag(COleDataSource& source, DROPEFFECT allowed) override;

    // The data source of the drag running now inside the application, or null.
    static COleDataSource* Current();
    // What the drop target of the running drag performed.
    static void RecordDrop(DROPEFFECT effect);

private:
    QPointer<QWidget> m_dragSource;
};

// One window's side of the drags that pass over it.
class DropSite
{
public:
    explicit DropSite(CWnd& window) : m_window(window) {}
    ~DropSite();
    DropSite(DropSite const&) = delete;
    DropSite& operator=(DropSite const&) = delete;

    // Whether the data can be offered to the window: local files, or the application's objects.
    static bool Offers(QMimeData const* mime);

    // Enter and move both: the drag is entered on the first move and followed after.
    void Move(QDragMoveEvent& event);
    void Leave();
    void Drop(QDropEvent& event);

private:
    bool Begin(QDropEvent& event);
    // Begins the visit if needed and moves the drag to the event's point; nothing when the
    // data cannot be offered.
    std::optional<DROPEFFECT> Follow(QDropEvent& event);
    void End();

    CWnd& m_window;
    DataSourceRef m_files; // a file manager's files, for the visit
    std::unique_ptr<DragSession> m_session;
};
} // namespace sn::qt
