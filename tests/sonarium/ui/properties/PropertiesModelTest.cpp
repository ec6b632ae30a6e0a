// The property inspector's model over a running host: the rows each object shows, the values
// several objects share, edits that go through undo, and an inspector that follows the project.

#include "HostFixture.h"

#include "host/OrbObjNotify.h"
#include "sonarium/core/model/ProjectEdit.h"
#include "sonarium/ui/properties/PropertiesModel.h"

#include <algorithm>

namespace
{
const wchar_t* kProject = LR"(
platform Desktop
platform Console
AudioObjects
  Default Work Unit : WorkUnit
    Ambience : ActorMixer
      Rain : SoundSFX
      Wind : RandomContainer
)";
const std::wstring kUnit = L"AudioObjects/Default Work Unit";

// A source of rows that only this test knows: registering it is all it takes to be shown.
void DepthRows(sn::ProjectObject const& object, sn::PropertyRowSink& rows)
{
    int depth = 0;
    for (sn::ProjectObject const* at = object.Parent(); at; at = at->Parent())
        ++depth;
    rows.Add("depth", L"Depth", std::to_wstring(depth));
}
[[maybe_unused]] const bool k_depthSource = sn::RegisterPropertyRowSource({1000, &DepthRows, nullptr});

class PropertiesModelTest : public HostTest
{
protected:
    void SetUp() override
    {
        HostTest::SetUp();
        Open(kProject);
        m_model = std::make_unique<sn::PropertiesModel>();
    }
    void TearDown() override
    {
        m_model.reset();
        HostTest::TearDown();
    }

    // What the explorer does when the user inspects objects.
    void Inspect(std::vector<std::wstring> const& paths)
    {
        std::vector<IOrbObject*> objects;
        for (std::wstring const& path : paths)
            objects.push_back(At(path));
        OrbObjNotify::FireInspectNotification(objects, -1, -1, false, NotifyHelper::InspectTab_Default, false,
                                              false, true, nullptr);
    }

    sn::PropertyRow const* Row(std::string const& key)
    {
        for (sn::PropertyRow const& row : m_model->Rows())
            if (row.key == key)
                return &row;
        return nullptr;
    }

    std::unique_ptr<sn::PropertiesModel> m_model;
};
} // namespace

TEST_F(PropertiesModelTest, OneObjectShowsWhatItIsWhereItLivesAndItsInclusion)
{
    EXPECT_EQ(m_model->Lines(), std::vector<std::wstring>{L"(nothing)"});
    Inspect({kUnit + L"/Ambience/Rain"});
    const std::vector<std::wstring> lines = m_model->Lines();
    ASSERT_EQ(lines.size(), 11u);
    EXPECT_EQ(lines[0], L"Type: Sound SFX");
    EXPECT_EQ(lines[1], L"Name: Rain  [editable]");
    EXPECT_EQ(lines[2].rfind(L"GUID: {", 0), 0u);
    EXPECT_EQ(lines[3], L"Work Unit: Default Work Unit");
    EXPECT_EQ(lines[4], L"File: AudioObjects/Default Work Unit.swu");
    EXPECT_EQ(lines[5], L"Colour: inherited  [editable]");
    EXPECT_EQ(lines[6], L"Notes:  [editable]");
    EXPECT_EQ(lines[7], L"Included on Desktop: Yes");
    EXPECT_EQ(lines[8], L"Included on Console: Yes");
    EXPECT_EQ(lines[9], L"Inclusion Linked: Yes");
    EXPECT_EQ(lines[10], L"Depth: 3") << "a registered source adds its rows, in its order";

    // A category's root: no work unit of its own, a name the user cannot change.
    Inspect({L"AudioObjects"});
    EXPECT_EQ(Row("type")->Common(), L"Category Root (Audio Objects)");
    EXPECT_EQ(Row("name")->edit, sn::PropertyEdit::None);
    EXPECT_EQ(Row("work-unit"), nullptr);
    EXPECT_EQ(Row("included:Desktop"), nullptr);
}

TEST_F(PropertiesModelTest, SeveralObjectsShowWhatTheyShareAndTakeOneEditTogether)
{
    sn::ProjectObject* rain = At(kUnit + L"/Ambience/Rain");
    sn::ProjectObject* wind = At(kUnit + L"/Ambience/Wind");
    Inspect({kUnit + L"/Ambience/Rain", kUnit + L"/Ambience/Wind"});
    EXPECT_EQ(Row("colour")->Common(), L"inherited");
    EXPECT_EQ(Row("type")->Common(), std::nullopt);
    EXPECT_EQ(Row("type")->values,
              (std::vector<std::optional<std::wstring>>{L"Sound SFX", L"Random Container"}));
    EXPECT_EQ(Row("name")->edit, sn::PropertyEdit::None) << "a name belongs to one object";

    std::wstring why;
    EXPECT_FALSE(m_model->Edit("name", L"Storm", why));
    EXPECT_EQ(why, L"Name cannot be changed for several objects at once");
    ASSERT_TRUE(m_model->Edit("colour", L"5", why)) << why;
    EXPECT_EQ(rain->GetColor(), 5);
    EXPECT_EQ(wind->GetColor(), 5);
    EXPECT_EQ(Row("colour")->Common(), L"5 #8DB32B");
    ASSERT_TRUE(m_model->Edit("notes", L"wet\nand windy", why));
    const std::vector<std::wstring> lines = m_model->Lines();
    EXPECT_NE(std::find(lines.begin(), lines.end(), L"Notes: wet\\nand windy  [editable]"), lines.end())
        << "one printed line per row";

    // Each edit is one step of undo, and the rows follow undo as they follow the edit.
    HostRef().Undo().Undo();
    EXPECT_EQ(Row("notes")->Common(), L"");
    HostRef().Undo().Undo();
    EXPECT_EQ(rain->GetColor(), -1);
    EXPECT_EQ(wind->GetColor(), -1);
    EXPECT_EQ(Row("colour")->Common(), L"inherited");

    EXPECT_FALSE(m_model->Edit("colour", L"pink", why));
    EXPECT_EQ(why, L"not a colour: \"pink\" (inherited, or a palette number from 0 to 15)");
    EXPECT_FALSE(m_model->Edit("guid", L"{}", why));
    EXPECT_FALSE(m_model->Edit("weight", L"3", why));
    EXPECT_EQ(why, L"the inspected objects have no such property");
    EXPECT_FALSE(HostRef().Undo().CanUndo()) << "refused edits leave no step";
}

TEST_F(PropertiesModelTest, ANameIsCheckedAndTheInspectorFollowsTheProject)
{
    Inspect({kUnit + L"/Ambience/Wind"});
    std::wstring why;
    EXPECT_FALSE(m_model->Edit("name", L"  ", why));
    EXPECT_EQ(why, L"A name cannot be empty.");
    EXPECT_EQ(At(kUnit + L"/Ambience/Wind")->GetName(), L"Wind");
    ASSERT_TRUE(m_model->Edit("name", L"Gale", why)) << why;
    EXPECT_EQ(Row("name")->Common(), L"Gale");

    // A change made elsewhere shows at once; an object deleted drops out.
    const uint64_t version = m_model->Version();
    sn::ProjectEdit::SetColor(At(kUnit + L"/Ambience/Gale"), 2);
    EXPECT_GT(m_model->Version(), version);
    EXPECT_EQ(Row("colour")->Common(), L"2 #2E9FD6");
    Inspect({kUnit + L"/Ambience/Rain", kUnit + L"/Ambience/Gale"});
    sn::ProjectEdit::Delete(At(kUnit + L"/Ambience/Gale"));
    ASSERT_EQ(m_model->Objects().size(), 1u);
    EXPECT_EQ(m_model->Objects().front()->GetName(), L"Rain");

    // Closing the project empties the inspector before its objects go.
    EXPECT_TRUE(m_model->Shows({At(kUnit + L"/Ambience/Rain")}));
    HostRef().CloseProject();
    EXPECT_TRUE(m_model->Objects().empty());
    EXPECT_TRUE(m_model->Rows().empty());
}

TEST_F(PropertiesModelTest, PartsAndStoredPropertiesShowAsPrintObjectTellsThem)
{
    sn::ProjectObject* rain = At(kUnit + L"/Ambience/Rain");
    sn::ProjectObject* source = sn::ProjectEdit::Create(rain, PMTreeNode::AudioSource, L"rain.wav");
    ASSERT_TRUE(source);
    ASSERT_TRUE(sn::ProjectEdit::SetProperty(rain, "Volume", L"-6"));
    ASSERT_TRUE(sn::ProjectEdit::SetProperty(rain, "Notes", L"soft"));
    Inspect({kUnit + L"/Ambience/Rain"});
    ASSERT_TRUE(Row("source:1"));
    EXPECT_EQ(Row("source:1")->label, L"Source");
    EXPECT_EQ(Row("source:1")->Common()->rfind(L"\"rain.wav\": file -, no language", 0), 0u);
    ASSERT_TRUE(Row("property:Volume"));
    EXPECT_EQ(Row("property:Volume")->Common(), L"-6");
    EXPECT_EQ(Row("property:Notes"), nullptr) << "notes keep their own editable row";
    EXPECT_EQ(Row("notes")->Common(), L"soft");
}
