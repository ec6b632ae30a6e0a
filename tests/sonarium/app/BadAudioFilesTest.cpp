// Files that are no usable audio, dropped on a pane and picked in the importer: the drop is
// refused (no copy cursor, nothing imported), the importer names each file with what is wrong and
// imports nothing of it, and neither changes the tree or any file of the project.

#include "ChildRun.h"
#include "DiskFixture.h"
#include "SessionFixture.h"

#include "sonarium/app/script/ScriptRunner.h"
#include "sonarium/app/session/TreeText.h"

#include <sstream>
#include <sys/stat.h>

namespace
{
namespace fs = std::filesystem;

class BadAudioFiles : public SessionTest
{
protected:
    void SetUp() override
    {
        SessionTest::SetUp();
        std::vector<std::wstring> messages;
        ASSERT_TRUE(session.OpenProject(m_sample.Path(), messages));
        m_files = m_folder.Path();
        const fs::path good = SONARIUM_SOURCE_DIR "/tests/scripts/audio/Footstep_Gravel_01.wav";
        fs::copy_file(good, m_files / "good.wav");
        fs::copy_file(good, m_files / "truncated.wav");
        fs::resize_file(m_files / "truncated.wav", 30);
        disk::Spit(m_files / "notes.wav", "not audio at all\n");
        disk::Spit(m_files / "empty.wav", "");
        fs::create_directory(m_files / "folder.wav");
        m_before = disk::ChecksumsOf(m_sample.Path());
        Run(L"toggle AudioObjects/World");
        Run(L"click AudioObjects/World/Props");
        m_tree = sn::TreeLines(Tree());
    }

    std::wstring Run(const std::wstring& line)
    {
        std::wstring error;
        out.str(L"");
        return runner.RunLine(line, error) ? out.str() : L"error: " + error;
    }

    std::wstring File(const char* name) const { return (m_files / name).wstring(); }

    // What the importer shows for files, picked in its file dialog.
    std::wstring Imported(const std::vector<const char*>& names)
    {
        std::wstring picked;
        for (const char* name : names)
            picked += L" \"" + File(name) + L"\"";
        Run(L"print dialogs");
        Run(L"answer file" + picked);
        Run(L"answer importer import");
        const std::wstring ran = Run(L"command import-audio");
        if (!ran.empty())
            return ran;
        const std::wstring dialogs = Run(L"print dialogs");
        // The importer's part: from its line on.
        const size_t importer = dialogs.find(L"  importer ");
        return importer == std::wstring::npos ? dialogs : dialogs.substr(importer);
    }

    void ExpectNothingChanged()
    {
        EXPECT_EQ(sn::TreeLines(Tree()), m_tree);
        EXPECT_EQ(disk::Changes(m_before, disk::ChecksumsOf(m_sample.Path())), "");
    }

    disk::SampleCopy m_sample;
    disk::TempFolder m_folder;
    fs::path m_files;
    disk::Checksums m_before;
    std::vector<std::wstring> m_tree;
    std::wostringstream out;
    sn::ScriptRunner runner{session, out};
};
} // namespace

TEST_F(BadAudioFiles, ADropOfThemIsRefusedAndImportsNothing)
{
    for (const char* name : {"notes.wav", "truncated.wav", "empty.wav", "folder.wav"})
    {
        SCOPED_TRACE(name);
        Run(L"print drops");
        // Alone, or with a good file: one bad file refuses the whole drop, with or without keys.
        for (const wchar_t* keys : {L"", L" ctrl", L" alt", L" shift"})
            EXPECT_EQ(Run(L"drop AudioObjects/World/Props \"" + File(name) + L"\" \"" + File("good.wav") +
                          L"\"" + keys),
                      L"");
        const std::wstring drops = Run(L"print drops");
        EXPECT_EQ(drops.find(L": copy"), std::wstring::npos) << drops;
        EXPECT_EQ(Run(L"print dialogs"), L"dialogs\n");
        ExpectNothingChanged();
    }
    EXPECT_EQ(Run(L"drop below \"" + File("missing.wav") + L"\""),
              L"error: no file at \"" + File("missing.wav") + L"\"");
}

TEST_F(BadAudioFiles, TheImporterNamesEachWithWhatIsWrong)
{
    EXPECT_EQ(
        Imported({"notes.wav", "truncated.wav", "empty.wav", "folder.wav", "missing.wav"}),
        L"  importer destination=\"AudioObjects/World/Props\" -> Import sfx\n"
        L"    \"" +
            File("notes.wav") +
            L"\" this is not an audio file that can be read (Format not recognised.)\n"
            L"    \"" +
            File("truncated.wav") +
            L"\" this is not an audio file that can be read (Error in WAV file. No 'data' chunk marker.)\n"
            L"    \"" +
            File("empty.wav") +
            L"\" the file is empty\n"
            L"    \"" +
            File("folder.wav") +
            L"\" this is a folder, not an audio file\n"
            L"    \"" +
            File("missing.wav") + L"\" there is no such file\n");
    ExpectNothingChanged();
}

TEST_F(BadAudioFiles, AFileTheUserMayNotReadIsNamedAsSuch)
{
    // As an ordinary user, so that the permission stops even a test run as root.
    const std::string found = child::Run(
        [&](child::Findings& found)
        {
            if (!child::BecomeOrdinaryUser(m_folder.Path()))
                return found.Check(false, "cannot run as an ordinary user");
            ::chmod((m_files / "good.wav").c_str(), 0);
            const std::wstring shown = Imported({"good.wav"});
            found.Check(shown.find(File("good.wav") + L"\" the file cannot be read: Permission denied\n") !=
                            std::wstring::npos,
                        "the importer says: " + std::string(shown.begin(), shown.end()));
        });
    EXPECT_EQ(found, "");
    ExpectNothingChanged();
}
