#include "realestate/business_rates.h"

#include "projections/constant_rate.h"
#include "projections/forecast.h"
#include "projections/growth.h"

#include <iterator>

namespace qx {

namespace {

constexpr int year_of_months = 12, months_between_revaluations = 60, months_of_antecedence = 24;
constexpr int first_year = 1990, last_published_year = 2004;

/// The multipliers of the years from 1 April of `first_year` on.
constexpr double published_multipliers[] = {0.348, 0.386, 0.402, 0.416, 0.423, 0.432, 0.449, 0.458,
                                            0.474, 0.489, 0.416, 0.43,  0.437, 0.444, 0.456, 0.415};
static_assert(std::size(published_multipliers) > last_published_year - first_year);

const date& first_revaluation() {
    static const date day(first_year, 4, 1);
    return day;
}

bool ten_instalments(const Basis& basis) { return basis.Periods.size() == 10; }

double multiplier(const date& year, const date& revaluation, double RatesMultiplier, const Inflation& inflation,
                  const AnnualSequence& Periods) {
    if (year <= date(last_published_year, 4, 1)) return published_multipliers[year.year() - first_year];
    return GrowFromTo(revaluation, year, RatesMultiplier, inflation.growth(), growth_exponential, 0, {0.0, Periods});
}

/// The rates in a period for one rate year of what lies between two dates.
template <class Value>
double rates_of_year(const Routine& here, const timeperiod& Time, const date& year, const date& revaluation,
                     const Life& life, const RatesDue<Value>& rates, const Basis& basis) {
    const timeperiod whole(year, year.plusmonths(year_of_months, true));
    const Life liable = life.within(whole.from(), whole.to());
    if (year < first_revaluation() || liable.Finish <= liable.Start) return 0.0;
    const double value = rates.value.at(revaluation.plusmonths(-months_of_antecedence, true));
    const double factor = multiplier(year, revaluation, rates.RatesMultiplier, rates.inflation, basis.Periods);
    here.info("Rate year from ", year, ": rateable value ", value, ", multiplier ", factor);
    const double annual = value * factor;

    const Basis accruals{basis.DayCount, ten_instalments(basis) ? any_measure().Periods : basis.Periods, 0.0};
    if (!basis.cash()) return con(Time, liable, annual, accruals);
    const double cash = con(Time, liable, annual, basis);
    const date& settled = life.Start >= whole.from() ? life.Start : life.Finish;
    const bool broken = whole.contains(settled);
    if (!ten_instalments(basis) || !broken || !Time.contains(settled)) return cash;
    // Payments in arrears or late fall into the year after.
    const timeperiod paid(whole.from(), whole.to().plusmonths(year_of_months, true));
    const double balance = con(whole, liable, annual, accruals) - con(paid, liable, annual, basis);
    here.info("The rate year is settled with ", balance);
    return cash + balance;
}

/// The rates in a period for what lies between two dates.
template <class Value>
double rates_between(const Routine& here, const timeperiod& Time, const Life& life, const RatesDue<Value>& rates,
                     const Basis& basis) {
    if (!runs_forward(here, Time)) return 0.0;
    if (Time.to() < life.Start || Time.from() > life.Finish) {
        here.info("Time outside rates start and finish date, nothing returned");
        return 0.0;
    }
    if (life.Finish <= life.Start) {
        here.info("Finish less than or equal to Start, nothing returned.");
        return 0.0;
    }
    const date& anchor = first_revaluation();
    if (Time.from() < anchor) here.fail<errtimerange>("Time", "There are no rates before ", anchor);
    if (Time.to() > Time.from().plusmonths(year_of_months, true))
        here.fail<errliblargebase>("Base", "The period ", Time, " is longer than ", year_of_months, " months");
    const date later = review_before(Time.to(), anchor, year_of_months);
    const date earlier = later.plusmonths(-year_of_months, true);
    const auto revaluation = [&](const date& day) { return review_before(day, anchor, months_between_revaluations); };
    return rates_of_year(here, Time, earlier, revaluation(Time.from()), life, rates, basis) +
           rates_of_year(here, Time, later, revaluation(Time.to()), life, rates, basis);
}

template <class Value>
void check_rates(Routine& here, const RatesDue<Value>& rates, const Basis& basis) {
    rates.value.check(here);
    rates.inflation.growth().check(here);
    here.limit(basis.DayCount, daycount_limits, "DCRates");
    here.limit(basis.ProjMode, projmode_limits, "ProjMode");
}

} // namespace

double GrowingRateableValue::at(const date& day) const { return Grow(day, RateableValue, growth, 0); }

double ForecastRateableValue::at(const date& day) const { return fcst(day, forecast()); }

template <class Value>
double UKRates(const timeperiod& Time, const Life& life, const RatesDue<Value>& rates, const Basis& basis) {
    Routine here{Value::names.between_dates};
    here.inputs(Time, life, rates, basis);
    check_rates(here, rates, basis);
    return here.returning(rates_between(here, Time, life, rates, basis));
}

template <class Value>
double UKRatesR(const timeperiod& Time, const date& Start, View<date> BrksOrExp, const RatesDue<Value>& rates,
                const ReletTerms& relets, const Basis& basis, const ChainEnd& chain) {
    Routine here{Value::names.let};
    here.inputs(Time, Start, BrksOrExp, rates, relets, basis, chain);
    check_rates(here, rates, basis);
    const LeaseCalendar calendar{{basis.DayCount, basis.Periods}, chain.ROpts};
    const date start = calendar.rounded(Start), expiry = chain.expiry(BrksOrExp, calendar);
    ReletWalk walk = relet_walk(here, relets.relets(), calendar, chain.limit());
    return here.returning(over(here, Time, [&](const timeperiod& period) {
        double amount = rates_between(here, period, {start, expiry}, rates, basis);
        each_relet(here, expiry, walk, period.to(), [&](const Relet& relet, const date&) {
            amount += rates_between(here, period, {relet.lease_start, relet.expiry}, rates, basis);
        });
        return amount;
    }));
}

template <class Value>
double UKEmptyRates(const timeperiod& Time, const date& StartCost, const date& StartLease, View<date> BrksOrExp,
                    const RatesDue<Value>& rates, View<double> RatesHol_s, const ReletTerms& relets,
                    double EmptyRatesFrac, const Basis& basis, const ChainEnd& chain) {
    Routine here{Value::names.empty};
    here.inputs(Time, StartCost, StartLease, BrksOrExp, rates, RatesHol_s, relets, EmptyRatesFrac, basis, chain);
    note_split_start(here);
    check_rates(here, rates, basis);
    const LeaseCalendar calendar{{basis.DayCount, basis.Periods}, chain.ROpts};
    const date& limit = chain.limit();
    const date start = calendar.rounded(StartCost), first_lease = calendar.rounded(StartLease);
    ReletWalk walk = relet_walk(here, relets.relets(), calendar, limit);
    return here.returning(over(here, Time, [&](const timeperiod& period) {
        double amount = 0.0;
        const auto add = [&](int n, const date& from, const date& to) {
            const date liable = calendar.rounded(calendar.after(from, series_item(RatesHol_s, n)));
            amount += rates_between(here, period, {std::max(liable, start), std::min(to, limit)}, rates, basis);
        };
        add(1, start, first_lease);
        each_relet(here, chain.expiry(BrksOrExp, calendar), walk, period.to(),
                   [&](const Relet& relet, const date& expiry) { add(relet.number + 1, expiry, relet.lease_start); });
        return EmptyRatesFrac * amount;
    }));
}

#define QX_RATES_OF(Value)                                                                                             \
    template double UKRates(const timeperiod&, const Life&, const RatesDue<Value>&, const Basis&);                     \
    template double UKRatesR(const timeperiod&, const date&, View<date>, const RatesDue<Value>&, const ReletTerms&,    \
                             const Basis&, const ChainEnd&);                                                           \
    template double UKEmptyRates(const timeperiod&, const date&, const date&, View<date>, const RatesDue<Value>&,      \
                                 View<double>, const ReletTerms&, double, const Basis&, const ChainEnd&)
QX_RATES_OF(GrowingRateableValue);
QX_RATES_OF(ForecastRateableValue);

} // namespace qx
