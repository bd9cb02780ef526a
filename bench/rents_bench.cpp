// Rents of a lease and of its relets, one period and a time line of quarters, beside a plain C++ program for one day
// count (30/360), whole years of growth and nothing else.
#include "hosts/sheet/workbook.h"
#include "realestate/rents.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <string>

namespace qx {
namespace {

constexpr int first_year = 2005, last_quarter_of_25_years = 99;

const AnnualSequence& quarters() {
    static const AnnualSequence sequence(4);
    return sequence;
}
date first_of(int year, int month = 1) { return {year, month, 1}; }
/// Quarter n, from 0.
timeperiod quarter(int n) {
    const date start = first_of(first_year + n / 4, 3 * (n % 4) + 1);
    return {start, start.plusmonths(3, true)};
}

/// A lease of 25 years that is reviewed every five years, the rents of which grow by 3% a year.
struct Lease {
    date start = first_of(first_year), first_review = first_of(first_year + 5), expiry = first_of(first_year + 25);
    double market = 1000.0, rent = 900.0, rate = 0.03;
    Growth growth{View<date>::of(start), View<double>::of(rate)};

    double in(const timeperiod& period) const {
        return RentGrow(period, start, View<date>::of(expiry), first_review, market, rent, growth, {60, 0.0},
                        {0.0, quarters(), 0.0}, {}, 1);
    }
};

void last_quarter(benchmark::State& state) {
    const Lease lease;
    const timeperiod period = quarter(last_quarter_of_25_years);
    for (auto step : state) benchmark::DoNotOptimize(lease.in(period));
}
BENCHMARK(last_quarter)->Name("RentGrow of a period after four reviews: ours");

void last_quarter_plainly(benchmark::State& state) {
    for (auto step : state) {
        double rent = 900.0, rate = 0.03;
        benchmark::DoNotOptimize(rate);
        for (int year = 5; year <= 20; year += 5) rent = 1000.0 * std::pow(1.0 + rate, year);
        benchmark::DoNotOptimize(rent / 4.0);
    }
}
BENCHMARK(last_quarter_plainly)->Name("RentGrow of a period after four reviews: plain C++");

/// A lease of ten years and relets of five, with a void of six months and three months without rent each.
struct ChainOfLeases {
    date start = first_of(first_year), first_review, expiry = first_of(first_year + 10), never;
    double market = 1000.0, rate = 0.03, void_months = 6.0, rent_free = 3.0, term = 5.0;
    Growth growth{View<date>::of(start), View<double>::of(rate)};
    Relets relets{View<double>::of(void_months), View<double>::of(rent_free), View<double>::of(term)};

    double in(const timeperiod& period) const {
        return RentGrowR(period, start, View<date>::of(expiry), first_review, View<double>::of(market), 900.0, growth,
                         {60, 0.0}, relets, {0.0, quarters(), 0.0}, never, {}, 0, 1);
    }
};

void fifth_relet(benchmark::State& state) {
    const ChainOfLeases chain;
    const timeperiod period = quarter(4 * 34);
    for (auto step : state) benchmark::DoNotOptimize(chain.in(period));
}
BENCHMARK(fifth_relet)->Name("RentGrowR of a period in the fifth relet: ours");

// --- Time lines of quarters
// -----------------------------------------------------------------------------------------------------------

constexpr std::uint32_t line = 120;
constexpr const char* rent_of_lease = "RentGrow(A%,3,2005,2030,2010,1000,900,2005,0.03,60)";
constexpr const char* rent_of_chain = "RentGrowR(A%,3,2005,2015,0,1000,900,2005,0.03,60,0,6,3,5)";

/// A formula with a date of the column of quarters, or with all of them.
std::string with_dates(std::string formula, const std::string& rows) {
    return formula.replace(formula.find("A%"), 2, rows);
}
void evaluate(benchmark::State& state, const std::string& text) {
    sheet::Workbook book;
    for (std::uint32_t n = 0; n < line; ++n)
        book.set_value({n, 0, 0}, sheet::Value::number(quarter(static_cast<int>(n)).from().dtn()));
    const sheet::Formula formula = book.read(text);
    const sheet::Area caller{};
    for (auto step : state) benchmark::DoNotOptimize(book.evaluate(formula, caller));
}

void line_of_lease(benchmark::State& state) { evaluate(state, with_dates(rent_of_lease, "A1:A120")); }
BENCHMARK(line_of_lease)->Name("RentGrow over 120 quarters: ours")->Unit(benchmark::kMicrosecond);
void last_of_lease(benchmark::State& state) { evaluate(state, with_dates(rent_of_lease, "A100")); }
BENCHMARK(last_of_lease)->Name("RentGrow over 120 quarters: last call")->Unit(benchmark::kMicrosecond);
void line_of_chain(benchmark::State& state) { evaluate(state, with_dates(rent_of_chain, "A1:A120")); }
BENCHMARK(line_of_chain)->Name("RentGrowR over 120 quarters: ours")->Unit(benchmark::kMicrosecond);
void last_of_chain(benchmark::State& state) { evaluate(state, with_dates(rent_of_chain, "A120")); }
BENCHMARK(last_of_chain)->Name("RentGrowR over 120 quarters: last call")->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace qx
