// Renaming many objects by one rule: what the rule makes of a name, what the naming rules and the
// other objects of a place allow, the order numbers follow, and one undo step.

#include "HostFixture.h"

#include "host/Utf8.h"
#include "sonarium/core/model/CurrentState.h"

#include "sonarium/core/model/ProjectEdit.h"
#include "sonarium/core/rename/BatchRename.h"

using namespace sn;
using namespace sn::rename;

namespace
{
const wchar_t* kProject = LR"(
platform Desktop
AudioObjects
  Default Work Unit : WorkUnit
    Ambience : ActorMixer
      Rain_01 : SoundSFX
      Rain_02 : SoundSFX
      Wind : SoundSFX
  Weapons : WorkUnit
  Vehicles : WorkUnit
)";

const std::wstring kAmbience = L"AudioObjects/Default Work Unit/Ambience";

std::vector<std::wstring> Lines(const std::vector<BatchRenameRow>& rows)
{
    std::vector<std::wstring> lines;
    for (const BatchRenameRow& row : rows)
        lines.push_back(row.oldName + L" -> " + row.newName + (row.problem.empty() ? L"" : L" (" + row.problem + L")"));
    return lines;
}
} // namespace

TEST(BatchRename, TheRuleReplacesEveryMatchThenAddsPrefixSuffixAndNumber)
{
    BatchRenameRule rule;
    rule.find = L"a";
    rule.replace = L"aa";
    EXPECT_EQ(L"baaaa", NewName(L"baa", rule, 0)) << "replaced text is not searched again";
    rule = {};
    rule.prefix = L"P_";
    rule.suffix = L"_";
    rule.numbering = true;
    rule.start = 9;
    rule.digits = 3;
    EXPECT_EQ(L"P_Rain_009", NewName(L"Rain", rule, 0));
    EXPECT_EQ(L"P_Rain_010", NewName(L"Rain", rule, 1));
    rule.find = L"Rain";
    EXPECT_EQ(L"P__011", NewName(L"Rain", rule, 2)) << "an empty replacement removes";
}

TEST_F(HostTest, APreviewKeepsTheNamesTheRulesOrThePlaceRefuse)
{
    Open(kProject);
    std::vector<ProjectObject*> objects{At(L"AudioObjects/Weapons"), At(kAmbience + L"/Rain_01"), At(L"AudioObjects")};
    BatchRenameRule rule;
    rule.suffix = L"/";
    const std::vector<std::wstring> why = Lines(Preview(objects, rule));
    EXPECT_NE(std::wstring::npos, why[0].find(L"cannot hold any of")) << "a work unit names a file";
    EXPECT_EQ(L"Rain_01 -> Rain_01/", why[1]) << "other objects may have a slash";
    EXPECT_NE(std::wstring::npos, why[2].find(L"cannot be renamed")) << "a category stays";

    // A name another object of the place keeps, or one two objects of the batch would share.
    rule = {};
    rule.find = L"1";
    rule.replace = L"2";
    EXPECT_NE(std::wstring::npos,
              Lines(Preview({At(kAmbience + L"/Rain_01")}, rule))[0].find(L"Another object here is already named"));
    rule.find = L"_0";
    rule.replace = L"";
    rule.suffix = L"_x";
    std::vector<ProjectObject*> pair{At(kAmbience + L"/Rain_01"), At(kAmbience + L"/Wind")};
    EXPECT_EQ((std::vector<std::wstring>{L"Rain_01 -> Rain1_x", L"Wind -> Wind_x"}), Lines(Preview(pair, rule)));
    rule.find = L"Wind";
    rule.replace = L"Rain_01";
    rule.suffix = L"";
    const std::vector<std::wstring> both = Lines(Preview({At(kAmbience + L"/Rain_02"), At(kAmbience + L"/Wind")}, rule));
    EXPECT_EQ(L"Rain_02 -> Rain_02", both[0]);
    EXPECT_NE(std::wstring::npos, both[1].find(L"Another object here is already named")) << "Rain_01 stays";
}

TEST_F(HostTest, NumbersFollowTheTreeAndTheBatchIsOneStep)
{
    Open(kProject);
    std::vector<ProjectObject*> objects{At(kAmbience + L"/Wind"), At(L"AudioObjects/Vehicles"),
                                        At(kAmbience + L"/Rain_01"), At(kAmbience)};
    SortInHierarchyOrder(objects);
    EXPECT_EQ((std::vector<ProjectObject*>{At(kAmbience), At(kAmbience + L"/Rain_01"), At(kAmbience + L"/Wind"),
                                           At(L"AudioObjects/Vehicles")}),
              objects);
    BatchRenameRule rule;
    rule.suffix = L"_";
    rule.numbering = true;
    EXPECT_EQ(4u, Apply(objects, rule));
    EXPECT_TRUE(At(L"AudioObjects/Default Work Unit/Ambience_01/Wind_03"));
    EXPECT_TRUE(At(L"AudioObjects/Vehicles_04"));
    EXPECT_EQ(L"Batch Rename", HostRef().Undo().GetUndoName());
    HostRef().Undo().Undo();
    EXPECT_TRUE(At(kAmbience + L"/Wind"));
    EXPECT_TRUE(At(L"AudioObjects/Vehicles"));
    EXPECT_EQ(0, HostRef().Properties()[propLockUIUpdate].GetInt());
}
