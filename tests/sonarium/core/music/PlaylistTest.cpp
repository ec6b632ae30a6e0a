// A playlist's sequences and items: parts of their container, one undo step per change, and the
// music channel's events about the container when made and when undone.

#include "HostFixture.h"
#include "sonarium/core/model/ProjectEdit.h"
#include "sonarium/core/music/Playlist.h"

namespace playlist = sn::playlist;

namespace
{
class Playlist : public HostTest
{
protected:
    void SetUp() override
    {
        HostTest::SetUp();
        Open(L"Music\n  Score : WorkUnit\n    Explore : MusicPlaylistContainer\n      Calm : MusicSegment\n"
             L"      Tense : MusicSegment\n    Combat : MusicPlaylistContainer\n      Hit : MusicSegment\n");
    }
};
} // namespace

TEST_F(Playlist, SequencesHoldItemsOfTheirContainersSegmentsOnly)
{
    sn::ProjectObject* explore = At(L"Music/Score/Explore");
    EXPECT_FALSE(playlist::AddSequence(At(L"Music/Score/Explore/Calm"), L"Intro", playlist::Mode::InOrder));
    sn::ProjectObject* intro = playlist::AddSequence(explore, L"Intro", playlist::Mode::Random);
    ASSERT_TRUE(intro);
    EXPECT_EQ(playlist::ModeOf(intro), playlist::Mode::Random);
    EXPECT_FALSE(playlist::AddItem(intro, At(L"Music/Score/Combat/Hit"))) << "another container's segment";
    EXPECT_FALSE(playlist::AddItem(intro, explore));
    sn::ProjectObject* item = playlist::AddItem(intro, At(L"Music/Score/Explore/Tense"));
    ASSERT_TRUE(item);
    EXPECT_FALSE(playlist::AddSequence(intro, L"Nested", playlist::Mode::InOrder));
    EXPECT_EQ(playlist::SegmentOf(item), At(L"Music/Score/Explore/Tense"));
    EXPECT_EQ(item->GetOwnerObject(), explore) << "shown by its container";

    // An item whose segment is gone says so rather than playing something else.
    ASSERT_TRUE(sn::ProjectEdit::Delete(At(L"Music/Score/Explore/Tense")));
    EXPECT_EQ(playlist::SegmentOf(item), nullptr);
    EXPECT_FALSE(playlist::Remove(explore));
}

TEST_F(Playlist, ChangesRaiseMusicEventsAboutTheContainerAndUndoRaisesTheirOpposites)
{
    sn::ProjectObject* explore = At(L"Music/Score/Explore");
    BusRecorder bus({"InteractiveMusic"});
    sn::ProjectObject* intro = playlist::AddSequence(explore, L"Intro", playlist::Mode::InOrder);
    ASSERT_TRUE(intro && playlist::AddItem(intro, At(L"Music/Score/Explore/Calm")));
    ASSERT_TRUE(playlist::Remove(intro->Children().front().Get()));
    ASSERT_TRUE(HostRef().Undo().Undo());
    EXPECT_EQ(intro->Children().size(), 1u);
    ASSERT_TRUE(HostRef().Undo().Undo());
    ASSERT_TRUE(HostRef().Undo().Undo());
    EXPECT_TRUE(playlist::Sequences(explore).empty()) << "a sequence and its mode are one step";
    EXPECT_EQ(bus.events, (std::vector<std::string>{
                              "InteractiveMusic/SequenceAdded Explore",
                              "InteractiveMusic/SequenceItemAdded Explore",
                              "InteractiveMusic/SequenceItemRemoved Explore",
                              "InteractiveMusic/SequenceItemAdded Explore",
                              "InteractiveMusic/SequenceItemRemoved Explore",
                              "InteractiveMusic/SequenceRemoved Explore",
                          }));
}
