// In-place renaming in the tree's label editor: the editor opens on the object's full name, the
// entered name is trimmed, fixed and checked by the host, and a refused name brings the editor
// back on the same row a moment later.

#include "explorer/DlgProjectExplorer.h"

#include "explorer/commands/PEHelper.h"
#include "host/MessageBox.h"
#include "host/ObjectName.h"
#include "host/ProjectManager.h"
#include "host/StringHelp.h"
#include "host/TreeNodeWithObject.h"
#include "host/UIObjectHelpers.h"

namespace
{
constexpr int kMaxNameLength = 260;

bool MayRenameInPlace(const PMTreeNode* node)
{
    return node && node->Capabilities().test(PMTreeNode::CanRename);
}
} // namespace

LRESULT DlgProjectExplorer::OnRenameObject(WPARAM, LPARAM)
{
    if (IsSingleItemSelected())
        m_tree.SendMessage(TVM_EDITLABELW, 0, reinterpret_cast<LPARAM>(m_tree.GetFirstSelectedItem()));
    return 1;
}

void DlgProjectExplorer::EditLabelWithGUID(const GUID& guid)
{
    HTREEITEM item = m_tree.GetItemWithGUID(guid, TVI_ROOT);
    if (!item)
        return;
    if (MayRenameInPlace(m_tree.GetNodeFromItem(item)))
    {
        m_tree.EnsureVisible(item);
        m_tree.SendMessage(TVM_EDITLABELW, 0, reinterpret_cast<LPARAM>(item));
        return;
    }
    // Not renamed in place: the new object is shown selected, reached through its work unit.
    CSmartPtr<IOrbObject> object;
    object.Attach(priv::LookupOrbObject(guid));
    m_tree.SelectAll(false);
    CSmartPtr<IOrbWorkUnit> unit;
    if (object && ProjectManager::m_pInstance)
        ProjectManager::m_pInstance->GetTopWorkUnit(object, unit);
    if (PMTreeNode* unitNode = unit ? GetNodeWithGUID(*unit->GetGUID()) : nullptr)
        unitNode->ExpandAndSelectNode(guid);
    NotifyRefreshTree(RefreshVisuals);
    SetFocusOnTree();
}

void DlgProjectExplorer::OnTvnBeginlabeleditProjectTree(NMHDR* hdr, LRESULT* result)
{
    *result = 0;
    const HTREEITEM item = reinterpret_cast<NMTVDISPINFOW*>(hdr)->item.hItem;
    PMTreeNode* node = m_tree.IsItemValid(item) ? m_tree.GetNodeFromItem(item) : nullptr;
    if (!MayRenameInPlace(node))
    {
        *result = 1;
        return;
    }
    auto editWnd = reinterpret_cast<HWND>(m_tree.SendMessage(TVM_GETEDITCONTROL, 0, 0));
    CWnd* edit = editWnd ? CWnd::FromHandle(editWnd) : nullptr;
    if (!edit)
        return;
    m_bEditingLabel = true;
    // The row may show decorations (an unsaved mark...): the editor gets the name alone.
    IOrbObject* object = NodeObject(node);
    edit->SetWindowText(object ? object->GetName().c_str() : L"");
    edit->SendMessage(EM_LIMITTEXT, kMaxNameLength, 0);
}

void DlgProjectExplorer::OnTvnEndlabeleditProjectTree(NMHDR* hdr, LRESULT* result)
{
    *result = 0;
    if (!m_bEditingLabel)
        return;
    m_bEditingLabel = false;

    const TVITEMW& entered = reinterpret_cast<NMTVDISPINFOW*>(hdr)->item;
    const HTREEITEM item = entered.hItem;
    CStdStr<wchar_t> text(entered.pszText ? entered.pszText : L"");
    text.Trim();
    if (PMTreeNode* node = m_tree.GetNodeFromItem(item))
    {
        const OrbObjectType objectType = TreeNodeWithObject::ConvertObjectType(node->Type());
        ObjectName::AutoFixNameCharacters(objectType, text);
        IOrbObject* current = NodeObject(node);
        // The comparison is exact: a change of case alone is a rename.
        if (!text.empty() && (!current || text != current->GetName()))
        {
            if (!MayRenameInPlace(node))
            {
                CXMessageBox(StringHelp::Localize(L"You can't change the name of that Object!").c_str(), 16, nullptr);
            }
            else
            {
                CSmartPtr<IOrbObject> object;
                object.Attach(priv::LookupOrbObject(node->ID()));
                CSmartPtr<IOrbObject> parentObject;
                if (node->Parent())
                    parentObject.Attach(priv::LookupOrbObject(node->Parent()->ID()));
                const ObjectName::NameValidationResult verdict =
                    ObjectName::ValidateObjectName(objectType, text, parentObject, object, true);
                if (verdict != ObjectName::NameValid)
                {
                    ObjectName::DisplayInvalidNameErrorMessage(verdict, objectType, text, false);
                    // The editor comes back on the same row, with the name as it was.
                    ScheduleEditItem(item);
                    return;
                }
                UIObjectHelpers::RenameObject(object, text);
            }
        }
    }
    // The row's new text comes from its refreshed node, never from the editor.
    m_tree.SelectAll(false);
    m_tree.SelectItem(item);
    RefreshTree(false);
}
