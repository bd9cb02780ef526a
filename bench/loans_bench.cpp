// Loans, options and spot rates, beside the same arithmetic in plain C++ for one convention and nothing else: no dates,
// no checks, no trace.
#include "banking/loan.h"
#include "banking/loan_solve.h"
#include "banking/option.h"
#include "banking/spot_rates.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <random>

namespace qx {
namespace {

constexpr double decimal_years = 5.0, accruals = 0.0, in_cash = 1.0;

const AnnualSequence& quarterly() {
    static const AnnualSequence sequence(-4);
    return sequence;
}
const AnnualSequence& monthly() {
    static const AnnualSequence sequence(-12);
    return sequence;
}
date month(int n) { return date(2025, 1, 1).plusmonths(n, true); }

/// n advances, `months` apart.
struct Drawn {
    WorkList<date> dates;
    WorkList<double> amounts;

    explicit Drawn(int n, int months = 1) {
        for (int i = 0; i < n; ++i) {
            dates->append(month(i * months));
            amounts->append(1000.0 + i);
        }
    }
    operator Payments() const { return {dates, amounts}; }
};

void loan(benchmark::State& state, int output, double ProjMode) {
    const Drawn drawn(40);
    const date from = month(0), repaid = month(120);
    double rate = 0.06;
    const timeperiod period(month(39), month(42));
    for (auto _ : state) {
        benchmark::DoNotOptimize(rate);
        benchmark::DoNotOptimize(Loan(period, {View<date>::of(from), View<double>::of(rate)}, drawn, repaid, output,
                                      {decimal_years, quarterly(), ProjMode}));
    }
}
BENCHMARK_CAPTURE(loan, interest, loan_interest, accruals)->Name("Loan of 40 advances, interest of a period: ours");
BENCHMARK_CAPTURE(loan, cash, loan_interest, in_cash)->Name("Loan of 40 advances, interest paid in a period: ours");
BENCHMARK_CAPTURE(loan, balance, loan_closing_balance, accruals)->Name("Loan of 40 advances, balance: ours");

void loan_plainly(benchmark::State& state) {
    double drawn[40], when[40], rate = 0.06;
    for (int i = 0; i < 40; ++i) drawn[i] = 1000.0 + i, when[i] = i;
    for (auto _ : state) {
        benchmark::DoNotOptimize(rate);
        benchmark::DoNotOptimize(drawn);
        double interest = 0.0, balance = 0.0;
        for (int i = 0; i < 40; ++i) {
            balance += drawn[i];
            const double end = i < 39 ? when[i + 1] : 120.0;
            interest -= balance * rate * std::max(std::min(end, 42.0) - std::max(when[i], 39.0), 0.0) / 12.0;
        }
        benchmark::DoNotOptimize(interest);
    }
}
BENCHMARK(loan_plainly)->Name("Loan of 40 advances, interest of a period: plain C++");

constexpr int term = 300;

/// A mortgage month by month, its schedule made anew for each run.
void mortgage(benchmark::State& state) {
    const date from = month(0), finish = month(term + 1), repaid = month(term);
    const double advance = 100000.0;
    double rate = 0.06;
    const double service = 12.0 * 644.3014;
    for (auto _ : state) {
        rate += 1e-9;
        double interest = 0.0;
        for (int i = 1; i <= term; ++i)
            interest += Mortgage({month(i), month(i + 1)}, {View<date>::of(from), View<double>::of(rate)},
                                 {finish, View<date>::of(from)}, View<double>::of(service),
                                 {View<date>::of(from), View<double>::of(advance)}, repaid, loan_interest,
                                 decimal_years, decimal_years, monthly(), monthly(), in_cash);
        benchmark::DoNotOptimize(interest);
    }
}
BENCHMARK(mortgage)->Name("Mortgage over 300 months: ours")->Unit(benchmark::kMicrosecond);

void mortgage_q(benchmark::State& state) {
    const date from = month(0), repaid = month(term), never;
    double rate = 0.06;
    for (auto _ : state) {
        rate += 1e-9;
        double interest = 0.0;
        for (int i = 1; i <= term; ++i)
            interest += MortgageQ({month(i), month(i + 1)}, rate, {from, 100000.0}, repaid, never, loan_interest,
                                  {decimal_years, monthly(), in_cash});
        benchmark::DoNotOptimize(interest);
    }
}
BENCHMARK(mortgage_q)->Name("MortgageQ over 300 months: ours")->Unit(benchmark::kMicrosecond);

/// All interest of its life in one period, from a schedule made anew.
void mortgage_once(benchmark::State& state) {
    const date from = month(0), repaid = month(term), never;
    double rate = 0.06;
    for (auto _ : state) {
        rate += 1e-9;
        benchmark::DoNotOptimize(MortgageQ({month(0), month(term + 1)}, rate, {from, 100000.0}, repaid, never,
                                           loan_interest, {decimal_years, monthly(), in_cash}));
    }
}
BENCHMARK(mortgage_once)->Name("interest of a mortgage of 300 months: ours")->Unit(benchmark::kMicrosecond);

void mortgage_plainly(benchmark::State& state) {
    double rate = 0.06;
    for (auto _ : state) {
        rate += 1e-9;
        const double payment = 100000.0 * (rate / 12.0) / -std::expm1(-term * std::log1p(rate / 12.0));
        double balance = 100000.0, interest = 0.0;
        for (int i = 1; i <= term; ++i) {
            const double due = balance * rate / 12.0;
            interest -= due;
            balance += due - payment;
        }
        benchmark::DoNotOptimize(interest);
    }
}
BENCHMARK(mortgage_plainly)->Name("interest of a mortgage of 300 months: plain C++")->Unit(benchmark::kMicrosecond);

void pool(benchmark::State& state, int output) {
    constexpr int loans = 1000;
    WorkList<date> dates;
    WorkList<double> amounts, terms(1), payments(1), none;
    std::mt19937 random(1);
    for (int i = 0; i < loans; ++i) {
        dates->append(date(2020, 1, 1).plusdays(2 * i));
        amounts->append(1000.0 + random() % 9000);
    }
    terms(1) = 10.0;
    payments(1) = 4.0;
    const date from(2020, 1, 1);
    double rate = 0.06;
    const timeperiod period(date(2026, 1, 1), date(2026, 4, 1));
    for (auto _ : state) {
        benchmark::DoNotOptimize(rate);
        benchmark::DoNotOptimize(LoanPool(period, {View<date>::of(from), View<double>::of(rate)}, {dates, amounts},
                                          {terms, payments, none, none}, 0, output, decimal_years, in_cash));
    }
}
BENCHMARK_CAPTURE(pool, interest, loan_interest)
    ->Name("LoanPool of 1,000 loans, interest paid: ours")
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(pool, balance, loan_closing_balance)
    ->Name("LoanPool of 1,000 loans, balance: ours")
    ->Unit(benchmark::kMicrosecond);

/// 20 advances, 10 years of quarterly repayments.
void solve(benchmark::State& state, double kind, double repayment) {
    const Drawn drawn(20, 3);
    WorkList<date> from(20);
    WorkList<double> rates(20), repayments(20);
    for (int i = 1; i <= 20; ++i) {
        from(i) = month(3 * (i - 1));
        rates(i) = 0.06;
        repayments(i) = repayment;
    }
    const date finish = month(121), repaid = month(120), no_roll_up;
    for (auto _ : state)
        benchmark::DoNotOptimize(LoanSolve({from, rates}, {finish, from}, repayments, drawn, repaid, no_roll_up, 0.0,
                                           kind, 0, decimal_years, quarterly(), quarterly()));
}
BENCHMARK_CAPTURE(solve, advance, 1.02, 4000.0)->Name("LoanSolve, an advance: ours")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(solve, repayment, 2.20, 2000.0)
    ->Name("LoanSolve, a repayment rate: ours")
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(solve, interest, 3.20, 2300.0)
    ->Name("LoanSolve, an interest rate: ours")
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(solve, day, 4.0, 4000.0)->Name("LoanSolve, the repayment date: ours")->Unit(benchmark::kMicrosecond);

constexpr OptionTerms terms{42.0, 40.0, 0.5, 0.1, 0.2, 0.03};

void option_formula(benchmark::State& state) {
    OptionTerms varied = terms;
    for (auto _ : state) {
        benchmark::DoNotOptimize(varied);
        benchmark::DoNotOptimize(OptionBS(varied, false, option_price));
    }
}
BENCHMARK(option_formula)->Name("OptionBS: ours");

void option_tree(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(OptionBinom(terms, true, true, 200, option_price));
}
BENCHMARK(option_tree)->Name("OptionBinom of 200 steps: ours")->Unit(benchmark::kMicrosecond);

void option_paths(benchmark::State& state) {
    constexpr double paths = 1e5;
    for (auto _ : state) benchmark::DoNotOptimize(OptionMonte(terms, false, paths, 1, simulated_price));
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(paths));
}
BENCHMARK(option_paths)->Name("OptionMonte of 100,000 paths: ours")->Unit(benchmark::kMicrosecond);

void option_paths_plainly(benchmark::State& state) {
    constexpr int pairs = 50000;
    for (auto _ : state) {
        std::mt19937 random(1);
        std::normal_distribution<double> normal;
        const double deviation = 0.2 * std::sqrt(0.5), middle = 42.0 * std::exp(0.035 - 0.01);
        double sum = 0.0;
        for (int i = 0; i < pairs; ++i) {
            const double moved = std::exp(deviation * normal(random));
            sum += std::max(middle * moved - 40.0, 0.0) + std::max(middle / moved - 40.0, 0.0);
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * 2 * pairs);
}
BENCHMARK(option_paths_plainly)->Name("OptionMonte of 100,000 paths: plain C++")->Unit(benchmark::kMicrosecond);

void bootstrap(benchmark::State& state) {
    WorkList<date> maturities;
    WorkList<double> coupons, prices;
    for (int i = 1; i <= 30; ++i) {
        maturities->append(month(12 * i));
        coupons->append(0.03 + 0.001 * i);
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(
            ZeroCoupon(month(0), maturities, coupons, prices, 2, spot_annual, {decimal_years, quarterly()}).get(30));
}
BENCHMARK(bootstrap)->Name("ZeroCoupon of 30 par yields: ours")->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace qx
