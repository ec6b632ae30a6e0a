#include "bench/compare/CompareTable.h"

#include <cstdio>

namespace
{
const char* EditText(Edit edit)
{
    switch (edit)
    {
    case Edit::Add:
        return "add";
    case Edit::Delete:
        return "delete";
    case Edit::Rename:
        return "rename";
    case Edit::Move:
        return "move";
    case Edit::Paste:
        return "paste";
    case Edit::Include:
        return "include";
    }
    return "";
}

const char* Shown(bool all)
{
    return all ? "all_expanded" : "roots_only";
}
} // namespace

std::string EditName(Side side, Edit edit, bool all)
{
    return std::string(side == Side::Qt ? "Qt" : "Explorer") + "/" + EditText(edit) + "/" + Shown(all);
}

std::string RefreshName(bool all)
{
    return std::string("Explorer/refresh/") + Shown(all);
}

std::string ExpandAllName(Side side)
{
    return std::string(side == Side::Qt ? "Qt" : "Explorer") + "/expand_all";
}

void CollectingReporter::ReportRuns(const std::vector<Run>& runs)
{
    for (const Run& run : runs)
    {
        if (run.error_occurred || run.run_type != Run::RT_Iteration)
            continue;
        Result result;
        // The processor's time: the machine is shared, and waiting for it is not the code's cost.
        // A run of another process is timed on the clock.
        result.milliseconds = run.run_name.time_type == "real_time" ? run.GetAdjustedRealTime()
                                                                  : run.GetAdjustedCPUTime();
        if (run.time_unit == benchmark::kMicrosecond)
            result.milliseconds /= 1e3;
        else if (run.time_unit == benchmark::kNanosecond)
            result.milliseconds /= 1e6;
        for (const auto& [name, counter] : run.counters)
            result.counters[name] = counter.value;
        m_results[run.run_name.function_name][std::stoul(run.run_name.args)] = result;
    }
    ConsoleReporter::ReportRuns(runs);
}

void CollectingReporter::PrintPair(const char* edit, const char* shown, size_t objects, const Result* qt,
                                   const Result* explorer)
{
    std::printf("%-8s %-13s %10zu %12.3f %15.3f %8.1fx\n", edit, shown, objects, qt ? qt->milliseconds : 0.0,
                explorer ? explorer->milliseconds : 0.0,
                qt && explorer && explorer->milliseconds > 0 ? qt->milliseconds / explorer->milliseconds : 0.0);
}

void CollectingReporter::PrintTable() const
{
    auto find = [this](const std::string& name, size_t objects) -> const Result*
    {
        auto byName = m_results.find(name);
        if (byName == m_results.end())
            return nullptr;
        auto bySize = byName->second.find(objects);
        return bySize == byName->second.end() ? nullptr : &bySize->second;
    };
    std::printf("\n%-8s %-13s %10s %12s %15s %9s\n", "edit", "shown", "objects", "Qt CPU ms", "explorer CPU ms",
                "ratio");
    for (bool all : {true, false})
        for (Edit edit : k_edits)
            for (size_t objects : k_sizes)
            {
                const Result* qt = find(EditName(Side::Qt, edit, all), objects);
                const Result* explorer = find(EditName(Side::Explorer, edit, all), objects);
                if (!qt && !explorer)
                    continue;
                PrintPair(EditText(edit), Shown(all), objects, qt, explorer);
            }
    for (size_t objects : k_sizes)
    {
        const Result* qt = find(ExpandAllName(Side::Qt), objects);
        const Result* explorer = find(ExpandAllName(Side::Explorer), objects);
        if (qt || explorer)
            PrintPair("expand", "from_roots", objects, qt, explorer);
    }
    std::printf("\n%-32s %10s %12s %10s %12s\n", "explorer", "objects", "CPU ms", "rows", "ns per row");
    auto printRefresh = [&find](const std::string& name, const char* title)
    {
        for (size_t objects : k_sizes)
            if (const Result* refresh = find(name, objects))
                std::printf("%-32s %10zu %12.3f %10.0f %12.1f\n", title, objects, refresh->milliseconds,
                            refresh->counters.at("rows"), refresh->counters.at("ns_per_row") * 1e9);
    };
    printRefresh(RefreshName(true), "structural refresh, all expanded");
    printRefresh(ExpandAllName(Side::Explorer), "expand all, every row built");
    printRefresh(RefreshName(false), "refresh, roots only after all");
    for (size_t objects : k_sizes)
        if (const Result* open = find("Explorer/open_from_disk", objects))
            std::printf("%-32s %10zu %12.1f wall, %.0f bytes per object at peak, %.0f ms of processor time\n",
                        "open from disk (sonarium --script)", objects, open->milliseconds,
                        open->counters.at("peak_bytes_per_object"), open->counters.at("processor_ms"));
}
