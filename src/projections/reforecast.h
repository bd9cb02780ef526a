// Spreads that were made before the money was spent: what is left of the total, by the actuals to date or by the
// payments made so far.
#pragma once

#include "projections/spreads.h"

namespace qx {

/// The spread of a budget scaled so that with the actuals up to the period's start it still lands on the total: by
/// (Total - ActualsToDate) / (Total - budget to date), 0 if either is zero.
template <Spread S>
double spread_adjusted(const timeperiod& Time, const S& spread, double ActualsToDate, const Basis& basis);

/// Payments made, then the rest of the total from the last of them on, in the shape that the spread has from there.
/// Payments of zero at the end of the history do not count as made.
template <Spread S>
double spread_with_history(const timeperiod& Time, const S& spread, View<date> DatesHistory, View<double> PmtsHistory,
                           const Basis& basis);

} // namespace qx
