// Who refers to what, kept as the project changes, and deletion that takes those references out
// and puts them back on undo.

#include "HostFixture.h"

#include "host/Utf8.h"
#include "sonarium/core/model/CurrentState.h"

#include "sonarium/core/deletion/Deletion.h"
#include "sonarium/core/model/Project.h"
#include "sonarium/core/model/ProjectEdit.h"

using namespace sn;

namespace
{
const wchar_t* kProject = LR"(
platform Desktop
AudioObjects
  Default Work Unit : WorkUnit
    Ambience : ActorMixer
      Rain : SoundSFX
        rain.wav : AudioSource
      Wind : SoundSFX
    Music : ActorMixer | Bus=@AudioObjects/Default Work Unit/Ambience
Events
  Default Work Unit : WorkUnit
    Play_Rain : Event
      Play : EventAction | Target=@AudioObjects/Default Work Unit/Ambience/Rain
SoundBanks
  Default Work Unit : WorkUnit
    Init : SoundBank
)";

const std::wstring kAmbience = L"AudioObjects/Default Work Unit/Ambience";
const std::wstring kAction = L"Events/Default Work Unit/Play_Rain/Play";

std::wstring Id(const ProjectObject* object)
{
    return Utf8::ToWide(GuidText::ToString(object->Id()));
}

// "Referrer.key -> target" for each reference, in the order found.
std::vector<std::wstring> Described(const std::vector<deletion::Reference>& references)
{
    std::vector<std::wstring> lines;
    for (const deletion::Reference& reference : references)
        lines.push_back(reference.referrer->GetName() + L"." + Utf8::ToWide(reference.key) + L" -> " +
                        reference.target->GetName());
    return lines;
}
} // namespace

TEST(ReferenceIndex, AValueIsAReferenceOnlyWhenItIsAllGuids)
{
    const GUID a = NewGuid(), b = NewGuid();
    const std::wstring ta = Utf8::ToWide(GuidText::ToString(a)), tb = Utf8::ToWide(GuidText::ToString(b));
    EXPECT_EQ((std::vector<GUID>{a, b}), ReferenceIndex::TargetsOf(ta + L";" + tb));
    EXPECT_TRUE(ReferenceIndex::TargetsOf(ta + L";yes").empty()) << "notes that mention a GUID are text";
    EXPECT_TRUE(ReferenceIndex::TargetsOf(L"").empty());
    EXPECT_EQ(tb, ReferenceIndex::Without(ta + L";" + tb + L";" + ta, a));
    EXPECT_EQ(L"", ReferenceIndex::Without(ta, a));
}

TEST_F(HostTest, TheIndexFollowsPropertiesObjectsAndUndo)
{
    Project& project = Open(kProject);
    ProjectObject* rain = At(kAmbience + L"/Rain");
    ProjectObject* wind = At(kAmbience + L"/Wind");
    ProjectObject* action = At(kAction);
    auto referrers = [&](const ProjectObject* target)
    {
        const auto* found = project.References().ReferrersOf(target->Id());
        return found ? found->size() : 0u;
    };
    EXPECT_EQ(1u, referrers(rain)) << "from the text the project was built from";

    ProjectEdit::SetProperty(action, "Target", Id(wind));
    EXPECT_EQ(0u, referrers(rain));
    EXPECT_EQ(1u, referrers(wind));
    HostRef().Undo().Undo();
    EXPECT_EQ(1u, referrers(rain));
    EXPECT_EQ(0u, referrers(wind));

    // An event that leaves the project takes its action's reference along, and brings it back.
    ProjectEdit::Delete(At(L"Events/Default Work Unit/Play_Rain"));
    EXPECT_EQ(0u, referrers(rain));
    HostRef().Undo().Undo();
    EXPECT_EQ(1u, referrers(rain));
}

TEST_F(HostTest, OnlyReferencesFromOutsideTheDeletedObjectsCount)
{
    Open(kProject);
    ProjectObject* ambience = At(kAmbience);
    ProjectObject* rain = At(kAmbience + L"/Rain");
    ProjectObject* music = At(L"AudioObjects/Default Work Unit/Music");
    ProjectObject* init = At(L"SoundBanks/Default Work Unit/Init");
    ProjectEdit::SetProperty(init, "Contents", Id(rain) + L";" + Id(music));
    ProjectEdit::SetActiveSource(rain, At(kAmbience + L"/Rain/rain.wav"));

    EXPECT_EQ((std::vector<std::wstring>{L"Play.Target -> Rain", L"Init.Contents -> Rain"}),
              Described(deletion::OutsideReferences({rain})))
        << "the sound's own reference to its source is not one";
    EXPECT_EQ((std::vector<std::wstring>{L"Music.Bus -> Ambience", L"Play.Target -> Rain", L"Init.Contents -> Rain"}),
              Described(deletion::OutsideReferences({rain, ambience})))
        << "what is below a deleted object is looked at once";
    EXPECT_EQ((std::vector<std::wstring>{L"Play.Target -> Rain", L"Init.Contents -> Rain", L"Init.Contents -> Music"}),
              Described(deletion::OutsideReferences({ambience, music})))
        << "Music's reference to Ambience goes with both";
}

TEST_F(HostTest, DeletingTakesReferencesOutAsOneStepThatUndoPutsBack)
{
    Open(kProject);
    ProjectObject* ambience = At(kAmbience);
    ProjectObject* rain = At(kAmbience + L"/Rain");
    ProjectObject* init = At(L"SoundBanks/Default Work Unit/Init");
    const std::wstring bank = Id(rain) + L";" + Id(ambience);
    ProjectEdit::SetProperty(init, "Contents", bank);
    const std::wstring target = At(kAction)->GetProperty("Target");
    const size_t steps = HostRef().Undo().UndoCount();

    BusRecorder bus({"SonariumObject"});
    const std::vector<ProjectObject*> doomed{rain, ambience};
    ASSERT_TRUE(deletion::DeleteObjects(doomed, deletion::OutsideReferences(doomed)));
    EXPECT_EQ(steps + 1, HostRef().Undo().UndoCount());
    EXPECT_EQ(L"", At(kAction)->GetProperty("Target"));
    EXPECT_EQ(L"", init->GetProperty("Contents"));
    EXPECT_EQ(nullptr, FindByPath(*HostRef().GetProject(), kAmbience));
    EXPECT_EQ(0, HostRef().Properties()[propLockUIUpdate].GetInt());

    HostRef().Undo().Undo();
    EXPECT_EQ(ambience, At(kAmbience));
    EXPECT_EQ(rain, HostRef().GetProject()->Find(rain->Id()));
    EXPECT_EQ(target, At(kAction)->GetProperty("Target"));
    EXPECT_EQ(bank, init->GetProperty("Contents"));
    EXPECT_FALSE(deletion::DeleteObjects({}, {})) << "nothing to delete";
}
