// An edit that the host announces in several notifications (a delete: "PreDestroy", then
// "ChildRemoved"; a move: removed here, added there) rebuilds the tree once, not once per
// notification: the host holds the views' lock around it. The node tree counts its readings on
// the project's change clock, one per root and refresh.

#include "ExplorerFixture.h"

#include "sonarium/core/model/ProjectEdit.h"

namespace
{
const wchar_t* kUnit = L"AudioObjects/Default Work Unit";

std::wstring Under(const wchar_t* name)
{
    return std::wstring(kUnit) + L"/" + name;
}
} // namespace

class EditRefreshTest : public ExplorerTest
{
protected:
    void SetUp() override
    {
        ExplorerTest::SetUp();
        Open(L"platform Linux\nAudioObjects\n  Default Work Unit : WorkUnit\n    Ambience : ActorMixer\n"
             L"      Rain : SoundSFX\n      Wind : SoundSFX\n    Music : ActorMixer\n");
        // One category: one root node, so one reading per rebuild.
        m_view = OpenView({OrbObjectCategories::AudioObjects});
        Reveal(m_view, Under(L"Ambience/Rain"));
    }

    // How many times the tree was rebuilt while the action ran.
    template <class Action> uint32_t Rebuilds(Action action)
    {
        const uint32_t before = sn::ProjectObject::ChangeClock();
        action();
        WindowSystem::Get().RunUntilIdle();
        return sn::ProjectObject::ChangeClock() - before;
    }

    DlgProjectExplorer* m_view = nullptr;
};

TEST_F(EditRefreshTest, DeletesMovesAndTheirUndoRebuildTheTreeOnce)
{
    sn::UndoManager& undo = HostRef().Undo();
    EXPECT_EQ(1u, Rebuilds([&] { ASSERT_TRUE(sn::ProjectEdit::Delete(At(Under(L"Ambience/Rain")))); }));
    EXPECT_FALSE(ItemOf(m_view, Under(L"Ambience/Wind")) == nullptr);
    EXPECT_EQ(1u, Rebuilds([&] { undo.Undo(); }));
    EXPECT_TRUE(ItemOf(m_view, Under(L"Ambience/Rain")));
    EXPECT_EQ(1u, Rebuilds([&] { undo.Redo(); }));

    EXPECT_EQ(1u, Rebuilds([&] { ASSERT_TRUE(sn::ProjectEdit::Move(At(Under(L"Ambience/Wind")), At(Under(L"Music")))); }));
    EXPECT_TRUE(Reveal(m_view, Under(L"Music/Wind")));
    EXPECT_EQ(1u, Rebuilds([&] { undo.Undo(); }));
    EXPECT_TRUE(ItemOf(m_view, Under(L"Ambience/Wind")));
    EXPECT_EQ(1u, Rebuilds([&] { undo.Redo(); }));
    EXPECT_TRUE(ItemOf(m_view, Under(L"Music/Wind")));

    // The explorer's own delete command too, and a rename rebuilds nothing.
    m_view->GetTreeCtrl().SelectAll(false);
    m_view->GetTreeCtrl().SelectItem(ItemOf(m_view, Under(L"Music/Wind")));
    EXPECT_EQ(1u, Rebuilds([&] { m_view->SendMessage(HostMessages::DeleteObject, 0, 0); }));
    EXPECT_EQ(0u, Rebuilds([&] { sn::ProjectEdit::Rename(At(Under(L"Music")), L"Stingers"); }));
    EXPECT_EQ(L"Stingers", m_view->GetTreeCtrl().GetItemText(ItemOf(m_view, Under(L"Stingers"))));
}
