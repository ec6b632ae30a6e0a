// A structural refresh of the whole tree, and GUID look-ups, on projects of growing size.
// The cost should follow the number of items shown, not the size of the project.

#include "BenchHost.h"

#include "sonarium/core/host/ProjectGenerator.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>

namespace
{
// args: object count, percent of the nodes shown
void BM_StructuralRefresh(benchmark::State& state)
{
    const auto objects = static_cast<size_t>(state.range(0));
    const auto percent = static_cast<size_t>(state.range(1));
    const size_t before = BenchHost::HeapInUse();
    BenchHost host(objects);
    host.ExpandUntilShown(objects * percent / 100);
    host.View().NotifyRefreshTree(DlgProjectExplorer::RefreshAll);
    const size_t after = BenchHost::HeapInUse();
    for (auto _ : state)
    {
        state.PauseTiming();
        BenchHost::EvictCaches();
        state.ResumeTiming();
        host.View().NotifyRefreshTree(DlgProjectExplorer::RefreshChildrenAdded |
                                      DlgProjectExplorer::RefreshChildrenRemoved);
    }
    const auto items = static_cast<double>(host.Tree().GetCount());
    state.counters["items"] = items;
    state.counters["ns_per_item"] = benchmark::Counter(items, benchmark::Counter::kIsIterationInvariantRate |
                                                                  benchmark::Counter::kInvert);
    // Model, nodes and items together, per object of the project.
    state.counters["bytes_per_object"] = static_cast<double>(after - before) / static_cast<double>(objects);
}
// A small part shown refreshes in milliseconds and is timed as often as the library likes; the
// whole of a large project takes long to build and to refresh, so it is timed a few times only.
BENCHMARK(BM_StructuralRefresh)
    ->ArgsProduct({{10'000, 100'000, 1'000'000}, {1}})
    ->Unit(benchmark::kMillisecond);
// About ten thousand items shown out of projects a hundred times apart: the cost should stay put.
BENCHMARK(BM_StructuralRefresh)->Args({100'000, 10})->Unit(benchmark::kMillisecond);
BENCHMARK(BM_StructuralRefresh)
    ->ArgsProduct({{10'000, 100'000, 1'000'000}, {100}})
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3);

void BM_GetItemWithGUID(benchmark::State& state)
{
    const auto objects = static_cast<size_t>(state.range(0));
    BenchHost host(objects);
    host.ExpandUntilShown(objects / 100);
    host.View().NotifyRefreshTree(DlgProjectExplorer::RefreshAll);
    std::vector<GUID> ids = host.ShownGuids();
    std::shuffle(ids.begin(), ids.end(), std::mt19937(3));
    size_t next = 0;
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(host.Tree().GetItemWithGUID(ids[next], TVI_ROOT));
        next = next + 1 == ids.size() ? 0 : next + 1;
    }
    state.counters["items"] = static_cast<double>(ids.size());
}
// The model alone, for comparison with the whole.
void BM_GenerateProject(benchmark::State& state)
{
    const auto objects = static_cast<size_t>(state.range(0));
    for (auto _ : state)
    {
        const size_t before = BenchHost::HeapInUse();
        auto project = sn::GenerateProject(objects, 7);
        state.counters["model_bytes_per_object"] =
            static_cast<double>(BenchHost::HeapInUse() - before) / static_cast<double>(objects);
    }
}
BENCHMARK(BM_GenerateProject)->Arg(1'000'000)->Unit(benchmark::kMillisecond)->Iterations(1);

BENCHMARK(BM_GetItemWithGUID)->Arg(10'000)->Arg(100'000)->Arg(1'000'000);
} // namespace
