#pragma once
// The host's object clipboard and object drags, as the views use them.

#include "host/Guid.h"
#include "host/OrbObjectType.h"
#include "platform/Ole.h"

#include <set>
#include <vector>

class IOrbObject;

namespace ClipboardHelpers
{
// Whether the objects on the object clipboard may be pasted onto these targets.
bool CanPasteObjects(std::vector<IOrbObject*>& targets);
} // namespace ClipboardHelpers

namespace ClipboardHelpers
{
// The effects a drop of objects onto target may have (a DROPEFFECT mask): move and copy where the
// target may hold every object (never into an object's own subtree for a move), link where the
// target is an event that may play them.
DWORD ValidOperations(const GUID& target, OrbObjectType targetType, const std::set<OrbObjectType>& childTypes,
                      const std::vector<IOrbObject*>& objects);
// The effect the keys ask for, as file managers do: none moves, Ctrl copies, Ctrl+Shift links;
// none when that effect is not among the operations.
DWORD DragEffect(DWORD operations, DWORD keyState);
// Drops the objects a data object carries onto target with the default effect, or, for a drag
// made with the right button, the effect the user chooses from a menu of the valid ones at the
// screen point. Created objects go to created (owned references) when given. Returns the effect
// performed.
DWORD DropObjects(IOrbObject* target, COleDataObject* data, DWORD dropDefault, DWORD dropList, CPoint screenPoint,
                  bool rightDrag, std::vector<IOrbObject*>* created);

// A drop target that remembers which mouse button makes the drag.
class OleDropTarget : public COleDropTarget
{
public:
    DROPEFFECT OnDragEnter(CWnd* wnd, COleDataObject* data, DWORD keyState, CPoint point) override;
    bool RightDrag() const { return m_rightDrag; }

private:
    bool m_rightDrag = false;
};
} // namespace ClipboardHelpers

class CTreeCtrl;

// A tree drop target that scrolls the tree while a drag hovers at its edges. The scroll state is
// shared by all tree drop targets: one drag runs at a time.
class CScrollTreeDropTarget : public ClipboardHelpers::OleDropTarget
{
public:
    static int m_ihScrollDir;
    static int m_ivScrollDir;
    static UINT_PTR m_idScrollTimer;
    static CTreeCtrl* m_pScrollTreeCtrl;

    // Scrolls m_pScrollTreeCtrl one step in the current directions.
    static void ScrollTimerProc(HWND, UINT, UINT_PTR, DWORD);
    static void CancelScrollTimer();
};
