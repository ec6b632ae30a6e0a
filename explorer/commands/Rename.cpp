// In-place renaming in the tree's label editor.

#include "explorer/DlgProjectExplorer.h"

LRESULT DlgProjectExplorer::OnRenameObject(WPARAM, LPARAM)
{
    if (IsSingleItemSelected())
        m_tree.SendMessage(TVM_EDITLABELW, 0, reinterpret_cast<LPARAM>(m_tree.GetFirstSelectedItem()));
    return 1;
}

void DlgProjectExplorer::OnTvnBeginlabeleditProjectTree(NMHDR*, LRESULT* result)
{
    // Editing names in place comes with the rename command; until then the editor stays closed.
    *result = 1;
}

void DlgProjectExplorer::OnTvnEndlabeleditProjectTree(NMHDR*, LRESULT* result)
{
    m_bEditingLabel = false;
    *result = 0;
}
