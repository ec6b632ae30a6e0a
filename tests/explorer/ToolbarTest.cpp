// The row of creation buttons: which kinds it offers, and how the selection, Shift and playback
// enable and word them.

#include "CreationFixture.h"

#include "host/UISubClassingMgr.h"

using namespace creation;
using N = PMTreeNode;

namespace
{
std::vector<int> ButtonTypes(DlgProjectExplorer* view)
{
    std::vector<int> types;
    for (CButtonWithTooltip* button : view->GetObjectToolbar().Buttons())
        types.push_back(button->GetDlgCtrlID());
    return types;
}
} // namespace

class ToolbarTest : public CreationTest
{
protected:
    std::vector<int> Enabled()
    {
        std::vector<int> types;
        for (CButtonWithTooltip* button : m_view->GetObjectToolbar().Buttons())
            if (button->IsWindowEnabled())
                types.push_back(button->GetDlgCtrlID());
        return types;
    }

    void PressShift(bool down)
    {
        WindowSystem::Get().SetKeyDown(VK_SHIFT, down);
        ForwardShift();
    }
};

TEST_F(ToolbarTest, ButtonsAreTheKindsOfTheViewsCategoriesInObjectTypeOrder)
{
    // Work units then physical folders, random then sequence containers, sound effects then
    // voices; plug-ins (effects, mixers, output devices) come from the menu, not from a button.
    EXPECT_EQ(ButtonTypes(m_view), (std::vector<int>{N::WorkUnit, N::PhysicalFolder, N::Folder, N::ActorMixer,
                                                     N::RandomContainer, N::SequenceContainer, N::SwitchContainer,
                                                     N::BlendContainer, N::SoundSFX, N::SoundVoice, N::Event,
                                                     N::Bus, N::AuxBus}));
    const int size = UISubClassingMgr::ScaleToDpi(ObjectToolbar::BUTTON_SIZE);
    CRect third;
    m_view->GetObjectToolbar().Buttons()[2]->GetWindowRect(&third);
    m_view->GetObjectToolbar().ScreenToClient(&third);
    EXPECT_EQ(third, CRect(2 * size, 0, 3 * size, size));
    EXPECT_TRUE(Enabled().empty()) << "nothing is selected";

    DlgProjectExplorer* events = OpenView({OrbObjectCategories::Events});
    EXPECT_EQ(ButtonTypes(events), (std::vector<int>{N::WorkUnit, N::PhysicalFolder, N::Folder, N::Event}));
}

TEST_F(ToolbarTest, OneRowOffersItsChildrenAndSiblingsWithShiftTheirParents)
{
    Select({kAmbience});
    EXPECT_EQ(Enabled(), (std::vector<int>{N::ActorMixer, N::RandomContainer, N::SequenceContainer,
                                           N::SwitchContainer, N::BlendContainer, N::SoundSFX, N::SoundVoice}));
    EXPECT_EQ(Button(N::Bus)->GetToolTipText(), L"Create new 'Bus'") << "disabled buttons are worded too";

    Select({kAmbience + L"/Rain", kAmbience + L"/Thunder"});
    EXPECT_TRUE(Enabled().empty()) << "children are made under one row";
    PressShift(true);
    EXPECT_EQ(Enabled(), (std::vector<int>{N::ActorMixer, N::RandomContainer, N::SequenceContainer,
                                           N::SwitchContainer, N::BlendContainer}));
    // The shortcut shown is the child command's, in both modes.
    HostRef().CommandRegistry().Register(ROString("ViewProject ExplorerCreateChildRandomContainer"),
                                         [](auto...) { return true; });
    ForwardShift();
    EXPECT_EQ(Button(N::RandomContainer)->GetToolTipText(),
              L"Create new parent 'Random Container'\tViewProject ExplorerCreateChildRandomContainer");
    PressShift(false);
    EXPECT_EQ(Button(N::Folder)->GetToolTipText(), L"Create new 'Folder'") << "releasing Shift rewords at once";

    // Rows under two parents get no common parent.
    Select({kAmbience + L"/Rain", kSketches});
    PressShift(true);
    EXPECT_TRUE(Enabled().empty());
    PressShift(false);
}

TEST_F(ToolbarTest, DuringPlaybackOnlyCategoriesEditedLiveKeepTheirButtons)
{
    HostRef().SetPlayback(true);
    Select({kSketches});
    EXPECT_TRUE(Enabled().empty()) << "audio objects are not edited during playback";
    Select({L"Events/Gameplay/Combat"});
    EXPECT_EQ(Enabled(), (std::vector<int>{N::Folder, N::Event}));
    EXPECT_TRUE(ClickButton(N::Event));
    PressKey(VK_ESCAPE);
    EXPECT_EQ(ChildNames(L"Events/Gameplay/Combat"), std::vector<std::wstring>{L"New Event"});
}
