#include "sonarium/core/host/ProjectBuilder.h"

#include "host/Utf8.h"

#include <gtest/gtest.h>

using namespace sn;

namespace
{
std::string BuildError(const std::wstring& text)
{
    std::wstring error;
    EXPECT_FALSE(ProjectBuilder::Build(L"Test", text, &error)) << "built despite an error";
    return Utf8::FromWide(error);
}
} // namespace

TEST(ProjectBuilderAttributes, SetColourInclusionPropertiesAndForwardReferences)
{
    std::wstring error;
    std::unique_ptr<Project> project = ProjectBuilder::Build(L"Test", LR"(
platform Desktop
platform Handheld
Events
  Main : WorkUnit
    Play_Rain : Event
      Play : EventAction | Target=@AudioObjects/Ambience/Rain | Note=fades in over 2 s
AudioObjects
  Ambience : WorkUnit
    Rain : SoundSFX | color=14 | exclude=Handheld
)",
                                                             &error);
    ASSERT_TRUE(project) << Utf8::FromWide(error);
    ProjectObject* rain = FindByPath(*project, L"AudioObjects/Ambience/Rain");
    ProjectObject* play = FindByPath(*project, L"Events/Main/Play_Rain/Play");
    ASSERT_TRUE(rain && play);
    EXPECT_EQ(play->GetProperty("Target"), Utf8::ToWide(GuidText::ToString(rain->Id())));
    EXPECT_EQ(play->GetProperty("Note"), L"fades in over 2 s");
    EXPECT_EQ(rain->GetColor(), 14);
    EXPECT_FALSE(rain->IsInclusionLinked());
    EXPECT_FALSE(rain->IsIncludedOnPlatform(project->Platforms()[1].id, 0));
    EXPECT_TRUE(rain->IsIncludedOnPlatform(project->Platforms()[0].id, 0));
    EXPECT_EQ(FindByPath(*project, L"AudioObjects/Ambience")->GetColor(), -1);
    EXPECT_FALSE(project->IsDirty());
}

TEST(ProjectBuilderAttributes, BadAttributesNameTheLineAndTheProblem)
{
    const std::wstring head = L"platform Desktop\nAudioObjects\n  Main : WorkUnit\n";
    EXPECT_EQ(BuildError(head + L"    Rain : SoundSFX | color=red\n"),
              "line 4: a colour is a number from 0, not \"red\"");
    EXPECT_EQ(BuildError(head + L"    Rain : SoundSFX | color=-2\n"),
              "line 4: a colour is a number from 0, not \"-2\"");
    EXPECT_EQ(BuildError(head + L"    Rain : SoundSFX | exclude=Console\n"),
              "line 4: no platform \"Console\" declared above");
    EXPECT_EQ(BuildError(head + L"    Rain : SoundSFX | loud\n"),
              "line 4: expected \"key=value\" after \"|\", found \"loud\"");
    EXPECT_EQ(BuildError(head + L"    Rain : SoundSFX | Loop=\n"), "line 4: attribute \"Loop\" has no value");
    EXPECT_EQ(BuildError(head + L"    Rain : SoundSFX | Next=@AudioObjects/Main/Snow\n    Wind : SoundSFX\n"),
              "line 4: no object at \"AudioObjects/Main/Snow\"");
    EXPECT_EQ(BuildError(L"AudioObjects | color=3\n"), "line 1: only objects and presets take attributes");
}

TEST(ProjectBuilderAttributes, SeededBuildsGiveTheSameGuids)
{
    const std::wstring text = L"platform Desktop\nMusic\n  Score : WorkUnit\n    Theme : MusicSegment\n";
    std::mt19937_64 a(5), b(5);
    std::unique_ptr<Project> first = ProjectBuilder::Build(L"Test", text, nullptr, &a);
    std::unique_ptr<Project> second = ProjectBuilder::Build(L"Test", text, nullptr, &b);
    std::unique_ptr<Project> unseeded = ProjectBuilder::Build(L"Test", text, nullptr);
    ASSERT_TRUE(first && second && unseeded);
    const std::wstring path = L"Music/Score/Theme";
    EXPECT_EQ(FindByPath(*first, path)->Id(), FindByPath(*second, path)->Id());
    EXPECT_EQ(first->Platforms()[0].id, second->Platforms()[0].id);
    EXPECT_NE(FindByPath(*first, path)->Id(), FindByPath(*unseeded, path)->Id());
}
