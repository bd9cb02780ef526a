// Internal rates of return and present values of dated cash flows: an investment, level receipts, and its sale.
#include "bench/worksheet_call.h"
#include "rates/cash_flow.h"
#include "rates/discounting.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <vector>

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
    std::vector<OPER> dates, flows;
    for (int i = 1; i <= n; ++i) {
        dates.push_back(number_cell(cash.dates.get(i).dtn()));
        flows.push_back(number_cell(cash.flows.get(i)));
    }
    WorksheetCall call("IRRT");
    call.with(dates).with(flows).with(irr_min).with(irr_max).with(irr_accuracy).with(day_count);
    for (auto _ : state) benchmark::DoNotOptimize(call());
}
BENCHMARK_CAPTURE(rate_of_return, flows_60, 60)->Name("internal rate of return of 60 dated flows, whole call: ours");
BENCHMARK_CAPTURE(rate_of_return, flows_100, 100)->Name("internal rate of return of 100 dated flows, whole call: ours");

/// Newton's method from 10%, to the same accuracy.
double newton(const int* days, const double* flows, int n) {
    double times[range_capacity];
    for (int i = 0; i < n; ++i) times[i] = (days[i] - days[0]) / 365.0;
    double rate = 0.1;
    for (;;) {
        const double log = std::log1p(rate);
        double value = 0.0, slope = 0.0;
        for (int i = 0; i < n; ++i) {
            const double discounted = flows[i] * std::exp(-log * times[i]);
            value += discounted;
            slope -= times[i] * discounted;
        }
        const double step = value * (1.0 + rate) / slope;
        rate -= step;
        if (std::fabs(step) <= irr_accuracy) return rate;
    }
}

void rate_of_return_plainly(benchmark::State& state, int n) {
    const Investment& cash = investment(n);
    std::vector<int> days;
    std::vector<double> flows;
    for (int i = 1; i <= n; ++i) {
        days.push_back(cash.dates.get(i).dtn());
        flows.push_back(cash.flows.get(i));
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(flows.data());
        benchmark::ClobberMemory();
        benchmark::DoNotOptimize(newton(days.data(), flows.data(), n));
    }
}
BENCHMARK_CAPTURE(rate_of_return_plainly, flows_60, 60)
    ->Name("internal rate of return of 60 dated flows, whole call: plain Newton");
BENCHMARK_CAPTURE(rate_of_return_plainly, flows_100, 100)
    ->Name("internal rate of return of 100 dated flows, whole call: plain Newton");

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

void duration(benchmark::State& state) {
    Investment& cash = investment(60);
    const date& start = cash.dates.get(1);
    for (auto _ : state)
        benchmark::DoNotOptimize(DurationT(start, 0.1, cash.dates, cash.flows, day_count, default_periods()));
}
BENCHMARK(duration)->Name("duration of 60 dated flows: ours");

/// What the holder of a bond of 30 years receives, half-yearly, after its price.
Investment& bond(double price) {
    static Investment built;
    built.dates.dimension(61);
    built.flows.dimension(61);
    built.dates(1) = date(2025, 2, 10);
    built.flows(1) = -price;
    for (int i = 1; i <= 60; ++i) {
        built.dates(i + 1) = date(2024, 12, 7).plusmonths(6 * i, true);
        built.flows(i + 1) = 2.125 + (i == 60 ? 100.0 : 0.0);
    }
    return built;
}

void bond_price(benchmark::State& state) {
    Investment& cash = bond(0.0);
    double yield = 0.045;
    for (auto _ : state) {
        benchmark::DoNotOptimize(yield);
        benchmark::DoNotOptimize(
            PVT(cash.dates.get(1), yield, cash.dates, cash.flows, day_count, default_periods(), no_date, no_date, 0));
    }
}
BENCHMARK(bond_price)->Name("price of a bond of 30 years, half-yearly: ours");

void bond_yield(benchmark::State& state) {
    Investment& cash = bond(96.0);
    for (auto _ : state)
        benchmark::DoNotOptimize(
            IRRT(cash.dates, cash.flows, irr_min, irr_max, irr_accuracy, day_count, default_periods(), 0));
}
BENCHMARK(bond_yield)->Name("yield of a bond of 30 years, half-yearly: ours");

} // namespace
} // namespace qx
