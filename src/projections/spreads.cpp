#include "projections/spreads.h"

#include "calendar/date_arithmetic.h"
#include "numerics/distributions.h"
#include "projections/constant_rate.h"
#include "projections/growth.h"
#include "projections/payments.h"
#include "projections/periodic.h"
#include "projections/stepped_rate.h"

#include <algorithm>
#include <cmath>

namespace qx {

namespace {

double years_in(const Span& span, const Basis& basis) {
    return diffmonths(span.Start, span.Finish, basis.DayCount, basis.Periods) / 12.0;
}

} // namespace

Span widened(const Life& life, const Basis& basis) {
    constexpr int most_days = 10; // of which no day count sees one: the 31st, 29 February, a long holiday
    Span span{life.Start, life.Finish};
    if (span.Start != span.Finish) return span;
    for (int days = 1; days <= most_days; ++days) {
        if (basis.Periods.arrears())
            span.Start.adddays(-1);
        else
            span.Finish.adddays(1);
        if (!iszero(years_in(span, basis))) break;
    }
    return span;
}

namespace {

/// A total that accrues at once, under cash: one payment, if need be with delay.
double paid_at_once(const timeperiod& Time, const date& when, double Total, const Basis& basis) {
    return payment_in(Time, when.plusdays(payment_delay(basis.ProjMode)), Total);
}

} // namespace

double UniformSpread::in(const Routine& here, const timeperiod& Time, const Basis& basis) const {
    if (Start == Finish && basis.cash()) return paid_at_once(Time, Start, Total, basis);
    const Span span = widened({Start, Finish}, basis);
    timeperiod period = Time;
    if (!screen_period(here, period, span, basis)) return 0.0;
    const double rate = safe_divide(Total, years_in(span, basis));
    here.info("Calculated Annual Rate=", rate);
    return ConX(period, span, rate, basis.accruals(), false);
}

// --- Weights ---------------------------------------------------------------------------------------------------------

namespace {

double sum(View<double> list) {
    double total = 0.0;
    for (const double item : list) total += item;
    return total;
}

/// The amount of one slice in a period.
double slice_in(const Routine& here, const timeperiod& period, const Life& slice, double amount, const Basis& basis,
                bool ComponentPart) {
    if (iszero(amount)) return 0.0;
    const Span span = widened(slice, basis);
    const double years = years_in(span, basis);
    if (!(years > 0.0))
        here.fail<errlibnovalidanswer>("", "The slice from ", slice.Start, " to ", slice.Finish, " has no length for ",
                                       amount);
    return ConX(period, span, amount / years, basis.accruals(), ComponentPart);
}

/// The sum of the slices in a period, up to the first that starts after it. `slice` gives number n; the numbers come
/// in order.
template <class Slice>
double sum_slices(const Routine& here, const timeperiod& period, double Total, View<double> weights, int count,
                  const Basis& basis, Slice slice) {
    const double all = weights.size() == 1 ? weights.first() * count : sum(weights);
    double total = 0.0;
    for (int n = 1; n <= count; ++n) {
        const auto stretch = slice(n);
        if (stretch.Start > period.to()) break;
        const double amount = safe_divide(weights.single_or(n) * Total, all);
        const TraceBlock pass = here.pass(n, "Slice from ", stretch.Start, " to ", stretch.Finish, ": ", amount);
        total += slice_in(here, period, stretch, amount, basis, n < count);
    }
    return total;
}

/// Slices one after another, of so many months each.
class EvenSlices {
  public:
    EvenSlices(const date& start, double months, const Basis& basis)
        : span_{start, start}, months_(months), basis_(basis) {}
    const Span& next() {
        span_.Start = span_.Finish;
        span_.Finish = plusmonths(span_.Start, months_, basis_.DayCount, basis_.Periods);
        return span_;
    }

  private:
    Span span_;
    double months_;
    const Basis& basis_;
};

double round_if_close(double value) {
    constexpr double close = 0.01;
    const double nearest = std::round(value);
    return std::fabs(value - nearest) <= close ? nearest : value;
}

} // namespace

double WeightedSpread::in(const Routine& here, const timeperiod& Time, const Basis& basis) const {
    const int count = Weights.size();
    if (count == 0 || Start > Finish) return 0.0;
    if (Start == Finish) return UniformSpread{Start, Finish, Total}.in(here, Time, basis);
    const double length = round_if_close(diffmonths(Start, Finish, basis.DayCount, basis.Periods) / count);
    here.info("Length of a slice in months=", length);
    // Each slice may be rounded by less than a day, and the last one end by as much after Finish.
    date end = Finish.plusdays(count);
    if (basis.cash()) {
        EvenSlices slices(Start, length, basis);
        for (int n = 1; n <= count; ++n) end = slices.next().Finish;
        end = std::max(end, Finish);
    }
    timeperiod period = Time;
    if (!screen_period(here, period, {Start, end}, basis)) return 0.0;
    EvenSlices slices(Start, length, basis);
    return sum_slices(here, period, Total, Weights, count, basis, [&](int) { return slices.next(); });
}

namespace {

/// Slices between given dates: `slice` gives number n.
template <class Slice>
double sum_dated_slices(const Routine& here, const timeperiod& Time, const Life& life, double Total, int count,
                        View<double> Weights, const Basis& basis, Slice slice) {
    View<double> weights = Weights;
    while (weights.size() > count && iszero(weights.last())) weights = weights.upto(weights.size() - 1);
    if (weights.size() > count)
        here.fail<inputrangelength2>("Weights", "There are ", weights.size(), " weights for ", count, " dates");
    if (weights.empty()) return 0.0;
    if (life.Start == life.Finish) return UniformSpread{life.Start, life.Finish, Total}.in(here, Time, basis);
    timeperiod period = Time;
    if (!screen_period(here, period, life, basis)) return 0.0;
    return sum_slices(here, period, Total, weights, count, basis, slice);
}

} // namespace

double FWeightedSpread::in(const Routine& here, const timeperiod& Time, const Basis& basis) const {
    const int count = FromDates.size();
    if (count == 0) return 0.0;
    return sum_dated_slices(here, Time, {FromDates.first(), Finish}, Total, count, Weights, basis, [&](int n) {
        return Life{FromDates(n), n < count ? FromDates(n + 1) : Finish};
    });
}

double TWeightedSpread::in(const Routine& here, const timeperiod& Time, const Basis& basis) const {
    const int count = ToDates.size();
    if (count == 0) return 0.0;
    return sum_dated_slices(here, Time, {Start, ToDates.last()}, Total, count, Weights, basis, [&](int n) {
        return Life{n > 1 ? ToDates(n - 1) : Start, ToDates(n)};
    });
}

// --- By distribution -------------------------------------------------------------------------------------------------

double DistributedSpread::in(const Routine& here, const timeperiod& Time, const Basis& basis) const {
    if (Start == Finish && MidPoint == Start) return payment_in(Time, Start, Total);
    timeperiod period = Time;
    if (!screen_period(here, period, {Start, Finish}, basis)) return 0.0;
    const date& t1 = std::max(period.from(), Start);
    const date& t2 = std::min(period.to(), Finish);
    if (t2 < t1) return 0.0;
    const auto probability = [&](const date& day) {
        return CumProb(day.dtn(), Start.dtn(), MidPoint.dtn(), Finish.dtn(), DistType, 0.0);
    };
    const double before = probability(t1);
    return (probability(t2) - before) * Total;
}

// --- Until a total is paid -------------------------------------------------------------------------------------------

namespace {

/// So much as has been paid of a total; totals and payments may both be negative.
double at_most(double paid, double Total) { return Total < 0.0 ? std::max(paid, Total) : std::min(paid, Total); }

/// Years in which a rate pays an amount; for ever without one.
double years_to_pay(double amount, double rate) {
    if (iszero(amount)) return 0.0;
    return iszero(rate) ? std::numeric_limits<double>::infinity() : amount / rate;
}

const date beginning_of_time{};

double paid_up_to(const FSteppedSpread& spread, const date& day, const Basis& basis) {
    return at_most(Step(timeperiod(spread.FromDates.first(), day), FromSteps{DateCrit, spread.FromDates},
                        spread.AnnualRates, basis.accruals()),
                   spread.Total);
}
double left_from(const TSteppedSpread& spread, const date& day, const Basis& basis) {
    return at_most(Step(timeperiod(day, spread.ToDates.last()), ToSteps{beginning_of_time, spread.ToDates},
                        spread.AnnualRates, basis.accruals()),
                   spread.Total);
}

} // namespace

Span FSteppedSpread::extent(const Basis& basis) const {
    Span span{FromDates.first(), DepletionDate(Total, FromDates, AnnualRates, {basis.DayCount, basis.Periods})};
    // The last day may pay but a part of what is left.
    if (span.Finish < DateCrit && !isequal(paid_up_to(*this, span.Finish, basis), Total)) span.Finish.adddays(1);
    return span;
}

double FSteppedSpread::in(const Routine& here, const timeperiod& Time, const Basis& basis) const {
    if (FromDates.empty()) return 0.0;
    timeperiod period = Time;
    if (!screen_period(here, period, basis.cash() ? extent(basis) : Span{FromDates.first(), DateCrit}, basis))
        return 0.0;
    const double upper = paid_up_to(*this, period.to(), basis), lower = paid_up_to(*this, period.from(), basis);
    here.info("Paid up to the start ", lower, ", up to the end ", upper);
    return upper - lower;
}

Span TSteppedSpread::extent(const Basis& basis) const {
    Span span{DepletionDateStart(Total, ToDates, AnnualRates, {basis.DayCount, basis.Periods}), ToDates.last()};
    if (!span.Start.iszero() && !isequal(left_from(*this, span.Start, basis), Total)) span.Start.adddays(-1);
    return span;
}

double TSteppedSpread::in(const Routine& here, const timeperiod& Time, const Basis& basis) const {
    if (ToDates.empty()) return 0.0;
    timeperiod period = Time;
    if (!screen_period(here, period, basis.cash() ? extent(basis) : Span{beginning_of_time, ToDates.last()}, basis))
        return 0.0;
    const double lower = left_from(*this, period.to(), basis), upper = left_from(*this, period.from(), basis);
    here.info("Left at the start ", upper, ", at the end ", lower);
    return upper - lower;
}

date DepletionDate(double Total, View<date> FromDates, View<double> AnnualRates, const Measure& measure) {
    Routine here{"DepletionDate"};
    here.inputs(Total, FromDates, AnnualRates, measure);
    measure.check(here);
    double done = 0.0;
    for (int i = 1; i <= FromDates.size(); ++i) {
        const date& from = FromDates(i);
        const bool last = i == FromDates.size();
        const double rate = AnnualRates.single_or(i), years = years_to_pay(Total - done, rate);
        if (years < 0.0) return here.returning(date());
        if (years < DateCrit.decimal_year() - from.decimal_year()) {
            const date depleted = plusmonths(from, years * 12.0, measure.DayCount, measure.Periods);
            here.info("Depleted before the step ", done, ", years left ", years, ", to ", depleted);
            if (last || FromDates(i + 1) >= depleted) return here.returning(date(depleted));
        }
        if (last) break;
        const timeperiod step(from, FromDates(i + 1));
        done += ConX(step, {step.from(), step.to()}, rate, measure, false);
        if (isequal(done, Total)) return here.returning(date(step.to()));
    }
    return here.returning(date(DateCrit));
}

date DepletionDateStart(double Total, View<date> ToDates, View<double> AnnualRates, const Measure& measure) {
    Routine here{"DepletionDateStart"};
    here.inputs(Total, ToDates, AnnualRates, measure);
    measure.check(here);
    double done = 0.0;
    for (int i = ToDates.size(); i >= 1; --i) {
        const date& to = ToDates(i);
        const bool last = i == 1;
        const double rate = AnnualRates.single_or(i), years = years_to_pay(Total - done, rate);
        if (years < 0.0) break;
        if (years < to.decimal_year() - date().decimal_year()) {
            const date start = plusmonths(to, -years * 12.0, measure.DayCount, measure.Periods);
            here.info("Depleted after the step ", done, ", years left ", years, ", from ", start);
            if (last || ToDates(i - 1) <= start) return here.returning(date(start));
        }
        if (last) break;
        const timeperiod step(ToDates(i - 1), to);
        done += ConX(step, {step.from(), step.to()}, rate, measure, false);
        if (isequal(done, Total)) return here.returning(date(step.from()));
    }
    return here.returning(date());
}

// --- Worksheet functions ---------------------------------------------------------------------------------------------

double UniSpread(const timeperiod& Time, const Streams& streams, const Basis& basis) {
    Routine here{"UniSpread"};
    here.inputs(Time, streams, basis);
    basis.check(here);
    if (!runs_forward(here, Time)) return here.returning(0.0);
    return here.returning(streams.sum(here, [&](const Life& life, double Total) {
        return UniformSpread{life.Start, life.Finish, Total}.in(here, Time, basis);
    }));
}

double UniSpreadGrow(const timeperiod& Time, const UniformSpread& spread, const Growth& growth, const Basis& basis) {
    Routine here{"UniSpreadGrow"};
    here.inputs(Time, spread, growth, basis);
    basis.check(here);
    const double Total = Grow(spread.Start, spread.Total, growth, 0);
    return here.returning(UniformSpread{spread.Start, spread.Finish, Total}.in(here, Time, basis));
}

double UniSpreadS(const timeperiod& Time, const UniformSpread& spread, const Seasons& seasons, const Basis& basis) {
    Routine here{"UniSpreadS"};
    here.inputs(Time, spread, seasons, basis);
    basis.check(here);
    if (spread.Start == spread.Finish) return here.returning(spread.in(here, Time, basis));
    const Life span{spread.Start, spread.Finish};
    const double years = con_seasonal({span.Start, span.Finish}, span, 1.0, seasons, basis.accruals(), false);
    const double rate = safe_divide(spread.Total, years);
    here.info("Calculated Annual Rate=", rate);
    return here.returning(con_seasonal(Time, span, rate, seasons, basis, false));
}

double UniSpreadPer(const timeperiod& Time, const Life& life, const date& AbsFinish, View<double> Totals,
                    int Periodicity, const Basis& basis) {
    Routine here{"UniSpreadPer"};
    here.inputs(Time, life, AbsFinish, Totals, Periodicity, basis);
    basis.check(here);
    return here.returning(sum_repetitions(
        here, Time, life, AbsFinish, Totals, Periodicity, basis, [&](const Life& repetition, double Total) {
            return UniformSpread{repetition.Start, repetition.Finish, Total}.in(here, Time, basis);
        }));
}

double UniSpreadGrowPer(const timeperiod& Time, const Life& life, const date& AbsFinish, View<double> Totals,
                        const Growth& growth, int Periodicity, const Basis& basis) {
    Routine here{"UniSpreadGrowPer"};
    here.inputs(Time, life, AbsFinish, Totals, growth, Periodicity, basis);
    basis.check(here);
    growth.check(here);
    return here.returning(sum_repetitions(
        here, Time, life, AbsFinish, Totals, Periodicity, basis, [&](const Life& repetition, double Total) {
            const double grown = Grow(repetition.Start, Total, growth, 0);
            return UniformSpread{repetition.Start, repetition.Finish, grown}.in(here, Time, basis);
        }));
}

double TimeSpreadB(double Time, const Streams& streams, double BaseYrs, const Basis& basis) {
    Routine here{"TimeSpreadB"};
    here.inputs(Time, streams, BaseYrs, basis);
    return here.returning(UniSpread(period_in_years(Time, BaseYrs), streams, basis));
}

} // namespace qx
