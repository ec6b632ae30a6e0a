// What the tree accepts while a drag hovers over it, the drop itself, and the scrolling at its
// edges. Dropped files are imported later, when the notification the drop posts comes back.

#include "explorer/dragdrop/PEDropTarget.h"

#include "explorer/DlgProjectExplorer.h"
#include "host/DragDropHelpers.h"
#include "host/EditingManager.h"
#include "host/OrbObjectCategories.h"
#include "host/OrbObjectDataSource.h"
#include "host/TreeNodeWithObject.h"
#include "module/ExplorerApp.h"
#include "module/ExplorerNames.h"
#include "platform/WindowSystem.h"

namespace
{
constexpr int k_scrollZone = 15;
constexpr UINT k_scrollPeriodMs = 75;

// Locks a global block for the scope and frees it after.
class LockedGlobal
{
public:
    explicit LockedGlobal(HGLOBAL memory) : m_memory(memory), m_data(memory ? ::GlobalLock(memory) : nullptr) {}
    ~LockedGlobal()
    {
        if (m_memory)
        {
            ::GlobalUnlock(m_memory);
            ::GlobalFree(m_memory);
        }
    }
    LockedGlobal(const LockedGlobal&) = delete;
    LockedGlobal& operator=(const LockedGlobal&) = delete;
    HDROP Drop() const { return static_cast<HDROP>(m_data); }

private:
    HGLOBAL m_memory;
    void* m_data;
};

int ObjectCategory(PMTreeNode* node)
{
    auto* withObject = dynamic_cast<TreeNodeWithObject*>(node);
    IOrbObject* object = withObject ? withObject->GetObject() : nullptr;
    return object ? static_cast<int>(OrbObjectCategories::GetOrbObjectCategory(object)) : -1;
}
} // namespace

AudioFilesDroppedNotifyParam::AudioFilesDroppedNotifyParam() : NotifyData(PENames::rosAudioFilesDropped) {}

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

DROPEFFECT PEDropTarget::OnDragEnter(CWnd* wnd, COleDataObject* data, DWORD keyState, CPoint point)
{
    ClipboardHelpers::OleDropTarget::OnDragEnter(wnd, data, keyState, point);
    return EvaluateDragOver(data, keyState, point);
}

DROPEFFECT PEDropTarget::OnDragOver(CWnd*, COleDataObject* data, DWORD keyState, CPoint point)
{
    return EvaluateDragOver(data, keyState, point);
}

void PEDropTarget::OnDragLeave(CWnd*)
{
    CancelScrollTimer();
}

PMTreeNode* PEDropTarget::NodeAt(CPoint point)
{
    UINT flags = 0;
    HTREEITEM item = m_pTreeCtrl ? m_pTreeCtrl->HitTest(point, &flags) : nullptr;
    if (!item || !(flags & TVHT_ONITEM))
        return nullptr;
    return m_pExplorer->GetTreeCtrl().GetNodeFromItem(item);
}

DROPEFFECT PEDropTarget::EvaluateDragOver(COleDataObject* data, DWORD keyState, CPoint point)
{
    m_dwDragKeyState = keyState | (RightDrag() ? MK_RBUTTON : 0);

    // Near an edge the tree scrolls; a running timer keeps running with the new directions.
    m_ihScrollDir = m_ivScrollDir = 0;
    if (m_pTreeCtrl)
    {
        CRect client;
        m_pTreeCtrl->GetClientRect(&client);
        m_ivScrollDir = point.y < client.top + k_scrollZone ? -1 : point.y > client.bottom - k_scrollZone ? 1 : 0;
        m_ihScrollDir = point.x < client.left + k_scrollZone ? -1 : point.x > client.right - k_scrollZone ? 1 : 0;
        if ((m_ivScrollDir || m_ihScrollDir) && !m_idScrollTimer)
        {
            m_pScrollTreeCtrl = m_pTreeCtrl;
            m_idScrollTimer =
                ::SetTimer(nullptr, reinterpret_cast<UINT_PTR>(this), k_scrollPeriodMs, &ScrollTimerProc);
        }
    }

    PMTreeNode* node = NodeAt(point);
    if (data && data->IsDataAvailable(CF_HDROP))
    {
        LockedGlobal files(data->GetGlobalData(CF_HDROP));
        return EvaluateFileDrop(node, files.Drop());
    }
    if (COrbObjectDataSource* source = node ? COrbObjectDataSource::Get(data) : nullptr)
    {
        std::set<OrbObjectType> childTypes;
        for (PMTreeNode::NodeType type : node->PossibleChildType())
            childTypes.insert(TreeNodeWithObject::ConvertObjectType(type));
        const DWORD operations = ClipboardHelpers::ValidOperations(
            node->ID(), TreeNodeWithObject::ConvertObjectType(node->Type()), childTypes, source->IOrbObjects());
        return ClipboardHelpers::DragEffect(operations, m_dwDragKeyState);
    }
    return DROPEFFECT_NONE;
}

DROPEFFECT PEDropTarget::EvaluateFileDrop(PMTreeNode* node, HDROP drop)
{
    const DWORD keyState = m_dwDragKeyState;
    if (EditingManager::IsInPlayback())
        return DROPEFFECT_NONE;
    if ((keyState & MK_CONTROL) && (keyState & MK_ALT))
        return DROPEFFECT_NONE;
    std::vector<CStdStr<wchar_t>> files;
    if (!drop || !DragDropHelpers::GetDropFilesArray(drop, files) || !DragDropHelpers::ValidateDropFiles(files))
        return DROPEFFECT_NONE;
    const bool midi = HasMidiFile(files);

    if (!(keyState & MK_ALT))
    {
        // Into the node's hierarchy.
        if (!node)
            return DROPEFFECT_NONE;
        const bool shift = (keyState & MK_SHIFT) != 0;
        const PMTreeNode::NodeType type = node->Type();
        // Voices are sounds of their own kind in this host.
        const bool voice = type == PMTreeNode::SoundVoice;
        const auto& children = node->PossibleChildType();
        const bool accepts = children.count(PMTreeNode::SoundSFX) || children.count(PMTreeNode::MusicSegment) ||
                             ((type == PMTreeNode::SoundSFX || voice || type == PMTreeNode::MusicSegment ||
                               type == PMTreeNode::MusicTrack) &&
                              shift == voice) ||
                             IsWorkUnitOfCategory(node, OrbObjectCategories::AudioObjects) ||
                             IsWorkUnitOfCategory(node, OrbObjectCategories::Music);
        if (!midi)
            return accepts ? DROPEFFECT_COPY : DROPEFFECT_NONE;
        return accepts && ObjectCategory(node) == OrbObjectCategories::Music ? DROPEFFECT_COPY : DROPEFFECT_NONE;
    }
    // Into a category's root, or in place of what the node holds.
    if (!node)
        return m_pExplorer->m_categories.count(OrbObjectCategories::AudioObjects) ? DROPEFFECT_COPY
                                                                                   : DROPEFFECT_NONE;
    const int category = ObjectCategory(node);
    if (category < 0)
        return DROPEFFECT_NONE;
    return (!midi && category == OrbObjectCategories::AudioObjects) || category == OrbObjectCategories::Music
               ? DROPEFFECT_COPY
               : DROPEFFECT_NONE;
}

bool PEDropTarget::HasMidiFile(const std::vector<CStdStr<wchar_t>>& files)
{
    static const wchar_t k_mid[] = L".mid";
    for (const CStdStr<wchar_t>& file : files)
    {
        const std::wstring name = file.c_str();
        const size_t start = name.size() > 4 ? name.size() - 4 : 0;
        std::wstring tail = name.substr(start);
        for (wchar_t& c : tail)
            if (c < 128)
                c = static_cast<wchar_t>(std::towlower(c));
        if (tail == k_mid)
            return true;
    }
    return false;
}

bool PEDropTarget::IsWorkUnitOfCategory(PMTreeNode* node, int category)
{
    if (!node || node->Type() != PMTreeNode::WorkUnit)
        return false;
    CSmartPtr<IOrbObject> object;
    object.Attach(priv::LookupOrbObject(node->ID()));
    auto* workUnit = dynamic_cast<IOrbWorkUnit*>(object.Get());
    return workUnit && workUnit->HasWorkUnitCategory() && workUnit->GetWorkUnitCategory() == category;
}

DROPEFFECT PEDropTarget::OnDropEx(CWnd*, COleDataObject* data, DROPEFFECT dropDefault, DROPEFFECT dropList,
                                  CPoint point)
{
    CXAutoWaitCursor wait;
    CancelScrollTimer();
    PMTreeNode* node = NodeAt(point);
    if (data && data->IsDataAvailable(CF_HDROP))
    {
        LockedGlobal drop(data->GetGlobalData(CF_HDROP));
        AFX_MANAGE_STATE(AfxGetStaticModuleState());
        auto param = std::make_unique<AudioFilesDroppedNotifyParam>();
        param->targetGuid = node ? node->ID() : GUID_NULL;
        param->keyState = m_dwDragKeyState;
        param->origin = this;
        // The drop trusts what the last drag-over decided; only a copy imports.
        if (dropDefault != DROPEFFECT_COPY || !drop.Drop() ||
            !DragDropHelpers::GetDropFilesArray(drop.Drop(), param->files) ||
            !DragDropHelpers::ValidateDropFiles(param->files))
            return DROPEFFECT_NONE;
        if (!INotifyMgr::m_pInstance)
            return DROPEFFECT_COPY;
        INotifyMgr::m_pInstance->PostNotify(PENames::rosPEDropTarget, param.release(), nullptr, false);
        return dropDefault;
    }
    if (node)
        return m_pExplorer->DropObjects(node, data, dropDefault, dropList, point, RightDrag());
    return DROPEFFECT_NONE;
}

void PEDropTarget::OnAudioFilesDropped(CNotifyItemBase* item)
{
    auto* param = item ? dynamic_cast<AudioFilesDroppedNotifyParam*>(item->pData) : nullptr;
    // Every explorer view hears the channel; only the view dropped on imports.
    if (!param || param->origin != this)
        return;
    m_pExplorer->DropAudioFiles(param->targetGuid, param->files, param->keyState);
}
