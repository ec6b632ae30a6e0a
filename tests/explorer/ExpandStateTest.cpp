// Which nodes were open and which row was on top, remembered per user across closed views and
// restarted hosts, and what the views make of stored values they did not write.

#include "TreeStateFixture.h"

#include <algorithm>

namespace
{
std::wstring Project()
{
    return L"platform Linux\nAudioObjects\n  Default Work Unit : WorkUnit\n    Ambience : ActorMixer\n"
           L"      Weather : ActorMixer\n        Rain : SoundSFX\n    Voices : ActorMixer\n      Hello : "
           L"SoundVoice\n" +
           NumberedObjects(L"S", L"SoundSFX", 30, 4) + L"  Props : WorkUnit\n    Door : SoundSFX\n";
}

const wchar_t* kUnit = L"AudioObjects/Default Work Unit";
const wchar_t* kAmbience = L"AudioObjects/Default Work Unit/Ambience";
const wchar_t* kWeather = L"AudioObjects/Default Work Unit/Ambience/Weather";
const wchar_t* kVoices = L"AudioObjects/Default Work Unit/Voices";
const wchar_t* kProps = L"AudioObjects/Props";
const wchar_t* kS04 = L"AudioObjects/Default Work Unit/S04";
} // namespace

using ExpandStateTest = TreeStateTest;

TEST_F(ExpandStateTest, OpenNodesAndTheTopRowSurviveAClosedViewAndARestartedHost)
{
    OpenStable(Project());
    DlgProjectExplorer* view = OpenView({OrbObjectCategories::AudioObjects});
    for (const wchar_t* path : {kUnit, kAmbience, kWeather, kProps, kVoices, kVoices}) // Voices: open, shut
        ClickButton(view, ItemOf(view, path));
    view->GetTreeCtrl().SelectSetFirstVisible(ItemOf(view, kS04));
    const std::vector<std::wstring> rows = Rows(view);
    CloseView(view);

    std::vector<GUID> expected{IdOf(kUnit), IdOf(kAmbience), IdOf(kWeather), IdOf(kProps)};
    std::sort(expected.begin(), expected.end(), GUIDLess());
    EXPECT_EQ(expected, StoredGuids(L"Expanded_3_0"));
    EXPECT_EQ(IdOf(kS04), StoredGuid(L"FirstVisible_3_0"));

    view = OpenView({OrbObjectCategories::AudioObjects});
    EXPECT_EQ(rows, Rows(view));
    EXPECT_EQ(ItemOf(view, kS04), FirstVisible(view));

    RestartHost();
    OpenStable(Project());
    view = OpenView({OrbObjectCategories::AudioObjects});
    EXPECT_EQ(rows, Rows(view));
    EXPECT_EQ(ItemOf(view, kS04), FirstVisible(view));
    EXPECT_TRUE(ItemOf(view, L"AudioObjects/Default Work Unit/Ambience/Weather/Rain"));
    EXPECT_FALSE(IsExpanded(view, ItemOf(view, kVoices)));
}

TEST_F(ExpandStateTest, StoredValuesThatAreNotWholeGuidListsOrNameGoneObjectsAreIgnored)
{
    OpenStable(Project());
    IUserPreferences* store = IUserPreferences::Get();
    const GUID unit = IdOf(kUnit);
    const GUID props = IdOf(kProps);

    // 24 bytes start with a whole GUID, but are not read as one.
    std::vector<unsigned char> bytes(24, 0xAB);
    std::memcpy(bytes.data(), &unit, sizeof(GUID));
    store->SetBinaryValue(kSection, L"Expanded_3_0", bytes.data(), bytes.size());
    DlgProjectExplorer* view = OpenView({OrbObjectCategories::AudioObjects});
    EXPECT_EQ((std::vector<std::wstring>{L"Audio Objects", L"  Default Work Unit", L"  Props"}), Rows(view));
    CloseView(view);

    // Whole GUIDs, one naming nothing and one twice, and a top row that no longer exists.
    GUID unknown = unit;
    unknown.Data1 ^= 0x5A5A5A5A;
    const GUID list[] = {unknown, props, props};
    store->SetBinaryValue(kSection, L"Expanded_3_0", reinterpret_cast<const unsigned char*>(list),
                          sizeof(list));
    store->SetGUIDValue(kSection, L"FirstVisible_3_0", unknown);
    view = OpenView({OrbObjectCategories::AudioObjects});
    EXPECT_FALSE(IsExpanded(view, ItemOf(view, kUnit)));
    EXPECT_TRUE(IsExpanded(view, ItemOf(view, kProps)));
    EXPECT_EQ(view->GetTreeCtrl().GetRootItem(), FirstVisible(view));

    // Nothing open is stored as an empty value, and read back as nothing open.
    ClickButton(view, ItemOf(view, kProps));
    CloseView(view);
    EXPECT_EQ(std::vector<GUID>{}, StoredGuids(L"Expanded_3_0"));
    view = OpenView({OrbObjectCategories::AudioObjects});
    EXPECT_FALSE(IsExpanded(view, ItemOf(view, kProps)));
}
