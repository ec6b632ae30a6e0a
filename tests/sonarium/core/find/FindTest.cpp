// Finding objects by name: the index follows every change of the hierarchy (checked against a
// walk of the tree after each change of a long random run), and queries mean what the user
// types.

#include "DiskFixture.h"
#include "HostFixture.h"

#include "host/Utf8.h"
#include "sonarium/core/find/FindQuery.h"
#include "sonarium/core/model/ProjectEdit.h"
#include "sonarium/core/storage/ProjectStorage.h"

#include <random>

namespace
{
using namespace sn;
using N = PMTreeNode::NodeType;

// What a find must answer, by walking the tree: every member of the hierarchy under the scope
// whose name holds every word, in tree order.
void Walk(const ProjectObject* object, const FindQuery& query, std::vector<std::wstring>& out)
{
    if (!ProjectObject::IsHierarchyMember(object->GetObjectType()))
        return;
    const std::string name = NameIndex::Lower(object->NameUtf8());
    bool match = query.anyType || query.types.test(static_cast<size_t>(object->GetNodeType()));
    for (const std::string& word : query.words)
        match = match && name.find(word) != std::string::npos;
    if (match)
        out.push_back(PathOf(*object));
    for (const CSmartPtr<ProjectObject>& child : object->Children())
        Walk(child.Get(), query, out);
}

class FindTest : public HostTest
{
protected:
    std::vector<std::wstring> Found(const std::wstring& text, std::vector<const ProjectObject*> scope = {})
    {
        FindResults results = FindResults::Run(Proj().Names(), FindQuery::Parse(text), scope);
        std::vector<std::wstring> paths;
        for (size_t i = 0; i < results.Count(); ++i)
            paths.push_back(PathOf(*results.At(i)));
        return paths;
    }
    std::vector<std::wstring> Expected(const std::wstring& text)
    {
        std::vector<std::wstring> paths;
        const FindQuery query = FindQuery::Parse(text);
        for (WorkUnitObject* root : Proj().Roots())
            Walk(root, query, paths);
        return paths;
    }
    // The index answers as the tree does, for a word that finds many and for everything.
    void ExpectCurrent(const char* when)
    {
        for (const wchar_t* text : {L"o", L"type:Sound", L"e n"})
            ASSERT_EQ(Found(text), Expected(text)) << when << ", finding \"" << Utf8::FromWide(text) << "\"";
    }
    Project& Proj() { return *m_host->GetProject(); }
};

const wchar_t* const kProject = LR"(AudioObjects
  Default Work Unit : WorkUnit
    Footsteps : ActorMixer
      Footstep_Snow : SoundSFX
      Footstep_Gravel : SoundSFX
      Steps : RandomContainer
        FOOTSTEP_snow_02 : SoundSFX
    Voices : ActorMixer
      Snow_Line : SoundVoice
Busses
  Default Work Unit : WorkUnit
    Snow Bus : Bus
)";

TEST_F(FindTest, WordsMatchAnywhereInTheNameWhateverTheCaseInTreeOrder)
{
    Open(kProject);
    EXPECT_EQ(Found(L"snow"), (std::vector<std::wstring>{
                                  L"AudioObjects/Default Work Unit/Footsteps/Footstep_Snow",
                                  L"AudioObjects/Default Work Unit/Footsteps/Steps/FOOTSTEP_snow_02",
                                  L"AudioObjects/Default Work Unit/Voices/Snow_Line",
                                  L"Busses/Default Work Unit/Snow Bus",
                              }));
    // Every word, in any order; a word is a substring, not a prefix.
    EXPECT_EQ(Found(L"  SNOW   foot "), Found(L"tstep now"));
    EXPECT_EQ(Found(L"snow foot").size(), 2u);
    EXPECT_TRUE(Found(L"snow rain").empty());
    EXPECT_TRUE(Found(L"").empty()) << "an empty field finds nothing";

    // type: keeps kinds whose display name begins with the given words.
    EXPECT_EQ(Found(L"snow type:Sound").size(), 3u) << "Sound SFX and Sound Voice";
    EXPECT_EQ(Found(L"type:soundvoice"), std::vector<std::wstring>{L"AudioObjects/Default Work Unit/Voices/Snow_Line"});
    EXPECT_EQ(Found(L"type:Random"), std::vector<std::wstring>{L"AudioObjects/Default Work Unit/Footsteps/Steps"});
    EXPECT_EQ(Found(L"type:Actor-Mixer").size(), 2u);
    EXPECT_EQ(Found(L"snow type:Bus type:SoundVoice").size(), 2u) << "several kinds: any of them";
    EXPECT_TRUE(Found(L"type:Rand").empty()) << "a kind's words are whole";
    const FindQuery unknown = FindQuery::Parse(L"snow type:Banana");
    EXPECT_EQ(unknown.problem, L"no kind of object is named \"Banana\"");
    EXPECT_TRUE(Found(L"snow type:Banana").empty());

    // A pane finds only under its own roots.
    const ProjectObject* busses = Proj().GetRoot(OrbObjectCategories::Busses);
    EXPECT_EQ(Found(L"snow", {busses}), std::vector<std::wstring>{L"Busses/Default Work Unit/Snow Bus"});

    // What the list highlights.
    using Parts = std::vector<std::pair<size_t, size_t>>;
    EXPECT_EQ(MatchedParts(L"FOOTSTEP_snow_02", FindQuery::Parse(L"snow foot step")), (Parts{{0, 8}, {9, 13}}));
}

TEST_F(FindTest, TheIndexFollowsCreationRenameDeleteMoveUndoAndRedo)
{
    Open(kProject);
    std::mt19937 random(7);
    auto pick = [&](auto& items) { return items[random() % std::size(items)]; };
    const wchar_t* const words[] = {L"Snow", L"Gravel", L"Oak", L"Door", L"Wind", L"Engine"};
    for (int step = 0; step < 400; ++step)
    {
        // Containers that can hold more, and objects that may change.
        std::vector<ProjectObject*> holders, objects;
        std::vector<ProjectObject*> stack{Proj().GetRoot(OrbObjectCategories::AudioObjects)};
        while (!stack.empty())
        {
            ProjectObject* at = stack.back();
            stack.pop_back();
            if (ProjectEdit::CanHold(at, N::ActorMixer))
                holders.push_back(at);
            if (at->Parent() && at->Parent()->Parent())
                objects.push_back(at);
            for (const auto& child : at->Children())
                stack.push_back(child.Get());
        }
        const std::wstring name = std::wstring(pick(words)) + L"_" + pick(words) + L"_" + std::to_wstring(step);
        switch (random() % 6)
        {
        case 0:
        case 1:
        {
            ProjectObject* parent = pick(holders);
            ProjectEdit::Create(parent, random() % 2 ? N::ActorMixer : N::SoundSFX, name,
                                random() % (parent->Children().size() + 1));
            break;
        }
        case 2:
            ProjectEdit::Rename(pick(objects), name);
            break;
        case 3:
            if (objects.size() > 20)
                ProjectEdit::Delete(pick(objects));
            break;
        case 4:
        {
            ProjectObject* parent = pick(holders);
            ProjectEdit::Move(pick(objects), parent, random() % (parent->Children().size() + 1));
            break;
        }
        case 5:
            random() % 3 ? HostRef().Undo().Undo() : HostRef().Undo().Redo();
            break;
        }
        ExpectCurrent(("after step " + std::to_string(step)).c_str());
    }
    // Objects put again and again at the same place use up the room between two neighbours'
    // places in the order: the index makes room and keeps the order.
    ProjectObject* steps = ProjectEdit::Create(At(L"AudioObjects/Default Work Unit"), N::ActorMixer, L"Crowd", 0);
    ASSERT_TRUE(steps);
    for (int i = 0; i < 80; ++i)
        ASSERT_TRUE(ProjectEdit::Create(steps, N::SoundSFX, L"Squeeze_" + std::to_wstring(i), i % 2 ? 1 : 0));
    ExpectCurrent("after crowding one place");
    EXPECT_EQ(Found(L"squeeze"), Expected(L"squeeze"));
    // More results than are kept in order at first: reading on searches for more, same order.
    for (int i = 0; i < 700; ++i)
        ASSERT_TRUE(ProjectEdit::Create(steps, N::SoundSFX, L"Many_" + std::to_wstring(i),
                                        random() % (steps->Children().size() + 1)));
    EXPECT_EQ(Found(L"many"), Expected(L"many"));

    std::vector<std::wstring> all;
    for (WorkUnitObject* root : Proj().Roots())
        Walk(root, FindQuery{}, all);
    EXPECT_EQ(Proj().Names().Size(), all.size()) << "nothing left behind, nothing counted twice";
}

TEST_F(FindTest, TypingOnNarrowsTheLastResultsAndAgreesWithAFreshSearch)
{
    Open(kProject);
    const std::vector<const ProjectObject*> audio{Proj().GetRoot(OrbObjectCategories::AudioObjects)};
    FindResults last;
    auto type = [&](const std::wstring& text, const std::vector<const ProjectObject*>& scope)
    {
        last = FindResults::Run(Proj().Names(), FindQuery::Parse(text), scope, &last);
        std::vector<std::wstring> paths;
        for (size_t i = 0; i < last.Count(); ++i)
            paths.push_back(PathOf(*last.At(i)));
        return paths;
    };
    // Keys typed on, taken back, a kind that is not one until its word is whole, another scope.
    const wchar_t* const keys[] = {L"f", L"fo", L"foot", L"foot ", L"foot s", L"foot sn", L"foot snow",
                                   L"foot sno", L"o", L"o type:S", L"o type:So", L"o type:Sound",
                                   L"o type:Sound type:Bus", L"snow type:Sound", L"snow_", L"", L"s"};
    for (const wchar_t* text : keys)
    {
        EXPECT_EQ(type(text, {}), Found(text)) << Utf8::FromWide(text);
        EXPECT_EQ(type(text, audio), Found(text, audio)) << Utf8::FromWide(text) << " in the audio objects";
    }
    // A change between two keys: the next key reads the index again.
    EXPECT_EQ(type(L"footstep_s", {}).size(), 2u);
    ASSERT_TRUE(ProjectEdit::Rename(At(L"AudioObjects/Default Work Unit/Footsteps/Footstep_Snow"), L"Footstep_Slush"));
    EXPECT_EQ(type(L"footstep_sl", {}), Found(L"footstep_sl"));
    EXPECT_EQ(type(L"footstep_sl", {}).size(), 1u);
}

TEST_F(FindTest, NamesOfAnyLengthAreFoundOnceWhileTheyChange)
{
    // Names from a few letters, so that words occur often, many times in a name and across the
    // places where the search reads the next block; long ones span several blocks.
    Open(kProject);
    ProjectObject* holder = At(L"AudioObjects/Default Work Unit/Footsteps");
    ProjectObject* other = At(L"AudioObjects/Default Work Unit/Voices");
    std::mt19937 random(23);
    auto name = [&]
    {
        std::wstring text;
        const size_t length = random() % 4 == 0 ? 60 + random() % 140 : 1 + random() % 20;
        for (size_t i = 0; i < length; ++i)
            text += L"aAbx_"[random() % 5];
        return text;
    };
    for (int i = 0; i < 300; ++i)
        ProjectEdit::Create(holder, N::SoundSFX, name(), ProjectEdit::AtEnd);
    for (int step = 0; step < 600; ++step)
    {
        ProjectObject* parent = random() % 2 ? holder : other;
        ProjectObject* object = parent->Children().empty() ? nullptr
                                                           : parent->Children()[random() % parent->Children().size()].Get();
        switch (random() % 4)
        {
        case 0:
            if (object)
                ProjectEdit::Rename(object, name());
            break;
        case 1:
            if (object)
                ProjectEdit::Move(object, parent == holder ? other : holder, random() % 3);
            break;
        case 2:
            if (object)
                ProjectEdit::Delete(object);
            break;
        case 3:
            ProjectEdit::Create(parent, N::SoundSFX, name(), random() % (parent->Children().size() + 1));
            break;
        }
        if (step % 50 != 49)
            continue;
        std::vector<std::wstring> words = {L"a", L"x_", L"abx", L"b_a", L"aaaa", L"_x_a"};
        for (const auto& child : holder->Children())
            if (std::wstring text = child->GetName().c_str(); text.size() >= 80)
            {
                words.push_back(text.substr(5, 70));
                break;
            }
        ASSERT_EQ(words.size(), 7u) << "a long name to find a long word in";
        for (const std::wstring& word : words)
            ASSERT_EQ(Found(word), Expected(word)) << "after step " << step << ", finding " << Utf8::FromWide(word);
    }
}

TEST_F(FindTest, UnloadedUnitsAreNotFoundAndLoadedOnesAre)
{
    disk::SampleCopy sample;
    OpenResult opened = OpenProject(sample.Path());
    ASSERT_TRUE(opened.project);
    m_host->SetProject(std::move(opened.project));
    ExpectCurrent("after opening");
    auto* props = dynamic_cast<WorkUnitObject*>(At(L"AudioObjects/World/Props"));
    ASSERT_TRUE(props);
    const std::wstring inside = props->Children().front()->GetName().c_str();
    ASSERT_FALSE(Found(inside).empty());

    ASSERT_TRUE(UnloadWorkUnit(Proj(), props));
    ExpectCurrent("after unloading");
    for (const std::wstring& path : Found(inside))
        EXPECT_EQ(path.find(L"AudioObjects/World/Props/"), std::wstring::npos) << Utf8::FromWide(path);

    StorageProblems problems;
    ASSERT_TRUE(LoadWorkUnit(Proj(), props, problems));
    ExpectCurrent("after loading again");
    EXPECT_FALSE(Found(inside).empty());
}
} // namespace

namespace
{
TEST_F(FindTest, ManyNamesTypedOneKeyAtATimeAgreeWithTheTree)
{
    // Names from a few letters, so that a word occurs many times in a name and is followed by
    // letters, digits, blanks, other bytes or the end; many results, dense enough for the first
    // of them to be found by walking the tree, and a run of them after thousands that are not,
    // too far for the walk.
    std::mt19937 random(31);
    auto name = [&]
    {
        static const wchar_t* const parts[] = {L"a", L"B", L"b", L"_", L"1", L"3", L" ", L"\u00c9", L"ab"};
        std::wstring text;
        for (size_t length = 1 + random() % 12; text.size() < length;)
            text += parts[random() % std::size(parts)];
        if (text.front() == L' ')
            text.front() = L'_'; // the project's text form keeps no blank before a name
        return text;
    };
    // Siblings' names differ: each ends in its number in letters no query holds.
    auto unique = [](int i)
    {
        std::wstring tail = L"~";
        for (; i > 0; i /= 5)
            tail += L"cdfgh"[i % 5];
        return tail;
    };
    std::wstring text = L"AudioObjects\n  Default Work Unit : WorkUnit\n    Mixed : ActorMixer\n";
    for (int i = 0; i < 1500; ++i)
        text += L"      " + name() + unique(i) + L" : SoundSFX\n";
    text += L"    Plain : ActorMixer\n";
    for (int i = 0; i < 9000; ++i)
        text += L"      plain_" + std::to_wstring(i) + L" : SoundSFX\n";
    text += L"    Late : ActorMixer\n";
    for (int i = 0; i < 1200; ++i)
        text += L"      zq_" + std::to_wstring(i) + L" : SoundSFX\n";
    text += L"Busses\n  Default Work Unit : WorkUnit\n";
    for (int i = 0; i < 400; ++i)
        text += L"    " + name() + unique(i) + L" : Bus\n";
    Open(text);

    const std::vector<const ProjectObject*> audio{Proj().GetRoot(OrbObjectCategories::AudioObjects)};
    const std::vector<const ProjectObject*> busses{Proj().GetRoot(OrbObjectCategories::Busses)};
    for (const auto& scope : {std::vector<const ProjectObject*>{}, audio, busses})
    {
        FindResults last;
        for (const wchar_t* query : {L"ab_1 b", L"aBa", L"b\u00e9 3", L"1 a_b", L"zq_1", L"ba ab type:Sound"})
            for (size_t typed = 1; typed <= std::wcslen(query); ++typed)
            {
                const std::wstring keys(query, typed);
                last = FindResults::Run(Proj().Names(), FindQuery::Parse(keys), scope, &last);
                std::vector<std::wstring> paths;
                for (size_t i = 0; i < last.Count(); ++i)
                    paths.push_back(PathOf(*last.At(i)));
                ASSERT_EQ(paths, Found(keys, scope)) << "typing \"" << Utf8::FromWide(keys) << "\"";
                if (scope.empty())
                {
                    ASSERT_EQ(paths, Expected(keys)) << "typing \"" << Utf8::FromWide(keys) << "\"";
                }
            }
    }
    EXPECT_EQ(Found(L"z").size(), 1200u);
    EXPECT_EQ(Found(L"z"), Expected(L"z"));
}
} // namespace
