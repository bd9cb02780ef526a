// Internal rates of return and present values of dated cash flows: an investment, level receipts, and its sale.
#include "rates/cash_flow.h"
#include "rates/discounting.h"

#include <benchmark/benchmark.h>

#include <cmath>

namespace qx {
namespace {

constexpr double day_count = 3; // actual/365, which everyone shares

struct Investment {
    Range<date> dates;
    Range<double> flows;

    /// Flows every 91 days, all but the first and the last of them receipts of 25.
    void build(int n) {
        dates.dimension(n);
        flows.dimension(n);
        for (int i = 1; i <= n; ++i) {
            dates(i) = date(38353.0 + 91 * (i - 1));
            flows(i) = i == 1 ? -1000.0 : i == n ? 1025.0 : 25.0;
        }
    }
};
Investment& investment(int n) {
    static Investment built;
    built.build(n);
    return built;
}

void rate_of_return(benchmark::State& state, int n) {
    Investment& cash = investment(n);
    for (auto _ : state)
        benchmark::DoNotOptimize(
            IRRT(cash.dates, cash.flows, irr_min, irr_max, irr_accuracy, day_count, default_periods(), 0));
}
BENCHMARK_CAPTURE(rate_of_return, flows_60, 60)->Name("internal rate of return of 60 dated flows: ours");
BENCHMARK_CAPTURE(rate_of_return, flows_100, 100)->Name("internal rate of return of 100 dated flows: ours");

void present_value(benchmark::State& state) {
    Investment& cash = investment(60);
    const date& start = cash.dates.get(1);
    for (auto _ : state)
        benchmark::DoNotOptimize(
            PVT(start, 0.1, cash.dates, cash.flows, day_count, default_periods(), no_date, no_date, 0));
}
BENCHMARK(present_value)->Name("present value of 60 dated flows: ours");

void present_value_plainly(benchmark::State& state) {
    const Investment& cash = investment(60);
    int days[60];
    double flows[60];
    for (int i = 0; i < 60; ++i) {
        days[i] = cash.dates.get(i + 1).dtn();
        flows[i] = cash.flows.get(i + 1);
    }
    double rate = 0.1;
    for (auto _ : state) {
        benchmark::DoNotOptimize(rate);
        double sum = 0.0;
        for (int i = 0; i < 60; ++i) sum += flows[i] / std::pow(1.0 + rate, (days[i] - days[0]) / 365.0);
        benchmark::DoNotOptimize(sum);
    }
}
BENCHMARK(present_value_plainly)->Name("present value of 60 dated flows: plain loop");

} // namespace
} // namespace qx
