// Business rates in England: the rateable value of a property times the multiplier of the rate year, which starts on
// 1 April. The values are of antecedent dates two years before each revaluation, which was made on 1 April 1990 and
// every five years from then on. The multipliers up to the year from 1 April 2004 are those that were published; from
// then on the multiplier of a revaluation year grows with inflation until the next revaluation.
//
// All throw errlibmin and errlibmax for a DCRates outside 0 to 999, a ProjMode outside 0 to 7 or a forecast base
// outside 1 to 1000, missinggrowthdate (Growth::check), errtimerange for a period within the liability that begins
// before 1 April 1990, and errliblargebase for one of more than 12 months.
#pragma once

#include "calendar/time_period.h"
#include "realestate/relet_terms.h"

namespace qx {

/// Growth of the multiplier, with the rates before the dates.
struct Inflation {
    using takes = Takes<Range<double>, Range<date>>;
    View<double> InflationRates;
    View<date> InflationDates;

    Growth growth() const { return {InflationDates, InflationRates}; }
};

/// The names of the worksheet functions of a kind of rateable value: between two dates, of the leases of a chain, and
/// of its voids.
struct RatesNames {
    const char* between_dates;
    const char* let;
    const char* empty;
};

/// A rateable value that grows.
struct GrowingRateableValue {
    using takes = Takes<double, Growth>;
    double RateableValue;
    Growth growth;

    static constexpr RatesNames names{"UKRatesGrow", "UKRatesGrowR", "UKEmptyRatesGrowR"};
    void check(Routine& here) const { growth.check(here); }
    double at(const date& day) const;
};

/// A forecast of rateable values.
struct ForecastRateableValue {
    using takes = Takes<date, int, Range<double>>;
    const date& StartFcst;
    int FcstBase;
    View<double> FcstRateableValues;

    static constexpr RatesNames names{"UKRatesFcst", "UKRatesFcstR", "UKEmptyRatesFcstR"};
    Forecast forecast() const { return {FcstRateableValues, StartFcst, FcstBase}; }
    void check(Routine& here) const { forecast().check(here); }
    double at(const date& day) const;
};

/// What rates are due on a property.
template <class Value>
struct RatesDue {
    using takes = Takes<double, Value, Inflation>;
    double RatesMultiplier; ///< of each year of revaluation from 1 April 2005 on
    Value value;
    Inflation inflation;
};

/// The rates of a period for what lies between two dates. Ten dates in Periods are the ten-instalment system: the dates
/// bear on cash alone, and a year that Start or Finish breaks is settled in the period that holds the one that breaks
/// it, Start if both do.
template <class Value>
double UKRates(const timeperiod& Time, const Life& life, const RatesDue<Value>& rates, const Basis& basis);
/// The same of a lease and its relets.
template <class Value>
double UKRatesR(const timeperiod& Time, const date& Start, View<date> BrksOrExp, const RatesDue<Value>& rates,
                const ReletTerms& relets, const Basis& basis, const ChainEnd& chain);
/// A fraction of the rates of the voids of a chain, from StartCost on: of that before StartLease and of those between
/// the leases, each from the end of its rate-free months on. Those of the void before the lease come first, then those
/// of the void before each relet, and the last ones serve for the rest.
template <class Value>
double UKEmptyRates(const timeperiod& Time, const date& StartCost, const date& StartLease, View<date> BrksOrExp,
                    const RatesDue<Value>& rates, View<double> RatesHol_s, const ReletTerms& relets,
                    double EmptyRatesFrac, const Basis& basis, const ChainEnd& chain);

} // namespace qx
