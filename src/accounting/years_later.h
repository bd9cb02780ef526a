// The date that lies a number of years after another, where the years come out of a calculation.
#pragma once

#include "projections/terms.h"

namespace qx {

/// The date so many years on under a day count: DateCrit where that is beyond the calendar, the date itself where it
/// would be before the calendar. Throws errlibnovalidanswer for years that are no number.
date years_later(const Routine& here, const date& from, double years, const Measure& measure);

} // namespace qx
