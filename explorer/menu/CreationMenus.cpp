// The New Child and New Parent submenus: types, presets and plug-ins.

#include "explorer/commands/PEHelper.h"
#include "explorer/menu/ContextMenuBuilder.h"
#include "explorer/menu/MenuCommandIds.h"
#include "host/EffectHelpersUI.h"
#include "host/EventMenu.h"
#include "host/ObjectIcons.h"
#include "host/PresetManager.h"
#include "host/ServiceProvider.h"
#include "host/StringHelp.h"
#include "host/TreeNodeWithObject.h"
#include "platform/Canvas.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <set>

namespace
{
using namespace MenuCommandIds;
using NodeType = PMTreeNode::NodeType;

constexpr uint32_t ExternalSourceClassId = 0x390010;

const sn::IEditingCapabilityService* Capabilities()
{
    return sn::g_serviceProviderInstance
               ? sn::g_serviceProviderInstance->Get<sn::IEditingCapabilityService>(sn::ServiceId_EditingCapabilities)
               : nullptr;
}

bool IsTypeAllowed(OrbObjectType type)
{
    const sn::IEditingCapabilityService* capabilities = Capabilities();
    return capabilities && capabilities->IsObjectTypeAllowed(type);
}

// Appends the presets of type t to the Presets popup while the counter stays inside its range.
void AppendPresets(NodeType t, CxCMenu* presets, uint32_t first, uint32_t kind, unsigned& counter,
                   ContextMenuParts& parts, MenuCommandMap& commands)
{
    if (counter >= RangeSize || !IPresetManager::m_pInstance)
        return;
    std::vector<IOrbObject*> found;
    if (IPresetManager::m_pInstance->GetPresets(TreeNodeWithObject::ConvertObjectType(t), found))
        for (IOrbObject* preset : found)
        {
            if (counter >= RangeSize)
                break;
            if (TreeNodeWithObject::GetNodeType(preset) != t)
                continue;
            const uint32_t id = first + counter++;
            presets->AppendMenu(MF_STRING, id, preset->GetName().c_str());
            SetMenuItemObjectIcon(presets, t, parts.bitmaps);
            commands[id] = {kind, static_cast<uint32_t>(t), 0, CSmartPtr<IOrbObject>(preset)};
        }
    for (IOrbObject* preset : found)
        preset->Release();
}

void AppendPresetsPopup(CxCMenu* menu, CxCMenu* presets)
{
    menu->AppendMenu(MF_SEPARATOR);
    const UINT state = presets->GetMenuItemCount() > 0 ? 0u : (MF_GRAYED | MF_DISABLED);
    menu->AppendMenu(MF_POPUP | state, reinterpret_cast<UINT_PTR>(presets->GetSafeHmenu()),
                     StringHelp::Localize(L"Presets").c_str());
}

template <uint32_t Kind>
void AddPluginEntry(CMenu* menu, const PluginInfo& plugin, unsigned id, void* user, bool)
{
    menu->AppendMenu(MF_STRING, id, plugin.Name().c_str());
    (*static_cast<MenuCommandMap*>(user))[id] = {Kind, plugin.ClassID(), 0, {}};
}

void AddPlugins(CxCMenu* menu, std::initializer_list<PluginInfo::PluginType> types, uint32_t first,
                EffectHelpersUI::AddEffectCallback callback, MenuCommandMap& commands)
{
    EffectHelpers::EffectPluginSet plugins;
    for (PluginInfo::PluginType type : types)
        EffectHelpers::GetPossibleEffectPlugins(type, nullptr, plugins, GUID_NULL);
    EffectHelpersUI::AddEffectsInMenu(menu, first, plugins, true, callback, &commands);
}

// Under an event, every action is offered; only values that are no action are left out.
EventMenu::ItemState ActionChildValidator(EventMenu::MenuItem item, void*)
{
    return item < 23 || item > 65 ? EventMenu::State_Hidden : EventMenu::State_Enabled;
}
} // namespace

void SetMenuItemObjectIcon(CxCMenu* menu, NodeType type, std::vector<HBITMAP>& bitmaps)
{
    const sn::theme::Bitmap* icon = nullptr;
    switch (type)
    {
    case PMTreeNode::SequenceContainer:
        icon = ObjectIcons::GetObjectIcon(ObjectIcons::IconType(3), false);
        break;
    case PMTreeNode::SoundVoice:
        icon = ObjectIcons::GetObjectIcon(ObjectIcons::IconType(9), false);
        break;
    case PMTreeNode::PhysicalFolder:
        icon = ObjectIcons::GetObjectIcon(ObjectIcons::IconType(51), false);
        break;
    default:
        icon = ObjectIcons::GetObjectIcon(TreeNodeWithObject::ConvertObjectType(type), false);
        break;
    }
    if (!icon)
        return;
    HBITMAP bitmap = nullptr;
    if (GdipCreateHBITMAPFromBitmap(reinterpret_cast<GpBitmap*>(const_cast<sn::theme::Bitmap*>(icon)), &bitmap,
                                    0xFF000000) != Ok)
        return;
    bitmaps.push_back(bitmap);
    MENUITEMINFOW info;
    info.cbSize = sizeof(MENUITEMINFOW);
    info.fMask = MIIM_BITMAP;
    info.hbmpItem = bitmap;
    menu->SetMenuItemInfo(menu->GetMenuItemCount() - 1, &info, TRUE);
}

void BuildNewChildMenu(PMTreeNode* node, CxCMenu* childMenu, ContextMenuParts& parts, MenuCommandMap& commands)
{
    CxCMenu* presets = parts.NewMenu();
    unsigned counter = 0;
    bool offerSources = false;
    const std::set<NodeType>& children = node->PossibleChildType();
    for (NodeType t : children)
    {
        if (t == PMTreeNode::SourcePlugin || t == PMTreeNode::EffectPlugin || t == PMTreeNode::MixerPlugin ||
            t == PMTreeNode::AudioDevice)
            continue;
        const OrbObjectType objectType = TreeNodeWithObject::ConvertObjectType(t);
        if (objectType == OrbObjectType_Sound)
            offerSources = true;
        if (!IsTypeAllowed(objectType))
            continue;
        CStdStr<wchar_t> text = PMTreeNode::GetNodeTypeName(t);
        AppendCreateCommandShortcut(t, text, false);
        childMenu->AppendMenu(MF_STRING, NewChild + t, text.c_str());
        SetMenuItemObjectIcon(childMenu, t, parts.bitmaps);
        AppendPresets(t, presets, NewChildPreset, MenuCommandEntry::ChildFromPreset, counter, parts, commands);
    }
    AppendPresetsPopup(childMenu, presets);

    if (offerSources)
    {
        AddPlugins(childMenu, {PluginInfo::PluginType_Source}, NewSource + 1,
                   &AddPluginEntry<MenuCommandEntry::EffectChild>, commands);
        const sn::IEditingCapabilityService* capabilities = Capabilities();
        if (capabilities && capabilities->IsCapabilityEnabled(10))
        {
            childMenu->AppendMenu(MF_SEPARATOR);
            childMenu->AppendMenu(MF_STRING, NewSource, StringHelp::Localize(L"Sonarium External Source").c_str());
            commands[NewSource] = {MenuCommandEntry::EffectChild, ExternalSourceClassId, 0, {}};
        }
    }
    if (children.count(PMTreeNode::EffectPlugin))
        AddPlugins(childMenu, {PluginInfo::PluginType_Effect, PluginInfo::PluginType_EffectShared}, Base + 1500,
                   &AddPluginEntry<MenuCommandEntry::EffectChild>, commands);
    if (children.count(PMTreeNode::MixerPlugin))
        AddPlugins(childMenu, {PluginInfo::PluginType_Mixer}, Base + 1500,
                   &AddPluginEntry<MenuCommandEntry::SecondEffectChild>, commands);
    if (children.count(PMTreeNode::AudioDevice))
        AddPlugins(childMenu, {PluginInfo::PluginType_AudioDevice}, Base + 3500,
                   &AddPluginEntry<MenuCommandEntry::AudioDeviceChild>, commands);
    if (children.count(PMTreeNode::Event))
    {
        childMenu->AppendMenu(MF_SEPARATOR);
        std::map<unsigned, EventMenu::MenuItem> out;
        EventMenu::AppendItems(childMenu, Base + 2000, Base + 2499, &ActionChildValidator, nullptr, out);
        for (const auto& [id, item] : out)
        {
            OrbEventActionEnum::OrbEventActionType type{};
            OrbEventActionEnum::OrbEventActionScope scope{};
            EventMenu::GetActionTypeData(item, type, scope);
            commands[id] = {MenuCommandEntry::EventChildWithAction, static_cast<uint32_t>(type),
                            static_cast<uint32_t>(scope), {}};
        }
    }
}

void BuildNewParentMenu(const std::vector<PMTreeNode*>& nodes, CxCMenu* parentMenu, ContextMenuParts& parts,
                        MenuCommandMap& commands)
{
    CxCMenu* presets = parts.NewMenu();
    PMTreeNode* parent = nodes.empty() || !nodes.front() ? nullptr : nodes.front()->Parent();
    std::set<NodeType> candidates;
    for (size_t i = 0; i < nodes.size(); ++i)
    {
        std::set<NodeType> own;
        if (nodes[i])
            for (NodeType t : nodes[i]->PossibleParentType())
                if (IsTypeAllowed(TreeNodeWithObject::ConvertObjectType(t)) && nodes[i]->AcceptsParentType(t) &&
                    parent && parent->PossibleChildType().count(t))
                    own.insert(t);
        if (i == 0)
            candidates = std::move(own);
        else
        {
            std::set<NodeType> both;
            std::set_intersection(candidates.begin(), candidates.end(), own.begin(), own.end(),
                                  std::inserter(both, both.end()));
            candidates = std::move(both);
        }
    }
    unsigned counter = 0;
    for (NodeType t : candidates)
    {
        CStdStr<wchar_t> text = PMTreeNode::GetNodeTypeName(t);
        AppendCreateCommandShortcut(t, text, true);
        parentMenu->AppendMenu(MF_STRING, NewParent + t, text.c_str());
        SetMenuItemObjectIcon(parentMenu, t, parts.bitmaps);
        AppendPresets(t, presets, NewParentPreset, MenuCommandEntry::ParentFromPreset, counter, parts, commands);
    }
    AppendPresetsPopup(parentMenu, presets);
}
