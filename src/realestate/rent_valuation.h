// The rent of a lease and of the relets after it, capitalised.
#pragma once

#include "realestate/rents.h"
#include "realestate/valuation.h"

namespace qx {

/// The value of the rents of TStepRentGrowR: those of the lease and of its relets as they fall due, discounted at
/// DisAER, and the rent of the last relet for ever at Yield, from its start on. The relets are as many as the longest
/// of the series of market rents, voids, rent-free periods and terms provides for, and one at least. A lease without
/// end is capitalised from its first review to the market on. With AbFin nothing is capitalised: the income ends on
/// that date. Rents are projected before the capitalisation; afterwards their growth is in Yield. Under
/// cap_maximum_rent the rent capitalised is not below any before it.
///
/// Throws what the rents throw (realestate/rents.h), and the errors of discounted cash flow (realestate/valuation.h).
double CapValueTStepRentGrowR(const date& ValuationDate, double Yield, double DisAER, const date& RentStart,
                              View<date> BrksOrExp, View<double> MktRent_s, View<date> ReviewDates,
                              View<double> AnnRents, const Growth& growth, const Reviews& reviews, const Relets& relets,
                              const Measure& measure, const date& AbFin, View<date> UOTog, int ROpts, int Brk,
                              double CostsPerc, const CapTerms& terms);

} // namespace qx
