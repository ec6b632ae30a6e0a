// New events for the selected objects, in the default work unit of events: one per object, or
// one for the whole selection, named from the action and the object as the user prefers.

#include "CreationFixture.h"

#include "explorer/menu/MenuCommandIds.h"

using namespace creation;
namespace Ids = MenuCommandIds;

namespace
{
const std::wstring kDefaultEvents = L"Events/Default Work Unit";
}

class NewEventTest : public CreationTest
{
protected:
    void SetUp() override
    {
        CreationTest::SetUp();
        m_ears = std::make_unique<HostEars>();
    }
    void TearDown() override
    {
        m_ears.reset();
        CreationTest::TearDown();
    }

    // The context menu's command for events of that action, one per object or one for all.
    void NewEvent(OrbEventActionEnum::OrbEventActionType action, OrbEventActionEnum::OrbEventActionScope scope,
                  bool perObject)
    {
        const UINT id = (perObject ? Ids::NewEventPerObject : Ids::NewEventForAll) + 7;
        m_view->MenuCommands()[id] = {MenuCommandEntry::NewEvent, static_cast<uint32_t>(action),
                                      static_cast<uint32_t>(scope), {}};
        m_view->OnNewEvent(id);
        WindowSystem::Get().RunUntilIdle();
    }

    std::wstring TargetOf(const sn::ProjectObject* action)
    {
        const std::optional<GUID> id = GuidText::FromString(Utf8::FromWide(action->GetProperty("Target")));
        const sn::ProjectObject* target = id ? HostRef().GetProject()->Find(*id) : nullptr;
        return target ? std::wstring(target->GetName()) : L"(none)";
    }

    std::unique_ptr<HostEars> m_ears;
    const std::vector<std::wstring> m_sounds{kAmbience + L"/Rain", kAmbience + L"/Thunder", kAmbience + L"/Wind"};
};

TEST_F(NewEventTest, OneEventPerObjectIsNamedAfterItAndNoneIsInspected)
{
    Select({m_sounds[0], m_sounds[1], m_sounds[2]});
    m_ears->Take();
    NewEvent(OrbEventActionEnum::ActionType_Play, OrbEventActionEnum::ActionScope_Target, true);
    ASSERT_EQ(ChildNames(kDefaultEvents), (std::vector<std::wstring>{L"Rain_Play", L"Thunder_Play", L"Wind_Play"}))
        << "made with its work unit, which the category did not have";
    for (const CSmartPtr<sn::ProjectObject>& event : At(kDefaultEvents)->Children())
    {
        ASSERT_EQ(event->Children().size(), 1u);
        const sn::ProjectObject* action = event->Children()[0].Get();
        EXPECT_EQ(event->GetName(), TargetOf(action) + L"_Play");
        EXPECT_EQ(action->GetProperty("Scope"), L"GameObject");
    }
    for (const std::string& heard : m_ears->Take())
        EXPECT_EQ(heard.find("Inspector"), std::string::npos) << heard;
    EXPECT_EQ(m_lockValues, (std::vector<long long>{1, 0}));
    EXPECT_EQ(UndoSteps(), 1u);
    EXPECT_EQ(LastUndo(), L"New Event");
    EXPECT_TRUE(m_view->GetTreeCtrl().IsSelected(ItemOf(m_view, m_sounds[2]))) << "the selection stays";

    ASSERT_TRUE(HostRef().Undo().Undo());
    EXPECT_EQ(ChildNames(L"Events"), std::vector<std::wstring>{L"Gameplay"}) << "the work unit goes too";
}

TEST_F(NewEventTest, OneEventForAllHasAnActionPerObjectUnlessOneActionActsOnEverything)
{
    Select({m_sounds[0], m_sounds[1], m_sounds[2]});
    m_ears->Take();
    NewEvent(OrbEventActionEnum::ActionType_Play, OrbEventActionEnum::ActionScope_Target, false);
    ASSERT_EQ(ChildNames(kDefaultEvents), std::vector<std::wstring>{L"Play"}) << "named from the action alone";
    const sn::ProjectObject* play = At(kDefaultEvents + L"/Play");
    ASSERT_EQ(play->Children().size(), 3u);
    for (size_t i = 0; i < 3; ++i)
        EXPECT_EQ(TargetOf(play->Children()[i].Get()), At(m_sounds[i])->GetName());
    const std::vector<std::string> heard = m_ears->Take();
    EXPECT_EQ(std::count(heard.begin(), heard.end(), "Inspector/Inspect Play (double click)"), 1)
        << testing::PrintToString(heard);

    // Scope 3 acts on every object: one action, which no object can be the target of.
    NewEvent(OrbEventActionEnum::ActionType_Stop, OrbEventActionEnum::ActionScope_All, false);
    const sn::ProjectObject* stopAll = At(kDefaultEvents + L"/Stop All");
    ASSERT_TRUE(stopAll);
    ASSERT_EQ(stopAll->Children().size(), 1u);
    EXPECT_EQ(stopAll->Children()[0]->GetProperty("ActionType"), L"StopAll");
    EXPECT_EQ(TargetOf(stopAll->Children()[0].Get()), L"(none)");

    // A second event of a name already taken is made unique by the host.
    NewEvent(OrbEventActionEnum::ActionType_Play, OrbEventActionEnum::ActionScope_Target, false);
    EXPECT_EQ(ChildNames(kDefaultEvents), (std::vector<std::wstring>{L"Play", L"Stop All", L"Play 1"}));
}

TEST_F(NewEventTest, NamesFollowThePreferencesTheCaseAndTheLimit)
{
    Select({m_sounds[0]});
    Prefer(L"EventActionNamePrefix", true);
    NewEvent(OrbEventActionEnum::ActionType_Stop, OrbEventActionEnum::ActionScope_Target, true);
    Prefer(L"ModifyEventNameCase", true);
    NewEvent(OrbEventActionEnum::ActionType_Play, OrbEventActionEnum::ActionScope_Target, true);
    Prefer(L"EventNameCaseAllLower", true);
    Prefer(L"UseActionNameForEvent", false);
    NewEvent(OrbEventActionEnum::ActionType_Play, OrbEventActionEnum::ActionScope_Target, true);
    EXPECT_EQ(ChildNames(kDefaultEvents), (std::vector<std::wstring>{L"Stop_Rain", L"PLAY_RAIN", L"rain"}));

    // A name that would be too long is cut before the host makes it valid.
    At(m_sounds[1])->SetName(std::wstring(258, L't'));
    Prefer(L"ModifyEventNameCase", false);
    Prefer(L"UseActionNameForEvent", true);
    // Its label is wider than the view: selected by the keyboard rather than clicked.
    Select({m_sounds[0]});
    PressKey(VK_DOWN);
    NewEvent(OrbEventActionEnum::ActionType_Play, OrbEventActionEnum::ActionScope_Target, true);
    EXPECT_EQ(ChildNames(kDefaultEvents).back(), L"Play_" + std::wstring(255, L't'));
}

TEST_F(NewEventTest, AnActionThatCannotTargetTheObjectKeepsNone)
{
    Select({kSketches});
    NewEvent(OrbEventActionEnum::ActionType_Play, OrbEventActionEnum::ActionScope_Target, true);
    const sn::ProjectObject* event = At(kDefaultEvents + L"/Sketches_Play");
    ASSERT_TRUE(event);
    EXPECT_EQ(TargetOf(event->Children()[0].Get()), L"(none)") << "a folder does not play";
    EXPECT_EQ(event->Children()[0]->GetProperty("Scope"), L"");
}
