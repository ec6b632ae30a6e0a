#pragma once
// The names of the side-by-side benchmarks, and the table printed after they ran: each edit with
// the stock Qt tree's time, the explorer's, and how many times faster the explorer is.

#include <benchmark/benchmark.h>

#include <array>
#include <cstddef>
#include <map>
#include <string>

enum class Edit
{
    Add,
    Delete,
    Rename,
    Move,
    Paste,  // a copy of the sound, pasted into the container by the explorer's own command
    Include // the sound excluded from the current platform
};
enum class Side
{
    Qt,
    Explorer
};

inline constexpr std::array<size_t, 3> k_sizes{10'000, 100'000, 1'000'000};
inline constexpr std::array<Edit, 6> k_edits{Edit::Add, Edit::Delete, Edit::Rename, Edit::Move, Edit::Paste, Edit::Include};

std::string EditName(Side side, Edit edit, bool all);
std::string RefreshName(bool all);
std::string ExpandAllName(Side side);
// Opening a generated project from disk with the application's script driver.
void RegisterOpenBenchmarks();

class CollectingReporter : public benchmark::ConsoleReporter
{
public:
    void ReportRuns(const std::vector<Run>& runs) override;
    void PrintTable() const;

private:
    struct Result
    {
        double milliseconds = 0;
        std::map<std::string, double> counters;
    };
    // One line of the table: both sides and their ratio.
    static void PrintPair(const char* edit, const char* shown, size_t objects, const Result* qt,
                          const Result* explorer);
    // By name without the arguments, then by object count.
    std::map<std::string, std::map<size_t, Result>> m_results;
};
