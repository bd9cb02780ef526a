// The rent of a lease, and of the relets after it, that follows an index: from a first indexation date on it is taken
// up every IdxReg months to what the index has made of it since a base date. A relet starts at the market rent
// (realestate/rents.h), which follows the index in its turn. The settings of indexation are series: an entry for the
// lease, then one for each relet, of which the last one applies to the rest.
//
// A rent that is agreed at a review to the market holds from that day; indexation goes on from it on the same dates as
// before, with the review as its base.
//
// All throw what rents throw, and errlibmin and errlibmax for an IdxReg outside 0 to 1000 months.
#pragma once

#include "calendar/anyvalue.h"
#include "calendar/time_period.h"
#include "realestate/lease.h"

namespace qx {

/// How leases follow an index that grows. IdxReg_s are months, 0 for continuous growth. Without a base date the
/// rent holds at its start; without a first indexation date that is the start of the rent or the first growth date of
/// the index, whichever is later.
struct GrowthIndexation {
    using takes = Takes<Range<int>, Range<date>, Range<date>>;
    View<int> IdxReg_s;
    View<date> IdxBaseDate_s, FirstIdxDate_s;
};

/// How leases follow the forecast of an index, as ConIdx has it: the base is a date or the level of the index. Between
/// reviews and after steps of rent an IdxReg_s of 0 is indexation at each value of the forecast.
struct ForecastIndexation {
    using takes = Takes<Range<int>, Range<dateorfloat>, Range<date>>;
    View<int> IdxReg_s;
    View<dateorfloat> BaseDateOrIdx_s;
    View<date> FirstIdxDate_s;
};

/// Reviews to the market between which a rent follows an index, as Reviews (realestate/rents.h).
struct ReviewsOfIndexed {
    using takes = Takes<double, int>;
    double RevDis;
    int RevMonths;
};

/// Rents up to dates, the last of which goes on after the last date.
struct RentSteps {
    using takes = Takes<Range<date>, Range<double>>;
    View<date> ReviewDates;
    View<double> AnnRents;
};

/// What bounds a chain with an absolute start: see start_is_absolute. Without that option no rent before AbStart
/// counts.
struct AbsoluteDates {
    using takes = Takes<date, date>;
    const date& AbStart;
    const date& AbFin;

    bool override_start(int ROpts) const { return option_present(start_is_absolute, ROpts) && !AbStart.iszero(); }
};

// --- Indexed only ----------------------------------------------------------------------------------------------------

/// IdxLag_s are months by which the index is later than its dates say.
double IdxRentGrowR(const timeperiod& Time, const date& RentStart, View<date> BrksOrExp, View<double> MktRent_s,
                    double AnnRent, const Growth& growth, const Growth& index, const GrowthIndexation& indexation,
                    const Relets& relets, const Basis& basis, const date& AbFin, int ROpts, int Brk,
                    View<int> IdxLag_s);
double IdxRentFcstR(const timeperiod& Time, const date& RentStart, View<date> BrksOrExp, double AnnRent,
                    const Forecast& forecast, const Forecast& index, const ForecastIndexation& indexation,
                    const Relets& relets, const Basis& basis, const date& AbFin, int ROpts, int Brk,
                    View<int> IdxLag_s);

// --- Indexed between reviews to the market ---------------------------------------------------------------------------
// A relet is first reviewed RevMonths after its start. The rent before a review, below which an upward-only one does
// not go, is that of the day before it.

double IdxRentGrowMktR(const timeperiod& Time, const date& RentStart, View<date> BrksOrExp, const date& FirstRev,
                       View<double> MktRent_s, double AnnRent, const Growth& growth, const Growth& index,
                       const GrowthIndexation& indexation, const ReviewsOfIndexed& reviews, const Relets& relets,
                       const Basis& basis, const date& AbFin, View<date> UOTog, int ROpts, int Brk, View<int> IdxLag_s);
double IdxRentFcstMktR(const timeperiod& Time, const date& RentStart, View<date> BrksOrExp, const date& FirstRev,
                       double AnnRent, const Forecast& forecast, const Forecast& index,
                       const ForecastIndexation& indexation, const ReviewsOfIndexed& reviews, const Relets& relets,
                       const Basis& basis, const date& AbFin, View<date> UOTog, int ROpts, int Brk, View<int> IdxLag_s);

// --- Rents up to dates, then indexed ---------------------------------------------------------------------------------
// Rents in the list are as given, or with the option index_steps what the index has made of them since the base when
// they start, unless that is before the first indexation. A rent of zero is the market rent at its start, which is also
// its base. After the last date the last rent goes on and follows the index: since its base, or without one since that
// date, or with index_steps since the start of the rent. Without a list the rent starts at the market.

double TStepIdxRentGrowR(const timeperiod& Time, const date& RentStart, View<date> BrksOrExp, View<double> MktRent_s,
                         const RentSteps& steps, const Growth& growth, const Growth& index,
                         const GrowthIndexation& indexation, const Relets& relets, const Basis& basis,
                         const AbsoluteDates& absolute, int ROpts, int Brk, View<int> IdxLag_s);
double TStepIdxRentFcstR(const timeperiod& Time, const date& RentStart, View<date> BrksOrExp, const RentSteps& steps,
                         const Forecast& forecast, const Forecast& index, const ForecastIndexation& indexation,
                         const Relets& relets, const Basis& basis, const AbsoluteDates& absolute, int ROpts, int Brk,
                         View<int> IdxLag_s);

} // namespace qx
