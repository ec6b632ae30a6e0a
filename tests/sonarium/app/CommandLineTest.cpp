// The sonarium program itself, run as a user runs it, with what it is given wrong: its command
// line and the lines of its scripts. Each says exactly what was wrong on standard error, ends
// with its own status, and leaves the project on disk as it was.

#include "DiskFixture.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <sys/wait.h>

namespace
{
namespace fs = std::filesystem;

struct Outcome
{
    int status = -1;
    std::string errors;
};

// Runs the built program without a display in folder, with arguments as a shell reads them.
Outcome Sonarium(const fs::path& folder, const std::string& arguments)
{
    const std::string command = "cd '" + folder.string() + "' && env -u DISPLAY XDG_CONFIG_HOME='" +
                                (folder / "config").string() + "' '" SONARIUM_BINARY "' </dev/null " +
                                arguments + " >stdout.txt 2>stderr.txt";
    const int status = std::system(command.c_str());
    Outcome outcome;
    outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    outcome.errors = disk::Slurp(folder / "stderr.txt");
    return outcome;
}

class CommandLine : public testing::Test
{
protected:
    void SetUp() override
    {
        fs::create_directories(m_folder.Path() / "Demo");
        for (const fs::directory_entry& entry : fs::directory_iterator(m_sample.Path()))
            fs::rename(entry.path(), m_folder.Path() / "Demo" / entry.path().filename());
        disk::Spit(m_folder.Path() / "notes.txt", "not a project\n");
        m_before = disk::ChecksumsOf(Project());
    }

    fs::path Project() const { return m_folder.Path() / "Demo"; }

    void ExpectProjectUnchanged() const
    {
        EXPECT_EQ(disk::Changes(m_before, disk::ChecksumsOf(Project())), "");
    }

    disk::TempFolder m_folder;
    disk::SampleCopy m_sample;
    disk::Checksums m_before;
};
} // namespace

TEST_F(CommandLine, EachMistakeIsNamedWithTheUsageAndStatus2)
{
    const std::string usage = "usage: sonarium [PROJECT] [--script FILE|-] [--settings DIR]\n";
    disk::Spit(m_folder.Path() / "ok.sonscript", "print selection\n");
    fs::create_directory(m_folder.Path() / "scripts");
    const std::pair<std::string, std::string> cases[] = {
        {"--frobnicate", "sonarium: unknown option --frobnicate\n" + usage},
        {"-x Demo",
         "sonarium: unknown option -x (a project whose name begins with - is given as ./-x)\n" + usage},
        {"Demo --script", "sonarium: --script needs a file name, or - for standard input\n" + usage},
        {"Demo --settings", "sonarium: --settings needs a folder\n" + usage},
        {"Demo --script ''", "sonarium: --script needs a file name, or - for standard input\n" + usage},
        {"Demo Demo/Demo.sonproj", "sonarium: only one project can be opened: Demo/Demo.sonproj\n" + usage},
        {"Missing --script ok.sonscript",
         "sonarium: Missing: file not found\nsonarium: cannot open the project Missing\n"},
        {"notes.txt --script ok.sonscript", "sonarium: notes.txt: is not a project file "
                                            "(*.sonproj)\nsonarium: cannot open the project notes.txt\n"},
        {"Demo/Busses/Mixing.swu --script ok.sonscript",
         "sonarium: Demo/Busses/Mixing.swu: is not a project file (*.sonproj)\n"
         "sonarium: cannot open the project Demo/Busses/Mixing.swu\n"},
        {"Demo/Busses --script ok.sonscript",
         "sonarium: Demo/Busses: no project file (*.sonproj) in the folder\n"
         "sonarium: cannot open the project Demo/Busses\n"},
        {"Demo --script missing.sonscript",
         "sonarium: cannot read the script missing.sonscript: No such file or directory\n"},
        {"Demo --script scripts", "sonarium: the script scripts is a folder, not a file\n"},
    };
    for (const auto& [arguments, expected] : cases)
    {
        const Outcome outcome = Sonarium(m_folder.Path(), arguments);
        EXPECT_EQ(outcome.status, 2) << arguments;
        EXPECT_EQ(outcome.errors, expected) << arguments;
    }
    ExpectProjectUnchanged();

    const Outcome good = Sonarium(m_folder.Path(), "Demo --script ok.sonscript");
    EXPECT_EQ(good.status, 0) << good.errors;
    EXPECT_EQ(good.errors, "");
}

TEST_F(CommandLine, ABadScriptLineStopsTheRunWithItsFileAndLine)
{
    // Each bad line follows a change, so that a run stopped there must not have saved anything.
    const std::string before = "toggle AudioObjects/World\nhost rename AudioObjects/World/Props Things\n";
    const std::pair<std::string, std::string> cases[] = {
        {"click \"AudioObjects/World", "a quote is not closed"},
        {"click \"AudioObjects/World\\\"", "a quote is not closed"},
        {"jump AudioObjects/World", "unknown command \"jump\""},
        {"click", "usage: click ROW [ctrl] [shift] [alt]"},
        {"print tree Audio Events", "unexpected word \"Events\""},
        {"advance -1", "not a number of milliseconds: \"-1\""},
        {"advance 2.5", "not a number of milliseconds: \"2.5\""},
        {"print tree Sideways", "no pane named \"Sideways\""},
        {"click AudioObjects/World/Nothing", "no object at \"AudioObjects/World/Nothing\""},
        {"key PageSideways", "unknown key \"PageSideways\""},
        {"pane Extra Noises", "unknown category \"Noises\""},
        {"click \"AudioObjects/W\xC3orld\"", "the line is not valid UTF-8"},
        {"type \"\xFF\xFE\"", "the line is not valid UTF-8"},
    };
    for (const auto& [line, message] : cases)
    {
        disk::Spit(m_folder.Path() / "bad.sonscript", before + line + "\nsave\n");
        const Outcome outcome = Sonarium(m_folder.Path(), "Demo --script bad.sonscript");
        EXPECT_EQ(outcome.status, 1) << line;
        EXPECT_EQ(outcome.errors, "bad.sonscript:3: " + message + "\n") << line;
    }
    ExpectProjectUnchanged();

    // From standard input, the lines are named as such.
    disk::Spit(m_folder.Path() / "input.txt", "frobnicate\n");
    const Outcome piped = Sonarium(m_folder.Path(), "Demo --script - <input.txt");
    EXPECT_EQ(piped.status, 1);
    EXPECT_EQ(piped.errors, "<stdin>:1: unknown command \"frobnicate\"\n");
}
