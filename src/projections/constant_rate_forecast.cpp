#include "calendar/date_arithmetic.h"
#include "calendar/reviews.h"
#include "core/twin_run.h"
#include "projections/constant_rate.h"
#include "projections/forecast.h"
#include "projections/forecast_rate.h"
#include "projections/index_base.h"

namespace qx {

namespace {

constexpr int most_reviews = 1000;

/// A review and the one after it.
struct ReviewsAround {
    date last, next;
};

/// Both zero before the first review.
ReviewsAround reviews_around(const date& day, const date& first, int months) {
    const Review last = last_review(day, first, months, false);
    if (last.when.iszero()) return {};
    const auto review = [&](int interval) { return first.plusmonths(interval * months, true); };
    // 30/360 takes the 31st for the end of the month: a review on the next day is still to come.
    if (last.when > day) return {review(last.intervals - 1), last.when};
    return {last.when, review(last.intervals + 1)};
}

} // namespace

IndexBase index_base(const Routine& here, const date& Start, double InitialAnnRate, const Forecast& index,
                     const dateorfloat& BaseDateOrIdx) {
    IndexBase base{Start, InitialAnnRate, 0.0};
    if (is_base_date(BaseDateOrIdx)) {
        base.when = date(BaseDateOrIdx.number());
    } else if (BaseDateOrIdx.number() != 0.0) {
        if (BaseDateOrIdx.iszero()) here.fail<illegalvalue>("BaseDateOrIdx", "BaseDateOrIdx cannot be zero");
        if (!index.start.iszero()) base.when = index.start;
        base.rate = InitialAnnRate * index.values.first() / BaseDateOrIdx.number();
    }
    base.value = base.when < index.start ? index.values.first() : fcst(base.when, index);
    here.info("Base date ", base.when, ", starting rate ", base.rate, ", index ", base.value);
    return base;
}

void check_forecast(Routine& here, const Basis& basis, const Forecast& forecast, int RevMonthsOpt, const char* base,
                    const char* months) {
    here.limit(basis.DayCount, daycount_limits, "DayCount");
    forecast.check(here, base);
    here.limit(basis.ProjMode, projmode_limits, "ProjMode");
    check_reviews(here, RevMonthsOpt, months);
}

timeperiod ReviewPeriodFcst(const date& TheDate, const date& FirstRev, int RevMonths, const date& StartFcst,
                            int FcstBase, bool StepOverBoundary) {
    Routine here{"ReviewPeriodFcst", Routine::internal};
    here.arguments(QX_NAMED(TheDate, FirstRev, RevMonths, StartFcst, FcstBase, StepOverBoundary));
    if (TheDate < FirstRev) return here.returning(timeperiod{date(), FirstRev});
    const auto period_of = [&](const date& day) -> timeperiod {
        const ReviewsAround review = reviews_around(day, FirstRev, RevMonths);
        const ReviewsAround value = reviews_around(day, StartFcst, FcstBase);
        // A review between two values of the forecast sees what the one before it saw. The next review that matters is
        // the first one on or after the next value.
        const bool sees_nothing = review.next < value.next && review.last > value.last;
        return {review.last, sees_nothing ? next_review(value.next, FirstRev, RevMonths, true).when : review.next};
    };
    timeperiod period = period_of(TheDate);
    if (StepOverBoundary && period.to() == TheDate) period = period_of(TheDate.plusdays(1));
    if (period.to() > DateCrit) period.setto(DateCrit);
    return here.returning(period);
}

timeperiod ForecastRate::review_period(const date& day, const date& FirstReview) {
    if (traced() || day < asked_ || day >= known_.to()) {
        known_ = ReviewPeriodFcst(day, FirstReview, RevMonthsOpt_, forecast_.start, forecast_.base, true);
        asked_ = day;
    }
    return known_;
}

double ForecastRate::in(const timeperiod& Time, const Life& life, double InitialAnnRate, const Basis& basis,
                        bool ComponentPart) {
    Routine here{"ConFcstMktX", Routine::internal};
    here.arguments(
        "Time,Start,Finish,FirstRev,InitialAnnRate,FcstVals,StartFcst,FcstBase,RevMonthsOpt,DayCount,Periods,"
        "ProjMode,ComponentPart",
        Time, life.Start, life.Finish, FirstRev_, InitialAnnRate, forecast_.values, forecast_.start, forecast_.base,
        RevMonthsOpt_, basis.DayCount, basis.Periods, basis.ProjMode, ComponentPart);
    check_forecast(here, basis, forecast_, RevMonthsOpt_);
    timeperiod period = Time;
    if (!screen_period(here, period, life, basis)) return here.returning(0.0);
    const date& FirstReview = qx::first_review(here, FirstRev_);
    const DayCountCodes codes = DayCountCodes::of(basis.DayCount);
    const PeriodCount periods(basis, codes);
    if (period.to() <= FirstReview) {
        here.info("Timeperiod precedes first review, return the result of 'Con'");
        return here.returning(ConX(period, life, InitialAnnRate, basis.accruals(), ComponentPart));
    }
    if (RevMonthsOpt_ == 0) {
        here.info("Special case of ReviewYears=0 - using 'Con' and 'SumFcstEven'");
        timeperiod rest{FirstReview, period.to()};
        rest.intersect(life.Start, life.Finish);
        rest.intersect(period);
        const bool stubbed = periods(FirstReview, life.Finish) >= 1;
        const double initial = ConX(period, {life.Start, std::min(life.Finish, FirstReview)}, InitialAnnRate,
                                    basis.under(stubbed ? codes.with_start() : basis.DayCount),
                                    life.Finish > FirstReview || ComponentPart);
        return here.returning(initial + SumFcstX(rest.from(), rest.to(), forecast_,
                                                 {stubbed ? codes.with_end() : basis.DayCount, basis.Periods},
                                                 stubbed || ComponentPart));
    }
    double sum = 0.0;
    date day = period.from();
    for (int n = 1; n <= most_reviews; ++n) {
        timeperiod review = review_period(day, FirstReview);
        const TraceBlock pass = here.pass(n, "Review period ", review);
        day = review.to();
        const bool initial = review.from().iszero() || review.from() < forecast_.start;
        const double rate = initial ? InitialAnnRate : fcst(review.from(), forecast_);
        review.intersect(period);
        const bool goes_on = periods(life.Start, day) >= 1;
        const bool core = goes_on && periods(day, life.Finish) >= 1;
        sum += ConX(review, life, rate, basis.under(core ? codes.core : codes.with_end()), goes_on);
        if (day >= period.to()) break;
    }
    return here.returning(sum);
}

double ConFcstMktX(const timeperiod& Time, const Life& life, const date& FirstRev, double InitialAnnRate,
                   const Forecast& forecast, int RevMonthsOpt, const Basis& basis, bool ComponentPart) {
    return ForecastRate{FirstRev, forecast, RevMonthsOpt}.in(Time, life, InitialAnnRate, basis, ComponentPart);
}

double ConFcstMkt(const timeperiod& Time, const Life& life, const date& FirstRev, double InitialAnnRate,
                  const Forecast& forecast, int RevMonthsOpt, const Basis& basis) {
    Routine here{"ConFcstMkt"};
    here.inputs(Time, life, FirstRev, InitialAnnRate, forecast, RevMonthsOpt, basis);
    ForecastRate rate{FirstRev, forecast, RevMonthsOpt};
    return here.returning(over(
        here, Time, [&](const timeperiod& period) { return rate.in(period, life, InitialAnnRate, basis, false); }));
}

double ConFcstGrowMkt(const timeperiod& Time, const Life& life, const date& FirstRev, double InitialAnnRate,
                      const Forecast& forecast, const Growth& growth, int RevMos, const Basis& basis) {
    Routine here{"ConFcstGrowMkt"};
    here.inputs(Time, life, FirstRev, InitialAnnRate, forecast, growth, RevMos, basis);
    check_forecast(here, basis, forecast, RevMos, "FcstBase", "RevMos");
    growth.check(here);
    timeperiod period = Time;
    if (!screen_period(here, period, life, basis)) return here.returning(0.0);
    const double grown = con_grow(period, life, 1.0, growth, RevMos, basis.accruals());
    const double ungrown = con(period, life, 1.0, basis.accruals());
    return here.returning(
        ConFcstMktX(period, life, FirstRev, InitialAnnRate, forecast, RevMos, basis.accruals(), false) *
        safe_divide(grown, ungrown));
}

double ConIdx(const timeperiod& Time, const Life& life, double InitialAnnRate, const Forecast& index, int IdxReg,
              const dateorfloat& BaseDateOrIdx, const date& FirstIdxDate, const Basis& basis) {
    Routine here{"ConIdx"};
    here.inputs(Time, life, InitialAnnRate, index, IdxReg, BaseDateOrIdx, FirstIdxDate, basis);
    check_forecast(here, basis, index, IdxReg, "IdxFcstBase", "IdxReg");
    timeperiod period = Time;
    if (!screen_period(here, period, life, basis)) return here.returning(0.0);
    if (index.none() && !BaseDateOrIdx.iszero() && !is_base_date(BaseDateOrIdx))
        here.fail<illegalvalue>("BaseDateOrIdx", "You must have some index values if you are setting a base index");
    const date& FirstIdx = FirstIdxDate.iszero() ? std::max(life.Start, index.start) : FirstIdxDate;
    if (period.to() < FirstIdx || index.none())
        return here.returning(con(period, life, InitialAnnRate, basis.accruals()));

    const DayCountCodes codes = DayCountCodes::of(basis.DayCount);
    const IndexBase base = index_base(here, life.Start, InitialAnnRate, index, BaseDateOrIdx);
    const Life indexed{std::max(FirstIdx, life.Start), life.Finish};
    if (IdxReg == 0) {
        here.info("IdxReg is zero: the indexed part is approximated by the sum of the index over that of the rate");
        const bool stubbed = PeriodCount(basis, codes)(base.when, life.Finish) >= 1;
        const Basis start_count = basis.under(stubbed ? codes.with_start() : basis.DayCount);
        const Basis end_count = basis.under(stubbed ? codes.with_end() : basis.DayCount);
        timeperiod rest{base.when, period.to()};
        rest.intersect(FirstIdx, life.Finish);
        rest.intersect(period);
        const date& from = std::max(rest.from(), FirstIdx);
        const double before = con(period, {indexed.Start, std::min(life.Finish, FirstIdx)}, base.rate, start_count);
        return here.returning(before + safe_divide(SumFcst(from, rest.to(), index, {end_count.DayCount, basis.Periods}),
                                                   con(rest, {from, rest.to()}, base.rate, end_count)));
    }
    double sum =
        con(period, {life.Start, std::min(life.Finish, FirstIdx)}, InitialAnnRate, basis.under(codes.with_start()));
    date day = period.from();
    for (int n = 1; n <= most_reviews; ++n) {
        timeperiod review = ReviewPeriodFcst(day, FirstIdx, IdxReg, index.start, index.base, true);
        const TraceBlock pass = here.pass(n, "Review period ", review);
        day = review.to();
        if (day >= period.from() && day >= FirstIdx) {
            const bool unindexed = review.from().iszero() || review.from() < index.start;
            const double rate = base.rate * (unindexed ? 1.0 : safe_divide(fcst(review.from(), index), base.value));
            review.intersect(period);
            sum += con(review, indexed, rate,
                       basis.under(ChooseRightDC(codes.core, codes.with_start(), codes.with_end(), life.Start,
                                                 life.Finish, review)));
        }
        if (day >= period.to()) break;
    }
    return here.returning(sum);
}

} // namespace qx
