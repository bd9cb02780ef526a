// What the trace costs while it is on: items stored and written to the file, and a call of a function explained.
#include "addin/function.h"
#include "core/trace.h"

#include <benchmark/benchmark.h>

#include <cstdio>

namespace {

using namespace qx;

void million_items(benchmark::State& state) {
    for (auto _ : state) {
        trace().TraceStart();
        while (trace().count() < clsTrace2::maxitems) trace().info("One item of a long trace, as long as most of them");
        trace().TraceShow();
    }
    state.SetItemsProcessed(state.iterations() * clsTrace2::maxitems);
    std::remove("qx_Trace.qxl");
}
BENCHMARK(million_items)
    ->Name("trace of 1,000,000 items, the file beside: ours")
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(3);

void one_call(benchmark::State& state, bool traced) {
    const Function& function = *find_function("DiffM");
    OPER cells[] = {number_cell(38000), number_cell(39000.5), number_cell(4.0), missing_cell()};
    OPER* const arguments[] = {&cells[0], &cells[1], &cells[2], &cells[3]};
    int items = 0;
    for (auto _ : state) {
        if (traced) {
            state.PauseTiming();
            trace().TraceShow();
            trace().TraceStart();
            state.ResumeTiming();
        }
        benchmark::DoNotOptimize(perform(function, arguments)->val.num);
        items = trace().count();
    }
    trace().TraceShow();
    state.counters["items"] = items;
    std::remove("qx_Trace.qxl");
}
BENCHMARK_CAPTURE(one_call, off, false)->Name("DiffM called with the trace off: ours");
BENCHMARK_CAPTURE(one_call, on, true)->Name("DiffM called with the trace on: ours")->Iterations(2000);

} // namespace
