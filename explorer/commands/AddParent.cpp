// A new parent between the selected nodes and their parent, of a type the parent may hold.

#include "explorer/DlgProjectExplorer.h"

#include "explorer/commands/CreationGuards.h"
#include "explorer/commands/ObjectNaming.h"
#include "host/AudioSourcesHelpers.h"
#include "host/EditingManager.h"
#include "host/ObjectName.h"
#include "host/StringHelp.h"
#include "host/TreeNodeWithObject.h"

namespace
{
bool MayTakeNewParent(const std::vector<PMTreeNode*>& nodes)
{
    const bool playback = EditingManager::IsInPlayback();
    for (PMTreeNode* node : nodes)
        if (!node || (playback && !IsCreationAllowedInPlayback(node->Type())) ||
            !node->Capabilities().test(PMTreeNode::CanInsertParent))
            return false;
    return true;
}
} // namespace

bool DlgProjectExplorer::AddParentToItem(PMTreeNode::NodeType type, GUID* outGuid)
{
    HTREEITEM item = m_tree.GetFirstSelectedItem();
    if (!item || m_bEditingLabel)
        return false;
    auto parentItem =
        reinterpret_cast<HTREEITEM>(m_tree.SendMessage(TVM_GETNEXTITEM, TVGN_PARENT, reinterpret_cast<LPARAM>(item)));
    if (!parentItem)
        return false;
    // These tests look at the first selected node only; every node is tested below.
    PMTreeNode* node = m_tree.GetNodeFromItem(item);
    PMTreeNode* parentNode = node ? node->Parent() : nullptr;
    if (!parentNode || !node->Capabilities().test(PMTreeNode::CanInsertParent) ||
        !parentNode->PossibleChildType().count(type))
        return false;

    UILockRaise lock;
    const OrbObjectType objectType = TreeNodeWithObject::ConvertObjectType(type);
    CStdStr<wchar_t> name;
    if (!MakeNewObjectName(type, parentNode, name))
        return false;

    // A type whose insertion resets the history opens no group: the host starts afresh itself.
    UndoManagerGroup group(!TreeNodeWithObject::NeedUndoResetWhenAddingParent(type),
                           StringHelp::Localize(L"New Parent").c_str());
    std::vector<PMTreeNode*> nodes;
    GetSelectedNodeList(nodes);
    GUID guid = GUID_NULL;
    const bool ok = MayTakeNewParent(nodes) && TreeNodeWithObject::AddParentToNodes(nodes, type, name, &guid);
    if (ok)
    {
        CSmartPtr<IOrbObject> newObject;
        newObject.Attach(priv::LookupOrbObject(guid));
        CSmartPtr<IOrbObject> parentObject;
        parentObject.Attach(priv::LookupOrbObject(parentNode->ID()));
        // Among its new siblings the proposed name may have to change.
        if (newObject && ObjectName::MakeObjectNameValid(objectType, name, parentObject, newObject,
                                                         AudioSourcesHelpers::LanguageIndependent))
            newObject->SetName(name);
        m_tree.SelectAll(false);
        RefreshItem(parentItem);
        // A new work unit was named in the host's dialog; a new physical folder is still named here.
        if (type != PMTreeNode::WorkUnit)
            EditLabelWithGUID(guid);
    }
    if (outGuid)
        *outGuid = guid;
    return ok;
}
