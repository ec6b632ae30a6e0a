// New children of the selected node: by node type, effect and audio-device plug-ins, and events
// with a first action. Each is one undo step with the views' updates locked while it is made,
// and the new object's name is then edited in place.

#include "explorer/DlgProjectExplorer.h"

#include "explorer/commands/CreationGuards.h"
#include "explorer/commands/ObjectNaming.h"
#include "host/EditingManager.h"
#include "host/PluginInfo.h"
#include "host/StringHelp.h"
#include "host/TreeNodeWithObject.h"
#include "host/Undo.h"

namespace
{
bool MayHoldNewChild(PMTreeNode* node, PMTreeNode::NodeType type)
{
    if (!node || !node->Capabilities().test(PMTreeNode::CanCreateChild) || !node->PossibleChildType().count(type))
        return false;
    return !EditingManager::IsInPlayback() || IsCreationAllowedInPlayback(node->Type());
}

// The new object, looked up by its GUID, as one of its host interfaces.
template <class Interface>
void WithNewObject(GUID const& guid, const std::function<void(Interface*)>& use)
{
    CSmartPtr<IOrbObject> object;
    object.Attach(priv::LookupOrbObject(guid));
    if (auto* typed = dynamic_cast<Interface*>(object.Get()))
        use(typed);
}
} // namespace

bool DlgProjectExplorer::CreateChildOfSelection(PMTreeNode::NodeType type, bool editLabel, GUID* outGuid,
                                                const std::function<bool(PMTreeNode* node, GUID& guid)>& make)
{
    HTREEITEM item = m_tree.GetFirstSelectedItem();
    if (!item || m_bEditingLabel)
        return false;
    AutoComplexUndo undo(StringHelp::Localize(L"New Child").c_str(), false);
    undo.Open(nullptr);
    GUID guid = GUID_NULL;
    bool ok = false;
    {
        UILockRaise lock;
        PMTreeNode* node = m_tree.GetNodeFromItem(item);
        if (MayHoldNewChild(node, type))
        {
            ok = make(node, guid);
            if (ok)
            {
                m_tree.SelectAll(false);
                node->IsExpanded(true);
            }
        }
    }
    if (!ok)
        guid = GUID_NULL;
    if (editLabel && ok)
        EditLabelWithGUID(guid);
    if (outGuid)
        *outGuid = guid;
    return ok;
}

bool DlgProjectExplorer::AddChildToItem(PMTreeNode::NodeType type, bool editLabel, GUID* outGuid)
{
    // Work units and physical folders were named in the host's dialog: no edit in place.
    const bool edit = editLabel && type != PMTreeNode::PhysicalFolder && type != PMTreeNode::WorkUnit;
    return CreateChildOfSelection(type, edit, outGuid, [type](PMTreeNode* node, GUID& guid) {
        CStdStr<wchar_t> name;
        return MakeNewObjectName(type, node, name) && node->CreateChild(type, name, &guid);
    });
}

bool DlgProjectExplorer::AddEffectChildToItem(unsigned pluginId, OrbObjectType objectType)
{
    const PMTreeNode::NodeType childType = TreeNodeWithObject::ConvertObjectType(objectType);
    return CreateChildOfSelection(childType, true, nullptr, [=](PMTreeNode* node, GUID& guid) {
        CStdStr<wchar_t> name;
        if (!MakePluginChildName(pluginId, name, objectType) || !node->CreateChild(childType, name, &guid))
            return false;
        if (const PluginInfo* plugin = EffectHelpers::GetPluginInfo(pluginId))
            WithNewObject<IOrbBaseEffectPlugin>(
                guid, [&](IOrbBaseEffectPlugin* effect) { effect->SetPlugin(pluginId, plugin->Name()); });
        return true;
    });
}

bool DlgProjectExplorer::AddAudioDeviceChildToItem(unsigned pluginId)
{
    return CreateChildOfSelection(PMTreeNode::AudioDevice, true, nullptr, [=](PMTreeNode* node, GUID& guid) {
        CStdStr<wchar_t> name;
        if (!MakePluginChildName(pluginId, name, OrbObjectType_AudioDevice) ||
            !node->CreateChild(PMTreeNode::AudioDevice, name, &guid))
            return false;
        if (const PluginInfo* plugin = EffectHelpers::GetPluginInfo(pluginId))
            WithNewObject<IOrbAudioDevicePlugin>(
                guid, [&](IOrbAudioDevicePlugin* device) { device->SetPlugin(pluginId, plugin->Name()); });
        return true;
    });
}

bool DlgProjectExplorer::AddEventChildToItem(OrbEventActionEnum::OrbEventActionType action,
                                             OrbEventActionEnum::OrbEventActionScope scope)
{
    return CreateChildOfSelection(PMTreeNode::Event, true, nullptr, [=](PMTreeNode* node, GUID& guid) {
        if (!node->CreateChild(PMTreeNode::Event, MakeEventChildName(action, scope), &guid))
            return false;
        if (action != OrbEventActionEnum::ActionType_None && scope != OrbEventActionEnum::ActionScope_None)
            WithNewObject<IOrbEvent>(guid, [&](IOrbEvent* event) { EventHelpers::AddAction(event, action, scope); });
        return true;
    });
}
