// What an object keeps aside (names in UTF-8, per-platform inclusion, properties, a root's
// category) must read back exactly as written, through edits, undo, copies and the index.

#include "HostFixture.h"

#include "host/Utf8.h"
#include "sonarium/core/model/ProjectEdit.h"

#include <random>

using namespace sn;
using N = PMTreeNode;

namespace
{
const wchar_t* kProject = LR"(
platform Linux
platform Console
AudioObjects
  Default Work Unit : WorkUnit
    Ambience : ActorMixer
      Rain : SoundSFX
)";
const std::wstring kAmbience = L"AudioObjects/Default Work Unit/Ambience";
} // namespace

TEST_F(HostTest, NamesOfAnyLengthAndScriptReadBackUnchanged)
{
    Open(kProject);
    ProjectObject* rain = At(kAmbience + L"/Rain");
    // Short (inline), long (allocated), and beyond the basic plane.
    for (const wchar_t* name : {L"Été", L"Pluie_sur_les_toits_de_Montréal_0042", L"雨 \U0001F327 Regen"})
    {
        ASSERT_TRUE(ProjectEdit::Rename(rain, name));
        EXPECT_EQ(name, rain->GetName());
        EXPECT_EQ(Utf8::FromWide(name), rain->NameUtf8());
    }
    HostRef().Undo().Undo();
    EXPECT_EQ(L"Pluie_sur_les_toits_de_Montréal_0042", rain->GetName());
    EXPECT_EQ(rain, At(kAmbience + L"/Pluie_sur_les_toits_de_Montréal_0042"));
}

TEST_F(HostTest, RarelyUsedStateIsKeptPerObjectAndSurvivesBeingCleared)
{
    Project& project = Open(kProject);
    ProjectObject* ambience = At(kAmbience);
    ProjectObject* rain = At(kAmbience + L"/Rain");
    const GUID console = project.Platforms().at(1).id;
    EXPECT_TRUE(rain->Properties().empty());
    EXPECT_TRUE(rain->IncludedOn().empty());

    ProjectEdit::SetInclusionLinked(rain, false);
    ProjectEdit::SetIncluded(rain, console, false);
    rain->RawSetProperty("source", L"Sounds/rain.wav");
    EXPECT_FALSE(rain->GetIncluded(console));
    EXPECT_TRUE(rain->GetIncluded(project.Platforms().at(0).id));
    EXPECT_TRUE(ambience->Properties().empty() && ambience->IncludedOn().empty())
        << "nothing leaks to others";

    // Clearing the property keeps the inclusion; undoing the inclusion keeps nothing stale.
    rain->RawSetProperty("source", L"");
    EXPECT_TRUE(rain->Properties().empty());
    EXPECT_EQ(1u, rain->IncludedOn().size());
    ProjectObject* copy = ProjectEdit::Copy(rain, ambience);
    ASSERT_TRUE(copy);
    EXPECT_FALSE(copy->GetIncluded(console)) << "a copy takes the per-platform values";
    HostRef().Undo().Undo(); // the copy
    HostRef().Undo().Undo(); // the exclusion
    EXPECT_TRUE(rain->IncludedOn().empty());
    EXPECT_TRUE(rain->GetIncluded(console));

    // A root's category lives with its other rare state and outlasts its clearing.
    WorkUnitObject* root = project.GetRoot(OrbObjectCategories::AudioObjects);
    root->RawSetProperty("note", L"x");
    root->RawSetProperty("note", L"");
    root->RawSetIncludedOn({});
    EXPECT_EQ(OrbObjectCategories::AudioObjects, root->GetCategory());
    EXPECT_EQ(OrbObjectCategories::AudioObjects, rain->GetCategory());
    EXPECT_TRUE(root->IsTopWorkUnit());
    EXPECT_FALSE(At(L"AudioObjects/Default Work Unit")->IsTopWorkUnit());
}

TEST_F(HostTest, TheIndexFollowsObjectsEnteringAndLeavingTheProject)
{
    Project& project = Open(kProject);
    ProjectObject* ambience = At(kAmbience);
    const size_t before = project.ObjectCount();

    // Enough objects to make the index grow several times.
    std::mt19937_64 engine(9);
    std::vector<GUID> ids;
    for (int i = 0; i < 500; ++i)
    {
        ids.push_back(NewGuid(engine));
        ambience->RawInsertChild(ProjectEdit::AtEnd,
                                 NewProjectObject(&project, N::SoundSFX, L"S", ids.back()));
        project.Index(ambience->Children().back().Get());
    }
    EXPECT_EQ(before + 500, project.ObjectCount());
    for (const GUID& id : ids)
        ASSERT_TRUE(project.Find(id)) << "lost after growth";

    // An object with a taken GUID, never in the hierarchy, does not unindex the real one.
    CSmartPtr<ProjectObject> stranger(NewProjectObject(&project, N::SoundSFX, L"X", ids[7]));
    project.Unindex(stranger.Get());
    EXPECT_EQ(ambience->Children()[8].Get(), project.Find(ids[7]));

    // Leaving takes the whole subtree out, and only it.
    CSmartPtr<ProjectObject> held(ambience);
    project.Unindex(ambience);
    EXPECT_EQ(before - 2, project.ObjectCount()) << "Ambience and Rain are gone";
    for (const GUID& id : ids)
        EXPECT_FALSE(project.Find(id));
    EXPECT_TRUE(project.Find(*At(L"AudioObjects/Default Work Unit")->GetGUID()));
    project.Index(ambience);
    EXPECT_EQ(before + 500, project.ObjectCount());
    EXPECT_TRUE(ambience->IsInProject());

    // Objects still held when the project closes no longer claim it.
    HostRef().SetProject(nullptr);
    EXPECT_EQ(nullptr, held->GetProject());
}

TEST_F(HostTest, WhetherAnObjectHasMemberChildrenFollowsEditsAndUndo)
{
    Open(kProject);
    ProjectObject* ambience = At(kAmbience);
    ProjectObject* rain = At(kAmbience + L"/Rain");
    EXPECT_TRUE(ambience->HasMemberChildren());
    EXPECT_FALSE(rain->HasMemberChildren());

    // A sound's source is a part of the sound, not a member below it.
    ASSERT_TRUE(ProjectEdit::Create(rain, N::AudioSource, L"rain_loop.wav"));
    ASSERT_EQ(rain->Children().size(), 1u);
    EXPECT_FALSE(rain->HasMemberChildren());

    ASSERT_TRUE(ProjectEdit::Delete(rain));
    EXPECT_FALSE(ambience->HasMemberChildren()) << "the last member left";
    ASSERT_TRUE(HostRef().Undo().Undo());
    EXPECT_TRUE(ambience->HasMemberChildren());
    ASSERT_TRUE(HostRef().Undo().Undo());
    EXPECT_TRUE(rain->Children().empty());
    EXPECT_FALSE(rain->HasMemberChildren());
}
