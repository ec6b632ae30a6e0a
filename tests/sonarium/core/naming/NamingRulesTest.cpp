// The host's one set of naming rules: what each way of breaking them answers, how a name is made
// valid, and names read from files that break them.

#include "HostFixture.h"

#include "host/Utf8.h"
#include "sonarium/core/model/ProjectEdit.h"
#include "sonarium/core/naming/NamingRules.h"
#include "sonarium/core/storage/FileIO.h"
#include "sonarium/core/storage/ProjectStorage.h"

using namespace sn;
namespace fs = std::filesystem;

namespace
{
const wchar_t* kProject = LR"(
platform Desktop
AudioObjects
  Default Work Unit : WorkUnit
    Ambience : ActorMixer
      Rain : SoundSFX
      Thunder : SoundSFX
Events
  Default Work Unit : WorkUnit
    Play_Rain : Event
      Play : EventAction
      Play : EventAction
)";
} // namespace

class NamingRulesTest : public HostTest
{
protected:
    void SetUp() override
    {
        HostTest::SetUp();
        Open(kProject);
    }

    naming::Result CheckSound(const std::wstring& name, const std::wstring& self = L"")
    {
        return naming::Check(OrbObjectType_Sound, name, At(L"AudioObjects/Default Work Unit/Ambience"),
                             self.empty() ? nullptr : At(L"AudioObjects/Default Work Unit/Ambience/" + self));
    }
    naming::Result CheckUnit(const std::wstring& name)
    {
        return naming::Check(OrbObjectType_WorkUnit, name, At(L"AudioObjects"), nullptr);
    }
};

TEST_F(NamingRulesTest, EachWayANameBreaksTheRulesHasItsOwnResultAndMessage)
{
    EXPECT_EQ(CheckSound(L"Drizzle"), ObjectName::NameValid);
    EXPECT_EQ(CheckSound(L" \t "), ObjectName::NameEmpty);
    EXPECT_EQ(CheckSound(std::wstring(260, L'r')), ObjectName::NameValid);
    EXPECT_EQ(CheckSound(std::wstring(261, L'r')), ObjectName::NameTooLong);
    for (const std::wstring& control : {std::wstring(L"a\tb"), std::wstring(L"a\nb"), std::wstring(L"a\x7f"),
                                        std::wstring(L"a\x2028z"), std::wstring(L"a\0b", 3)})
        EXPECT_EQ(CheckSound(control), ObjectName::NameControlCharacter);
    EXPECT_EQ(CheckSound(L"Rain/Heavy?"), ObjectName::NameValid) << "only file names keep those out";
    EXPECT_EQ(CheckUnit(L"Rain/Heavy"), ObjectName::NameFileCharacter);
    EXPECT_EQ(CheckSound(L" Rain"), ObjectName::NameBadEnding);
    EXPECT_EQ(CheckSound(L"Rain."), ObjectName::NameValid);
    EXPECT_EQ(CheckUnit(L"Rain."), ObjectName::NameBadEnding);
    for (const wchar_t* device : {L"con", L"PRN", L"Aux.swu", L"Nul", L"COM1", L"lpt9.txt"})
        EXPECT_EQ(CheckUnit(device), ObjectName::NameReserved) << Utf8::FromWide(device);
    for (const wchar_t* fine : {L"Console", L"COM0", L"com10", L"Null"})
        EXPECT_EQ(CheckUnit(fine), ObjectName::NameValid) << Utf8::FromWide(fine);

    EXPECT_EQ(CheckSound(L"THUNDER"), ObjectName::NameTaken) << "compared without regard to case";
    EXPECT_EQ(CheckSound(L"RAIN", L"Rain"), ObjectName::NameValid) << "an object does not clash with itself";
    EXPECT_EQ(naming::Check(OrbObjectType_EventAction, L"Play", At(L"Events/Default Work Unit/Play_Rain"), nullptr),
              ObjectName::NameValid)
        << "the parts of an object may share names";

    std::set<std::wstring> messages;
    for (int result = ObjectName::NameEmpty; result <= ObjectName::NameTaken; ++result)
        messages.insert(naming::Describe(static_cast<naming::Result>(result), OrbObjectType_WorkUnit, L"Rain"));
    EXPECT_EQ(messages.size(), 7u) << "one message per result";
}

TEST_F(NamingRulesTest, AProposedNameIsMadeValidKeepingWhatItSays)
{
    ProjectObject* ambience = At(L"AudioObjects/Default Work Unit/Ambience");
    auto made = [&](OrbObjectType type, std::wstring name, const ProjectObject* parent) {
        naming::MakeValid(type, name, parent, nullptr);
        return name;
    };
    EXPECT_EQ(made(OrbObjectType_Sound, L" Heavy\tRain\n", ambience), L"Heavy Rain");
    EXPECT_EQ(made(OrbObjectType_Sound, L"rain", ambience), L"rain 1");
    EXPECT_EQ(made(OrbObjectType_Container, L"  ", ambience), L"Random Container");
    EXPECT_EQ(made(OrbObjectType_WorkUnit, L"Zone: 1/2. ", At(L"AudioObjects")), L"Zone_ 1_2");
    EXPECT_EQ(made(OrbObjectType_WorkUnit, L"con", At(L"AudioObjects")), L"con_");

    // A long name keeps the limit with its number.
    ASSERT_TRUE(ProjectEdit::Create(ambience, PMTreeNode::SoundSFX, std::wstring(260, L'w')));
    const std::wstring unique = made(OrbObjectType_Sound, std::wstring(300, L'w'), ambience);
    EXPECT_EQ(unique, std::wstring(258, L'w') + L" 1");
    ASSERT_TRUE(ProjectEdit::Create(ambience, PMTreeNode::SoundSFX, L"Rain 1"));
    EXPECT_EQ(made(OrbObjectType_Sound, L"Rain", ambience), L"Rain 2");

    // The edits of the project keep the same rules.
    EXPECT_FALSE(ProjectEdit::Create(ambience, PMTreeNode::SoundSFX, L"thunder"));
    EXPECT_FALSE(ProjectEdit::Rename(At(L"AudioObjects/Default Work Unit/Ambience/Rain"), L"Rain\r"));
    ProjectObject* unit = At(L"AudioObjects/Default Work Unit");
    ASSERT_TRUE(ProjectEdit::Create(unit, PMTreeNode::SoundSFX, L"RAIN"));
    EXPECT_FALSE(ProjectEdit::Move(At(L"AudioObjects/Default Work Unit/Ambience/Rain"), unit));
    // Asked to, a move takes the first free name there; within its own parent it keeps its name.
    ProjectObject* rain = At(L"AudioObjects/Default Work Unit/Ambience/Rain");
    ASSERT_TRUE(ProjectEdit::MoveUnderFreeName(rain, unit));
    EXPECT_EQ(rain->Parent(), unit);
    EXPECT_EQ(rain->GetName(), L"Rain 1");
    ASSERT_TRUE(ProjectEdit::MoveUnderFreeName(rain, unit, 0));
    EXPECT_EQ(unit->IndexOf(rain), 0u);
    EXPECT_EQ(rain->GetName(), L"Rain 1");
}

TEST_F(NamingRulesTest, NamesReadFromAFileThatBreakTheRulesAreFixedReportedAndKept)
{
    StorageProblems problems;
    ASSERT_TRUE(SaveProjectAs(*HostRef().GetProject(), m_dir / "p", problems));
    const fs::path file = m_dir / "p" / "AudioObjects" / "Default Work Unit.swu";
    std::string bytes, error;
    ASSERT_TRUE(FileIO::ReadFile(file, bytes, error));
    auto replace = [&](const std::string& from, const std::string& to) {
        const size_t at = bytes.find(from);
        ASSERT_NE(at, std::string::npos) << from;
        bytes.replace(at, from.size(), to);
    };
    replace("\"Ambience\"", "\"" + std::string(10000, 'A') + "\"");
    replace("\"Rain\"", "\"Rain\\u0007\\nfall\"");
    replace("\"Thunder\"", "\"Thund\xC3\x28r\""); // not UTF-8
    ASSERT_TRUE(FileIO::WriteAtomically(file, bytes, error));

    OpenResult opened = OpenProject(m_dir / "p");
    ASSERT_TRUE(opened.project);
    ASSERT_EQ(opened.problems.size(), 3u) << opened.problems[0].reason;
    for (const StorageProblem& problem : opened.problems)
        EXPECT_EQ(problem.path, file);
    const std::string reasons = opened.problems[0].reason + opened.problems[1].reason + opened.problems[2].reason;
    EXPECT_NE(reasons.find("10000 characters"), std::string::npos) << reasons;
    EXPECT_NE(reasons.find("not UTF-8"), std::string::npos) << reasons;

    const ProjectObject* ambience = FindByPath(*opened.project, L"AudioObjects/Default Work Unit/" +
                                                                    std::wstring(260, L'A'));
    ASSERT_TRUE(ambience);
    ASSERT_EQ(ambience->Children().size(), 2u) << "nothing is lost";
    EXPECT_EQ(ambience->Children()[0]->GetName(), L"Rain  fall");
    EXPECT_EQ(ambience->Children()[1]->GetName(), L"Thund\xFFFD(r");
    auto* unit = dynamic_cast<WorkUnitObject*>(ambience->Parent());
    EXPECT_TRUE(unit->IsDirty()) << "the fixed names are saved with the unit";

    // Two siblings of one name: the second is renamed, both stay.
    bytes.clear();
    ASSERT_TRUE(SaveProject(*opened.project, problems)) << Utf8::FromWide(problems.front().Text());
    ASSERT_TRUE(FileIO::ReadFile(file, bytes, error));
    replace("\"Rain  fall\"", "\"thund\\ufffd(R\"");
    ASSERT_TRUE(FileIO::WriteAtomically(file, bytes, error));
    opened = OpenProject(m_dir / "p");
    ASSERT_TRUE(opened.project);
    ASSERT_EQ(opened.problems.size(), 1u);
    EXPECT_NE(opened.problems[0].reason.find("already named"), std::string::npos) << opened.problems[0].reason;
    ambience = FindByPath(*opened.project, L"AudioObjects/Default Work Unit/" + std::wstring(260, L'A'));
    ASSERT_TRUE(ambience);
    EXPECT_EQ(ambience->Children()[0]->GetName(), L"thund\xFFFD(R");
    EXPECT_EQ(ambience->Children()[1]->GetName(), L"Thund\xFFFD(r 1");
}
