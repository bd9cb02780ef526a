// Fees on lettings, as a fraction of the rent a year at which a lease is let.
#pragma once

#include "calendar/time_period.h"
#include "realestate/relet_terms.h"

namespace qx {

/// The fees of a period: the first fraction of InitRent on LeaseStartDate, then fraction i + 1 of the market rent at
/// the start of relet i, the last one applying to the rest. A relet on AbFin or later pays none. Throw
/// missinggrowthdate (Growth::check), or errlibmin and errlibmax for a forecast base outside 1 to 1000.
double LeasingFeeGrowR(const timeperiod& Time, View<double> FeePerc_s, const date& LeaseStartDate, View<date> BrksOrExp,
                       View<double> MktRent_s, double InitRent, const Growth& growth, const ReletTerms& relets,
                       const date& AbFin, int Brk);
double LeasingFeeFcstR(const timeperiod& Time, View<double> FeePerc_s, const date& LeaseStartDate, View<date> BrksOrExp,
                       double InitRent, const Forecast& forecast, const ReletTerms& relets, const date& AbFin, int Brk);

} // namespace qx
