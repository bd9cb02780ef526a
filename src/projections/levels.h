// Levels: stocks such as a number of units, a balance or a rate, which have a value at a date. The level of entry n
// holds from date n up to date n + 1, the last one up to Finish (not counted); outside these it is 0.
#pragma once

#include "calendar/time_period.h"
#include "core/range.h"

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

/// The level of a stepped list at a date.
double level_at(const date& TheDate, const date& FinishLevels, View<date> FromDates, View<double> Levels);
/// The level of a stepped list in a period, by a LevelSwitch; 0 for any other switch.
double FALevels(const timeperiod& Time, const date& FinishLevels, View<date> FromDates, View<double> Levels,
                int LevelSwitchOpt, double DayCount, const AnnualSequence& Periods);
/// The same at a date.
double FLevels(const date& TheDate, const date& Finish, View<date> FromDates, View<double> Levels);

} // namespace qx
