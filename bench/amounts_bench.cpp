// One period of a spread, and a period of a list of dated payments.
#include "projections/curves.h"
#include "projections/payments.h"

#include <benchmark/benchmark.h>

namespace qx {
namespace {

const date Start(2005, 3, 17), Finish(2007, 8, 5);
const timeperiod month(date(2006, 5, 1), date(2006, 6, 1));
const AnnualSequence quarters(4);
constexpr double total = 1000.0;

template <class Amount>
void each_call(benchmark::State& state, Amount amount) {
    for (auto _ : state) benchmark::DoNotOptimize(amount());
}

void uniform(benchmark::State& state, double DayCount, double ProjMode) {
    const Streams one{View<date>::of(Start), View<date>::of(Finish), View<double>::of(total)};
    each_call(state, [&] { return UniSpread(month, one, {DayCount, quarters, ProjMode}); });
}
BENCHMARK_CAPTURE(uniform, accruals, 0.0, 0.0)->Name("UniSpread of one period: ours");
BENCHMARK_CAPTURE(uniform, actual, 3.0, 0.0)->Name("UniSpread of one period, actual/365: ours");
BENCHMARK_CAPTURE(uniform, cash, 0.0, 1.0)->Name("UniSpread of one period, cash: ours");

void curved(benchmark::State& state, double Skew) {
    const Streams one{View<date>::of(Start), View<date>::of(Finish), View<double>::of(total)};
    each_call(state, [&] { return SCurve(month, one, Skew, 3.0, {0.0, quarters, 0.0}); });
}
BENCHMARK_CAPTURE(curved, even, 1.0)->Name("SCurve of one period: ours");
BENCHMARK_CAPTURE(curved, skewed, 0.7)->Name("SCurve of one period, skewed: ours");

void payments(benchmark::State& state) {
    static Range<date> dates;
    static Range<double> amounts;
    dates.dimension(100);
    amounts.dimension(100);
    for (int i = 1; i <= 100; ++i) {
        dates(i) = date(38353.0 + 11 * i);
        amounts(i) = i;
    }
    each_call(state, [&] { return MkPmts(month, {dates, amounts}); });
}
BENCHMARK(payments)->Name("MkPmts of 100 payments: ours");

} // namespace
} // namespace qx
