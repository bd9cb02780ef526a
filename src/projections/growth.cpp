#include "projections/growth.h"

#include "calendar/reviews.h"
#include "calendar/seasons.h"
#include "core/twin_run.h"
#include "projections/reviewed_rate.h"

#include <algorithm>

namespace qx {

namespace {

/// The value at a date under growth of a kind from the first growth date: Grow and GrowLin.
double grow(const char* name, const date& TheDate, double StartingValue, const Growth& growth, int RevMonthsOpt,
            GrowthType type) {
    Routine here{name};
    here.inputs(TheDate, StartingValue, growth, RevMonthsOpt);
    here.limit(RevMonthsOpt, review_months_limits, "RevMonthsOpt");
    growth.check(here);
    if (growth.none()) {
        here.info("No GrowthDates specified, returning the StartingValue");
        return here.returning(StartingValue);
    }
    return here.returning(
        GrowFromTo(growth.dates.first(), TheDate, StartingValue, growth, type, RevMonthsOpt, any_measure()));
}

} // namespace

// 30/360 takes the 31st for the end of the month: a review on the next day counts as reached, but is still to come.

date review_before(const date& TheDate, const date& FirstRev, int RevMonths) {
    const date review = last_review(TheDate, FirstRev, RevMonths, false).when;
    return review <= TheDate ? review : last_review(TheDate, FirstRev, RevMonths, true).when;
}

date review_after(const date& TheDate, const date& FirstRev, int RevMonths) {
    const date review = last_review(TheDate, FirstRev, RevMonths, false).when;
    return review > TheDate ? review : next_review(TheDate, FirstRev, RevMonths, false).when;
}

double GrowFromTo(const date& Date1, const date& Date2, double StartingValue, const Growth& growth, int GrowthType,
                  int RevMonthsOpt, const Measure& measure) {
    Routine here{"GrowFromTo"};
    here.inputs(Date1, Date2, StartingValue, growth, GrowthType, RevMonthsOpt, measure);
    measure.check(here);
    here.limit(RevMonthsOpt, review_months_limits, "RevMonthsOpt");
    if (GrowthType != growth_exponential && GrowthType != growth_linear)
        here.fail<errlibillegalswitch>("GrowthType", "GrowthType is 0 (exponential) or 1 (linear)");
    growth.check(here);
    if (iszero(StartingValue)) return here.returning(0.0);
    const int maxn = growth.count();
    if (maxn == 0 || Date2 <= growth.dates.first()) return here.returning(StartingValue);
    const date LastRevDate = review_before(Date2, growth.dates.first(), RevMonthsOpt);
    if (RevMonthsOpt != 0) here.info("Last review on ", LastRevDate);
    double factor = 1.0;
    for (int n = 1; n <= maxn && growth.dates(n) <= LastRevDate; ++n) {
        const date& ToDate = std::min(n < maxn ? growth.dates(n + 1) : DateCrit, LastRevDate);
        const date& FromDate = std::max(Date1, growth.dates(n));
        const TraceBlock pass = here.pass(n, "Growth of ", growth.rates(n), " from ", FromDate, " to ", ToDate);
        const double years = (ToDate.months() - FromDate.months()) / 12.0;
        if (years <= 0.0) continue;
        factor *= GrowthType == growth_linear ? 1.0 + growth.rates(n) * years : SafePow(1.0 + growth.rates(n), years);
    }
    return here.returning(factor * StartingValue);
}

double GrowthWalk::section(int n, const date& ToDate) const {
    const date& FromDate = std::max(from_, growth_.dates(n));
    const double years = (ToDate.months() - FromDate.months()) / 12.0;
    return years <= 0.0 ? 1.0 : SafePow(1.0 + growth_.rates(n), years);
}

void GrowthWalk::check_next(int n) const {
    if (n < growth_.count()) static_cast<void>(growth_.dates(n + 1));
}

void GrowthWalk::reach(int n) {
    if (n < 1) return;
    if (!sections_) sections_.emplace();
    auto& [sections, factors] = *sections_;
    for (int i = sections.size() + 1; i <= n; ++i) {
        const double growth = section(i, growth_.dates(i + 1));
        sections->append(growth);
        factors->append((i > 1 ? factors(i - 1) : 1.0) * growth);
    }
}

int GrowthWalk::section_at(const date& day) const {
    const View<date>& dates = growth_.dates;
    return std::max(1, static_cast<int>(std::upper_bound(dates.begin(), dates.end(), day) - dates.begin()));
}

double GrowthWalk::through(int first, int last, double amount, const Measure& measure) {
    constexpr int sections_a_step = 16;
    if (first > last) return amount;
    if (traced()) {
        for (int n = first; n <= last; ++n)
            amount = GrowFromTo(std::max(from_, growth_.dates(n)), growth_.dates(n + 1), amount,
                                {growth_.dates.from(n), growth_.rates.from(n)}, growth_exponential, 0, measure);
        return amount;
    }
    steps_left -= (last - first) / sections_a_step;
    for (int n = first; n <= last; ++n) {
        if (iszero(amount)) return 0.0; // whatever the growth of what follows, which may fail
        if (!sections_ || sections_->growth.size() < n) reach(n);
        amount *= sections_->growth.begin()[n - 1];
    }
    check_next(last + 1);
    return amount;
}

double GrowthWalk::to(const date& Date2, double StartingValue, const Measure& measure) {
    if (traced()) return GrowFromTo(from_, Date2, StartingValue, growth_, growth_exponential, 0, measure);
    if (iszero(StartingValue)) return 0.0;
    const int maxn = growth_.count();
    if (maxn == 0 || Date2 <= growth_.dates.first()) return StartingValue;
    const View<date> dates = growth_.dates.upto(maxn);
    const int n = static_cast<int>(std::upper_bound(dates.begin(), dates.end(), Date2) - dates.begin());
    check_next(n);
    reach(n - 1);
    return (n > 1 ? sections_->factors(n - 1) : 1.0) * section(n, Date2) * StartingValue;
}

double Grow(const date& TheDate, double StartingValue, const Growth& growth, int RevMonthsOpt) {
    return grow("Grow", TheDate, StartingValue, growth, RevMonthsOpt, growth_exponential);
}

double GrowLin(const date& TheDate, double StartingValue, const Growth& growth, int RevMonthsOpt) {
    return grow("GrowLin", TheDate, StartingValue, growth, RevMonthsOpt, growth_linear);
}

double GrowQ(const date& TheDate, double StartingValue, const Growth& growth) {
    Routine here{"GrowQ"};
    here.inputs(TheDate, StartingValue, growth);
    here.change_note(82, "See Change in Behaviour 82, Oct-03 :Superceded compatibly by Grow");
    return here.returning(Grow(TheDate, StartingValue, growth, 0));
}

double MarketG(const date& TheDate, double Amt, View<double> GrowthRates, View<date> GrowthDates) {
    Routine here{"MarketG"};
    here.inputs(TheDate, Amt, GrowthRates, GrowthDates);
    return here.returning(Grow(TheDate, Amt, {GrowthDates, GrowthRates}, 0));
}

double OneGrow(double Time, const date& EventDate, double Amt, const date& GrowFrom, double GrowthRatePA,
               double BaseYrs) {
    Routine here{"OneGrow"};
    here.inputs(Time, EventDate, Amt, GrowFrom, GrowthRatePA, BaseYrs);
    timeperiod period(here.context("Time"));
    period.settime_in_years(Time, BaseYrs);
    if (!period.contains(EventDate)) return here.returning(0.0);
    return here.returning(Grow(EventDate, Amt, {View<date>::of(GrowFrom), View<double>::of(GrowthRatePA)}, 0));
}

double GrowMkt(const date& TheDate, double StartingValue, const Growth& growth, int RevMos, double RevDisc,
               View<date> UOTog) {
    constexpr int most_reviews = 200;
    Routine here{"GrowMkt"};
    here.inputs(TheDate, StartingValue, growth, RevMos, RevDisc, UOTog);
    here.limit(RevMos, review_months_limits, "RevMos");
    here.limit(RevDisc, review_discount_limits, "RevDisc");
    growth.check(here);
    if (growth.none() || (iszero(RevDisc) && UOTog.empty()))
        return here.returning(Grow(TheDate, StartingValue, growth, RevMos));
    if (RevMos == 0) {
        here.warning("Warning: RevMos was specified as zero but the function will use 1 month (in this function only)");
        RevMos = 1;
    }
    int reviews = 0;
    double value = StartingValue;
    date review = growth.dates.first();
    return here.returning(over(here, TheDate, [&](const date& day) {
        if (reviews > 0 && day < review) { // it goes back: the walk starts anew
            reviews = 0;
            value = StartingValue;
            review = growth.dates.first();
        }
        while (reviews < most_reviews) {
            const date next = review.plusmonths(RevMos, true);
            if (next > day) break;
            review = next;
            const TraceBlock pass = here.pass(++reviews, "Review on ", review);
            value = ReviewedRate(value, Grow(review, StartingValue, growth, RevMos), RevDisc, review, UOTog, true);
        }
        return value;
    }));
}

double SIndex(const timeperiod& Time, const Range<double>& SeasonFactors, const AnnualSequence& SeasonSeq,
              const Measure& measure) {
    Routine here{"SIndex"};
    here.inputs(Time, SeasonFactors, SeasonSeq, measure);
    measure.check(here);
    const date &from = Time.from(), &to = Time.to();
    const double weighted =
        SeasonSeq.size() == 0
            ? even_seasonal_amount(Time, from, to, 1.0, SeasonFactors, measure.DayCount, measure.Periods)
            : seasonal_amount(Time, from, to, 1.0, SeasonFactors, SeasonSeq, measure.DayCount, measure.Periods);
    return here.returning(safe_divide(weighted, Time.lenyrs(from, to, measure.DayCount, measure.Periods)));
}

} // namespace qx
