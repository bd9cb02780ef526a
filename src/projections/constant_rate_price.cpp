#include "calendar/date_arithmetic.h"
#include "core/twin_run.h"
#include "projections/constant_rate.h"
#include "projections/forecast.h"
#include "projections/forecast_rate.h"
#include "projections/grown_rate.h"

namespace qx {

namespace {

/// Months between reviews, at least one.
int at_least_monthly(const Routine& here, int RevMonths, const char* name) {
    if (RevMonths >= 1) return RevMonths;
    here.info(name, " has been set to 1 month, the lowest allowable value in this function.");
    return 1;
}

/// The average over a period of a price that grows.
double average_price(const timeperiod& period, GrownRate& price, const Basis& basis) {
    return safe_divide(price.in(period, {period.from(), period.to()}, basis, false),
                       period.lenyrs(period.from(), period.to(), basis.DayCount, basis.Periods));
}

/// How a price and a rate make one annual rate.
double combined_rate(double price, double rate, int Operator) {
    switch (Operator) {
    case price_by_rate:
        return safe_divide(price, rate);
    case rate_by_price:
        return safe_divide(rate, price);
    case price_plus_rate:
        return price + rate;
    case price_less_rate:
        return price - rate;
    case rate_less_price:
        return rate - price;
    case greater_of_both:
        return std::max(price, rate);
    case smaller_of_both:
        return std::min(price, rate);
    default:
        return price * rate;
    }
}

/// The amount of a stream whose price and rate are read anew at the start of every mini-period.
template <class NextChange, class Price, class Rate>
double sum_mini_periods(Routine& here, const timeperiod& Time, const Life& life, const Basis& basis, int Operator,
                        const char* too_many, NextChange next_change, Price price, Rate rate) {
    constexpr int most_mini_periods = 100;
    timeperiod period = Time;
    if (!screen_period(here, period, life, basis)) return 0.0;
    const date& end = std::min(period.to(), life.Finish);
    double sum = 0.0;
    date start = std::max(period.from(), life.Start);
    for (int n = 1; n <= most_mini_periods; ++n) {
        const date next = next_change(start);
        const TraceBlock pass = here.pass(n, "From ", start, " to ", next);
        const double annual = combined_rate(price(start), rate(start), Operator);
        sum += con(period, {start, std::min(next, life.Finish)}, annual, basis.accruals());
        if (next >= end) return sum;
        start = next;
    }
    here.fail<errlibunexpectedcase>("", too_many);
}

void check_base(Routine& here, int base, const char* name) {
    if (base < forecast_base_limits.low)
        here.fail<illegalvalue>(name, "Must have a FcstBase (months) greater or equal than 1");
    here.limit(base, forecast_base_limits, name);
}

} // namespace

double ConRev(const timeperiod& Time, const Life& life, double MktPrice, double AnnualRate, const Basis& basis) {
    Routine here{"ConRev"};
    here.inputs(Time, life, MktPrice, AnnualRate, basis);
    basis.check(here);
    if (!screen_accruals(here, Time, life)) return here.returning(0.0);
    return here.returning(con(Time, life, MktPrice * AnnualRate, basis));
}

double ConRevGrow(const timeperiod& Time, const Life& life, double MktPrice, const date& FirstRev, double AnnualRate,
                  const Growth& growth, int RevMonthsOpt, const Basis& basis) {
    Routine here{"ConRevGrow"};
    here.inputs(Time, life, MktPrice, FirstRev, AnnualRate, growth, RevMonthsOpt, basis);
    GrowthWalk walk(growth);
    GrownRate price{walk, MktPrice, MktPrice, RevMonthsOpt, &FirstRev};
    return here.returning(over(here, Time, [&](const timeperiod& period) {
        return ConRevGrowX(period, life, price, AnnualRate, basis, false);
    }));
}

double ConRevGrowX(const timeperiod& Time, const Life& life, GrownRate& price, double AnnualRate, const Basis& basis,
                   bool ComponentPart) {
    const Growth& growth = price.growth();
    Routine here{"ConRevGrowX", Routine::internal};
    here.arguments(
        "Time,Start,Finish,MktPrice,FirstRev,AnnualRate,GrowthDates,GrowthRates,RevMonthsOpt,DayCount,Periods,"
        "ProjMode,ComponentPart",
        Time, life.Start, life.Finish, price.rate(), price.first_review(life), AnnualRate, growth.dates, growth.rates,
        price.review_months(), basis.DayCount, basis.Periods, basis.ProjMode, ComponentPart);
    basis.check(here);
    check_reviews(here, price.review_months());
    growth.check(here);
    if (!screen_accruals(here, Time, life)) return here.returning(0.0);
    return here.returning(price.in(Time, life, basis, ComponentPart) * AnnualRate);
}

double ConRevFcst(const timeperiod& Time, const Life& life, const date& FirstRev, double AnnualRate,
                  const Forecast& forecast, int RevMonthsOpt, const Basis& basis) {
    Routine here{"ConRevFcst"};
    here.inputs(Time, life, FirstRev, AnnualRate, forecast, RevMonthsOpt, basis);
    ForecastRate price{FirstRev, forecast, RevMonthsOpt};
    return here.returning(over(here, Time, [&](const timeperiod& period) {
        return ConRevFcstX(period, life, price, AnnualRate, basis, false);
    }));
}

double ConRevFcstX(const timeperiod& Time, const Life& life, ForecastRate& price, double AnnualRate, const Basis& basis,
                   bool ComponentPart) {
    const Forecast& forecast = price.forecast();
    Routine here{"ConRevFcstX", Routine::internal};
    here.arguments("Time,Start,Finish,FirstRev,AnnualRate,FcstVals,StartFcst,FcstBase,RevMonthsOpt,DayCount,Periods,"
                   "ProjMode,ComponentPart",
                   Time, life.Start, life.Finish, price.first_review(), AnnualRate, forecast.values, forecast.start,
                   forecast.base, price.review_months(), basis.DayCount, basis.Periods, basis.ProjMode, ComponentPart);
    check_forecast(here, basis, forecast, price.review_months());
    if (forecast.none() || !screen_accruals(here, Time, life)) return here.returning(0.0);
    return here.returning(price.in(Time, life, fcst(life.Start, forecast), basis, ComponentPart) * AnnualRate);
}

double ConRevGrow2(const timeperiod& Time, const Life& life, double MktPrice, const date& FirstRev, double AnnualRate,
                   const Growth& growth, const Growth& rate_growth, int RevMonthsOpt, int RevMonthsAnnRateOpt,
                   const Basis& basis) {
    Routine here{"ConRevGrow2"};
    here.inputs(Time, life, MktPrice, FirstRev, AnnualRate, growth, rate_growth, RevMonthsOpt, RevMonthsAnnRateOpt,
                basis);
    return here.returning(ConRevGrow2X(Time, life, MktPrice, FirstRev, AnnualRate, growth, rate_growth, RevMonthsOpt,
                                       RevMonthsAnnRateOpt, basis, false));
}

double ConRevGrow2X(const timeperiod& Time, const Life& life, double MktPrice, const date& FirstRev, double AnnualRate,
                    const Growth& growth, const Growth& rate_growth, int RevMonthsOpt, int RevMonthsAnnRateOpt,
                    const Basis& basis, bool ComponentPart) {
    constexpr int most_rounds = 100;
    Routine here{"ConRevGrow2X", Routine::internal};
    here.arguments("Time,Start,Finish,MktPrice,FirstRev,AnnualRate,GrowthDates,GrowthRates,GrowthDatesAnnRate,"
                   "GrowthAnnRate,RevMonthsOpt,RevMonthsAnnRateOpt,DayCount,Periods,ProjMode,ComponentPart",
                   Time, life.Start, life.Finish, MktPrice, FirstRev, AnnualRate, growth.dates, growth.rates,
                   rate_growth.dates, rate_growth.rates, RevMonthsOpt, RevMonthsAnnRateOpt, basis.DayCount,
                   basis.Periods, basis.ProjMode, ComponentPart);
    basis.check(here);
    check_reviews(here, RevMonthsOpt);
    check_reviews(here, RevMonthsAnnRateOpt, "RevMonthsAnnRateOpt");
    growth.check(here);
    rate_growth.check(here);
    timeperiod period = Time;
    if (!screen_period(here, period, life, basis)) return here.returning(0.0);
    const int price_months = at_least_monthly(here, RevMonthsOpt, "RevMonthsOpt");
    const int rate_months = at_least_monthly(here, RevMonthsAnnRateOpt, "RevMonthsAnnRateOpt");
    const date& anchor = rate_growth.first_or(life.Start);
    double revenue = 0.0;
    GrowthWalk price_walk(growth), rate_walk(anchor, rate_growth);
    GrownRate price{price_walk, MktPrice, MktPrice, price_months};
    GrownRate rate{rate_walk, AnnualRate, AnnualRate, rate_months, &FirstRev, &anchor};
    int rounds = 0;
    for (date start = period.from(); rounds < most_rounds; ++rounds) {
        const date end = std::min(review_after(start, anchor, rate_months), period.to());
        const TraceBlock pass = here.pass(rounds + 1, "From ", start, " to ", end);
        if (start >= period.to()) {
            here.info("Date is greater than Time.to(), breaking out of loop ...");
            break;
        }
        const timeperiod between{start, end};
        const Basis stub = basis.under(ChooseRightDC(basis.DayCount, life.Start, life.Finish, between));
        const double amount = rate.in(between, life, stub, ComponentPart);
        if (!iszero(amount)) revenue += average_price(between, price, basis.accruals()) * amount;
        start = end;
    }
    if (rounds >= most_rounds) here.fail<errliboveriterated>("", "Iterated over too many Timeperiods in ConRevGrow2");
    return here.returning(revenue);
}

double ConFcstCombine(const timeperiod& Time, const Life& life, const Forecast& prices, View<double> FcstAnnRates,
                      int FcstRatesBase, const date& StartFcstRates, int Operator, const Basis& basis) {
    Routine here{"ConFcstCombine"};
    here.inputs(Time, life, prices, FcstAnnRates, FcstRatesBase, StartFcstRates, Operator, basis);
    basis.check(here);
    check_base(here, prices.base, "FcstBase");
    check_base(here, FcstRatesBase, "FcstRatesBase");
    const Forecast rates{FcstAnnRates, StartFcstRates, FcstRatesBase};
    const auto next_value = [](const date& day, const Forecast& forecast) {
        return review_after(day, forecast.start, forecast.base);
    };
    return here.returning(sum_mini_periods(
        here, Time, life, basis, Operator, "Failed to calculated due to too many mini-timeperiods",
        [&](const date& day) { return std::min(next_value(day, prices), next_value(day, rates)); },
        [&](const date& day) { return fcst(day, prices); }, [&](const date& day) { return fcst(day, rates); }));
}

double ConGrowCombine(const timeperiod& Time, const Life& life, double MktPrice, const Growth& price_growth,
                      int GrowPriceEvery, double AnnualRate, const Growth& growth, int RevMonthsOpt, int Operator,
                      const Basis& basis) {
    Routine here{"ConGrowCombine"};
    here.inputs(Time, life, MktPrice, price_growth, GrowPriceEvery, AnnualRate, growth, RevMonthsOpt, Operator, basis);
    basis.check(here);
    check_reviews(here, GrowPriceEvery, "GrowPriceEvery");
    check_reviews(here, RevMonthsOpt);
    if (GrowPriceEvery < 1 && RevMonthsOpt < 1)
        here.fail<illegalvalue>("RevMonthsOpt",
                                "At least one of the review months variables must have a review months of greater "
                                "than or equal to 1");
    price_growth.check(here);
    growth.check(here);
    const date& price_anchor = price_growth.first_or(life.Start);
    const date& anchor = growth.first_or(life.Start);
    return here.returning(sum_mini_periods(
        here, Time, life, basis, Operator, "Failed to calculate due to too many mini-timeperiods",
        [&](const date& day) {
            const date price = GrowPriceEvery > 0 ? review_after(day, price_anchor, GrowPriceEvery) : DateCrit;
            const date rate = RevMonthsOpt > 0 ? review_after(day, anchor, RevMonthsOpt) : DateCrit;
            return std::min(price, rate);
        },
        [&](const date& day) { return Grow(day, MktPrice, price_growth, GrowPriceEvery); },
        [&](const date& day) { return Grow(day, AnnualRate, growth, RevMonthsOpt); }));
}

} // namespace qx
