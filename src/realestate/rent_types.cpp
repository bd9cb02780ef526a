#include "realestate/rent_types.h"

#include "core/options.h"
#include "core/routine.h"
#include "realestate/rent_chain.h"
#include "realestate/rent_reviews.h"

namespace qx {

namespace {

/// A rent that passes: since when, and how much.
struct PassingRent {
    date since;
    double rent = 0.0;
    bool any() const { return !since.iszero(); }
};

/// How far the walk over the reviews of a lease has come, and the rent there.
struct TypedWalk : ReviewPeriod {
    PassingRent passing;
};

/// How the rents of a list come about.
class RentTypes {
  public:
    RentTypes(const Routine& here, const TypedRents& rents, View<date> UOTog)
        : here_(here), rents_(rents), rules_{rents.reviews, UOTog} {
        for (const int type : rents.ReviewTypes) {
            constexpr int all = to_market | not_below_before | within_collar | indexed_rent_type;
            if (type < 0 || (type & ~all) != 0 || option_present(to_market | indexed_rent_type, type))
                here.fail<illegalvalue>("ReviewTypes", "There is no review type of ", type);
        }
    }

    int type(int n) const { return rents_.ReviewTypes.empty() ? fixed_rent : rents_.ReviewTypes.entry(n); }
    double market(const date& day) const { return fcst(day, rents_.market); }

    /// Rent n, agreed on a day after the one before it.
    PassingRent agreed(const PassingRent& before, const date& day, int n, double listed) const {
        const int how = type(n);
        double rent = listed;
        if (option_present(indexed_rent_type, how) && before.any()) {
            rent = before.rent * safe_divide(market(day), market(before.since));
            here_.info("Indexed since ", before.since, ": ", rent);
        } else if (option_present(to_market, how) || iszero(listed)) {
            rent = before.any() ? rules_.reviewed(before.rent, market(day), day, true) : market(day);
            here_.info("To the market: ", rent);
        }
        if (option_present(not_below_before, how) && before.any()) rent = std::max(rent, before.rent);
        if (option_present(within_collar, how)) rent = rents_.collars.collared(rent, n);
        return {day, rent};
    }
    const Rules& rules() const { return rules_; }
    /// True if reviews of the last type change a rent.
    bool reviews_go_on(int n) const { return rents_.reviews.RevMos > 0 && type(n) != fixed_rent; }

  private:
    const Routine& here_;
    const TypedRents& rents_;
    Rules rules_;
};

/// The sum over the rents of one lease.
class TypedLease {
  public:
    TypedLease(const Routine& here, const RentTypes& types, const timeperiod& period, const Life& life,
               const Measure& measure)
        : here_(here), types_(types), period_(period), life_(life), measure_(measure) {}

    void add(const PassingRent& passing, const date& to) {
        const date from = std::max(passing.since, life_.Start), end = std::min(to, life_.Finish);
        if (end > from) sum_ += ConX(period_, {from, end}, passing.rent, measure_, end < life_.Finish);
    }
    /// A rent to the end of the lease, reviewed every RevMos from a date on; n is its place in the list.
    void add_to_the_end(const PassingRent& passing, const date& counted_from, int n, TypedWalk& walk) {
        if (!types_.reviews_go_on(n)) return add(passing, life_.Finish);
        const date first = types_.rules().first_after(counted_from);
        if (!walk.precedes(period_)) {
            walk.review = 0;
            walk.passing = passing;
            walk.to = first;
        }
        while (walk.to < life_.Finish && walk.to < period_.to()) {
            const TraceBlock pass = here_.pass(walk.review + 1, "Review at ", walk.to);
            add(walk.passing, walk.to);
            walk.from = walk.to;
            walk.passing = types_.agreed(walk.passing, walk.from, n, walk.passing.rent);
            check_number_of_reviews(here_, ++walk.review, first, period_.to());
            walk.to = types_.rules().next_after(walk.from, first);
        }
        add(walk.passing, walk.to);
    }
    double sum() const { return sum_; }

  private:
    const Routine& here_;
    const RentTypes& types_;
    const timeperiod& period_;
    const Life& life_;
    const Measure& measure_;
    double sum_ = 0.0;
};

} // namespace

double FRentType(const timeperiod& Time, const date& Start, const date& RentStart, const TypedRents& rents,
                 const Relets& relets, double DayCount, const AnnualSequence& CashBasis, View<date> UOTog) {
    constexpr double as_paid = 1.0, as_it_accrues = 0.0;
    constexpr int no_options = 0;
    Routine here{"FRentType"};
    here.inputs(Time, Start, RentStart, rents, relets, DayCount, CashBasis, UOTog);
    here.limit(DayCount, daycount_limits, "DayCount");
    rents.reviews.check(here);
    rents.market.check(here);
    const RentTypes types{here, rents, UOTog};
    const bool cash = CashBasis.size() > 0;
    const Basis basis{DayCount, cash ? CashBasis : any_measure().Periods, cash ? as_paid : as_it_accrues};
    const Measure measure{DayCount, basis.Periods};

    const date expiry = relets.RelTerm_s.empty() ? date(DateCrit) : Start.plusmonths(relets.term_months(1));
    const date never;
    const int maxn = rents.FromDates.size();
    Kept<PassingRent> listed{here, std::max(maxn, 1)};
    TypedWalk first_walk;
    Kept<TypedWalk> walks{here, Relets::most};
    return here.returning(follow_chain(
        here, Time, RentStart, {View<date>::of(expiry), last_break, never, relets, no_options}, rents.reviews.RevMos,
        basis, {},
        [&](const timeperiod& period, const date& end) {
            if (!within_lease(here, period, RentStart, end)) return 0.0;
            const Life life{RentStart, end};
            TypedLease lease{here, types, period, life, measure};
            PassingRent passing;
            for (int n = 1; n <= maxn; ++n) {
                const date& from = rents.FromDates(n);
                if (from >= period.to()) {
                    lease.add(passing, from);
                    return lease.sum();
                }
                const TraceBlock pass = here.pass(n, "Rent from ", from);
                if (passing.any()) lease.add(passing, from);
                passing = listed(n, [&] { return types.agreed(passing, from, n, one_for_each(rents.AnnRents, n)); });
            }
            if (maxn == 0) passing = listed(1, [&] { return types.agreed(passing, RentStart, 1, 0.0); });
            lease.add_to_the_end(passing, passing.since, std::max(maxn, 1), first_walk);
            return lease.sum();
        },
        [&](const timeperiod& period, const Relet& relet) {
            const Life life{relet.rent_start, relet.expiry};
            TypedLease lease{here, types, period, life, measure};
            TypedWalk& walk = walks(relet.number, [] { return TypedWalk{}; });
            lease.add_to_the_end({relet.lease_start, types.market(relet.lease_start)}, relet.lease_start,
                                 std::max(maxn, 1), walk);
            return lease.sum();
        }));
}

} // namespace qx
