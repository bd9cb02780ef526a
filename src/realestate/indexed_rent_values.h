// Present values of rents that follow an index: what a lease and its relets pay on the dates of CashBasis from the rent
// start to the end, discounted. They agree with the rent (realestate/indexed_rents.h) laid out over the dates of their
// walk (projections/present_value.h).
//
// The walk ends on Finish; if that is zero on AbFin, and without either with the last relet of the chain. Beside the
// errors of the rent, both throw errlibmin and errlibmax for a DayCountDisc outside 0 to 999, errlibmin for a DisAER
// below -0.999999, and errliboveriterated for 2000 payment dates or more.
#pragma once

#include "projections/present_value.h"
#include "realestate/indexed_rents.h"

namespace qx {

double PVTStepIdxRentGrowR(const Discount& at, const date& RentStart, View<date> BrksOrExp, View<double> MktRent_s,
                           const RentSteps& steps, const Growth& growth, const Growth& index,
                           const GrowthIndexation& indexation, const Relets& relets, const CashTerms& terms,
                           const AbsoluteDates& absolute, int ROpts, int Brk, View<int> IdxLag_s, const date& Finish);
/// Without a Finish.
double PVTStepIdxRentFcstR(const Discount& at, const date& RentStart, View<date> BrksOrExp, const RentSteps& steps,
                           const Forecast& forecast, const Forecast& index, const ForecastIndexation& indexation,
                           const Relets& relets, const CashTerms& terms, const AbsoluteDates& absolute, int ROpts,
                           int Brk, View<int> IdxLag_s);

} // namespace qx
