// A period of what rides on a chain of leases: a service charge and what a landlord is left with of it, business rates,
// and letting costs. Every lease but the first is one of five relets before the period.
#include "realestate/business_rates.h"
#include "realestate/letting_costs.h"
#include "realestate/service_charges.h"

#include <benchmark/benchmark.h>

namespace qx {
namespace {

const date first(2005, 1, 1), expiry(2008, 3, 25), never;
const timeperiod quarter(date(2021, 1, 1), date(2021, 4, 1)), rate_year(date(2006, 4, 1), date(2007, 4, 1));
const AnnualSequence quarters(4), none;
constexpr double void_months = 6.0, term = 2.0, share = 0.2, growth_rate = 0.03, cost = 5000.0;
const Maybe<double> same_day_count;

const Growth growth{View<date>::of(first), View<double>::of(growth_rate)};
const Basis accruals{0.0, quarters, 0.0};
const ReletTerms relets{View<double>::of(void_months), View<double>::of(term)};
const ChainEnd chain{never, 0, 1};
const GrowingServiceCharge total{first, 50000.0, growth, 12};
const ServiceChargeShare tenant{View<date>::of(first), View<double>::of(share)};

template <class Amount>
void each_call(benchmark::State& state, Amount amount) {
    for (auto _ : state) benchmark::DoNotOptimize(amount());
}

void service_charge(benchmark::State& state) {
    each_call(state, [] {
        return ServCharge(quarter, first, View<date>::of(expiry), total, tenant, relets, accruals, chain);
    });
}
BENCHMARK(service_charge)->Name("ServChargeGrowR of one period after five relets: ours");

void service_charge_of_landlord(benchmark::State& state) {
    each_call(state, [] {
        return VacServCharge(quarter, first, first, View<date>::of(expiry), total, tenant, relets,
                             RecoveryBasis{0.0, quarters, same_day_count, none, 0.0}, chain);
    });
}
BENCHMARK(service_charge_of_landlord)->Name("VacServChargeGrowR of one period after five relets: ours");

void rates(benchmark::State& state) {
    const RatesDue<GrowingRateableValue> due{0.42, {20000.0, growth}, {growth.rates, growth.dates}};
    each_call(state, [&] { return UKRates(rate_year, {first, DateCrit}, due, accruals); });
}
BENCHMARK(rates)->Name("UKRatesGrow of one year: ours");

void letting_costs(benchmark::State& state) {
    const SpreadCosts costs{View<double>::of(cost), View<double>::of(void_months), {}, {}};
    each_call(state, [&] {
        return LetCostR(quarter, first, View<date>::of(expiry), {}, costs, costs, growth, relets, {never, 0, 1});
    });
}
BENCHMARK(letting_costs)->Name("LetCostR of one period after five relets: ours");

} // namespace
} // namespace qx
