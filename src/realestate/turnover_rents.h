// Rents of a share of the tenant's turnover. The turnover of a year falls into bands above thresholds, and each band
// pays at its own marginal rate:
//
//     rent = sum over bands of rate(band, date) x the turnover between its threshold and the next
//
// Turnover is read from a list by to-dates, the last one holding for ever after, and then grows; so do the thresholds.
// Growth counts from its own first date, in steps every GrowEvery months; without steps it is read at the start of the
// period and where turnovers or rates change.
#pragma once

#include "calendar/time_period.h"
#include "realestate/lease.h"

namespace qx {

/// Marginal rates of turnover, thresholds down and dates across.
struct TurnoverRates {
    using takes = Takes<Range<double>, Range<double>, Range<date>>;
    View<double> MargTurnRates;      ///< fractions: a row for each threshold, a column for each date
    View<double> RateFromThresholds; ///< turnovers a year, ascending; without them all turnover pays one rate
    View<date> RateFromDates;        ///< ascending; before the first one no rent is due
};

/// Turnovers a year, each up to a date.
struct Turnovers {
    using takes = Takes<Range<date>, Range<double>>;
    View<date> ToDates;
    View<double> levels;
};

/// What of a tenant's turnover is asked for, and how it grows.
struct TurnoverTerms {
    using takes = Takes<TurnoverRates, Growth, Turnovers, Growth, int>;
    TurnoverRates rates;
    Growth of_thresholds;
    Turnovers turnovers;
    Growth growth;
    int GrowEvery; ///< 0 to 1000 months
};

/// What a turnover rent reports.
enum TurnoverSwitch : int {
    turnover_rent = 0,
    qualifying_turnover = 1, ///< the turnover above the first threshold
};

/// The turnover rent of a lease in a period, or the turnover that qualifies for it. Throws what RentGrow throws (see
/// realestate/rents.h), errlibmin and errlibmax for GrowEvery outside 0 to 1000 months, errlibillegalswitch for another
/// TurnSwitch, inconsistentranges for a table of rates that has fewer rows or columns than there are thresholds or
/// dates.
double TStepGTurnRentGrow(const timeperiod& Time, const date& RentStart, View<date> BrksOrExp,
                          const TurnoverTerms& terms, int TurnSwitch, const Basis& basis, int Brk);
/// The same over the relets after it, from the start of their rent.
double TStepGTurnRentGrowR(const timeperiod& Time, const date& RentStart, View<date> BrksOrExp,
                           const TurnoverTerms& terms, const Relets& relets, int TurnSwitch, const Basis& basis,
                           const date& AbFin, int Brk);

} // namespace qx
