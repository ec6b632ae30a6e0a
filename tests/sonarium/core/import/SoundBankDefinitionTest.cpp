// SoundBank definition files: every bad line is reported with its number and the good ones are
// applied, creating the SoundBanks that do not exist yet, as one undo step.

#include "HostFixture.h"

#include "host/Utf8.h"
#include "sonarium/core/model/CurrentState.h"

#include "sonarium/core/import/SoundBankDefinition.h"

using namespace sn;
using namespace sn::banks;

namespace
{
const wchar_t* kProject = LR"(
platform Desktop
AudioObjects
  Default Work Unit : WorkUnit
    Rain : SoundSFX
      rain.wav : AudioSource
Events
  Default Work Unit : WorkUnit
    Play_Rain : Event
SoundBanks
  Default Work Unit : WorkUnit
    Init : SoundBank
  Levels : WorkUnit
)";

std::vector<std::wstring> Texts(const std::vector<LineProblem>& problems)
{
    std::vector<std::wstring> texts;
    for (const LineProblem& problem : problems)
        texts.push_back(problem.Text());
    return texts;
}
} // namespace

TEST(SoundBankDefinition, LinesAreReadAsTheFormatSays)
{
    const Definition definition = ParseDefinition(
        "\xEF\xBB\xBF# banks\r\n"
        "Init\tEvents/Default Work Unit/Play_Rain\r\n"
        "\n"
        "  Level_1 \t AudioObjects/Default Work Unit/Rain \n"
        "no tab\n"
        "\tEvents/X\n"
        "Init\t\n"
        "Init\tbad \xFF text\n");
    ASSERT_EQ(2u, definition.lines.size());
    EXPECT_EQ(2, definition.lines[0].number);
    EXPECT_EQ(L"Level_1", definition.lines[1].bank) << "blanks around the fields are dropped";
    EXPECT_EQ(L"AudioObjects/Default Work Unit/Rain", definition.lines[1].path);
    EXPECT_EQ((std::vector<std::wstring>{L"line 5: expected a SoundBank name, a tab, then the path of an object",
                                         L"line 6: the SoundBank's name is missing", L"line 7: the object's path is missing",
                                         L"line 8: the line is not valid UTF-8 text"}),
              Texts(definition.problems));
    EXPECT_EQ(L"this is not a text file", ParseDefinition(std::string("a\0b", 3)).fileProblem);
    EXPECT_FALSE(ReadDefinition("/nonexistent/banks.txt").fileProblem.empty());
}

TEST_F(HostTest, GoodLinesAreAppliedAndBadOnesNamed)
{
    Project& project = Open(kProject);
    ProjectObject* levels = At(L"SoundBanks/Levels");
    const Definition definition = ParseDefinition("Init\tEvents/Default Work Unit/Play_Rain\n"
                                                  "Level_1\tAudioObjects/Default Work Unit/Rain\n"
                                                  "Level_1\tEvents/Default Work Unit/Play_Rain\n"
                                                  "init\tEvents/Default Work Unit/Play_Rain\n"
                                                  "Init\tEvents/Nowhere\n"
                                                  "Init\tAudioObjects/Default Work Unit\n"
                                                  "Init\tAudioObjects/Default Work Unit/Rain/rain.wav\n"
                                                  "Bad\x01Name\tAudioObjects/Default Work Unit/Rain\n");
    const DefinitionResult result = ApplyDefinition(project, definition.lines, levels);
    EXPECT_EQ(3u, result.added);
    EXPECT_EQ(1u, result.alreadyThere) << "SoundBank names are found whatever their case";
    EXPECT_EQ(1u, result.banksCreated);
    const std::vector<std::wstring> problems = Texts(result.problems);
    ASSERT_EQ(4u, problems.size());
    EXPECT_EQ(L"line 5: no object at \"Events/Nowhere\"", problems[0]);
    EXPECT_NE(std::wstring::npos, problems[1].find(L"line 6: \"AudioObjects/Default Work Unit\" is a work unit"));
    EXPECT_NE(std::wstring::npos, problems[2].find(L"line 7:")) << "a source is part of its sound";
    EXPECT_NE(std::wstring::npos, problems[3].find(L"line 8:")) << "no name for a SoundBank";

    ProjectObject* level = At(L"SoundBanks/Levels/Level_1");
    ASSERT_TRUE(level) << "a new SoundBank goes under the target";
    EXPECT_EQ((std::vector<ProjectObject*>{At(L"AudioObjects/Default Work Unit/Rain"),
                                           At(L"Events/Default Work Unit/Play_Rain")}),
              Contents(*level));
    EXPECT_EQ(L"Import SoundBank Definition", HostRef().Undo().GetUndoName());
    HostRef().Undo().Undo();
    EXPECT_EQ(nullptr, FindByPath(project, L"SoundBanks/Levels/Level_1"));
    EXPECT_TRUE(Contents(*At(L"SoundBanks/Default Work Unit/Init")).empty()) << "one step undoes it all";
}
