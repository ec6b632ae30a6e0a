// sonarium-make-sample writes the bundled sample from its text exactly, and a text it cannot
// read leaves the folder it was to replace as it was.

#include "sonarium/core/storage/ProjectLock.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <unistd.h>

namespace
{
namespace fs = std::filesystem;

struct ToolRun
{
    std::string output;
    int status = -1;
};

ToolRun RunTool(std::string const& arguments)
{
    ToolRun run;
    const std::string command = std::string(SONARIUM_MAKE_SAMPLE) + arguments + " 2>&1";
    std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
    char buffer[4096];
    for (size_t read = 0; (read = fread(buffer, 1, sizeof buffer, pipe.get())) > 0;)
        run.output.append(buffer, read);
    run.status = pclose(pipe.release());
    return run;
}

ToolRun MakeSample(fs::path const& source, fs::path const& folder)
{
    return RunTool(" '" + source.string() + "' '" + folder.string() + "'");
}

// Every file below the folder by its relative path, with its bytes.
std::map<std::string, std::string> Contents(fs::path const& folder)
{
    std::map<std::string, std::string> files;
    for (auto const& entry : fs::recursive_directory_iterator(folder))
        // A test with the sample open at this moment holds its lock there: not part of the project.
        if (entry.is_regular_file() && entry.path().filename() != sn::ProjectLock::kFileName)
        {
            std::ifstream in(entry.path(), std::ios::binary);
            std::ostringstream bytes;
            bytes << in.rdbuf();
            files[fs::relative(entry.path(), folder).string()] = bytes.str();
        }
    return files;
}

class MakeSampleTest : public testing::Test
{
protected:
    void SetUp() override { fs::create_directories(m_work); }
    void TearDown() override { fs::remove_all(m_work); }

    fs::path m_work = fs::temp_directory_path() / ("sonarium-make-sample-" + std::to_string(getpid()));
};
} // namespace

TEST_F(MakeSampleTest, TheBundledSampleIsWhatItsTextGives)
{
    const fs::path folder = m_work / "Demo";
    const ToolRun run = MakeSample(SONARIUM_SAMPLES_DIR "/Demo.txt", folder);
    ASSERT_EQ(run.status, 0) << run.output;
    EXPECT_NE(run.output.find("unloaded"), std::string::npos) << run.output;
    const auto written = Contents(folder);
    const auto bundled = Contents(SONARIUM_SAMPLES_DIR "/Demo");
    ASSERT_EQ(written.size(), bundled.size());
    for (auto const& [path, bytes] : bundled)
    {
        ASSERT_TRUE(written.count(path)) << path << " is not written from the text";
        EXPECT_TRUE(written.at(path) == bytes)
            << path << " differs: run sonarium-make-sample after editing Demo.txt";
    }
    EXPECT_FALSE(fs::exists(m_work / "Demo.new")) << "nothing is left beside the folder";
}

TEST_F(MakeSampleTest, ABadTextNamesItsLineAndTheFolderStaysAsItWas)
{
    const fs::path folder = m_work / "Kept";
    fs::create_directories(folder);
    std::ofstream(folder / "notes.txt") << "mine";
    const fs::path text = m_work / "Broken.txt";
    std::ofstream(text)
        << "platform Desktop\nAudioObjects\n  Default Work Unit : WorkUnit\n    Rain : NoSuchType\n";

    const ToolRun run = MakeSample(text, folder);
    EXPECT_NE(run.status, 0);
    EXPECT_NE(run.output.find("Broken.txt: line 4: unknown kind \"NoSuchType\""), std::string::npos)
        << run.output;
    EXPECT_EQ(Contents(folder), (std::map<std::string, std::string>{{"notes.txt", "mine"}}));
    EXPECT_FALSE(fs::exists(m_work / "Kept.new"));

    const ToolRun missing = MakeSample(m_work / "Nowhere.txt", folder);
    EXPECT_NE(missing.status, 0);
    EXPECT_NE(missing.output.find("Nowhere.txt"), std::string::npos) << missing.output;
}

TEST_F(MakeSampleTest, WithoutASourceItOnlyExplainsItself)
{
    const fs::file_time_type before = fs::last_write_time(SONARIUM_SAMPLES_DIR "/Demo");
    const ToolRun bare = RunTool("");
    EXPECT_NE(bare.status, 0);
    EXPECT_NE(bare.output.find("usage: sonarium-make-sample SOURCE [FOLDER]"), std::string::npos) << bare.output;
    EXPECT_EQ(bare.output.find("wrote"), std::string::npos) << bare.output;
    EXPECT_EQ(fs::last_write_time(SONARIUM_SAMPLES_DIR "/Demo"), before);

    const ToolRun help = RunTool(" --help");
    EXPECT_EQ(help.status, 0);
    EXPECT_NE(help.output.find("usage: sonarium-make-sample"), std::string::npos) << help.output;

    // One argument: the folder is the text's name without its extension, beside it.
    fs::copy_file(SONARIUM_SAMPLES_DIR "/Demo.txt", m_work / "Copy.txt");
    const ToolRun beside = RunTool(" '" + (m_work / "Copy.txt").string() + "'");
    EXPECT_EQ(beside.status, 0) << beside.output;
    EXPECT_TRUE(fs::exists(m_work / "Copy"));
}
