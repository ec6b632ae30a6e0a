// The application over a private copy of the sample project: what it refuses and says, a second
// instance on the same project, files another program changes under it, and a preferences file
// that goes wrong, each with the files on disk checked before and after.

#include "DiskFixture.h"

#include "host/Utf8.h"
#include "sonarium/app/script/ScriptRunner.h"
#include "sonarium/app/session/AppSession.h"
#include "sonarium/core/host/ProjectBuilder.h"
#include "sonarium/core/model/ProjectEdit.h"
#include "sonarium/core/storage/ProjectStorage.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
namespace fs = std::filesystem;

class SessionOnCopy : public testing::Test
{
protected:
    void SetUp() override
    {
        std::vector<std::wstring> messages;
        ASSERT_TRUE(session.OpenProject(sample.Path(), messages));
        for (sn::PaneDefinition const& definition : sn::DefaultPanes())
            session.OpenPane(definition, CRect(0, 0, 300, 600));
    }

    // The line's error, or "ok".
    std::wstring Run(std::wstring const& line)
    {
        std::wstring error;
        return runner.RunLine(line, error) ? L"ok" : error;
    }

    std::wstring Printed()
    {
        std::wstring text = out.str();
        out.str(L"");
        return text;
    }

    disk::SampleCopy sample;
    disk::TempFolder config;
    sn::AppSession session{sn::HostOptions{config.Path() / "preferences.json"}};
    std::wostringstream out;
    sn::ScriptRunner runner{session, out};
};

// Another instance: a process holding the project open until told to go.
class OtherInstance
{
public:
    explicit OtherInstance(fs::path const& folder)
    {
        int ready[2];
        EXPECT_EQ(::pipe(ready), 0);
        EXPECT_EQ(::pipe(m_quit), 0);
        m_process = ::fork();
        if (m_process == 0)
        {
            sn::OpenResult opened = sn::OpenProject(folder, sn::OpenOptions{.lock = true, .progress = {}});
            (void)!::write(ready[1], opened.readOnly.empty() ? "w" : "r", 1);
            char byte;
            (void)!::read(m_quit[0], &byte, 1);
            ::_exit(0);
        }
        (void)!::read(ready[0], &m_mode, 1);
        ::close(ready[0]);
        ::close(ready[1]);
    }
    ~OtherInstance() { Quit(); }
    void Quit()
    {
        if (m_process <= 0)
            return;
        (void)!::write(m_quit[1], "q", 1);
        ::waitpid(m_process, nullptr, 0);
        ::close(m_quit[0]);
        ::close(m_quit[1]);
        m_process = 0;
    }
    pid_t Process() const { return m_process; }
    bool OpenedReadOnly() const { return m_mode == 'r'; }

private:
    pid_t m_process = 0;
    char m_mode = 0;
    int m_quit[2] = {-1, -1};
};
} // namespace

TEST_F(SessionOnCopy, EditsInsideAnUnloadedUnitAreRefusedSayingWhichUnitAndWhy)
{
    const disk::Checksums before = disk::ChecksumsOf(sample.Path());
    EXPECT_EQ(Run(L"host create AudioObjects/World/Cinematics ActorMixer New_In_Unloaded"),
              L"The work unit \"Cinematics\" is not loaded: load it before changing what it holds.");
    EXPECT_EQ(Run(L"host create AudioObjects/World/Props ActorMixer " + std::wstring(300, L'x')),
              L"The name has 300 characters; a name has 260 at most.");
    EXPECT_EQ(Run(L"host create AudioObjects/World/Props Bus Wrong"),
              L"a Bus cannot go under \"Props\" (a WorkUnit)");
    EXPECT_EQ(Run(L"save"), L"ok");
    EXPECT_EQ(disk::Changes(before, disk::ChecksumsOf(sample.Path())), "") << "nothing was accepted to save";

    // A change refused in the middle of a gesture is shown once the gesture is over.
    EXPECT_EQ(Run(L"answer message OK"), L"ok");
    sn::ProjectEdit::SetColor(sn::FindByPath(*session.GetProject(), L"AudioObjects/World/Cinematics"), 3);
    sn::ProjectEdit::SetColor(sn::FindByPath(*session.GetProject(), L"AudioObjects/World/Cinematics"), 4);
    EXPECT_EQ(Run(L"advance 0"), L"ok");
    EXPECT_EQ(Run(L"print dialogs"), L"ok");
    EXPECT_EQ(Printed(), L"dialogs\n  message caption=\"Change Not Made\" text=\"The work unit \\\"Cinematics\\\" is not "
                         L"loaded: load it before changing what it holds.\" style=0x00000030 -> OK\n");
}

TEST_F(SessionOnCopy, ASecondInstanceOpensReadOnlyAndCannotSaveOverTheFirst)
{
    {
        OtherInstance second(sample.Path());
        EXPECT_TRUE(second.OpenedReadOnly()) << "this session has the project open";
    }
    session.CloseProject();
    OtherInstance first(sample.Path());
    ASSERT_FALSE(first.OpenedReadOnly());

    const std::wstring folder = sample.Path().wstring();
    EXPECT_EQ(Run(L"open \"" + folder + L"\""), L"ok");
    const std::wstring said = Printed();
    EXPECT_EQ(said.rfind(L"read-only: the project is open in another instance of Sonarium (process " +
                             std::to_wstring(first.Process()) + L" on host",
                         0),
              0u)
        << said;
    EXPECT_NE(said.find(L"it was opened read-only"), std::wstring::npos) << said;
    const disk::Checksums before = disk::ChecksumsOf(sample.Path());
    EXPECT_EQ(Run(L"host rename AudioObjects/World/Props Mine"), L"ok") << "changes stay possible in memory";
    EXPECT_EQ(Run(L"save"), L"the project could not be saved");
    EXPECT_NE(Printed().find(L"opened read-only"), std::wstring::npos);
    EXPECT_EQ(disk::Changes(before, disk::ChecksumsOf(sample.Path())), "");

    // Once the other instance has closed it, opened again here it saves.
    first.Quit();
    EXPECT_EQ(Run(L"open \"" + folder + L"\""), L"ok");
    EXPECT_EQ(Printed(), L"");
    EXPECT_EQ(Run(L"host rename AudioObjects/World/Props Mine"), L"ok");
    EXPECT_EQ(Run(L"save"), L"ok");
    EXPECT_TRUE(fs::exists(sample.File("AudioObjects/World/Mine.swu")));
}

TEST_F(SessionOnCopy, AFileChangedByAnotherProgramIsPutToTheUser)
{
    const fs::path props = sample.File("AudioObjects/World/Props.swu");
    auto theirEdit = [&](const std::string& from, const std::string& to)
    {
        std::string text = disk::Slurp(props);
        text.replace(text.find(from), from.size(), to);
        disk::Spit(props, text);
        return disk::Checksum(text);
    };
    auto holds = [&](const std::wstring& path) { return sn::FindByPath(*session.GetProject(), path) != nullptr; };

    // Kept: their file stays, the change here stays unsaved.
    ASSERT_EQ(Run(L"host create AudioObjects/World/Props/Props ActorMixer Mine"), L"ok");
    const uint64_t theirs = theirEdit("\"Explosions\"", "\"Theirs\"");
    EXPECT_EQ(Run(L"answer changed keep"), L"ok");
    EXPECT_EQ(Run(L"save"), L"ok");
    EXPECT_EQ(disk::Checksum(disk::Slurp(props)), theirs);
    EXPECT_TRUE(session.GetProject()->Find(sn::FindByPath(*session.GetProject(), L"AudioObjects/World/Props")->Id()));
    EXPECT_TRUE(dynamic_cast<sn::WorkUnitObject*>(sn::FindByPath(*session.GetProject(), L"AudioObjects/World/Props"))
                    ->IsDirty());
    EXPECT_EQ(Run(L"print dialogs"), L"ok");
    EXPECT_EQ(Printed(), L"dialogs\n  changed-file what=\"the work unit \\\"Props\\\"\" path=\"<project>/AudioObjects/World/Props.swu\" -> KeepTheirs\n");

    // Reloaded: their file stays and is read again; the change here is gone, and so is its undo.
    EXPECT_EQ(Run(L"answer changed reload"), L"ok");
    EXPECT_EQ(Run(L"save"), L"ok");
    EXPECT_EQ(disk::Checksum(disk::Slurp(props)), theirs);
    EXPECT_TRUE(holds(L"AudioObjects/World/Props/Props/Theirs"));
    EXPECT_FALSE(holds(L"AudioObjects/World/Props/Props/Mine"));
    EXPECT_EQ(Run(L"host undo"), L"there is nothing to undo");

    // Overwritten: this version replaces theirs.
    ASSERT_EQ(Run(L"host create AudioObjects/World/Props/Props ActorMixer Mine"), L"ok");
    theirEdit("\"Theirs\"", "\"Theirs again\"");
    EXPECT_EQ(Run(L"answer changed overwrite"), L"ok");
    EXPECT_EQ(Run(L"save"), L"ok");
    const std::string written = disk::Slurp(props);
    EXPECT_NE(written.find("\"Mine\""), std::string::npos);
    EXPECT_EQ(written.find("Theirs again"), std::string::npos);

    // Unchanged since, the file is saved over without a question.
    ASSERT_EQ(Run(L"host rename AudioObjects/World/Props/Props/Mine Mine2"), L"ok");
    EXPECT_EQ(Run(L"save"), L"ok");
    EXPECT_NE(disk::Slurp(props).find("\"Mine2\""), std::string::npos);
}

TEST(SessionPreferences, EachProblemWithThePreferencesFileIsToldOnce)
{
    disk::SampleCopy sample;
    disk::TempFolder config;
    const fs::path folder = config.Path() / "sonarium";
    const fs::path path = folder / "preferences.json";
    fs::create_directories(folder);
    disk::Spit(path, "{ \"version\": 1, \"sections\": ");
    std::vector<std::wstring> told;
    {
        sn::AppSession session{sn::HostOptions{path}};
        session.Reports().SetPreferenceListener([&](std::wstring const& problem) { told.push_back(problem); });
        session.Reports().ReportPreferenceProblems();
        ASSERT_EQ(told.size(), 1u);
        EXPECT_NE(told[0].find(path.wstring() + L": "), std::wstring::npos) << Utf8::FromWide(told[0]);
        EXPECT_NE(told[0].find(L"moved aside to " + path.wstring() + L".corrupt-1"), std::wstring::npos);
        EXPECT_NE(told[0].find(L"syntax error"), std::wstring::npos);

        // Its folder turned into a file: nothing can be saved, which is said once, however often it fails.
        fs::remove_all(folder);
        disk::Spit(folder, "in the way");
        std::vector<std::wstring> messages;
        ASSERT_TRUE(session.OpenProject(sample.Path(), messages));
        for (int i = 0; i < 3; ++i)
        {
            session.OpenPane(sn::DefaultPanes()[0]);
            session.ClosePane(0);
            session.Pump();
        }
        ASSERT_EQ(told.size(), 2u);
        EXPECT_NE(told[1].find(L"cannot save the preferences: " + folder.wstring() + L" is a file, not a folder"),
                  std::wstring::npos)
            << Utf8::FromWide(told[1]);
        session.OpenPane(sn::DefaultPanes()[0]);
    }
    EXPECT_EQ(told.size(), 2u) << "the pane closed with the session fails the same way";
    EXPECT_EQ(disk::Slurp(folder), "in the way");
}
