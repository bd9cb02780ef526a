// A lease and the chain of relets that follow it.
//
// A relet starts some void months after the expiry before it, its rent starts some rent-free months after that, and it
// expires its term after its start. Series of voids and the like have an entry for each relet, of which the last one
// applies to all that follow; without entries there is neither void nor rent-free, and a relet runs for 15 years.
#pragma once

#include "core/options.h"
#include "core/twin_run.h"
#include "projections/terms.h"

namespace qx {

/// Which of the dates in a list of breaks ends a lease.
enum BreakNumber : int {
    first_break_from_today = -2, ///< the first one after today, or the last of all once they are past
    no_break = -1,               ///< none: the lease never ends
    last_break = 0,              ///< the last one, the ultimate expiry
};

/// The date that ends a lease: entry Brk of its breaks, of which the last one is the expiry; the last one where there
/// are fewer, the first one for numbers below -2, the zero date without any. Zero dates at the end are no breaks.
date lease_end(View<date> BrksOrExp, int Brk);
/// The same, no later than AbFin unless that is zero; then the other breaks have no effect, which the trace of `here`
/// shows.
date lease_end(const Routine& here, View<date> BrksOrExp, int Brk, const date& AbFin);

/// What the relets of a chain have: months of void and of rent-free, and terms in years.
struct Relets {
    using takes = Takes<Range<double>, Range<double>, Range<double>>;
    View<double> RelVoid_s, RelRF_s, RelTerm_s;

    static constexpr int most = 100; ///< no chain is followed further
    static constexpr double default_term = 15.0;

    double void_months(int i) const { return RelVoid_s.empty() ? 0.0 : RelVoid_s.entry(i); }
    double rent_free_months(int i) const { return RelRF_s.empty() ? 0.0 : RelRF_s.entry(i); }
    double term_months(int i) const { return (RelTerm_s.empty() ? default_term : RelTerm_s.entry(i)) * 12.0; }
};

/// Options of rents that go on over relets, as bits of a sum.
enum RentOption : int {
    move_by_day_count = 1,   ///< "Daycount for calculating new rent start is the same as for rent."
    round_dates = 2,         ///< to the nearest date of Periods
    deflate_market = 4,      ///< "Market Rents on relet grow from Lease Start"
    index_steps = 1024,      ///< "Index the fixed rental steps"
    start_is_absolute = 2048 ///< "AbStart overrides RentStart."
};

/// How the dates of a chain are counted on and rounded.
struct LeaseCalendar {
    Measure measure;
    int ROpts;

    /// A number of months after a date.
    date after(const date& day, double months) const;
    /// The date itself, or the nearest date of the sequence. The zero date and the end of time stay.
    date rounded(const date& day) const;
    bool rounds() const { return option_present(round_dates, ROpts); }
};

/// One relet.
struct Relet {
    int number = 0;
    date lease_start, rent_start, first_review, expiry;
};

/// The relet that follows an expiry; it ends no later than `limit`. Its first review is RevMos after its start, the
/// zero date if that is 0.
Relet next_relet(int number, const date& expiry, const Relets& relets, int RevMos, const LeaseCalendar& calendar,
                 const date& limit);

/// The walk of a routine over the relets that follow an expiry. In the run of a twin it works out each of them once,
/// and skips those that end before the periods still to come, as long as these ascend.
class ReletWalk {
  public:
    ReletWalk(const Routine& here, const Relets& relets, int RevMos, const LeaseCalendar& calendar, const date& limit)
        : relets_(relets), RevMos_(RevMos), calendar_(calendar), limit_(limit), found_(here, Relets::most) {}

    /// True if the first lease is known to end before a date, and so to have nothing from then on.
    bool first_is_past(const date& from) const { return past_ > 0 && from.dtn() >= past_by_; }
    /// Visits the relets that follow an expiry up to `until`, each with the expiry before it, until a visit returns
    /// false. Those that end before `from` may be skipped. The first expiry must be the same in each call.
    template <class Visit>
    void operator()(const date& first_expiry, const date& from, const date& until, Visit visit) {
        if (until < from || from.dtn() < past_by_) past_ = 0;
        const date* expiry = past_ > 0 ? past_expiry_ : &first_expiry;
        for (int i = past_ + 1; i <= Relets::most && *expiry <= until && *expiry < limit_; ++i) {
            const Found& found = found_(i, [&] {
                return Found{*expiry, next_relet(i, *expiry, relets_, RevMos_, calendar_, limit_)};
            });
            if (!visit(found.relet, found.before)) return;
            expiry = &found.relet.expiry;
            const bool past = past_ == i - 1 && found.before < from && *expiry < from && found.relet.rent_start < from;
            if (!past || !found_.keeps()) continue;
            past_ = i;
            past_expiry_ = expiry;
            past_by_ = from.dtn();
        }
    }

  private:
    struct Found {
        date before;
        Relet relet;
    };

    Relets relets_;
    int RevMos_;
    const LeaseCalendar& calendar_;
    const date& limit_;
    Kept<Found> found_;
    int past_ = 0;                      ///< how many of the first relets end before a date
    int past_by_ = 0;                   ///< that date
    const date* past_expiry_ = nullptr; ///< the expiry of the last of them
};

/// The message of errinpmin for a relet that does not end after the expiry before it.
inline constexpr const char* no_relet_term =
    "Cannot establish a relet after the expiry date with a valid value for the Relet Term";

/// When the last relet of a chain that nothing else ends expires; the end of time if that comes before.
date end_of_chain(const date& first_expiry, const Relets& relets, const LeaseCalendar& calendar);

} // namespace qx
