// Capital values and equivalent yields as whole worksheet calls, beside the same formulas in plain C++ (no checks, no
// trace), and a plain bisection for the yield.
#include "bench/worksheet_call.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cmath>

namespace qx {
namespace {

void run(benchmark::State& state, const WorksheetCall& call) {
    for (auto step : state) benchmark::DoNotOptimize(call());
}

double perpetuity(double yield, double years, double m) {
    return 1.0 / (m * std::pow(1.0 + yield, years) * (1.0 - std::pow(1.0 + yield, -1.0 / m)));
}
double term_and_reversion(double yield) {
    return 100000.0 * perpetuity(yield, 0.0, 4.0) + 20000.0 * perpetuity(yield, 2.5, 4.0);
}

void cap_value(benchmark::State& state) {
    run(state, WorksheetCall("CapValue").with(0.07).with(120000).with(100000).with(30));
}
BENCHMARK(cap_value)->Name("CapValue, whole call: ours");

void cap_value_plainly(benchmark::State& state) {
    double yield = 0.07;
    for (auto step : state) {
        benchmark::DoNotOptimize(yield);
        benchmark::DoNotOptimize(term_and_reversion(yield));
    }
}
BENCHMARK(cap_value_plainly)->Name("CapValue, whole call: plain C++");

void equivalent_yield(benchmark::State& state) {
    run(state, WorksheetCall("EqYield").with(1.7e6).with(120000).with(100000).with(30).with(0).with(0).with(4));
}
BENCHMARK(equivalent_yield)->Name("EqYield, whole call: ours");

void equivalent_yield_plainly(benchmark::State& state) {
    double price = 1.7e6;
    for (auto step : state) {
        benchmark::DoNotOptimize(price);
        double low = 0.000001, high = 1.0;
        while (high - low > 1e-10) {
            const double middle = 0.5 * (low + high);
            (term_and_reversion(middle) > price ? low : high) = middle;
        }
        benchmark::DoNotOptimize(low);
    }
}
BENCHMARK(equivalent_yield_plainly)->Name("EqYield, whole call: plain C++");

void cap_value_cash_flow(benchmark::State& state) {
    run(state, WorksheetCall("CapValueDCF")
                   .with(0.06)
                   .with(0.09)
                   .with(120000)
                   .with(100000)
                   .with(240)
                   .with(0)
                   .with(0)
                   .with(60)
                   .with(4));
}
BENCHMARK(cap_value_cash_flow)->Name("CapValueDCF of 20 years, whole call: ours");

/// Twenty annual rents.
struct Rents {
    std::array<OPER, 20> rents, months;
    Rents() {
        for (std::size_t i = 0; i < rents.size(); ++i) {
            rents[i] = number_cell(100000.0 + 1000.0 * static_cast<double>(i));
            months[i] = number_cell(12.0 * static_cast<double>(i));
        }
    }
};

void cap_value_list(benchmark::State& state) {
    Rents list;
    run(state, WorksheetCall("CapValueDCFG").with(0.06).with(0.09).with(list.rents).with(list.months));
}
BENCHMARK(cap_value_list)->Name("CapValueDCFG of 20 annual rents, whole call: ours");

void equivalent_yield_list(benchmark::State& state) {
    Rents list;
    run(state, WorksheetCall("EqYieldG").with(1.7e6).with(list.rents).with(list.months));
}
BENCHMARK(equivalent_yield_list)->Name("EqYieldG of 20 annual rents, whole call: ours");

} // namespace
} // namespace qx
