// The terms of the costs that follow a chain of leases (realestate/lease.h), and the walk over its relets.
#pragma once

#include "core/routine.h"
#include "realestate/lease.h"

#include <algorithm>

namespace qx {

/// What the relets of a chain have where there is no rent-free: months of void and terms in years.
struct ReletTerms {
    using takes = Takes<Range<double>, Range<double>>;
    View<double> RelVoid_s, RelTerm_s;

    Relets relets() const { return {RelVoid_s, {}, RelTerm_s}; }
};

/// The calendar of leases that are counted in plain months.
inline LeaseCalendar plain_calendar() {
    constexpr int no_options = 0;
    return {any_measure(), no_options};
}

/// How a chain ends. AbFin, unless zero, ends the lease or relet that it falls into, and with it the chain.
struct ChainEnd {
    using takes = Takes<date, int, int>;
    const date& AbFin;
    int ROpts; ///< RentOptions: those of counting and rounding dates
    int Brk;

    const date& limit() const { return AbFin.iszero() ? DateCrit : AbFin; }
    /// The end of the first lease.
    date expiry(View<date> BrksOrExp, const LeaseCalendar& calendar) const {
        return std::min(calendar.rounded(lease_end(BrksOrExp, Brk)), limit());
    }
};

/// Item n of a series, from 1, of which the last one applies to the rest; 0 of an empty one.
inline double series_item(View<double> series, int n) { return series.empty() ? 0.0 : series.entry(n); }

/// The walk over the relets of a chain without reviews.
inline ReletWalk relet_walk(const Routine& here, const Relets& relets, const LeaseCalendar& calendar,
                            const date& limit) {
    constexpr int no_reviews = 0;
    return {here, relets, no_reviews, calendar, limit};
}

/// Calls `each` with the relets that follow an expiry up to a date, and with the expiry before each. Those that end
/// before `from` may be skipped. Throws errinpmin for a relet that ends no later than the lease before it.
template <class Each>
void each_relet(const Routine& here, const date& expiry, ReletWalk& walk, const date& from, const date& until,
                Each each) {
    walk(expiry, from, until, [&](const Relet& relet, const date& before) {
        const TraceBlock pass = here.pass(relet.number, "Number of Relets needed: ", relet.number);
        if (relet.expiry <= before) here.fail<errinpmin>("RelTerm_s", no_relet_term);
        each(relet, before);
        return true;
    });
}

/// The note of a function whose start was split into the start of the cost and that of the lease.
inline void note_split_start(const Routine& here) {
    here.change_note(150, "See Change in Behaviour 150, Aug-04 :Start variable replaced by StartLease and StartCosts");
}

} // namespace qx
