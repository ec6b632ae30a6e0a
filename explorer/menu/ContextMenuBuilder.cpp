// The explorer's entries of the context menu, in the order the user finds them.

#include "explorer/menu/ContextMenuBuilder.h"

#include "explorer/commands/PEHelper.h"
#include "explorer/menu/MenuCommandIds.h"
#include "host/EditingManager.h"
#include "host/EventMenu.h"
#include "host/OrbObjectCategories.h"
#include "host/OrbObjectHelpers.h"
#include "host/ServiceProvider.h"
#include "host/StringHelp.h"
#include "host/WorkUnitHelpers.h"
#include "platform/Canvas.h"

#include <algorithm>
#include <map>

namespace
{
using namespace MenuCommandIds;
using Category = OrbObjectCategories::Category;
using NodeType = PMTreeNode::NodeType;
using Nodes = std::vector<PMTreeNode*>;

template <class Predicate>
bool All(const Nodes& nodes, Predicate predicate)
{
    return !nodes.empty() && std::all_of(nodes.begin(), nodes.end(), predicate);
}

bool Has(const PMTreeNode* node, PMTreeNode::CapabilityTypes bit)
{
    return node && node->Capabilities().test(static_cast<size_t>(bit));
}

Category CategoryOf(PMTreeNode* node)
{
    IOrbObject* object = NodeObject(node);
    return object ? OrbObjectCategories::GetOrbObjectCategory(object) : OrbObjectCategories::None;
}

bool IsOfType(const PMTreeNode* node, NodeType type)
{
    return node && node->Type() == type;
}

const sn::IEditingCapabilityService* Capabilities()
{
    return sn::g_serviceProviderInstance
               ? sn::g_serviceProviderInstance->Get<sn::IEditingCapabilityService>(sn::ServiceId_EditingCapabilities)
               : nullptr;
}

bool IsCapabilityEnabled(unsigned capability)
{
    const sn::IEditingCapabilityService* capabilities = Capabilities();
    return capabilities && capabilities->IsCapabilityEnabled(capability);
}

ObjectContextMenu::MenuItem Entry(const wchar_t* text, bool enabled, uint32_t id, CxCMenu* submenu = nullptr)
{
    ObjectContextMenu::MenuItem item;
    item.text = StringHelp::Localize(text);
    item.enabled = enabled;
    item.checked = false;
    item.id = id;
    item.kind = 1;
    item.submenu = submenu;
    return item;
}

// What the validator of the New Event menus knows of the selection.
struct EventContext
{
    int selectionClass = 0;
    bool allPlayable = false;
    bool noMusicTrack = false;
    bool noPlaylistContainer = false;
    bool allRandomContainers = false;
};

int SelectionClass(const Nodes& nodes)
{
    auto allOfType = [&](NodeType type) { return All(nodes, [type](PMTreeNode* n) { return IsOfType(n, type); }); };
    auto allInCategory = [&](Category c) { return All(nodes, [c](PMTreeNode* n) { return CategoryOf(n) == c; }); };
    if (allOfType(PMTreeNode::SwitchGroup))
        return 1;
    if (allOfType(PMTreeNode::StateGroup))
        return 2;
    if (allOfType(PMTreeNode::Trigger))
        return 3;
    if (allOfType(PMTreeNode::GameParameter))
        return 4;
    if (allOfType(PMTreeNode::Bus))
        return 7;
    if (allOfType(PMTreeNode::AuxBus))
        return 8;
    if (allInCategory(OrbObjectCategories::AudioObjects))
        return 5;
    if (allInCategory(OrbObjectCategories::Music))
        return 6;
    if (allInCategory(OrbObjectCategories::Events))
        return 9;
    return 0;
}

EventMenu::ItemState NewEventValidator(EventMenu::MenuItem v, void* data)
{
    using EventMenu::State_Disabled;
    using EventMenu::State_Enabled;
    using EventMenu::State_Hidden;
    const auto& context = *static_cast<const EventContext*>(data);
    if (v < 24 || v > 65)
        return State_Hidden;
    OrbEventActionEnum::OrbEventActionType type{};
    OrbEventActionEnum::OrbEventActionScope scope{};
    switch (context.selectionClass)
    {
    case 1:
        return v == 53 ? State_Enabled : State_Disabled;
    case 2:
        return v == 50 ? State_Enabled : State_Disabled;
    case 3:
        return v == 58 ? State_Enabled : State_Disabled;
    case 4:
        return v == 61 || v == 62 ? State_Enabled : State_Disabled;
    case 9:
        EventMenu::GetActionTypeData(v, type, scope);
        return type == 30 ? State_Enabled : State_Disabled;
    default:
        break;
    }
    EventMenu::GetActionTypeData(v, type, scope);
    const int a = type;
    const int c = context.selectionClass;
    if (v < 63 && ((0x6424000000000000ull >> v) & 1))
        return State_Disabled;
    if ((c == 5 || c == 6) && (a == 7 || a == 10))
        return State_Disabled;
    if (scope == 2)
        return State_Hidden;
    if ((a == 1 && !context.allPlayable) || (a < 25 && ((0x1000064u >> a) & 1) && !context.noMusicTrack) ||
        (a == 26 && !context.noPlaylistContainer) || (a == 31 && !context.allRandomContainers) ||
        (c == 6 && (a == 9 || a == 12)) || (c == 8 && ((a >= 1 && a <= 6) || a == 24)) || a == 30)
        return State_Disabled;
    return State_Enabled;
}

// Fills both New Event menus; nothing when the selection is of no class that events act on.
void BuildEventMenus(const Nodes& nodes, CxCMenu* perObject, CxCMenu* forAll, MenuCommandMap& commands)
{
    EventContext context;
    context.selectionClass = SelectionClass(nodes);
    if (!context.selectionClass)
        return;
    context.allPlayable = All(nodes, [](PMTreeNode* n) { return Has(n, PMTreeNode::CanPlay); });
    context.noMusicTrack = std::none_of(nodes.begin(), nodes.end(),
                                        [](PMTreeNode* n) { return IsOfType(n, PMTreeNode::MusicTrack); });
    context.noPlaylistContainer = std::none_of(
        nodes.begin(), nodes.end(), [](PMTreeNode* n) { return IsOfType(n, PMTreeNode::MusicPlaylistContainer); });
    context.allRandomContainers = All(nodes, [](PMTreeNode* n) { return IsOfType(n, PMTreeNode::RandomContainer); });
    std::map<unsigned, EventMenu::MenuItem> out;
    EventMenu::AppendItems(perObject, NewEventPerObject, NewEventPerObject + RangeSize - 1, &NewEventValidator,
                           &context, out);
    EventMenu::AppendItems(forAll, NewEventForAll, NewEventForAll + RangeSize - 1, &NewEventValidator, &context, out);
    for (const auto& [id, item] : out)
    {
        OrbEventActionEnum::OrbEventActionType type{};
        OrbEventActionEnum::OrbEventActionScope scope{};
        EventMenu::GetActionTypeData(item, type, scope);
        commands[id] = {MenuCommandEntry::NewEvent, static_cast<uint32_t>(type), static_cast<uint32_t>(scope), {}};
    }
}

// The load or unload entry, when every node is a work unit the user may load or unload, all in
// the same state.
void AppendWorkUnitEntry(const Nodes& nodes, bool playback, std::vector<ObjectContextMenu::MenuItem>& items)
{
    auto unitOf = [](PMTreeNode* n) { return dynamic_cast<IOrbWorkUnit*>(NodeObject(n)); };
    if (nodes.empty() || !unitOf(nodes.front()))
        return;
    const bool loaded = NodeObject(nodes.front())->IsLoaded();
    const bool eligible = All(nodes,
                              [&](PMTreeNode* n)
                              {
                                  IOrbWorkUnit* unit = unitOf(n);
                                  return IsOfType(n, PMTreeNode::WorkUnit) && unit &&
                                         WorkUnitHelpers::CanUnloadWorkUnit(unit) && NodeObject(n)->IsLoaded() == loaded;
                              });
    if (!eligible)
        return;
    const auto* gate = sn::g_serviceProviderInstance ? sn::g_serviceProviderInstance->Get<sn::IWorkUnitGateService>(
                                                           sn::ServiceId_WorkUnitGate)
                                                     : nullptr;
    items.push_back(ObjectContextMenu::k_separator);
    items.push_back(Entry(loaded ? L"Unload Work Unit" : L"Load Work Unit", !playback && !(gate && gate->IsBlocked()),
                          LoadUnloadWorkUnit));
}

CxCMenu* BuildInclusionMenu(ContextMenuParts& parts, unsigned linked, unsigned included)
{
    CxCMenu* menu = parts.NewMenu();
    menu->AppendMenu(MF_STRING, IncludeSelection, StringHelp::Localize(L"Include Selection").c_str());
    menu->AppendMenu(MF_STRING, ExcludeSelection, StringHelp::Localize(L"Exclude Selection").c_str());
    menu->AppendMenu(MF_SEPARATOR);
    menu->AppendMenu(MF_STRING, LinkInclusion, StringHelp::Localize(L"Link").c_str());
    menu->AppendMenu(MF_STRING, UnlinkInclusion, StringHelp::Localize(L"Unlink").c_str());
    if (included)
        menu->CheckMenuRadioItem(IncludeSelection, ExcludeSelection, included, MF_BYCOMMAND);
    if (linked)
        menu->CheckMenuRadioItem(LinkInclusion, UnlinkInclusion, linked, MF_BYCOMMAND);
    return menu;
}

CxCMenu* BuildExpandMenu(ContextMenuParts& parts)
{
    CxCMenu* menu = parts.NewMenu();
    menu->AppendMenu(MF_STRING, ExpandDescendants,
                     StringHelp::Localize(L"Expand Descendants\tViewProject ExplorerExpandDescendants").c_str());
    menu->AppendMenu(MF_STRING, CollapseDescendants,
                     StringHelp::Localize(L"Collapse Descendants\tViewProject ExplorerCollapseDescendants").c_str());
    return menu;
}
} // namespace

ContextMenuParts::~ContextMenuParts()
{
    for (HBITMAP bitmap : bitmaps)
        DeleteObject(bitmap);
    for (CxCMenu* menu : menus)
        delete menu;
}

CxCMenu* ContextMenuParts::NewMenu()
{
    auto* menu = new CxCMenu;
    menus.push_back(menu);
    menu->Attach(::CreatePopupMenu());
    return menu;
}

void BuildContextMenuItems(const Nodes& nodes, ContextMenuParts& parts, MenuCommandMap& commands, uint32_t,
                           unsigned linked, unsigned included)
{
    const size_t n = nodes.size();
    const bool playback = EditingManager::IsInPlayback();
    std::vector<ObjectContextMenu::MenuItem>& items = parts.items;

    CxCMenu* childMenu = parts.NewMenu();
    if (n == 1)
        BuildNewChildMenu(nodes.front(), childMenu, parts, commands);
    PMTreeNode* only = n == 1 ? nodes.front() : nullptr;
    items.push_back(Entry(L"New Child",
                          only && Has(only, PMTreeNode::CanCreateChild) &&
                              (!playback || CanEditDuringPlayback(only)) && childMenu->GetMenuItemCount() > 0,
                          0, childMenu));

    CxCMenu* parentMenu = parts.NewMenu();
    if (n >= 1)
        BuildNewParentMenu(nodes, parentMenu, parts, commands);
    PMTreeNode* firstParent = n && nodes.front() ? nodes.front()->Parent() : nullptr;
    items.push_back(Entry(L"New Parent",
                          firstParent && firstParent->IsAllChildren(nodes) &&
                              (!playback || All(nodes, [](PMTreeNode* x) { return CanEditDuringPlayback(x); })) &&
                              All(nodes, [](PMTreeNode* x) { return Has(x, PMTreeNode::CanInsertParent); }) &&
                              parentMenu->GetMenuItemCount() > 0,
                          0, parentMenu));

    CxCMenu* perObject = parts.NewMenu();
    CxCMenu* forAll = parts.NewMenu();
    BuildEventMenus(nodes, perObject, forAll, commands);
    const bool eventsEnabled =
        All(nodes, [](PMTreeNode* x) { return Has(x, PMTreeNode::CanCreateEvent); }) && perObject->GetMenuItemCount() > 0;
    if (n == 1)
        items.push_back(Entry(L"New Event", eventsEnabled, 0, perObject));
    else if (n >= 2)
    {
        items.push_back(Entry(L"New Event (One Event per Object)", eventsEnabled, 0, perObject));
        items.push_back(Entry(L"New Event (Single Event for all Objects)", eventsEnabled, 0, forAll));
    }

    items.push_back(ObjectContextMenu::k_separator);
    items.push_back(Entry(L"Delete\tDelete", All(nodes, [](PMTreeNode* x) { return CanDeleteNode(x); }), Delete));
    if (std::any_of(nodes.begin(), nodes.end(), [](PMTreeNode* x) { return CanRenameNode(x); }))
    {
        if (n == 1)
            items.push_back(Entry(L"Rename\tF2", true, Rename));
        else
            items.push_back(Entry(L"Batch Rename...\tShowBatchRename", true, BatchRename));
    }

    const bool audio = All(nodes,
                           [](PMTreeNode* x)
                           {
                               const Category c = CategoryOf(x);
                               return c == OrbObjectCategories::AudioObjects || c == OrbObjectCategories::Music;
                           });
    const bool soundBanks = All(nodes, [](PMTreeNode* x) { return CategoryOf(x) == OrbObjectCategories::SoundBanks; });
    if (audio || soundBanks)
        items.push_back(ObjectContextMenu::k_separator);
    if (audio)
        items.push_back(Entry(L"Import Audio Files...\tShowAudioFilesImporter",
                              n == 1 && OrbObjectHelpers::CanImportAudio(NodeObject(nodes.front())) && !playback,
                              ImportAudioFiles));
    if (soundBanks)
        items.push_back(Entry(L"Import SoundBank Definition...",
                              n == 1 && CategoryOf(nodes.front()) == OrbObjectCategories::SoundBanks,
                              ImportSoundBankDefinition));

    if (IsCapabilityEnabled(20))
        AppendWorkUnitEntry(nodes, playback, items);

    if (IsCapabilityEnabled(17))
    {
        items.push_back(ObjectContextMenu::k_separator);
        items.push_back(Entry(L"Inclusion",
                              All(nodes, [](PMTreeNode* x) { return Has(x, PMTreeNode::CanInclude); }) && !playback, 0,
                              BuildInclusionMenu(parts, linked, included)));
    }
    items.push_back(ObjectContextMenu::k_separator);
    items.push_back(Entry(L"Expand Options", true, 0, BuildExpandMenu(parts)));
}
