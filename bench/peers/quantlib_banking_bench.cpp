// QuantLib's cash flows, loans, options and spot rates on the inputs of cash_flow_bench.cpp and loans_bench.cpp.
// Everything that does not change from call to call, such as legs and curves, is made before the clock starts.
#include <benchmark/benchmark.h>
#include <ql/cashflows/cashflows.hpp>
#include <ql/cashflows/fixedratecoupon.hpp>
#include <ql/cashflows/simplecashflow.hpp>
#include <ql/instruments/bonds/amortizingfixedratebond.hpp>
#include <ql/instruments/bonds/fixedratebond.hpp>
#include <ql/instruments/vanillaoption.hpp>
#include <ql/math/interpolations/loginterpolation.hpp>
#include <ql/methods/lattices/binomialtree.hpp>
#include <ql/pricingengines/blackcalculator.hpp>
#include <ql/pricingengines/blackformula.hpp>
#include <ql/pricingengines/bond/bondfunctions.hpp>
#include <ql/pricingengines/vanilla/analyticeuropeanengine.hpp>
#include <ql/pricingengines/vanilla/binomialengine.hpp>
#include <ql/pricingengines/vanilla/mceuropeanengine.hpp>
#include <ql/processes/blackscholesprocess.hpp>
#include <ql/quotes/simplequote.hpp>
#include <ql/settings.hpp>
#include <ql/termstructures/volatility/equityfx/blackconstantvol.hpp>
#include <ql/termstructures/yield/bondhelpers.hpp>
#include <ql/termstructures/yield/flatforward.hpp>
#include <ql/termstructures/yield/piecewiseyieldcurve.hpp>
#include <ql/time/calendars/nullcalendar.hpp>
#include <ql/time/daycounters/actual365fixed.hpp>
#include <ql/time/daycounters/actualactual.hpp>
#include <ql/time/daycounters/simpledaycounter.hpp>
#include <ql/time/schedule.hpp>

#include <cmath>
#include <memory>
#include <vector>

namespace {

using namespace QuantLib;

// --- Cash flows: an investment, level receipts and its sale -----------------------------------------------------

struct Investment {
    Date start{38353};
    Leg receipts;

    explicit Investment(int n) {
        Settings::instance().evaluationDate() = start;
        for (int i = 1; i < n; ++i)
            receipts.push_back(ext::make_shared<SimpleCashFlow>(i == n - 1 ? 1025.0 : 25.0, start + 91 * i));
    }
};

void rate_of_return(benchmark::State& state, int n) {
    const Investment cash(n);
    const Actual365Fixed day_counter;
    for (auto _ : state)
        benchmark::DoNotOptimize(CashFlows::yield(cash.receipts, 1000.0, day_counter, Compounded, Annual, false,
                                                  cash.start, cash.start, 1e-10, 100, 0.05));
}
BENCHMARK_CAPTURE(rate_of_return, flows_60, 60)
    ->Name("internal rate of return of 60 dated flows, whole call: QuantLib");
BENCHMARK_CAPTURE(rate_of_return, flows_100, 100)
    ->Name("internal rate of return of 100 dated flows, whole call: QuantLib");

void present_value(benchmark::State& state) {
    const Investment cash(60);
    const Actual365Fixed day_counter;
    double rate = 0.1;
    for (auto _ : state) {
        benchmark::DoNotOptimize(rate);
        benchmark::DoNotOptimize(CashFlows::npv(cash.receipts, InterestRate(rate, day_counter, Compounded, Annual),
                                                false, cash.start, cash.start));
    }
}
BENCHMARK(present_value)->Name("present value of 60 dated flows: QuantLib");

void duration(benchmark::State& state) {
    const Investment cash(60);
    const Actual365Fixed day_counter;
    double rate = 0.1;
    for (auto _ : state) {
        benchmark::DoNotOptimize(rate);
        benchmark::DoNotOptimize(CashFlows::duration(cash.receipts, InterestRate(rate, day_counter, Compounded, Annual),
                                                     Duration::Macaulay, false, cash.start, cash.start));
    }
}
BENCHMARK(duration)->Name("duration of 60 dated flows: QuantLib");

// --- A bond of 30 years, half-yearly ----------------------------------------------------------------------------

struct Gilt {
    Date settlement{10, February, 2025};
    Schedule schedule{Date(7, December, 2024),
                      Date(7, December, 2054),
                      Period(Semiannual),
                      NullCalendar(),
                      Unadjusted,
                      Unadjusted,
                      DateGeneration::Backward,
                      false};
    Actual365Fixed day_counter;
    FixedRateBond bond{0, 100.0, schedule, {0.0425}, ActualActual(ActualActual::ISMA, schedule)};

    Gilt() { Settings::instance().evaluationDate() = settlement; }
};

void bond_price(benchmark::State& state) {
    const Gilt gilt;
    double yield = 0.045;
    for (auto _ : state) {
        benchmark::DoNotOptimize(yield);
        benchmark::DoNotOptimize(
            BondFunctions::dirtyPrice(gilt.bond, yield, gilt.day_counter, Compounded, Annual, gilt.settlement));
    }
}
BENCHMARK(bond_price)->Name("price of a bond of 30 years, half-yearly: QuantLib");

void bond_yield(benchmark::State& state) {
    const Gilt gilt;
    double price = 96.0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(price);
        benchmark::DoNotOptimize(BondFunctions::yield(gilt.bond, price, gilt.day_counter, Compounded, Annual,
                                                      gilt.settlement, 1e-10, 100, 0.05, Bond::Price::Dirty));
    }
}
BENCHMARK(bond_yield)->Name("yield of a bond of 30 years, half-yearly: QuantLib");

// --- A mortgage with level payments -----------------------------------------------------------------------------

/// Coupons are made anew for each rate, as our schedule is, and dates too unless they are given.
void mortgage(benchmark::State& state, bool dates_given) {
    const Date start(1, January, 2025);
    const Period term(25, Years);
    Settings::instance().evaluationDate() = start;
    const auto dates = [&] { return sinkingSchedule(start, term, Monthly, NullCalendar()); };
    const Schedule given = dates();
    const SimpleDayCounter twelfths;
    double rate = 0.06;
    for (auto _ : state) {
        rate += 1e-9;
        const Leg leg = FixedRateLeg(dates_given ? given : dates())
                            .withNotionals(sinkingNotionals(term, Monthly, rate, 100000.0))
                            .withCouponRates(rate, twelfths);
        double interest = 0.0;
        for (const auto& flow : leg) interest -= flow->amount();
        benchmark::DoNotOptimize(interest);
    }
}
BENCHMARK_CAPTURE(mortgage, made, false)
    ->Name("interest of a mortgage of 300 months: QuantLib")
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(mortgage, given, true)
    ->Name("interest of a mortgage of 300 months: QuantLib, dates given")
    ->Unit(benchmark::kMicrosecond);

// --- Options on an asset with a dividend yield ------------------------------------------------------------------

struct Market {
    Date today{1, January, 2025};
    SimpleDayCounter years;
    ext::shared_ptr<SimpleQuote> spot = ext::make_shared<SimpleQuote>(42.0);
    ext::shared_ptr<GeneralizedBlackScholesProcess> process;

    Market() {
        Settings::instance().evaluationDate() = today;
        process = ext::make_shared<BlackScholesMertonProcess>(
            Handle<Quote>(spot), Handle<YieldTermStructure>(ext::make_shared<FlatForward>(today, 0.03, years)),
            Handle<YieldTermStructure>(ext::make_shared<FlatForward>(today, 0.1, years)),
            Handle<BlackVolTermStructure>(ext::make_shared<BlackConstantVol>(today, NullCalendar(), 0.2, years)));
    }
    /// A call or put at 40 for half a year.
    VanillaOption option(Option::Type type, bool american, const ext::shared_ptr<PricingEngine>& engine) const {
        const Date end(1, July, 2025);
        ext::shared_ptr<Exercise> exercise;
        if (american)
            exercise = ext::make_shared<AmericanExercise>(today, end);
        else
            exercise = ext::make_shared<EuropeanExercise>(end);
        VanillaOption made(ext::make_shared<PlainVanillaPayoff>(type, 40.0), exercise);
        made.setPricingEngine(engine);
        return made;
    }
};

/// Prices an option again and again, the spot price changing so that it must be.
void revalue(benchmark::State& state, const Market& market, const VanillaOption& option) {
    double spot = 42.0;
    for (auto _ : state) {
        market.spot->setValue(spot += 1e-9);
        benchmark::DoNotOptimize(option.NPV());
    }
}

void option_formula(benchmark::State& state) {
    const Market market;
    revalue(state, market,
            market.option(Option::Call, false, ext::make_shared<AnalyticEuropeanEngine>(market.process)));
}
BENCHMARK(option_formula)->Name("OptionBS: QuantLib");

void option_bare_formula(benchmark::State& state) {
    double spot = 42.0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(spot);
        const double discount = std::exp(-0.1 * 0.5);
        benchmark::DoNotOptimize(
            blackFormula(Option::Call, 40.0, spot * std::exp(-0.03 * 0.5) / discount, 0.2 * std::sqrt(0.5), discount));
    }
}
BENCHMARK(option_bare_formula)->Name("OptionBS: QuantLib's bare formula");

void option_tree(benchmark::State& state) {
    const Market market;
    revalue(state, market,
            market.option(Option::Put, true,
                          ext::make_shared<BinomialVanillaEngine<CoxRossRubinstein>>(market.process, 200)));
}
BENCHMARK(option_tree)->Name("OptionBinom of 200 steps: QuantLib")->Unit(benchmark::kMicrosecond);

void option_paths(benchmark::State& state) {
    const Market market;
    revalue(state, market,
            market.option(Option::Call, false,
                          MakeMCEuropeanEngine<PseudoRandom>(market.process)
                              .withSteps(1)
                              .withAntitheticVariate()
                              .withSamples(50000) // pairs
                              .withSeed(1)));
}
BENCHMARK(option_paths)->Name("OptionMonte of 100,000 paths: QuantLib")->Unit(benchmark::kMicrosecond);

// --- Spot rates from 30 par yields ------------------------------------------------------------------------------

void bootstrap(benchmark::State& state) {
    const Date today(1, January, 2025);
    Settings::instance().evaluationDate() = today;
    const SimpleDayCounter years;
    const auto par = ext::make_shared<SimpleQuote>(100.0);
    std::vector<ext::shared_ptr<RateHelper>> bonds;
    for (int i = 1; i <= 30; ++i) {
        const Schedule schedule(today, today + i * Years, Period(Semiannual), NullCalendar(), Unadjusted, Unadjusted,
                                DateGeneration::Backward, false);
        bonds.push_back(ext::make_shared<FixedRateBondHelper>(Handle<Quote>(par), 0, 100.0, schedule,
                                                              std::vector<Rate>{0.03 + 0.001 * i}, years));
    }
    const PiecewiseYieldCurve<Discount, LogLinear> curve(today, bonds, years);
    double price = 100.0;
    for (auto _ : state) {
        par->setValue(price += 1e-9);
        benchmark::DoNotOptimize(curve.discount(today + 30 * Years));
    }
}
BENCHMARK(bootstrap)->Name("ZeroCoupon of 30 par yields: QuantLib")->Unit(benchmark::kMicrosecond);

} // namespace
