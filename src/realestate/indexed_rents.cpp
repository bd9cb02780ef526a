#include "realestate/indexed_rents.h"

#include "calendar/date_arithmetic.h"
#include "calendar/recurrence.h"
#include "core/routine.h"
#include "projections/constant_rate.h"
#include "projections/index_base.h"
#include "realestate/rent_chain.h"
#include "realestate/rent_reviews.h"

#include <optional>

namespace qx {

namespace {

/// The setting of lease n of a chain, or a preset where a series has no entries.
template <class T>
T setting(View<T> series, int n, const T& preset = T()) {
    return series.empty() ? preset : series.entry(n + 1);
}

/// An index that grows, as lease n of a chain follows it.
class GrowthIndex {
  public:
    using Source = Growth;
    using Settings = GrowthIndexation;
    /// The rent at a date and the index there.
    struct Base {
        date when;
        double rent, level;
    };

    GrowthIndex(Routine& here, const Growth& index, const GrowthIndexation& settings, View<int> IdxLag_s, int n)
        : here_(here), rates_(index.rates), dates_(index.dates), every_(setting(settings.IdxReg_s, n)),
          first_(setting(settings.FirstIdxDate_s, n)), base_(setting(settings.IdxBaseDate_s, n)) {
        check_reviews(here, every_, "IdxReg_s");
        if (const int lag = setting(IdxLag_s, n); lag != 0) {
            later_.emplace();
            for (const date& day : index.dates) (*later_)->append(day.plusmonths(lag, true));
            dates_ = *later_;
        }
    }

    bool none() const { return dates_.empty(); }
    bool continuous() const { return every_ == 0; }
    bool has_base() const { return !base_.iszero(); }
    /// The first indexation that was given, the zero date if none was, and that of a rent from a date on.
    const date& given_first() const { return first_; }
    date first_from(const date& start) const {
        if (!first_.iszero()) return first_;
        return none() ? start : std::max(start, dates_.first());
    }
    /// The base that was given, or else a date, and one on a date at which a rent is agreed.
    Base base_or(const date& start, double rent) const {
        if (!has_base()) here_.info("There was no idxBaseDate_s range, so BaseDate was made equal to the RentStart.");
        return agreed(has_base() ? base_ : start, rent);
    }
    Base agreed(const date& day, double rent) const { return {day, rent, level(day)}; }
    /// The rent that the index makes of a base on a date: nothing before the base, as growth is one from a date on.
    double rent_on(const date& day, const Base& base) const {
        return day <= base.when ? base.rent : safe_divide(base.rent * level(day), base.level);
    }
    /// The stretch without indexation that holds a day.
    timeperiod step(const date& day, const date& first) const {
        const Recurrence indexations{first, every_};
        const int n = indexations.number(day);
        if (day < first)
            here_.fail<errlibunexpectedcase>("FirstIdxDate_s", "StartingIdxRev was negative, this cannot be.");
        return {indexations.at(n), indexations.at(n + 1)};
    }
    /// The amount of a rent that is indexed continuously.
    double continuous_amount(const timeperiod& period, const Life& life, const date& first, const Base& base,
                             const Measure& measure) const {
        return ConGrowMktX(period, life, first, safe_divide(base.rent, base.level), base.rent, growth(), dates_.first(),
                           0, measure, false, 0);
    }

  private:
    Growth growth() const { return {dates_, rates_}; }
    double level(const date& day) const { return Grow(day, 1.0, growth(), 0); }

    const Routine& here_;
    std::optional<WorkList<date>> later_;
    View<double> rates_;
    View<date> dates_;
    int every_;
    date first_, base_;
};

/// The forecast of an index, as lease n of a chain follows it.
class ForecastIndex {
  public:
    using Source = Forecast;
    using Settings = ForecastIndexation;
    using Base = IndexBase;

    ForecastIndex(Routine& here, const Forecast& index, const ForecastIndexation& settings, View<int> IdxLag_s, int n)
        : here_(here), values_(index.values), start_(index.start.plusmonths(setting(IdxLag_s, n), true)),
          months_(index.base), every_(setting(settings.IdxReg_s, n)), base_(setting(settings.BaseDateOrIdx_s, n)),
          first_(setting(settings.FirstIdxDate_s, n)) {
        check_reviews(here, every_, "IdxReg_s");
        if (none() && !base_.iszero() && !is_base_date(base_))
            here.fail<illegalvalue>("BaseDateOrIdx_s",
                                    "You must have some index values if you are setting a base index");
    }

    bool none() const { return values_.empty(); }
    static constexpr bool continuous() { return false; }
    bool has_base() const { return !base_.iszero(); }
    const date& given_first() const { return first_; }
    date first_from(const date& start) const { return first_.iszero() ? std::max(start, start_) : first_; }
    Base base_or(const date& start, double rent) const {
        return none() ? Base{start, rent, 1.0} : index_base(here_, start, rent, forecast(), base_);
    }
    Base agreed(const date& day, double rent) const {
        return none() ? Base{day, rent, 1.0} : index_base(here_, day, rent, forecast(), {});
    }
    double rent_on(const date& day, const Base& base) const {
        return day < start_ ? base.rate : base.rate * safe_divide(fcst(day, forecast()), base.value);
    }
    timeperiod step(const date& day, const date& first) const {
        return every_ == 0 ? ReviewPeriodFcst(day, start_, months_, start_, months_, true)
                           : ReviewPeriodFcst(day, first, every_, start_, months_, true);
    }
    double continuous_amount(const timeperiod&, const Life&, const date&, const Base&, const Measure&) const {
        return 0.0; // unreachable: never continuous
    }
    Forecast forecast() const { return {values_, start_, months_}; }
    int every() const { return every_; }
    const dateorfloat& base() const { return base_; }

  private:
    const Routine& here_;
    View<double> values_;
    date start_;
    int months_, every_;
    dateorfloat base_;
    date first_;
};

/// The rent of one lease in a period under accruals, in stretches that follow an index.
template <class Index>
class IndexedLease {
  public:
    /// A rent between two dates. Up to the first indexation it holds; then it is what the index makes of its base.
    struct Stretch {
        date from, to;
        double rent;
        typename Index::Base base;
        date first;
        bool agreed = false; ///< on the date of the base: not indexed on that day

        /// The indexation that was asked for last, and the rent from it on.
        struct Indexed {
            date when;
            double rent;
        };
        std::optional<Indexed> indexed{};
    };
    /// How far the walk over the reviews of a lease has come: the rent that the next one reviews, and the stretch since
    /// the last one.
    struct Walk : ReviewPeriod {
        std::optional<Stretch> stretch, reviewed;
    };

    IndexedLease(const Routine& here, const Index& index, const timeperiod& period, const Life& life,
                 const Measure& measure)
        : here_(here), index_(index), period_(period), life_(life), measure_(measure),
          codes_(DayCountCodes::of(measure.DayCount)) {
        if (const date& first = index.given_first(); !first.iszero() && first < life.Start)
            here.info("FirstIdxDate predates the RentStart date.  The indexation date should start after the rent "
                      "start date.");
    }

    /// The amount of a rent that holds between two dates.
    double fixed(const date& from, const date& to, double rent) const {
        const bool opens = from <= life_.Start, closes = to >= life_.Finish;
        const double count = opens && closes ? measure_.DayCount
                             : opens         ? codes_.with_start()
                             : closes        ? codes_.with_end()
                                             : codes_.core;
        return con(period_, life_.within(from, to), rent, {count, measure_.Periods, 0.0});
    }
    /// The amount of a rent that follows the index.
    double amount(Stretch& stretch) const {
        timeperiod rest = period_;
        rest.intersect(stretch.from, stretch.to);
        if (rest.to() <= rest.from()) return 0.0;
        if (index_.none() || rest.to() <= stretch.first) return fixed(stretch.from, stretch.to, stretch.rent);
        double sum =
            stretch.from < stretch.first ? fixed(stretch.from, std::min(stretch.first, stretch.to), stretch.rent) : 0.0;
        const date& start = std::max(stretch.from, stretch.first);
        if (index_.continuous())
            return sum + index_.continuous_amount(period_, life_.within(start, stretch.to), stretch.first, stretch.base,
                                                  measure_);
        const date end = rest.to();
        date day = std::max(rest.from(), start);
        for (int n = 1; day < end; ++n) {
            timeperiod step = index_.step(day, stretch.first);
            const TraceBlock pass = here_.pass(n, "Indexed from ", step.from(), " to ", step.to());
            if (here_.traced() || !stretch.indexed || step.from() != stretch.indexed->when)
                stretch.indexed = {step.from(), rent_in(step, stretch)};
            const double rent = stretch.indexed->rent;
            step.setfrom(day);
            step.setto(std::min(step.to(), end));
            if (step.to() <= day)
                here_.fail<errlibunexpectedcase>("IdxReg_s", "An indexation does not advance from ", day);
            day = step.to();
            sum += con(
                step, life_, rent,
                {ChooseRightDC(codes_.core, codes_.with_start(), codes_.with_end(), life_.Start, life_.Finish, step),
                 measure_.Periods, 0.0});
        }
        return sum;
    }
    /// The rent on the day before a date.
    double rent_before(const date& day, const Stretch& stretch) const {
        if (index_.none() || day <= stretch.first || day <= stretch.from) return stretch.rent;
        if (index_.continuous()) return index_.rent_on(day, stretch.base);
        const timeperiod step = index_.step(day.plusdays(-1), stretch.first);
        // Reviews are counted by 30/360 months, for which the 31st may be the first of the next month.
        return rent_in(step.from() < day ? step : index_.step(day.plusdays(-2), stretch.first), stretch);
    }

  private:
    double rent_in(const timeperiod& step, const Stretch& stretch) const {
        const date& day = step.from();
        if (stretch.agreed && day <= stretch.base.when) return stretch.rent;
        return index_.rent_on(day, stretch.base);
    }

    const Routine& here_;
    const Index& index_;
    const timeperiod& period_;
    const Life& life_;
    const Measure& measure_;
    DayCountCodes codes_;
};

/// The rent of a lease that follows an index from its first indexation to its end.
template <class Index>
double indexed_rent(const Routine& here, const timeperiod& period, const Life& life, double rent, const Index& index,
                    const Measure& measure, typename IndexedLease<Index>::Walk& walk) {
    if (!screen_accruals(here, period, life)) return 0.0;
    const IndexedLease<Index> lease{here, index, period, life, measure};
    if (!walk.stretch)
        walk.stretch = {life.Start, life.Finish, rent, index.base_or(life.Start, rent), index.first_from(life.Start)};
    return lease.amount(*walk.stretch);
}

/// The same of one that is reviewed to the market.
template <class Index>
double reviewed_rent(const Routine& here, const timeperiod& period, const Life& life, const date& first_review,
                     double rent, const Index& index, const Market& market, const Rules& rules, const Measure& measure,
                     typename IndexedLease<Index>::Walk& walk) {
    if (!screen_accruals(here, period, life)) return 0.0;
    const IndexedLease<Index> lease{here, index, period, life, measure};
    const date first = index.first_from(life.Start);
    const date& FirstRev = check_first_review(here, first_review, life.Finish, rules.reviews.RevMos);
    double amount = 0.0;
    if (walk.precedes(period)) {
        amount = lease.amount(*walk.reviewed);
    } else {
        walk.review = 0;
        walk.to = FirstRev;
        walk.stretch = {life.Start, std::min(FirstRev, life.Finish), rent, index.base_or(life.Start, rent), first};
        amount = lease.amount(*walk.stretch);
    }
    while (walk.to < period.to() && walk.to < life.Finish) {
        const TraceBlock pass = here.pass(walk.review + 1, "Review at ", walk.to);
        walk.from = walk.to;
        walk.to = rules.next_after(walk.from, FirstRev);
        const double reviewed =
            rules.reviewed(lease.rent_before(walk.from, *walk.stretch), market.at(walk.from), walk.from, true);
        walk.reviewed = {std::max(walk.from, life.Start),
                         std::min(walk.to, life.Finish),
                         reviewed,
                         index.agreed(walk.from, reviewed),
                         first,
                         true};
        amount += lease.amount(*walk.reviewed);
        walk.stretch->rent = reviewed;
        walk.stretch->base = walk.reviewed->base;
        walk.stretch->agreed = true;
        check_number_of_reviews(here, ++walk.review, FirstRev, period.to());
    }
    return amount;
}

/// What has been worked out of a lease that starts with a list of rents: each of them, passing and as due, and the rent
/// after them.
template <class Index>
struct SteppedWalk {
    SteppedWalk(const Routine& here, int steps) : rents(here, steps), rest(here, 1) {}
    struct Rent {
        double passing, due;
        bool to_market;
    };
    Kept<Rent> rents;
    Kept<typename IndexedLease<Index>::Stretch> rest;
};

/// The same of one that starts with a list of rents.
template <class Index>
double stepped_rent(const Routine& here, const timeperiod& period, const Life& life, const RentSteps& steps,
                    const Index& index, const Market& market, bool index_steps, const Measure& measure,
                    SteppedWalk<Index>& walk) {
    if (!screen_accruals(here, period, life)) return 0.0;
    const IndexedLease<Index> lease{here, index, period, life, measure};
    const int maxn = steps.ReviewDates.size();
    const date first_indexation = index.first_from(life.Start);
    here.info(index_steps
                  ? "Indexed Step Option (ROpts=1024): The input stepped rents will be escalated with indexation"
                  : "Stepped rents, unindexed (default) behaviour. See the value of ROpts");
    const auto rent_from = [&](int n, const date& start) {
        const double given = steps.AnnRents.single_or(n);
        const bool to_market = iszero(given);
        const double rent = to_market ? market.at(start) : given;
        if (to_market) here.info("Zero rent encountered at ", start, ", reviewing to market of ", rent);
        double due = rent;
        if (index_steps && !to_market && !index.none()) {
            if (start < first_indexation) {
                here.info("Step Rent number ", n, " (", rent, ") NOT indexed because its date effective of ", start,
                          " is before the first index date of ", first_indexation);
            } else {
                due = index.rent_on(start, index.base_or(life.Start, rent));
                here.info("Escalated Step Rent ", due);
            }
        }
        return typename SteppedWalk<Index>::Rent{rent, due, to_market};
    };
    double amount = 0.0, passing = 0.0;
    bool to_market = true;
    date from = life.Start;
    for (int n = 1; n <= maxn; ++n) {
        const date start = n == 1 ? life.Start : steps.ReviewDates(n - 1);
        if (start > period.to()) return amount;
        const date& to = steps.ReviewDates(n);
        const TraceBlock pass = here.pass(n, "Rent from ", start, " to ", to);
        const auto& rent = walk.rents(n, [&] { return rent_from(n, start); });
        to_market = rent.to_market;
        passing = rent.passing;
        from = start;
        amount += lease.fixed(start, std::min(to, life.Finish), rent.due);
    }
    const date last = maxn == 0 ? life.Start : std::max(steps.ReviewDates.last(), life.Start);
    if (last >= life.Finish || last >= period.to()) return amount;
    return amount + lease.amount(walk.rest(1, [&] {
        if (maxn == 0) {
            passing = market.at(life.Start);
            here.warning("Warning: No fixed initial rent or review specified, assuming an initial rent based on market "
                         "of ",
                         passing);
        }
        const bool agreed = to_market || !(index.has_base() || index_steps);
        const auto base = !agreed ? index.base_or(life.Start, passing) : index.agreed(to_market ? from : last, passing);
        return typename IndexedLease<Index>::Stretch{last, life.Finish, passing, base, index.first_from(last), agreed};
    }));
}

/// The market rents of a chain and what its dates are rounded with.
class ChainMarket {
  public:
    ChainMarket(const LeaseCalendar& calendar, const Growth& growth) : growth_(growth) {
        if (!calendar.rounds()) return;
        dates_.emplace(rounded(growth.dates, calendar));
        growth_.emplace(Growth{*dates_, growth.rates});
    }
    ChainMarket(const LeaseCalendar&, const Forecast& forecast) : forecast_(&forecast) {}
    MarketSource source() const { return {growth_ ? &*growth_ : nullptr, forecast_}; }

  private:
    std::optional<WorkList<date>> dates_;
    std::optional<Growth> growth_;
    const Forecast* forecast_ = nullptr;
};

/// The market rents of a chain, and the index that its leases follow.
template <class Index>
struct IndexedMarket {
    View<double> MktRent_s;
    const typename Index::Source& market;
    const typename Index::Source& index;
    const typename Index::Settings& settings;
    View<int> IdxLag_s;

    Index of_lease(Routine& here, int n) const { return {here, index, settings, IdxLag_s, n}; }
};
using GrownMarket = IndexedMarket<GrowthIndex>;
using ForecastMarket = IndexedMarket<ForecastIndex>;

/// A relet of a chain: its market, the rent at which it is let, and how far it has been walked.
template <class Index>
struct IndexedRelet {
    Market market;
    double rent;
    typename IndexedLease<Index>::Walk walk{};
};

/// The sum over the leases of a chain. `first` takes the period, the life of the lease, its market and its index;
/// `later` the period, the relet with what is known of it, and its index.
template <class Index, class First, class Later>
double indexed_chain(Routine& here, const timeperiod& Time, const date& RentStart, const Chain& chain, int RevMos,
                     const IndexedMarket<Index>& terms, const Basis& basis, const StreamBounds& bounds, First first,
                     Later later) {
    const LeaseCalendar calendar{{basis.DayCount, basis.Periods}, chain.ROpts};
    const ChainMarket market{calendar, terms.market};
    const date start = calendar.rounded(RentStart);
    // An index that lags takes a work list of its own, of which there are too few to keep them all.
    Kept<Index> indices{here, terms.IdxLag_s.empty() ? Relets::most + 1 : 0};
    Kept<IndexedRelet<Index>> relets{here, Relets::most};
    const auto index_of = [&](int n) -> const Index& {
        return indices(n + 1, [&] { return terms.of_lease(here, n); });
    };
    return follow_chain(
        here, Time, start, chain, RevMos, basis, bounds,
        [&](const timeperiod& period, const date& expiry) {
            return first(period, Life{start, expiry}, Market{market.source(), relet_market(terms.MktRent_s, 0)},
                         index_of(0));
        },
        [&](const timeperiod& period, const Relet& relet) {
            IndexedRelet<Index>& known = relets(relet.number, [&] {
                const Market let_at = market_of(here, relet, terms.MktRent_s, market.source(), chain.ROpts);
                return IndexedRelet<Index>{let_at, let_at.at(relet.lease_start)};
            });
            return later(period, relet, known, index_of(relet.number));
        });
}

/// A chain in which the relets follow the index from the market rent at their start.
template <class Index, class First>
double indexed_only_chain(Routine& here, const timeperiod& Time, const date& RentStart, const Chain& chain,
                          const IndexedMarket<Index>& terms, const Basis& basis, const StreamBounds& bounds,
                          First first) {
    constexpr int no_reviews = 0;
    const Measure measure{basis.DayCount, basis.Periods};
    return indexed_chain(
        here, Time, RentStart, chain, no_reviews, terms, basis, bounds, first,
        [&](const timeperiod& period, const Relet& relet, IndexedRelet<Index>& known, const Index& relet_index) {
            return indexed_rent(here, period, {relet.rent_start, relet.expiry}, known.rent, relet_index, measure,
                                known.walk);
        });
}

/// A chain that is reviewed to the market.
template <class Index>
double reviewed_chain(Routine& here, const timeperiod& Time, const date& RentStart, const date& FirstRev,
                      const Chain& chain, double AnnRent, const IndexedMarket<Index>& terms,
                      const ReviewsOfIndexed& reviews, const Basis& basis, View<date> UOTog) {
    const Measure measure{basis.DayCount, basis.Periods};
    const Reviews market_reviews{reviews.RevMonths, reviews.RevDis};
    const Rules rules{market_reviews, UOTog};
    const date first_review = LeaseCalendar{measure, chain.ROpts}.rounded(FirstRev);
    typename IndexedLease<Index>::Walk walk;
    return indexed_chain(
        here, Time, RentStart, chain, reviews.RevMonths, terms, basis, {},
        [&](const timeperiod& period, const Life& life, const Market& market, const Index& lease_index) {
            return reviewed_rent(here, period, life, first_review, AnnRent, lease_index, market, rules, measure, walk);
        },
        [&](const timeperiod& period, const Relet& relet, IndexedRelet<Index>& known, const Index& relet_index) {
            return reviewed_rent(here, period, {relet.rent_start, relet.expiry}, relet.first_review, known.rent,
                                 relet_index, known.market, rules, measure, known.walk);
        });
}

/// A chain whose first lease starts with a list of rents.
template <class Index>
double stepped_chain(Routine& here, const timeperiod& Time, const date& RentStart, const Chain& chain,
                     const RentSteps& steps, const IndexedMarket<Index>& terms, const Basis& basis,
                     const AbsoluteDates& absolute) {
    const Measure measure{basis.DayCount, basis.Periods};
    const LeaseCalendar calendar{measure, chain.ROpts};
    std::optional<WorkList<date>> dates;
    if (calendar.rounds()) dates.emplace(rounded(steps.ReviewDates, calendar));
    const RentSteps rounded_steps{dates ? View<date>(*dates) : steps.ReviewDates, steps.AnnRents};
    const bool overridden = absolute.override_start(chain.ROpts);
    if (overridden) here.info("AbStart overrides RentStart.");
    const StreamBounds bounds{overridden ? date() : absolute.AbStart, date()};
    SteppedWalk<Index> walk{here, rounded_steps.ReviewDates.size()};
    return indexed_only_chain(
        here, Time, overridden ? absolute.AbStart : RentStart, chain, terms, basis, bounds,
        [&](const timeperiod& period, const Life& life, const Market& market, const Index& lease_index) {
            return stepped_rent(here, period, life, rounded_steps, lease_index, market,
                                option_present(index_steps, chain.ROpts), measure, walk);
        });
}

void check_limits(Routine& here, const Basis& basis, const ReviewsOfIndexed& reviews) {
    basis.check(here);
    check_reviews(here, reviews.RevMonths, "RevMonths");
    here.limit(reviews.RevDis, rent_discount_limits, "RevDis");
}
void check_sources(Routine& here, const Growth& growth, const Growth& index) {
    growth.check(here);
    index.check(here);
}
void check_sources(Routine& here, const Forecast& forecast, const Forecast& index) {
    forecast.check(here);
    index.check(here, "IdxFcstBase");
}

} // namespace

double IdxRentGrowR(const timeperiod& Time, const date& RentStart, View<date> BrksOrExp, View<double> MktRent_s,
                    double AnnRent, const Growth& growth, const Growth& index, const GrowthIndexation& indexation,
                    const Relets& relets, const Basis& basis, const date& AbFin, int ROpts, int Brk,
                    View<int> IdxLag_s) {
    Routine here{"IdxRentGrowR"};
    here.inputs(Time, RentStart, BrksOrExp, MktRent_s, AnnRent, growth, index, indexation, relets, basis, AbFin, ROpts,
                Brk, IdxLag_s);
    basis.check(here);
    check_sources(here, growth, index);
    const Measure measure{basis.DayCount, basis.Periods};
    IndexedLease<GrowthIndex>::Walk walk;
    return here.returning(indexed_only_chain(
        here, Time, RentStart, {BrksOrExp, Brk, AbFin, relets, ROpts},
        GrownMarket{MktRent_s, growth, index, indexation, IdxLag_s}, basis, {},
        [&](const timeperiod& period, const Life& life, const Market&, const GrowthIndex& lease_index) {
            return indexed_rent(here, period, life, AnnRent, lease_index, measure, walk);
        }));
}

double IdxRentFcstR(const timeperiod& Time, const date& RentStart, View<date> BrksOrExp, double AnnRent,
                    const Forecast& forecast, const Forecast& index, const ForecastIndexation& indexation,
                    const Relets& relets, const Basis& basis, const date& AbFin, int ROpts, int Brk,
                    View<int> IdxLag_s) {
    constexpr int no_reviews = 0;
    Routine here{"IdxRentFcstR"};
    here.inputs(Time, RentStart, BrksOrExp, AnnRent, forecast, index, indexation, relets, basis, AbFin, ROpts, Brk,
                IdxLag_s);
    basis.check(here);
    check_sources(here, forecast, index);
    const Measure measure{basis.DayCount, basis.Periods};
    const auto indexed = [&](const timeperiod& period, const Life& life, double rent, const ForecastIndex& of_lease) {
        return ConIdx(period, life, rent, of_lease.forecast(), of_lease.every(), of_lease.base(),
                      of_lease.given_first(), measure);
    };
    return here.returning(indexed_chain(
        here, Time, RentStart, {BrksOrExp, Brk, AbFin, relets, ROpts}, no_reviews,
        ForecastMarket{{}, forecast, index, indexation, IdxLag_s}, basis, {},
        [&](const timeperiod& period, const Life& life, const Market&, const ForecastIndex& lease_index) {
            return indexed(period, life, AnnRent, lease_index);
        },
        [&](const timeperiod& period, const Relet& relet, const IndexedRelet<ForecastIndex>& known,
            const ForecastIndex& relet_index) {
            return indexed(period, {relet.rent_start, relet.expiry}, known.rent, relet_index);
        }));
}

double IdxRentGrowMktR(const timeperiod& Time, const date& RentStart, View<date> BrksOrExp, const date& FirstRev,
                       View<double> MktRent_s, double AnnRent, const Growth& growth, const Growth& index,
                       const GrowthIndexation& indexation, const ReviewsOfIndexed& reviews, const Relets& relets,
                       const Basis& basis, const date& AbFin, View<date> UOTog, int ROpts, int Brk,
                       View<int> IdxLag_s) {
    Routine here{"IdxRentGrowMktR"};
    here.inputs(Time, RentStart, BrksOrExp, FirstRev, MktRent_s, AnnRent, growth, index, indexation, reviews, relets,
                basis, AbFin, UOTog, ROpts, Brk, IdxLag_s);
    check_limits(here, basis, reviews);
    check_sources(here, growth, index);
    return here.returning(reviewed_chain(here, Time, RentStart, FirstRev, {BrksOrExp, Brk, AbFin, relets, ROpts},
                                         AnnRent, GrownMarket{MktRent_s, growth, index, indexation, IdxLag_s}, reviews,
                                         basis, UOTog));
}

double IdxRentFcstMktR(const timeperiod& Time, const date& RentStart, View<date> BrksOrExp, const date& FirstRev,
                       double AnnRent, const Forecast& forecast, const Forecast& index,
                       const ForecastIndexation& indexation, const ReviewsOfIndexed& reviews, const Relets& relets,
                       const Basis& basis, const date& AbFin, View<date> UOTog, int ROpts, int Brk,
                       View<int> IdxLag_s) {
    Routine here{"IdxRentFcstMktR"};
    here.inputs(Time, RentStart, BrksOrExp, FirstRev, AnnRent, forecast, index, indexation, reviews, relets, basis,
                AbFin, UOTog, ROpts, Brk, IdxLag_s);
    check_limits(here, basis, reviews);
    check_sources(here, forecast, index);
    return here.returning(reviewed_chain(here, Time, RentStart, FirstRev, {BrksOrExp, Brk, AbFin, relets, ROpts},
                                         AnnRent, ForecastMarket{{}, forecast, index, indexation, IdxLag_s}, reviews,
                                         basis, UOTog));
}

double TStepIdxRentGrowR(const timeperiod& Time, const date& RentStart, View<date> BrksOrExp, View<double> MktRent_s,
                         const RentSteps& steps, const Growth& growth, const Growth& index,
                         const GrowthIndexation& indexation, const Relets& relets, const Basis& basis,
                         const AbsoluteDates& absolute, int ROpts, int Brk, View<int> IdxLag_s) {
    Routine here{"TStepIdxRentGrowR"};
    here.inputs(Time, RentStart, BrksOrExp, MktRent_s, steps, growth, index, indexation, relets, basis, absolute, ROpts,
                Brk, IdxLag_s);
    basis.check(here);
    check_sources(here, growth, index);
    return here.returning(stepped_chain(here, Time, RentStart, {BrksOrExp, Brk, absolute.AbFin, relets, ROpts}, steps,
                                        GrownMarket{MktRent_s, growth, index, indexation, IdxLag_s}, basis, absolute));
}

double TStepIdxRentFcstR(const timeperiod& Time, const date& RentStart, View<date> BrksOrExp, const RentSteps& steps,
                         const Forecast& forecast, const Forecast& index, const ForecastIndexation& indexation,
                         const Relets& relets, const Basis& basis, const AbsoluteDates& absolute, int ROpts, int Brk,
                         View<int> IdxLag_s) {
    Routine here{"TStepIdxRentFcstR"};
    here.inputs(Time, RentStart, BrksOrExp, steps, forecast, index, indexation, relets, basis, absolute, ROpts, Brk,
                IdxLag_s);
    basis.check(here);
    check_sources(here, forecast, index);
    return here.returning(stepped_chain(here, Time, RentStart, {BrksOrExp, Brk, absolute.AbFin, relets, ROpts}, steps,
                                        ForecastMarket{{}, forecast, index, indexation, IdxLag_s}, basis, absolute));
}

} // namespace qx
