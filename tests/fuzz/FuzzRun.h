#pragma once
// One run of script lines against a fresh copy of a project, in a child process of its own, so
// that a crash, a sanitizer report or a broken check is seen by the parent with the lines that
// led to it. A run either generates its lines from a seed or replays the lines it is given.

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace fuzz
{
struct RunSetup
{
    std::filesystem::path project; // copied before the run: the run never changes it
    std::filesystem::path audio;    // a folder of audio files to drop
    std::filesystem::path work;     // where the run keeps its copy, settings and files
};

struct Outcome
{
    bool failed = false;
    std::string why;                // the check that failed, the signal, or the exit status
    std::vector<std::wstring> lines; // every line run, the last one being where it failed
};

// Generates `steps` gestures from `seed`, checking after each, then settles the session, undoes
// everything, saves and checks that the files are as they were read.
Outcome Generate(RunSetup const& setup, uint64_t seed, int steps);
// Runs the lines as given, checking after each; stops at the first failed check.
Outcome Replay(RunSetup const& setup, std::vector<std::wstring> const& lines);

// What makes two failures the same one: the signal, or the check's text up to its details.
std::string Signature(std::string const& why);
} // namespace fuzz
