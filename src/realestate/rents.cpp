#include "realestate/rents.h"

#include "calendar/date_functions.h"
#include "core/routine.h"
#include "projections/stepped_rate.h"
#include "realestate/rent_chain.h"
#include "realestate/rent_reviews.h"

#include <cmath>

namespace qx {

namespace {

/// A lease that starts at a rent and is reviewed.
struct PlainLease {
    date RentStart, FirstRev;
    double InitRent;

    /// How far the walk over its reviews has come, and the rent there.
    struct Walk : ReviewPeriod {
        Walk() = default;
        Walk(const Routine&, const PlainLease&) {}
        double rent = 0.0;
    };
    const date& starts() const { return RentStart; }
    static constexpr double weight_of_relet(int) { return 1.0; }
};

/// A lease with a list of rents, each up to a date. The last date is the first review to the market.
struct SteppedLease {
    date RentStart;
    View<date> ends;
    View<double> AnnRents;
    Collars collars{};
    bool opens_with_review = false; ///< without a list: reviewed to the market at once, and not let at it
    View<double> weights{};         ///< of the rents, of the reviews after them, of each relet; all 1 if there are none
    bool by_from_dates = false;     ///< how the rents were given, which the trace shows

    /// Its rents, the lease from the first review to the market on, and how far the walk over that has come.
    struct Walk {
        Walk(const Routine& here, const SteppedLease& lease) : rents(here, lease.count()), reviewed(here, 1) {}
        Kept<double> rents;
        Kept<PlainLease> reviewed;
        PlainLease::Walk reviews;
    };
    const date& starts() const { return RentStart; }
    /// How many rents there are: nothing but a blank date is no list.
    int count() const { return ends.size() == 1 && ends.first().iszero() ? 0 : ends.size(); }
    double weight(int n) const { return weights.empty() ? 1.0 : weights.entry(n); }
    double weight_of_reviews() const { return weight(count() + 1); }
    double weight_of_relet(int number) const { return weight(count() + 1 + number); }
};

/// The rent of a lease that is reviewed, walked review by review, in a period under accruals.
double rent_in(const timeperiod& period, const PlainLease& lease, const date& expiry, const Market& market,
               const Rules& rules, const Measure& measure, PlainLease::Walk& walk) {
    Routine here{market.source.forecast != nullptr ? "RentFcst" : "RentGrow", Routine::internal};
    here.arguments("Time,RentStart,ExpOrBrk,FirstRev,InitRent,RevMos,RevDisc,DayCount,Periods,UOTog", period,
                   lease.RentStart, expiry, lease.FirstRev, lease.InitRent, rules.reviews.RevMos, rules.reviews.RevDisc,
                   measure.DayCount, measure.Periods, rules.UOTog);
    const auto passing = [&] {
        const bool last = walk.to >= expiry;
        if (last)
            here.info("The end of the review period is past ExpOrBrk, ComponentPart is false, use normal DayCount as "
                      "input.");
        else
            here.info("The review period is in the core of the projection, ComponentPart is true, use adjustable "
                      "DayCount.");
        return ConX(period, {std::max(walk.from, lease.RentStart), std::min(walk.to, expiry)}, walk.rent, measure,
                    !last);
    };
    if (walk.holds(period) && period.to() < expiry) return here.returning(passing());
    if (!within_lease(here, period, lease.RentStart, expiry)) return here.returning(0.0);
    const date& FirstRev = check_first_review(here, lease.FirstRev, expiry, rules.reviews.RevMos);
    if (period.to() < FirstRev) {
        here.info("All of the timeperiod ", period, " is before the first review ", FirstRev);
        return here.returning(con(period, {lease.RentStart, expiry}, lease.InitRent, measure));
    }
    here.info("Calculated using ConX with ComponentPart=true");
    double amount = ConX(period, {lease.RentStart, std::min(FirstRev, expiry)}, lease.InitRent, measure, true);
    const auto add = [&] {
        if (walk.to > period.from()) amount += passing();
    };
    if (walk.precedes(period)) {
        add();
    } else {
        walk.review = 0;
        walk.to = FirstRev;
        walk.rent = lease.InitRent;
    }
    while (walk.to < period.to() && walk.to < expiry) {
        const TraceBlock pass = here.pass(walk.review + 1, "Review at ", walk.to);
        walk.from = walk.to;
        walk.to = rules.next_after(walk.from, FirstRev);
        walk.rent = rules.reviewed(walk.rent, market.at(walk.from), walk.from, true);
        ++walk.review;
        add();
        check_number_of_reviews(here, walk.review, FirstRev, period.to());
    }
    return here.returning(amount);
}

/// The day count of rent n of a list.
double step_day_count(const DayCountCodes& codes, double DayCount, int n, int maxn, bool ends_lease) {
    if (n == 1) return maxn == 1 ? DayCount : codes.with_start();
    return n == maxn && ends_lease ? codes.with_end() : codes.core;
}

/// Rent n of a list, which starts on a date after another rent.
double rent_from(const Routine& here, int n, const date& from, double passing, const SteppedLease& lease,
                 const Market& market, const Rules& rules) {
    double rent = lease.AnnRents.single_or(n);
    const bool given = !iszero(rent);
    if (!given) {
        rent = market.at(from);
        if (n == 1 && lease.by_from_dates)
            here.info("Zero initial rent encountered with rent no ", n, ", reviewing to market of ", rent);
        else if (n == 1)
            here.info("Zero initial rent encountered, reviewing to market at Rent Start Date of ", from);
        else
            here.info("Zero rent encountered at ", from, ", reviewing to market of ", rent);
    }
    if (n > 1) rent = rules.reviewed(passing, given ? rent : rules.discounted(rent), from, false);
    return n > 1 || !given ? lease.collars.collared(rent, n) : rent;
}

/// The rent of a lease with a list of rents, in a period under accruals.
double rent_in(const timeperiod& period, const SteppedLease& lease, const date& expiry, const Market& market,
               const Rules& rules, const Measure& measure, SteppedLease::Walk& walk) {
    const Routine here{"Stepped rents", Routine::internal};
    if (!within_lease(here, period, lease.RentStart, expiry)) return here.returning(0.0);
    const int maxn = lease.count();
    const DayCountCodes codes = DayCountCodes::of(measure.DayCount);
    const Measure generic_measure{codes.with_end(), measure.Periods};
    if (maxn == 0 && lease.opens_with_review)
        return here.returning(rent_in(period, PlainLease{lease.RentStart, lease.RentStart, 0.0}, expiry, market, rules,
                                      generic_measure, walk.reviews));
    const auto reviewed = [&](const PlainLease& from_review) {
        return lease.weight_of_reviews() *
               rent_in(period, from_review, expiry, market, rules, generic_measure, walk.reviews);
    };
    if (maxn == 0)
        return here.returning(reviewed(walk.reviewed(1, [&] {
            const double rent = market.at(lease.RentStart);
            const date FirstRev = rules.first_after(lease.RentStart);
            here.warning("Warning: No fixed initial rent or review specified, assuming an initial rent based on market "
                         "of ",
                         rent, " and a first review of ", FirstRev);
            return PlainLease{lease.RentStart, FirstRev, rent};
        })));
    const date& to_market = lease.ends.last();
    const bool listed = period.from()<to_market, generic = period.to()> to_market;
    double amount = 0.0, passing = 0.0;
    if (listed) here.info("For portion of period within specified rent reviews, rent due:");
    for (int n = 1; n <= maxn; ++n) {
        const date& from = n == 1 ? lease.RentStart : lease.ends(n - 1);
        if (!generic && n > 1 && from > period.to()) break;
        const date& to = lease.ends(n);
        const TraceBlock pass = here.pass(n, "Rent from ", from, " to ", to);
        passing = walk.rents(n, [&] { return rent_from(here, n, from, passing, lease, market, rules); });
        if (!listed || to < period.from()) continue;
        const bool ends_lease = expiry <= to;
        amount +=
            lease.weight(n) * ConX(period, {std::max(from, lease.RentStart), std::min(to, expiry)}, passing,
                                   {step_day_count(codes, measure.DayCount, n, maxn, ends_lease), measure.Periods, 0.0},
                                   n < maxn && !ends_lease);
    }
    if (!generic) return here.returning(amount);
    here.info("For portion of period after specified rent reviews where reviews are generic, rent due:");
    return here.returning(
        amount + reviewed(walk.reviewed(1, [&] {
            const double rent = rules.reviewed(passing, market.at(to_market), to_market, true);
            return PlainLease{std::max(to_market, lease.RentStart), rules.first_after(to_market), rent};
        })));
}

/// The rent of one lease in a worksheet period.
template <class Lease>
double single_rent(const Routine& here, const timeperiod& Time, const Lease& lease, const date& expiry,
                   const Market& market, const Rules& rules, const Basis& basis) {
    const Measure measure{basis.DayCount, basis.Periods};
    typename Lease::Walk walk{here, lease};
    return over(here, Time, [&](const timeperiod& given) {
        timeperiod period = given;
        if (!screen_rent(here, period, lease.starts(), expiry, basis)) return 0.0;
        return rent_in(period, lease, expiry, market, rules, measure, walk);
    });
}

// --- Relets ----------------------------------------------------------------------------------------------------------

/// The rent of a lease and its relets, with all dates rounded already but those of the chain.
template <class Lease>
double walk_chain(const Routine& here, const timeperiod& Time, const Lease& lease, View<double> MktRent_s,
                  const MarketSource& source, const Rules& rules, const Chain& chain, const Basis& basis,
                  const StreamBounds& bounds) {
    /// A relet, and how far the walk over its reviews has come.
    struct LetAgain {
        Market market;
        PlainLease lease;
        PlainLease::Walk walk{};
    };
    const Measure measure{basis.DayCount, basis.Periods};
    typename Lease::Walk first_walk{here, lease};
    Kept<LetAgain> relettings{here, Relets::most};
    return follow_chain(
        here, Time, lease.starts(), chain, rules.reviews.RevMos, basis, bounds,
        [&](const timeperiod& period, const date& expiry) {
            return rent_in(period, lease, expiry, Market{source, relet_market(MktRent_s, 0)}, rules, measure,
                           first_walk);
        },
        [&](const timeperiod& period, const Relet& relet) {
            LetAgain& again = relettings(relet.number, [&] {
                const Market market = market_of(here, relet, MktRent_s, source, chain.ROpts);
                return LetAgain{market, {relet.rent_start, relet.first_review, market.at(relet.lease_start)}};
            });
            return lease.weight_of_relet(relet.number) *
                   rent_in(period, again.lease, relet.expiry, again.market, rules, measure, again.walk);
        });
}

/// The same with the dates that a sheet gives, which are rounded first if the options say so.
double chain_rent(const Routine& here, const timeperiod& Time, const PlainLease& lease, View<double> MktRent_s,
                  const MarketSource& source, const Rules& rules, const Chain& chain, const Basis& basis) {
    const LeaseCalendar calendar{{basis.DayCount, basis.Periods}, chain.ROpts};
    const PlainLease rounded_lease{calendar.rounded(lease.RentStart), calendar.rounded(lease.FirstRev), lease.InitRent};
    if (source.growth == nullptr || !calendar.rounds())
        return walk_chain(here, Time, rounded_lease, MktRent_s, source, rules, chain, basis, {});
    const WorkList<date> dates = rounded(source.growth->dates, calendar);
    const Growth growth{dates, source.growth->rates};
    return walk_chain(here, Time, rounded_lease, MktRent_s, {&growth, nullptr}, rules, chain, basis, {});
}

double chain_rent(const Routine& here, const timeperiod& Time, const SteppedLease& lease, View<double> MktRent_s,
                  const MarketSource& source, const Rules& rules, const Chain& chain, const Basis& basis,
                  const StreamBounds& bounds = {}) {
    const LeaseCalendar calendar{{basis.DayCount, basis.Periods}, chain.ROpts};
    if (!calendar.rounds()) return walk_chain(here, Time, lease, MktRent_s, source, rules, chain, basis, bounds);
    const WorkList<date> ends = rounded(lease.ends, calendar);
    SteppedLease rounded_lease = lease;
    rounded_lease.RentStart = calendar.rounded(lease.RentStart);
    rounded_lease.ends = ends;
    if (source.growth == nullptr)
        return walk_chain(here, Time, rounded_lease, MktRent_s, source, rules, chain, basis, bounds);
    const WorkList<date> dates = rounded(source.growth->dates, calendar);
    const Growth growth{dates, source.growth->rates};
    return walk_chain(here, Time, rounded_lease, MktRent_s, {&growth, nullptr}, rules, chain, basis, bounds);
}

// --- Leases by from-dates --------------------------------------------------------------------------------------------

/// A list of rents by from-dates as the same list by to-dates: those that start before the review to the market.
class FromRents {
  public:
    FromRents(const Routine& here, View<date> FromDates, View<double> AnnRents, const date& RevToMkt,
              const Collars& collars = {})
        : lease_{DateCrit, {}, AnnRents, collars} {
        if (RevToMkt.iszero())
            here.info("No Review to Market specified: the main lease will NOT review to market (although any relets "
                      "will).  The function has set the first reveiew to market impossibly far into the future to "
                      "ensure no review.");
        const date& to_market = RevToMkt.iszero() ? DateCrit : RevToMkt;
        const bool blank = FromDates.size() == 1 && FromDates.first().iszero() && iszero(AnnRents.single_or(1));
        int n = 0;
        while (!blank && n < FromDates.size() && FromDates(n + 1) < to_market) ++n;
        here.info("Number of fixed rents ", n);
        for (int i = 2; i <= n; ++i) ends_->append(FromDates(i));
        if (n > 0) ends_->append(to_market);
        lease_.RentStart = n > 0 ? FromDates.first() : to_market;
        lease_.ends = ends_;
        lease_.by_from_dates = true;
        lease_.opens_with_review = n == 0;
        nothing_ = n == 0 && RevToMkt.iszero();
        if (nothing_) here.info("No rents or reviews specified");
    }
    /// No rents and no reviews.
    bool nothing() const { return nothing_; }
    const SteppedLease& lease() const { return lease_; }

  private:
    WorkList<date> ends_;
    SteppedLease lease_;
    bool nothing_;
};

/// The note of a review to the market that has an argument of its own.
void note_review_to_market(const Routine& here) {
    here.change_note(165, "See Change in Behaviour 165, Oct-05 :New optional variable RevToMkt added to more "
                          "explicityly define when the rent reviews to market (will default to last FromDate+RevMos "
                          "otherwise)");
}

void check_limits(Routine& here, const Reviews& reviews, const Basis& basis) {
    basis.check(here);
    reviews.check(here);
}
void check_all(Routine& here, const Reviews& reviews, const Basis& basis, const Growth& growth) {
    check_limits(here, reviews, basis);
    growth.check(here);
}
void check_all(Routine& here, const Reviews& reviews, const Basis& basis, const Forecast& forecast) {
    check_limits(here, reviews, basis);
    forecast.check(here);
}

Reviews older_reviews(const Routine& here, double RevYears, int DownRev) {
    constexpr double upward_only_without_discount = -1e-12;
    if (DownRev != 0 && DownRev != 1) here.fail<errlibbadnum>("DownRev", "Erroneous value for 'DownRev'");
    return {static_cast<int>(std::lround(12.0 * RevYears)), DownRev == 0 ? upward_only_without_discount : 0.0};
}

} // namespace

bool within_lease(const Routine& here, const timeperiod& period, const date& start, const date& end) {
    if (period.to() >= start && period.from() <= end) return true;
    here.info("Either the timeperiod is before RentStart, or the timeperiod is later than ExpOrBrk, returning zero");
    return false;
}

bool screen_rent(const Routine& here, timeperiod& period, const date& start, const date& end, const Basis& basis) {
    if (!runs_forward(here, period)) return false;
    if (!basis.cash()) return within_lease(here, period, start, end);
    if (period.to() < start || period.from() > end) {
        here.info("  Timeperiod(", period, ") falls before Rent Start/Start(", start, ") and/or Expiry/Finish(", end,
                  ") date, returning zero.");
        return false;
    }
    period = CashTime(period, basis.Periods, start, end, true, basis.ProjMode);
    return true;
}

const date& check_first_review(const Routine& here, const date& FirstRev, const date& expiry, int RevMos) {
    if (FirstRev.iszero()) {
        here.info("First Review (FirstRev) was zero, resetting it to the expiry (", expiry, ")");
        return first_review(here, expiry);
    }
    if (FirstRev > expiry) {
        if (FirstRev >= expiry.plusmonths(RevMos, true)) {
            here.info("First Review (FirstRev) greater than Expiry by at least the value of RevMos(", RevMos,
                      "), resetting it to the expiry (", expiry, ")");
            return first_review(here, expiry);
        }
        here.info("First Review (FirstRev) greater than Expiry (", expiry, "), we are not changing it but be aware.");
    }
    return FirstRev;
}

void check_number_of_reviews(const Routine& here, int n, const date& FirstRev, const date& to) {
    if (n < most_reviews_of_rent) return;
    here.warning("Approaching maximum number of market reviews you can have (", most_reviews_of_rent, ")");
    here.fail<errlibmaxrevs>("RevMos", "There are ", n, " reviews or more from ", FirstRev, " to ", to);
}

double Collars::collared(double rent, int n) const {
    const double floor = one_for_each(AnnRentFloors, n), cap = one_for_each(AnnRentCaps, n);
    return iszero(floor) && iszero(cap) ? rent : Collar(rent, floor, cap);
}

void Reviews::check(Routine& here) const {
    check_reviews(here, RevMos, "RevMos");
    here.limit(RevDisc, rent_discount_limits, "RevDisc");
}

// --- One lease -------------------------------------------------------------------------------------------------------

double RentGrow(const timeperiod& Time, const date& RentStart, View<date> BrksOrExp, const date& FirstRev,
                double MktRent, double InitRent, const Growth& growth, const Reviews& reviews, const Basis& basis,
                View<date> UOTog, int Brk) {
    Routine here{"RentGrow"};
    here.inputs(Time, RentStart, BrksOrExp, FirstRev, MktRent, InitRent, growth, reviews, basis, UOTog, Brk);
    check_all(here, reviews, basis, growth);
    return here.returning(single_rent(here, Time, PlainLease{RentStart, FirstRev, InitRent}, lease_end(BrksOrExp, Brk),
                                      {{&growth, nullptr}, MktRent}, {reviews, UOTog}, basis));
}

double RentFcst(const timeperiod& Time, const date& RentStart, View<date> BrksOrExp, const date& FirstRev,
                double InitRent, const Forecast& forecast, const Reviews& reviews, const Basis& basis, View<date> UOTog,
                int Brk) {
    Routine here{"RentFcst"};
    here.inputs(Time, RentStart, BrksOrExp, FirstRev, InitRent, forecast, reviews, basis, UOTog, Brk);
    check_all(here, reviews, basis, forecast);
    return here.returning(single_rent(here, Time, PlainLease{RentStart, FirstRev, InitRent}, lease_end(BrksOrExp, Brk),
                                      {{nullptr, &forecast}, 0.0}, {reviews, UOTog}, basis));
}

double TStepRent(const timeperiod& Time, const date& RentStart, View<date> ReviewDates, View<double> AnnRents,
                 const Basis& basis) {
    Routine here{"TStepRent"};
    here.inputs(Time, RentStart, ReviewDates, AnnRents, basis);
    basis.check(here);
    if (Time.to() < RentStart) {
        here.info("The timeperiod is before RentStart ", RentStart, ", returning zero");
        return here.returning(0.0);
    }
    return here.returning(Step(Time, ToSteps{RentStart, ReviewDates}, AnnRents, basis));
}

double FStepRent(const timeperiod& Time, View<date> BrksOrExp, View<date> FromDates, View<double> AnnRents,
                 const Basis& basis, int Brk) {
    Routine here{"FStepRent"};
    here.inputs(Time, BrksOrExp, FromDates, AnnRents, basis, Brk);
    basis.check(here);
    const date expiry = lease_end(BrksOrExp, Brk);
    return here.returning(Step(Time, FromSteps{expiry, FromDates}, AnnRents, basis));
}

double TStepRentGrow(const timeperiod& Time, const date& RentStart, View<date> BrksOrExp, double MktRent,
                     View<date> ReviewDates, View<double> AnnRents, const Growth& growth, const Reviews& reviews,
                     const Basis& basis, View<date> UOTog, int Brk) {
    Routine here{"TStepRentGrow"};
    here.inputs(Time, RentStart, BrksOrExp, MktRent, ReviewDates, AnnRents, growth, reviews, basis, UOTog, Brk);
    check_all(here, reviews, basis, growth);
    return here.returning(single_rent(here, Time, SteppedLease{RentStart, ReviewDates, AnnRents},
                                      lease_end(BrksOrExp, Brk), {{&growth, nullptr}, MktRent}, {reviews, UOTog},
                                      basis));
}

double weighted_step_rent(const timeperiod& Time, const date& RentStart, View<date> BrksOrExp, double MktRent,
                          View<date> ReviewDates, View<double> AnnRents, const Growth& growth, const Reviews& reviews,
                          const Basis& basis, View<date> UOTog, int Brk, View<double> weights) {
    Routine here{"TStepRentGrow", Routine::internal};
    here.arguments(QX_NAMED(Time, weights));
    return here.returning(single_rent(here, Time, SteppedLease{RentStart, ReviewDates, AnnRents, {}, false, weights},
                                      lease_end(BrksOrExp, Brk), {{&growth, nullptr}, MktRent}, {reviews, UOTog},
                                      basis));
}

double TStepRentFcst(const timeperiod& Time, const date& RentStart, View<date> BrksOrExp, View<date> ReviewDates,
                     View<double> AnnRents, const Forecast& forecast, const Reviews& reviews, const Basis& basis,
                     View<date> UOTog, int Brk) {
    Routine here{"TStepRentFcst"};
    here.inputs(Time, RentStart, BrksOrExp, ReviewDates, AnnRents, forecast, reviews, basis, UOTog, Brk);
    check_all(here, reviews, basis, forecast);
    return here.returning(single_rent(here, Time, SteppedLease{RentStart, ReviewDates, AnnRents},
                                      lease_end(BrksOrExp, Brk), {{nullptr, &forecast}, 0.0}, {reviews, UOTog}, basis));
}

double TStepRentGrowCollar(const timeperiod& Time, const date& RentStart, View<date> BrksOrExp, double MktRent,
                           View<date> ReviewDates, View<double> AnnRents, const Growth& growth, const Collars& collars,
                           const Reviews& reviews, const Basis& basis, View<date> UOTog, int Brk) {
    Routine here{"TStepRentGrowCollar"};
    here.inputs(Time, RentStart, BrksOrExp, MktRent, ReviewDates, AnnRents, growth, collars, reviews, basis, UOTog,
                Brk);
    check_all(here, reviews, basis, growth);
    return here.returning(single_rent(here, Time, SteppedLease{RentStart, ReviewDates, AnnRents, collars},
                                      lease_end(BrksOrExp, Brk), {{&growth, nullptr}, MktRent}, {reviews, UOTog},
                                      basis));
}

double TStepRentFcstCollar(const timeperiod& Time, const date& RentStart, View<date> BrksOrExp, View<date> ReviewDates,
                           View<double> AnnRents, const Forecast& forecast, const Collars& collars,
                           const Reviews& reviews, const Basis& basis, View<date> UOTog, int Brk) {
    Routine here{"TStepRentFcstCollar"};
    here.inputs(Time, RentStart, BrksOrExp, ReviewDates, AnnRents, forecast, collars, reviews, basis, UOTog, Brk);
    check_all(here, reviews, basis, forecast);
    return here.returning(single_rent(here, Time, SteppedLease{RentStart, ReviewDates, AnnRents, collars},
                                      lease_end(BrksOrExp, Brk), {{nullptr, &forecast}, 0.0}, {reviews, UOTog}, basis));
}

namespace {

double from_rent(const Routine& here, const timeperiod& Time, View<date> BrksOrExp, int Brk, const FromRents& rents,
                 const Market& market, const Rules& rules, const Basis& basis) {
    if (rents.nothing()) return 0.0;
    return single_rent(here, Time, rents.lease(), lease_end(BrksOrExp, Brk), market, rules, basis);
}

} // namespace

double FStepRentGrow(const timeperiod& Time, View<date> BrksOrExp, double MktRent, View<date> FromDates,
                     View<double> AnnRents, const Growth& growth, const date& RevToMkt, const Reviews& reviews,
                     const Basis& basis, View<date> UOTog, int Brk) {
    Routine here{"FStepRentGrow"};
    here.inputs(Time, BrksOrExp, MktRent, FromDates, AnnRents, growth, RevToMkt, reviews, basis, UOTog, Brk);
    note_review_to_market(here);
    check_all(here, reviews, basis, growth);
    return here.returning(from_rent(here, Time, BrksOrExp, Brk, FromRents(here, FromDates, AnnRents, RevToMkt),
                                    {{&growth, nullptr}, MktRent}, {reviews, UOTog}, basis));
}

double FStepRentFcst(const timeperiod& Time, View<date> BrksOrExp, View<date> FromDates, View<double> AnnRents,
                     const Forecast& forecast, const date& RevToMkt, const Reviews& reviews, const Basis& basis,
                     View<date> UOTog, int Brk) {
    Routine here{"FStepRentFcst"};
    here.inputs(Time, BrksOrExp, FromDates, AnnRents, forecast, RevToMkt, reviews, basis, UOTog, Brk);
    note_review_to_market(here);
    check_all(here, reviews, basis, forecast);
    return here.returning(from_rent(here, Time, BrksOrExp, Brk, FromRents(here, FromDates, AnnRents, RevToMkt),
                                    {{nullptr, &forecast}, 0.0}, {reviews, UOTog}, basis));
}

double FStepRentFcstCollar(const timeperiod& Time, View<date> BrksOrExp, View<date> FromDates, View<double> AnnRents,
                           const Forecast& forecast, const Collars& collars, const date& RevToMkt,
                           const Reviews& reviews, const Basis& basis, View<date> UOTog, int Brk) {
    Routine here{"FStepRentFcstCollar"};
    here.inputs(Time, BrksOrExp, FromDates, AnnRents, forecast, collars, RevToMkt, reviews, basis, UOTog, Brk);
    note_review_to_market(here);
    check_all(here, reviews, basis, forecast);
    return here.returning(from_rent(here, Time, BrksOrExp, Brk, FromRents(here, FromDates, AnnRents, RevToMkt, collars),
                                    {{nullptr, &forecast}, 0.0}, {reviews, UOTog}, basis));
}

double RentG(double Time, const date& RentStart, View<date> BrksOrExp, const date& FirstRev, double MktRent,
             double InitRent, const Growth& growth, double RevYears, int DownRev, double BaseYrs, const Basis& basis) {
    constexpr int first_break = 1;
    Routine here{"RentG"};
    here.inputs(Time, RentStart, BrksOrExp, FirstRev, MktRent, InitRent, growth, RevYears, DownRev, BaseYrs, basis);
    return here.returning(RentGrow(period_in_years(Time, BaseYrs), RentStart, BrksOrExp, FirstRev, MktRent, InitRent,
                                   growth, older_reviews(here, RevYears, DownRev), basis, {}, first_break));
}

double StepRentG(double Time, const date& RentStart, View<date> BrksOrExp, double MktRent, View<date> ReviewDates,
                 View<double> AnnRents, const Growth& growth, double RevYears, int DownRev, double BaseYrs,
                 const Basis& basis) {
    constexpr int first_break = 1;
    Routine here{"StepRentG"};
    here.inputs(Time, RentStart, BrksOrExp, MktRent, ReviewDates, AnnRents, growth, RevYears, DownRev, BaseYrs, basis);
    return here.returning(TStepRentGrow(period_in_years(Time, BaseYrs), RentStart, BrksOrExp, MktRent, ReviewDates,
                                        AnnRents, growth, older_reviews(here, RevYears, DownRev), basis, {},
                                        first_break));
}

// --- A lease and its relets ------------------------------------------------------------------------------------------

double RentGrowR(const timeperiod& Time, const date& RentStart, View<date> BrksOrExp, const date& FirstRev,
                 View<double> MktRent_s, double InitRent, const Growth& growth, const Reviews& reviews,
                 const Relets& relets, const Basis& basis, const date& AbFin, View<date> UOTog, int ROpts, int Brk) {
    Routine here{"RentGrowR"};
    here.inputs(Time, RentStart, BrksOrExp, FirstRev, MktRent_s, InitRent, growth, reviews, relets, basis, AbFin, UOTog,
                ROpts, Brk);
    check_all(here, reviews, basis, growth);
    return here.returning(chain_rent(here, Time, PlainLease{RentStart, FirstRev, InitRent}, MktRent_s,
                                     {&growth, nullptr}, {reviews, UOTog}, {BrksOrExp, Brk, AbFin, relets, ROpts},
                                     basis));
}

double RentFcstR(const timeperiod& Time, const date& RentStart, View<date> BrksOrExp, const date& FirstRev,
                 double InitRent, const Forecast& forecast, const Reviews& reviews, const Relets& relets,
                 const Basis& basis, const date& AbFin, View<date> UOTog, int ROpts, int Brk) {
    Routine here{"RentFcstR"};
    here.inputs(Time, RentStart, BrksOrExp, FirstRev, InitRent, forecast, reviews, relets, basis, AbFin, UOTog, ROpts,
                Brk);
    check_all(here, reviews, basis, forecast);
    return here.returning(chain_rent(here, Time, PlainLease{RentStart, FirstRev, InitRent}, {}, {nullptr, &forecast},
                                     {reviews, UOTog}, {BrksOrExp, Brk, AbFin, relets, ROpts}, basis));
}

double TStepRentGrowR(const timeperiod& Time, const date& RentStart, View<date> BrksOrExp, View<double> MktRent_s,
                      View<date> ReviewDates, View<double> AnnRents, const Growth& growth, const Reviews& reviews,
                      const Relets& relets, const Basis& basis, const date& AbFin, View<date> UOTog, int ROpts,
                      int Brk) {
    Routine here{"TStepRentGrowR"};
    here.inputs(Time, RentStart, BrksOrExp, MktRent_s, ReviewDates, AnnRents, growth, reviews, relets, basis, AbFin,
                UOTog, ROpts, Brk);
    check_all(here, reviews, basis, growth);
    return here.returning(chain_rent(here, Time, SteppedLease{RentStart, ReviewDates, AnnRents}, MktRent_s,
                                     {&growth, nullptr}, {reviews, UOTog}, {BrksOrExp, Brk, AbFin, relets, ROpts},
                                     basis));
}

double weighted_chain_rent(const timeperiod& Time, const date& RentStart, View<date> BrksOrExp, View<double> MktRent_s,
                           View<date> ReviewDates, View<double> AnnRents, const Growth& growth, const Reviews& reviews,
                           const Relets& relets, const Basis& basis, const date& AbFin, View<date> UOTog, int ROpts,
                           int Brk, View<double> weights) {
    Routine here{"TStepRentGrowR", Routine::internal};
    here.arguments(QX_NAMED(Time, weights));
    return here.returning(chain_rent(here, Time, SteppedLease{RentStart, ReviewDates, AnnRents, {}, false, weights},
                                     MktRent_s, {&growth, nullptr}, {reviews, UOTog},
                                     {BrksOrExp, Brk, AbFin, relets, ROpts}, basis));
}

double TStepRentFcstR(const timeperiod& Time, const date& RentStart, View<date> BrksOrExp, View<date> ReviewDates,
                      View<double> AnnRents, const Forecast& forecast, const Reviews& reviews, const Relets& relets,
                      const Basis& basis, const date& AbFin, View<date> UOTog, int ROpts, int Brk) {
    Routine here{"TStepRentFcstR"};
    here.inputs(Time, RentStart, BrksOrExp, ReviewDates, AnnRents, forecast, reviews, relets, basis, AbFin, UOTog,
                ROpts, Brk);
    check_all(here, reviews, basis, forecast);
    return here.returning(chain_rent(here, Time, SteppedLease{RentStart, ReviewDates, AnnRents}, {},
                                     {nullptr, &forecast}, {reviews, UOTog}, {BrksOrExp, Brk, AbFin, relets, ROpts},
                                     basis));
}

double TStepRentGrowSFR(const timeperiod& Time, const date& AbsStart, const date& RentStart, const date& AbsFinish,
                        View<date> BrksOrExp, View<double> MktRent_s, View<date> ReviewDates, View<double> AnnRents,
                        const Growth& growth, const Reviews& reviews, const Relets& relets, const Basis& basis,
                        const date& AbFin, View<date> UOTog, int ROpts, int Brk) {
    Routine here{"TStepRentGrowSFR"};
    here.inputs(Time, AbsStart, RentStart, AbsFinish, BrksOrExp, MktRent_s, ReviewDates, AnnRents, growth, reviews,
                relets, basis, AbFin, UOTog, ROpts, Brk);
    check_all(here, reviews, basis, growth);
    return here.returning(chain_rent(here, Time, SteppedLease{RentStart, ReviewDates, AnnRents}, MktRent_s,
                                     {&growth, nullptr}, {reviews, UOTog}, {BrksOrExp, Brk, AbFin, relets, ROpts},
                                     basis, {AbsStart, AbsFinish}));
}

double TStepRentFcstSFR(const timeperiod& Time, const date& AbsStart, const date& RentStart, const date& AbsFinish,
                        View<date> BrksOrExp, View<date> ReviewDates, View<double> AnnRents, const Forecast& forecast,
                        const Reviews& reviews, const Relets& relets, const Basis& basis, const date& AbFin,
                        View<date> UOTog, int ROpts, int Brk) {
    Routine here{"TStepRentFcstSFR"};
    here.inputs(Time, AbsStart, RentStart, AbsFinish, BrksOrExp, ReviewDates, AnnRents, forecast, reviews, relets,
                basis, AbFin, UOTog, ROpts, Brk);
    check_all(here, reviews, basis, forecast);
    return here.returning(chain_rent(here, Time, SteppedLease{RentStart, ReviewDates, AnnRents}, {},
                                     {nullptr, &forecast}, {reviews, UOTog}, {BrksOrExp, Brk, AbFin, relets, ROpts},
                                     basis, {AbsStart, AbsFinish}));
}

namespace {

double from_chain(const Routine& here, const timeperiod& Time, const FromRents& rents, View<double> MktRent_s,
                  const MarketSource& source, const Rules& rules, const Chain& chain, const Basis& basis,
                  const StreamBounds& bounds = {}) {
    if (rents.nothing()) return 0.0;
    return chain_rent(here, Time, rents.lease(), MktRent_s, source, rules, chain, basis, bounds);
}

} // namespace

double FStepRentGrowR(const timeperiod& Time, View<date> BrksOrExp, View<double> MktRent_s, View<date> FromDates,
                      View<double> AnnRents, const Growth& growth, const date& RevToMkt, const Reviews& reviews,
                      const Relets& relets, const Basis& basis, const date& AbFin, View<date> UOTog, int ROpts,
                      int Brk) {
    Routine here{"FStepRentGrowR"};
    here.inputs(Time, BrksOrExp, MktRent_s, FromDates, AnnRents, growth, RevToMkt, reviews, relets, basis, AbFin, UOTog,
                ROpts, Brk);
    note_review_to_market(here);
    check_all(here, reviews, basis, growth);
    return here.returning(from_chain(here, Time, FromRents(here, FromDates, AnnRents, RevToMkt), MktRent_s,
                                     {&growth, nullptr}, {reviews, UOTog}, {BrksOrExp, Brk, AbFin, relets, ROpts},
                                     basis));
}

double FStepRentFcstR(const timeperiod& Time, View<date> BrksOrExp, View<date> FromDates, View<double> AnnRents,
                      const Forecast& forecast, const date& RevToMkt, const Reviews& reviews, const Relets& relets,
                      const Basis& basis, const date& AbFin, View<date> UOTog, int ROpts, int Brk) {
    Routine here{"FStepRentFcstR"};
    here.inputs(Time, BrksOrExp, FromDates, AnnRents, forecast, RevToMkt, reviews, relets, basis, AbFin, UOTog, ROpts,
                Brk);
    note_review_to_market(here);
    check_all(here, reviews, basis, forecast);
    return here.returning(from_chain(here, Time, FromRents(here, FromDates, AnnRents, RevToMkt), {},
                                     {nullptr, &forecast}, {reviews, UOTog}, {BrksOrExp, Brk, AbFin, relets, ROpts},
                                     basis));
}

double FStepRentGrowSFR(const timeperiod& Time, const Life& absolute, View<date> BrksOrExp, View<double> MktRent_s,
                        View<date> FromDates, View<double> AnnRents, const Growth& growth, const date& RevToMkt,
                        const Reviews& reviews, const Relets& relets, const Basis& basis, const date& AbFin,
                        View<date> UOTog, int ROpts, int Brk) {
    Routine here{"FStepRentGrowSFR"};
    here.inputs(Time, absolute, BrksOrExp, MktRent_s, FromDates, AnnRents, growth, RevToMkt, reviews, relets, basis,
                AbFin, UOTog, ROpts, Brk);
    note_review_to_market(here);
    check_all(here, reviews, basis, growth);
    return here.returning(from_chain(here, Time, FromRents(here, FromDates, AnnRents, RevToMkt), MktRent_s,
                                     {&growth, nullptr}, {reviews, UOTog}, {BrksOrExp, Brk, AbFin, relets, ROpts},
                                     basis, {absolute.Start, absolute.Finish}));
}

double FStepRentFcstSFR(const timeperiod& Time, const Life& absolute, View<date> BrksOrExp, View<date> FromDates,
                        View<double> AnnRents, const Forecast& forecast, const date& RevToMkt, const Reviews& reviews,
                        const Relets& relets, const Basis& basis, const date& AbFin, View<date> UOTog, int ROpts,
                        int Brk) {
    Routine here{"FStepRentFcstSFR"};
    here.inputs(Time, absolute, BrksOrExp, FromDates, AnnRents, forecast, RevToMkt, reviews, relets, basis, AbFin,
                UOTog, ROpts, Brk);
    note_review_to_market(here);
    check_all(here, reviews, basis, forecast);
    return here.returning(from_chain(here, Time, FromRents(here, FromDates, AnnRents, RevToMkt), {},
                                     {nullptr, &forecast}, {reviews, UOTog}, {BrksOrExp, Brk, AbFin, relets, ROpts},
                                     basis, {absolute.Start, absolute.Finish}));
}

} // namespace qx
