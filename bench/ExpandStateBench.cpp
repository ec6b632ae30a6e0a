// Saving and loading the expand state of 10,000 expanded nodes.

#include "BenchHost.h"

#include <benchmark/benchmark.h>

namespace
{
constexpr size_t k_objects = 100'000;
constexpr size_t k_expanded = 10'000;

void BM_SaveExpandStates(benchmark::State& state)
{
    BenchHost host(k_objects);
    state.counters["expanded"] = static_cast<double>(host.ExpandNodes(k_expanded));
    for (auto _ : state)
        host.View().SaveExpandStates();
}
BENCHMARK(BM_SaveExpandStates)->Unit(benchmark::kMillisecond);

void BM_LoadExpandStates(benchmark::State& state)
{
    BenchHost host(k_objects);
    state.counters["expanded"] = static_cast<double>(host.ExpandNodes(k_expanded));
    host.View().SaveExpandStates();
    for (auto _ : state)
        host.View().LoadExpandStates();
}
BENCHMARK(BM_LoadExpandStates)->Unit(benchmark::kMillisecond);
} // namespace
