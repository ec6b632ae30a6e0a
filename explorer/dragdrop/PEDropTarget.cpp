#include "explorer/dragdrop/PEDropTarget.h"

#include "module/ExplorerNames.h"

PEDropTarget::PEDropTarget(DlgProjectExplorer* explorer) : m_pExplorer(explorer)
{
    if (INotifyMgr::m_pInstance)
        INotifyMgr::m_pInstance->Register(PENames::rosPEDropTarget,
                                          NotifyDelegate(this, &PEDropTarget::OnAudioFilesDropped));
}

PEDropTarget::~PEDropTarget()
{
    if (INotifyMgr::m_pInstance)
        INotifyMgr::m_pInstance->UnRegister(PENames::rosPEDropTarget,
                                            NotifyDelegate(this, &PEDropTarget::OnAudioFilesDropped));
}

void PEDropTarget::OnAudioFilesDropped(CNotifyItemBase*)
{
    // Imports of dropped audio files come with the drop commands.
}
