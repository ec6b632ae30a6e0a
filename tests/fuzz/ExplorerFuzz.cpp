// sonarium-fuzz: drives explorer panes over a project with random but legal gestures and host
// actions, and checks after every step that the panes agree with the project, that nothing holds
// the UI lock or an undo group, and at the end that undoing everything and saving gives the files
// that were read. A failing seed is cut down to the shortest script that still fails the same
// way, written beside the project copy it runs on.
//
//   sonarium-fuzz [--seed N] [--seeds K] [--steps N] [--generated OBJECTS] [--project DIR]
//                 [--audio DIR] [--work DIR] [--show]
//   sonarium-fuzz --shorten SCRIPT --project DIR --audio DIR [--work DIR]

#include "FuzzRun.h"
#include "host/Utf8.h"
#include "sonarium/core/host/ProjectGenerator.h"
#include "sonarium/core/storage/ProjectStorage.h"

#include <chrono>
#include <fstream>
#include <locale>
#include <iostream>
#include <unistd.h>

namespace
{
namespace fs = std::filesystem;

struct Options
{
    uint64_t seed = 1;
    int seeds = 1;
    int steps = 200;
    size_t generated = 0; // objects of a generated project; 0: the given project
    fs::path project;
    fs::path audio;
    fs::path work = fs::temp_directory_path() / "sonarium-fuzz";
    bool show = false; // print every line run
    fs::path shorten;  // a script to cut down instead of generating
};

bool Parse(int argc, char** argv, Options& options)
{
    for (int i = 1; i < argc; i += 2)
    {
        const std::string key = argv[i];
        if (key == "--show")
        {
            options.show = true;
            --i;
            continue;
        }
        if (i + 1 == argc)
            return std::cerr << "sonarium-fuzz: " << key << " needs a value\n", false;
        const std::string value = argv[i + 1];
        if (key == "--seed")
            options.seed = std::stoull(value);
        else if (key == "--seeds")
            options.seeds = std::stoi(value);
        else if (key == "--steps")
            options.steps = std::stoi(value);
        else if (key == "--generated")
            options.generated = std::stoull(value);
        else if (key == "--project")
            options.project = value;
        else if (key == "--audio")
            options.audio = value;
        else if (key == "--work")
            options.work = value;
        else if (key == "--shorten")
            options.shorten = value;
        else
            return std::cerr << "sonarium-fuzz: unknown option " << key << "\n", false;
    }
    return true;
}

// Takes lines out, in ever smaller chunks, as long as what is left still fails the same way.
std::vector<std::wstring> Shorten(fuzz::RunSetup const& setup, std::vector<std::wstring> lines,
                                  std::string const& signature)
{
    int replays = 0;
    size_t chunk = lines.size() / 2;
    while (chunk >= 1 && replays < 600)
    {
        bool removed = false;
        for (size_t start = 0; start < lines.size() && replays < 600;)
        {
            std::vector<std::wstring> candidate(lines.begin(), lines.begin() + static_cast<long>(start));
            candidate.insert(candidate.end(), lines.begin() + static_cast<long>(std::min(start + chunk, lines.size())),
                             lines.end());
            ++replays;
            const fuzz::Outcome outcome = fuzz::Replay(setup, candidate);
            if (outcome.failed && fuzz::Signature(outcome.why) == signature)
            {
                lines = outcome.lines; // up to the line where it failed
                removed = true;
            }
            else
                start += chunk;
        }
        if (!removed)
            chunk /= 2;
    }
    return lines;
}

// The shortest script, with a copy of the project and the dropped files it names, runnable by
// `sonarium Project --script repro.sonscript` from its folder.
fs::path WriteReproduction(fuzz::RunSetup const& setup, uint64_t seed, std::string const& why,
                           std::vector<std::wstring> const& lines)
{
    const fs::path folder = setup.work / ("seed-" + std::to_string(seed));
    fs::remove_all(folder);
    fs::create_directories(folder);
    fs::copy(setup.project, folder / "Project", fs::copy_options::recursive);
    fs::copy(setup.work / "run" / "files", folder / "files", fs::copy_options::recursive);
    std::ofstream script(folder / "repro.sonscript");
    script << "# sonarium-fuzz seed " << seed << ": " << why << "\n"
           << "# run from this folder: sonarium Project --script repro.sonscript\n"
           << "on-error continue\n";
    for (std::wstring const& line : lines)
        script << Utf8::FromWide(line) << "\n";
    script << "check\n";
    return folder / "repro.sonscript";
}
// Cuts a script (one the fuzz wrote, or any other) down to the shortest that fails the same way.
int ShortenScript(fuzz::RunSetup const& setup, fs::path const& path)
{
    std::ifstream in(path);
    if (!in)
        return std::cerr << "sonarium-fuzz: cannot read " << path << "\n", 2;
    std::vector<std::wstring> lines;
    for (std::string line; std::getline(in, line);)
        if (!line.empty() && line[0] != '#' && line != "on-error continue" && line != "check")
            lines.push_back(Utf8::ToWide(line));
    const fuzz::Outcome outcome = fuzz::Replay(setup, lines);
    if (!outcome.failed)
        return std::cout << path.string() << ": passes\n", 0;
    std::cout << path.string() << ": fails after " << outcome.lines.size() << " lines: " << outcome.why << "\n";
    const auto shortest = Shorten(setup, outcome.lines, fuzz::Signature(outcome.why));
    std::cout << "  shortest script (" << shortest.size() << " lines):\n";
    for (std::wstring const& line : shortest)
        std::cout << "    " << Utf8::FromWide(line) << "\n";
    return 1;
}
} // namespace

int main(int argc, char** argv)
{
    // As the application does: names reach file paths through the locale.
    std::locale::global(std::locale("C.UTF-8"));
    Options options;
    if (!Parse(argc, argv, options))
        return 2;
    fs::create_directories(options.work);
    options.work = fs::absolute(options.work);
    if (options.generated > 0)
    {
        // A generated project, written once and copied for every run.
        options.project = options.work / ("generated-" + std::to_string(options.generated));
        fs::remove_all(options.project);
        auto project = sn::GenerateProject(options.generated, static_cast<uint32_t>(options.seed));
        sn::StorageProblems problems;
        if (!sn::SaveProjectAs(*project, options.project, problems))
            return std::cerr << "sonarium-fuzz: cannot write the generated project\n", 2;
    }
    if (options.project.empty() || options.audio.empty())
        return std::cerr << "sonarium-fuzz: --project (or --generated) and --audio are needed\n", 2;
    const fuzz::RunSetup setup{fs::absolute(options.project), fs::absolute(options.audio), options.work};
    if (!options.shorten.empty())
        return ShortenScript(setup, options.shorten);

    int failures = 0;
    for (uint64_t seed = options.seed; seed < options.seed + static_cast<uint64_t>(options.seeds); ++seed)
    {
        const auto start = std::chrono::steady_clock::now();
        const fuzz::Outcome outcome = fuzz::Generate(setup, seed, options.steps);
        const auto seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        if (options.show)
            for (std::wstring const& line : outcome.lines)
                std::cout << "  " << Utf8::FromWide(line) << "\n";
        if (!outcome.failed)
        {
            std::cout << "seed " << seed << ": " << options.steps << " steps (" << outcome.lines.size()
                      << " lines) passed in " << seconds << " s\n";
            continue;
        }
        ++failures;
        std::cout << "seed " << seed << ": FAILED after " << outcome.lines.size() << " lines: " << outcome.why
                  << "\n";
        const auto shortest = Shorten(setup, outcome.lines, fuzz::Signature(outcome.why));
        std::cout << "  shortest script (" << shortest.size() << " lines): "
                  << WriteReproduction(setup, seed, outcome.why, shortest).string() << "\n";
        for (std::wstring const& line : shortest)
            std::cout << "    " << Utf8::FromWide(line) << "\n";
    }
    std::error_code ignored;
    fs::remove_all(options.work / "run", ignored);
    return failures == 0 ? 0 : 1;
}
