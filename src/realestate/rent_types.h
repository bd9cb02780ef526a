// Rents from dates on, each of which is arrived at in its own way.
#pragma once

#include "calendar/time_period.h"
#include "realestate/rents.h"

namespace qx {

/// How a rent is arrived at, as bits of a sum. Without to_market and indexed it is fixed: the rent of the list, or the
/// market rent where that is zero. Both at once are no type.
enum ReviewType : int {
    fixed_rent = 0,
    to_market = 1,         ///< the market rent less the discount
    not_below_before = 2,  ///< upward-only
    within_collar = 4,     ///< no more than the cap, no less than the floor
    indexed_rent_type = 8, ///< the rent before times what the market made of it since it was agreed
};

/// The rents of a lease that starts on a date: rent n from date n on, by review type n, of which the last one applies
/// to the rest. The market is a forecast. Reviews of the last type go on every RevMos after the last date.
struct TypedRents {
    using takes = Takes<Range<date>, Range<double>, Forecast, Collars, Range<int>, Reviews>;
    View<date> FromDates;
    View<double> AnnRents;
    Forecast market;
    Collars collars;
    View<int> ReviewTypes;
    Reviews reviews;
};

/// The rent of a period: of the lease and, with a term, of relets. The lease and each relet run for the term from their
/// start; without a term the lease does not end. Relets start at the market rent and are reviewed every RevMos by the
/// last review type. The first rent is not reviewed: to market it is the market rent without discount, and an indexed
/// one is that of the list. Under accruals without a CashBasis, otherwise as paid on its dates.
///
/// Throws what rents throw, and illegalvalue for a review type that is none.
double FRentType(const timeperiod& Time, const date& Start, const date& RentStart, const TypedRents& rents,
                 const Relets& relets, double DayCount, const AnnualSequence& CashBasis, View<date> UOTog);

} // namespace qx
