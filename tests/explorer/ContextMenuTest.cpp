// The tree's right-click menu: which entries a selection gets, in what state, what the New Child
// and New Parent submenus offer, and that each chosen entry reaches its command and nothing else.

#include "CreationFixture.h"

#include "explorer/menu/MenuCommandIds.h"
#include "host/ObjectContextMenu.h"
#include "platform/Canvas.h"
#include "platform/Edit.h"
#include "sonarium/core/plugins/PluginRegistry.h"
#include "sonarium/core/model/ProjectEdit.h"

#include <deque>

using namespace creation;
namespace Ids = MenuCommandIds;

namespace
{
// Shows menus to nobody: keeps each one as lines ("Text [shortcut] >", "(disabled)", "(radio)",
// a submenu's entries indented) and answers with the entry at a queued path.
class MenuRecorder : public IMenuPresenter
{
public:
    MenuRecorder() : m_previous(MenuSystem::GetPresenter()) { MenuSystem::SetPresenter(this); }
    ~MenuRecorder() override { MenuSystem::SetPresenter(m_previous); }

    UINT_PTR TrackPopupMenu(HMENU menu, POINT, HWND) override
    {
        ++shown;
        lines.clear();
        ids.clear();
        Describe(menu, L"");
        const std::wstring path = choices.empty() ? std::wstring() : choices.front();
        if (!choices.empty())
            choices.pop_front();
        const auto found = ids.find(path);
        return found == ids.end() ? 0 : found->second;
    }

    std::deque<std::wstring> choices;
    std::vector<std::wstring> lines;
    std::map<std::wstring, UINT_PTR> ids; // by path of texts, for enabled entries
    std::map<std::wstring, HBITMAP> icons;
    int shown = 0;

private:
    void Describe(HMENU menu, const std::wstring& prefix)
    {
        const std::wstring indent(prefix.empty() ? 0 : 2 * (std::count(prefix.begin(), prefix.end(), L'/')), L' ');
        for (const MenuItem& item : *MenuSystem::Items(menu))
        {
            if (item.IsSeparator())
            {
                lines.push_back(indent + L"-");
                continue;
            }
            std::wstring line = indent + item.text;
            if (const size_t tab = line.find(L'\t'); tab != std::wstring::npos)
                line.replace(tab, 1, L" [") += L"]";
            const std::wstring path = prefix + item.text.substr(0, item.text.find(L'\t'));
            line += item.IsPopup() ? L" >" : L"";
            line += item.IsEnabled() ? L"" : L" (disabled)";
            line += item.IsChecked() ? L" (radio)" : L"";
            lines.push_back(line);
            icons[path] = item.bitmap;
            if (item.IsPopup())
                Describe(item.submenu, path + L"/");
            else if (item.IsEnabled())
                ids[path] = item.id;
        }
    }

    IMenuPresenter* m_previous;
};
} // namespace

class ContextMenuTest : public CreationTest
{
protected:
    // A right click on the row's label (or, with an offset, elsewhere on its line).
    void RightClick(const std::wstring& path, int dx = 0)
    {
        HTREEITEM item = Reveal(m_view, path);
        CPoint point = LabelCenter(m_view, item);
        point.x += dx;
        m_view->GetTreeCtrl().RightClick(point, 0);
        WindowSystem::Get().RunUntilIdle();
    }

    // The lines from the entry with that text to the next entry of the same depth.
    std::vector<std::wstring> Submenu(const std::wstring& entry)
    {
        std::vector<std::wstring> out;
        bool inside = false;
        for (const std::wstring& line : m_menus.lines)
        {
            if (inside && line.rfind(L"  ", 0) != 0)
                break;
            if (inside)
                out.push_back(line.substr(2));
            if (line.rfind(entry, 0) == 0)
                inside = true;
        }
        return out;
    }

    std::vector<std::wstring> TopLevel()
    {
        std::vector<std::wstring> out;
        for (const std::wstring& line : m_menus.lines)
            if (line.rfind(L"  ", 0) != 0)
                out.push_back(line);
        return out;
    }

    MenuRecorder m_menus;
};

TEST_F(ContextMenuTest, ARightClickOffTheLabelShowsNothingAndOnAnUnselectedRowSelectsItFirst)
{
    Select({kAmbience + L"/Rain"});
    RightClick(kAmbience + L"/Wind", -400); // in the indentation, left of the row's icon
    EXPECT_EQ(m_menus.shown, 0);
    m_view->GetTreeCtrl().RightClick(CPoint(5, 2000), 0);
    EXPECT_EQ(m_menus.shown, 0) << "below the last row";

    RightClick(kAmbience + L"/Wind");
    EXPECT_EQ(m_menus.shown, 1);
    std::vector<IOrbObject*> selected;
    m_view->GetSelectedObjects(selected);
    ASSERT_EQ(selected.size(), 1u);
    EXPECT_EQ(selected.front(), At(kAmbience + L"/Wind"));

    // A right click inside a multi-selection keeps it: the menu is for both rows.
    Select({kAmbience + L"/Rain", kAmbience + L"/Wind"});
    RightClick(kAmbience + L"/Rain");
    const std::vector<std::wstring> top = TopLevel();
    ASSERT_GE(top.size(), 15u);
    EXPECT_EQ(std::vector<std::wstring>(top.begin(), top.begin() + 15), (std::vector<std::wstring>{
                              L"New Child > (disabled)", L"New Parent >", L"New Event (One Event per Object) >",
                              L"New Event (Single Event for all Objects) >", L"-", L"Delete [Delete]",
                              L"Batch Rename... [ShowBatchRename]", L"-",
                              L"Import Audio Files... [ShowAudioFilesImporter] (disabled)", L"-", L"Inclusion >", L"-",
                              L"Expand Options >", L"-", L"Inspect"}));
}

TEST_F(ContextMenuTest, ARightClickedRowBecomesTheFocusedRowThatShiftClicksExtendFrom)
{
    // Rain, Thunder and Wind are adjacent rows.
    Select({kAmbience + L"/Rain"});
    RightClick(kAmbience + L"/Thunder");
    EXPECT_EQ(m_view->GetTreeCtrl().GetFocusedItem(), ItemOf(m_view, kAmbience + L"/Thunder"));
    ClickOn(m_view, kAmbience + L"/Wind", MK_SHIFT);
    std::vector<IOrbObject*> selected;
    m_view->GetSelectedObjects(selected);
    EXPECT_EQ(selected.size(), 2u) << "from the right-clicked row to the shift-clicked one, not from the row before";
    EXPECT_FALSE(m_view->GetTreeCtrl().IsSelected(ItemOf(m_view, kAmbience + L"/Rain")));
}

TEST_F(ContextMenuTest, OneRowOffersRenameAndTheCreationSubmenusWithIconsShortcutsAndPresets)
{
    RightClick(kAmbience);
    const std::vector<std::wstring> top = TopLevel();
    ASSERT_GE(top.size(), 7u);
    EXPECT_EQ(top[0], L"New Child >");
    EXPECT_EQ(top[2], L"New Event >");
    EXPECT_EQ(top[5], L"Rename [F2]");

    // Types in ascending order of node type, then the presets of those types, numbered on.
    const std::vector<std::wstring> child = Submenu(L"New Child");
    ASSERT_FALSE(child.empty());
    EXPECT_NE(std::find(child.begin(), child.end(), L"Random Container"), child.end());
    const auto presets = std::find(child.begin(), child.end(), L"Presets >");
    ASSERT_NE(presets, child.end());
    EXPECT_EQ(*(presets - 1), L"-");
    EXPECT_EQ(std::vector<std::wstring>(presets + 1, presets + 3),
              (std::vector<std::wstring>{L"  Shuffle", L"  Loop"}));
    EXPECT_EQ(m_menus.ids[L"New Child/Presets/Shuffle"], Ids::NewChildPreset);
    EXPECT_EQ(m_menus.ids[L"New Child/Presets/Loop"], Ids::NewChildPreset + 1) << "one counter for all types";
    EXPECT_EQ(m_menus.ids[L"New Child/Random Container"], Ids::NewChild + PMTreeNode::RandomContainer);
    EXPECT_TRUE(m_menus.icons[L"New Child/Random Container"]);
    EXPECT_TRUE(m_menus.icons[L"New Child/Presets/Loop"]);
    EXPECT_EQ(LiveBitmapCount(), 0u) << "the icons are freed once the menu is over";

    // The New Parent menu offers what may hold the row, tested against its parent.
    const std::vector<std::wstring> parent = Submenu(L"New Parent");
    EXPECT_NE(std::find(parent.begin(), parent.end(), L"Folder"), parent.end());

    // Choosing from the menu creates, as the toolbar does.
    m_menus.choices = {L"New Child/Presets/Shuffle"};
    RightClick(kAmbience);
    PressKey(VK_ESCAPE);
    EXPECT_EQ(ChildNames(kAmbience).back(), L"New Random Container");
    EXPECT_EQ(LastUndo(), L"New Child with Preset");
}

TEST_F(ContextMenuTest, PresetsBeyondTheFiveHundredthAreLeftOut)
{
    std::wstring project = L"platform Desktop\n";
    for (int i = 0; i < 510; ++i)
        project += L"preset SoundSFX P" + std::to_wstring(i) + L" | Loop=yes\n";
    project += L"AudioObjects\n  Default Work Unit : WorkUnit\n    Ambience : ActorMixer\n";
    Open(project.c_str());
    m_view = OpenView({OrbObjectCategories::AudioObjects});
    RightClick(kAmbience);
    EXPECT_EQ(m_menus.ids.count(L"New Child/Presets/P499"), 1u);
    EXPECT_EQ(m_menus.ids[L"New Child/Presets/P499"], Ids::NewChildPreset + 499);
    EXPECT_EQ(m_menus.ids.count(L"New Child/Presets/P500"), 0u);
}

TEST_F(ContextMenuTest, InclusionMarksFollowTheSelectionAndAMixedOneShowsNone)
{
    Select({kAmbience + L"/Rain", kAmbience + L"/Wind"});
    RightClick(kAmbience + L"/Rain");
    EXPECT_EQ(Submenu(L"Inclusion"), (std::vector<std::wstring>{L"Include Selection (radio)", L"Exclude Selection",
                                                                  L"-", L"Link (radio)", L"Unlink"}));
    sn::ProjectEdit::SetIncluded(At(kAmbience + L"/Rain"), GUID_NULL, false);
    RightClick(kAmbience + L"/Rain");
    EXPECT_EQ(Submenu(L"Inclusion"),
              (std::vector<std::wstring>{L"Include Selection", L"Exclude Selection", L"-", L"Link (radio)", L"Unlink"}));

    m_menus.choices = {L"Inclusion/Exclude Selection"};
    RightClick(kAmbience + L"/Rain");
    EXPECT_EQ(Ids::ExcludeSelection, m_view->IsIncluded());

    HostRef().Capabilities().SetCapabilityEnabled(17, false);
    RightClick(kAmbience + L"/Rain");
    EXPECT_TRUE(Submenu(L"Inclusion").empty()) << "no Inclusion entry without its capability";
}

TEST_F(ContextMenuTest, RenameDependsOnTheCountAndNothingRenamableShowsNeither)
{
    Select({L"AudioObjects"});
    RightClick(L"AudioObjects");
    for (const std::wstring& line : TopLevel())
        EXPECT_TRUE(line.find(L"Rename") == std::wstring::npos) << "a category root cannot be renamed";

    m_menus.choices = {L"Rename"};
    RightClick(kAmbience + L"/Rain");
    ASSERT_TRUE(Editor()) << "Rename opens the label editor on the row";
    EXPECT_EQ(EditedName(), L"Rain");
    PressKey(VK_ESCAPE);
}

TEST_F(ContextMenuTest, PlugInsSourcesAndEventActionsComeFromTheHostsLists)
{
    // An output work unit lists the host's devices after its types and its Presets popup.
    RightClick(L"Busses/Outputs");
    std::vector<std::wstring> child = Submenu(L"New Child");
    const auto presets = std::find(child.begin(), child.end(), L"Presets > (disabled)");
    ASSERT_NE(presets, child.end()) << "no preset of those types: a grayed popup";
    ASSERT_NE(presets + 1, child.end());
    const UINT_PTR device = m_menus.ids[L"New Child/" + *(presets + 1)];
    EXPECT_EQ(device, Ids::Base + 3500);
    EXPECT_EQ(m_view->MenuCommands()[static_cast<uint32_t>(device)].kind, MenuCommandEntry::AudioDeviceChild);

    // A sound's parent lists the source plug-ins and, with capability 10, the external source.
    RightClick(kAmbience);
    child = Submenu(L"New Child");
    EXPECT_NE(std::find(child.begin(), child.end(), L"Sonarium External Source"), child.end());
    EXPECT_EQ(m_menus.ids[L"New Child/Sonarium External Source"], Ids::NewSource);
    HostRef().Capabilities().SetCapabilityEnabled(10, false);
    RightClick(kAmbience);
    child = Submenu(L"New Child");
    EXPECT_EQ(std::find(child.begin(), child.end(), L"Sonarium External Source"), child.end());

    // Under an event folder: the actions a new event may start with.
    RightClick(L"Events/Gameplay/Combat");
    child = Submenu(L"New Child");

    EXPECT_NE(std::find(child.begin(), child.end(), L"Play"), child.end());
    EXPECT_EQ(m_menus.ids[L"New Child/Play"], Ids::Base + 2000);
    const MenuCommandEntry& play = m_view->MenuCommands()[Ids::Base + 2000];
    EXPECT_EQ(play.kind, MenuCommandEntry::EventChildWithAction);
    EXPECT_EQ(play.value, static_cast<uint32_t>(OrbEventActionEnum::ActionType_Play));
}

TEST_F(ContextMenuTest, TheEventMenusOfSeveralObjectsAreEnabledByTheOnePerObjectMenu)
{
    Select({kAmbience + L"/Rain", kAmbience + L"/Wind"});
    m_menus.choices = {L"New Event (Single Event for all Objects)/Play"};
    RightClick(kAmbience + L"/Rain");
    const std::vector<std::wstring> forAll = Submenu(L"New Event (Single Event for all Objects)");
    EXPECT_EQ(forAll, Submenu(L"New Event (One Event per Object)")) << "the same actions, the same states";
    for (const std::wstring& line : forAll)
        EXPECT_EQ(line.find(L"Except"), std::wstring::npos) << "actions on all but the target are hidden";
    EXPECT_EQ(m_menus.ids[L"New Event (Single Event for all Objects)/Play"], Ids::NewEventForAll);
}

TEST_F(ContextMenuTest, EveryCommandReachesItsHandlerAndAHostEntryNone)
{
    // The host's own entries and a dismissed menu change nothing in the project.
    const size_t before = ChildNames(kAmbience).size();
    Select({kAmbience + L"/Rain"});
    m_view->DispatchMenuCommand(ObjectContextMenu::Command_Copy);
    m_view->DispatchMenuCommand(0);
    m_view->DispatchMenuCommand(Ids::Base + 4600);
    m_view->DispatchMenuCommand(Ids::Base + 5600);
    EXPECT_EQ(ChildNames(kAmbience).size(), before);
    EXPECT_EQ(UndoSteps(), 0u);

    m_menus.choices = {L"Expand Options/Expand Descendants"};
    RightClick(kUnit);
    EXPECT_TRUE(m_view->GetTreeCtrl().GetItemState(ItemOf(m_view, kAmbience), TVIS_EXPANDED) & TVIS_EXPANDED);
    m_menus.choices = {L"Expand Options/Collapse Descendants"};
    RightClick(kUnit);
    EXPECT_FALSE(m_view->GetTreeCtrl().GetItemState(ItemOf(m_view, kUnit), TVIS_EXPANDED) & TVIS_EXPANDED);

    m_menus.choices = {L"New Child/Random Container"};
    RightClick(kAmbience);
    PressKey(VK_ESCAPE);
    EXPECT_EQ(ChildNames(kAmbience).size(), before + 1);

    m_menus.choices = {L"Delete"};
    RightClick(kAmbience + L"/Thunder");
    const std::vector<std::wstring> left = ChildNames(kAmbience);
    EXPECT_EQ(std::find(left.begin(), left.end(), L"Thunder"), left.end());
}

TEST_F(ContextMenuTest, TheKeyboardOpensTheMenuOfTheFocusedRow)
{
    Select({kAmbience + L"/Rain"});
    m_view->GetTreeCtrl().KeyPress(VK_APPS, 0);
    EXPECT_EQ(m_menus.shown, 1);
    m_view->GetTreeCtrl().KeyPress(VK_F10, MK_SHIFT);
    EXPECT_EQ(m_menus.shown, 2);
    m_view->GetTreeCtrl().KeyPress(VK_F10, 0);
    EXPECT_EQ(m_menus.shown, 2) << "F10 alone is not the menu key";
}

TEST_F(ContextMenuTest, EachKindOfSelectionGetsTheEventActionsThatApplyToIt)
{
    Open(LR"(
platform Desktop
AudioObjects
  Default Work Unit : WorkUnit
    Rain : SoundSFX
    Birds : RandomContainer
Busses
  Mixing : WorkUnit
    Main : Bus
Music
  Default Work Unit : WorkUnit
    Theme : MusicSegment
Events
  Default Work Unit : WorkUnit
    Play_Rain : Event
)");
    m_view = OpenView({OrbObjectCategories::AudioObjects, OrbObjectCategories::Busses, OrbObjectCategories::Music,
                       OrbObjectCategories::Events});
    // "enabled", "disabled" or "hidden" for an action of the New Event menu of a row.
    auto state = [&](const std::wstring& row, const std::wstring& action)
    {
        Select({row});
        RightClick(row);
        for (const std::wstring& line : Submenu(L"New Event"))
        {
            const size_t start = line.find_first_not_of(L' ');
            if (line.compare(start, action.size() + 1, action + L" ") == 0 || line.substr(start) == action)
                return std::wstring(line.find(L"(disabled)") == std::wstring::npos ? L"enabled" : L"disabled");
        }
        return std::wstring(L"hidden");
    };
    const std::wstring rain = L"AudioObjects/Default Work Unit/Rain";
    const std::wstring birds = L"AudioObjects/Default Work Unit/Birds";
    const std::wstring event = L"Events/Default Work Unit/Play_Rain";
    EXPECT_EQ(state(rain, L"Play"), L"enabled");
    EXPECT_EQ(state(rain, L"Set Pitch"), L"enabled");
    EXPECT_EQ(state(rain, L"Post Event"), L"disabled");
    EXPECT_EQ(state(rain, L"Bypass Bus Effects"), L"disabled");
    EXPECT_EQ(state(rain, L"Reset Random History"), L"disabled");
    EXPECT_EQ(state(rain, L"Stop All Except"), L"hidden");
    EXPECT_EQ(state(birds, L"Reset Random History"), L"enabled");
    EXPECT_EQ(state(L"Music/Default Work Unit/Theme", L"Set Pitch"), L"disabled");
    EXPECT_EQ(state(L"Busses/Mixing/Main", L"Bypass Bus Effects"), L"enabled");
    EXPECT_EQ(state(event, L"Play"), L"disabled");
    EXPECT_EQ(state(event, L"Post Event"), L"enabled") << "an event's menu offers an event that posts it";

    // Chosen: a new event whose action posts the selected one.
    m_menus.choices = {L"New Event/Post Event"};
    RightClick(event);
    const std::vector<std::wstring> events = ChildNames(L"Events/Default Work Unit");
    ASSERT_EQ(events.size(), 2u);
    const sn::ProjectObject* made = At(L"Events/Default Work Unit/" + events.back());
    ASSERT_EQ(made->Children().size(), 1u);
    EXPECT_EQ(made->Children()[0]->GetProperty("ActionType"), L"PostEvent");
    EXPECT_EQ(made->Children()[0]->GetProperty("Target"),
              Utf8::ToWide(GuidText::ToString(*At(event)->GetGUID())));
}

TEST_F(ContextMenuTest, TheHostsOwnEntriesFollowTheirOptionBitsAndCopyGuidsAsText)
{
    Select({kAmbience + L"/Rain", kAmbience + L"/Wind"});
    TextClipboard::Set(L"before");
    m_menus.choices = {L"Copy GUID"};
    RightClick(kAmbience + L"/Rain");
    const std::wstring text = TextClipboard::Get();
    for (const std::wstring& row : {kAmbience + L"/Rain", kAmbience + L"/Wind"})
        EXPECT_NE(text.find(Utf8::ToWide(GuidText::ToString(*At(row)->GetGUID()))), std::wstring::npos) << row;
    EXPECT_EQ(std::count(text.begin(), text.end(), L'\n'), 1) << "one GUID per line";
    EXPECT_EQ(UndoSteps(), 0u);

    // Work units never saved have no folder to show yet.
    const std::vector<std::wstring> top = TopLevel();
    EXPECT_NE(std::find(top.begin(), top.end(), L"Open Containing Folder (disabled)"), top.end());

    // Only the entries whose bits the caller passes.
    std::vector<IOrbObject*> objects{At(kAmbience + L"/Rain")};
    ObjectContextMenu::DoMenu(m_view, objects, ObjectContextMenu::Option_Inspect | ObjectContextMenu::Option_Copy, {},
                              {});
    EXPECT_EQ(m_menus.lines, (std::vector<std::wstring>{L"Inspect", L"Copy [Ctrl+C]"}));
}
