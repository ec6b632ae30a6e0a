#include "sonarium/qt/QtDrags.h"

#include "sonarium/qt/QtText.h"
#include "sonarium/qt/TreeInput.h"

#include <QDrag>
#include <QDropEvent>
#include <QMimeData>
#include <QUrl>
#include <QWidget>

namespace sn::qt
{
const char* const k_objectDragMime = "application/x-sonarium-objects";

namespace
{
COleDataSource* g_current = nullptr;
DROPEFFECT g_performed = DROPEFFECT_NONE;

constexpr std::pair<DROPEFFECT, Qt::DropAction> k_actions[] = {
    {DROPEFFECT_COPY, Qt::CopyAction},
    {DROPEFFECT_MOVE, Qt::MoveAction},
    {DROPEFFECT_LINK, Qt::LinkAction},
};

std::vector<std::wstring> LocalFiles(QMimeData const* mime)
{
    std::vector<std::wstring> files;
    for (QUrl const& url : mime->urls())
        if (url.isLocalFile())
            files.push_back(FromQt(url.toLocalFile()));
    return files;
}
} // namespace

Qt::DropActions ToDropActions(DROPEFFECT effects)
{
    Qt::DropActions actions;
    for (auto [effect, action] : k_actions)
        if (effects & effect)
            actions |= action;
    return actions;
}

DROPEFFECT ToDropEffects(Qt::DropActions actions)
{
    DROPEFFECT effects = DROPEFFECT_NONE;
    for (auto [effect, action] : k_actions)
        if (actions & action)
            effects |= effect;
    return effects;
}

Qt::DropAction ToDropAction(DROPEFFECT effect)
{
    for (auto [bit, action] : k_actions)
        if (effect & bit)
            return action;
    return Qt::IgnoreAction;
}

DROPEFFECT QtDragDriver::RunDrag(COleDataSource& source, DROPEFFECT allowed)
{
    if (!m_dragSource)
        return DROPEFFECT_NONE;
    auto* mime = new QMimeData;
    mime->setData(QString::fromLatin1(k_objectDragMime), QByteArray());
    auto* drag = new QDrag(m_dragSource);
    drag->setMimeData(mime);
    g_current = &source;
    g_performed = DROPEFFECT_NONE;
    drag->exec(ToDropActions(allowed));
    g_current = nullptr;
    // The drop target knows what it did; what Qt reports is only what the pointer showed.
    return g_performed;
}

COleDataSource* QtDragDriver::Current()
{
    return g_current;
}

void QtDragDriver::RecordDrop(DROPEFFECT effect)
{
    g_performed = effect;
}

DropSite::~DropSite()
{
    End();
}

bool DropSite::Offers(QMimeData const* mime)
{
    if (mime->hasFormat(QString::fromLatin1(k_objectDragMime)))
        return QtDragDriver::Current() != nullptr;
    return !LocalFiles(mime).empty();
}

bool DropSite::Begin(QDropEvent& event)
{
    if (m_session)
        return true;
    QMimeData const* mime = event.mimeData();
    if (!Offers(mime))
        return false;
    COleDataSource* source = QtDragDriver::Current();
    if (!mime->hasFormat(QString::fromLatin1(k_objectDragMime)))
    {
        m_files = MakeFileDrag(LocalFiles(mime));
        source = m_files.get();
    }
    m_session = std::make_unique<DragSession>(*source, ToDropEffects(event.possibleActions()));
    return true;
}

void DropSite::End()
{
    m_session.reset();
    m_files.reset();
}

std::optional<DROPEFFECT> DropSite::Follow(QDropEvent& event)
{
    if (!Begin(event))
        return std::nullopt;
    SyncModifierKeys(event.modifiers());
    return m_session->MoveTo(m_window.GetSafeHwnd(), ToPoint(event.position()),
                             MouseKeys(event.modifiers(), event.buttons()));
}

void DropSite::Move(QDragMoveEvent& event)
{
    std::optional<DROPEFFECT> effect = Follow(event);
    if (!effect)
    {
        event.ignore();
        return;
    }
    // The drag stays accepted so that moves keep coming; the action says whether it may drop.
    event.accept();
    event.setDropAction(ToDropAction(*effect));
}

void DropSite::Leave()
{
    if (m_session)
        m_session->Cancel();
    End();
}

void DropSite::Drop(QDropEvent& event)
{
    // A drop always follows a move over the window; one that comes alone is followed first.
    if (!m_session && !Follow(event))
    {
        event.ignore();
        return;
    }
    const DROPEFFECT effect = m_session->Drop();
    End();
    QtDragDriver::RecordDrop(effect);
    event.setDropAction(ToDropAction(effect));
    event.setAccepted(effect != DROPEFFECT_NONE);
}
} // namespace sn::qt
