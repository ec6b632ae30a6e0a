// Opening a generated project from disk as a user does: the application's script driver opens
// the project folder, builds its explorer panes and prints one line. Time and peak memory are
// the whole process's, measured from outside.

#include "bench/compare/CompareTable.h"

#include "sonarium/core/host/ProjectGenerator.h"
#include "sonarium/core/storage/ProjectStorage.h"

#include <benchmark/benchmark.h>

#include <fcntl.h>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <spawn.h>
#include <sys/wait.h>

extern char** environ;

namespace
{
namespace fs = std::filesystem;

// The project folder, written once per run.
fs::path WriteProject(size_t objects)
{
    const fs::path folder = fs::temp_directory_path() / ("sonarium-open-bench-" + std::to_string(objects));
    fs::remove_all(folder);
    std::unique_ptr<sn::Project> project = sn::GenerateProject(objects, 7);
    sn::StorageProblems problems;
    if (!sn::SaveProjectAs(*project, folder, problems))
        return {};
    std::ofstream(folder / "open.script") << "print project\n";
    return folder;
}

void OpenFromDisk(benchmark::State& state)
{
    const auto objects = static_cast<size_t>(state.range(0));
    const fs::path folder = WriteProject(objects);
    if (folder.empty())
    {
        state.SkipWithError("the generated project could not be written");
        return;
    }
    // The peak and the processor time are the child's own, as /usr/bin/time reads them: a child spawned from this process
    // would inherit this process's peak in its accounting.
    const std::string timeTool = "/usr/bin/time";
    const std::string binary = SONARIUM_BINARY;
    const std::string project = folder.string();
    const std::string script = (folder / "open.script").string();
    const std::string peakFile = (folder / "peak.txt").string();
    long peakKilobytes = 0;
    double processorSeconds = 0;
    for (auto _ : state)
    {
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
        char* argv[] = {const_cast<char*>(timeTool.c_str()), const_cast<char*>("-f"), const_cast<char*>("%M %U %S"),
                        const_cast<char*>("-o"), const_cast<char*>(peakFile.c_str()),
                        const_cast<char*>(binary.c_str()), const_cast<char*>(project.c_str()),
                        const_cast<char*>("--script"), const_cast<char*>(script.c_str()), nullptr};
        pid_t child = 0;
        const int spawned = posix_spawn(&child, timeTool.c_str(), &actions, nullptr, argv, environ);
        posix_spawn_file_actions_destroy(&actions);
        int status = 0;
        if (spawned != 0 || waitpid(child, &status, 0) < 0 || !WIFEXITED(status) || WEXITSTATUS(status) != 0)
        {
            state.SkipWithError("sonarium --script failed to open the project (is /usr/bin/time installed?)");
            break;
        }
        long kilobytes = 0;
        double user = 0, system = 0;
        std::ifstream(peakFile) >> kilobytes >> user >> system;
        peakKilobytes = std::max(peakKilobytes, kilobytes);
        processorSeconds += user + system;
    }
    state.counters["peak_bytes_per_object"] = static_cast<double>(peakKilobytes) * 1024.0 / static_cast<double>(objects);
    // The child's own processor time (all its threads), per opening.
    state.counters["processor_ms"] = processorSeconds * 1e3 / static_cast<double>(std::max<int64_t>(state.iterations(), 1));
    if (!std::getenv("SONARIUM_BENCH_KEEP"))
        fs::remove_all(folder);
}
} // namespace

void RegisterOpenBenchmarks()
{
    for (size_t objects : k_sizes)
        benchmark::RegisterBenchmark("Explorer/open_from_disk", OpenFromDisk)
            ->Arg(static_cast<int64_t>(objects))
            ->Unit(benchmark::kMillisecond)
            ->Iterations(objects >= 1'000'000 ? 2 : 3)
            ->UseRealTime();
}
