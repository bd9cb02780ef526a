#include "calendar/date_arithmetic.h"
#include "calendar/reviews.h"
#include "core/twin_run.h"
#include "projections/constant_rate.h"
#include "projections/grown_rate.h"

#include <cmath>

namespace qx {

namespace {

constexpr int once_a_year = 12;

/// The amount of one unit a year from month 0 to month T that starts growing in month F: ConGrowQ's cumulative sum.
double grown_months(double T, double g, double S, double F) {
    if (iszero(g) || T <= F) return T / 12.0;
    if (iszero(T)) return 0.0;
    if (iszero(S)) return SumEGAnnCont(T / 12.0, g);
    const double gstep = SafePow(1.0 + g, S / 12.0) - 1.0;
    if (iszero(gstep)) return T / 12.0;
    const double steps = (T - F) / S, n = std::trunc(steps);
    const double gn = SafePow(1.0 + gstep, n);
    return S / 12.0 * ((gn - 1.0) / gstep + gn * (steps - n)) + F / 12.0;
}

double con_grow_streams(Routine& here, const timeperiod& Time, const Streams& streams, const Growth& growth,
                        int RevMonths, const Basis& basis) {
    GrowthWalk walk(growth);
    Kept<GrownRate> rates{here, streams.amounts.size()};
    return over(here, Time, [&](const timeperiod& period) {
        if (!runs_forward(here, period)) return 0.0;
        int n = 0;
        return streams.sum(here, [&](const Life& life, double AnnualRate) {
            GrownRate& rate = rates(std::min(++n, streams.amounts.size()), [&] {
                return GrownRate{walk, AnnualRate, AnnualRate, RevMonths};
            });
            return rate.in(period, life, basis, false);
        });
    });
}

} // namespace

double GrownRate::in(const timeperiod& Time, const Life& life, const Basis& basis, bool ComponentPart) {
    constexpr int GrowthLag = 0;
    const Growth& growth = walk_.growth();
    const date &GrowthBaseDate = base(life), &FirstRev = first_review(life);
    const Measure measure{basis.DayCount, basis.Periods};
    Routine here{"ConGrowMktX", Routine::internal};
    here.arguments("Time,Start,Finish,FirstRev,MktAnnRate,InitialAnnRate,GrowthDates,GrowthRates,GrowthBaseDate,"
                   "RevMonthsOpt,DayCount,Periods,ProjMode,ComponentPart,GrowthLag",
                   Time, life.Start, life.Finish, FirstRev, MktAnnRate_, InitialAnnRate_, growth.dates, growth.rates,
                   GrowthBaseDate, RevMonthsOpt_, basis.DayCount, basis.Periods, basis.ProjMode, ComponentPart,
                   GrowthLag);
    basis.check(here);
    check_reviews(here, RevMonthsOpt_);
    timeperiod period = Time;
    if (!screen_period(here, period, life, basis)) return here.returning(0.0);
    const DayCountCodes codes = DayCountCodes::of(basis.DayCount);
    if (RevMonthsOpt_ == 0)
        here.info("Note: ReviewMonths was zero which implies continuous growth from the first time this function "
                  "reviews.");
    const date& FirstReview = qx::first_review(here, FirstRev);
    const auto at = [&](double rate, const date& from, const date& to, double day_count, bool stub) {
        return ConX(period, {from, to}, rate, basis.under(day_count), stub);
    };
    if (period.to() < FirstReview)
        return here.returning(at(InitialAnnRate_, life.Start, life.Finish, basis.DayCount, ComponentPart));

    const PeriodCount periods(basis, codes);
    const bool stubbed = periods(FirstRev, life.Finish) >= 1;
    const bool first_stub = life.Finish > FirstReview || ComponentPart;
    const date& initial_to = std::min(FirstReview, life.Finish);
    const date& market_from = std::max(FirstReview, life.Start);
    const double initial_count = stubbed ? codes.with_start() : basis.DayCount;
    if (growth.none() || period.to() < growth.dates.first()) {
        here.info("No growth has been specified");
        const double initial = at(InitialAnnRate_, life.Start, initial_to, initial_count, first_stub);
        return here.returning(initial + at(MktAnnRate_, market_from, life.Finish,
                                           stubbed ? codes.with_end() : basis.DayCount, ComponentPart));
    }
    const date& flat_to = std::min(growth.dates.first(), life.Finish);
    const double flat_count = !stubbed                                          ? basis.DayCount
                              : periods(growth.dates.first(), life.Finish) >= 1 ? codes.core
                                                                                : codes.with_end();
    double amount = at(InitialAnnRate_, life.Start, initial_to, initial_count, first_stub);
    amount += at(MktAnnRate_, market_from, flat_to, flat_count, ComponentPart);

    const TraceBlock sections = here.loop("Growth Sections", "Looping through each of the growth sections...");
    const int maxn = growth.dates.size();
    double market = MktAnnRate_;
    const date* base_date = &GrowthBaseDate;
    const date& pays_from = std::max(std::max(life.Start, FirstReview), period.from());
    int first = 1;
    if (!traced()) { // the sections that end before payment begins only compound the market rate
        first = walk_.section_at(std::min(pays_from, period.to()));
        market = walk_.through(1, first - 2, market, measure);
    }
    for (int n = first; n <= maxn; ++n) {
        const date& grows_from = growth.dates(n);
        const TraceBlock pass = here.pass(n, "Growth from ", grows_from);
        if (grows_from > period.to()) {
            here.info("GrowthDate beyond timeperiod, no more to do...");
            break;
        }
        // The market rate compounds from section to section, each time from the one before.
        const bool compounds = n > 1 && grows_from > GrowthBaseDate;
        if (compounds) market = walk_.through(n - 1, n - 1, market, measure);
        base_date = &std::max(GrowthBaseDate, grows_from);

        const date& next = n < maxn ? growth.dates(n + 1) : DateCrit;
        const date& to = std::min(next, std::min(period.to(), life.Finish));
        const date& from = std::max(pays_from, grows_from);
        if (to <= from) continue;
        const bool goes_on = periods(to, life.Finish) >= 1;
        const double day_count = !goes_on                       ? codes.with_end()
                                 : periods(life.Start, to) >= 1 ? codes.core
                                                                : codes.with_start();
        if (traced() || section_.number != n || section_.day_count != day_count) {
            section_ = {n, day_count, FirstReview, InitialAnnRate_, {}};
            if (FirstReview < grows_from)
                section_.next_review = next_review(grows_from, FirstReview, RevMonthsOpt_, false).when;
            if (compounds) {
                const date last_rev = last_review(grows_from, FirstReview, RevMonthsOpt_, false).when;
                section_.passing = walk_.to(last_rev.iszero() ? section_.next_review : last_rev, MktAnnRate_, measure);
            }
        }
        amount += SumEGStepMktFT(period, market, section_.passing, growth.rates(n), grows_from, *base_date,
                                 section_.next_review, from, to, day_count, basis.Periods, RevMonthsOpt_, goes_on,
                                 section_.stream);
    }
    return here.returning(amount);
}

double ConGrowMktX(const timeperiod& Time, const Life& life, const date& FirstRev, double MktAnnRate,
                   double InitialAnnRate, const Growth& growth, const date& GrowthBaseDate, int RevMonthsOpt,
                   const Basis& basis, bool ComponentPart, int GrowthLag) {
    const auto amount_under = [&](const Growth& of_market) {
        GrowthWalk walk(GrowthBaseDate, of_market);
        return GrownRate{walk, MktAnnRate, InitialAnnRate, RevMonthsOpt, &FirstRev, &GrowthBaseDate}.in(
            Time, life, basis, ComponentPart);
    };
    if (GrowthLag == 0) return amount_under(growth);
    WorkList<date> later;
    for (const date& day : growth.dates) later->append(day.plusmonths(GrowthLag, true));
    return amount_under({later, growth.rates});
}

double ConGrowMkt(const timeperiod& Time, const Life& life, const date& FirstRev, double MktAnnRate,
                  double InitialAnnRate, const Growth& growth, int RevMonthsOpt, const Basis& basis) {
    Routine here{"ConGrowMkt"};
    here.inputs(Time, life, FirstRev, MktAnnRate, InitialAnnRate, growth, RevMonthsOpt, basis);
    basis.check(here);
    check_reviews(here, RevMonthsOpt);
    growth.check(here);
    const date& base = growth.first_or(life.Start);
    GrowthWalk walk(base, growth);
    GrownRate market{walk, MktAnnRate, InitialAnnRate, RevMonthsOpt, &FirstRev, &base};
    return here.returning(
        over(here, Time, [&](const timeperiod& period) { return market.in(period, life, basis, false); }));
}

double ConGrowMktQ(const timeperiod& Time, const Life& life, double MktAnnRate, double InitialAnnRate,
                   const date& GrowFrom, double GrowthRatePA, int RevMos, const Basis& basis) {
    Routine here{"ConGrowMktQ"};
    here.inputs(Time, life, MktAnnRate, InitialAnnRate, GrowFrom, GrowthRatePA, RevMos, basis);
    basis.check(here);
    check_reviews(here, RevMos, "RevMos");
    Growth{View<date>::of(GrowFrom), View<double>::of(GrowthRatePA)}.check(here);
    std::optional<SteppedGrowth> stream;
    return here.returning(over(here, Time, [&](const timeperiod& given) {
        timeperiod period = given;
        if (!screen_period(here, period, life, basis)) return 0.0;
        return SumEGStepMktFT(period, MktAnnRate, InitialAnnRate, GrowthRatePA, life.Start, GrowFrom, life.Start,
                              std::max(period.from(), life.Start), std::min(period.to(), life.Finish), basis.DayCount,
                              basis.Periods, RevMos, false, stream);
    }));
}

double con_grow(const timeperiod& Time, const Life& life, double AnnualRate, const Growth& growth, int RevMonthsOpt,
                const Basis& basis) {
    GrowthWalk walk(growth);
    return GrownRate{walk, AnnualRate, AnnualRate, RevMonthsOpt}.in(Time, life, basis, false);
}

double ConGrow(const timeperiod& Time, const Streams& streams, const Growth& growth, int RevMonthsOpt,
               const Basis& basis) {
    Routine here{"ConGrow"};
    here.inputs(Time, streams, growth, RevMonthsOpt, basis);
    basis.check(here);
    check_reviews(here, RevMonthsOpt);
    growth.check(here);
    return here.returning(con_grow_streams(here, Time, streams, growth, RevMonthsOpt, basis));
}

double MultiConGrow(const timeperiod& Time, const Streams& streams, const Growth& growth, int RevMos,
                    const Basis& basis) {
    Routine here{"MultiConGrow"};
    here.inputs(Time, streams, growth, RevMos, basis);
    TwinWait::pass_to("ConGrow", here);
    return here.returning(ConGrow(Time, streams, growth, RevMos, basis));
}

double AnnGrow(const timeperiod& Time, const Streams& streams, const Growth& growth, const Basis& basis) {
    Routine here{"AnnGrow"};
    here.inputs(Time, streams, growth, basis);
    basis.check(here);
    growth.check(here);
    return here.returning(con_grow_streams(here, Time, streams, growth, once_a_year, basis));
}

double MultiAnnGrow(const timeperiod& Time, const Streams& streams, const Growth& growth, const Basis& basis) {
    Routine here{"MultiAnnGrow"};
    here.inputs(Time, streams, growth, basis);
    TwinWait::pass_to("AnnGrow", here);
    return here.returning(AnnGrow(Time, streams, growth, basis));
}

double ConGrowQ(const timeperiod& Time, const Life& life, double AnnualRate, const date& GrowFrom, double GrowthRatePA,
                int RevMos, const Basis& basis) {
    Routine here{"ConGrowQ"};
    here.inputs(Time, life, AnnualRate, GrowFrom, GrowthRatePA, RevMos, basis);
    basis.check(here);
    if (RevMos < 0) here.fail<errlibbadnum>("RevMos", "StepLengthMonths must be a positive number");
    check_reviews(here, RevMos, "RevMos");
    Growth{View<date>::of(GrowFrom), View<double>::of(GrowthRatePA)}.check(here);
    timeperiod period = Time;
    if (!screen_period(here, period, life, basis)) return here.returning(0.0);
    const auto months = [&](const date& from, const date& to) {
        return diffmonths(from, to, basis.DayCount, basis.Periods);
    };
    const date& from = std::max(period.from(), life.Start);
    const date& to = std::min(period.to(), life.Finish);
    const double F = months(life.Start, GrowFrom);
    const double t1 = months(life.Start, from), t2 = t1 + months(from, to);
    if (t1 >= t2) return here.returning(0.0);
    here.info("From ", t1, " to ", t2, " months, growing from ", F, " months");
    return here.returning(AnnualRate *
                          (grown_months(t2, GrowthRatePA, RevMos, F) - grown_months(t1, GrowthRatePA, RevMos, F)));
}

} // namespace qx
