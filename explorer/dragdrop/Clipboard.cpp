// Cut, copy and paste through the host's object clipboard, and the answers that enable them in
// the host's menus.

#include "explorer/DlgProjectExplorer.h"

#include "explorer/commands/PEHelper.h"
#include "host/ClipboardHelpers.h"
#include "host/EditingManager.h"
#include "host/HostMessages.h"
#include "host/OrbObjectHelpers.h"
#include "host/ServiceProvider.h"
#include "host/UIObjectHelpers.h"

namespace
{
constexpr uint32_t k_explorerStore = 0x10;
constexpr uint32_t k_cutStore = 0x20;

sn::IObjectClipboardService* ObjectClipboard()
{
    return sn::g_serviceProviderInstance
               ? sn::g_serviceProviderInstance->Get<sn::IObjectClipboardService>(sn::ServiceId_ObjectClipboard)
               : nullptr;
}

bool MayGoToClipboard(const PMTreeNode* node)
{
    return node->Capabilities().test(PMTreeNode::CanClipboard);
}

bool CanCopyAll(const std::vector<PMTreeNode*>& nodes)
{
    return !nodes.empty() && std::all_of(nodes.begin(), nodes.end(), MayGoToClipboard);
}

// Kinds of top node that still accept a paste while the host plays back.
bool AcceptsPasteDuringPlayback(PMTreeNode::NodeType type)
{
    constexpr uint64_t accepted = (1ull << 3) | (1ull << 4) | (1ull << 16) | (1ull << 26) | (1ull << 32) | (1ull << 36);
    const auto value = static_cast<unsigned>(type);
    return value <= 36 && (accepted >> value) & 1;
}

// Releases the references a list holds when it goes.
struct ReleasedObjects
{
    std::vector<IOrbObject*> list;
    ~ReleasedObjects()
    {
        for (IOrbObject* object : list)
            if (object)
                object->Release();
    }
};
} // namespace

LRESULT DlgProjectExplorer::CanCut(const std::vector<PMTreeNode*>& nodes)
{
    // Every node must be allowed on the clipboard before any is asked whether it may be deleted.
    if (!CanCopyAll(nodes))
        return HostMessages::NotAllowed;
    for (PMTreeNode* node : nodes)
        if (!CanDeleteNode(node))
            return HostMessages::NotAllowed;
    return HostMessages::Allowed;
}

void DlgProjectExplorer::GetClipboardSelection(std::vector<PMTreeNode*>& nodes)
{
    GetSelectedNodeList(nodes);
    OrbObjectHelpers::RemoveAllChildObjectsFromList(nodes);
}

void DlgProjectExplorer::GetPasteTargets(std::vector<IOrbObject*>& targets)
{
    targets.reserve(m_tree.GetSelectedCount());
    for (HTREEITEM item = m_tree.GetFirstSelectedItem(); item; item = m_tree.GetNextSelectedItem(item))
        if (PMTreeNode* node = m_tree.GetNodeFromItem(item))
            targets.push_back(priv::LookupOrbObject(node->ID()));
}

void DlgProjectExplorer::CopyToClipboard(const std::vector<PMTreeNode*>& nodes, bool cut)
{
    if (nodes.empty())
        return;
    IDataManager* data = IDataManager::Get();
    ReleasedObjects objects;
    for (PMTreeNode* node : nodes)
        if (MayGoToClipboard(node) && data)
            if (IOrbObject* object = data->GetObjectByGUID(node->ID()))
                objects.list.push_back(object);
    if (objects.list.empty())
        return;
    if (sn::IObjectClipboardService* clipboard = ObjectClipboard())
        clipboard->SetObjects(objects.list, cut ? k_explorerStore | k_cutStore : k_explorerStore);
}

// Cut does not go to the label editor: while a label is edited, Cut still cuts the objects.
LRESULT DlgProjectExplorer::OnWmCut(WPARAM, LPARAM)
{
    std::vector<PMTreeNode*> nodes;
    GetClipboardSelection(nodes);
    if (CanCut(nodes) != HostMessages::Allowed)
        return 1;
    CopyToClipboard(nodes, true);
    for (PMTreeNode* node : nodes)
        if (MayGoToClipboard(node))
            node->m_bCutMarked = true;
    NotifyRefreshTree(RefreshVisuals);
    return 1;
}

LRESULT DlgProjectExplorer::OnWmCopy(WPARAM, LPARAM)
{
    if (HWND edit = reinterpret_cast<HWND>(m_tree.SendMessage(TVM_GETEDITCONTROL, 0, 0)))
    {
        ::SendMessage(edit, WM_COPY, 0, 0);
        return 1;
    }
    // Nodes that may not go to the clipboard are left out, the others copied.
    std::vector<PMTreeNode*> nodes;
    GetClipboardSelection(nodes);
    CopyToClipboard(nodes, false);
    return 1;
}

LRESULT DlgProjectExplorer::OnWmPaste(WPARAM, LPARAM)
{
    if (HWND edit = reinterpret_cast<HWND>(m_tree.SendMessage(TVM_GETEDITCONTROL, 0, 0)))
    {
        ::SendMessage(edit, WM_PASTE, 0, 0);
        return 1;
    }
    if (OnWmCanPaste(0, 0) != HostMessages::Allowed)
        return 1;
    ReleasedObjects targets;
    GetPasteTargets(targets.list);
    sn::IObjectClipboardService* clipboard = ObjectClipboard();
    ReleasedObjects objects;
    if (!clipboard || !clipboard->GetObjects(objects.list))
        return 1;
    const bool move = (clipboard->GetFlags() & k_cutStore) != 0;
    const auto operation = move ? OrbObjectHelpers::Move : OrbObjectHelpers::Copy;
    IOrbObject* destination = UIObjectHelpers::GetDestinationContainer(objects.list, targets.list, operation);
    if (!destination)
        return 1;
    // Only into a work unit this view shows.
    PMTreeNode* topNode = GetTopWorkUnitNode(destination);
    if (!topNode)
        return 1;
    if (EditingManager::IsInPlayback() && !AcceptsPasteDuringPlayback(topNode->Type()))
        return 1;

    m_sourceControlAborted = false;
    ReleasedObjects created;
    UIObjectHelpers::MoveOrCopyObjects(objects.list, destination, operation, &created.list);
    if (m_sourceControlAborted)
    {
        for (IOrbObject* object : created.list)
            object->Release();
        created.list.clear();
    }
    m_sourceControlAborted = false;
    // A cut pastes once; a copy as often as the user likes.
    if (move)
        clipboard->Clear();
    FindOrbObject(created.list.empty() ? objects.list : created.list);
    return 1;
}

LRESULT DlgProjectExplorer::OnWmCanCut(WPARAM, LPARAM)
{
    std::vector<PMTreeNode*> nodes;
    GetClipboardSelection(nodes);
    return CanCut(nodes);
}

LRESULT DlgProjectExplorer::OnWmCanCopy(WPARAM, LPARAM)
{
    std::vector<PMTreeNode*> nodes;
    GetClipboardSelection(nodes);
    return CanCopyAll(nodes) ? HostMessages::Allowed : HostMessages::NotAllowed;
}

LRESULT DlgProjectExplorer::OnWmCanPaste(WPARAM, LPARAM)
{
    ReleasedObjects targets;
    GetPasteTargets(targets.list);
    return ClipboardHelpers::CanPasteObjects(targets.list) ? HostMessages::Allowed : HostMessages::NotAllowed;
}
