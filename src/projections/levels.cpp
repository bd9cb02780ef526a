#include "projections/levels.h"

#include "calendar/reviews.h"
#include "core/routine.h"
#include "projections/constant_rate.h"
#include "projections/descriptions.h"
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
    return FStepTime(Time, steps.FromDates, measure);
}
double time_in(const timeperiod& Time, const ToSteps& steps, const Measure& measure) {
    return TStepTime(Time, steps.ToDates, measure);
}
/// The years of a whole period.
double time_in(const timeperiod& Time, const Measure& measure) {
    return Time.lenyrs(Time.from(), Time.to(), measure.DayCount, measure.Periods);
}
double time_in(const timeperiod& Time, const OpenToSteps&, const Measure& measure) { return time_in(Time, measure); }

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

bool outside(const Routine& here, const timeperiod& Time, const OpenToSteps& open) {
    return outside(here, Time, open.steps);
}

/// The time period of one day that serves for a date.
timeperiod day_of(const date& TheDate) { return {TheDate, TheDate.plusdays(1)}; }

/// No further levels of a step than that with which its part of a period begins.
inline constexpr auto nothing_more = [](int, const Life&, auto) {};

/// The least or the greatest level of the steps that touch a period. `level` gives that of a step on a day in it;
/// `more` shows the further levels that a step takes in a stretch of time.
template <class Steps, class Value, class More>
double extreme_level(const char* name, const timeperiod& Time, const Steps& steps, bool greatest, Value level,
                     More more) {
    Routine here{name, Routine::internal};
    const date end_of_time = std::max(Time.to(), Time.from().plusdays(1));
    double extreme = 0.0;
    bool found = false;
    const auto see = [&](double value) {
        extreme = !found ? value : greatest ? std::max(extreme, value) : std::min(extreme, value);
        found = true;
    };
    for (int n = 1; n <= steps.count(); ++n) {
        const Life step = steps(n);
        if (step.Start >= end_of_time) break;
        if (step.Finish <= Time.from() || step.Finish <= step.Start) continue;
        const Life part = step.within(Time.from(), end_of_time);
        see(level(n, part.Start));
        more(n, part, see);
    }
    return here.returning(extreme);
}

/// The value of the step in force on a date, 0 if there is none.
template <class Steps, class Value>
double value_at(const Steps& steps, const date& TheDate, Value level) {
    const int n = step_at(steps, TheDate);
    return n == 0 ? 0.0 : level(n, TheDate);
}

/// Levels by steps in a period. `extremes` names what finds the least or the greatest of them, `amount` gives what a
/// stream of so much a year brings in the period.
template <class Steps, class Value, class Amount, class More = decltype(nothing_more)>
double levels_in(const Routine& here, const char* extremes, const timeperiod& Time, const Steps& steps,
                 int LevelSwitchOpt, const Measure& measure, Amount amount, Value level, More more = nothing_more) {
    if (outside(here, Time, steps)) return 0.0;
    here.info(level_switch_text(LevelSwitchOpt));
    switch (LevelSwitchOpt) {
    case level_average: {
        const double sum = amount();
        return safe_divide(sum, time_in(Time, steps, measure));
    }
    case level_of_ends: {
        const double first = value_at(steps, Time.from(), level), last = value_at(steps, Time.to(), level);
        return (first + last) / 2.0;
    }
    case level_at_start:
        return value_at(steps, Time.from(), level);
    case level_at_finish:
        return value_at(steps, Time.to(), level);
    case level_least:
    case level_greatest:
        return extreme_level(extremes, Time, steps, LevelSwitchOpt == level_greatest, level, more);
    default:
        return 0.0;
    }
}

/// A single level in a period. `at` gives it on a date. The least and the greatest are those of the two ends.
template <class Value, class Average>
double level_in(const Routine& here, const timeperiod& Time, int LevelSwitchOpt, Value at, Average average) {
    here.info(level_switch_text(LevelSwitchOpt));
    switch (LevelSwitchOpt) {
    case level_average:
        return average();
    case level_at_start:
        return at(Time.from());
    case level_at_finish:
        return at(Time.to());
    case level_of_ends:
    case level_least:
    case level_greatest: {
        const double first = at(Time.from()), last = at(Time.to());
        return LevelSwitchOpt == level_of_ends ? (first + last) / 2.0
               : LevelSwitchOpt == level_least ? std::min(first, last)
                                               : std::max(first, last);
    }
    default:
        return 0.0;
    }
}

// How the level of a step is read: as given, or from growth or a forecast at its beginning.

auto given(const View<double>& levels) {
    return [&levels](int n, const date&) { return levels.single_or(n); };
}
template <class Steps>
auto grown(const Steps& steps, double start, GrownAmounts& growth) {
    return [&steps, start, &growth](int n, const date&) { return growth(beginning(steps, n), start); };
}
template <class Steps>
auto forecasted(const Steps& steps, const Forecast& forecast, int FcstSwitchOpt = forecast_steps) {
    return [&steps, &forecast, FcstSwitchOpt](int n, const date&) {
        return Fcst(beginning(steps, n), forecast, FcstSwitchOpt, {}, {});
    };
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

// --- Values read at the step in force --------------------------------------------------------------------------------

template <class Steps>
double GrowStep(const date& TheDate, const date& bound, double StartingValue, View<date> dates, const Growth& growth) {
    Routine here{by_side<Steps>("FGrowStep", "TGrowStep")};
    here.inputs(TheDate, bound, StartingValue, dates, growth);
    note_where_growth_is_read<Steps>(here);
    growth.check(here);
    const Steps steps{bound, dates};
    GrownAmounts amounts(growth);
    return here.returning(value_at(steps, TheDate, grown(steps, StartingValue, amounts)));
}

template <class Steps>
double GrowStepMkt(const date& TheDate, const date& bound, double MktAnnRate, View<date> dates,
                   View<double> AnnualRates, const Growth& growth) {
    Routine here{by_side<Steps>("FGrowStepMkt", "TGrowStepMkt")};
    here.inputs(TheDate, bound, MktAnnRate, dates, AnnualRates, growth);
    note_where_growth_is_read<Steps>(here);
    growth.check(here);
    const Steps steps{bound, dates};
    GrownAmounts amounts(growth);
    return here.returning(value_at(steps, TheDate, given_or(AnnualRates, grown(steps, MktAnnRate, amounts))));
}

template <class Steps>
double FcstStep(const date& TheDate, const Steps& steps, const Forecast& forecast, int FcstSwitchOpt) {
    Routine here{by_side<Steps>("FFcstStep", "TFcstStep")};
    here.inputs(TheDate, steps, forecast, FcstSwitchOpt);
    forecast.check(here);
    here.at_least(FcstSwitchOpt, 0, "FcstSwitchOpt");
    return here.returning(value_at(steps, TheDate, forecasted(steps, forecast, FcstSwitchOpt)));
}

// --- Levels at a date ------------------------------------------------------------------------------------------------

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

template <class Steps>
double LevelsThenGrow(const date& TheDate, const Steps& steps, View<double> Levels, const Growth& growth,
                      int RevMonthsOpt) {
    Routine here{by_side<Steps>("FLevelsThenGrow", "TLevelsThenGrow")};
    here.inputs(TheDate, steps, Levels, growth, RevMonthsOpt);
    return here.returning(
        ALevelsThenGrow(day_of(TheDate), steps, Levels, growth, level_at_start, RevMonthsOpt, any_measure()));
}

double FLevelsCombine(const date& TheDate, int CombineSwitch, const FromSteps& steps, View<double> levels,
                      const SteppedRates& second, const SteppedRates& third, const SteppedRates& fourth) {
    Routine here{"FLevelsCombine"};
    here.inputs(TheDate, CombineSwitch, steps, levels, second, third, fourth);
    here.limit(CombineSwitch, combine_switch_limits, "CombineSwitch");
    const SteppedRates lists[] = {{steps.FromDates, levels}, second, third, fourth};
    WorkList<date> merged_dates;
    WorkList<double> merged_levels;
    merge_rates(lists, 4, static_cast<enum CombineSwitch>(CombineSwitch), merged_dates, merged_levels);
    return here.returning(Levels(TheDate, FromSteps{steps.Finish, merged_dates}, View<double>(merged_levels)));
}

double Bal(const date& TheDate, View<date> AdvanceDates, View<double> NetAdvances) {
    Routine here{"Bal"};
    here.inputs(TheDate, AdvanceDates, NetAdvances);
    return here.returning(MkPmts({date(), TheDate.plusdays(1)}, Payments{AdvanceDates, NetAdvances}));
}

// --- Levels in a period ----------------------------------------------------------------------------------------------

double ALevel(const timeperiod& Time, const Life& levels, double Level, int LevelSwitchOpt, const Measure& measure) {
    Routine here{"ALevel"};
    here.inputs(Time, levels, Level, LevelSwitchOpt, measure);
    measure.check(here);
    const auto at = [&](const date& day) { return in_force(levels, day) ? Level : 0.0; };
    return here.returning(level_in(here, Time, LevelSwitchOpt, at, [&] {
        return safe_divide(ConX(Time, levels, Level, measure, false), time_in(Time, measure));
    }));
}

double AGrow(const timeperiod& Time, double StartingValue, const Growth& growth, int LevelSwitchOpt, int RevMonthsOpt,
             const Measure& measure) {
    constexpr int longest_step_back = 12;
    Routine here{"AGrow"};
    here.inputs(Time, StartingValue, growth, LevelSwitchOpt, RevMonthsOpt, measure);
    measure.check(here);
    here.limit(RevMonthsOpt, review_months_limits, "RevMonthsOpt");
    growth.check(here);
    const auto at = [&](const date& day) { return Grow(day, StartingValue, growth, RevMonthsOpt); };
    return here.returning(level_in(here, Time, LevelSwitchOpt, at, [&] {
        const date& first = growth.first_or(Time.from());
        const int months = growth.none() ? 0 : std::min(RevMonthsOpt, longest_step_back);
        const date start = review_before(Time.from(), first, months);
        const date finish = next_review(Time.to(), first, months, false).when;
        return safe_divide(con_grow(Time, {start, finish}, StartingValue, growth, RevMonthsOpt, measure),
                           time_in(Time, measure));
    }));
}

double ALevelGrow(const timeperiod& Time, const Life& levels, double InitialLevel, const Growth& growth,
                  int LevelSwitchOpt, int RevMonthsOpt, const Measure& measure) {
    Routine here{"ALevelGrow"};
    here.inputs(Time, levels, InitialLevel, growth, LevelSwitchOpt, RevMonthsOpt, measure);
    measure.check(here);
    here.limit(RevMonthsOpt, review_months_limits, "RevMonthsOpt");
    growth.check(here);
    if (LevelSwitchOpt == level_least || LevelSwitchOpt == level_greatest) {
        here.info("LevelSwitchOpt of Min or Max is irrelevant for a single Level, returning the average");
        LevelSwitchOpt = level_average;
    }
    const auto at = [&](const date& day) {
        return in_force(levels, day) ? Grow(day, InitialLevel, growth, RevMonthsOpt) : 0.0;
    };
    return here.returning(level_in(here, Time, LevelSwitchOpt, at, [&] {
        return safe_divide(con_grow(Time, levels, InitialLevel, growth, RevMonthsOpt, measure), time_in(Time, measure));
    }));
}

template <class Steps>
double ALevels(const timeperiod& Time, const Steps& steps, View<double> Levels, int LevelSwitchOpt,
               const Measure& measure) {
    Routine here{by_side<Steps>("FALevels", "TALevels")};
    here.inputs(Time, steps, Levels, LevelSwitchOpt, measure);
    measure.check(here);
    return here.returning(levels_in(
        here, by_side<Steps>("FALevelsMM", "TALevelsMM"), Time, steps, LevelSwitchOpt, measure,
        [&] { return Step(Time, steps, Levels, measure); }, given(Levels)));
}

template <class Steps>
double ALevelsGrow(const timeperiod& Time, const date& bound, double InitialLevel, View<date> dates,
                   const Growth& growth, int LevelSwitchOpt, const Measure& measure) {
    Routine here{by_side<Steps>("FALevelsGrow", "TALevelsGrow")};
    here.inputs(Time, bound, InitialLevel, dates, growth, LevelSwitchOpt, measure);
    measure.check(here);
    growth.check(here);
    const Steps steps{bound, dates};
    GrownAmounts amounts(growth);
    return here.returning(levels_in(
        here, by_side<Steps>("FALevelsGrowMM", "TALevelsGrowMM"), Time, steps, LevelSwitchOpt, measure,
        [&] { return StepGrow<Steps>(Time, bound, InitialLevel, dates, growth, measure); },
        grown(steps, InitialLevel, amounts)));
}

template <class Steps>
double ALevelsFcst(const timeperiod& Time, const Steps& steps, const Forecast& forecast, int LevelSwitchOpt,
                   const Measure& measure) {
    Routine here{by_side<Steps>("FALevelsFcst", "TALevelsFcst")};
    here.inputs(Time, steps, forecast, LevelSwitchOpt, measure);
    measure.check(here);
    forecast.check(here);
    return here.returning(levels_in(
        here, by_side<Steps>("FALevelsFcstMM", "TALevelsFcstMM"), Time, steps, LevelSwitchOpt, measure,
        [&] { return StepFcst(Time, steps, forecast, measure); }, forecasted(steps, forecast)));
}

template <class Steps>
double ALevelsGrowMkt(const timeperiod& Time, const date& bound, double MktLevel, View<date> dates, View<double> Levels,
                      const Growth& growth, int LevelSwitchOpt, const Measure& measure) {
    Routine here{by_side<Steps>("FALevelsGrowMkt", "TALevelsGrowMkt")};
    here.inputs(Time, bound, MktLevel, dates, Levels, growth, LevelSwitchOpt, measure);
    measure.check(here);
    growth.check(here);
    const Steps steps{bound, dates};
    GrownAmounts amounts(growth);
    return here.returning(levels_in(
        here, by_side<Steps>("FALevelsGrowMktMM", "TALevelsGrowMktMM"), Time, steps, LevelSwitchOpt, measure,
        [&] { return StepGrowMkt<Steps>(Time, bound, MktLevel, dates, Levels, growth, measure); },
        given_or(Levels, grown(steps, MktLevel, amounts))));
}

template <class Steps>
double ALevelsFcstMkt(const timeperiod& Time, const Steps& steps, View<double> Levels, const Forecast& forecast,
                      int LevelSwitchOpt, const Measure& measure) {
    Routine here{by_side<Steps>("FALevelsFcstMkt", "TALevelsFcstMkt")};
    here.inputs(Time, steps, Levels, forecast, LevelSwitchOpt, measure);
    measure.check(here);
    forecast.check(here);
    return here.returning(levels_in(
        here, by_side<Steps>("FALevelsFcstMktMM", "TALevelsFcstMktMM"), Time, steps, LevelSwitchOpt, measure,
        [&] { return StepFcstMkt(Time, steps, Levels, forecast, measure); },
        given_or(Levels, forecasted(steps, forecast))));
}

template <class Steps>
double ALevelsThenGrow(const timeperiod& Time, const Steps& given_steps, View<double> Levels, const Growth& growth,
                       int LevelSwitchOpt, int RevMonthsOpt, const Measure& measure) {
    Routine here{by_side<Steps>("FALevelsThenGrow", "TALevelsThenGrow")};
    here.inputs(Time, given_steps, Levels, growth, LevelSwitchOpt, RevMonthsOpt, measure);
    measure.check(here);
    here.limit(RevMonthsOpt, review_months_limits, "RevMonthsOpt");
    growth.check(here);
    const auto& steps = then_steps(given_steps);
    const int last = steps.count();
    const auto level = [&](int n, const date& day) {
        if (n < last) return Levels.single_or(n);
        return Grow(day, Levels.single_or(std::max(given_steps.count(), 1)), growth, RevMonthsOpt);
    };
    // Growth turns on its dates; what it comes to then shows at the next review.
    const auto more = [&](int n, const Life& part, auto see) {
        if (n < last) return;
        see(level(n, part.Finish));
        for (const date& turn : growth.dates) {
            if (turn <= part.Start || turn >= part.Finish) continue;
            see(level(n, turn));
            const date review = review_after(turn, growth.dates.first(), RevMonthsOpt);
            if (review < part.Finish) see(level(n, review));
        }
    };
    return here.returning(levels_in(
        here, by_side<Steps>("FALevelsThenGrowMM", "TALevelsThenGrowMM"), Time, steps, LevelSwitchOpt, measure,
        [&] { return StepThenGrow(Time, given_steps, Levels, growth, RevMonthsOpt, measure); }, level, more));
}

// --- Both sides ------------------------------------------------------------------------------------------------------

#define QX_OF_SIDE(Steps)                                                                                              \
    template double GrowStep<Steps>(const date&, const date&, double, View<date>, const Growth&);                      \
    template double GrowStepMkt<Steps>(const date&, const date&, double, View<date>, View<double>, const Growth&);     \
    template double FcstStep(const date&, const Steps&, const Forecast&, int);                                         \
    template double Levels(const date&, const Steps&, View<double>);                                                   \
    template double LevelsGrow<Steps>(const date&, const date&, double, View<date>, const Growth&);                    \
    template double LevelsFcst(const date&, const Steps&, const Forecast&);                                            \
    template double LevelsGrowMkt<Steps>(const date&, const date&, double, View<date>, View<double>, const Growth&);   \
    template double LevelsThenGrow(const date&, const Steps&, View<double>, const Growth&, int);                       \
    template double LevelsFcstMkt(const date&, const Steps&, View<double>, const Forecast&);                           \
    template double ALevels(const timeperiod&, const Steps&, View<double>, int, const Measure&);                       \
    template double ALevelsGrow<Steps>(const timeperiod&, const date&, double, View<date>, const Growth&, int,         \
                                       const Measure&);                                                                \
    template double ALevelsThenGrow(const timeperiod&, const Steps&, View<double>, const Growth&, int, int,            \
                                    const Measure&);                                                                   \
    template double ALevelsFcst(const timeperiod&, const Steps&, const Forecast&, int, const Measure&);                \
    template double ALevelsGrowMkt<Steps>(const timeperiod&, const date&, double, View<date>, View<double>,            \
                                          const Growth&, int, const Measure&);                                         \
    template double ALevelsFcstMkt(const timeperiod&, const Steps&, View<double>, const Forecast&, int, const Measure&)
QX_OF_SIDE(FromSteps);
QX_OF_SIDE(ToSteps);
#undef QX_OF_SIDE

} // namespace qx
