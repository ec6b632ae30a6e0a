#pragma once
// A view over a small project in which tests create and name objects as a user does: select
// rows, press toolbar buttons (with Shift), type in the label editor, answer dialogs; and see
// what the project, the undo history and the host's lock went through.

#include "ExplorerFixture.h"

#include "explorer/commands/PEHelper.h"
#include "host/ButtonWithTooltip.h"
#include "host/UserPreferences.h"
#include "platform/HeldKeys.h"
#include "sonarium/core/model/ObjectKinds.h"

#include <algorithm>

namespace creation
{
inline const wchar_t* kProject = LR"(
platform Desktop
platform Console
preset RandomContainer Shuffle | PlayMode=Shuffle | AvoidRepeating=2
preset SoundSFX Loop | Loop=yes
AudioObjects
  Default Work Unit : WorkUnit
    Ambience : ActorMixer
      Rain : SoundSFX
      Thunder : SoundSFX
      Wind : SoundSFX
      Birds : RandomContainer
    Sketches : Folder
  Levels : PhysicalFolder
    Caves : WorkUnit
Busses
  Mixing : WorkUnit
    Main : Bus
      World : Bus
  Outputs : WorkUnit
    Speakers : AudioDevice
Events
  Gameplay : WorkUnit
    Combat : Folder
)";

inline const std::wstring kUnit = L"AudioObjects/Default Work Unit";
inline const std::wstring kAmbience = kUnit + L"/Ambience";
inline const std::wstring kSketches = kUnit + L"/Sketches";
} // namespace creation

class CreationTest : public ExplorerTest
{
protected:
    void SetUp() override
    {
        ExplorerTest::SetUp();
        Open(creation::kProject);
        m_view = OpenView({OrbObjectCategories::AudioObjects, OrbObjectCategories::Busses,
                           OrbObjectCategories::Events});
        GlobalPropMgr::m_pInstance->Prop(sn::propLockUIUpdate, 3, 1)
            .Register(PropFuncPtrType(this, &CreationTest::OnLockChange), false);
    }

    void TearDown() override
    {
        GlobalPropMgr::m_pInstance->Prop(sn::propLockUIUpdate, 3, 1)
            .UnRegister(PropFuncPtrType(this, &CreationTest::OnLockChange));
        ExplorerTest::TearDown();
    }

    void OnLockChange(CProp& lock) { m_lockValues.push_back(lock.GetInt()); }

    // Clicks the first path's row, Ctrl-clicks the others, and lets the view catch up, as the
    // toolbar does when the selection is inspected.
    void Select(std::initializer_list<std::wstring> paths)
    {
        bool first = true;
        for (const std::wstring& path : paths)
        {
            ClickOn(m_view, path, first ? 0 : MK_CONTROL);
            first = false;
        }
        WindowSystem::Get().RunUntilIdle();
        m_view->UpdateToolbar();
        m_lockValues.clear();
    }

    CButtonWithTooltip* Button(PMTreeNode::NodeType type)
    {
        for (CButtonWithTooltip* button : m_view->GetObjectToolbar().Buttons())
            if (button->GetDlgCtrlID() == static_cast<int>(type))
                return button;
        return nullptr;
    }

    // Presses Shift (the tree forwards it to the view) when asked, clicks, and releases it.
    bool ClickButton(PMTreeNode::NodeType type, bool shift = false)
    {
        CButtonWithTooltip* button = Button(type);
        EXPECT_TRUE(button) << "no button for type " << type;
        bool clicked = false;
        {
            HeldKeys held(shift ? std::vector<int>{VK_SHIFT} : std::vector<int>{});
            ForwardShift();
            clicked = button && button->Click();
        }
        ForwardShift();
        WindowSystem::Get().RunUntilIdle();
        return clicked;
    }

    void ForwardShift()
    {
        MSG msg{};
        msg.message = WM_KEYDOWN;
        msg.wParam = VK_SHIFT;
        m_view->SendMessage(HostMessages::ForwardedKey, reinterpret_cast<WPARAM>(&msg), 0);
    }

    CEdit* Editor() { return m_view->GetTreeCtrl().GetEditControl(); }
    // The object whose row the label editor is open on.
    std::wstring EditedName()
    {
        PMTreeNode* node = m_view->GetTreeCtrl().GetNodeFromItem(m_view->GetTreeCtrl().GetEditItem());
        IOrbObject* object = NodeObject(node);
        return object ? std::wstring(object->GetName()) : L"(none)";
    }
    void Type(const std::wstring& text) { m_view->GetTreeCtrl().TypeText(text); }
    void PressKey(UINT vk)
    {
        m_view->GetTreeCtrl().KeyPress(vk, 0);
        WindowSystem::Get().RunUntilIdle();
    }

    std::vector<std::wstring> ChildNames(const std::wstring& path)
    {
        std::vector<std::wstring> names;
        for (const CSmartPtr<sn::ProjectObject>& child : At(path)->Children())
            if (sn::ProjectObject::IsHierarchyMember(child->GetObjectType()))
                names.push_back(child->GetName());
        return names;
    }

    size_t UndoSteps() { return HostRef().Undo().UndoCount(); }
    std::wstring LastUndo() { return HostRef().Undo().GetUndoName(); }
    void Prefer(const wchar_t* key, bool on) { IUserPreferences::Get()->SetIntValue(L"Preferences", key, on); }

    DlgProjectExplorer* m_view = nullptr;
    // Every value "LockUIUpdate" took since the selection.
    std::vector<long long> m_lockValues;
};
