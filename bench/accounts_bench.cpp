// A simulated account: 30 years of quarters financed by loans of 25 years, short-term debt and cash.
#include "banking/accounts_simulation.h"

#include <benchmark/benchmark.h>

#include <cmath>

namespace qx {
namespace {

constexpr int quarters = 120;

struct Waterfall {
    Range<date> dates, rate_dates;
    Range<double> flows, loan_rates, cash_rates, short_term_rates, margins;
    const AnnualSequence paid{-4};

    Waterfall() {
        dates.dimension(quarters);
        flows.dimension(quarters);
        for (int i = 1; i <= quarters; ++i) {
            dates(i) = date(2005.0).plusmonths(3 * (i - 1), true);
            flows(i) = 900.0 * std::sin(2.3 * i) - 50.0;
        }
        const double years[] = {2005, 2010, 2020};
        for (const double year : years) {
            rate_dates.append(date(year));
            loan_rates.append(0.07);
            cash_rates.append(0.02);
            short_term_rates.append(0.1);
            margins.append(0.01);
        }
    }
    double output(int which) const {
        return LoanAcctEM(dates, {0.0, 50.0}, {rate_dates, loan_rates, cash_rates, short_term_rates}, {dates, flows},
                          25.0, {rate_dates, margins}, {0.0, 0.0}, 0, which, {5.0, 5.0, 5.0}, 5.0, {paid, paid, paid},
                          paid, 1.0)(quarters);
    }
};
Waterfall& waterfall() {
    static Waterfall built;
    return built;
}

void run_an_account(benchmark::State& state) {
    for (auto _ : state) {
        waterfall().flows(1) -= 1.0; // another account
        benchmark::DoNotOptimize(waterfall().output(5));
    }
}
BENCHMARK(run_an_account)->Name("account over 120 quarters, run: ours");

void read_an_account(benchmark::State& state) {
    int which = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(waterfall().output(10 * (which % 4) + which % 6));
        ++which;
    }
}
BENCHMARK(read_an_account)->Name("account over 120 quarters, a further output: ours");

} // namespace
} // namespace qx
