// Creation requests from the toolbar and the context menu. The host's command of that name runs
// when the host knows it; otherwise the object is created here, as a child or a parent, from a
// preset, or as a sound with a source plug-in.

#include "explorer/DlgProjectExplorer.h"

#include "explorer/commands/PEHelper.h"
#include "explorer/menu/MenuCommandIds.h"
#include "host/AudioSourcesHelpers.h"
#include "host/EditingManager.h"
#include "host/OrbObjNotify.h"
#include "host/PresetManager.h"
#include "host/ProjectManager.h"
#include "host/ServiceProvider.h"
#include "host/StringHelp.h"
#include "host/Undo.h"
#include "host/Utf8.h"
#include "platform/WindowSystem.h"

void DlgProjectExplorer::AddNode(PMTreeNode::NodeType type, bool parent)
{
    const CStdStr<wchar_t> name = PEHelper::GenerateCommandNameFromNodeType(type, parent);
    const ROString id(Utf8::FromWide(PEHelper::GenerateCommandIdFromName(name, L"Project Explorer")));
    auto* commands = sn::g_serviceProviderInstance
                         ? sn::g_serviceProviderInstance->Get<sn::CommandService>(sn::ServiceId_Commands)
                         : nullptr;
    if (commands && commands->HasCommand(id))
    {
        commands->ExecuteCommand(id, 0, 0, 0, 0, 0);
        return;
    }
    if (parent)
        AddParentToItem(type, nullptr);
    else
        AddChildToItem(type, true, nullptr);
}

void DlgProjectExplorer::OnButtonClicked(PMTreeNode::NodeType type)
{
    AddNode(type, GetKeyState(VK_SHIFT) < 0);
}

void DlgProjectExplorer::OnAddNode(UINT id)
{
    using namespace MenuCommandIds;
    if (InRange(id, NewParent))
        return AddNode(static_cast<PMTreeNode::NodeType>(id - NewParent), true);
    if (InRange(id, NewChild))
        return AddNode(static_cast<PMTreeNode::NodeType>(id - NewChild), false);
    if (InRange(id, NewChildPreset))
        return CreateWithPreset(id, MenuCommandEntry::ChildFromPreset, L"New Child with Preset",
                                [this](PMTreeNode::NodeType type, GUID* guid) { return AddChildToItem(type, true, guid); });
    if (InRange(id, NewParentPreset))
        return CreateWithPreset(id, MenuCommandEntry::ParentFromPreset, L"New Parent with Preset",
                                [this](PMTreeNode::NodeType type, GUID* guid) { return AddParentToItem(type, guid); });

    auto entry = m_menuCommands.find(id);
    if (entry == m_menuCommands.end())
        return;
    const MenuCommandEntry& command = entry->second;
    switch (command.kind)
    {
    case MenuCommandEntry::EffectChild:
        AddEffectChildToItem(command.value, OrbObjectType_Effect);
        break;
    case MenuCommandEntry::EventChildWithAction:
        AddEventChildToItem(static_cast<OrbEventActionEnum::OrbEventActionType>(command.value),
                            static_cast<OrbEventActionEnum::OrbEventActionScope>(command.scope));
        break;
    case MenuCommandEntry::AudioDeviceChild:
        AddAudioDeviceChildToItem(command.value);
        break;
    case MenuCommandEntry::SecondEffectChild:
        AddEffectChildToItem(command.value, OrbObjectType_MixerPlugin);
        break;
    default:
        break;
    }
}

void DlgProjectExplorer::CreateWithPreset(UINT id, uint32_t kind, const wchar_t* undoName,
                                          const std::function<bool(PMTreeNode::NodeType, GUID*)>& create)
{
    AutoComplexUndo undo(StringHelp::Localize(undoName).c_str(), false);
    undo.Open(nullptr);
    auto entry = m_menuCommands.find(id);
    if (entry == m_menuCommands.end() || entry->second.kind != kind)
        return;
    // The entry may go with the next context menu; the preset stays with the project.
    const CSmartPtr<IOrbObject> preset = entry->second.preset;
    GUID guid = GUID_NULL;
    create(static_cast<PMTreeNode::NodeType>(entry->second.value), &guid);
    CSmartPtr<IOrbObject> object;
    object.Attach(priv::LookupOrbObject(guid));
    if (auto* apply = dynamic_cast<IOrbPreset*>(preset.Get()); apply && object)
        apply->ApplyTo(object);
}

void DlgProjectExplorer::OnAddSource(UINT id)
{
    auto entry = m_menuCommands.find(id);
    if (entry == m_menuCommands.end() || EditingManager::IsInPlayback())
        return;
    const uint32_t pluginId = entry->second.value;
    AutoComplexUndo undo(StringHelp::Localize(L"New Source").c_str(), false);
    undo.Open(nullptr);

    GUID guid = GUID_NULL;
    AddChildToItem(PMTreeNode::SoundSFX, false, &guid);
    CSmartPtr<IOrbObject> sound;
    sound.Attach(priv::LookupOrbObject(guid));
    AudioSourcesHelpers::CreateSourcePlugin(pluginId, sound, AudioSourcesHelpers::LanguageIndependent);

    m_tree.SelectAll(false);
    if (HTREEITEM item = m_tree.GetItemWithGUID(guid, TVI_ROOT))
        m_tree.SelectItem(item);

    CSmartPtr<IOrbObject> source;
    auto* asSound = dynamic_cast<IOrbSound*>(sound.Get());
    const GUID platform = ProjectManager::m_pInstance ? ProjectManager::m_pInstance->GetCurrentPlatform() : GUID_NULL;
    if (asSound && asSound->GetActiveSource(AudioSourcesHelpers::LanguageIndependent, platform, source))
        OrbObjNotify::FireInspectNotification(std::vector<IOrbObject*>{source.Get()}, -1, -1, false,
                                              NotifyHelper::InspectTab_Default, false, true, true, nullptr);
}
