#include "calendar/reviews.h"

#include "calendar/annual_sequence.h"
#include "calendar/day_count.h"
#include "core/routine.h"

#include <cmath>

namespace qx {

namespace {

/// The date a number of review intervals from the first review.
date review(const date& FirstRev, int RevMos, int intervals) { return FirstRev.plusmonths(intervals * RevMos, true); }

/// How many intervals lie between the first review and a later date: 30/360 months, so that month ends match.
double intervals_between(const date& FirstRev, const date& day, int RevMos) {
    return daycountmonths(FirstRev, day, 12) / RevMos;
}

} // namespace

Review last_review(const date& TheDate, const date& FirstRev, int RevMos, bool RoundDown, int steps) {
    const date day = steps == 0 ? TheDate : TheDate.plusmonths(-RevMos * steps, true);
    if (day == FirstRev) return {RoundDown ? date() : FirstRev, 0};
    if (day < FirstRev) return {date(), 0};
    if (RevMos == 0) return {day, 0};
    const double intervals = intervals_between(FirstRev, day, RevMos);
    const int n = whole(intervals);
    const bool on_review = iszero(fraction(intervals));
    return {review(FirstRev, RevMos, RoundDown && on_review ? n - 1 : n), n};
}

Review next_review(const date& TheDate, const date& FirstRev, int RevMos, bool RoundDown, int steps) {
    const date day = steps == 0 ? TheDate : TheDate.plusmonths(RevMos * steps, true);
    if (day == FirstRev) return {RoundDown ? FirstRev : review(FirstRev, RevMos, 1), 0};
    if (day < FirstRev) return {FirstRev, 0};
    if (RevMos == 0) return {day, 0};
    const double intervals = intervals_between(FirstRev, day, RevMos);
    const int n = whole(intervals);
    const bool on_review = iszero(fraction(intervals));
    date next = review(FirstRev, RevMos, RoundDown && on_review ? n : n + 1);
    if (!RoundDown && next == day) next.addmonths(RevMos, true);
    return {next, n};
}

date LastReview(const date& TheDate, const date& FirstRev, int RevMos, bool RoundDown) {
    Routine here{"LastReview"};
    here.inputs(TheDate, FirstRev, RevMos, RoundDown);
    here.limit(RevMos, 0, 1000, "RevMos");
    return here.returning("DateResult", last_review(TheDate, FirstRev, RevMos, RoundDown).when);
}

date NextReview(const date& TheDate, const date& FirstRev, int RevMos, bool RoundDown) {
    Routine here{"NextReview"};
    here.inputs(TheDate, FirstRev, RevMos, RoundDown);
    here.limit(RevMos, 0, 1000, "RevMos");
    return here.returning("DateResult", next_review(TheDate, FirstRev, RevMos, RoundDown).when);
}

} // namespace qx
