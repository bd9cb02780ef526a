#include "projections/levels.h"

#include "core/routine.h"
#include "projections/constant_rate.h"
#include "projections/forecast.h"
#include "projections/growth.h"
#include "projections/payments.h"
#include "projections/stepped_rate.h"

#include <algorithm>

namespace qx {

namespace {

bool in_force(const Life& life, const date& day) { return life.Start <= day && day < life.Finish; }

/// The number of the step that is in force on a day, or 0.
template <class Steps>
int step_at(const Steps& steps, const date& day) {
    for (int n = 1; n <= steps.count(); ++n)
        if (in_force(steps(n), day)) return n;
    return 0;
}

/// The date at which the level of a step is read.
const date& beginning(const FromSteps& steps, int n) { return steps.FromDates(n); }
const date& beginning(const ToSteps& steps, int n) { return n > 1 ? steps.ToDates(n - 1) : steps.Start; }

double time_in(const timeperiod& Time, const FromSteps& steps, const Measure& measure) {
    return steps.count() == 0 ? 0.0 : ConX(Time, {steps.FromDates.first(), DateCrit}, 1.0, measure, false);
}
double time_in(const timeperiod& Time, const ToSteps& steps, const Measure& measure) {
    static const date zero;
    return steps.count() == 0 ? 0.0 : ConX(Time, {zero, steps.ToDates.last()}, 1.0, measure, false);
}

/// True, with a note in the trace, if a period lies wholly outside the levels.
bool outside(const Routine& here, const timeperiod& Time, const FromSteps& steps) {
    if (Time.from() <= steps.Finish) return false;
    here.info("Timeperiod (", Time, ") falls beyond FinishLevel (", steps.Finish, ") date, leading to zero result.");
    return true;
}
bool outside(const Routine& here, const timeperiod& Time, const ToSteps& steps) {
    if (Time.to() >= steps.Start) return false;
    here.info("Timeperiod (", Time, ") falls before StartLevel (", steps.Start, ") date, leading to zero result.");
    return true;
}

/// The time period of one day that stands for a date.
timeperiod day_of(const date& TheDate) { return {TheDate, TheDate.plusdays(1)}; }
/// What levels at a date are measured with: nothing is.
Measure any_measure() {
    static const AnnualSequence quarters(4);
    return {0.0, quarters};
}

/// The least or the greatest level of the steps that touch a period.
template <class Steps, class Value>
double extreme_level(const timeperiod& Time, const Steps& steps, bool greatest, Value level) {
    Routine here{by_side<Steps>("FALevelsMM", "TALevelsMM"), Routine::internal};
    const date end_of_time = std::max(Time.to(), Time.from().plusdays(1));
    double extreme = 0.0;
    bool found = false;
    for (int n = 1; n <= steps.count(); ++n) {
        const Life step = steps(n);
        if (step.Start >= end_of_time) break;
        if (step.Finish <= Time.from() || step.Finish <= step.Start) continue;
        const double value = level(n, beginning(steps, n));
        extreme = !found ? value : greatest ? std::max(extreme, value) : std::min(extreme, value);
        found = true;
    }
    return here.returning(extreme);
}

/// The value of the step in force on a date, of which `level` gives that of a step as read on a date.
template <class Steps, class Value>
double value_at(const Steps& steps, const date& TheDate, Value level) {
    const int n = step_at(steps, TheDate);
    return n == 0 ? 0.0 : level(n, beginning(steps, n));
}

/// What a stream of the levels a year brings in a period. Its rates are read as those of stepped streams are.
template <class Steps, class Value>
double amount_in(const Routine& here, const timeperiod& Time, const Steps& steps, const Measure& measure, Value level) {
    timeperiod period = Time;
    if (steps.count() == 0 || !screen_period(here, period, steps.extent(), measure)) return 0.0;
    return sum_steps(here, period, steps, measure, [&](int n, const Life& step, const Basis& stub, bool part) {
        return ConX(period, step, level(n, steps.date_of(n)), stub, part);
    });
}

/// Levels by steps in a period. `level` gives the level of a step as read on a date.
template <class Steps, class Value>
double levels_in(Routine& here, const timeperiod& Time, const Steps& steps, int LevelSwitchOpt, const Measure& measure,
                 Value level) {
    if (outside(here, Time, steps)) return 0.0;
    const auto at = [&](const date& day) { return value_at(steps, day, level); };
    switch (LevelSwitchOpt) {
    case level_average:
        return safe_divide(amount_in(here, Time, steps, measure, level), time_in(Time, steps, measure));
    case level_of_ends:
        return (at(Time.from()) + at(Time.to())) / 2.0;
    case level_at_start:
        return at(Time.from());
    case level_at_finish:
        return at(Time.to());
    case level_least:
    case level_greatest:
        return extreme_level(Time, steps, LevelSwitchOpt == level_greatest, level);
    default:
        return 0.0;
    }
}

// How the level of step n is read on a date.

auto given(const View<double>& levels) {
    return [&levels](int n, const date&) { return levels.single_or(n); };
}
auto grown(double start, const Growth& growth) {
    return [start, &growth](int, const date& day) { return Grow(day, start, growth, 0); };
}
auto forecasted(const Forecast& forecast, int FcstSwitchOpt = forecast_steps) {
    return [&forecast, FcstSwitchOpt](int, const date& day) { return Fcst(day, forecast, FcstSwitchOpt, {}, {}); };
}
/// As given, or if that is zero as the market is read.
template <class Market>
auto given_or(const View<double>& levels, Market market) {
    return [&levels, market](int n, const date& day) {
        const double level = levels.single_or(n);
        return iszero(level) ? market(n, day) : level;
    };
}

} // namespace

// --- Values read at the step in force
// ---------------------------------------------------------------------------------

template <class Steps>
double GrowStep(const date& TheDate, const date& bound, double StartingValue, View<date> dates, const Growth& growth) {
    Routine here{by_side<Steps>("FGrowStep", "TGrowStep")};
    here.inputs(TheDate, bound, StartingValue, dates, growth);
    growth.check(here);
    return here.returning(value_at(Steps{bound, dates}, TheDate, grown(StartingValue, growth)));
}

template <class Steps>
double GrowStepMkt(const date& TheDate, const date& bound, double MktAnnRate, View<date> dates,
                   View<double> AnnualRates, const Growth& growth) {
    Routine here{by_side<Steps>("FGrowStepMkt", "TGrowStepMkt")};
    here.inputs(TheDate, bound, MktAnnRate, dates, AnnualRates, growth);
    growth.check(here);
    return here.returning(value_at(Steps{bound, dates}, TheDate, given_or(AnnualRates, grown(MktAnnRate, growth))));
}

template <class Steps>
double FcstStep(const date& TheDate, const Steps& steps, const Forecast& forecast, int FcstSwitchOpt) {
    Routine here{by_side<Steps>("FFcstStep", "TFcstStep")};
    here.inputs(TheDate, steps, forecast, FcstSwitchOpt);
    forecast.check(here);
    here.at_least(FcstSwitchOpt, 0, "FcstSwitchOpt");
    return here.returning(value_at(steps, TheDate, forecasted(forecast, FcstSwitchOpt)));
}

// --- Levels at a date
// -------------------------------------------------------------------------------------------------

double Level(const date& TheDate, const Life& life, double Level) {
    Routine here{"Level"};
    here.inputs(TheDate, life, Level);
    return here.returning(ALevel(day_of(TheDate), life, Level, level_at_start, any_measure()));
}

template <class Steps>
double Levels(const date& TheDate, const Steps& steps, View<double> Levels) {
    Routine here{by_side<Steps>("FLevels", "TLevels")};
    here.inputs(TheDate, steps, Levels);
    return here.returning(ALevels(day_of(TheDate), steps, Levels, level_at_start, any_measure()));
}

template <class Steps>
double LevelsGrow(const date& TheDate, const date& bound, double InitialLevel, View<date> dates, const Growth& growth) {
    Routine here{by_side<Steps>("FLevelsGrow", "TLevelsGrow")};
    here.inputs(TheDate, bound, InitialLevel, dates, growth);
    return here.returning(
        ALevelsGrow<Steps>(day_of(TheDate), bound, InitialLevel, dates, growth, level_at_start, any_measure()));
}

template <class Steps>
double LevelsFcst(const date& TheDate, const Steps& steps, const Forecast& forecast) {
    Routine here{by_side<Steps>("FLevelsFcst", "TLevelsFcst")};
    here.inputs(TheDate, steps, forecast);
    return here.returning(ALevelsFcst(day_of(TheDate), steps, forecast, level_at_start, any_measure()));
}

template <class Steps>
double LevelsGrowMkt(const date& TheDate, const date& bound, double MktLevel, View<date> dates, View<double> Levels,
                     const Growth& growth) {
    Routine here{by_side<Steps>("FLevelsGrowMkt", "TLevelsGrowMkt")};
    here.inputs(TheDate, bound, MktLevel, dates, Levels, growth);
    return here.returning(
        ALevelsGrowMkt<Steps>(day_of(TheDate), bound, MktLevel, dates, Levels, growth, level_at_start, any_measure()));
}

template <class Steps>
double LevelsFcstMkt(const date& TheDate, const Steps& steps, View<double> Levels, const Forecast& forecast) {
    Routine here{by_side<Steps>("FLevelsFcstMkt", "TLevelsFcstMkt")};
    here.inputs(TheDate, steps, Levels, forecast);
    return here.returning(ALevelsFcstMkt(day_of(TheDate), steps, Levels, forecast, level_at_start, any_measure()));
}

double Bal(const date& TheDate, const Range<date>& AdvanceDates, const Range<double>& NetAdvances) {
    Routine here{"Bal"};
    here.inputs(TheDate, AdvanceDates, NetAdvances);
    return here.returning(MkPmts({date(), TheDate.plusdays(1)}, AdvanceDates, NetAdvances));
}

// --- Levels in a period
// -----------------------------------------------------------------------------------------------

double ALevel(const timeperiod& Time, const Life& levels, double Level, int LevelSwitchOpt, const Measure& measure) {
    Routine here{"ALevel"};
    here.inputs(Time, levels, Level, LevelSwitchOpt, measure);
    measure.check(here);
    const double first = in_force(levels, Time.from()) ? Level : 0.0;
    const double last = in_force(levels, Time.to()) ? Level : 0.0;
    switch (LevelSwitchOpt) {
    case level_average:
        return here.returning(safe_divide(ConX(Time, levels, Level, measure, false),
                                          Time.lenyrs(Time.from(), Time.to(), measure.DayCount, measure.Periods)));
    case level_of_ends:
        return here.returning((first + last) / 2.0);
    case level_at_start:
        return here.returning(first);
    case level_at_finish:
        return here.returning(last);
    case level_least:
        return here.returning(std::min(first, last));
    case level_greatest:
        return here.returning(std::max(first, last));
    default:
        return here.returning(0.0);
    }
}

template <class Steps>
double ALevels(const timeperiod& Time, const Steps& steps, View<double> Levels, int LevelSwitchOpt,
               const Measure& measure) {
    Routine here{by_side<Steps>("FALevels", "TALevels")};
    here.inputs(Time, steps, Levels, LevelSwitchOpt, measure);
    measure.check(here);
    return here.returning(levels_in(here, Time, steps, LevelSwitchOpt, measure, given(Levels)));
}

template <class Steps>
double ALevelsGrow(const timeperiod& Time, const date& bound, double InitialLevel, View<date> dates,
                   const Growth& growth, int LevelSwitchOpt, const Measure& measure) {
    Routine here{by_side<Steps>("FALevelsGrow", "TALevelsGrow")};
    here.inputs(Time, bound, InitialLevel, dates, growth, LevelSwitchOpt, measure);
    measure.check(here);
    growth.check(here);
    return here.returning(
        levels_in(here, Time, Steps{bound, dates}, LevelSwitchOpt, measure, grown(InitialLevel, growth)));
}

template <class Steps>
double ALevelsFcst(const timeperiod& Time, const Steps& steps, const Forecast& forecast, int LevelSwitchOpt,
                   const Measure& measure) {
    Routine here{by_side<Steps>("FALevelsFcst", "TALevelsFcst")};
    here.inputs(Time, steps, forecast, LevelSwitchOpt, measure);
    measure.check(here);
    forecast.check(here);
    return here.returning(levels_in(here, Time, steps, LevelSwitchOpt, measure, forecasted(forecast)));
}

template <class Steps>
double ALevelsGrowMkt(const timeperiod& Time, const date& bound, double MktLevel, View<date> dates, View<double> Levels,
                      const Growth& growth, int LevelSwitchOpt, const Measure& measure) {
    Routine here{by_side<Steps>("FALevelsGrowMkt", "TALevelsGrowMkt")};
    here.inputs(Time, bound, MktLevel, dates, Levels, growth, LevelSwitchOpt, measure);
    measure.check(here);
    growth.check(here);
    return here.returning(
        levels_in(here, Time, Steps{bound, dates}, LevelSwitchOpt, measure, given_or(Levels, grown(MktLevel, growth))));
}

template <class Steps>
double ALevelsFcstMkt(const timeperiod& Time, const Steps& steps, View<double> Levels, const Forecast& forecast,
                      int LevelSwitchOpt, const Measure& measure) {
    Routine here{by_side<Steps>("FALevelsFcstMkt", "TALevelsFcstMkt")};
    here.inputs(Time, steps, Levels, forecast, LevelSwitchOpt, measure);
    measure.check(here);
    forecast.check(here);
    return here.returning(
        levels_in(here, Time, steps, LevelSwitchOpt, measure, given_or(Levels, forecasted(forecast))));
}

// --- Both sides
// -------------------------------------------------------------------------------------------------------

#define QX_OF_SIDE(Steps)                                                                                              \
    template double GrowStep<Steps>(const date&, const date&, double, View<date>, const Growth&);                      \
    template double GrowStepMkt<Steps>(const date&, const date&, double, View<date>, View<double>, const Growth&);     \
    template double FcstStep(const date&, const Steps&, const Forecast&, int);                                         \
    template double Levels(const date&, const Steps&, View<double>);                                                   \
    template double LevelsGrow<Steps>(const date&, const date&, double, View<date>, const Growth&);                    \
    template double LevelsFcst(const date&, const Steps&, const Forecast&);                                            \
    template double LevelsGrowMkt<Steps>(const date&, const date&, double, View<date>, View<double>, const Growth&);   \
    template double LevelsFcstMkt(const date&, const Steps&, View<double>, const Forecast&);                           \
    template double ALevels(const timeperiod&, const Steps&, View<double>, int, const Measure&);                       \
    template double ALevelsGrow<Steps>(const timeperiod&, const date&, double, View<date>, const Growth&, int,         \
                                       const Measure&);                                                                \
    template double ALevelsFcst(const timeperiod&, const Steps&, const Forecast&, int, const Measure&);                \
    template double ALevelsGrowMkt<Steps>(const timeperiod&, const date&, double, View<date>, View<double>,            \
                                          const Growth&, int, const Measure&);                                         \
    template double ALevelsFcstMkt(const timeperiod&, const Steps&, View<double>, const Forecast&, int, const Measure&)
QX_OF_SIDE(FromSteps);
QX_OF_SIDE(ToSteps);
#undef QX_OF_SIDE

} // namespace qx
