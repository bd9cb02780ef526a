// An asset on a date, a pool of fifty lots in a period, and a period of a field's production.
#include "accounting/asset_pools.h"
#include "accounting/production_decline.h"

#include <benchmark/benchmark.h>

namespace qx {
namespace {

const AnnualSequence quarters(4), in_arrears(-4);

template <class Amount>
void each_call(benchmark::State& state, Amount amount) {
    for (auto _ : state) benchmark::DoNotOptimize(amount());
}

void value(benchmark::State& state, int DepType, double DayCount) {
    const date start(2005, 3, 17), day(2011, 8, 5);
    const Asset asset{10.0, DepType, 1000.0, 50.0};
    each_call(state, [&] { return DepreciatedValue(day, start, start, asset, {DayCount, quarters, 0.0}); });
}
BENCHMARK_CAPTURE(value, straight, 0, 5.0)->Name("DepreciatedValue, straight line: ours");
BENCHMARK_CAPTURE(value, actual, 0, 3.0)->Name("DepreciatedValue, straight line, actual/365: ours");
BENCHMARK_CAPTURE(value, declining, 1, 5.0)->Name("DepreciatedValue, declining balance: ours");
BENCHMARK_CAPTURE(value, doubled, 2, 5.0)->Name("DepreciatedValue, double declining: ours");
BENCHMARK_CAPTURE(value, digits, 3, 5.0)->Name("DepreciatedValue, sum of years' digits: ours");

/// Two additions a quarter, each quarter's into service at its end.
struct Project {
    WorkList<date> rate_dates, additions, in_service;
    WorkList<double> rates, amounts, portions;

    Project() {
        rate_dates->append(date(2000, 1, 1));
        rate_dates->append(date(2008, 5, 1));
        rates->append(0.06);
        rates->append(0.07);
        for (int lot = 0; lot < 50; ++lot) {
            const date quarter = date(2000, 1, 15).plusmonths(3 * lot, true);
            additions->append(quarter);
            additions->append(quarter.plusdays(40));
            amounts->append(1000.0 + lot);
            amounts->append(500.0);
            in_service->append(quarter.plusdays(70));
            portions->append(1.0 + lot % 3);
        }
    }
};

void pool(benchmark::State& state, int DepSwitch, bool by_portions) {
    const Project project;
    const timeperiod year{date(2012, 1, 1), date(2013, 1, 1)};
    const PoolCosts costs{project.rate_dates, project.rates, project.additions, project.amounts};
    const View<double> portions = by_portions ? View<double>(project.portions) : View<double>();
    const PoolTerms terms{20.0, straight_line, 0.0, DepSwitch};
    each_call(state, [&] {
        return DepPool(year, costs, project.in_service, portions, terms, {5.0, quarters}, {5.0, in_arrears});
    });
}
BENCHMARK_CAPTURE(pool, depreciation, 0, false)->Name("DepPool of 50 lots: ours");
BENCHMARK_CAPTURE(pool, portions, 0, true)->Name("DepPool of 50 lots, by portions: ours");
BENCHMARK_CAPTURE(pool, interest, 10, false)->Name("DepPool of 50 lots, interest capitalised: ours");

void production(benchmark::State& state, double ResvsOrDcRate, double DeclineParam, double ProjMode) {
    const date dates[] = {date(2005, 1, 1), date(2007, 1, 1), date(2012, 1, 1)};
    const double rates[] = {100.0, 200.0, 150.0};
    const Field field{ResvsOrDcRate, {dates, 3}, {rates, 3}, 0.4, 10.0, DeclineParam};
    const timeperiod year{date(2010, 1, 1), date(2011, 1, 1)};
    each_call(state, [&] { return ProdProf(year, field, {5.0, quarters, ProjMode}, production_in_period); });
}
BENCHMARK_CAPTURE(production, exponential, 1500.0, 0.0, 0.0)->Name("ProdProf of one period: ours");
BENCHMARK_CAPTURE(production, hyperbolic, 1500.0, 0.5, 0.0)->Name("ProdProf of one period, hyperbolic: ours");
BENCHMARK_CAPTURE(production, cash, 1500.0, 1.0, 1.0)->Name("ProdProf of one period, harmonic, cash: ours");
BENCHMARK_CAPTURE(production, rate, -0.3, 0.5, 0.0)->Name("ProdProf of one period, from a decline rate: ours");

} // namespace
} // namespace qx
