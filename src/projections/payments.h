// Whole amounts on dates: which of them fall into a period.
#pragma once

#include "calendar/time_period.h"
#include "core/range.h"

namespace qx {

/// The sum of the payments whose dates lie in a period. The shorter list decides how many there are.
double MkPmts(const timeperiod& Time, View<date> PmtDates, View<double> Pmts);

} // namespace qx
