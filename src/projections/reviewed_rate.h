// Rent reviews: what a rate becomes when it is reviewed to the market.
#pragma once

#include "calendar/date.h"
#include "core/view.h"

namespace qx {

/// Whether reviews on a date are upward-only. Each date of UOTog that is reached turns the rule on or off, from off;
/// without dates a negative ReviewDiscount turns it on for ever. Blank rows are no dates.
bool upward_only(double ReviewDiscount, const date& TheDate, View<date> UOTog);

/// The rate after a review: the market rate less the discount (a fraction of it, of which only the size counts here)
/// where ApplyDiscount says so; no less than the rate before it where the review is upward-only.
double ReviewedRate(double PreviousPassingRate, double MktRate, double ReviewDiscount, const date& TheDate,
                    View<date> UOTog, bool ApplyDiscount);

} // namespace qx
