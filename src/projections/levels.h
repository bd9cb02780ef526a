// Levels: stocks such as a number of units, a balance or an occupancy, which have a value at a date and no amount in a
// period. Levels by steps hold from date to date, as streams by steps do (projections/steps.h); outside their dates
// they are 0. Their forms read the level of a step as given, from growth, or from a forecast, at the date on which the
// step begins: its from-date, or the to-date before it (Start for the first step).
//
// A LevelSwitch makes one number of a level for a period. Any other switch gives 0.
//
// All throw errlibmin and errlibmax for a DayCount outside 0 to 999, months between reviews outside 0 to 1000 or a
// forecast base outside 1 to 1000 months; missinggrowthdate (Growth::check); outofrange for a step without a level,
// where there is more than one level.
#pragma once

#include "calendar/merge_rates.h"
#include "calendar/time_period.h"
#include "projections/steps.h"

namespace qx {

/// How a level that changes becomes one number for a period.
enum LevelSwitch : int {
    level_average = 0,   ///< averaged over the time of the period
    level_of_ends = 1,   ///< the mean of the levels at its start and its end
    level_at_start = 2,  ///< at its start
    level_at_finish = 3, ///< at its end
    level_least = 4,     ///< the least in it
    level_greatest = 5,  ///< the greatest in it
};

// --- Values read at the step in force: FGrowStep and TGrowStep, and so on --------------------------------------------

/// StartingValue grown to the beginning of the step.
template <class Steps>
double GrowStep(const date& TheDate, const date& bound, double StartingValue, View<date> dates, const Growth& growth);
/// The rate of the step, or if that is zero MktAnnRate grown to the beginning of the step.
template <class Steps>
double GrowStepMkt(const date& TheDate, const date& bound, double MktAnnRate, View<date> dates,
                   View<double> AnnualRates, const Growth& growth);
/// The forecast at the beginning of the step.
template <class Steps>
double FcstStep(const date& TheDate, const Steps& steps, const Forecast& forecast, int FcstSwitchOpt);

// --- Levels at a date: Level, FLevels and TLevels, and so on ---------------------------------------------------------

double Level(const date& TheDate, const Life& life, double Level);
template <class Steps>
double Levels(const date& TheDate, const Steps& steps, View<double> Levels);
template <class Steps>
double LevelsGrow(const date& TheDate, const date& bound, double InitialLevel, View<date> dates, const Growth& growth);
template <class Steps>
double LevelsFcst(const date& TheDate, const Steps& steps, const Forecast& forecast);
template <class Steps>
double LevelsGrowMkt(const date& TheDate, const date& bound, double MktLevel, View<date> dates, View<double> Levels,
                     const Growth& growth);
template <class Steps>
double LevelsFcstMkt(const date& TheDate, const Steps& steps, View<double> Levels, const Forecast& forecast);

/// The levels as given, then the last one grown to the date: by from-dates within the last step, by to-dates after the
/// last date. Growth shows at reviews every RevMonthsOpt months.
template <class Steps>
double LevelsThenGrow(const date& TheDate, const Steps& steps, View<double> Levels, const Growth& growth,
                      int RevMonthsOpt);
/// Up to four lists of levels merged to one (merge_rates). Throws errlibmin, errlibmax for a CombineSwitch outside 0
/// to 7.
double FLevelsCombine(const date& TheDate, int CombineSwitch, const FromSteps& steps, View<double> levels,
                      const SteppedRates& second, const SteppedRates& third, const SteppedRates& fourth);

/// A balance: the sum of the net advances dated on or before TheDate.
double Bal(const date& TheDate, View<date> AdvanceDates, View<double> NetAdvances);

// --- Levels in a period: ALevel, FALevels and TALevels, and so on ----------------------------------------------------

/// A constant level. The least and the greatest are those of the two ends of the period.
double ALevel(const timeperiod& Time, const Life& levels, double Level, int LevelSwitchOpt, const Measure& measure);
/// A value that grows. The average is over the whole period, the least and the greatest are those of its two ends.
double AGrow(const timeperiod& Time, double StartingValue, const Growth& growth, int LevelSwitchOpt, int RevMonthsOpt,
             const Measure& measure);
/// The same between two dates, outside which it is 0. Asked for the least or the greatest it gives the average.
double ALevelGrow(const timeperiod& Time, const Life& levels, double InitialLevel, const Growth& growth,
                  int LevelSwitchOpt, int RevMonthsOpt, const Measure& measure);
/// Levels as given. The average is over the time in the period that is under steps (TStepTime, FStepTime), the least
/// and the greatest over the steps that touch the period.
template <class Steps>
double ALevels(const timeperiod& Time, const Steps& steps, View<double> Levels, int LevelSwitchOpt,
               const Measure& measure);
/// InitialLevel grown to the beginning of each step; the average reads growth as TStepGrow and FStepGrow do.
template <class Steps>
double ALevelsGrow(const timeperiod& Time, const date& bound, double InitialLevel, View<date> dates,
                   const Growth& growth, int LevelSwitchOpt, const Measure& measure);
/// A forecast read at the beginning of each step.
template <class Steps>
double ALevelsFcst(const timeperiod& Time, const Steps& steps, const Forecast& forecast, int LevelSwitchOpt,
                   const Measure& measure);
/// Levels as given, of which a zero is filled by MktLevel grown to the beginning of the step.
template <class Steps>
double ALevelsGrowMkt(const timeperiod& Time, const date& bound, double MktLevel, View<date> dates, View<double> Levels,
                      const Growth& growth, int LevelSwitchOpt, const Measure& measure);
/// Levels as given, of which a zero is filled by the forecast at the beginning of the step.
template <class Steps>
double ALevelsFcstMkt(const timeperiod& Time, const Steps& steps, View<double> Levels, const Forecast& forecast,
                      int LevelSwitchOpt, const Measure& measure);

/// Levels as given, then growth of the last one (LevelsThenGrow).
template <class Steps>
double ALevelsThenGrow(const timeperiod& Time, const Steps& given_steps, View<double> Levels, const Growth& growth,
                       int LevelSwitchOpt, int RevMonthsOpt, const Measure& measure);

} // namespace qx
