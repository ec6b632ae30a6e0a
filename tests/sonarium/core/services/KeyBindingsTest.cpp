#include "sonarium/core/services/KeyBindings.h"
#include "sonarium/core/services/Services.h"

#include <gtest/gtest.h>

using namespace sn;

TEST(KeyBindingsTest, TheShortcutColumnShowsABoundKeyNothingForAnUnboundCommandAndKeyNamesAsGiven)
{
    KeyBindings keys;
    Commands commands;
    const ROString create("ViewProject ExplorerCreateChildSoundSFX");
    const ROString unbound("ViewProject ExplorerCreateChildSwitchContainer");
    commands.Register(create, [](uintptr_t, uintptr_t, uintptr_t, uintptr_t, uintptr_t) { return true; });
    commands.Register(unbound, [](uintptr_t, uintptr_t, uintptr_t, uintptr_t, uintptr_t) { return true; });

    EXPECT_EQ(keys.ShortcutColumn(L"ViewProject ExplorerCreateChildSoundSFX", &commands), L"Ctrl+Shift+N");
    EXPECT_EQ(keys.ShortcutColumn(L"ViewProject ExplorerCreateChildSwitchContainer", &commands), L"");
    EXPECT_EQ(keys.ShortcutColumn(L"F2", &commands), L"F2");
    EXPECT_EQ(keys.ShortcutColumn(L"Delete", &commands), L"Delete");

    keys.Bind(create, L"Ctrl+Alt+S");
    EXPECT_EQ(keys.ShortcutColumn(L"ViewProject ExplorerCreateChildSoundSFX", &commands), L"Ctrl+Alt+S");
    keys.Bind(create, L"");
    EXPECT_EQ(keys.KeyOf(create), L"");
    EXPECT_EQ(keys.ShortcutColumn(L"ViewProject ExplorerCreateChildSoundSFX", &commands), L"")
        << "a command unbound shows no key, not its name";
    EXPECT_EQ(keys.All().count("ViewProject ExplorerCreateChildSoundSFX"), 0u);
}

TEST(KeyBindingsTest, KeyNamesAreModifiersThenOneKey)
{
    for (const wchar_t* good : {L"Ctrl+Shift+N", L"F2", L"F12", L"Delete", L"Ctrl++", L"Ctrl+-", L"Alt+Meta+Home"})
        EXPECT_TRUE(IsKeyName(good)) << good;
    for (const wchar_t* bad : {L"", L"Ctrl+", L"Shift+Ctrl", L"N+Ctrl", L"Ctrl+Shift+Foo", L"F123", L"Ctrl N",
                               L"Hyper+N", L"+N"})
        EXPECT_FALSE(IsKeyName(bad)) << bad;
}
