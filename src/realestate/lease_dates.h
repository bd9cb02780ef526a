// What follows from the dates of a lease and its relets (realestate/lease.h): when it ends, which relet is in force,
// when the next review is, how much of a period it is let.
#pragma once

#include "calendar/time_period.h"
#include "realestate/lease.h"

namespace qx {

/// One lease of a chain: 0 is the original one, then the relets.
struct ChainLease {
    int number = 0;
    date start, expiry;

    /// The relet that follows.
    ChainLease next(double void_months, double term_months) const;
};

/// lease_end for the worksheet; 1 January 3000 for a lease without end.
date LeaseEnd(View<date> BrksOrExp, int Brk);

/// True if a relet starts in a period.
bool ReletOccurs(const timeperiod& Time, View<date> BrksOrExp, const Relets& relets, int Brk);

/// The next review after a date, of the lease or of the relets, each of which is first reviewed RevMos after its start.
/// What would be a review on or after the end of its lease is none. Throws errlibmin and errlibmax unless RevMos is 0
/// to 1000 months.
date NextReviewR(const date& TheDate, View<date> BrksOrExp, const date& FirstRev, int RevMos, View<double> RelVoid_s,
                 View<double> RelTerm_s, bool RoundDown, int Brk);
/// The last review up to a date; the zero date before the first one.
date LastReviewR(const date& TheDate, View<date> BrksOrExp, const date& FirstRev, int RevMos, View<double> RelVoid_s,
                 View<double> RelTerm_s, bool RoundDown, int Brk);

/// The fraction of a period in which the lease or a relet runs, up to AbFin unless that is zero. 0 for a period without
/// length. Throws errlibmin and errlibmax for a DayCount outside 0 to 999.
double Occupancy(const timeperiod& Time, const date& LeaseStartDate, View<date> BrksOrExp, View<double> RelVoid_s,
                 View<double> RelTerm_s, const Measure& measure, const date& AbFin, int Brk);

} // namespace qx
