// Switches of the projections in words.
#pragma once

#include "core/switches.h"

#include <string>

namespace qx {

/// How a level becomes one figure for a period: a LevelSwitchOpt from 0 to 5 in words.
std::string DescribeLevelSwitch(int LevelSwitchOpt);
/// What the level of a period is, by a LevelSwitchOpt.
inline constexpr SwitchValue level_values[] = {
    {0, "Level time-averaged over the time period"},
    {1, "Level as at the average of the levels at the start and finish of the time period"},
    {2, "Level as at start of time period"},
    {3, "Level as at finish of time period"},
    {4, "Minimum level within the time period"},
    {5, "Maximum level within the time period"},
};
const char* level_switch_text(int LevelSwitchOpt);

/// The shape of a spread in words: the whole part is a skew from -100 to 100, two decimals are a peakedness, as in
/// GSpread. Throws errlibmin, errlibmax for a skew outside.
std::string DescribeShape(double Shape);

} // namespace qx
