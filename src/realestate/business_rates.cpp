#include "realestate/business_rates.h"

#include "projections/constant_rate.h"
#include "projections/forecast.h"
#include "projections/growth.h"

#include <iterator>

namespace qx {

namespace {

constexpr int year_of_months = 12, years_between_revaluations = 5, years_of_antecedence = 2;
constexpr int first_year = 1990, last_published_year = 2004;

/// The multipliers of the years from 1 April of `first_year` on.
constexpr double published_multipliers[] = {0.348, 0.386, 0.402, 0.416, 0.423, 0.432, 0.449, 0.458,
                                            0.474, 0.489, 0.416, 0.43,  0.437, 0.444, 0.456, 0.415};
static_assert(std::size(published_multipliers) > last_published_year - first_year);

/// The beginning of a rate year: 1 April.
date start_of(int year) { return {year, 4, 1}; }
/// The rate year that a date lies in.
int rate_year(const date& day) { return day.month() < 4 ? day.year() - 1 : day.year(); }
/// The year of the revaluation that holds in a rate year: the last one of those every five years from the first on.
int revaluation_in(int year) { return year - (year - first_year) % years_between_revaluations; }

bool ten_instalments(const Basis& basis) { return basis.Periods.size() == 10; }

double multiplier(int year, int revaluation, double RatesMultiplier, const Inflation& inflation,
                  const AnnualSequence& Periods) {
    if (year <= last_published_year) return published_multipliers[year - first_year];
    return GrowFromTo(start_of(revaluation), start_of(year), RatesMultiplier, inflation.growth(), growth_exponential, 0,
                      {0.0, Periods});
}

/// The rates of a routine: what is due in its periods for what lies between two dates.
template <class Value>
class Rates {
  public:
    Rates(const Routine& here, const RatesDue<Value>& rates, const Basis& basis)
        : here_(here), rates_(rates), basis_(basis), annual_(here, 2 * most_years) {}

    double between(const timeperiod& Time, const Life& life) {
        if (!runs_forward(here_, Time)) return 0.0;
        if (Time.to() < life.Start || Time.from() > life.Finish) {
            here_.info("Time outside rates start and finish date, nothing returned");
            return 0.0;
        }
        if (life.Finish <= life.Start) {
            here_.info("Finish less than or equal to Start, nothing returned.");
            return 0.0;
        }
        static const date first = start_of(first_year);
        if (Time.from() < first) here_.fail<errtimerange>("Time", "There are no rates before ", first);
        if (Time.to() > Time.from().plusmonths(year_of_months, true))
            here_.fail<errliblargebase>("Base", "The period ", Time, " is longer than ", year_of_months, " months");
        const int later = rate_year(Time.to());
        return of_year(Time, later - 1, revaluation_in(rate_year(Time.from())), life) +
               of_year(Time, later, revaluation_in(later), life);
    }

  private:
    static constexpr int most_years = 200; ///< later years are worked out for each period

    /// The rates of a whole rate year by a revaluation: the one that holds in it, or the next.
    double annual(int year, int revaluation) {
        return annual_(2 * (year - first_year) + (revaluation <= year ? 1 : 2), [&] {
            const double value = rates_.value.at(start_of(revaluation - years_of_antecedence));
            const double factor =
                multiplier(year, revaluation, rates_.RatesMultiplier, rates_.inflation, basis_.Periods);
            here_.info("Rate year from ", start_of(year), ": rateable value ", value, ", multiplier ", factor);
            return value * factor;
        });
    }
    /// The rates in a period for one rate year of what lies between two dates.
    double of_year(const timeperiod& Time, int year, int revaluation, const Life& life) {
        if (year < first_year) return 0.0;
        const timeperiod whole(start_of(year), start_of(year + 1));
        const Life liable = life.within(whole.from(), whole.to());
        if (liable.Finish <= liable.Start) return 0.0;
        const double due = annual(year, revaluation);

        const Basis accruals{basis_.DayCount, ten_instalments(basis_) ? any_measure().Periods : basis_.Periods, 0.0};
        if (!basis_.cash()) return con(Time, liable, due, accruals);
        const double cash = con(Time, liable, due, basis_);
        const date& settled = life.Start >= whole.from() ? life.Start : life.Finish;
        const bool broken = whole.contains(settled);
        if (!ten_instalments(basis_) || !broken || !Time.contains(settled)) return cash;
        // Payments in arrears or late fall into the year after.
        const timeperiod paid(whole.from(), start_of(year + 2));
        const double balance = con(whole, liable, due, accruals) - con(paid, liable, due, basis_);
        here_.info("The rate year is settled with ", balance);
        return cash + balance;
    }

    const Routine& here_;
    const RatesDue<Value>& rates_;
    const Basis& basis_;
    Kept<double> annual_;
};

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
    Rates<Value> due{here, rates, basis};
    return here.returning(over(here, Time, [&](const timeperiod& period) { return due.between(period, life); }));
}

template <class Value>
double UKRatesR(const timeperiod& Time, const date& Start, View<date> BrksOrExp, const RatesDue<Value>& rates,
                const ReletTerms& relets, const Basis& basis, const ChainEnd& chain) {
    Routine here{Value::names.let};
    here.inputs(Time, Start, BrksOrExp, rates, relets, basis, chain);
    check_rates(here, rates, basis);
    const LeaseCalendar calendar{{basis.DayCount, basis.Periods}, chain.ROpts};
    const date start = calendar.rounded(Start), expiry = chain.expiry(BrksOrExp, calendar);
    Rates<Value> due{here, rates, basis};
    ReletWalk walk = relet_walk(here, relets.relets(), calendar, chain.limit());
    return here.returning(over(here, Time, [&](const timeperiod& period) {
        double amount = due.between(period, {start, expiry});
        each_relet(here, expiry, walk, period.from(), period.to(), [&](const Relet& relet, const date&) {
            amount += due.between(period, {relet.lease_start, relet.expiry});
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
    Rates<Value> due{here, rates, basis};
    Kept<date> end_of_first{here, 1};
    ReletWalk walk = relet_walk(here, relets.relets(), calendar, limit);
    return here.returning(over(here, Time, [&](const timeperiod& period) {
        double amount = 0.0;
        const auto add = [&](int n, const date& from, const date& to) {
            const date liable = calendar.rounded(calendar.after(from, series_item(RatesHol_s, n)));
            amount += due.between(period, {std::max(liable, start), std::min(to, limit)});
        };
        add(1, start, first_lease);
        const date& expiry = end_of_first(1, [&] { return chain.expiry(BrksOrExp, calendar); });
        each_relet(here, expiry, walk, period.from(), period.to(),
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
