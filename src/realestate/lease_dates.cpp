#include "realestate/lease_dates.h"

#include "calendar/reviews.h"
#include "core/routine.h"
#include "projections/constant_rate.h"

namespace qx {

ChainLease ChainLease::next(double void_months, double term_months) const {
    const date commencement = expiry.plusmonths(void_months);
    return {number + 1, commencement, commencement.plusmonths(term_months)};
}

date LeaseEnd(View<date> BrksOrExp, int Brk) {
    Routine here{"LeaseEnd"};
    here.inputs(BrksOrExp, Brk);
    const date end = lease_end(BrksOrExp, Brk);
    return here.returning("DateResult", end < DateCrit ? end : date(3000, 1, 1));
}

bool ReletOccurs(const timeperiod& Time, View<date> BrksOrExp, const Relets& relets, int Brk) {
    Routine here{"ReletOccurs"};
    here.inputs(Time, BrksOrExp, relets, Brk);
    ChainLease lease{0, date(), lease_end(BrksOrExp, Brk)};
    for (int i = 1; i <= Relets::most && lease.expiry < DateCrit; ++i) {
        lease = lease.next(relets.void_months(i), relets.term_months(i));
        if (Time.contains(lease.start)) return here.returning(true);
        if (lease.start >= Time.to()) break;
    }
    return here.returning(false);
}

date NextReviewR(const date& TheDate, View<date> BrksOrExp, const date& FirstRev, int RevMos, View<double> RelVoid_s,
                 View<double> RelTerm_s, bool RoundDown, int Brk) {
    Routine here{"NextReviewR"};
    here.inputs(TheDate, BrksOrExp, FirstRev, RevMos, RelVoid_s, RelTerm_s, RoundDown, Brk);
    here.limit(RevMos, review_months_limits, "RevMos");
    const Relets relets{RelVoid_s, {}, RelTerm_s};
    date expiry = lease_end(BrksOrExp, Brk);
    date review = next_review(TheDate, FirstRev, RevMos, RoundDown).when;
    for (int i = 1; i <= Relets::most && review >= expiry; ++i) {
        const date first = expiry.plusmonths(RevMos + relets.void_months(i));
        expiry = expiry.plusmonths(relets.term_months(i) + relets.void_months(i));
        const TraceBlock pass = here.pass(i, "First review of the relet ", first, ", its expiry ", expiry);
        review = next_review(TheDate, first, RevMos, RoundDown).when;
    }
    return here.returning("DateResult", review);
}

date LastReviewR(const date& TheDate, View<date> BrksOrExp, const date& FirstRev, int RevMos, View<double> RelVoid_s,
                 View<double> RelTerm_s, bool RoundDown, int Brk) {
    Routine here{"LastReviewR"};
    here.inputs(TheDate, BrksOrExp, FirstRev, RevMos, RelVoid_s, RelTerm_s, RoundDown, Brk);
    here.limit(RevMos, review_months_limits, "RevMos");
    const Relets relets{RelVoid_s, {}, RelTerm_s};
    date expiry = lease_end(BrksOrExp, Brk), first = FirstRev;
    date review = last_review(TheDate, first, RevMos, RoundDown).when, earlier;
    for (int i = 1; i <= Relets::most && TheDate >= expiry; ++i) {
        // A relet that is not reviewed yet leaves the last review before the end of the lease before it.
        if (const date before = last_review(expiry, first, RevMos, true).when; !before.iszero() && before < expiry)
            earlier = before;
        first = expiry.plusmonths(RevMos + relets.void_months(i));
        expiry = expiry.plusmonths(relets.term_months(i) + relets.void_months(i));
        const TraceBlock pass = here.pass(i, "First review of the relet ", first, ", its expiry ", expiry);
        review = last_review(TheDate, first, RevMos, RoundDown).when;
    }
    return here.returning("DateResult", review.iszero() ? earlier : review);
}

double Occupancy(const timeperiod& Time, const date& LeaseStartDate, View<date> BrksOrExp, View<double> RelVoid_s,
                 View<double> RelTerm_s, const Measure& measure, const date& AbFin, int Brk) {
    Routine here{"Occupancy"};
    here.inputs(Time, LeaseStartDate, BrksOrExp, RelVoid_s, RelTerm_s, measure, AbFin, Brk);
    measure.check(here);
    const Relets relets{RelVoid_s, {}, RelTerm_s};
    const date& limit = AbFin.iszero() ? DateCrit : AbFin;
    const ChainLease first{0, LeaseStartDate, lease_end(BrksOrExp, Brk)};
    Kept<ChainLease> later{here, Relets::most};
    return here.returning(over(here, Time, [&](const timeperiod& period) {
        ChainLease lease = first;
        double years = 0.0;
        for (int i = 1; i <= Relets::most && lease.start <= period.to() && lease.start < limit; ++i) {
            years += con(period, {lease.start, std::min(lease.expiry, limit)}, 1.0, measure);
            lease = later(i, [&] { return lease.next(relets.void_months(i), relets.term_months(i)); });
        }
        return safe_divide(years, con(period, {period.from(), period.to()}, 1.0, measure));
    }));
}

} // namespace qx
