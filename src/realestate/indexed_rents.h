// The rent of a lease, and of the relets after it, that follows an index: from a first indexation date on it is taken
// up every IdxReg months to what the index has made of it since a base date. A relet starts at the market rent
// (realestate/rents.h), which follows the index in its turn. The settings of indexation are series: an entry for the
// lease, then one for each relet, of which the last one serves for the rest.
//
// All throw what rents throw, and errlibmin and errlibmax for an IdxReg outside 0 to 1000 months.
#pragma once

#include "calendar/anyvalue.h"
#include "calendar/time_period.h"
#include "realestate/lease.h"

namespace qx {

/// How leases follow an index that grows. IdxReg_s are months, 0 for growth at every moment. Without a base date the
/// rent holds at its start; without a first indexation date that is the start of the rent or the first growth date of
/// the index, whichever is later.
struct GrowthIndexation {
    using takes = Takes<Range<int>, Range<date>, Range<date>>;
    View<int> IdxReg_s;
    View<date> IdxBaseDate_s, FirstIdxDate_s;
};

/// How leases follow the forecast of an index, as ConIdx has it: the base is a date or the level of the index.
struct ForecastIndexation {
    using takes = Takes<Range<int>, Range<dateorfloat>, Range<date>>;
    View<int> IdxReg_s;
    View<dateorfloat> BaseDateOrIdx_s;
    View<date> FirstIdxDate_s;
};

/// IdxLag_s are months by which the index is later than its dates say.
double IdxRentGrowR(const timeperiod& Time, const date& RentStart, View<date> BrksOrExp, View<double> MktRent_s,
                    double AnnRent, const Growth& growth, const Growth& index, const GrowthIndexation& indexation,
                    const Relets& relets, const Basis& basis, const date& AbFin, int ROpts, int Brk,
                    View<int> IdxLag_s);
double IdxRentFcstR(const timeperiod& Time, const date& RentStart, View<date> BrksOrExp, double AnnRent,
                    const Forecast& forecast, const Forecast& index, const ForecastIndexation& indexation,
                    const Relets& relets, const Basis& basis, const date& AbFin, int ROpts, int Brk,
                    View<int> IdxLag_s);

} // namespace qx
