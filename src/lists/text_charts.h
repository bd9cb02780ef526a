// Charts of one line of text: a bar, and the time that activities take.
#pragma once

#include "calendar/time_period.h"
#include "core/range.h"

#include <string>

namespace qx {

/// A bar of letters from zero to an amount on a line that runs from MinAmount to MaxAmount, LineLength letters long. A
/// bar that goes down is drawn in the second letter, if there is one. What lies beyond the line is not drawn. Throws
/// errlibmin, errlibmax for a length outside 1 to 254, errlibnonsenseinputs unless MaxAmount is above MinAmount.
std::string Bar(double Amount, double MaxAmount, double MinAmount, int LineLength, const std::string& Letters);

/// A line for a time period with letters where activities are under way, each from its start up to, not counting, its
/// finish. Activity i has letter i, the last letter serving all that follow; a later activity is drawn over an earlier
/// one, and one without a start or a finish is not drawn. LineLength 0 is one letter a month. Throws inputrangelength2
/// if starts and finishes differ in number, invaliddateorder for a finish before its start, errlibmin, errlibmax for a
/// length outside 0 to 254.
std::string Gantt(const timeperiod& Time, View<date> Starts, View<date> Finishes, int LineLength,
                  const std::string& Letters);

} // namespace qx
