// Conversion settings apply from the nearest object that overrides them; each change raises its
// own notification when made and when undone.

#include "HostFixture.h"
#include "sonarium/core/audio/Conversion.h"

namespace conversion = sn::conversion;

namespace
{
class Conversion : public HostTest
{
protected:
    void SetUp() override
    {
        HostTest::SetUp();
        Open(L"AudioObjects\n  Unit : WorkUnit\n    Mix : RandomContainer\n      Door : SoundSFX\n        door.wav : AudioSource\n");
    }
};
} // namespace

TEST_F(Conversion, TextsReadBackAndBadOnesAreRefused)
{
    for (const wchar_t* text : {L"PCM source", L"ADPCM 24000", L"Vorbis 192000", L"PCM 8000"})
        EXPECT_EQ(conversion::Text(*conversion::Parse(text)), text);
    EXPECT_EQ(conversion::Text(*conversion::Parse(L"vorbis 48000")), L"Vorbis 48000");
    for (const wchar_t* text : {L"", L"PCM", L"MP3 48000", L"PCM 7999", L"PCM 192001", L"PCM 48k", L"PCM -1",
                                L"PCM 48000 extra", L"PCM 99999999999999999999"})
        EXPECT_FALSE(conversion::Parse(text)) << std::wstring(text).size();
}

TEST_F(Conversion, TheNearestOverridingAncestorApplies)
{
    sn::ProjectObject* mixer = At(L"AudioObjects/Unit/Mix");
    sn::ProjectObject* door = At(L"AudioObjects/Unit/Mix/Door");
    sn::ProjectObject* source = At(L"AudioObjects/Unit/Mix/Door/door.wav");
    EXPECT_FALSE(conversion::HasConversion(source));
    EXPECT_FALSE(conversion::SetOverride(source, true)) << "a source has no settings of its own";
    EXPECT_EQ(conversion::EffectiveOf(source).from, nullptr);

    ASSERT_TRUE(conversion::SetSettings(mixer, {conversion::Format::Vorbis, 22050}));
    EXPECT_EQ(conversion::EffectiveOf(door).from, nullptr) << "settings without override do not apply";
    ASSERT_TRUE(conversion::SetOverride(mixer, true));
    EXPECT_EQ(conversion::EffectiveOf(source).from, mixer);
    EXPECT_EQ(conversion::EffectiveOf(source).settings, (conversion::Settings{conversion::Format::Vorbis, 22050}));

    ASSERT_TRUE(conversion::SetOverride(door, true));
    ASSERT_TRUE(conversion::SetUse(door, false));
    EXPECT_EQ(conversion::EffectiveOf(source).from, door);
    EXPECT_FALSE(conversion::EffectiveOf(source).converted);
    EXPECT_EQ(conversion::EffectiveOf(source).settings, conversion::Settings{});
}

TEST_F(Conversion, EachChangeRaisesItsEventWhenMadeAndWhenUndone)
{
    sn::ProjectObject* door = At(L"AudioObjects/Unit/Mix/Door");
    BusRecorder bus({"SonariumObject", "Conversion"});
    ASSERT_TRUE(conversion::SetSettings(door, {conversion::Format::ADPCM, 0}));
    ASSERT_TRUE(conversion::SetOverride(door, true));
    ASSERT_TRUE(conversion::SetUse(door, false));
    ASSERT_TRUE(HostRef().Undo().Undo());
    ASSERT_TRUE(HostRef().Undo().Undo());
    ASSERT_TRUE(HostRef().Undo().Undo());
    EXPECT_EQ(bus.events, (std::vector<std::string>{
                              "SonariumObject/ConversionSettingsChanged Door",
                              "Conversion/OverrideConversionChanged Door",
                              "Conversion/ConversionUsageChanged Door",
                              "Conversion/ConversionUsageChanged Door",
                              "Conversion/OverrideConversionChanged Door",
                              "SonariumObject/ConversionSettingsChanged Door",
                          }));
    EXPECT_FALSE(conversion::Overrides(door));
    EXPECT_EQ(conversion::OwnSettings(door), conversion::Settings{});
}
