#pragma once
// Drags and drops delivered to a window as the window system delivers them: files from a file
// manager as a CF_HDROP list, and project objects one tree drags onto another. The desktop
// window and the script driver both come through here, so both reach the same drop targets.

#include "platform/Ole.h"
#include "platform/Wnd.h"

#include <memory>
#include <string>
#include <vector>

namespace sn
{
// Gives up the holder's reference to a data source when the holder ends.
struct DataSourceRelease
{
    void operator()(COleDataSource* source) const { source->InternalRelease(); }
};
using DataSourceRef = std::unique_ptr<COleDataSource, DataSourceRelease>;

// The effects a file manager offers for its files.
constexpr DROPEFFECT k_fileDragEffects = DROPEFFECT_COPY | DROPEFFECT_MOVE | DROPEFFECT_LINK;

// What a file manager drags: the files as a CF_HDROP list.
DataSourceRef MakeFileDrag(std::vector<std::wstring> const& files);
// The key state a drag carries: the mouse button held and the MK_ modifier bits.
DWORD DragKeyState(UINT modifiers, bool rightButton);
// "none", or "copy", "move", "link" joined with "+".
std::wstring DropEffectName(DROPEFFECT effect);

// Drops files on a window at a client point, entering there first as the pointer does;
// answers the effect performed.
DROPEFFECT DropFiles(CWnd& window, std::vector<std::wstring> const& files, CPoint point, DWORD keyState);

// Carries the drag a tree starts from its start point to one destination and drops it there,
// as a user's hand does; remembers whether a drag ran and what it did.
class DragToDestination : public IDragDriver
{
public:
    DragToDestination(CWnd& source, CPoint start, CWnd& destination, CPoint end, DWORD keyState);

    DROPEFFECT RunDrag(COleDataSource& source, DROPEFFECT allowed) override;
    bool Ran() const { return m_ran; }
    DROPEFFECT Effect() const { return m_effect; }

private:
    HWND m_source;
    CPoint m_start;
    HWND m_destination;
    CPoint m_end;
    DWORD m_keyState;
    bool m_ran = false;
    DROPEFFECT m_effect = DROPEFFECT_NONE;
};

// Installs a drag driver while it lives, and puts the previous one back after.
class ScopedDragDriver
{
public:
    explicit ScopedDragDriver(IDragDriver* driver) : m_previous(COleDataSource::GetDragDriver())
    {
        COleDataSource::SetDragDriver(driver);
    }
    ~ScopedDragDriver() { COleDataSource::SetDragDriver(m_previous); }
    ScopedDragDriver(ScopedDragDriver const&) = delete;
    ScopedDragDriver& operator=(ScopedDragDriver const&) = delete;

private:
    IDragDriver* m_previous;
};
} // namespace sn
