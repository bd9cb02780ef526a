// Rent reviews: dates that recur every so many months after a first review.
#pragma once

#include "calendar/date.h"

namespace qx {

/// A review date, with how many whole intervals after the first review the date asked for lies.
struct Review {
    date when;
    int intervals = 0;
};

/// The review before a date, `steps` intervals earlier still. On the first review that one, or the zero date with
/// RoundDown; before it the zero date. RevMos of 0 gives the date itself. On a later review date RoundDown gives the
/// review before.
Review last_review(const date& TheDate, const date& FirstRev, int RevMos, bool RoundDown, int steps = 0);
/// The review after a date, `steps` intervals later still. Before the first review that one; RevMos of 0 gives the
/// date itself. On a review date RoundDown gives that date, otherwise the one after.
Review next_review(const date& TheDate, const date& FirstRev, int RevMos, bool RoundDown, int steps = 0);

/// The same for the worksheet. Throw errlibmin and errlibmax unless RevMos is 0 to 1000 months.
date LastReview(const date& TheDate, const date& FirstRev, int RevMos, bool RoundDown);
date NextReview(const date& TheDate, const date& FirstRev, int RevMos, bool RoundDown);

} // namespace qx
