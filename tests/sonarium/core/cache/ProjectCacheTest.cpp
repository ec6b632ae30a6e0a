// The cache holds each source converted as the settings that apply to it say, drops what a sound
// no longer converts, reports originals it cannot read, and raises "CacheChanged" only when its
// content changed.

#include "HostFixture.h"
#include "sonarium/core/cache/ProjectCache.h"
#include "sonarium/core/model/ProjectEdit.h"

namespace fs = std::filesystem;
namespace conversion = sn::conversion;

namespace
{
class ProjectCache : public HostTest
{
protected:
    void SetUp() override
    {
        HostTest::SetUp();
        sn::Project& project = Open(L"AudioObjects\n  Unit : WorkUnit\n    Steps : RandomContainer\n"
                                    L"      Left : SoundSFX\n        left.wav : AudioSource\n"
                                    L"      Right : SoundSFX\n        right.wav : AudioSource\n");
        project.SetFolder(m_dir / "Game");
        fs::create_directories(m_dir / "Game" / "Originals");
        const fs::path audio = fs::path(SONARIUM_SAMPLES_DIR) / ".." / "tests" / "scripts" / "audio";
        fs::copy_file(audio / "Footstep_Gravel_01.wav", m_dir / "Game" / "Originals" / "left.wav");
    }

    std::vector<std::wstring> Listing()
    {
        std::vector<std::wstring> lines;
        for (const sn::cache::Entry& entry : sn::cache::Entries(*HostRef().GetProject()))
            lines.push_back((entry.source ? std::wstring(entry.source->GetName().c_str()) : L"?") +
                            entry.file.extension().wstring() + L" " + entry.format);
        return lines;
    }
};
} // namespace

TEST_F(ProjectCache, ConvertsWithTheAppliedSettingsAndReportsUnreadableOriginals)
{
    BusRecorder bus({"Project"});
    sn::cache::FillResult result = sn::cache::Fill(At(L"AudioObjects/Unit/Steps"));
    EXPECT_EQ(result.converted, 1);
    ASSERT_EQ(result.failures.size(), 1u);
    EXPECT_EQ(result.failures[0].rfind(L"Originals/right.wav: cannot read it", 0), 0u) << result.failures[0].size();
    EXPECT_EQ(Listing(), std::vector<std::wstring>{L"left.wav.wav PCM 24000, 1 channel"});

    sn::ProjectObject* steps = At(L"AudioObjects/Unit/Steps");
    ASSERT_TRUE(conversion::SetSettings(steps, {conversion::Format::Vorbis, 48000}));
    ASSERT_TRUE(conversion::SetOverride(steps, true));
    sn::cache::Fill(steps);
    EXPECT_EQ(Listing(), std::vector<std::wstring>{L"left.wav.ogg Vorbis 48000, 1 channel"})
        << "the older conversion is replaced";

    sn::ProjectObject* left = At(L"AudioObjects/Unit/Steps/Left");
    ASSERT_TRUE(conversion::SetOverride(left, true));
    ASSERT_TRUE(conversion::SetUse(left, false));
    result = sn::cache::Fill(left);
    EXPECT_EQ(result.skipped, 1);
    EXPECT_TRUE(Listing().empty()) << "a sound playing its originals keeps nothing cached";
    EXPECT_EQ(bus.events, (std::vector<std::string>(3, "Project/CacheChanged")));

    sn::cache::Fill(left);
    EXPECT_FALSE(sn::cache::Clear(*HostRef().GetProject()));
    EXPECT_EQ(bus.events.size(), 3u) << "nothing changed, nothing raised";
}

TEST_F(ProjectCache, ClearingEmptiesItAndForgottenSourcesAreListedAsSuch)
{
    sn::cache::Fill(At(L"AudioObjects/Unit/Steps/Left"));
    ASSERT_TRUE(sn::ProjectEdit::Delete(At(L"AudioObjects/Unit/Steps/Left")));
    EXPECT_EQ(Listing(), std::vector<std::wstring>{L"?.wav PCM 24000, 1 channel"});
    BusRecorder bus({"Project"});
    EXPECT_TRUE(sn::cache::Clear(*HostRef().GetProject()));
    EXPECT_TRUE(Listing().empty());
    EXPECT_FALSE(fs::exists(sn::cache::Folder(*HostRef().GetProject())));
    EXPECT_EQ(bus.events, std::vector<std::string>{"Project/CacheChanged"});
}
