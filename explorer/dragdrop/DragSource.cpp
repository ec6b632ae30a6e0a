// The tree as a drag source: the selected rows' objects, offered to any drop target.

#include "explorer/DlgProjectExplorer.h"

#include "host/OrbObjectDataSource.h"

void DlgProjectExplorer::OnTvnBegindragProjectTree(NMHDR*, LRESULT* result)
{
    *result = 0;
    std::vector<HTREEITEM> items;
    m_tree.GetSelectedList(items);
    std::vector<IOrbObject*> objects;
    GetSelectedObjects(items, objects);
    if (objects.empty())
        return;
    auto* source = new COrbObjectDataSource(SonariumDragSource_ProjectTree, nullptr);
    source->Init(objects);
    // The target does any move: the source deletes nothing whatever the effect.
    source->DoDragDrop(DROPEFFECT_COPY | DROPEFFECT_MOVE | DROPEFFECT_LINK, nullptr, nullptr);
    source->InternalRelease();
}
