// Streams of money in a period, beside the same arithmetic in plain C++ for one day count (30/360) and nothing else: no
// cash, no composite day counts, no checks, no trace.
#include "hosts/sheet/workbook.h"
#include "projections/constant_rate.h"
#include "projections/stepped_rate.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>

namespace qx {
namespace {

constexpr int steps = 10, years = 30, months = 12 * years;

const AnnualSequence& quarters() {
    static const AnnualSequence sequence(4);
    return sequence;
}
Basis accruals() { return {0.0, quarters(), 0.0}; }

date first_of(int year, int month = 1) { return {year, month, 1}; }

/// Dates a year apart with rates, from 2005 on.
struct Yearly {
    WorkList<date> dates;
    WorkList<double> rates;

    explicit Yearly(int n, double rate) {
        for (int i = 0; i < n; ++i) {
            dates->append(first_of(2005 + i));
            rates->append(rate + 0.001 * i);
        }
    }
};

// --- In plain C++ ---------------------------------------------------------------------------------------------------

struct Day {
    int year, month, day;
    int days() const { return 360 * year + 30 * month + std::min(day, 30); }
};

struct PlainPeriod {
    int from, to;
    double years(int start, int finish) const {
        return std::max(std::min(to, finish) - std::max(from, start), 0) / 360.0;
    }
};

/// The years of growth at annual steps from month 0 to month t: the sum of a stream of 1 a year.
double grown(double t, double g) {
    const double whole = std::floor(t);
    const double factor = std::pow(1.0 + g, whole);
    return (factor - 1.0) / g + (t - whole) * factor;
}

// --- A constant rate ------------------------------------------------------------------------------------------------

void constant_rate(benchmark::State& state) {
    const timeperiod period{first_of(2006, 4), first_of(2006, 7)};
    const date start(2005, 2, 15), finish(2010, 6, 24);
    double rate = 1200.0;
    for (auto step : state) {
        benchmark::DoNotOptimize(rate);
        benchmark::DoNotOptimize(
            Con(period, {View<date>::of(start), View<date>::of(finish), View<double>::of(rate)}, accruals()));
    }
}
BENCHMARK(constant_rate)->Name("Con of one period: ours");

void constant_rate_plainly(benchmark::State& state) {
    Day from{2006, 4, 1}, to{2006, 7, 1}, start{2005, 2, 15}, finish{2010, 6, 24};
    for (auto step : state) {
        benchmark::DoNotOptimize(from);
        benchmark::DoNotOptimize(start);
        benchmark::DoNotOptimize(1200.0 * PlainPeriod{from.days(), to.days()}.years(start.days(), finish.days()));
    }
}
BENCHMARK(constant_rate_plainly)->Name("Con of one period: plain C++");

// --- Growth in sections ---------------------------------------------------------------------------------------------

void growing_rate(benchmark::State& state) {
    const Yearly growth(steps, 0.02);
    const timeperiod period{first_of(2014, 4), first_of(2014, 7)};
    const date start(2005, 1, 1), finish(2020, 1, 1);
    double rate = 1200.0;
    for (auto step : state) {
        benchmark::DoNotOptimize(rate);
        benchmark::DoNotOptimize(ConGrow(period,
                                         {View<date>::of(start), View<date>::of(finish), View<double>::of(rate)},
                                         {growth.dates, growth.rates}, 12, accruals()));
    }
}
BENCHMARK(growing_rate)->Name("ConGrow over 10 growth steps: ours");

void growing_rate_plainly(benchmark::State& state) {
    double rates[steps];
    int dates[steps + 1];
    for (int i = 0; i < steps; ++i) {
        rates[i] = 0.02 + 0.001 * i;
        dates[i] = Day{2005 + i, 1, 1}.days();
    }
    dates[steps] = Day{2020, 1, 1}.days();
    const PlainPeriod period{Day{2014, 4, 1}.days(), Day{2014, 7, 1}.days()};
    for (auto step : state) {
        benchmark::DoNotOptimize(rates);
        double market = 1200.0, amount = 0.0;
        for (int i = 0; i < steps && dates[i] < period.to; ++i) {
            if (i > 0) market *= std::pow(1.0 + rates[i - 1], (dates[i] - dates[i - 1]) / 360.0);
            const int from = std::max(dates[i], period.from), to = std::min(dates[i + 1], period.to);
            if (from < to)
                amount +=
                    market * (grown((to - dates[i]) / 360.0, rates[i]) - grown((from - dates[i]) / 360.0, rates[i]));
        }
        benchmark::DoNotOptimize(amount);
    }
}
BENCHMARK(growing_rate_plainly)->Name("ConGrow over 10 growth steps: plain C++");

// --- Steps ----------------------------------------------------------------------------------------------------------

void stepped_rate(benchmark::State& state) {
    const Yearly step_list(steps, 1000.0);
    const timeperiod period{first_of(2005), first_of(2015)};
    const date finish(2015, 1, 1);
    for (auto step : state)
        benchmark::DoNotOptimize(Step(period, FromSteps{finish, step_list.dates}, step_list.rates, accruals()));
}
BENCHMARK(stepped_rate)->Name("FStep of 10 steps: ours");

void stepped_rate_plainly(benchmark::State& state) {
    Day dates[steps + 1];
    double rates[steps];
    for (int i = 0; i < steps; ++i) {
        dates[i] = {2005 + i, 1, 1};
        rates[i] = 1000.0 + 0.001 * i;
    }
    dates[steps] = {2015, 1, 1};
    const PlainPeriod period{Day{2005, 1, 1}.days(), Day{2015, 1, 1}.days()};
    for (auto step : state) {
        benchmark::DoNotOptimize(dates);
        double amount = 0.0;
        for (int i = 0; i < steps; ++i) amount += rates[i] * period.years(dates[i].days(), dates[i + 1].days());
        benchmark::DoNotOptimize(amount);
    }
}
BENCHMARK(stepped_rate_plainly)->Name("FStep of 10 steps: plain C++");

// --- Every month of 30 years ----------------------------------------------------------------------------------------

/// The array formula over a column of months, as a workbook recalculates it.
void twin_of_months(benchmark::State& state) {
    sheet::Workbook book;
    for (int i = 0; i < months; ++i)
        book.set_value({static_cast<std::uint32_t>(i), 0, 0},
                       sheet::Value::number(first_of(2005 + i / 12, i % 12 + 1).dtn()));
    for (int i = 0; i < years; ++i)
        book.set_value({static_cast<std::uint32_t>(i), 1, 0}, sheet::Value::number(first_of(2005 + i).dtn()));
    const sheet::Formula formula = book.read("FStepGrow(A1:A360,1,2035,1000,B1:B30,2005,0.025)");
    const sheet::Area caller{};
    for (auto step : state) benchmark::DoNotOptimize(book.evaluate(formula, caller));
}
BENCHMARK(twin_of_months)->Name("twin of FStepGrow over 360 months: ours")->Unit(benchmark::kMicrosecond);

void scalar_calls_of_months(benchmark::State& state) {
    const Yearly step_list(years, 0.0);
    const date finish(2035, 1, 1), growth_date(2005, 1, 1);
    constexpr double growth_rate = 0.025;
    for (auto step : state) {
        timeperiod period;
        for (int i = 0; i < months; ++i) {
            period.settime(first_of(2005 + i / 12, i % 12 + 1), 1);
            benchmark::DoNotOptimize(StepGrow<FromSteps>(period, finish, 1000.0, step_list.dates,
                                                         {View<date>::of(growth_date), View<double>::of(growth_rate)},
                                                         accruals()));
        }
    }
}
BENCHMARK(scalar_calls_of_months)
    ->Name("twin of FStepGrow over 360 months: scalar calls")
    ->Unit(benchmark::kMicrosecond);

void months_plainly(benchmark::State& state) {
    Day dates[years + 1];
    for (int i = 0; i <= years; ++i) dates[i] = {2005 + i, 1, 1};
    for (auto step : state) {
        benchmark::DoNotOptimize(dates);
        double amounts[months];
        for (int m = 0; m < months; ++m) {
            const Day from{2005 + m / 12, m % 12 + 1, 1}, to{2005 + (m + 1) / 12, (m + 1) % 12 + 1, 1};
            const PlainPeriod period{from.days(), to.days()};
            amounts[m] = 0.0;
            for (int i = 0; i < years && dates[i].days() <= period.to; ++i)
                if (const double part = period.years(dates[i].days(), dates[i + 1].days()); part > 0.0)
                    amounts[m] += 1000.0 * std::pow(1.025, i) * part;
        }
        benchmark::DoNotOptimize(amounts);
    }
}
BENCHMARK(months_plainly)->Name("twin of FStepGrow over 360 months: plain C++")->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace qx
