// How the rent of a lease is reviewed to the market, review by review.
#pragma once

#include "calendar/reviews.h"
#include "projections/reviewed_rate.h"
#include "realestate/rents.h"

#include <cmath>

namespace qx {

inline constexpr int most_reviews_of_rent = 100;
/// A discount to the market rent, whose sign marks upward-only reviews.
inline constexpr Limits rent_discount_limits{-1, 1};

/// How far the walk over the reviews of a lease has come: the last review, and the next one. Number 0 is the start.
struct ReviewPeriod {
    int review = 0;
    date from, to;

    /// True if a period asks for nothing before it.
    bool precedes(const timeperiod& period) const { return review > 0 && from <= period.from() && from < period.to(); }
    /// True if a period asks for nothing after it, either.
    bool holds(const timeperiod& period) const { return precedes(period) && period.to() < to; }
};

/// How the rent of a lease is reviewed.
struct Rules {
    const Reviews& reviews;
    View<date> UOTog;

    double reviewed(double passing, double market, const date& day, bool discounted) const {
        return ReviewedRate(passing, market, reviews.RevDisc, day, UOTog, discounted);
    }
    double discounted(double market) const { return (1.0 - std::fabs(reviews.RevDisc)) * market; }
    /// The review that follows a date, the zero date if reviews do not recur.
    date first_after(const date& day) const {
        return reviews.RevMos == 0 ? date() : day.plusmonths(reviews.RevMos, true);
    }
    /// The end of a review period: the next review, never if they do not recur.
    date next_after(const date& day, const date& FirstRev) const {
        return reviews.RevMos == 0 ? date(DateCrit) : next_review(day, FirstRev, reviews.RevMos, false).when;
    }
};

/// The first review as the walk uses it: none is at the end of the lease.
const date& check_first_review(const Routine& here, const date& FirstRev, const date& expiry, int RevMos);
/// Throws errlibmaxrevs, after a note, at the hundredth review of a lease.
void check_number_of_reviews(const Routine& here, int n, const date& FirstRev, const date& to);

} // namespace qx
