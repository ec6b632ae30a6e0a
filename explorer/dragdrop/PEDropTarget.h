#pragma once
// The tree's drop target: project objects dragged from the host's views and audio files
// dragged from the file system.

#include "host/NotifyMgr.h"
#include "platform/Ole.h"

class DlgProjectExplorer;
class CTreeCtrl;

class PEDropTarget : public COleDropTarget
{
public:
    // Subscribes to the drop target's own channel, on which dropped audio files come back.
    explicit PEDropTarget(DlgProjectExplorer* explorer);
    ~PEDropTarget() override;

    void SetTreeCtrl(CTreeCtrl* tree) { m_pTreeCtrl = tree; }

    // Subscriber of the drop target's own channel: imports files dropped earlier.
    void OnAudioFilesDropped(CNotifyItemBase* item);

private:
    DlgProjectExplorer* m_pExplorer;
    CTreeCtrl* m_pTreeCtrl = nullptr;
    DWORD m_dwDragKeyState = 0;
};
