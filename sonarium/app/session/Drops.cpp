#include "sonarium/app/session/Drops.h"

namespace sn
{
DataSourceRef MakeFileDrag(std::vector<std::wstring> const& files)
{
    DataSourceRef source(new COleDataSource);
    source->CacheGlobalData(CF_HDROP, MakeDropFiles(files));
    return source;
}

DWORD DragKeyState(UINT modifiers, bool rightButton)
{
    return (modifiers & (MK_SHIFT | MK_CONTROL | MK_ALT)) | (rightButton ? MK_RBUTTON : MK_LBUTTON);
}

std::wstring DropEffectName(DROPEFFECT effect)
{
    std::wstring name;
    for (auto [bit, word] :
         {std::pair{DROPEFFECT_COPY, L"copy"}, {DROPEFFECT_MOVE, L"move"}, {DROPEFFECT_LINK, L"link"}})
        if (effect & bit)
            name += (name.empty() ? L"" : L"+") + std::wstring(word);
    return name.empty() ? L"none" : name;
}

DROPEFFECT DropFiles(CWnd& window, std::vector<std::wstring> const& files, CPoint point, DWORD keyState)
{
    DataSourceRef source = MakeFileDrag(files);
    DragSession drag(*source, k_fileDragEffects);
    drag.MoveTo(window.GetSafeHwnd(), point, keyState);
    return drag.Drop();
}

DragToDestination::DragToDestination(CWnd& source, CPoint start, CWnd& destination, CPoint end,
                                     DWORD keyState)
    : m_source(source.GetSafeHwnd()), m_start(start), m_destination(destination.GetSafeHwnd()), m_end(end),
      m_keyState(keyState)
{
}

DROPEFFECT DragToDestination::RunDrag(COleDataSource& source, DROPEFFECT allowed)
{
    m_ran = true;
    DragSession drag(source, allowed);
    // The pointer is over the source when the drag starts, then travels to the destination.
    drag.MoveTo(m_source, m_start, m_keyState);
    drag.MoveTo(m_destination, m_end, m_keyState);
    m_effect = drag.Drop();
    return m_effect;
}
} // namespace sn
