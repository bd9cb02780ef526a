// Switches of the projections in words.
#pragma once

#include <string>

namespace qx {

/// How a level becomes one figure for a period: a LevelSwitchOpt from 0 to 5 in words.
std::string DescribeLevelSwitch(int LevelSwitchOpt);
const char* level_switch_text(int LevelSwitchOpt);

/// The shape of a spread in words: the whole part is a skew from -100 to 100, two decimals are a peakedness, as in
/// GSpread. Throws errlibmin, errlibmax for a skew outside.
std::string DescribeShape(double Shape);

} // namespace qx
