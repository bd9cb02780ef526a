// Values at a date and levels over periods: growth by ten dated rates, levels of ten and of 360 steps.
#include "projections/forecast.h"
#include "projections/growth.h"
#include "projections/levels.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>

namespace qx {
namespace {

/// Dates every so many months from 2005 on, each with a figure of its own.
struct Dated {
    Range<date> dates;
    Range<double> figures;

    Dated(int n, int months, double first, double more) {
        dates.dimension(n);
        figures.dimension(n);
        for (int i = 1; i <= n; ++i) {
            dates(i) = date(2005.0).plusmonths(months * (i - 1), true);
            figures(i) = first + more * (i - 1);
        }
    }
};

Dated& rates() {
    static Dated built(10, 12, 0.02, 0.002);
    return built;
}
const Dated& monthly_levels(int n) {
    static const Dated ten(10, 1, 10.0, 1.0), many(360, 1, 10.0, 1.0);
    return n == 10 ? ten : many;
}
const AnnualSequence& quarters() {
    static const AnnualSequence sequence(4);
    return sequence;
}

void grow(benchmark::State& state) {
    const Growth growth{rates().dates, rates().figures};
    const date day(2014.5);
    for (auto _ : state) benchmark::DoNotOptimize(Grow(day, 100.0, growth, 0));
}
BENCHMARK(grow)->Name("value grown over 10 rates: ours");

/// The same over decimal years that are known beforehand.
void grow_plainly(benchmark::State& state) {
    double years[10], factors[10];
    for (int i = 0; i < 10; ++i) {
        years[i] = 2005.0 + i;
        factors[i] = 1.0 + rates().figures.get(i + 1);
    }
    double day = 2014.5;
    for (auto _ : state) {
        benchmark::DoNotOptimize(day);
        double value = 100.0;
        for (int i = 0; i < 10 && years[i] < day; ++i)
            value *= std::pow(factors[i], (i < 9 ? std::min(years[i + 1], day) : day) - years[i]);
        benchmark::DoNotOptimize(value);
    }
}
BENCHMARK(grow_plainly)->Name("value grown over 10 rates: plain loop");

void read_forecast(benchmark::State& state) {
    const date start(2005.0), day(2010.5);
    const Forecast forecast{rates().figures, start, 12};
    for (auto _ : state) benchmark::DoNotOptimize(Fcst(day, forecast, forecast_interpolated, {}, {}));
}
BENCHMARK(read_forecast)->Name("forecast read at a date: ours");

void level(benchmark::State& state, int steps, int switch_) {
    const Dated& levels = monthly_levels(steps);
    const date finish(2050.0);
    const timeperiod quarter(date(2005.25), date(2005.5));
    const FromSteps from{finish, levels.dates};
    for (auto _ : state) benchmark::DoNotOptimize(ALevels(quarter, from, levels.figures, switch_, {0.0, quarters()}));
}
BENCHMARK_CAPTURE(level, average, 10, level_average)->Name("average of 10 levels over a quarter: ours");
BENCHMARK_CAPTURE(level, start, 10, level_at_start)->Name("level of 10 at a date: ours");

/// A twin's work over a long model: a level of 360 monthly steps read in each of 360 months.
void levels_of_a_model(benchmark::State& state, int switch_) {
    const Dated& levels = monthly_levels(360);
    const date finish(2050.0);
    const FromSteps from{finish, levels.dates};
    for (auto _ : state)
        for (int i = 1; i < 360; ++i)
            benchmark::DoNotOptimize(ALevels({levels.dates.get(i), levels.dates.get(i + 1)}, from, levels.figures,
                                             switch_, {0.0, quarters()}));
}
BENCHMARK_CAPTURE(levels_of_a_model, average, level_average)->Name("average of 360 levels in each of 360 months: ours");
BENCHMARK_CAPTURE(levels_of_a_model, start, level_at_start)->Name("level of 360 in each of 360 months: ours");

} // namespace
} // namespace qx
