#pragma once
// The tree's drop target: project objects dragged from the host's views and audio files
// dragged from the file system.

#include "host/ClipboardHelpers.h"
#include "host/NotifyMgr.h"
#include "host/PMTreeNode.h"
#include "host/StdStr.h"
#include "platform/Ole.h"

#include <vector>

class DlgProjectExplorer;
class CTreeCtrl;

// Files dropped on a tree, posted by its drop target to itself and imported when delivered.
class AudioFilesDroppedNotifyParam : public NotifyData
{
public:
    AudioFilesDroppedNotifyParam();
    std::vector<CStdStr<wchar_t>> files;
    GUID targetGuid = GUID_NULL;
    DWORD keyState = 0;
    const void* origin = nullptr; // the drop target that posted it
};

class PEDropTarget : public CScrollTreeDropTarget
{
public:
    // Subscribes to the drop target's own channel, on which dropped audio files come back.
    explicit PEDropTarget(DlgProjectExplorer* explorer);
    ~PEDropTarget() override;

    void SetTreeCtrl(CTreeCtrl* tree) { m_pTreeCtrl = tree; }

    DROPEFFECT OnDragEnter(CWnd* wnd, COleDataObject* data, DWORD keyState, CPoint point) override;
    DROPEFFECT OnDragOver(CWnd* wnd, COleDataObject* data, DWORD keyState, CPoint point) override;
    DROPEFFECT OnDropEx(CWnd* wnd, COleDataObject* data, DROPEFFECT dropDefault, DROPEFFECT dropList,
                        CPoint point) override;
    void OnDragLeave(CWnd* wnd) override;

    // Subscriber of the drop target's own channel: imports files dropped earlier.
    void OnAudioFilesDropped(CNotifyItemBase* item);

    // Whether a file name ends in ".mid", whatever the case of its letters.
    static bool HasMidiFile(const std::vector<CStdStr<wchar_t>>& files);
    static bool IsWorkUnitOfCategory(PMTreeNode* node, int category);

    DWORD DragKeyState() const { return m_dwDragKeyState; }

private:
    DROPEFFECT EvaluateDragOver(COleDataObject* data, DWORD keyState, CPoint point);
    DROPEFFECT EvaluateFileDrop(PMTreeNode* node, HDROP files);
    // The node under the point, counted only on its icon, label or state icon.
    PMTreeNode* NodeAt(CPoint point);

    DlgProjectExplorer* m_pExplorer;
    CTreeCtrl* m_pTreeCtrl = nullptr;
    DWORD m_dwDragKeyState = 0;
};
