// Spreads: a known total laid out over time. Each kind is a type that says how much of its total falls in a period; a
// worksheet function, its reforecast against actuals and its form with a history are made of it (reforecast.h).
//
//     UniformSpread{Start, Finish, 1200.0}.in(here, period, basis)
//
// Under accruals a period holds its own part of the spread; under cash (ProjMode 1 or 3) what the payment dates of
// Periods in it settle. Consecutive periods from the start to the end add up to the total, also where start and finish
// are one day. All throw errlibmin and errlibmax for a DayCount outside 0 to 999 or a ProjMode outside 0 to 7.
#pragma once

#include "calendar/time_period.h"
#include "core/routine.h"
#include "projections/steps.h"
#include "projections/terms.h"

#include <concepts>

namespace qx {

/// The names of a spread's worksheet functions.
struct SpreadNames {
    const char* base;
    const char* adjusted = nullptr;
    const char* with_history = nullptr;
};

/// A kind of spread: the terms of its base function, in their order, are its cells.
template <class S>
concept Spread = Composite<S> && requires(const S& spread, Routine& here, const timeperiod& Time, const Basis& basis) {
    { S::names } -> std::convertible_to<SpreadNames>;
    { spread.Total } -> std::convertible_to<double>;
    spread.check(here);
    { spread.in(here, Time, basis) } -> std::same_as<double>;
};

/// A stretch with its own dates, where Life only points to them.
struct Span {
    date Start, Finish;
    operator Life() const { return {Start, Finish}; }
};
/// What a stretch is measured as: one of no length is widened by a day (by as many as its day count needs to see one),
/// backward where payments are in arrears, so that the amount is not lost.
Span widened(const Life& life, const Basis& basis);

/// Evenly over time.
struct UniformSpread {
    using takes = Takes<date, date, double>;
    const date& Start;
    const date& Finish;
    double Total;

    static constexpr SpreadNames names{"UniSpread", "UniSpreadAdj", "UniSpreadH"};
    const date& start() const { return Start; }
    void check(Routine&) const {}
    double in(const Routine& here, const timeperiod& Time, const Basis& basis) const;
};

/// In slices of equal months, by their weights.
///
/// A slice ends on a whole day, so that the last one may end before or after Finish: all of it counts.
struct WeightedSpread {
    using takes = Takes<date, date, double, Range<double>>;
    const date& Start;
    const date& Finish;
    double Total;
    View<double> Weights;

    static constexpr SpreadNames names{"WeightSpread", "WeightSpreadAdj", "WeightSpreadH"};
    const date& start() const { return Start; }
    void check(Routine&) const {}
    double in(const Routine& here, const timeperiod& Time, const Basis& basis) const;
};

/// In slices from given dates on, the last one to Finish, by their weights. Throws inputrangelength2 for a weight that
/// has no date, outofrange for a date without a weight (unless one weight serves for all) and errlibnovalidanswer for a
/// slice that ends before it starts.
struct FWeightedSpread {
    using takes = Takes<date, double, Range<date>, Range<double>>;
    const date& Finish;
    double Total;
    View<date> FromDates;
    View<double> Weights;

    static constexpr SpreadNames names{"FWeightSpread", "FWeightSpreadAdj", "FWeightSpreadH"};
    const date& start() const { return FromDates.first(); }
    void check(Routine&) const {}
    double in(const Routine& here, const timeperiod& Time, const Basis& basis) const;
};
/// In slices up to given dates, the first one from Start, by their weights.
struct TWeightedSpread {
    using takes = Takes<date, double, Range<date>, Range<double>>;
    const date& Start;
    double Total;
    View<date> ToDates;
    View<double> Weights;

    static constexpr SpreadNames names{"TWeightSpread", "TWeightSpreadAdj", "TWeightSpreadH"};
    const date& start() const { return Start; }
    void check(Routine&) const {}
    double in(const Routine& here, const timeperiod& Time, const Basis& basis) const;
};

inline constexpr Limits distribution_limits{0, 10};

/// By the probability of a distribution over date numbers (CumProb); a normal one pays the 1% outside its points at
/// either end.
struct DistributedSpread {
    using takes = Takes<date, date, date, double, int>;
    const date& Start;
    const date& MidPoint;
    const date& Finish;
    double Total;
    int DistType;

    static constexpr SpreadNames names{"DistSpread", "DistSpreadAdj", "DistSpreadH"};
    const date& start() const { return Start; }
    void check(Routine& here) const { here.limit(DistType, distribution_limits, "DistType"); }
    double in(const Routine& here, const timeperiod& Time, const Basis& basis) const;
};

/// A stream of stepped rates, from the first from-date until it has paid the total.
struct FSteppedSpread {
    using takes = Takes<double, Range<date>, Range<double>>;
    double Total;
    View<date> FromDates;
    View<double> AnnualRates;

    static constexpr SpreadNames names{"FStepSpread"};
    /// From the first date to the day on which the total has been paid.
    Span extent(const Basis& basis) const;
    void check(Routine&) const {}
    double in(const Routine& here, const timeperiod& Time, const Basis& basis) const;
};
/// A stream of stepped rates up to the last to-date, which starts when as much is left as it has to pay.
struct TSteppedSpread {
    using takes = Takes<double, Range<date>, Range<double>>;
    double Total;
    View<date> ToDates;
    View<double> AnnualRates;

    static constexpr SpreadNames names{"TStepSpread"};
    /// From the day on which as much is left as there is to pay to the last date.
    Span extent(const Basis& basis) const;
    void check(Routine&) const {}
    double in(const Routine& here, const timeperiod& Time, const Basis& basis) const;
};

/// The part of a spread in a period: the worksheet function of a kind.
template <Spread S>
double spread_over(const timeperiod& Time, const S& spread, const Basis& basis) {
    Routine here{S::names.base};
    here.inputs(Time, spread, basis);
    basis.check(here);
    spread.check(here);
    return here.returning(spread.in(here, Time, basis));
}
/// Evenly over time: one total, or several side by side.
double UniSpread(const timeperiod& Time, const Streams& streams, const Basis& basis);
/// The same of a total that grows up to the start.
double UniSpreadGrow(const timeperiod& Time, const UniformSpread& spread, const Growth& growth, const Basis& basis);
/// Evenly over the length of the seasons, each weighted by its factor.
double UniSpreadS(const timeperiod& Time, const UniformSpread& spread, const Seasons& seasons, const Basis& basis);
/// Every Periodicity months up to AbsFinish; total n is that of repetition n, the last one applies to all that follow.
/// Throw errlibmaxrevs where a period comes 100 repetitions or more after Start.
double UniSpreadPer(const timeperiod& Time, const Life& life, const date& AbsFinish, View<double> Totals,
                    int Periodicity, const Basis& basis);
double UniSpreadGrowPer(const timeperiod& Time, const Life& life, const date& AbsFinish, View<double> Totals,
                        const Growth& growth, int Periodicity, const Basis& basis);

/// The date on which a stream of stepped rates has paid a total, the last rate going on for ever. DateCrit if it takes
/// longer than that, the zero date if the stream leads away from the total.
date DepletionDate(double Total, View<date> FromDates, View<double> AnnualRates, const Measure& measure);
/// The date from which a stream of stepped rates up to the last to-date pays a total. The zero date if it never does.
date DepletionDateStart(double Total, View<date> ToDates, View<double> AnnualRates, const Measure& measure);

/// Under the name of older workbooks: UniSpread in a period of years from Time on. Throws illegalvalue for a negative
/// length.
double TimeSpreadB(double Time, const Streams& streams, double BaseYrs, const Basis& basis);

} // namespace qx
