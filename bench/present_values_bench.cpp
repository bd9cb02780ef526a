// Present values of projections, beside the same walk in plain C++ for one day count (30/360), payments in advance and
// nothing else.
#include "projections/projection_values.h"

#include <benchmark/benchmark.h>

#include <cmath>

namespace qx {
namespace {

constexpr int years = 30, first_year = 2005;
constexpr double rate = 1000.0, growth_rate = 0.03, discount_rate = 0.08;

const AnnualSequence& quarters() {
    static const AnnualSequence sequence(4);
    return sequence;
}

void growing_stream(benchmark::State& state) {
    const date start(first_year, 1, 1), finish(first_year + years, 1, 1), none;
    double annual = rate;
    const Streams stream{View<date>::of(start), View<date>::of(finish), View<double>::of(annual)};
    const Growth growth{View<date>::of(start), View<double>::of(growth_rate)};
    for (auto step : state) {
        benchmark::DoNotOptimize(annual);
        benchmark::DoNotOptimize(
            PVConGrow({start, discount_rate}, stream, growth, 12, {0.0, quarters(), 5.0, quarters(), none, none}));
    }
}
BENCHMARK(growing_stream)->Name("PVConGrow of 30 years by quarters: ours")->Unit(benchmark::kMicrosecond);

void growing_stream_plainly(benchmark::State& state) {
    for (auto step : state) {
        double annual = rate;
        benchmark::DoNotOptimize(annual);
        double value = 0.0;
        for (int quarter = 0; quarter < 4 * years; ++quarter)
            value +=
                annual / 4.0 * std::pow(1.0 + growth_rate, quarter / 4) / std::pow(1.0 + discount_rate, quarter / 4.0);
        benchmark::DoNotOptimize(value);
    }
}
BENCHMARK(growing_stream_plainly)->Name("PVConGrow of 30 years by quarters: plain C++")->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace qx
